#include "features/ZETLaserParameterProvider.h"

#include "features/ZETLaserBuiltInParameters.h"
#include "features/ZETLaserModelTree.h"
#include "laser/ZETLaserOptions.h"

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
#include <ZETFeature/ZETFeatContainerManager.h>
#include <ZETFeature/ZETFeatContainerProvider.h>
#include <ZETMaterial/ZETMatMaterial.h>
#include <ZETSystem/ZETSysUrlUtility.h>
#include <ZETSystem/ZETSysValue.h>

#include <QRegExp>
#include <QStringList>

#include <algorithm>
#include <utility>

using namespace Qt::Literals::StringLiterals;

const QStringList& GetBuiltInParameters()
{
    static const QStringList names{u"%SOURCE%"_s, u"%PART%"_s, u"%SEQ%"_s,    u"%LAYUP%"_s, u"%PLY%"_s,
                                   u"%SUBPLY%"_s, u"%MAT%"_s,  u"%MAT_ID%"_s, u"%ORI%"_s};
    return names;
}

namespace
{
/*! The first of \a features that is a \a Feature; null if none is. */
template <typename Feature>
Feature* FirstOf(const QList<ZETFeatObject*>& features)
{
    for (ZETFeatObject* feature : features) {
        if (auto* found = qobject_cast<Feature*>(feature))
            return found;
    }
    return nullptr;
}

/*! The first flat contour at any depth below \a feature; null if there is none. */
ZETCompFlatContour* FirstFlatContour(const ZETFeatObject* feature)
{
    return FirstOf<ZETCompFlatContour>(feature->GetAllChildren());
}

/*! A ply or sub-ply with all that its macros are about. */
struct Place {
    explicit Place(const ZETCompPlyBase* plyBase)
        : root(FindAncestor<ZETCompRoot>(*plyBase))
        , layup(FindAncestor<ZETCompLayup>(*plyBase))
        , sequence(FindAncestor<ZETCompSequence>(*plyBase))
        , ply(qobject_cast<const ZETCompPly*>(plyBase))
        , subPly(qobject_cast<const ZETCompSubPly*>(plyBase))
    {
        if (subPly)
            ply = FindAncestor<ZETCompPly>(*subPly);
    }

    bool IsComplete() const { return root && layup && sequence && ply; }

    const ZETCompRoot* root;
    const ZETCompLayup* layup;
    const ZETCompSequence* sequence;
    const ZETCompPly* ply;       //!< for a sub-ply, its parent ply
    const ZETCompSubPly* subPly; //!< null for a plain ply
};

QString GetSourcePath(const ZETCompRoot& root)
{
    const ZETFeatContainer* container = FindContainer(&root);
    return container ? ZETSysUrlUtility::GetFilePathFromURL(container->GetProviderUrl()) : QString();
}

/*! The direction in degrees. QString::number knows no locale, so the text is the same for every user. */
QString GetOrientation(const ZETCompPly& ply)
{
    const double degrees = ZETSysValue::ConvertFromSystemUnit(ply.GetDirection(), ZETSysValue::UnitDegree);
    return QString::number(degrees, 'f', 1);
}

/*! The value of the built-in macro with the bare name \a name, for a complete place; empty for another name. */
QString GetBuiltInValue(const Place& place, const QString& name)
{
    if (name == "SOURCE"_L1)
        return GetSourcePath(*place.root);
    if (name == "PART"_L1)
        return place.root->GetLabel();
    if (name == "SEQ"_L1)
        return place.sequence->GetLabel();
    if (name == "LAYUP"_L1)
        return place.layup->GetLabel();
    if (name == "PLY"_L1)
        return place.ply->GetLabel();
    if (name == "SUBPLY"_L1)
        return place.subPly ? place.subPly->GetLabel() : QString();
    const ZETMatMaterial* material = GetMaterial(*place.ply);
    if (name == "MAT"_L1)
        return material ? material->GetLabel() : QString();
    if (name == "MAT_ID"_L1)
        return material ? material->GetMaterialId() : QString();
    if (name == "ORI"_L1)
        return GetOrientation(*place.ply);
    return QString();
}

/*! What stands in a text for the macro with the inner text \a parameter. */
QString GetToken(const QString& parameter)
{
    return GetBuiltInParameters().contains(parameter) ? parameter : '%'_L1 + parameter + '%'_L1;
}

bool IsAscii(const QString& text)
{
    return std::all_of(text.begin(), text.end(), [](QChar character) { return character.unicode() <= 127; });
}
} // namespace

