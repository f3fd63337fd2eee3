#pragma once

#include <ZETFeature/ZETFeatGeometry.h>

class ZETCompSurfaceUpdatePrivate;

/*! The surface on which a ply comes to lie, as the plies beneath have raised it. */
class ZETHOST_EXPORT ZETCompSurfaceUpdate : public ZETFeatGeometry
{
    Q_OBJECT
    Q_CLASSINFO("defaultLabel", "Surface Update")
    Q_CLASSINFO("allowedParents", "")

public:
    explicit ZETCompSurfaceUpdate(ZETFeatObject* parent);
    Q_INVOKABLE ZETCompSurfaceUpdate(ZETGeoContainer* container, const ZETGeoGeometryRef& reference);
    ~ZETCompSurfaceUpdate() override;

    void Save(ZETGeoStream& stream) const override;
    void Load(ZETGeoStream& stream) override;
    ZETTopBody* GetBody() const override;

private:
    friend class ZETCompSurfaceUpdatePrivate;
    std::unique_ptr<ZETCompSurfaceUpdatePrivate> d;
};
