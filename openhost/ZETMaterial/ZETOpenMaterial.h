#pragma once

#include <ZETHostGlobal.h>

#include <QByteArray>
#include <QString>
#include <QVariant>

class ZETMatDefinition;
class ZETMatMaterial;
class ZETMatPackaging;

/*! How the materials of the open host are filled in, and what a definition holds. */
namespace ZETOpenMaterial
{

ZETHOST_EXPORT void SetMaterialType(ZETMatMaterial& material, const QString& type);
ZETHOST_EXPORT void SetMaterialId(ZETMatMaterial& material, const QString& id);
/*! Thickness of one ply, in mm. */
ZETHOST_EXPORT void SetThickness(ZETMatMaterial& material, double thickness);

/*! Width and length of the roll, in mm. */
ZETHOST_EXPORT void SetSize(ZETMatPackaging& packaging, double width, double length);

/*! What a definition holds since its last commit. A property that isn't allowed, or that no feature had, is invalid. */
ZETHOST_EXPORT QByteArray GetKey(const ZETMatDefinition& definition);
ZETHOST_EXPORT QVariant GetValue(const ZETMatDefinition& definition, const QByteArray& group, const QByteArray& name);

} // namespace ZETOpenMaterial
