#pragma once

#include <ZETFeature/ZETFeatObject.h>
#include <ZETSystem/ZETSysException.h>

#include <QByteArray>
#include <QMetaMethod>
#include <QMetaProperty>
#include <QMetaType>
#include <QString>
#include <QVariant>

/*! How the property classes tell their feature's listeners of a change. Header code, because it is instantiated for
 *  types that only the library knows. */
namespace ZETFeatPropertySignal
{
/*! The type name under which a signal takes its one value: its first parameter's, or the property's own where the
 *  signal has none. */
inline QByteArray GetArgumentName(const QMetaMethod& signal, const QMetaProperty& property)
{
    const QList<QByteArray> parameters = signal.parameterTypes();
    return parameters.isEmpty() ? QByteArray(property.typeName()) : parameters.first();
}

/*! Whether \a signal can be given a value of type \a T. One without parameters can: it passes the value over. */
template <typename T>
bool TakesValue(const QMetaMethod& signal)
{
    if (signal.parameterCount() == 0)
        return true;
    const QMetaType parameter = signal.parameterMetaType(0);
    return !parameter.isValid() || parameter == QMetaType::fromType<T>();
}

/*! Emits the notify signal of property \a propertyIndex of \a feature with the property's value as its argument.
 *  Nothing happens for a negative index or for a property without a notify signal.
 *  Throws ZETSysException if the signal can't be emitted. */
template <typename T>
void EmitChanged(ZETFeatObject* feature, int propertyIndex)
{
    if (propertyIndex < 0)
        return;
    const QMetaProperty property = feature->metaObject()->property(propertyIndex);
    if (!property.hasNotifySignal())
        return;
    const QMetaMethod signal = property.notifySignal();

    const QVariant stored = property.read(feature);
    T value{};
    if (stored.metaType() == QMetaType::fromType<T>())
        value = *static_cast<const T*>(stored.constData());
    else
        QMetaType::convert(stored.metaType(), stored.constData(), QMetaType::fromType<T>(), &value);

    const QByteArray name = GetArgumentName(signal, property);
    const QGenericArgument argument(name.constData(), &value);
    // Meant: the same call twice, because a first call may have registered the argument's type on its way.
    // An emission within the thread looks at the number of arguments only, so the type is compared here.
    for (int attempt = 0; attempt < 2 && TakesValue<T>(signal); ++attempt) {
        if (signal.invoke(feature, Qt::AutoConnection, argument))
            return;
    }
    if (signal.invoke(feature, Qt::AutoConnection)) // serves a signal without parameters
        return;
    throw ZETSysException(QStringLiteral("Could not emit the property changed signal."));
}
} // namespace ZETFeatPropertySignal
