#pragma once

#include <ZETComposites/ZETCompLayup.h>
#include <ZETHostGlobal.h>

#include <QList>
#include <QString>

#include <memory>

class ZETCompFlatGeometry;
class ZETCompMfgConfiguration;
class ZETCompPly;
class ZETCompPlyBase;
class ZETCompRoot;
class ZETCompRosette;
class ZETCompStrategy;
class ZETCompStrategyBase;
class ZETCompSurfaceUpdate;
class ZETFeatGeometry;
class ZETGeoAssembledCurveOnSurface;
class ZETGeoCurveOnSurface;
class ZETGeoLocationOnSurface;
class ZETMatMaterial;
class ZETMatPackaging;
class ZETTopBody;
class ZETWFPlane;

/*! How a composite model of the open host is made: the classes of ZETComposites show a model and change nothing, so
 *  whoever builds one makes the features with their constructors, in model order, and fills them in with these
 *  functions.
 *
 *  Features that are referred to are not owned: a reference reads null when the other feature has gone. Geometry is
 *  owned: a curve gets a reference (ZETGeoGeometry::AddReference) until it is replaced or the feature goes, and a body
 *  belongs to the feature. Each function marks the feature as outdated. */
namespace ZETOpenComposites
{

/*! Which of the configurations counts; null is allowed. */
ZETHOST_EXPORT void SetActiveMfgConfiguration(ZETCompRoot& root, ZETCompMfgConfiguration* configuration);

ZETHOST_EXPORT void SetLayupDirection(ZETCompLayup& layup, bool direction);
ZETHOST_EXPORT void SetWorkpiece(ZETCompLayup& layup, ZETFeatGeometry* workpiece);
ZETHOST_EXPORT void SetRosette(ZETCompLayup& layup, ZETCompRosette* rosette);
ZETHOST_EXPORT void SetFlatteningPlane(ZETCompLayup& layup, ZETWFPlane* plane);
ZETHOST_EXPORT void SetFlatteningMode(ZETCompLayup& layup, ZETCompLayup::FlatteningMode mode);

/*! The boundaries; an element may be null. */
ZETHOST_EXPORT void SetBoundaryCurves(ZETCompPlyBase& ply, const QList<ZETGeoAssembledCurveOnSurface*>& curves);
/*! The updated boundaries; an element may be null. As long as this was never called, or after
 *  ResetUpdatedBoundaryCurves, the boundaries themselves are the answer. */
ZETHOST_EXPORT void SetUpdatedBoundaryCurves(ZETCompPlyBase& ply, const QList<const ZETGeoCurveOnSurface*>& curves);
ZETHOST_EXPORT void ResetUpdatedBoundaryCurves(ZETCompPlyBase& ply);

/*! \a direction in radians. */
ZETHOST_EXPORT void SetDirection(ZETCompPly& ply, double direction);
ZETHOST_EXPORT void SetMaterials(ZETCompPly& ply, const QList<ZETMatMaterial*>& materials);
ZETHOST_EXPORT void SetSurfaceUpdateFeature(ZETCompPly& ply, ZETCompSurfaceUpdate* surfaceUpdate);

ZETHOST_EXPORT void SetSeedPoint(ZETCompStrategy& strategy, ZETFeatGeometry* seedPoint);
ZETHOST_EXPORT void SetSeedCurve(ZETCompStrategy& strategy, ZETFeatGeometry* seedCurve);
/*! The seed on the final surface, which is held. As long as this was never called, the answer is the seed point's
 *  position, projected onto the first face of the ply's surface update, or of the workpiece without one. */
ZETHOST_EXPORT void SetFinalSeedPoint(ZETCompStrategy& strategy, const ZETGeoLocationOnSurface& location);
/*! Null is allowed. */
ZETHOST_EXPORT void SetFinalSeedCurve(ZETCompStrategy& strategy, const ZETGeoCurveOnSurface* curve);
ZETHOST_EXPORT void SetPackaging(ZETCompStrategy& strategy, ZETMatPackaging* packaging);

/*! The body, which the feature owns from now on; null is allowed. */
ZETHOST_EXPORT void SetBody(ZETCompFlatGeometry& geometry, std::unique_ptr<ZETTopBody> body);
ZETHOST_EXPORT void SetSource(ZETCompFlatGeometry& geometry, ZETFeatGeometry* source);
ZETHOST_EXPORT void SetBody(ZETCompSurfaceUpdate& surfaceUpdate, std::unique_ptr<ZETTopBody> body);

/*! Everything that a configuration says beside its choices, with its defaults. Sizes in mm. */
struct MfgConfigurationSettings {
    bool use3D = true;
    bool includeNormalVectors = true;
    bool skipParentPlyWithSubPlies = false;
    bool seedPoint = false;
    bool seedCurve = false;
    bool laserDataExtraGeometry = true;
    bool nestingDataExtraGeometry = true;
    bool nestingDataRosette = false;
    double laserDataRosetteSize = 100.0;
    double nestingDataRosetteSize = 100.0;
};
ZETHOST_EXPORT void SetSettings(ZETCompMfgConfiguration& configuration, const MfgConfigurationSettings& settings);
ZETHOST_EXPORT MfgConfigurationSettings GetSettings(const ZETCompMfgConfiguration& configuration);
/*! What \a configuration makes of \a ply: one of the strategies and subdivisions below it, or null for none of them. A
 *  ply without such a choice is made with the first that stands below it. */
ZETHOST_EXPORT void SetIncluded(ZETCompMfgConfiguration& configuration, ZETCompPlyBase& ply,
                                ZETCompStrategyBase* strategyOrSubdivision);

} // namespace ZETOpenComposites
