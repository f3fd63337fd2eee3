#pragma once

#include <ZETMaterial/ZETMatMaterial.h>

class ZETMatMaterialPrivate
{
public:
    static ZETMatMaterialPrivate& Of(ZETMatMaterial& material) { return *material.d; }

    QString type;
    QString id;
    double thickness = 0.0;
};
