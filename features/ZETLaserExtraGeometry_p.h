#pragma once

#include "features/ZETLaserExtraGeometry.h"

#include <ZETFeature/ZETFeatValueProperty.h>

/*! Record of ZETLaserExtraGeometry. */
class ZETLaserExtraGeometryPrivate
{
public:
    explicit ZETLaserExtraGeometryPrivate(ZETLaserExtraGeometry* owner)
        : scope(owner, ZETLaserExtraGeometry::staticMetaObject.indexOfProperty(ZETLaserExtraGeometry::Property_scope))
        , filters(owner,
                  ZETLaserExtraGeometry::staticMetaObject.indexOfProperty(ZETLaserExtraGeometry::Property_filters))
    {
    }
    virtual ~ZETLaserExtraGeometryPrivate() = default;

    static ZETLaserExtraGeometryPrivate& Of(ZETLaserExtraGeometry& feature) { return *feature.d_func(); }

    ZETFeatValueProperty<ZETLaserExtraGeometry::ScopeType> scope;
    ZETFeatValueProperty<ZETLaserExtraGeometry::OutputFilters> filters;
};
