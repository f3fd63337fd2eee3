#include "openhost/ZETComposites/ZETCompSurfaceUpdate_p.h"

#include "openhost/ZETComposites/ZETModelStream_p.h"
#include "openhost/ZETTopology/ZETOpenShapeStore.h"

ZETCompSurfaceUpdate::ZETCompSurfaceUpdate(ZETFeatObject* parent)
    : ZETFeatGeometry(parent)
    , d(std::make_unique<ZETCompSurfaceUpdatePrivate>())
{
}

ZETCompSurfaceUpdate::ZETCompSurfaceUpdate(ZETGeoContainer* container, const ZETGeoGeometryRef& reference)
    : ZETFeatGeometry(container, reference)
    , d(std::make_unique<ZETCompSurfaceUpdatePrivate>())
{
}

ZETCompSurfaceUpdate::~ZETCompSurfaceUpdate() = default;

void ZETCompSurfaceUpdate::Save(ZETGeoStream& stream) const
{
    ZETFeatGeometry::Save(stream);
    ZETOpenShapeStore::SaveBody(stream.GetDataStream(), d->body.get());
}

void ZETCompSurfaceUpdate::Load(ZETGeoStream& stream)
{
    ZETFeatGeometry::Load(stream);
    d->body = ZETOpenShapeStore::LoadBody(stream.GetDataStream());
}

ZETTopBody* ZETCompSurfaceUpdate::GetBody() const
{
    return d->body.get();
}
