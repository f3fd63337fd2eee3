#include "laser/ZETLaserTextEntity.h"

ZETLaserTextEntity::ZETLaserTextEntity(QSharedPointer<QObject> parent, ZETLaser3DText* shownText)
    : ZETLaserEntity(std::move(parent))
    , text(shownText)
{
}

ZETLaserTextEntity::~ZETLaserTextEntity() = default;

void ZETLaserTextEntity::MinimizePoints(double, double)
{
}

void ZETLaserTextEntity::Transform(const ZETMathAxis&)
{
}
