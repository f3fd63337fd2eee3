#include "openhost/ZETGeometry/ZETGeoStream_p.h"

#include "openhost/ZETGeometry/ZETGeoContainer_p.h"

#include <ZETSystem/ZETSysException.h>

#include <QMetaClassInfo>
#include <QMetaObject>

#include <algorithm>
#include <limits>

using namespace Qt::Literals::StringLiterals;

namespace
{
/*! Stands for what the stream doesn't hold. A container never gets to this number. */
constexpr quint64 nowhere = std::numeric_limits<quint64>::max();
} // namespace

unsigned int ZETGeoStreamPrivate::GetPresentVersion(const QMetaObject* type)
{
    for (int i = type->classInfoOffset(); i < type->classInfoCount(); ++i) {
        const QMetaClassInfo info = type->classInfo(i);
        if (qstrcmp(info.name(), "version") == 0) {
            const unsigned int version = QByteArray(info.value()).toUInt();
            return version > 0 ? version : 1;
        }
    }
    return 1;
}

ZETOpenBlockDevice::ZETOpenBlockDevice(const QByteArray& block)
    : bytes(block)
{
    open(QIODevice::ReadOnly | QIODevice::Unbuffered);
}

bool ZETOpenBlockDevice::seek(qint64 position)
{
    if (position < 0 || position > bytes.size() || !QIODevice::seek(position))
        return false;
    offset = position;
    return true;
}

qint64 ZETOpenBlockDevice::readData(char* data, qint64 maxSize)
{
    if (maxSize > bytes.size() - offset)
        throw ZETSysException(u"its fields go on behind its %1 bytes"_s.arg(bytes.size()));
    std::copy_n(bytes.constData() + offset, maxSize, data);
    offset += maxSize;
    return maxSize;
}

qint64 ZETOpenBlockDevice::writeData(const char* data, qint64 maxSize)
{
    Q_UNUSED(data)
    Q_UNUSED(maxSize)
    return -1;
}

ZETGeoStream ZETGeoStreamPrivate::Make(const ZETGeoContainer* container)
{
    auto record = std::make_unique<ZETGeoStreamPrivate>();
    record->container = container;
    record->stream.setVersion(fieldVersion);
    return ZETGeoStream(std::move(record));
}

ZETGeoStream::ZETGeoStream(std::unique_ptr<ZETGeoStreamPrivate> record)
    : d(std::move(record))
{
}

ZETGeoStream::~ZETGeoStream() = default;

QDataStream& ZETGeoStream::GetDataStream()
{
    return d->stream;
}

const ZETGeoContainer* ZETGeoStream::GetContainer() const
{
    return d->container;
}

unsigned int ZETGeoStream::GetVersion(const QMetaObject* type) const
{
    return d->hasVersions ? d->versions.value(type->className(), 1) : ZETGeoStreamPrivate::GetPresentVersion(type);
}

ZETGeoGeometryRef ZETGeoStream::GetMappedReference(const ZETGeoGeometryRef& reference)
{
    if (!d->isMapping || !reference.IsValid())
        return reference;
    return ZETGeoGeometryRefPrivate::Make(d->ids.value(ZETGeoGeometryRefPrivate::GetId(reference), nowhere));
}
