#include "openhost/ZETComposites/ZETCompPlyBase_p.h"

#include "openhost/ZETComposites/ZETCompMfgConfiguration_p.h"
#include "openhost/ZETComposites/ZETModelStream_p.h"
#include "openhost/ZETTopology/ZETOpenShapeStore.h"

#include <ZETComposites/ZETCompFlatPattern.h>
#include <ZETComposites/ZETCompStrategy.h>
#include <ZETComposites/ZETCompStrategyBase.h>

namespace
{

template <typename T>
void SaveCurves(ZETGeoStream& stream, const QList<ZETOpenRef<T>>& curves)
{
    stream.GetDataStream() << static_cast<qint32>(curves.size());
    for (const ZETOpenRef<T>& curve : curves)
        ZETOpenShapeStore::SaveCurve(stream.GetDataStream(), curve.Get());
}

/*! Reads the next curve as its class; null was written as null. */
template <typename T>
ZETOpenRef<T> LoadCurve(ZETGeoStream& stream)
{
    const ZETOpenRef<ZETGeoCurveOnSurface> curve = ZETOpenShapeStore::LoadCurve(stream.GetDataStream());
    T* const cast = qobject_cast<T*>(curve.Get());
    if (curve && !cast)
        throw ZETGeoGeometryNotFoundException();
    return ZETOpenRef<T>(cast);
}

template <typename T>
QList<ZETOpenRef<T>> LoadCurves(ZETGeoStream& stream)
{
    QList<ZETOpenRef<T>> curves;
    const qint32 count = ZETModel::LoadCount(stream);
    for (qint32 i = 0; i < count && ZETModel::IsReadable(stream); ++i)
        curves.append(LoadCurve<T>(stream));
    return curves;
}

} // namespace

ZETCompPlyBase::ZETCompPlyBase(ZETFeatObject* parent)
    : ZETFeatObject(ZETModel::ContainerOf(parent), parent)
    , d(std::make_unique<ZETCompPlyBasePrivate>())
{
}

ZETCompPlyBase::ZETCompPlyBase(ZETGeoContainer* container, const ZETGeoGeometryRef& reference)
    : ZETFeatObject(reference, container)
    , d(std::make_unique<ZETCompPlyBasePrivate>())
{
}

ZETCompPlyBase::~ZETCompPlyBase() = default;

void ZETCompPlyBase::Save(ZETGeoStream& stream) const
{
    ZETFeatObject::Save(stream);
    SaveCurves(stream, d->boundaries);
    stream.GetDataStream() << d->hasUpdatedBoundaries;
    SaveCurves(stream, d->updatedBoundaries);
}

void ZETCompPlyBase::Load(ZETGeoStream& stream)
{
    ZETFeatObject::Load(stream);
    d->boundaries = LoadCurves<ZETGeoAssembledCurveOnSurface>(stream);
    stream.GetDataStream() >> d->hasUpdatedBoundaries;
    d->updatedBoundaries = LoadCurves<const ZETGeoCurveOnSurface>(stream);
}

QList<ZETGeoAssembledCurveOnSurface*> ZETCompPlyBase::GetBoundaryCurves() const
{
    QList<ZETGeoAssembledCurveOnSurface*> curves;
    curves.reserve(d->boundaries.size());
    for (const auto& boundary : d->boundaries)
        curves.append(boundary.Get());
    return curves;
}

QList<const ZETGeoCurveOnSurface*> ZETCompPlyBase::GetUpdatedBoundaryCurves() const
{
    QList<const ZETGeoCurveOnSurface*> curves;
    if (d->hasUpdatedBoundaries) {
        for (const auto& boundary : d->updatedBoundaries)
            curves.append(boundary.Get());
    } else {
        for (const auto& boundary : d->boundaries)
            curves.append(boundary.Get());
    }
    return curves;
}

// Enabled states are not looked at: a ply that is made in pieces stays so while its subdivision is disabled, and it is
// for the caller to decide what a disabled one means.
ZETCompStrategyBase*
ZETCompPlyBase::GetIncludedStrategyOrSubdivision(const ZETCompMfgConfiguration* configuration) const
{
    if (configuration) {
        if (const auto* const choice = ZETCompMfgConfigurationPrivate::Of(*configuration).Find(*this))
            return choice->included;
    }
    return ZETModel::FirstChildOfClass<ZETCompStrategyBase>(*this);
}

ZETCompFlatPattern* ZETCompPlyBase::GetFlatPattern(const ZETCompMfgConfiguration* configuration) const
{
    const auto* const strategy = qobject_cast<ZETCompStrategy*>(GetIncludedStrategyOrSubdivision(configuration));
    return strategy ? strategy->GetFlatPattern() : nullptr;
}
