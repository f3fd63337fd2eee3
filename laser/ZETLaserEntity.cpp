#include "laser/ZETLaserEntity.h"

ZETLaserEntity::ZETLaserEntity(QSharedPointer<QObject> parent)
    : QObject(parent.data())
{
}

ZETLaserEntity::~ZETLaserEntity() = default;
