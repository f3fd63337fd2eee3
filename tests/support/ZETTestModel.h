#pragma once

#include "openhost/ZETComposites/ZETOpenComposites.h"
#include "openhost/ZETFeature/ZETOpenModel.h"

#include <ZETComposites/ZETCompFlatContour.h>
#include <ZETComposites/ZETCompFlatPattern.h>
#include <ZETComposites/ZETCompLayup.h>
#include <ZETComposites/ZETCompMfgConfiguration.h>
#include <ZETComposites/ZETCompPly.h>
#include <ZETComposites/ZETCompRoot.h>
#include <ZETComposites/ZETCompSequence.h>
#include <ZETComposites/ZETCompStrategy.h>
#include <ZETComposites/ZETCompSubdivision.h>
#include <ZETComposites/ZETCompSubPly.h>
#include <ZETFeature/ZETFeatContainer.h>

#include <QString>
#include <QStringList>

#include <type_traits>

/*! A small composite model for tests: the features alone, without geometry. Each Add appends a child under the label
 *  that is given and returns it; the model owns all of them. It starts with a root of the label "Part" and an active
 *  configuration of the label "Configuration". */
class ZETTestModel
{
public:
    ZETFeatContainer container;
    ZETCompRoot* root = new ZETCompRoot(&container);
    ZETCompMfgConfiguration* configuration = Add<ZETCompMfgConfiguration>(root, "Configuration");

    ZETTestModel()
    {
        ZETOpenModel::SetLabel(*root, QStringLiteral("Part"));
        ZETOpenComposites::SetActiveMfgConfiguration(*root, configuration);
    }

    template <typename Feature>
    static Feature* Add(ZETFeatObject* parent, const char* label)
    {
        Feature* feature = Make<Feature>(parent);
        ZETOpenModel::SetLabel(*feature, QString::fromUtf8(label));
        return feature;
    }

    ZETCompLayup* AddLayup(const char* label) { return Add<ZETCompLayup>(root, label); }
    static ZETCompSequence* AddSequence(ZETCompLayup* layup, const char* label)
    {
        return Add<ZETCompSequence>(layup, label);
    }
    static ZETCompPly* AddPly(ZETCompSequence* sequence, const char* label) { return Add<ZETCompPly>(sequence, label); }
    static ZETCompSubdivision* AddSubdivision(ZETCompPly* ply) { return Add<ZETCompSubdivision>(ply, "Subdivision"); }
    static ZETCompSubPly* AddSubPly(ZETCompSubdivision* subdivision, const char* label)
    {
        return Add<ZETCompSubPly>(subdivision, label);
    }
    static ZETCompStrategy* AddStrategy(ZETCompPlyBase* ply) { return Add<ZETCompStrategy>(ply, "Strategy"); }

    /*! Gives \a ply a strategy with a flat pattern of one contour of that label. */
    static ZETCompFlatContour* AddFlatContour(ZETCompPlyBase* ply, const char* label)
    {
        auto* pattern = Add<ZETCompFlatPattern>(AddStrategy(ply), "Pattern");
        return Add<ZETCompFlatContour>(pattern, label);
    }

    static void Disable(ZETFeatObject* feature) { ZETOpenModel::SetEnabled(*feature, false); }

    /*! The labels of features in order, separated by blanks: "P1 P1.1 P2". */
    template <typename Features>
    static QString Labels(const Features& features)
    {
        QStringList labels;
        for (const auto* feature : features)
            labels.append(feature->GetLabel());
        return labels.join(QLatin1Char(' '));
    }

private:
    /*! Some features can't be made from a parent directly, but by the name of their class. */
    template <typename Feature>
    static Feature* Make(ZETFeatObject* parent)
    {
        if constexpr (std::is_constructible_v<Feature, ZETFeatObject*>)
            return new Feature(parent);
        else
            return qobject_cast<Feature*>(ZETOpenModel::Create(Feature::staticMetaObject.className(), *parent));
    }
};
