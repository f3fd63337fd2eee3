#pragma once

#include <ZETComposites/ZETCompSurfaceUpdate.h>
#include <ZETTopology/ZETTopBody.h>

#include <memory>

class ZETCompSurfaceUpdatePrivate
{
public:
    static ZETCompSurfaceUpdatePrivate& Of(ZETCompSurfaceUpdate& surfaceUpdate) { return *surfaceUpdate.d; }

    std::unique_ptr<ZETTopBody> body;
};
