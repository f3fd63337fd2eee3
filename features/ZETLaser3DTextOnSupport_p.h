#pragma once

#include "features/ZETLaser3DText_p.h"
#include "features/ZETLaser3DTextOnSupport.h"

#include <ZETFeature/ZETFeatObjectProperty.h>
#include <ZETMathematics/ZETMathPlane.h>

/*! Record of ZETLaser3DTextOnSupport. */
class ZETLaser3DTextOnSupportPrivate final : public ZETLaser3DTextPrivate
{
public:
    using Text = ZETLaser3DTextOnSupport;

    void MakeProperties(ZETLaser3DText* owner) override
    {
        ZETLaser3DTextPrivate::MakeProperties(owner);
        const QMetaObject& type = Text::staticMetaObject;
        anchorPoint.emplace(owner, type.indexOfProperty(Text::Property_anchorpoint));
        support.emplace(owner, type.indexOfProperty(Text::Property_support));
        direction.emplace(owner, type.indexOfProperty(Text::Property_direction));
        verticalMirror.emplace(owner, type.indexOfProperty(Text::Property_verticalMirror), false);
        horizontalMirror.emplace(owner, type.indexOfProperty(Text::Property_horizontalMirror), false);
    }

    std::optional<ZETFeatObjectProperty<ZETFeatGeometry>> anchorPoint;
    std::optional<ZETFeatObjectProperty<ZETFeatGeometry>> support;
    std::optional<ZETFeatObjectProperty<ZETFeatGeometry>> direction;
    std::optional<ZETFeatValueProperty<bool>> verticalMirror;
    std::optional<ZETFeatValueProperty<bool>> horizontalMirror;

    ZETMathPlane plane; //!< as it was last worked out; no property, and saved all the same
};
