#pragma once

#include "laser/ZETLaserEntity.h"

class ZETLaserParameter;

/*! A leaf of the tree that refers to a parameter of the model. */
class ZETLaserParameterEntity : public ZETLaserEntity
{
    Q_OBJECT

public:
    /*! \a passedParameter isn't owned; the model outlives the tree. */
    ZETLaserParameterEntity(QSharedPointer<QObject> parent, ZETLaserParameter* passedParameter);
    ~ZETLaserParameterEntity() override;

    ZETLaserParameter* GetParameter() const { return parameter; }

    /*! A parameter has no points: nothing happens. */
    void MinimizePoints(double tolerance, double maxLength) override;
    void Transform(const ZETMathAxis& axis) override;

private:
    ZETLaserParameter* parameter;
};
