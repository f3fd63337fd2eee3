#pragma once

#include <ZETVisualization/ZETVisPrimitive.h>

/*! A marker at each of a set of points. */
class ZETHOST_EXPORT ZETVisPointPrimitive : public ZETVisPrimitive
{
    Q_OBJECT

public:
    explicit ZETVisPointPrimitive(const ZETMathSetOfPoints& points);
    /*! The same from a flat array of 3 * \a count doubles. The primitive takes the array over: it must come from
     *  `new double[]`. */
    ZETVisPointPrimitive(double* coordinates, int count);
    ~ZETVisPointPrimitive() override;
};
