#pragma once

#include <ZETHostGlobal.h>

#include <QString>

class ZETMatMaterial;
class ZETMatPackaging;

/*! How the materials of the open host are filled in. */
namespace ZETOpenMaterial
{

ZETHOST_EXPORT void SetMaterialType(ZETMatMaterial& material, const QString& type);
ZETHOST_EXPORT void SetMaterialId(ZETMatMaterial& material, const QString& id);
/*! Thickness of one ply, in mm. */
ZETHOST_EXPORT void SetThickness(ZETMatMaterial& material, double thickness);

/*! Width and length of the roll, in mm. */
ZETHOST_EXPORT void SetSize(ZETMatPackaging& packaging, double width, double length);

} // namespace ZETOpenMaterial
