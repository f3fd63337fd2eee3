#pragma once

#include <BRepTopAdaptor_FClass2d.hxx>
#include <Extrema_ExtPS.hxx>
#include <Geom2d_Curve.hxx>
#include <GeomAdaptor_Surface.hxx>
#include <gp_Pnt.hxx>
#include <gp_Pnt2d.hxx>
#include <TopoDS_Edge.hxx>
#include <TopoDS_Face.hxx>

#include <limits>
#include <memory>
#include <vector>

class Adaptor3d_CurveOnSurface;

/*! Finds the nearest places of one trimmed face. The kernel's searches are set up once and used for all points. */
class ZETOpenSurfaceProjector
{
public:
    struct Place {
        gp_Pnt2d parameters;
        double distance = std::numeric_limits<double>::infinity();
    };

    ZETOpenSurfaceProjector(const TopoDS_Face& face, const Handle(GeomAdaptor_Surface) & adaptor);
    ~ZETOpenSurfaceProjector();

    Place Project(const gp_Pnt& point);

private:
    /*! An edge of the boundary, with samples that tell cheaply when it is too far off to matter. */
    struct Border {
        Handle(Adaptor3d_CurveOnSurface) curve;
        std::vector<gp_Pnt> samples;
        std::vector<double> parameters; //!< of the samples, rising
        double reach = 0.0;             //!< no place of the edge is farther from a sample
    };

    void AddBorder(const TopoDS_Face& face, const TopoDS_Edge& edge);
    bool IsOnFace(const gp_Pnt2d& parameters) const;
    void ProjectInside(const gp_Pnt& point, Extrema_ExtPS& search, Place& best) const;
    void ProjectOnBorders(const gp_Pnt& point, Place& best) const;
    void ProjectOnBorder(const gp_Pnt& point, const Border& border, Place& best) const;
    void ProjectBetween(const gp_Pnt& point, const Border& border, std::size_t from, std::size_t to, Place& best) const;
    void Refine(const gp_Pnt& point, Place& best) const;
    void Take(const gp_Pnt& point, const gp_Pnt2d& parameters, Place& best) const;

    Handle(GeomAdaptor_Surface) surface;
    std::unique_ptr<BRepTopAdaptor_FClass2d> classifier;
    Extrema_ExtPS nearest;                //!< finds the nearest place with a right angle
    std::unique_ptr<Extrema_ExtPS> every; //!< finds all of them; made when the nearest lies off the face
    std::vector<Border> borders;
};
