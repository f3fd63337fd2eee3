#pragma once

#include <ZETComposites/ZETCompFlatGeometry.h>

/*! A point of a flat pattern: the image of a point of the model. */
class ZETHOST_EXPORT ZETCompFlatPoint : public ZETCompFlatGeometry
{
    Q_OBJECT
    Q_CLASSINFO("defaultLabel", "Flat Point")
    Q_CLASSINFO("allowedParents", "")

public:
    explicit ZETCompFlatPoint(ZETFeatObject* parent);
    Q_INVOKABLE ZETCompFlatPoint(ZETGeoContainer* container, const ZETGeoGeometryRef& reference);
    ~ZETCompFlatPoint() override;
};