ZETLaserParameterProvider::ZETLaserParameterProvider(const ZETFeatContainer* container)
{
    const ZETFeatContainerProvider* provider = ZETFeatContainerManager::GetManager()->GetProvider(container);
    if (provider)
        extraParameters = provider->GetTextParameters(container);
}

QString ZETLaserParameterProvider::EvaluateParameterText(const ZETCompPlyBase* ply, const QString& text) const
{
    if (!ply)
        return text;
    QStringList parameters = GetParametersFromText(text);
    parameters.removeDuplicates();
    QString result = text;
    // Meant: each replacement works on the text as it has become, so that a value which holds a macro may be replaced.
    for (const QString& parameter : std::as_const(parameters))
        result.replace(GetToken(parameter), GetParameterValue(ply, parameter));
    return result;
}

QString ZETLaserParameterProvider::GetParameterValue(const ZETCompPlyBase* ply, const QString& name) const
{
    if (!ply)
        return name;
    const Place place(ply);
    if (!place.IsComplete())
        return QString();
    const auto extra = extraParameters.constFind(name);
    return extra != extraParameters.constEnd() ? *extra : GetBuiltInValue(place, name);
}

QList<QString> ZETLaserParameterProvider::GetParameterList() const
{
    return GetBuiltInParameters() + extraParameters.keys();
}

QString ZETLaserParameterProvider::GetFormatedParameterName(const QString& name) const
{
    return GetToken(name);
}

bool ZETLaserParameterProvider::ValidateLaserParameterText(const QString& text) const
{
    const QList<QString> parameters = GetParametersFromText(text);
    const QList<QString> known = GetParameterList();
    return std::all_of(parameters.begin(), parameters.end(), [&](const QString& parameter) {
        return known.contains(GetToken(parameter)) || known.contains(parameter);
    });
}

QList<QString> ZETLaserParameterProvider::EvaluateShapeName(const ZETCompMfgConfiguration* configuration,
                                                            const QString& text) const
{
    if (!ValidateLaserParameterText(text))
        return {tr("The text is invalid")};
    QList<QString> problems;
    // Meant: the pattern is looked at, not the names that come of it.
    if (!IsAscii(text))
        problems += tr("Unicode characters are not supported for 3D Text.");
    QStringList duplicates;
    const QMap<QString, int> counts = EvaluateDuplicateShapeName(configuration, text);
    for (auto entry = counts.begin(); entry != counts.end(); ++entry) {
        if (entry.value() >= 2)
            duplicates += tr("%1 (%2)").arg(entry.key()).arg(entry.value());
    }
    if (!duplicates.isEmpty())
        problems += tr("Duplicated shape name : %1.").arg(duplicates.join("; "_L1));
    return problems;
}

QList<ZETCompPlyBase*> ZETLaserParameterProvider::GetEvaluatingPlies(const ZETCompMfgConfiguration* configuration) const
{
    QList<ZETCompPlyBase*> plies = ZETLaserOptions::GetIncludedPlies(configuration, true, nullptr);
    plies.removeIf([](const ZETCompPlyBase* ply) { return !ply->GetFlatPattern(nullptr); });
    return plies;
}

