#include "openhost/ZETComposites/ZETCompPly_p.h"

#include "openhost/ZETComposites/ZETModelStream_p.h"

ZETCompPly::ZETCompPly(ZETFeatObject* parent)
    : ZETCompPlyBase(parent)
    , d(std::make_unique<ZETCompPlyPrivate>())
{
}

ZETCompPly::ZETCompPly(ZETGeoContainer* container, const ZETGeoGeometryRef& reference)
    : ZETCompPlyBase(container, reference)
    , d(std::make_unique<ZETCompPlyPrivate>())
{
}

ZETCompPly::~ZETCompPly() = default;

void ZETCompPly::Save(ZETGeoStream& stream) const
{
    ZETCompPlyBase::Save(stream);
    stream.GetDataStream() << d->direction;
    ZETModel::SaveReferences(stream, d->materials);
    ZETModel::SaveReference(stream, d->surfaceUpdate);
}

void ZETCompPly::Load(ZETGeoStream& stream)
{
    ZETCompPlyBase::Load(stream);
    stream.GetDataStream() >> d->direction;
    d->materials = ZETModel::LoadReferences<ZETMatMaterial>(stream);
    d->surfaceUpdate = ZETModel::LoadReference<ZETCompSurfaceUpdate>(stream);
}

double ZETCompPly::GetDirection() const
{
    return d->direction;
}

QList<ZETMatMaterial*> ZETCompPly::GetMaterials() const
{
    QList<ZETMatMaterial*> materials;
    for (const QPointer<ZETMatMaterial>& material : d->materials) {
        if (material)
            materials.append(material);
    }
    return materials;
}

ZETCompSurfaceUpdate* ZETCompPly::GetSurfaceUpdateFeature() const
{
    return d->surfaceUpdate;
}
