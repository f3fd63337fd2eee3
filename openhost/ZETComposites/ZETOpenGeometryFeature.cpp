#include "openhost/ZETComposites/ZETOpenGeometryFeature.h"

#include "openhost/ZETTopology/ZETOpenShapeStore.h"

#include <ZETGeometry/ZETGeoStream.h>
#include <ZETTopology/ZETTopBody.h>

ZETOpenGeometryFeature::ZETOpenGeometryFeature(ZETFeatObject* parent)
    : ZETFeatGeometry(parent)
{
}

ZETOpenGeometryFeature::ZETOpenGeometryFeature(ZETGeoContainer* container, const ZETGeoGeometryRef& reference)
    : ZETFeatGeometry(container, reference)
{
}

ZETOpenGeometryFeature::~ZETOpenGeometryFeature() = default;

void ZETOpenGeometryFeature::Save(ZETGeoStream& stream) const
{
    ZETFeatGeometry::Save(stream);
    ZETOpenShapeStore::SaveBody(stream.GetDataStream(), body.get());
}

void ZETOpenGeometryFeature::Load(ZETGeoStream& stream)
{
    ZETFeatGeometry::Load(stream);
    body = ZETOpenShapeStore::LoadBody(stream.GetDataStream());
}

ZETTopBody* ZETOpenGeometryFeature::GetBody() const
{
    return body.get();
}

void ZETOpenGeometryFeature::SetBody(std::unique_ptr<ZETTopBody> newBody)
{
    body = std::move(newBody);
    SetOutdated();
}