ZETCompFlatContour*
ZETLaserParameterProvider::GetEvaluatingFlatContourFromPly(const ZETCompMfgConfiguration* configuration,
                                                           const ZETCompPlyBase* ply) const
{
    if (!configuration || !ply)
        return nullptr;
    const QList<ZETFeatObject*> children = ply->GetChildren();
    const auto* ownPattern = FirstOf<ZETCompFlatPattern>(children);
    ZETCompFlatContour* fallback = ownPattern ? FirstFlatContour(ownPattern) : nullptr;

    const ZETCompStrategyBase* included = ply->GetIncludedStrategyOrSubdivision(configuration);
    if (!included)
        return fallback;
    const auto* strategy = qobject_cast<const ZETCompStrategy*>(included);
    if (strategy && FirstOf<ZETCompFlatPattern>(strategy->GetChildren()) && strategy->GetFlatPattern()) {
        if (ZETCompFlatContour* contour = FirstFlatContour(strategy->GetFlatPattern()))
            return contour;
    }
    for (ZETFeatObject* child : children) {
        const auto* other = qobject_cast<const ZETCompStrategy*>(child);
        if (ZETCompFlatContour* contour = other ? FirstFlatContour(other) : nullptr)
            return contour;
    }
    return fallback;
}

QList<ZETCompFlatContour*>
ZETLaserParameterProvider::GetEvaluatingFlatContours(const ZETCompMfgConfiguration* configuration) const
{
    const auto* root = configuration ? qobject_cast<const ZETCompRoot*>(configuration->GetRoot()) : nullptr;
    if (!root)
        return {};
    QList<ZETCompFlatContour*> contours;
    const auto appendContourOf = [&](const ZETCompPlyBase* ply) {
        if (ZETCompFlatContour* contour = GetEvaluatingFlatContourFromPly(configuration, ply))
            contours.append(contour);
    };
    const QList<ZETFeatObject*> features = root->GetAllChildren();
    for (ZETFeatObject* feature : features) {
        const auto* ply = qobject_cast<const ZETCompPly*>(feature);
        if (!ply)
            continue;
        const qsizetype countBefore = contours.size();
        if (auto* subdivision =
                qobject_cast<ZETCompSubdivision*>(ply->GetIncludedStrategyOrSubdivision(configuration))) {
            const QList<ZETCompSubPly*> subPlies = subdivision->GetSubPlies();
            for (const ZETCompSubPly* subPly : subPlies)
                appendContourOf(subPly);
        }
        if (contours.size() == countBefore) // the ply stands for sub-plies that have no contour
            appendContourOf(ply);
    }
    return contours;
}

QMap<QString, int> ZETLaserParameterProvider::EvaluateDuplicateShapeName(const ZETCompMfgConfiguration* configuration,
                                                                         const QString& text) const
{
    QMap<QString, int> counts;
    const QList<ZETCompPlyBase*> plies = GetEvaluatingPlies(configuration);
    for (const ZETCompPlyBase* ply : plies) {
        const QString name = EvaluateParameterText(ply, text);
        if (!name.isEmpty())
            ++counts[name];
    }
    return counts;
}

QList<ZETCompPlyBase*>
ZETLaserParameterProvider::EvaluateEmptyShapeNamePlies(const ZETCompMfgConfiguration* configuration,
                                                       const QString& text) const
{
    QList<ZETCompPlyBase*> plies = GetEvaluatingPlies(configuration);
    plies.removeIf([&](const ZETCompPlyBase* ply) { return !EvaluateParameterText(ply, text).isEmpty(); });
    return plies;
}

QList<QString> ZETLaserParameterProvider::GetParametersFromText(const QString& text) const
{
    QList<QString> parameters;
    QRegExp macro(u"%([^%]+)%"_s);
    for (int at = macro.indexIn(text); at >= 0; at = macro.indexIn(text, at + macro.matchedLength()))
        parameters.append(macro.cap(1));
    return parameters;
}
