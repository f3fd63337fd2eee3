#pragma once

#include <ZETTopology/ZETTopDomain.h>

class ZETTopEdge;

/*! A chain of edges, in order of travel. */
class ZETHOST_EXPORT ZETTopNet : public ZETTopDomain
{
    Q_OBJECT

public:
    ~ZETTopNet() override;

    virtual bool IsClosed() const = 0;
    virtual int GetNumEdges() const = 0;
    /*! Edge \a position of the chain, from 0; null for a position outside of it. */
    virtual const ZETTopEdge* GetEdge(int position) const = 0;

    /*! The position of \a edge in the chain; -1 if it isn't part of it. */
    virtual int GetEdgePosition(const ZETTopEdge* edge) const = 0;
    /*! The sense of the edge at \a position as the bool that `reversed` of ZETGeoComboCurve::GetCurve is compared with:
     *  false where the net runs along the edge, true where it runs against it. So the image of the edge's curve is
     *  walked forward exactly where the two are equal. */
    virtual bool GetEdgeSense(int position) const = 0;
};
