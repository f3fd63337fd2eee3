#pragma once

#include "openhost/ZETGeometry/ZETOpenSurface.h"
#include "openhost/ZETGeometry/ZETOpenSurfaceProjector_p.h"

#include <ZETMathematics/ZETMathBoundingBox.h>

#include <Geom_Surface.hxx>
#include <GeomAdaptor_Surface.hxx>
#include <gp_Pnt2d.hxx>
#include <TopoDS_Face.hxx>

#include <QString>

#include <memory>
#include <optional>

class ZETOpenSurfacePrivate
{
public:
    explicit ZETOpenSurfacePrivate(const TopoDS_Face& trimmedFace);

    static ZETOpenSurfacePrivate& Of(const ZETOpenSurface& surface) { return *surface.d; }
    /*! The surface that \a face is. Throws ZETSysException for a face without surface or bounds. */
    static ZETOpenRef<ZETOpenSurface> Make(const TopoDS_Face& face, const QString& name = QString());

    std::unique_ptr<ZETOpenSurfaceProjector> MakeProjector() const;
    gp_Vec GetNormal(double u, double v) const;
    /*! \a to, moved by whole periods so that the way from \a from is the short one, where the face closes. */
    gp_Pnt2d Unwrap(const gp_Pnt2d& from, const gp_Pnt2d& to) const;
    /*! Whether all parameters of one direction name the same point there, as at a pole. */
    bool IsDegenerateInU(const gp_Pnt2d& place) const;
    bool IsDegenerateInV(const gp_Pnt2d& place) const;

    TopoDS_Face face;
    Handle(Geom_Surface) geometry;       //!< in model coordinates, with a period where the face closes
    Handle(GeomAdaptor_Surface) adaptor; //!< over the bounds of the face
    double uMin = 0.0;
    double uMax = 0.0;
    double vMin = 0.0;
    double vMax = 0.0;
    double uPeriod = 0.0; //!< 0 where the face doesn't go all the way round
    double vPeriod = 0.0;
    QString name;
    std::unique_ptr<ZETOpenSurfaceProjector> projector; //!< made by the first projection
    std::optional<ZETMathBoundingBox> box;
};
