#pragma once

#include <ZETFeature/ZETFeatObject.h>
#include <ZETMathematics/ZETMathPlane.h>

class ZETWFPlanePrivate;

/*! A plane of the model. A feature without a body. */
class ZETHOST_EXPORT ZETWFPlane : public ZETFeatObject
{
    Q_OBJECT
    Q_CLASSINFO("defaultLabel", "Plane")

public:
    explicit ZETWFPlane(ZETFeatObject* parent);
    Q_INVOKABLE ZETWFPlane(ZETGeoContainer* container, const ZETGeoGeometryRef& reference);
    ~ZETWFPlane() override;

    void Save(ZETGeoStream& stream) const override;
    void Load(ZETGeoStream& stream) override;

    /*! The plane in model coordinates. */
    ZETMathPlane GetPlane() const;

private:
    friend class ZETWFPlanePrivate;
    std::unique_ptr<ZETWFPlanePrivate> d;
};
