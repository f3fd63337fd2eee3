#include "openhost/ZETComposites/ZETCompRoot_p.h"

#include "openhost/ZETComposites/ZETModelStream_p.h"

#include <ZETComposites/ZETCompLayup.h>

ZETCompRoot::ZETCompRoot(ZETFeatContainer* container)
    : ZETFeatRoot(container)
    , d(std::make_unique<ZETCompRootPrivate>())
{
}

ZETCompRoot::ZETCompRoot(ZETGeoContainer* container, const ZETGeoGeometryRef& reference)
    : ZETFeatRoot(container, reference)
    , d(std::make_unique<ZETCompRootPrivate>())
{
}

ZETCompRoot::~ZETCompRoot() = default;

void ZETCompRoot::Save(ZETGeoStream& stream) const
{
    ZETFeatRoot::Save(stream);
    ZETModel::SaveReference(stream, d->activeConfiguration);
}

void ZETCompRoot::Load(ZETGeoStream& stream)
{
    ZETFeatRoot::Load(stream);
    d->activeConfiguration = ZETModel::LoadReference<ZETCompMfgConfiguration>(stream);
}

QList<ZETCompLayup*> ZETCompRoot::GetLayups() const
{
    return ZETModel::ChildrenOfClass<ZETCompLayup>(*this);
}

ZETCompMfgConfiguration* ZETCompRoot::GetActiveMfgConfiguration() const
{
    return d->activeConfiguration;
}
