#pragma once

#include <ZETHostGlobal.h>

#include <QtGlobal>

class QDataStream;
class ZETGeoGeometry;

/*! A reference to a geometry of a container that survives saving. A value; it holds nothing alive. */
class ZETHOST_EXPORT ZETGeoGeometryRef
{
public:
    /*! An invalid reference, which stands for "no object". */
    ZETGeoGeometryRef() = default;
    /*! The reference of \a geometry; invalid for null. */
    ZETGeoGeometryRef(const ZETGeoGeometry* geometry); // NOLINT(google-explicit-constructor): used as a conversion

    bool IsValid() const { return id != 0; }

    friend bool operator==(const ZETGeoGeometryRef& a, const ZETGeoGeometryRef& b) { return a.id == b.id; }
    friend bool operator!=(const ZETGeoGeometryRef& a, const ZETGeoGeometryRef& b) { return a.id != b.id; }

private:
    friend class ZETGeoGeometryRefPrivate;
    friend ZETHOST_EXPORT QDataStream& operator<<(QDataStream& stream, const ZETGeoGeometryRef& reference);
    friend ZETHOST_EXPORT QDataStream& operator>>(QDataStream& stream, ZETGeoGeometryRef& reference);

    quint64 id = 0; //!< number of the object within its container; 0 for none
};

ZETHOST_EXPORT QDataStream& operator<<(QDataStream& stream, const ZETGeoGeometryRef& reference);
ZETHOST_EXPORT QDataStream& operator>>(QDataStream& stream, ZETGeoGeometryRef& reference);
