#include "JobExpectedTargets.h"

#include "JobExpectedTree.h"

#include "features/ZETLaserProjector.h"
#include "features/ZETLaserTarget.h"

#include <ZETComposites/ZETCompRoot.h>

#include <algorithm>

namespace
{
template <typename Feature>
QList<Feature*> FindAll(const ZETLaserOptions& options)
{
    QList<Feature*> found;
    if (options.GetCompRoot()) {
        for (ZETFeatObject* child : options.GetCompRoot()->GetAllChildren()) {
            if (auto* const feature = qobject_cast<Feature*>(child))
                found.append(feature);
        }
    }
    return found;
}

QString GetLabelOr(const ZETLaserTarget& target, int number)
{
    const QString label = target.GetLabel();
    return label.isEmpty() ? QString::number(number) : label;
}
} // namespace

JobExpectedTargets::JobExpectedTargets(const ZETLaserOptions& jobOptions)
    : options(jobOptions)
    , all(FindAll<ZETLaserTarget>(jobOptions))
{
}

bool JobExpectedTargets::HasProjectors(Projectors projectors) const
{
    return projectors == OfJob     ? !options.GetProjectors().isEmpty()
           : projectors == OfModel ? !FindAll<ZETLaserProjector>(options).isEmpty()
                                   : false;
}

QList<std::optional<JobExpectedTargets::Targets>> JobExpectedTargets::GetLists(Projectors projectors) const
{
    if (!HasProjectors(projectors))
        return {all};
    QList<std::optional<Targets>> lists;
    const auto add = [&](const ZETLaserProjector* projector) {
        lists.append(projector ? std::optional(projector->GetTargets()) : std::nullopt);
    };
    if (projectors == OfJob)
        std::for_each(options.GetProjectors().begin(), options.GetProjectors().end(), add);
    else
        for (const ZETLaserProjector* projector : FindAll<ZETLaserProjector>(options))
            add(projector);
    return lists;
}

template <typename Use>
void JobExpectedTargets::AddAll(CheckFile& file, const std::optional<Targets>& targets, int projector, Use use) const
{
    int known = 0;
    for (qsizetype i = 0; targets && i < targets->size(); ++i) {
        const ZETLaserTarget* const target = (*targets)[i];
        if (!target)
            continue;
        CheckTarget& added = file.targets.emplace_back();
        added.position = ToNumbers(GetOutputAxis(options) * target->GetCoordinates(), GetUnitScale(options));
        added.projector = projector;
        use(added, *target, Place{static_cast<int>(i), known++});
    }
}

void JobExpectedTargets::AddVirtek(CheckFile& file) const
{
    for (const auto& targets : GetLists(OfJob)) {
        AddAll(file, targets, file.projectorCount, [](CheckTarget& added, const ZETLaserTarget& target, Place place) {
            added.name = WithoutBlanks(GetLabelOr(target, place.index));
            added.isDrift = target.IsDrift();
        });
        file.projectorCount += targets ? 1 : 0;
    }
}

void JobExpectedTargets::AddLap(CheckFile& file) const
{
    // The numbers begin with 0 where there are no projectors, and run on from one projector to the next where there
    // are.
    const bool isRunning = HasProjectors(OfJob);
    for (const auto& targets : GetLists(OfJob)) {
        AddAll(file, targets, file.projectorCount, [&](CheckTarget& added, const ZETLaserTarget&, Place place) {
            added.name = QString::number(isRunning ? static_cast<int>(file.targets.size()) : place.index);
        });
        file.projectorCount += targets ? 1 : 0;
    }
}

void JobExpectedTargets::AddSl(CheckFile& file) const
{
    constexpr qsizetype mostLasers = 16;
    file.partName = options.GetPartName();
    const bool isOfProjectors = HasProjectors(OfJob);
    for (const auto& targets : GetLists(OfJob).mid(0, mostLasers)) {
        const int laser = file.projectorCount++;
        AddAll(file, targets, laser, [&](CheckTarget& added, const ZETLaserTarget& target, Place place) {
            added.name = WithoutBlanks(GetLabelOr(target, laser + 1));
            added.number = isOfProjectors ? place.count + 1 : place.index;
        });
    }
}

void JobExpectedTargets::AddTool(CheckFile& file) const
{
    file.values.emplace_back(QStringLiteral("NAME"), QStringLiteral("Tool-") + options.GetFileName());
    int laser = 0;
    for (const auto& targets : GetLists(OfJob)) {
        AddAll(file, targets, laser, [&](CheckTarget& added, const ZETLaserTarget& target, Place place) {
            added.name = GetLabelOr(target, place.index);
            added.isDrift = target.IsDrift();
            added.number = place.count + 1;
            file.projectorCount = laser + 1; // a projector without targets leaves no mark
        });
        ++laser;
    }
}

void JobExpectedTargets::AddAssemblyGuidance(CheckFile& file) const
{
    AddAll(file, all, 0, [](CheckTarget& added, const ZETLaserTarget& target, Place place) {
        added.name = WithoutBlanks(GetLabelOr(target, place.count + 1));
        added.number = place.count + 1;
    });
    file.projectorCount = HasTargets() ? 1 : 0;
}

void JobExpectedTargets::AddGeneralScanning(CheckFile& file) const
{
    if (!HasTargets())
        return;
    for (const auto& targets : GetLists(OfModel)) {
        AddAll(file, targets, file.projectorCount,
               [](CheckTarget& added, const ZETLaserTarget&, Place place) { added.number = place.index + 1; });
        file.projectorCount += targets ? 1 : 0;
    }
}

bool JobExpectedTargets::HasGaps() const
{
    const QList<std::optional<Targets>> ofJob = GetLists(OfJob);
    const QList<std::optional<Targets>> ofModel = GetLists(OfModel);
    const auto hasGap = [](const std::optional<Targets>& targets) { return !targets || targets->contains(nullptr); };
    return std::any_of(ofJob.begin(), ofJob.end(), hasGap) || std::any_of(ofModel.begin(), ofModel.end(), hasGap);
}
