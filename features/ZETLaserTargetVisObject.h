#pragma once

#include <ZETFeature/ZETFeatEnvironment.h>
#include <ZETFeature/ZETFeatVisObject.h>

/*! Shows a target as one marker at its coordinates. */
class ZETLaserTargetVisObject final : public ZETFeatVisObject
{
    Q_OBJECT

public:
    /*! Throws ZETSysException unless \a feature is a ZETLaserTarget. */
    Q_INVOKABLE ZETLaserTargetVisObject(const ZETFeatEnvironment* environment, ZETFeatObject* feature);
    ~ZETLaserTargetVisObject() override;

    ZETVisRepGraphics* CreateRepresentation() override;
};
