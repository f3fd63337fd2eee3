#pragma once

#include <ZETTopology/ZETTopEntity.h>

class ZETGeoSurface;

/*! The entity of dimension 2. */
class ZETHOST_EXPORT ZETTopFace : public ZETTopEntity
{
    Q_OBJECT

public:
    ~ZETTopFace() override;

    /*! The face's surface, owned by the body and never null in a valid one. */
    virtual const ZETGeoSurface* GetSurface() const = 0;
};
