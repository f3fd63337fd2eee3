#pragma once

#include <ZETHostGlobal.h>

#include <QtGlobal>

#include <memory>

class QDataStream;
class QMetaObject;
class ZETGeoContainer;
class ZETGeoGeometryRef;
class ZETGeoStreamPrivate;

/*! The stream through which a model is saved and loaded. Fields go through the embedded data stream's own operators.
 *  Made by the host only. */
class ZETHOST_EXPORT ZETGeoStream
{
public:
    ~ZETGeoStream();

    /*! The stream that carries the fields. While a model is loaded, a read behind the end throws what the host throws
     *  for a stream that can't be read at the next object boundary. */
    QDataStream& GetDataStream();

    /*! The container that is being saved or loaded; null for an object that stands in none. */
    const ZETGeoContainer* GetContainer() const;

    /*! The version that \a type had when the stream was written: its class information "version", 1 without one. */
    unsigned int GetVersion(const QMetaObject* type) const;

    /*! \a reference as read from the stream, renumbered for the container that is being loaded. An invalid reference
     *  stays invalid; one that the stream doesn't hold stays valid and leads nowhere. */
    ZETGeoGeometryRef GetMappedReference(const ZETGeoGeometryRef& reference);

private:
    friend class ZETGeoStreamPrivate;
    explicit ZETGeoStream(std::unique_ptr<ZETGeoStreamPrivate> record);
    Q_DISABLE_COPY_MOVE(ZETGeoStream)
    std::unique_ptr<ZETGeoStreamPrivate> d;
};
