#pragma once

#include "laser/ZETLaserEntity.h"

class ZETLaser3DText;

/*! A leaf of the tree that refers to a 3D text of the model. */
class ZETLaserTextEntity : public ZETLaserEntity
{
    Q_OBJECT

public:
    /*! \a shownText isn't owned; the model outlives the tree. */
    ZETLaserTextEntity(QSharedPointer<QObject> parent, ZETLaser3DText* shownText);
    ~ZETLaserTextEntity() override;

    ZETLaser3DText* GetText() const { return text; }

    /*! A text has no points: nothing happens. */
    void MinimizePoints(double tolerance, double maxLength) override;
    void Transform(const ZETMathAxis& axis) override;

private:
    ZETLaser3DText* text;
};
