#pragma once

#include <ZETComposites/ZETCompFlatGeometry.h>
#include <ZETTopology/ZETTopBody.h>

#include <QPointer>

#include <memory>

class ZETCompFlatGeometryPrivate
{
public:
    static ZETCompFlatGeometryPrivate& Of(ZETCompFlatGeometry& geometry) { return *geometry.d; }

    std::unique_ptr<ZETTopBody> body;
    QPointer<ZETFeatGeometry> source;
};
