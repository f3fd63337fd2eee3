#include "features/ZETLaserTargetVisObject.h"

#include "features/ZETLaserTarget.h"

#include <ZETSystem/ZETSysException.h>
#include <ZETVisualization/ZETVisPointPrimitive.h>
#include <ZETVisualization/ZETVisRepGraphics.h>

using namespace Qt::Literals::StringLiterals;

namespace
{
ZETVisOptions GetOptions()
{
    ZETVisOptions options;
    options.SetColor(QColor(0, 255, 0, 255));
    options.SetPointSymbol(ZETVisOptions::SymbolTarget);
    options.SetDepthEnabled(false);
    options.SetPriority(10);
    return options;
}
} // namespace

ZETLaserTargetVisObject::ZETLaserTargetVisObject(const ZETFeatEnvironment* environment, ZETFeatObject* feature)
    : ZETFeatVisObject(environment, feature)
{
    if (!qobject_cast<ZETLaserTarget*>(feature))
        throw ZETSysException(u"not a target"_s);
}

ZETLaserTargetVisObject::~ZETLaserTargetVisObject() = default;

ZETVisRepGraphics* ZETLaserTargetVisObject::CreateRepresentation()
{
    const auto* target = qobject_cast<ZETLaserTarget*>(GetFeature());
    if (!target)
        return nullptr;
    auto* coordinates = new double[3]; // the primitive takes them over
    target->GetCoordinates().GetCoord(coordinates[0], coordinates[1], coordinates[2]);
    return new ZETVisRepGraphics({new ZETVisPointPrimitive(coordinates, 1)}, GetOptions());
}
