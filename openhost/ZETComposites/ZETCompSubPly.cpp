#include <ZETComposites/ZETCompSubPly.h>

ZETCompSubPly::ZETCompSubPly(ZETFeatObject* parent)
    : ZETCompPlyBase(parent)
{
}

ZETCompSubPly::ZETCompSubPly(ZETGeoContainer* container, const ZETGeoGeometryRef& reference)
    : ZETCompPlyBase(container, reference)
{
}

ZETCompSubPly::~ZETCompSubPly() = default;
