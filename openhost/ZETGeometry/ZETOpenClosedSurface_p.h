#pragma once

#include <Geom_Surface.hxx>

/*! How a part of a surface closes in itself, and the surface in a form that can be walked on round and round.
 *
 *  The kernel calls some closed surfaces periodic and others not, by how they were made: a cylinder is, a spline that
 *  ends where it begins isn't, nor is a full turn that a file tells with few digits. Whether a ply reaches across the
 *  seam doesn't depend on that. */
class ZETOpenClosedSurface
{
public:
    /*! \a gap: how far apart, in mm, the two sides of a seam may lie. */
    ZETOpenClosedSurface(const Handle(Geom_Surface) & surface, double uMin, double uMax, double vMin, double vMax,
                         double gap);

    /*! The same places for the same parameters; and beyond the seam those that lie behind it. */
    const Handle(Geom_Surface) & GetGeometry() const { return geometry; }
    /*! 0 where it doesn't close. */
    double GetUPeriod() const { return uPeriod; }
    double GetVPeriod() const { return vPeriod; }

private:
    Handle(Geom_Surface) geometry;
    double uPeriod = 0.0;
    double vPeriod = 0.0;
};
