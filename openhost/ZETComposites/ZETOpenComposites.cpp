#include "openhost/ZETComposites/ZETOpenComposites.h"

#include "openhost/ZETComposites/ZETCompFlatGeometry_p.h"
#include "openhost/ZETComposites/ZETCompLayup_p.h"
#include "openhost/ZETComposites/ZETCompMfgConfiguration_p.h"
#include "openhost/ZETComposites/ZETCompPly_p.h"
#include "openhost/ZETComposites/ZETCompPlyBase_p.h"
#include "openhost/ZETComposites/ZETCompRoot_p.h"
#include "openhost/ZETComposites/ZETCompStrategy_p.h"
#include "openhost/ZETComposites/ZETCompSurfaceUpdate_p.h"

void ZETOpenComposites::SetActiveMfgConfiguration(ZETCompRoot& root, ZETCompMfgConfiguration* configuration)
{
    ZETCompRootPrivate::Of(root).activeConfiguration = configuration;
    root.SetOutdated();
}

void ZETOpenComposites::SetLayupDirection(ZETCompLayup& layup, bool direction)
{
    ZETCompLayupPrivate::Of(layup).direction = direction;
    layup.SetOutdated();
}

void ZETOpenComposites::SetWorkpiece(ZETCompLayup& layup, ZETFeatGeometry* workpiece)
{
    ZETCompLayupPrivate::Of(layup).workpiece = workpiece;
    layup.SetOutdated();
}

void ZETOpenComposites::SetRosette(ZETCompLayup& layup, ZETCompRosette* rosette)
{
    ZETCompLayupPrivate::Of(layup).rosette = rosette;
    layup.SetOutdated();
}

void ZETOpenComposites::SetFlatteningPlane(ZETCompLayup& layup, ZETWFPlane* plane)
{
    ZETCompLayupPrivate::Of(layup).flatteningPlane = plane;
    layup.SetOutdated();
}

void ZETOpenComposites::SetFlatteningMode(ZETCompLayup& layup, ZETCompLayup::FlatteningMode mode)
{
    ZETCompLayupPrivate::Of(layup).flatteningMode = mode;
    layup.SetOutdated();
}

void ZETOpenComposites::SetBoundaryCurves(ZETCompPlyBase& ply, const QList<ZETGeoAssembledCurveOnSurface*>& curves)
{
    QList<ZETOpenRef<ZETGeoAssembledCurveOnSurface>> boundaries;
    for (ZETGeoAssembledCurveOnSurface* curve : curves)
        boundaries.append(ZETOpenRef<ZETGeoAssembledCurveOnSurface>(curve));
    ZETCompPlyBasePrivate::Of(ply).boundaries = boundaries;
    ply.SetOutdated();
}

void ZETOpenComposites::SetUpdatedBoundaryCurves(ZETCompPlyBase& ply, const QList<const ZETGeoCurveOnSurface*>& curves)
{
    QList<ZETOpenRef<const ZETGeoCurveOnSurface>> boundaries;
    for (const ZETGeoCurveOnSurface* curve : curves)
        boundaries.append(ZETOpenRef<const ZETGeoCurveOnSurface>(curve));
    auto& record = ZETCompPlyBasePrivate::Of(ply);
    record.updatedBoundaries = boundaries;
    record.hasUpdatedBoundaries = true;
    ply.SetOutdated();
}

void ZETOpenComposites::ResetUpdatedBoundaryCurves(ZETCompPlyBase& ply)
{
    auto& record = ZETCompPlyBasePrivate::Of(ply);
    record.updatedBoundaries.clear();
    record.hasUpdatedBoundaries = false;
    ply.SetOutdated();
}

void ZETOpenComposites::SetDirection(ZETCompPly& ply, double direction)
{
    ZETCompPlyPrivate::Of(ply).direction = direction;
    ply.SetOutdated();
}

void ZETOpenComposites::SetMaterials(ZETCompPly& ply, const QList<ZETMatMaterial*>& materials)
{
    auto& record = ZETCompPlyPrivate::Of(ply);
    record.materials.clear();
    for (ZETMatMaterial* material : materials)
        record.materials.append(material);
    ply.SetOutdated();
}

void ZETOpenComposites::SetSurfaceUpdateFeature(ZETCompPly& ply, ZETCompSurfaceUpdate* surfaceUpdate)
{
    ZETCompPlyPrivate::Of(ply).surfaceUpdate = surfaceUpdate;
    ply.SetOutdated();
}

void ZETOpenComposites::SetSeedPoint(ZETCompStrategy& strategy, ZETFeatGeometry* seedPoint)
{
    ZETCompStrategyPrivate::Of(strategy).seedPoint = seedPoint;
    strategy.SetOutdated();
}

void ZETOpenComposites::SetSeedCurve(ZETCompStrategy& strategy, ZETFeatGeometry* seedCurve)
{
    ZETCompStrategyPrivate::Of(strategy).seedCurve = seedCurve;
    strategy.SetOutdated();
}

void ZETOpenComposites::SetFinalSeedPoint(ZETCompStrategy& strategy, const ZETGeoLocationOnSurface& location)
{
    auto& record = ZETCompStrategyPrivate::Of(strategy);
    record.hasFinalSeed = true;
    record.finalSeed = location;
    record.finalSurface = ZETOpenRef<const ZETGeoSurface>(location.GetSurface());
    strategy.SetOutdated();
}

void ZETOpenComposites::SetFinalSeedCurve(ZETCompStrategy& strategy, const ZETGeoCurveOnSurface* curve)
{
    ZETCompStrategyPrivate::Of(strategy).finalSeedCurve = ZETOpenRef<const ZETGeoCurveOnSurface>(curve);
    strategy.SetOutdated();
}

void ZETOpenComposites::SetPackaging(ZETCompStrategy& strategy, ZETMatPackaging* packaging)
{
    ZETCompStrategyPrivate::Of(strategy).packaging = packaging;
    strategy.SetOutdated();
}

void ZETOpenComposites::SetBody(ZETCompFlatGeometry& geometry, std::unique_ptr<ZETTopBody> body)
{
    ZETCompFlatGeometryPrivate::Of(geometry).body = std::move(body);
    geometry.SetOutdated();
}

void ZETOpenComposites::SetSource(ZETCompFlatGeometry& geometry, ZETFeatGeometry* source)
{
    ZETCompFlatGeometryPrivate::Of(geometry).source = source;
    geometry.SetOutdated();
}

void ZETOpenComposites::SetBody(ZETCompSurfaceUpdate& surfaceUpdate, std::unique_ptr<ZETTopBody> body)
{
    ZETCompSurfaceUpdatePrivate::Of(surfaceUpdate).body = std::move(body);
    surfaceUpdate.SetOutdated();
}

void ZETOpenComposites::SetSettings(ZETCompMfgConfiguration& configuration, const MfgConfigurationSettings& settings)
{
    ZETCompMfgConfigurationPrivate::Of(configuration).settings = settings;
    configuration.SetOutdated();
}

ZETOpenComposites::MfgConfigurationSettings ZETOpenComposites::GetSettings(const ZETCompMfgConfiguration& configuration)
{
    return ZETCompMfgConfigurationPrivate::Of(configuration).settings;
}

void ZETOpenComposites::SetIncluded(ZETCompMfgConfiguration& configuration, ZETCompPlyBase& ply,
                                    ZETCompStrategyBase* strategyOrSubdivision)
{
    ZETCompMfgConfigurationPrivate::Of(configuration).Choose(ply, strategyOrSubdivision);
    configuration.SetOutdated();
}
