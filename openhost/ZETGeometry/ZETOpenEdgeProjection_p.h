#pragma once

#include <BRepAdaptor_Curve.hxx>
#include <gp_Pnt2d.hxx>
#include <TopoDS_Edge.hxx>

#include <vector>

class ZETOpenSurface;

/*! The projection of an edge to a surface that it doesn't bound: places of the surface in the edge's sense, so close to
 *  each other that straight lines between them, in the surface's parameters, leave the projection by 0.01 mm at most.
 */
class ZETOpenEdgeProjection
{
public:
    ZETOpenEdgeProjection(const TopoDS_Edge& edge, const ZETOpenSurface& surface);

    /*! Without repeated places, so an edge that becomes a point has one. */
    const std::vector<gp_Pnt2d>& GetPlaces() const { return places; }
    /*! The largest distance, in mm, that the edge was found to have from the surface. */
    double GetMaxDistance() const { return maxDistance; }

private:
    struct Sample {
        double parameter; //!< of the edge
        gp_Pnt2d place;
        gp_Pnt point; //!< of the surface
    };

    Sample Take(double parameter);
    bool IsStraight(const Sample& from, const Sample& to);
    void AddUpTo(const Sample& from, const Sample& to, int depth);

    BRepAdaptor_Curve curve;
    const ZETOpenSurface& surface;
    std::vector<gp_Pnt2d> places;
    double maxDistance = 0.0;
};
