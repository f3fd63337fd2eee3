#include "laser/ZETLaserParameterEntity.h"

ZETLaserParameterEntity::ZETLaserParameterEntity(QSharedPointer<QObject> parent, ZETLaserParameter* passedParameter)
    : ZETLaserEntity(std::move(parent))
    , parameter(passedParameter)
{
}

ZETLaserParameterEntity::~ZETLaserParameterEntity() = default;

void ZETLaserParameterEntity::MinimizePoints(double, double)
{
}

void ZETLaserParameterEntity::Transform(const ZETMathAxis&)
{
}
