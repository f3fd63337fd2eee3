#pragma once

#include "features/ZETLaserExtraGeometry.h"
#include "laser/ZETLaserGroup.h"
#include "laser/ZETLaserOptions.h"
#include "openhost/ZETComposites/ZETOpenComposites.h"
#include "openhost/ZETComposites/ZETOpenGeometryFeature.h"
#include "openhost/ZETFeature/ZETOpenModel.h"
#include "openhost/ZETGeometry/ZETOpenRef.h"
#include "openhost/ZETGeometry/ZETOpenSurface.h"
#include "openhost/ZETTopology/ZETOpenBodyBuilder.h"

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
#include <ZETGeometry/ZETGeoAssembledCurveOnSurface.h>
#include <ZETMaterial/ZETMatMaterial.h>
#include <ZETMathematics/ZETMathPoint.h>

#include <QList>
#include <QSharedPointer>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>

class ZETLaserContour;
class ZETLaserCurve;
class ZETLaserReaderComposites;

/*! A composite model for tests of the reader, with the options and the tree of one job.
 *
 *  The features are given as text: a kind and a label each, and the children in braces.
 *      layup|sequence|ply|pieces|subply|strategy|pattern|folder LABEL { ... }
 *      extra LABEL:all|below|until|parent { ... }     in every output type, with a laser parameter in it
 *  "pieces" is a subdivision. Features are found again by their labels. A fault in the text ends the test program.
 *
 *  Everything is selected that the options will take, until Select says otherwise. */
class ReaderModel
{
public:
    explicit ReaderModel(const QString& text);
    ~ReaderModel();
    Q_DISABLE_COPY_MOVE(ReaderModel)

    /*! The feature of that label. */
    template <typename T>
    T* Get(const QString& label)
    {
        for (ZETFeatObject* feature : root->GetAllChildren()) {
            T* const cast = qobject_cast<T*>(feature);
            if (cast && cast->GetLabel() == label)
                return cast;
        }
        qFatal("no %s is called %s", T::staticMetaObject.className(), qPrintable(label));
        return nullptr;
    }
    ZETCompPly* Ply(const QString& label) { return Get<ZETCompPly>(label); }
    ZETCompLayup* Layup(const QString& label) { return Get<ZETCompLayup>(label); }
    ZETCompStrategy* Strategy(const QString& label) { return Get<ZETCompStrategy>(label); }

    template <typename T>
    static T* Add(ZETFeatObject* parent, const QString& label)
    {
        T* const feature = new T(parent);
        ZETOpenModel::SetLabel(*feature, label);
        return feature;
    }

    /*! Selects the plies and sub-plies of these labels and no other. */
    void Select(const QStringList& labels);

    /*! A geometry feature below the root. */
    ZETOpenGeometryFeature* AddGeometry(const QString& label, std::unique_ptr<ZETTopBody> body);
    /*! A workpiece of one face for every layup of the model. */
    void SetTool(const ZETOpenRef<ZETOpenSurface>& surface);
    /*! The boundary of a ply on the tool, through these points. */
    void SetBoundary(const QString& ply, const QList<ZETMathPoint>& points, bool closed);
    ZETOpenRef<ZETGeoAssembledCurveOnSurface> MakeBoundary(const QList<ZETMathPoint>& points, bool closed);
    ZETCompRosette* AddRosette(const QString& layup, const ZETMathAxis& axis);
    /*! A flattening plane for \a layup: through 100,200,300, first direction along Y, second along Z. */
    void AddTable(const QString& layup);
    ZETMatMaterial* AddMaterial(const QString& label, double thickness = 0.0);

    /*! Reads with a reader of its own, or with the same one as before. Empties the tree ahead. */
    bool Read();
    bool ReadAgain();

    /*! The groups as text: a group of groups as `label[child child]`, a group of leaves as `label(names)` with the
     *  names of all leaves behind its contour. */
    QString Tree() const;
    QSharedPointer<ZETLaserGroup> Group(const QString& name) const;
    /*! The contour of a ply's group, and its curve of that name or number. */
    QSharedPointer<ZETLaserContour> Contour(const QString& ply) const;
    QSharedPointer<ZETLaserCurve> Curve(const QString& ply, const QString& name) const;
    QSharedPointer<ZETLaserCurve> Curve(const QString& ply, qsizetype index) const;
    /*! The names of the curves of a ply's contour, in order, separated by commas. */
    QString CurveNames(const QString& ply) const;

    /*! The messages of the queue, one a line as `type: text`. */
    static QString Messages();
    /*! Empties the queue; from here on \a listener hears of each message when it is added. */
    static void ListenToMessages(const std::function<void(const QString&)>& listener);

    ZETFeatContainer container;
    ZETCompRoot* root;
    ZETCompMfgConfiguration* configuration;
    ZETOpenRef<ZETOpenSurface> tool;
    ZETLaserOptions options;
    QList<ZETMatMaterial*> materials;
    QSharedPointer<ZETLaserGroup> tree;
    std::unique_ptr<ZETLaserReaderComposites> reader;
};

/*! The flat tool of most tests: a square about the origin in the XY plane, with the normal upwards. */
ZETOpenRef<ZETOpenSurface> MakeFlatTool();

/*! Points as text, `x,y,z` each and the normal behind a stroke where there is one: `1,2,0/0,0,1`. Rounded to a
 *  millionth, without minus zero. */
QString PointsText(const ZETLaserCurve& curve);
