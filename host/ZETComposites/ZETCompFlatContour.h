#pragma once

#include <ZETComposites/ZETCompFlatGeometry.h>

/*! The outline of a flat pattern, or of a hole in it. */
class ZETHOST_EXPORT ZETCompFlatContour : public ZETCompFlatGeometry
{
    Q_OBJECT
    Q_CLASSINFO("defaultLabel", "Flat Contour")
    Q_CLASSINFO("allowedParents", "")

public:
    explicit ZETCompFlatContour(ZETFeatObject* parent);
    Q_INVOKABLE ZETCompFlatContour(ZETGeoContainer* container, const ZETGeoGeometryRef& reference);
    ~ZETCompFlatContour() override;
};
