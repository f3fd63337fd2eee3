#include "openhost/ZETComposites/ZETCompFlatGeometry_p.h"

#include "openhost/ZETComposites/ZETModelStream_p.h"
#include "openhost/ZETTopology/ZETOpenShapeStore.h"

ZETCompFlatGeometry::ZETCompFlatGeometry(ZETFeatObject* parent)
    : ZETFeatGeometry(parent)
    , d(std::make_unique<ZETCompFlatGeometryPrivate>())
{
}

ZETCompFlatGeometry::ZETCompFlatGeometry(ZETGeoContainer* container, const ZETGeoGeometryRef& reference)
    : ZETFeatGeometry(container, reference)
    , d(std::make_unique<ZETCompFlatGeometryPrivate>())
{
}

ZETCompFlatGeometry::~ZETCompFlatGeometry() = default;

void ZETCompFlatGeometry::Save(ZETGeoStream& stream) const
{
    ZETFeatGeometry::Save(stream);
    ZETOpenShapeStore::SaveBody(stream.GetDataStream(), d->body.get());
    ZETModel::SaveReference(stream, d->source);
}

void ZETCompFlatGeometry::Load(ZETGeoStream& stream)
{
    ZETFeatGeometry::Load(stream);
    d->body = ZETOpenShapeStore::LoadBody(stream.GetDataStream());
    d->source = ZETModel::LoadReference<ZETFeatGeometry>(stream);
}

ZETTopBody* ZETCompFlatGeometry::GetBody() const
{
    return d->body.get();
}

ZETFeatGeometry* ZETCompFlatGeometry::GetSource() const
{
    return d->source;
}
