#pragma once

#include <ZETComposites/ZETCompLayup.h>
#include <ZETComposites/ZETCompRosette.h>
#include <ZETFeature/ZETFeatGeometry.h>
#include <ZETWireframe/ZETWFPlane.h>

#include <QPointer>

class ZETCompLayupPrivate
{
public:
    static ZETCompLayupPrivate& Of(ZETCompLayup& layup) { return *layup.d; }

    bool direction = true;
    QPointer<ZETFeatGeometry> workpiece;
    QPointer<ZETCompRosette> rosette;
    QPointer<ZETWFPlane> flatteningPlane;
    ZETCompLayup::FlatteningMode flatteningMode = ZETCompLayup::FlatteningUnturned;
};
