#pragma once

#include <ZETHostGlobal.h>

#include <QByteArray>
#include <QList>

#include <memory>

class ZETFeatEnvironment;
class ZETFeatObject;
class ZETFeatVisObject;
class ZETVisEnvironment;
class ZETVisVirtualObject;

/*! What can be asked of a scene of the open host, which stores what it is given, and how features get into one. */
namespace ZETOpenScene
{

/*! The objects in the scene, in the order in which they were added. The scene owns them. */
ZETHOST_EXPORT QList<ZETVisVirtualObject*> GetObjects(const ZETVisEnvironment& environment);
/*! Gives \a object the last place in this order, where objects of one priority are drawn over all others. Nothing
 *  happens if it isn't in the scene. */
ZETHOST_EXPORT void MoveToEnd(ZETVisEnvironment& environment, ZETVisVirtualObject& object);

/*! The display object class for features of class \a featureClass: the one that is registered for it or for its
 *  nearest base; null if there is none. */
ZETHOST_EXPORT const QMetaObject* GetVisObjectClass(const QMetaObject* featureClass);
/*! The names of all registered display object classes, sorted. */
ZETHOST_EXPORT QList<QByteArray> GetRegisteredVisObjectClasses();
/*! The names of the feature classes that have a display object class, sorted. */
ZETHOST_EXPORT QList<QByteArray> GetRegisteredFeatureClasses();

/*! A new display object for \a feature, not yet in the scene; null if no class is registered for it. Throws
 *  ZETSysException if the registered class lacks the constructor that it needs. */
ZETHOST_EXPORT std::unique_ptr<ZETFeatVisObject> CreateVisObject(const ZETFeatEnvironment& environment,
                                                                 ZETFeatObject& feature);
/*! Puts the display object of \a feature with its representation in the scene, which owns it; null if no class is
 *  registered for it. */
ZETHOST_EXPORT ZETFeatVisObject* Show(ZETFeatEnvironment& environment, ZETFeatObject& feature);

} // namespace ZETOpenScene
