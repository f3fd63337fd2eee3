#pragma once

#include <ZETComposites/ZETCompFlatGeometry.h>

/*! A curve of a flat pattern: the image of a curve of the model. */
class ZETHOST_EXPORT ZETCompFlatCurve : public ZETCompFlatGeometry
{
    Q_OBJECT
    Q_CLASSINFO("defaultLabel", "Flat Curve")
    Q_CLASSINFO("allowedParents", "")

public:
    explicit ZETCompFlatCurve(ZETFeatObject* parent);
    Q_INVOKABLE ZETCompFlatCurve(ZETGeoContainer* container, const ZETGeoGeometryRef& reference);
    ~ZETCompFlatCurve() override;
};
