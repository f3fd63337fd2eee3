#pragma once

#include "features/ZETLaser3DText.h"

#include <ZETFeature/ZETFeatValueProperty.h>

#include <optional>

/*! Record of ZETLaser3DText and base of its subclasses' records. The concrete class makes it ahead of its base, when
 *  there is no feature yet that a property could belong to; so the properties are made afterwards. */
class ZETLaser3DTextPrivate
{
public:
    virtual ~ZETLaser3DTextPrivate() = default;

    static ZETLaser3DTextPrivate& Of(ZETLaser3DText& feature) { return *feature.d_func(); }

    /*! Called once, by the constructor of ZETLaser3DText. A subclass calls its base first. */
    virtual void MakeProperties(ZETLaser3DText* owner)
    {
        const QMetaObject& type = ZETLaser3DText::staticMetaObject;
        text.emplace(owner, type.indexOfProperty(ZETLaser3DText::Property_text), QString());
        size.emplace(owner, type.indexOfProperty(ZETLaser3DText::Property_size), 10.0);
    }

    std::optional<ZETFeatValueProperty<QString>> text;
    std::optional<ZETFeatValueProperty<double>> size;
};
