#pragma once

#include <ZETFeature/ZETFeatGeometry.h>
#include <ZETHostGlobal.h>

#include <memory>

/*! Geometry of a model: a tool surface, a seed point, a curve. Its body is given, and saved with it. */
class ZETHOST_EXPORT ZETOpenGeometryFeature : public ZETFeatGeometry
{
    Q_OBJECT
    Q_CLASSINFO("defaultLabel", "Geometry")
    Q_CLASSINFO("allowedParents", "")

public:
    explicit ZETOpenGeometryFeature(ZETFeatObject* parent);
    Q_INVOKABLE ZETOpenGeometryFeature(ZETGeoContainer* container, const ZETGeoGeometryRef& reference);
    ~ZETOpenGeometryFeature() override;

    void Save(ZETGeoStream& stream) const override;
    void Load(ZETGeoStream& stream) override;
    ZETTopBody* GetBody() const override;

    /*! The feature owns the body from now on; null is allowed. What others hold of the old body is gone. */
    void SetBody(std::unique_ptr<ZETTopBody> newBody);

private:
    std::unique_ptr<ZETTopBody> body;
};
