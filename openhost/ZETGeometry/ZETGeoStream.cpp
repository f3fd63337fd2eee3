#include "openhost/ZETGeometry/ZETGeoStream_p.h"

#include "openhost/ZETGeometry/ZETGeoContainer_p.h"

#include <QMetaClassInfo>
#include <QMetaObject>

#include <limits>

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
    return d->isReading ? d->versions.value(type->className(), 1) : ZETGeoStreamPrivate::GetPresentVersion(type);
}

ZETGeoGeometryRef ZETGeoStream::GetMappedReference(const ZETGeoGeometryRef& reference)
{
    if (!d->isReading || !reference.IsValid())
        return reference;
    return ZETGeoGeometryRefPrivate::Make(d->ids.value(ZETGeoGeometryRefPrivate::GetId(reference), nowhere));
}
