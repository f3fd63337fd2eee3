#pragma once

#include "openhost/ZETGeometry/ZETOpenRef.h"

#include <ZETHostGlobal.h>
#include <ZETMathematics/ZETMathPoint.h>

#include <QList>

#include <memory>

class ZETOpenBodyBuilderPrivate;
class ZETOpenComboCurve;
class ZETOpenComboPoint;
class ZETOpenCurveOnSurface;
class ZETOpenSurface;
class ZETTopBody;

/*! Makes bodies, domain by domain. It builds what it is told, bodies that a model should not have included (no edges,
 *  several domains, several points), so that whoever reads bodies can be shown each fault.
 *
 *  Edges of one net share the vertices where they join (within the tolerance of assembled curves); a vertex knows its
 *  place on every edge that ends at it, and on the surfaces of their images. */
class ZETHOST_EXPORT ZETOpenBodyBuilder
{
public:
    /*! An edge as a net runs through it. */
    struct Side {
        ZETOpenRef<ZETOpenComboCurve> curve;
        bool reversed = false; //!< the net runs against the edge
    };

    ZETOpenBodyBuilder();
    ~ZETOpenBodyBuilder();

    /*! Adds a domain of points, each of which becomes a vertex. */
    void AddPoints(const QList<ZETOpenRef<ZETOpenComboPoint>>& points);
    /*! Adds a net. It is closed if its end meets its start. The edges needn't join: such a net is built as it is. */
    void AddNet(const QList<Side>& sides);
    /*! Adds a skin of one face for each surface. */
    void AddSkin(const QList<ZETOpenRef<ZETOpenSurface>>& surfaces);
    /*! Sets what GetDimension of the body answers. DEFAULT: the highest dimension of the domains, 0 without any. */
    void SetDimension(int dimension);

    /*! The body; the builder is empty again. */
    std::unique_ptr<ZETTopBody> Build();

    /*! A body of one point; with a \a surface the point has an image at the nearest place of it. */
    static std::unique_ptr<ZETTopBody> MakePoint(const ZETMathPoint& point,
                                                 const ZETOpenRef<ZETOpenSurface>& surface = nullptr);
    /*! A body of one net of one edge, which has \a curve as image. */
    static std::unique_ptr<ZETTopBody> MakeCurve(const ZETOpenRef<ZETOpenCurveOnSurface>& curve);
    /*! A body of one net of one edge through \a points. With \a closed the edge ends at the first point. */
    static std::unique_ptr<ZETTopBody> MakePolyline(const QList<ZETMathPoint>& points, bool closed);
    /*! A body of one skin of one face. */
    static std::unique_ptr<ZETTopBody> MakeFace(const ZETOpenRef<ZETOpenSurface>& surface);

private:
    Q_DISABLE_COPY_MOVE(ZETOpenBodyBuilder)
    std::unique_ptr<ZETOpenBodyBuilderPrivate> d;
};
