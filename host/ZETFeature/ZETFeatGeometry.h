#pragma once

#include <ZETFeature/ZETFeatObject.h>

class ZETTopBody;

/*! A feature whose result is a topological body. */
class ZETHOST_EXPORT ZETFeatGeometry : public ZETFeatObject
{
    Q_OBJECT
    Q_CLASSINFO("defaultLabel", "Geometry")

public:
    explicit ZETFeatGeometry(ZETFeatObject* parent);
    Q_INVOKABLE ZETFeatGeometry(ZETGeoContainer* container, const ZETGeoGeometryRef& reference);
    ~ZETFeatGeometry() override;

    /*! The current body, owned by the feature; null if it has none, as here. */
    virtual ZETTopBody* GetBody() const;
};
