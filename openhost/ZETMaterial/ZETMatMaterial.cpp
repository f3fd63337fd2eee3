#include "openhost/ZETMaterial/ZETMatMaterial_p.h"

#include "openhost/ZETComposites/ZETModelStream_p.h"

ZETMatMaterial::ZETMatMaterial(ZETFeatObject* parent)
    : ZETFeatObject(ZETModel::ContainerOf(parent), parent)
    , d(std::make_unique<ZETMatMaterialPrivate>())
{
}

ZETMatMaterial::ZETMatMaterial(ZETGeoContainer* container, const ZETGeoGeometryRef& reference)
    : ZETFeatObject(reference, container)
    , d(std::make_unique<ZETMatMaterialPrivate>())
{
}

ZETMatMaterial::~ZETMatMaterial() = default;

void ZETMatMaterial::Save(ZETGeoStream& stream) const
{
    ZETFeatObject::Save(stream);
    stream.GetDataStream() << d->type << d->id << d->thickness;
}

void ZETMatMaterial::Load(ZETGeoStream& stream)
{
    ZETFeatObject::Load(stream);
    stream.GetDataStream() >> d->type >> d->id >> d->thickness;
}

QString ZETMatMaterial::GetMaterialType() const
{
    return d->type;
}

QString ZETMatMaterial::GetMaterialId() const
{
    return d->id;
}

double ZETMatMaterial::GetThickness() const
{
    return d->thickness;
}
