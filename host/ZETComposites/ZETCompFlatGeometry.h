#pragma once

#include <ZETFeature/ZETFeatGeometry.h>

class ZETCompFlatGeometryPrivate;

/*! Geometry of a flat pattern, in the plane of the pattern. */
class ZETHOST_EXPORT ZETCompFlatGeometry : public ZETFeatGeometry
{
    Q_OBJECT

public:
    ~ZETCompFlatGeometry() override;

    void Save(ZETGeoStream& stream) const override;
    void Load(ZETGeoStream& stream) override;
    ZETTopBody* GetBody() const override;

    /*! The model geometry that this is the image of; may be null. Whoever looks for an image compares this pointer. */
    ZETFeatGeometry* GetSource() const;

protected:
    explicit ZETCompFlatGeometry(ZETFeatObject* parent);
    ZETCompFlatGeometry(ZETGeoContainer* container, const ZETGeoGeometryRef& reference);

private:
    friend class ZETCompFlatGeometryPrivate;
    std::unique_ptr<ZETCompFlatGeometryPrivate> d;
};
