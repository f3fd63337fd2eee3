#pragma once

#include <ZETMathematics/ZETMathAxis.h>
#include <ZETWireframe/ZETWFAxisSystem.h>

class ZETWFAxisSystemPrivate
{
public:
    static ZETWFAxisSystemPrivate& Of(ZETWFAxisSystem& axisSystem) { return *axisSystem.d; }

    ZETMathAxis axis;
};
