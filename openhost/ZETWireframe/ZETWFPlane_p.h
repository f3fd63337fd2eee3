#pragma once

#include <ZETMathematics/ZETMathPlane.h>
#include <ZETWireframe/ZETWFPlane.h>

class ZETWFPlanePrivate
{
public:
    static ZETWFPlanePrivate& Of(ZETWFPlane& feature) { return *feature.d; }

    ZETMathPlane plane;
};
