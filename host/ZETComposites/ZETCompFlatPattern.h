#pragma once

#include <ZETFeature/ZETFeatObject.h>

/*! What a ply looks like when it is unrolled: a folder of flat contours, curves and points, at any depth. Its own x
 *  axis is the ply's direction. */
class ZETHOST_EXPORT ZETCompFlatPattern : public ZETFeatObject
{
    Q_OBJECT
    Q_CLASSINFO("defaultLabel", "Flat Pattern")
    Q_CLASSINFO("allowedParents", "")

public:
    explicit ZETCompFlatPattern(ZETFeatObject* parent);
    Q_INVOKABLE ZETCompFlatPattern(ZETGeoContainer* container, const ZETGeoGeometryRef& reference);
    ~ZETCompFlatPattern() override;
};
