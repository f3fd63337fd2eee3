#pragma once

#include <ZETFeature/ZETFeatObject.h>

class ZETMatMaterialPrivate;

/*! A material of the model. */
class ZETHOST_EXPORT ZETMatMaterial : public ZETFeatObject
{
    Q_OBJECT
    Q_CLASSINFO("defaultLabel", "Material")
    Q_PROPERTY(QString materialType READ GetMaterialType)
    Q_PROPERTY(QString materialId READ GetMaterialId)
    Q_PROPERTY(double thickness READ GetThickness)

public:
    explicit ZETMatMaterial(ZETFeatObject* parent);
    Q_INVOKABLE ZETMatMaterial(ZETGeoContainer* container, const ZETGeoGeometryRef& reference);
    ~ZETMatMaterial() override;

    void Save(ZETGeoStream& stream) const override;
    void Load(ZETGeoStream& stream) override;

    /*! What kind of material it is, such as a fabric or a unidirectional tape. May be empty. */
    QString GetMaterialType() const;
    /*! The number under which the material is ordered. May be empty. */
    QString GetMaterialId() const;
    /*! Thickness of one ply of this material as laid, in mm; 0 if not known. */
    double GetThickness() const;

private:
    friend class ZETMatMaterialPrivate;
    std::unique_ptr<ZETMatMaterialPrivate> d;
};
