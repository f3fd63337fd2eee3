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

    static ZETLaserTargetPrivate& Of(ZETLaserTarget& feature) { return *feature.d_func(); }
    /*! A new target below \a parent, whose container owns it. */
    static ZETLaserTarget* Make(ZETFeatObject* parent) { return new ZETLaserTarget(parent); }

    ZETFeatValueProperty<QString> comment;
    ZETFeatValueProperty<bool> isDrift;
    ZETFeatObjectProperty<ZETFeatGeometry> point;
};
