#pragma once

#include "features/ZETLaser3DText_p.h"
#include "features/ZETLaser3DTextByAxis.h"

#include <ZETFeature/ZETFeatObjectProperty.h>

/*! Record of ZETLaser3DTextByAxis. */
class ZETLaser3DTextByAxisPrivate final : public ZETLaser3DTextPrivate
{
public:
    void MakeProperties(ZETLaser3DText* owner) override
    {
        ZETLaser3DTextPrivate::MakeProperties(owner);
        const QMetaObject& type = ZETLaser3DTextByAxis::staticMetaObject;
        axis.emplace(owner, type.indexOfProperty(ZETLaser3DTextByAxis::Property_axis));
    }

    std::optional<ZETFeatObjectProperty<ZETWFAxisSystem>> axis;
};
