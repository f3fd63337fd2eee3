#pragma once

#include <ZETFeature/ZETFeatEnvironment.h>
#include <ZETFeature/ZETFeatVisObject.h>

/*! Shows a 3D text as its strokes, as the user typed it: macros aren't expanded. A text without a place isn't shown. */
class ZETLaser3DTextVisObject final : public ZETFeatVisObject
{
    Q_OBJECT

public:
    /*! Throws ZETSysException unless \a feature is a ZETLaser3DText. */
    Q_INVOKABLE ZETLaser3DTextVisObject(const ZETFeatEnvironment* environment, ZETFeatObject* feature);
    ~ZETLaser3DTextVisObject() override;

    ZETVisRepGraphics* CreateRepresentation() override;
};
