#pragma once

#include <ZETHostGlobal.h>

class ZETMathAxis;
class ZETMathPlane;
class ZETWFAxisSystem;
class ZETWFPlane;

/*! How axis systems and planes of the open host are filled in. */
namespace ZETOpenWireframe
{

/*! The axis in model coordinates. */
ZETHOST_EXPORT void SetAxis(ZETWFAxisSystem& axisSystem, const ZETMathAxis& axis);
/*! The plane in model coordinates. */
ZETHOST_EXPORT void SetPlane(ZETWFPlane& feature, const ZETMathPlane& plane);

} // namespace ZETOpenWireframe
