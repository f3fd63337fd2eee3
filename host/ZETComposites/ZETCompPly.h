#pragma once

#include <ZETComposites/ZETCompPlyBase.h>

class ZETCompPlyPrivate;
class ZETCompSurfaceUpdate;
class ZETMatMaterial;

/*! A ply: one piece of material, or several sub-plies that together cover its boundary. */
class ZETHOST_EXPORT ZETCompPly : public ZETCompPlyBase
{
    Q_OBJECT
    Q_CLASSINFO("defaultLabel", "Ply")
    Q_CLASSINFO("allowedParents", "ZETCompSequence")

public:
    explicit ZETCompPly(ZETFeatObject* parent);
    Q_INVOKABLE ZETCompPly(ZETGeoContainer* container, const ZETGeoGeometryRef& reference);
    ~ZETCompPly() override;

    void Save(ZETGeoStream& stream) const override;
    void Load(ZETGeoStream& stream) override;

    /*! The angle of the fibres against the layup's rosette, in radians. */
    double GetDirection() const;
    /*! The materials; the first is the ply's own. May be empty. */
    QList<ZETMatMaterial*> GetMaterials() const;
    /*! The surface that the plies beneath have made; may be null. */
    ZETCompSurfaceUpdate* GetSurfaceUpdateFeature() const;

private:
    friend class ZETCompPlyPrivate;
    std::unique_ptr<ZETCompPlyPrivate> d;
};
