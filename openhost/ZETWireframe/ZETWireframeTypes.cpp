#include "openhost/ZETGeometry/ZETOpenTypes.h"

#include <ZETWireframe/ZETWFAxisSystem.h>
#include <ZETWireframe/ZETWFPlane.h>

namespace
{
const ZETOpenTypes::Registration<ZETWFAxisSystem> axisSystem;
const ZETOpenTypes::Registration<ZETWFPlane> plane;
} // namespace
