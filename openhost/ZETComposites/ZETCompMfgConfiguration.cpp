#include "openhost/ZETComposites/ZETCompMfgConfiguration_p.h"

#include "openhost/ZETComposites/ZETModelStream_p.h"

#include <algorithm>

ZETCompMfgConfiguration::ZETCompMfgConfiguration(ZETFeatObject* parent)
    : ZETFeatObject(ZETModel::ContainerOf(parent), parent)
    , d(std::make_unique<ZETCompMfgConfigurationPrivate>())
{
}

ZETCompMfgConfiguration::ZETCompMfgConfiguration(ZETGeoContainer* container, const ZETGeoGeometryRef& reference)
    : ZETFeatObject(reference, container)
    , d(std::make_unique<ZETCompMfgConfigurationPrivate>())
{
}

ZETCompMfgConfiguration::~ZETCompMfgConfiguration() = default;

void ZETCompMfgConfiguration::Save(ZETGeoStream& stream) const
{
    ZETFeatObject::Save(stream);
    const auto& settings = d->settings;
    stream.GetDataStream() << settings.use3D << settings.includeNormalVectors << settings.skipParentPlyWithSubPlies
                           << settings.seedPoint << settings.seedCurve << settings.laserDataExtraGeometry
                           << settings.nestingDataExtraGeometry << settings.nestingDataRosette
                           << settings.laserDataRosetteSize << settings.nestingDataRosetteSize;
    const auto isLive = [](const ZETCompMfgConfigurationPrivate::Choice& choice) { return choice.IsLive(); };
    stream.GetDataStream() << static_cast<qint32>(std::count_if(d->choices.cbegin(), d->choices.cend(), isLive));
    for (const auto& choice : d->choices) {
        if (!choice.IsLive())
            continue;
        ZETModel::SaveReference(stream, choice.ply);
        ZETModel::SaveReference(stream, choice.included);
    }
}

void ZETCompMfgConfiguration::Load(ZETGeoStream& stream)
{
    ZETFeatObject::Load(stream);
    auto& settings = d->settings;
    stream.GetDataStream() >> settings.use3D >> settings.includeNormalVectors >> settings.skipParentPlyWithSubPlies >>
        settings.seedPoint >> settings.seedCurve >> settings.laserDataExtraGeometry >>
        settings.nestingDataExtraGeometry >> settings.nestingDataRosette >> settings.laserDataRosetteSize >>
        settings.nestingDataRosetteSize;
    const qint32 count = ZETModel::LoadCount(stream);
    for (qint32 i = 0; i < count && ZETModel::IsReadable(stream); ++i) {
        auto* const ply = ZETModel::LoadReference<ZETCompPlyBase>(stream);
        auto* const included = ZETModel::LoadReference<ZETCompStrategyBase>(stream);
        if (ply)
            d->Choose(*ply, included);
    }
}

bool ZETCompMfgConfiguration::GetUse3D() const
{
    return d->settings.use3D;
}

bool ZETCompMfgConfiguration::GetIncludeNormalVectorsEnabled() const
{
    return d->settings.includeNormalVectors;
}

bool ZETCompMfgConfiguration::GetSkipParentPlyWithSubPliesEnabled() const
{
    return d->settings.skipParentPlyWithSubPlies;
}

bool ZETCompMfgConfiguration::GetSeedPointEnabled() const
{
    return d->settings.seedPoint;
}

bool ZETCompMfgConfiguration::GetSeedCurveEnabled() const
{
    return d->settings.seedCurve;
}

bool ZETCompMfgConfiguration::GetLaserDataExtraGeometryEnabled() const
{
    return d->settings.laserDataExtraGeometry;
}

bool ZETCompMfgConfiguration::GetNestingDataExtraGeometryEnabled() const
{
    return d->settings.nestingDataExtraGeometry;
}

bool ZETCompMfgConfiguration::GetNestingDataRosetteEnabled() const
{
    return d->settings.nestingDataRosette;
}

double ZETCompMfgConfiguration::GetLaserDataRosetteSize() const
{
    return d->settings.laserDataRosetteSize;
}

double ZETCompMfgConfiguration::GetNestingDataRosetteSize() const
{
    return d->settings.nestingDataRosetteSize;
}

const ZETCompMfgConfigurationPrivate::Choice* ZETCompMfgConfigurationPrivate::Find(const ZETCompPlyBase& ply) const
{
    const auto position = positions.constFind(&ply);
    if (position == positions.cend() || !choices.at(*position).IsLive())
        return nullptr;
    return &choices.at(*position);
}

void ZETCompMfgConfigurationPrivate::Choose(ZETCompPlyBase& ply, ZETCompStrategyBase* included)
{
    const Choice choice{&ply, !included, included};
    const auto position = positions.constFind(&ply);
    if (position != positions.cend()) {
        choices[*position] = choice;
        return;
    }
    positions.insert(&ply, choices.size());
    choices.append(choice);
}
