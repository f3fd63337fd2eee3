// What the options take from the model: root, configuration, plies and projectors.

#include "features/ZETLaserModelTree.h"
#include "features/ZETLaserProjector.h"
#include "laser/ZETLaserOptions.h"

#include <ZETComposites/ZETCompLayup.h>
#include <ZETComposites/ZETCompMfgConfiguration.h>
#include <ZETComposites/ZETCompPly.h>
#include <ZETComposites/ZETCompRoot.h>
#include <ZETComposites/ZETCompSequence.h>
#include <ZETComposites/ZETCompSubdivision.h>
#include <ZETComposites/ZETCompSubPly.h>

#include <QSet>

namespace
{
/*! Walks down from a feature and keeps the plies and sub-plies that a job may output. */
class IncludedPlyCollector
{
public:
    IncludedPlyCollector(const ZETCompMfgConfiguration& jobConfiguration, bool skipParents)
        : configuration(jobConfiguration)
        , skipParentPlyWithSubPlies(skipParents)
    {
    }

    QList<ZETCompPlyBase*> plies;

    void Collect(ZETFeatObject* object)
    {
        if (!object || !object->IsEffectivelyEnabled()) // what is disabled hides all that is below it
            return;
        if (auto* layup = qobject_cast<ZETCompLayup*>(object))
            CollectEach(layup->GetSequences());
        else if (auto* sequence = qobject_cast<ZETCompSequence*>(object))
            CollectEach(sequence->GetPlies());
        else if (auto* ply = qobject_cast<ZETCompPly*>(object))
            CollectPly(ply);
        else if (auto* subdivision = qobject_cast<ZETCompSubdivision*>(object))
            CollectEach(subdivision->GetSubPlies());
        else if (auto* subPly = qobject_cast<ZETCompSubPly*>(object))
            plies.append(subPly);
    }

    template <typename Feature>
    void CollectEach(const QList<Feature*>& features)
    {
        for (Feature* feature : features)
            Collect(feature);
    }

private:
    /*! A parent ply comes directly before its own sub-plies, unless it is left out for them. */
    void CollectPly(ZETCompPly* ply)
    {
        auto* subdivision = qobject_cast<ZETCompSubdivision*>(ply->GetIncludedStrategyOrSubdivision(&configuration));
        // Meant: it is left out for a disabled subdivision too, although no sub-ply takes its place then.
        if (!subdivision || !skipParentPlyWithSubPlies)
            plies.append(ply);
        Collect(subdivision);
    }

    const ZETCompMfgConfiguration& configuration;
    bool skipParentPlyWithSubPlies;
};

/*! Those of \a objects that are \a selected or \a added, in the order of \a objects. */
template <typename Object, typename Candidate>
QList<const Object*> Reselect(const QList<Candidate*>& objects, const QList<const Object*>& selected,
                              const Object* added)
{
    QSet<const Object*> wanted(selected.begin(), selected.end());
    wanted.insert(added);
    QList<const Object*> result;
    for (Candidate* object : objects) {
        if (wanted.contains(object))
            result.append(object);
    }
    return result;
}
} // namespace

void ZETLaserOptions::SetCompRoot(QPointer<ZETCompRoot> root)
{
    compRoot = std::move(root);
    // Meant: the configuration's defaults are not pulled here. A client that wants them calls SetActiveConfiguration.
    activeConfiguration = compRoot ? compRoot->GetActiveMfgConfiguration() : nullptr;
}

void ZETLaserOptions::SetActiveConfiguration(const ZETCompMfgConfiguration* configuration)
{
    activeConfiguration = configuration;
    if (!configuration)
        return;

    const bool nesting = outputType == OutputFlatNesting;
    skipParentPlyWithSubPlies = nesting || configuration->GetSkipParentPlyWithSubPliesEnabled();
    includeNormalVectors = configuration->GetIncludeNormalVectorsEnabled();
    // Meant: OutputFlatNestingEmbedded doesn't stay either.
    if (!nesting)
        outputType = configuration->GetUse3D() ? Output3D : OutputFlat;
    // Meant: plain flat output takes the size of nesting too.
    rosetteSize =
        outputType == Output3D ? configuration->GetLaserDataRosetteSize() : configuration->GetNestingDataRosetteSize();
    useSeedPoint = configuration->GetSeedPointEnabled() ? 1 : 0;
    useSeedCurve = configuration->GetSeedCurveEnabled() ? 1 : 0;
    const bool extraGeometry = nesting ? configuration->GetNestingDataExtraGeometryEnabled()
                                       : configuration->GetLaserDataExtraGeometryEnabled();
    outputExtraGeometry = extraGeometry ? 1 : 0;
    // Meant: the configuration has no rosette switch for laser data, so that of extra geometry serves for both.
    const bool rosette =
        nesting ? configuration->GetNestingDataRosetteEnabled() : configuration->GetLaserDataExtraGeometryEnabled();
    outputRosette = rosette ? 1 : 0;
    SelectAllPlies(outputType);
}

QList<ZETCompPlyBase*> ZETLaserOptions::GetIncludedPlies(const ZETCompMfgConfiguration* configuration,
                                                         bool skipParentPlyWithSubPlies, ZETFeatObject* object)
{
    if (!configuration)
        return {};
    IncludedPlyCollector collector(*configuration, skipParentPlyWithSubPlies);
    if (object)
        collector.Collect(object);
    else if (auto* root = qobject_cast<ZETCompRoot*>(configuration->GetRoot()))
        collector.CollectEach(root->GetLayups());
    return collector.plies;
}

QList<ZETCompPlyBase*> ZETLaserOptions::GetSelectablePlies() const
{
    return GetIncludedPlies(activeConfiguration, skipParentPlyWithSubPlies, nullptr);
}

void ZETLaserOptions::SelectAllPlies(EOutputType type)
{
    plies.clear();
    const QList<ZETCompPlyBase*> selectable = GetSelectablePlies();
    for (ZETCompPlyBase* ply : selectable) {
        // Meant: the flat pattern is asked for without the active configuration.
        if (type == Output3D || ply->GetFlatPattern(nullptr))
            plies.append(ply);
    }
}

void ZETLaserOptions::AddPly(ZETCompPlyBase* ply)
{
    plies = Reselect<ZETCompPlyBase>(GetSelectablePlies(), plies, ply);
}

QList<const ZETLaserProjector*> ZETLaserOptions::GetModelProjectors() const
{
    return FindDescendants<const ZETLaserProjector>(compRoot);
}

void ZETLaserOptions::SelectAllProjectors()
{
    projectors = GetModelProjectors();
}

void ZETLaserOptions::AddProjector(const ZETLaserProjector* projector)
{
    projectors = Reselect<ZETLaserProjector>(GetModelProjectors(), projectors, projector);
}
