#pragma once

#include <ZETMathematics/ZETMathAxis.h>
#include <ZETMathematics/ZETMathPoint.h>
#include <ZETMathematics/ZETMathVector.h>
#include <ZETSystem/ZETSysException.h>

#include <gp_Ax3.hxx>
#include <gp_Pnt.hxx>
#include <gp_Vec.hxx>
#include <Standard_Failure.hxx>

#include <QString>

#include <cmath>
#include <utility>

// How the host's values become the kernel's and back, and how the kernel's exceptions leave it.

inline gp_Pnt ToKernel(const ZETMathPoint& point)
{
    return gp_Pnt(point.GetX(), point.GetY(), point.GetZ());
}
inline gp_Vec ToKernel(const ZETMathVector& vector)
{
    return gp_Vec(vector.GetX(), vector.GetY(), vector.GetZ());
}
inline ZETMathPoint FromKernel(const gp_Pnt& point)
{
    return ZETMathPoint(point.X(), point.Y(), point.Z());
}
inline ZETMathVector FromKernel(const gp_Vec& vector)
{
    return ZETMathVector(vector.X(), vector.Y(), vector.Z());
}

/*! Throws what the kernel throws for a direction of zero length. */
inline gp_Ax3 ToKernel(const ZETMathAxis& axis)
{
    return gp_Ax3(ToKernel(axis.GetOrigin()), gp_Dir(ToKernel(axis.GetThirdDirection())),
                  gp_Dir(ToKernel(axis.GetFirstDirection())));
}

inline bool IsFinite(const ZETMathPoint& point)
{
    return std::isfinite(point.GetX()) && std::isfinite(point.GetY()) && std::isfinite(point.GetZ());
}

/*! Runs \a work; what the kernel throws in it leaves as ZETSysException with \a task, a text that ends without a point,
 *  ahead of the kernel's own. */
template <typename Work>
auto CallKernel(const QString& task, Work&& work)
{
    try {
        return std::forward<Work>(work)();
    } catch (const Standard_Failure& failure) {
        const char* const text = failure.GetMessageString();
        const auto kind = QString::fromUtf8(failure.DynamicType()->Name());
        throw ZETSysException(task + QStringLiteral(": ") + (text && *text ? QString::fromUtf8(text) : kind));
    }
}
