#include "openhost/ZETWireframe/ZETWFAxisSystem_p.h"

#include "openhost/ZETComposites/ZETModelStream_p.h"

namespace
{

void SaveVector(QDataStream& stream, const ZETMathVector& vector)
{
    stream << vector.GetX() << vector.GetY() << vector.GetZ();
}

ZETMathVector LoadVector(QDataStream& stream)
{
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
    stream >> x >> y >> z;
    return ZETMathVector(x, y, z);
}

} // namespace

ZETWFAxisSystem::ZETWFAxisSystem(ZETFeatObject* parent)
    : ZETFeatObject(ZETModel::ContainerOf(parent), parent)
    , d(std::make_unique<ZETWFAxisSystemPrivate>())
{
}

ZETWFAxisSystem::ZETWFAxisSystem(ZETGeoContainer* container, const ZETGeoGeometryRef& reference)
    : ZETFeatObject(reference, container)
    , d(std::make_unique<ZETWFAxisSystemPrivate>())
{
}

ZETWFAxisSystem::~ZETWFAxisSystem() = default;

void ZETWFAxisSystem::Save(ZETGeoStream& stream) const
{
    ZETFeatObject::Save(stream);
    QDataStream& data = stream.GetDataStream();
    const ZETMathPoint origin = d->axis.GetOrigin();
    data << origin.GetX() << origin.GetY() << origin.GetZ();
    SaveVector(data, d->axis.GetFirstDirection());
    SaveVector(data, d->axis.GetSecondDirection());
    SaveVector(data, d->axis.GetThirdDirection());
}

void ZETWFAxisSystem::Load(ZETGeoStream& stream)
{
    ZETFeatObject::Load(stream);
    QDataStream& data = stream.GetDataStream();
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
    data >> x >> y >> z;
    d->axis.SetOrigin(ZETMathPoint(x, y, z));
    const ZETMathVector first = LoadVector(data);
    const ZETMathVector second = LoadVector(data);
    const ZETMathVector third = LoadVector(data);
    d->axis.SetDirections(first, second, third);
}

ZETMathAxis ZETWFAxisSystem::GetAxis() const
{
    return d->axis;
}
