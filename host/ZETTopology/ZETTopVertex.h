#pragma once

#include <ZETTopology/ZETTopEntity.h>

#include <QList>

class ZETGeoComboPoint;
class ZETGeoPointOnCurve;
class ZETGeoPointOnSurface;
class ZETTopEdge;
class ZETTopFace;

/*! The entity of dimension 0. What it answers belongs to the body. */
class ZETHOST_EXPORT ZETTopVertex : public ZETTopEntity
{
    Q_OBJECT

public:
    ~ZETTopVertex() override;

    /*! The vertex's point, never null in a valid body. */
    virtual const ZETGeoComboPoint* GetPoint() const = 0;
    /*! The vertex's image on \a face or \a edge; null if it doesn't lie there. */
    virtual const ZETGeoPointOnSurface* GetPoint(const ZETTopFace* face) const = 0;
    virtual const ZETGeoPointOnCurve* GetPoint(const ZETTopEdge* edge) const = 0;

    /*! Faces and edges that meet at the vertex. For the vertex of a projected body these are the ones of the body that
     *  it was projected onto. */
    virtual QList<const ZETTopFace*> GetFaces() const = 0;
    virtual QList<const ZETTopEdge*> GetEdges() const = 0;
};
