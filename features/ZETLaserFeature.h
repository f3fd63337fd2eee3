#pragma once

#include <ZETFeature/ZETFeatObject.h>
#include <ZETFeature/ZETFeatValueProperty.h>
#include <ZETGeometry/ZETGeoContainer.h>
#include <ZETGeometry/ZETGeoGeometryNotFoundException.h>
#include <ZETGeometry/ZETGeoGeometryRef.h>
#include <ZETGeometry/ZETGeoStream.h>

#include <QDataStream>
#include <QVariant>

#include <type_traits>

/*! What all features of the library do in the same way: set a property, and carry it through a stream. */
namespace ZETLaserFeature
{
/*! Sets \a property and tells its listeners; nothing happens if it has the value already. The value that a property
 *  without a default gets is also what it goes back to. */
template <typename T>
void SetValue(ZETFeatValueProperty<T>& property, const T& value)
{
    if (property.SetValue(value, false) && !property.IsInitialised())
        property.SetLastSavedValue(QVariant::fromValue(value));
}

/*! Writes the value of \a property; an enumeration as a 32-bit integer. */
template <typename T>
void SaveValue(ZETGeoStream& stream, const ZETFeatValueProperty<T>& property)
{
    if constexpr (std::is_enum_v<T>)
        stream.GetDataStream() << static_cast<int>(property.GetValue());
    else
        stream.GetDataStream() << property.GetValue();
}

/*! Reads what SaveValue wrote, and sets it as a setter would. */
template <typename T>
void LoadValue(ZETGeoStream& stream, ZETFeatValueProperty<T>& property)
{
    std::conditional_t<std::is_enum_v<T>, int, T> value{};
    stream.GetDataStream() >> value;
    SetValue(property, static_cast<T>(value));
}

/*! Writes a reference to \a object, which may be null. */
inline void SaveReference(ZETGeoStream& stream, const ZETFeatObject* object)
{
    stream.GetDataStream() << ZETGeoGeometryRef(object);
}

/*! Reads a reference and finds its object; null for an invalid one. Throws ZETGeoGeometryNotFoundException if a valid
 *  one leads nowhere, or to an object of another class. Without a container all of them lead nowhere. */
template <typename T>
T* LoadReference(ZETGeoStream& stream)
{
    ZETGeoGeometryRef reference;
    stream.GetDataStream() >> reference;
    const ZETGeoContainer* container = stream.GetContainer();
    auto* object =
        qobject_cast<T*>(container ? container->GetGeometryByRef(stream.GetMappedReference(reference)) : nullptr);
    if (!object && reference.IsValid())
        throw ZETGeoGeometryNotFoundException();
    return object;
}
} // namespace ZETLaserFeature
