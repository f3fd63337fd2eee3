#include "openhost/ZETMaterial/ZETMatPackaging_p.h"

#include "openhost/ZETComposites/ZETModelStream_p.h"

ZETMatPackaging::ZETMatPackaging(ZETFeatObject* parent)
    : ZETFeatObject(ZETModel::ContainerOf(parent), parent)
    , d(std::make_unique<ZETMatPackagingPrivate>())
{
}

ZETMatPackaging::ZETMatPackaging(ZETGeoContainer* container, const ZETGeoGeometryRef& reference)
    : ZETFeatObject(reference, container)
    , d(std::make_unique<ZETMatPackagingPrivate>())
{
}

ZETMatPackaging::~ZETMatPackaging() = default;

void ZETMatPackaging::Save(ZETGeoStream& stream) const
{
    ZETFeatObject::Save(stream);
    stream.GetDataStream() << d->width << d->length;
}

void ZETMatPackaging::Load(ZETGeoStream& stream)
{
    ZETFeatObject::Load(stream);
    stream.GetDataStream() >> d->width >> d->length;
}

double ZETMatPackaging::GetWidth() const
{
    return d->width;
}

double ZETMatPackaging::GetLength() const
{
    return d->length;
}
