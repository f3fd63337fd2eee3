#include "laser/ZETLaserEntity.h"

ZETLaserEntity::ZETLaserEntity(QSharedPointer<QObject> parent)
    : QObject(parent.data())
{
}

ZETLaserEntity::~ZETLaserEntity()
{
    // The lists of the concrete classes have let go of theirs already. A child that a shared pointer still has must not
    // be deleted a second time by this entity as its QObject parent.
    const QObjectList rest = children();
    for (QObject* child : rest) {
        auto* const entity = qobject_cast<ZETLaserEntity*>(child);
        if (entity && entity->sharedFromThis())
            entity->setParent(nullptr);
    }
}
