#pragma once

#include <ZETFeature/ZETFeatObject.h>

class ZETMatPackagingPrivate;

/*! How a material is delivered: the roll or sheet from which a ply is cut. */
class ZETHOST_EXPORT ZETMatPackaging : public ZETFeatObject
{
    Q_OBJECT
    Q_CLASSINFO("defaultLabel", "Packaging")
    Q_PROPERTY(double width READ GetWidth)
    Q_PROPERTY(double length READ GetLength)

public:
    explicit ZETMatPackaging(ZETFeatObject* parent);
    Q_INVOKABLE ZETMatPackaging(ZETGeoContainer* container, const ZETGeoGeometryRef& reference);
    ~ZETMatPackaging() override;

    void Save(ZETGeoStream& stream) const override;
    void Load(ZETGeoStream& stream) override;

    /*! Width and length of the roll, in mm; 0 if not known. */
    double GetWidth() const;
    double GetLength() const;

private:
    friend class ZETMatPackagingPrivate;
    std::unique_ptr<ZETMatPackagingPrivate> d;
};
