#include "openhost/ZETWireframe/ZETWFPlane_p.h"

#include "openhost/ZETComposites/ZETModelStream_p.h"

ZETWFPlane::ZETWFPlane(ZETFeatObject* parent)
    : ZETFeatObject(ZETModel::ContainerOf(parent), parent)
    , d(std::make_unique<ZETWFPlanePrivate>())
{
}

ZETWFPlane::ZETWFPlane(ZETGeoContainer* container, const ZETGeoGeometryRef& reference)
    : ZETFeatObject(reference, container)
    , d(std::make_unique<ZETWFPlanePrivate>())
{
}

ZETWFPlane::~ZETWFPlane() = default;

void ZETWFPlane::Save(ZETGeoStream& stream) const
{
    ZETFeatObject::Save(stream);
    stream.GetDataStream() << d->plane;
}

void ZETWFPlane::Load(ZETGeoStream& stream)
{
    ZETFeatObject::Load(stream);
    stream.GetDataStream() >> d->plane;
}

ZETMathPlane ZETWFPlane::GetPlane() const
{
    return d->plane;
}
