#pragma once

#include <ZETGeometry/ZETGeoGeometry.h>

/*! Record of ZETGeoGeometry. */
class ZETGeoGeometryPrivate
{
public:
    static ZETGeoGeometryPrivate& Of(ZETGeoGeometry& geometry) { return *geometry.d; }
    static const ZETGeoGeometryPrivate& Of(const ZETGeoGeometry& geometry) { return *geometry.d; }

    ZETGeoContainer* container = nullptr;
    quint64 id = 0;                   //!< number within the container; 0 for none
    bool isLoading = false;           //!< between BeginStateLoad and EndStateLoad
    mutable qsizetype references = 0; //!< AddReference less RemoveReference
};
