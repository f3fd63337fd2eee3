#pragma once

#include <ZETGeometry/ZETGeoGeometryRef.h>
#include <ZETGeometry/ZETGeoStream.h>

#include <QByteArray>
#include <QDataStream>
#include <QHash>

/*! Record of ZETGeoStream. A stream that writes tells each class's present version and maps each reference to itself.
 */
class ZETGeoStreamPrivate
{
public:
    static ZETGeoStream Make(std::unique_ptr<ZETGeoStreamPrivate> record) { return ZETGeoStream(std::move(record)); }
    static ZETGeoStreamPrivate& Of(ZETGeoStream& stream) { return *stream.d; }

    /*! The class's own class information "version"; 1 if it has none or one that isn't a positive number. What a base
     *  class says doesn't count: each class has its own version. */
    static unsigned int GetPresentVersion(const QMetaObject* type);

    const ZETGeoContainer* container = nullptr;
    QDataStream stream;
    bool isReading = false;
    QHash<QByteArray, unsigned int> versions; //!< by class name; reading only
    QHash<quint64, quint64> ids;              //!< number in the stream to number in the container; reading only
};
