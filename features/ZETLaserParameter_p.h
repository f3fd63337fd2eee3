#pragma once

#include "features/ZETLaserParameter.h"

#include <ZETFeature/ZETFeatValueProperty.h>

/*! Record of ZETLaserParameter. */
class ZETLaserParameterPrivate
{
public:
    explicit ZETLaserParameterPrivate(ZETLaserParameter* owner)
        : type(owner, ZETLaserParameter::staticMetaObject.indexOfProperty(ZETLaserParameter::Property_type))
        , text(owner, ZETLaserParameter::staticMetaObject.indexOfProperty(ZETLaserParameter::Property_text), QString())
    {
    }
    virtual ~ZETLaserParameterPrivate() = default;

    static ZETLaserParameterPrivate& Of(ZETLaserParameter& feature) { return *feature.d_func(); }

    ZETFeatValueProperty<ZETLaserParameter::ParameterType> type;
    ZETFeatValueProperty<QString> text;
};
