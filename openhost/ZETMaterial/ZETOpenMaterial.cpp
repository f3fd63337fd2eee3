#include "openhost/ZETMaterial/ZETOpenMaterial.h"

#include "openhost/ZETMaterial/ZETMatDefinition_p.h"
#include "openhost/ZETMaterial/ZETMatMaterial_p.h"
#include "openhost/ZETMaterial/ZETMatPackaging_p.h"

void ZETOpenMaterial::SetMaterialType(ZETMatMaterial& material, const QString& type)
{
    ZETMatMaterialPrivate::Of(material).type = type;
    material.SetOutdated();
}

void ZETOpenMaterial::SetMaterialId(ZETMatMaterial& material, const QString& id)
{
    ZETMatMaterialPrivate::Of(material).id = id;
    material.SetOutdated();
}

void ZETOpenMaterial::SetThickness(ZETMatMaterial& material, double thickness)
{
    ZETMatMaterialPrivate::Of(material).thickness = thickness;
    material.SetOutdated();
}

void ZETOpenMaterial::SetSize(ZETMatPackaging& packaging, double width, double length)
{
    auto& record = ZETMatPackagingPrivate::Of(packaging);
    record.width = width;
    record.length = length;
    packaging.SetOutdated();
}

QByteArray ZETOpenMaterial::GetKey(const ZETMatDefinition& definition)
{
    return ZETMatDefinitionPrivate::Of(definition).committed.key;
}

QVariant ZETOpenMaterial::GetValue(const ZETMatDefinition& definition, const QByteArray& group, const QByteArray& name)
{
    return ZETMatDefinitionPrivate::Of(definition).committed.values.value({group, name});
}
