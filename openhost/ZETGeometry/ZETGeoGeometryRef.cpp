#include <ZETGeometry/ZETGeoGeometryRef.h>

#include "openhost/ZETGeometry/ZETGeoGeometry_p.h"

#include <QDataStream>

ZETGeoGeometryRef::ZETGeoGeometryRef(const ZETGeoGeometry* geometry)
    : id(geometry ? ZETGeoGeometryPrivate::Of(*geometry).id : 0)
{
}

QDataStream& operator<<(QDataStream& stream, const ZETGeoGeometryRef& reference)
{
    return stream << reference.id;
}

QDataStream& operator>>(QDataStream& stream, ZETGeoGeometryRef& reference)
{
    return stream >> reference.id;
}
