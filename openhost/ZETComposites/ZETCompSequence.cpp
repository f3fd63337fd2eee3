#include <ZETComposites/ZETCompSequence.h>

#include "openhost/ZETComposites/ZETModelStream_p.h"

#include <ZETComposites/ZETCompPly.h>

ZETCompSequence::ZETCompSequence(ZETFeatObject* parent)
    : ZETFeatObject(ZETModel::ContainerOf(parent), parent)
{
}

ZETCompSequence::ZETCompSequence(ZETGeoContainer* container, const ZETGeoGeometryRef& reference)
    : ZETFeatObject(reference, container)
{
}

ZETCompSequence::~ZETCompSequence() = default;

QList<ZETCompPly*> ZETCompSequence::GetPlies() const
{
    return ZETModel::ChildrenOfClass<ZETCompPly>(*this);
}
