#pragma once

#include <ZETFeature/ZETFeatObject.h>

/*! A way to make a ply or sub-ply. */
class ZETHOST_EXPORT ZETCompStrategyBase : public ZETFeatObject
{
    Q_OBJECT

public:
    ~ZETCompStrategyBase() override;

protected:
    explicit ZETCompStrategyBase(ZETFeatObject* parent);
    ZETCompStrategyBase(ZETGeoContainer* container, const ZETGeoGeometryRef& reference);
};
