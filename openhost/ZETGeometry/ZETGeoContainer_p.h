#pragma once

#include <ZETGeometry/ZETGeoContainer.h>
#include <ZETGeometry/ZETGeoGeometryRef.h>
#include <ZETHostGlobal.h>

#include <map>

/*! Record of ZETGeoContainer. Numbers start with 1 in each container and are never used twice. */
class ZETGeoContainerPrivate
{
public:
    static ZETGeoContainerPrivate& Of(ZETGeoContainer& container) { return *container.d; }
    static const ZETGeoContainerPrivate& Of(const ZETGeoContainer& container) { return *container.d; }

    /*! Takes \a geometry in under \a reference, or under the next free number if that is invalid or taken. */
    static void Add(ZETGeoContainer& container, ZETGeoGeometry& geometry, const ZETGeoGeometryRef& reference);
    /*! Lets \a geometry go without deleting it: it has no container afterwards. */
    static void Release(ZETGeoGeometry& geometry);
    /*! Deletes all objects, the youngest first, except those that somebody holds: these live on without a
     *  container. */
    static void Clear(ZETGeoContainer& container);

    std::map<quint64, ZETGeoGeometry*> objects; //!< by number, so in the order of creation
    quint64 lastId = 0;
};

/*! Makes and reads references by number. */
class ZETGeoGeometryRefPrivate
{
public:
    static ZETGeoGeometryRef Make(quint64 id)
    {
        ZETGeoGeometryRef reference;
        reference.id = id;
        return reference;
    }
    static quint64 GetId(const ZETGeoGeometryRef& reference) { return reference.id; }
};
