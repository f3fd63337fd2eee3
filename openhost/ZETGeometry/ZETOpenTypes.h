#pragma once

#include <ZETGeometry/ZETGeoContainer.h>
#include <ZETHostGlobal.h>

#include <QByteArray>
#include <QList>
#include <QMetaType>

class ZETGeoGeometry;
class ZETGeoGeometryRef;

/*! The open host's view of the classes that were made known with ZETGeoContainer::RegisterType. */
namespace ZETOpenTypes
{
/*! The class that \a className stands for; null if it isn't registered. Of several classes of one name, which two
 *  copies of a library in one process make, the last one registered counts. */
ZETHOST_EXPORT const QMetaObject* GetType(const QByteArray& className);
ZETHOST_EXPORT bool IsRegistered(const QByteArray& className);
/*! The names of all registered classes, sorted. */
ZETHOST_EXPORT QList<QByteArray> GetRegisteredClasses();

/*! Makes an object of \a type with its loading constructor. With an invalid \a reference the container gives it a
 *  number. Throws ZETSysException if the class lacks that constructor, or makes something that isn't a geometry. */
ZETHOST_EXPORT ZETGeoGeometry* Make(const QMetaObject* type, ZETGeoContainer& container,
                                    const ZETGeoGeometryRef& reference);

/*! Registers a class of the open host for the life of the library; stands as a static object beside the class's
 *  definitions. */
template <typename T>
struct Registration {
    Registration()
    {
        qRegisterMetaType<T*>();
        ZETGeoContainer::RegisterType(&T::staticMetaObject);
    }
    ~Registration() { ZETGeoContainer::UnregisterType(&T::staticMetaObject); }
    Q_DISABLE_COPY_MOVE(Registration)
};
} // namespace ZETOpenTypes
