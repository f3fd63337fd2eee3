#pragma once

#include <ZETHostGlobal.h>
#include <ZETMathematics/ZETMathAxis.h>
#include <ZETMathematics/ZETMathPoint.h>
#include <ZETMathematics/ZETMathVector.h>
#include <ZETMathematics/ZETMathVector4D.h>

#include <array>
#include <cstddef>

/*! A homogeneous transformation. A value; default-constructed as the identity. */
class ZETHOST_EXPORT ZETMath4x4Matrix
{
public:
    ZETMath4x4Matrix() = default;
    /*! The homogeneous form of `axis * p`: the owner's coordinates go to those of the axis system. */
    explicit ZETMath4x4Matrix(const ZETMathAxis& axis)
    {
        const ZETMathPoint moved = axis * ZETMathPoint();
        SetRow(0, axis.GetFirstDirection(), moved.GetX());
        SetRow(1, axis.GetSecondDirection(), moved.GetY());
        SetRow(2, axis.GetThirdDirection(), moved.GetZ());
    }
    ZETMath4x4Matrix(const ZETMath4x4Matrix&) = default;
    ZETMath4x4Matrix& operator=(const ZETMath4x4Matrix&) = default;
    virtual ~ZETMath4x4Matrix() = default;

    /*! The point transformed, with the fourth component 1. */
    ZETMathPoint operator*(const ZETMathPoint& point) const
    {
        const ZETMathVector4D image = *this * ZETMathVector4D(point.GetX(), point.GetY(), point.GetZ(), 1.0);
        return {image[0], image[1], image[2]};
    }
    /*! Plain matrix product, without normalisation. */
    ZETMathVector4D operator*(const ZETMathVector4D& vector) const
    {
        return {Multiply(0, vector), Multiply(1, vector), Multiply(2, vector), Multiply(3, vector)};
    }

private:
    using Row = std::array<double, 4>;

    void SetRow(std::size_t row, const ZETMathVector& direction, double moved)
    {
        rows[row] = {direction.GetX(), direction.GetY(), direction.GetZ(), moved};
    }
    double Multiply(std::size_t row, const ZETMathVector4D& vector) const
    {
        const Row& r = rows[row];
        return r[0] * vector[0] + r[1] * vector[1] + r[2] * vector[2] + r[3] * vector[3];
    }

    std::array<Row, 4> rows{Row{1.0, 0.0, 0.0, 0.0}, Row{0.0, 1.0, 0.0, 0.0}, Row{0.0, 0.0, 1.0, 0.0},
                            Row{0.0, 0.0, 0.0, 1.0}};
};
