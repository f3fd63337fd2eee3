#pragma once

#include <ZETHostGlobal.h>
#include <ZETMathematics/ZETMathSetOfPoints.h>

#include <QObject>

/*! Geometry to draw, in model coordinates. Whoever hands a primitive to a representation gives it away. */
class ZETHOST_EXPORT ZETVisPrimitive : public QObject
{
    Q_OBJECT

public:
    ~ZETVisPrimitive() override;

    const ZETMathSetOfPoints& GetPoints() const { return points; }

protected:
    explicit ZETVisPrimitive(const ZETMathSetOfPoints& points);

private:
    ZETMathSetOfPoints points;
};
