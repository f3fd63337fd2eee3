#pragma once

#include <QObject>
#include <QVariant>

/*! Names of the dynamic properties by which an entity tells where it came from. A property that was never set reads as
 *  an invalid QVariant, which is a meaningful state; none is inherited from the parent entity. */
namespace ZETLaserEntityProperties
{
constexpr char sourceType[] = "laserEntitySourceType"; //!< int: a ZETLaserOptions::ELaserSourceType
constexpr char layup[] = "ZETCompLayup";               //!< ZETCompLayup*, on the group of a layup
constexpr char sequence[] = "ZETCompSequence";         //!< ZETCompSequence*, on the group of a sequence
constexpr char ply[] = "ZETCompPly";                   //!< ZETCompPly*, on the group of a ply
constexpr char subPly[] = "ZETCompSubPly";             //!< ZETCompSubPly*, on the group of a sub-ply
constexpr char material[] = "ZETCompMaterial";         //!< ZETMatMaterial*, on the group of a ply or sub-ply
} // namespace ZETLaserEntityProperties

/*! The model object in the dynamic property \a name of \a entity; null if it has none of that class. */
template <typename T>
T* ObjectIn(const QObject& entity, const char* name)
{
    return qobject_cast<T*>(entity.property(name).template value<QObject*>());
}
