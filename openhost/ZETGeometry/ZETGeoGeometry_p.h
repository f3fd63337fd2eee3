#pragma once

#include <ZETGeometry/ZETGeoGeometry.h>

/*! Record of ZETGeoGeometry. */
class ZETGeoGeometryPrivate
{
public:
    static ZETGeoGeometryPrivate& Of(ZETGeoGeometry& geometry) { return *geometry.d; }
    static const ZETGeoGeometryPrivate& Of(const ZETGeoGeometry& geometry) { return *geometry.d; }

    /*! Lets \a geometry answer \a container without being owned by it: for geometry that a body or a feature of the
     *  container owns. It has no number there, so no reference leads to it, and it isn't saved by the container.
     *  Null takes the answer back. Only for an object that was made without a container. */
    static void SetGuestContainer(ZETGeoGeometry& geometry, ZETGeoContainer* container);

    ZETGeoContainer* container = nullptr;
    quint64 id = 0;                   //!< number within the container; 0 for none
    bool isGuest = false;             //!< the container knows the object, and doesn't own it
    bool isLoading = false;           //!< between BeginStateLoad and EndStateLoad
    mutable qsizetype references = 0; //!< AddReference less RemoveReference
};
