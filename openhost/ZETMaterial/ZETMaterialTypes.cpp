#include "openhost/ZETGeometry/ZETOpenTypes.h"

#include <ZETMaterial/ZETMatMaterial.h>
#include <ZETMaterial/ZETMatPackaging.h>

namespace
{
const ZETOpenTypes::Registration<ZETMatMaterial> material;
const ZETOpenTypes::Registration<ZETMatPackaging> packaging;
} // namespace
