#pragma once

#include "features/ZETLaserProjector.h"
#include "features/ZETLaserTarget.h"

#include <QList>

/*! What WalkTargets() went through. */
struct ZETLaserTargetCounts {
    int targets = 0;    //!< those that aren't null
    int projectors = 0; //!< those that aren't null
};

/*! The walk over the targets of a job: projector by projector or, in a job without projectors, all \a targets as those
 *  of one.
 *
 *  For each projector it calls beginProjector(projector, count), with the projector's index and the count of its
 *  targets, and for each of the targets writeTarget(target, index, projector), with the indices in both lists. Indices
 *  are from 0. Null entries of either list are passed over, and use up their index. Behind the targets of each
 *  projector it calls endProjector(projector). */
template <typename BeginProjector, typename WriteTarget, typename EndProjector = void (*)(int)>
ZETLaserTargetCounts WalkTargets(
    const QList<ZETLaserTarget*>& targets, const QList<const ZETLaserProjector*>& projectors,
    BeginProjector beginProjector, WriteTarget writeTarget, EndProjector endProjector = [](int) {})
{
    ZETLaserTargetCounts counts;
    const auto walkProjector = [&](const QList<ZETLaserTarget*>& ownTargets, int projector) {
        beginProjector(projector, ownTargets.size());
        for (int index = 0; index < ownTargets.size(); ++index) {
            if (!ownTargets[index])
                continue;
            writeTarget(*ownTargets[index], index, projector);
            ++counts.targets;
        }
        endProjector(projector);
    };

    if (projectors.isEmpty())
        walkProjector(targets, 0);
    for (int projector = 0; projector < projectors.size(); ++projector) {
        if (!projectors[projector])
            continue;
        walkProjector(projectors[projector]->GetTargets(), projector);
        ++counts.projectors;
    }
    return counts;
}
