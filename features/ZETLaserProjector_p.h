#pragma once

#include "features/ZETLaserProjector.h"

#include <ZETFeature/ZETFeatObjectListProperty.h>
#include <ZETFeature/ZETFeatValueProperty.h>

/*! Record of ZETLaserProjector. The list has no signals for single elements: one signal tells of the whole list. */
class ZETLaserProjectorPrivate
{
public:
    explicit ZETLaserProjectorPrivate(ZETLaserProjector* owner)
        : comment(owner, ZETLaserProjector::staticMetaObject.indexOfProperty(ZETLaserProjector::Property_comment),
                  QString())
        , targets(owner, ZETLaserProjector::staticMetaObject.indexOfProperty(ZETLaserProjector::Property_targets))
    {
    }
    virtual ~ZETLaserProjectorPrivate() = default;

    static ZETLaserProjectorPrivate& Of(ZETLaserProjector& feature) { return *feature.d_func(); }
    /*! A new projector below \a parent, whose container owns it. */
    static ZETLaserProjector* Make(ZETFeatObject* parent) { return new ZETLaserProjector(parent); }

    ZETFeatValueProperty<QString> comment;
    ZETFeatObjectListProperty<ZETLaserTarget> targets;
};
