#pragma once

#include <ZETTopology/ZETTopEntity.h>

class ZETGeoComboCurve;

/*! The entity of dimension 1. */
class ZETHOST_EXPORT ZETTopEdge : public ZETTopEntity
{
    Q_OBJECT

public:
    ~ZETTopEdge() override;

    /*! The edge's curve, owned by the body and never null in a valid one. Its sense is the edge's own, whichever way a
     *  net runs through the edge. */
    virtual const ZETGeoComboCurve* GetCurve() const = 0;
};
