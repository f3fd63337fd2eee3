#include "openhost/ZETWireframe/ZETOpenWireframe.h"

#include "openhost/ZETWireframe/ZETWFAxisSystem_p.h"
#include "openhost/ZETWireframe/ZETWFPlane_p.h"

void ZETOpenWireframe::SetAxis(ZETWFAxisSystem& axisSystem, const ZETMathAxis& axis)
{
    ZETWFAxisSystemPrivate::Of(axisSystem).axis = axis;
    axisSystem.SetOutdated();
}

void ZETOpenWireframe::SetPlane(ZETWFPlane& feature, const ZETMathPlane& plane)
{
    ZETWFPlanePrivate::Of(feature).plane = plane;
    feature.SetOutdated();
}
