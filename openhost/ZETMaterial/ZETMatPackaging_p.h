#pragma once

#include <ZETMaterial/ZETMatPackaging.h>

class ZETMatPackagingPrivate
{
public:
    static ZETMatPackagingPrivate& Of(ZETMatPackaging& packaging) { return *packaging.d; }

    double width = 0.0;
    double length = 0.0;
};
