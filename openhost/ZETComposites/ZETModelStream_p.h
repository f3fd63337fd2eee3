#pragma once

#include <ZETFeature/ZETFeatContainer.h>
#include <ZETFeature/ZETFeatObject.h>
#include <ZETGeometry/ZETGeoContainer.h>
#include <ZETGeometry/ZETGeoGeometryNotFoundException.h>
#include <ZETGeometry/ZETGeoGeometryRef.h>
#include <ZETGeometry/ZETGeoStream.h>

#include <QDataStream>
#include <QList>
#include <QPointer>

/*! What the model features share: where they stand, which children they have, and how references go through a
 *  stream. */
namespace ZETModel
{

/*! The container for a feature that is made under \a parent. */
inline ZETFeatContainer* ContainerOf(const ZETFeatObject* parent)
{
    return parent ? qobject_cast<ZETFeatContainer*>(parent->GetContainer()) : nullptr;
}

/*! The direct children of class \a T, in model order. */
template <typename T>
QList<T*> ChildrenOfClass(const ZETFeatObject& feature)
{
    QList<T*> result;
    for (ZETFeatObject* child : feature.GetChildren()) {
        if (T* const cast = qobject_cast<T*>(child))
            result.append(cast);
    }
    return result;
}

/*! The first direct child of class \a T; null if there is none. */
template <typename T>
T* FirstChildOfClass(const ZETFeatObject& feature)
{
    for (ZETFeatObject* child : feature.GetChildren()) {
        if (T* const cast = qobject_cast<T*>(child))
            return cast;
    }
    return nullptr;
}

/*! The nearest ancestor of class \a T; null if there is none. */
template <typename T>
T* AncestorOfClass(const ZETFeatObject& feature)
{
    for (ZETFeatObject* ancestor = feature.GetParent(); ancestor; ancestor = ancestor->GetParent()) {
        if (T* const cast = qobject_cast<T*>(ancestor))
            return cast;
    }
    return nullptr;
}

inline void SaveReference(ZETGeoStream& stream, const ZETGeoGeometry* object)
{
    stream.GetDataStream() << ZETGeoGeometryRef(object);
}

/*! The object that the next reference of the stream names, null for "no object". Throws if the reference is valid and
 *  leads to nothing of class \a T. */
template <typename T>
T* LoadReference(ZETGeoStream& stream)
{
    ZETGeoGeometryRef reference;
    stream.GetDataStream() >> reference;
    if (!reference.IsValid() || !stream.GetContainer())
        return nullptr;
    T* const object = qobject_cast<T*>(stream.GetContainer()->GetGeometryByRef(stream.GetMappedReference(reference)));
    if (!object)
        throw ZETGeoGeometryNotFoundException();
    return object;
}

/*! How many elements follow. The loop over them must also stop at a broken stream, because the count may be a lie. */
inline qint32 LoadCount(ZETGeoStream& stream)
{
    qint32 count = 0;
    stream.GetDataStream() >> count;
    if (count < 0)
        stream.GetDataStream().setStatus(QDataStream::ReadCorruptData);
    return count;
}

inline bool IsReadable(ZETGeoStream& stream)
{
    return stream.GetDataStream().status() == QDataStream::Ok;
}

template <typename T>
void SaveReferences(ZETGeoStream& stream, const QList<QPointer<T>>& objects)
{
    stream.GetDataStream() << static_cast<qint32>(objects.size());
    for (const QPointer<T>& object : objects)
        SaveReference(stream, object);
}

template <typename T>
QList<QPointer<T>> LoadReferences(ZETGeoStream& stream)
{
    QList<QPointer<T>> objects;
    const qint32 count = LoadCount(stream);
    for (qint32 i = 0; i < count && IsReadable(stream); ++i)
        objects.append(LoadReference<T>(stream));
    return objects;
}

} // namespace ZETModel
