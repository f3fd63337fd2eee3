#include "reader/ZETLaserReaderComposites.h"

#include "laser/ZETLaserContour.h"
#include "laser/ZETLaserCurve.h"
#include "laser/ZETLaserEntityProperties.h"
#include "laser/ZETLaserOptions.h"
#include "reader/ZETLaserReaderTools.h"

#include <ZETComposites/ZETCompFlatCurve.h>
#include <ZETComposites/ZETCompFlatPattern.h>
#include <ZETComposites/ZETCompLayup.h>
#include <ZETComposites/ZETCompMfgConfiguration.h>
#include <ZETComposites/ZETCompPly.h>
#include <ZETComposites/ZETCompStrategy.h>
#include <ZETComposites/ZETCompSurfaceUpdate.h>
#include <ZETFeature/ZETFeatGeometry.h>
#include <ZETGeometry/ZETGeoAssembledCurveOnSurface.h>
#include <ZETGeometry/ZETGeoComboCurve.h>
#include <ZETGeometry/ZETGeoComboPoint.h>
#include <ZETGeometry/ZETGeoPointOnSurface.h>
#include <ZETGeometry/ZETGeoRangeOfCurve.h>
#include <ZETMathematics/ZETMathAxis.h>
#include <ZETSystem/ZETSysException.h>
#include <ZETTopology/ZETTopBody.h>
#include <ZETTopology/ZETTopEdge.h>
#include <ZETTopology/ZETTopFace.h>
#include <ZETTopology/ZETTopNet.h>
#include <ZETTopology/ZETTopVertex.h>

#include <QVariant>

#include <memory>

using namespace ZETLaserReaderTools;
using namespace Qt::Literals::StringLiterals;

namespace
{

/*! Holds a curve for as long as it is read; a curve that nobody else holds goes with it. */
class CurveHold
{
public:
    explicit CurveHold(const ZETGeoCurveOnSurface* held)
        : curve(held)
    {
        if (curve)
            curve->AddReference();
    }
    ~CurveHold()
    {
        if (curve)
            curve->RemoveReference();
    }

private:
    Q_DISABLE_COPY_MOVE(CurveHold)
    const ZETGeoCurveOnSurface* curve;
};

ZETCompFlatCurve* FindLastImage(const ZETCompFlatPattern& flatPattern, const ZETFeatGeometry* source)
{
    ZETCompFlatCurve* found = nullptr;
    for (ZETFeatObject* feature : flatPattern.GetAllChildren()) {
        auto* const flatCurve = qobject_cast<ZETCompFlatCurve*>(feature);
        if (flatCurve && flatCurve->GetSource() == source)
            found = flatCurve; // Meant: of several images the last one counts, where of points the first one does.
    }
    return found;
}

} // namespace

void ZETLaserReaderComposites::ReadSeedCurve(QSharedPointer<ZETLaserContour> contour, ZETCompPlyBase* ply)
{
    if (options->GetUseSeedCurve() == 0)
        return;
    ZETCompStrategy* const strategy = GetActiveStrategy(*ply);
    const ZETGeoCurveOnSurface* const curve = strategy ? GetSeedCurveOnSurface(strategy) : nullptr;
    const CurveHold hold(curve);
    if (!curve || !curve->GetSurface()) {
        AddWarning(tr("Could not get seed curve for %1").arg(ply->GetLabel()));
        return;
    }
    const auto target = AddCurve(contour, ply->GetLabel() + u"-"_s + tr("Seedcurve"));
    target->setProperty(ZETLaserEntityProperties::sourceType, static_cast<int>(ZETLaserOptions::SourceSeedCurve));
    ReadSurfacePoints(*target, *curve);
    target->SetClosed(curve->IsClosed());
}

void ZETLaserReaderComposites::ReadFlatSeedCurve(QSharedPointer<ZETLaserContour> contour, ZETCompPlyBase* ply,
                                                 ZETCompFlatPattern* flatPattern, const ZETMathAxis& axis)
{
    const ZETCompStrategy* const strategy = GetActiveStrategy(*ply);
    if (!strategy)
        return;
    ZETCompFlatCurve* const flatCurve = FindLastImage(*flatPattern, strategy->GetSeedCurve());
    if (!flatCurve) {
        AddWarning(tr("Could not get flattened seed curve for %1").arg(ply->GetLabel()));
        return;
    }
    // Meant: unlike the seed curve in space, this one doesn't say where it came from.
    QString name = tr("Seedcurve");
    ReadFlatCurves(contour, flatCurve, tr("%1-%2"), ply->GetLabel(), name, axis);
}

