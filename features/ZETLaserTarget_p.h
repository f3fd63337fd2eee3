#pragma once

#include "features/ZETLaserTarget.h"

#include <ZETFeature/ZETFeatObjectProperty.h>
#include <ZETFeature/ZETFeatValueProperty.h>

/*! Record of ZETLaserTarget. */
class ZETLaserTargetPrivate
{
public:
    explicit ZETLaserTargetPrivate(ZETLaserTarget* owner)
        : comment(owner, ZETLaserTarget::staticMetaObject.indexOfProperty(ZETLaserTarget::Property_comment), QString())
        , isDrift(owner, ZETLaserTarget::staticMetaObject.indexOfProperty(ZETLaserTarget::Property_isDrift))
        , point(owner, ZETLaserTarget::staticMetaObject.indexOfProperty(ZETLaserTarget::Property_point))
    {
    }
    virtual ~ZETLaserTargetPrivate() = default;

    ZETFeatValueProperty<QString> comment;
    ZETFeatValueProperty<bool> isDrift;
    ZETFeatObjectProperty<ZETFeatGeometry> point;
};
