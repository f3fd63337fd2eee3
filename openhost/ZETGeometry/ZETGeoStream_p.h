#pragma once

#include <ZETGeometry/ZETGeoGeometryRef.h>
#include <ZETGeometry/ZETGeoStream.h>

#include <QByteArray>
#include <QDataStream>
#include <QHash>
#include <QIODevice>

/*! A device over the bytes of one object. A read behind their end throws ZETSysException, so that a Load that reads as
 *  many elements as a count tells comes to an end with the bytes, whatever the count. */
class ZETOpenBlockDevice final : public QIODevice
{
public:
    explicit ZETOpenBlockDevice(const QByteArray& block);

    qint64 size() const override { return bytes.size(); }
    bool seek(qint64 position) override;
    /*! How many bytes were read. */
    qint64 GetOffset() const { return offset; }

protected:
    qint64 readData(char* data, qint64 maxSize) override;
    qint64 writeData(const char* data, qint64 maxSize) override;

private:
    QByteArray bytes;
    qint64 offset = 0;
};

/*! Record of ZETGeoStream. A stream that writes tells each class's present version and maps each reference to itself.
 */
class ZETGeoStreamPrivate
{
public:
    /*! The form in which all fields are written. */
    static constexpr int fieldVersion = QDataStream::Qt_6_4;

    /*! A stream of the objects of \a container; null is allowed. It has no device yet. */
    static ZETGeoStream Make(const ZETGeoContainer* container);
    static ZETGeoStreamPrivate& Of(ZETGeoStream& stream) { return *stream.d; }

    /*! The class's own class information "version"; 1 if it has none or one that isn't a positive number. What a base
     *  class says doesn't count: each class has its own version. */
    static unsigned int GetPresentVersion(const QMetaObject* type);

    const ZETGeoContainer* container = nullptr;
    QDataStream stream;
    bool hasVersions = false;                 //!< the stream has versions of its own
    QHash<QByteArray, unsigned int> versions; //!< by class name; a class that isn't in it had the version 1
    bool isMapping = false;                   //!< the stream has numbers of its own
    QHash<quint64, quint64> ids;              //!< number in the stream to number in the container
};