ZETCompStrategy* ZETLaserReaderComposites::GetActiveStrategy(const ZETCompPlyBase& ply) const
{
    return qobject_cast<ZETCompStrategy*>(ply.GetIncludedStrategyOrSubdivision(options->GetActiveConfiguration()));
}

ZETGeoLocationOnSurface ZETLaserReaderComposites::GetSeedLocation(ZETCompStrategy* strategy)
{
    if (options->GetOffsetMode() == ZETLaserOptions::OffsetComplete)
        return strategy->GetFinalSeedPoint();
    const ZETGeoSurface* const surface = GetStrategySurface(strategy);
    const ZETFeatGeometry* const seedPoint = strategy->GetSeedPoint();
    if (!seedPoint)
        throw ZETSysException(u"strategy does not have a seed point"_s);
    const ZETTopBody* const body = seedPoint->GetBody();
    if (!body)
        throw ZETSysException(u"seed point does not have a body"_s);
    const QList<const ZETTopEntity*> vertices = body->GetEntities(0);
    const auto* const vertex = vertices.size() == 1 ? qobject_cast<const ZETTopVertex*>(vertices.first()) : nullptr;
    if (!vertex)
        throw ZETSysException(u"seed point does not have exactly one point"_s);
    const ZETGeoPointOnSurface* const image = vertex->GetPoint()->GetPoint(surface);
    return image ? image->GetLocationOnSurface() : ZETGeoLocationOnSurface();
}

const ZETGeoCurveOnSurface* ZETLaserReaderComposites::GetSeedCurveOnSurface(ZETCompStrategy* strategy)
{
    if (options->GetOffsetMode() == ZETLaserOptions::OffsetComplete)
        return strategy->GetFinalSeedCurve();
    const ZETGeoSurface* const surface = GetStrategySurface(strategy);
    const ZETFeatGeometry* const seedCurve = strategy->GetSeedCurve();
    if (!seedCurve)
        return nullptr;
    const ZETTopBody* const body = seedCurve->GetBody();
    if (!body)
        throw ZETSysException(u"seed curve does not have a body"_s);
    const QList<const ZETTopDomain*> domains = body->GetDomains();
    if (domains.size() != 1)
        throw ZETSysException(u"seed curve has more than one domain"_s); // Meant: the text serves for none as well.
    const QList<const ZETTopEntity*> edges = domains.first()->GetEntities(1);
    const auto* const net = qobject_cast<const ZETTopNet*>(domains.first());
    if (edges.isEmpty() || !net)
        throw ZETSysException(u"seed curve does not have any edges"_s);

    QList<ZETGeoRangeOfCurve> ranges;
    QList<bool> senses;
    for (const ZETTopEntity* entity : edges) {
        const auto* const edge = qobject_cast<const ZETTopEdge*>(entity);
        bool reversed = false;
        ZETGeoRangeOfCurve range;
        edge->GetCurve()->GetCurve(surface, &reversed, &range);
        ranges.append(range);
        senses.append(reversed == net->GetEdgeSense(net->GetEdgePosition(edge)));
    }
    auto curve = std::make_unique<ZETGeoAssembledCurveOnSurface>(ranges, senses, false);
    curve->Initialize();
    return curve.release(); // from here on it lives by its references
}

const ZETGeoSurface* ZETLaserReaderComposites::GetStrategySurface(ZETCompStrategy* strategy)
{
    const auto* const ply = FindAncestor<ZETCompPly>(*strategy);
    if (!ply)
        throw ZETSysException(u"could not get the ply from the strategy"_s);
    const ZETFeatGeometry* source = nullptr;
    if (options->GetOffsetMode() == ZETLaserOptions::OffsetComplete)
        source = ply->GetSurfaceUpdateFeature();
    if (!source) {
        const auto* const layup = GetGrandparent<ZETCompLayup>(*ply);
        source = layup ? layup->GetWorkpiece() : nullptr;
    }
    if (!source)
        throw ZETSysException(u"ply does not have the surface available"_s);
    const ZETTopBody* const body = source->GetBody();
    if (!body)
        throw ZETSysException(u"surface does not have a body"_s);
    const QList<const ZETTopEntity*> faces = body->GetEntities(2);
    const auto* const face = faces.size() == 1 ? qobject_cast<const ZETTopFace*>(faces.first()) : nullptr;
    if (!face)
        throw ZETSysException(u"surface does not have exactly one face"_s);
    return face->GetSurface();
}
