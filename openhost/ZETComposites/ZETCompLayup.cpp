#include "openhost/ZETComposites/ZETCompLayup_p.h"

#include "openhost/ZETComposites/ZETModelStream_p.h"

#include <ZETComposites/ZETCompSequence.h>

ZETCompLayup::ZETCompLayup(ZETFeatObject* parent)
    : ZETFeatObject(ZETModel::ContainerOf(parent), parent)
    , d(std::make_unique<ZETCompLayupPrivate>())
{
}

ZETCompLayup::ZETCompLayup(ZETGeoContainer* container, const ZETGeoGeometryRef& reference)
    : ZETFeatObject(reference, container)
    , d(std::make_unique<ZETCompLayupPrivate>())
{
}

ZETCompLayup::~ZETCompLayup() = default;

void ZETCompLayup::Save(ZETGeoStream& stream) const
{
    ZETFeatObject::Save(stream);
    stream.GetDataStream() << d->direction;
    ZETModel::SaveReference(stream, d->workpiece);
    ZETModel::SaveReference(stream, d->rosette);
    ZETModel::SaveReference(stream, d->flatteningPlane);
    stream.GetDataStream() << static_cast<qint32>(d->flatteningMode);
}

void ZETCompLayup::Load(ZETGeoStream& stream)
{
    ZETFeatObject::Load(stream);
    stream.GetDataStream() >> d->direction;
    d->workpiece = ZETModel::LoadReference<ZETFeatGeometry>(stream);
    d->rosette = ZETModel::LoadReference<ZETCompRosette>(stream);
    d->flatteningPlane = ZETModel::LoadReference<ZETWFPlane>(stream);
    qint32 mode = FlatteningUnturned;
    stream.GetDataStream() >> mode;
    d->flatteningMode = static_cast<FlatteningMode>(mode);
}

QList<ZETCompSequence*> ZETCompLayup::GetSequences() const
{
    return ZETModel::ChildrenOfClass<ZETCompSequence>(*this);
}

bool ZETCompLayup::GetLayupDirection() const
{
    return d->direction;
}

ZETFeatGeometry* ZETCompLayup::GetWorkpiece() const
{
    return d->workpiece;
}

ZETCompRosette* ZETCompLayup::GetRosette() const
{
    return d->rosette;
}

ZETWFPlane* ZETCompLayup::GetFlatteningPlane() const
{
    return d->flatteningPlane;
}

ZETMathPlane ZETCompLayup::GetFlatteningPlaneResult() const
{
    return d->flatteningPlane ? d->flatteningPlane->GetPlane() : ZETMathPlane();
}

ZETCompLayup::FlatteningMode ZETCompLayup::GetFlatteningMode() const
{
    return d->flatteningMode;
}
