#include "openhost/ZETComposites/ZETCompStrategy_p.h"

#include "openhost/ZETComposites/ZETModelStream_p.h"
#include "openhost/ZETGeometry/ZETOpenSurface.h"
#include "openhost/ZETTopology/ZETOpenShapeStore.h"

#include <ZETComposites/ZETCompFlatPattern.h>
#include <ZETComposites/ZETCompLayup.h>
#include <ZETComposites/ZETCompPly.h>
#include <ZETComposites/ZETCompSurfaceUpdate.h>
#include <ZETGeometry/ZETGeoComboPoint.h>
#include <ZETTopology/ZETTopBody.h>
#include <ZETTopology/ZETTopFace.h>
#include <ZETTopology/ZETTopVertex.h>

namespace
{

/*! The first entity of one dimension of the body of \a geometry; null if there is none. */
template <typename T>
const T* FirstEntity(const ZETFeatGeometry* geometry, int dimension)
{
    const ZETTopBody* const body = geometry ? geometry->GetBody() : nullptr;
    const auto entities = body ? body->GetEntities(dimension) : QList<const ZETTopEntity*>();
    return entities.isEmpty() ? nullptr : qobject_cast<const T*>(entities.first());
}

/*! The surface on which a ply that \a strategy makes comes to lie; null if the model has none. */
const ZETGeoSurface* FinalSurface(const ZETCompStrategy& strategy)
{
    const auto* const ply = ZETModel::AncestorOfClass<ZETCompPly>(strategy);
    if (!ply)
        return nullptr;
    const auto* face = FirstEntity<ZETTopFace>(ply->GetSurfaceUpdateFeature(), 2);
    if (!face) {
        const auto* const layup = ZETModel::AncestorOfClass<ZETCompLayup>(*ply);
        face = FirstEntity<ZETTopFace>(layup ? layup->GetWorkpiece() : nullptr, 2);
    }
    return face ? face->GetSurface() : nullptr;
}

} // namespace

ZETCompStrategy::ZETCompStrategy(ZETFeatObject* parent)
    : ZETCompStrategyBase(parent)
    , d(std::make_unique<ZETCompStrategyPrivate>())
{
}

ZETCompStrategy::ZETCompStrategy(ZETGeoContainer* container, const ZETGeoGeometryRef& reference)
    : ZETCompStrategyBase(container, reference)
    , d(std::make_unique<ZETCompStrategyPrivate>())
{
}

ZETCompStrategy::~ZETCompStrategy() = default;

void ZETCompStrategy::Save(ZETGeoStream& stream) const
{
    ZETCompStrategyBase::Save(stream);
    ZETModel::SaveReference(stream, d->seedPoint);
    ZETModel::SaveReference(stream, d->seedCurve);
    stream.GetDataStream() << d->hasFinalSeed;
    ZETOpenShapeStore::SaveLocation(stream.GetDataStream(), d->finalSeed);
    ZETOpenShapeStore::SaveCurve(stream.GetDataStream(), d->finalSeedCurve.Get());
    ZETModel::SaveReference(stream, d->packaging);
}

void ZETCompStrategy::Load(ZETGeoStream& stream)
{
    ZETCompStrategyBase::Load(stream);
    d->seedPoint = ZETModel::LoadReference<ZETFeatGeometry>(stream);
    d->seedCurve = ZETModel::LoadReference<ZETFeatGeometry>(stream);
    stream.GetDataStream() >> d->hasFinalSeed;
    ZETOpenRef<ZETOpenSurface> surface;
    d->finalSeed = ZETOpenShapeStore::LoadLocation(stream.GetDataStream(), surface);
    d->finalSurface = surface;
    d->finalSeedCurve = ZETOpenShapeStore::LoadCurve(stream.GetDataStream());
    d->packaging = ZETModel::LoadReference<ZETMatPackaging>(stream);
}

ZETFeatGeometry* ZETCompStrategy::GetSeedPoint() const
{
    return d->seedPoint;
}

ZETFeatGeometry* ZETCompStrategy::GetSeedCurve() const
{
    return d->seedCurve;
}

ZETGeoLocationOnSurface ZETCompStrategy::GetFinalSeedPoint() const
{
    if (d->hasFinalSeed)
        return d->finalSeed;
    const auto* const vertex = FirstEntity<ZETTopVertex>(d->seedPoint, 0);
    const ZETGeoSurface* const surface = vertex ? FinalSurface(*this) : nullptr;
    return surface ? surface->Project(vertex->GetPoint()->GetPosition()) : ZETGeoLocationOnSurface();
}

const ZETGeoCurveOnSurface* ZETCompStrategy::GetFinalSeedCurve() const
{
    return d->finalSeedCurve.Get();
}

ZETCompFlatPattern* ZETCompStrategy::GetFlatPattern() const
{
    return ZETModel::FirstChildOfClass<ZETCompFlatPattern>(*this);
}

ZETMatPackaging* ZETCompStrategy::GetPackaging() const
{
    return d->packaging;
}
