#include "openhost/ZETGeometry/ZETGeoGeometry_p.h"

#include "openhost/ZETGeometry/ZETGeoContainer_p.h"

ZETGeoGeometry::ZETGeoGeometry(ZETGeoContainer* container)
    : ZETGeoGeometry(container, ZETGeoGeometryRef())
{
}

ZETGeoGeometry::ZETGeoGeometry(ZETGeoContainer* container, const ZETGeoGeometryRef& reference)
    : d(std::make_unique<ZETGeoGeometryPrivate>())
{
    if (container)
        ZETGeoContainerPrivate::Add(*container, *this, reference);
}

ZETGeoGeometry::~ZETGeoGeometry()
{
    ZETGeoContainerPrivate::Release(*this);
}

void ZETGeoGeometry::Save(ZETGeoStream& stream) const
{
    Q_UNUSED(stream)
}

void ZETGeoGeometry::Load(ZETGeoStream& stream)
{
    Q_UNUSED(stream)
}

void ZETGeoGeometry::SetCurrentState(const QByteArray& state)
{
    Q_UNUSED(state)
}

void ZETGeoGeometry::Initialize()
{
}

void ZETGeoGeometry::Remove()
{
    const bool isOwned = d->container;
    ZETGeoContainerPrivate::Release(*this);
    if (isOwned && d->references == 0)
        delete this;
}

void ZETGeoGeometry::BeginStateLoad()
{
    d->isLoading = true;
}

void ZETGeoGeometry::EndStateLoad()
{
    d->isLoading = false;
}

void ZETGeoGeometry::Cleanup()
{
}

void ZETGeoGeometry::AddReference() const
{
    ++d->references;
}

void ZETGeoGeometry::RemoveReference() const
{
    if (d->references > 0)
        --d->references;
    if (d->references == 0 && !d->container)
        delete this;
}

ZETGeoContainer* ZETGeoGeometry::GetContainer() const
{
    return d->container;
}
