#include "reader/ZETLaserReaderComposites.h"

#include "features/ZETLaserExtraGeometry.h"
#include "laser/ZETLaserEntityProperties.h"
#include "laser/ZETLaserGroup.h"
#include "laser/ZETLaserOptions.h"

#include <ZETComposites/ZETCompLayup.h>
#include <ZETComposites/ZETCompPly.h>
#include <ZETComposites/ZETCompRoot.h>
#include <ZETComposites/ZETCompSequence.h>
#include <ZETComposites/ZETCompStrategyBase.h>
#include <ZETComposites/ZETCompSubdivision.h>
#include <ZETComposites/ZETCompSubPly.h>
#include <ZETComposites/ZETCompThicknessAnalyzer.h>
#include <ZETMaterial/ZETMatMaterial.h>

#include <QVariant>

#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace
{

/*! A new group of the name that \a node shows, at the end of \a parent. */
QSharedPointer<ZETLaserGroup> AddGroup(const QSharedPointer<ZETLaserGroup>& parent, const ZETFeatObject& node)
{
    auto group = QSharedPointer<ZETLaserGroup>::create(parent);
    group->SetName(node.GetLabel());
    parent->AddGroup(group);
    return group;
}

/*! The direct children of \a node that apply to nothing but what stands below it. */
QList<ZETLaserExtraGeometry*> GetParentOnly(const ZETFeatObject& node)
{
    QList<ZETLaserExtraGeometry*> features;
    for (ZETFeatObject* child : node.GetChildren()) {
        auto* const extra = qobject_cast<ZETLaserExtraGeometry*>(child);
        if (extra && extra->GetScope() == ZETLaserExtraGeometry::ParentOnly)
            features.append(extra);
    }
    return features;
}

/*! Keeps \a child, if it is extra geometry, for what stands after it on its level. */
void Remember(ZETFeatObject* child, QPointer<ZETLaserExtraGeometry>& untilNext,
              QList<ZETLaserExtraGeometry*>& pliesBelow)
{
    auto* const extra = qobject_cast<ZETLaserExtraGeometry*>(child);
    if (!extra)
        return;
    if (extra->GetScope() == ZETLaserExtraGeometry::UntilNext)
        untilNext = extra;
    else if (extra->GetScope() == ZETLaserExtraGeometry::PliesBelow)
        pliesBelow.append(extra);
}

void AppendLive(QList<ZETLaserExtraGeometry*>& list,
                std::initializer_list<const QPointer<ZETLaserExtraGeometry>*> features)
{
    for (const QPointer<ZETLaserExtraGeometry>* feature : features) {
        if (*feature)
            list.append(*feature);
    }
}

} // namespace

ZETLaserReaderComposites::ZETLaserReaderComposites(ZETLaserOptions* jobOptions, QSharedPointer<ZETLaserGroup> rootGroup,
                                                   QList<ZETMatMaterial*>* jobMaterials)
    : ZETLaserReader(jobOptions, std::move(rootGroup))
    , materials(jobMaterials)
    , thicknessAnalyzer(std::make_unique<ZETCompThicknessAnalyzer>())
{
    thicknessAnalyzer->SetBoundaryTolerance(options->GetBoundaryTolerance());
}

ZETLaserReaderComposites::~ZETLaserReaderComposites() = default;

bool ZETLaserReaderComposites::Read()
{
    const QPointer<ZETCompRoot> model = options->GetCompRoot();
    if (!model)
        return false;
    root->SetName(model->GetLabel());
    LookThrough(*model);
    rootUntilNext.clear();
    rootPliesBelow.clear();
    for (ZETFeatObject* child : model->GetChildren()) {
        if (auto* const layup = qobject_cast<ZETCompLayup*>(child))
            ReadLayup(layup, root);
        else
            Remember(child, rootUntilNext, rootPliesBelow);
    }
    const qsizetype count = root->GetChildren().size();
    // Meant: the text is made, and goes nowhere.
    static_cast<void>(tr("Found %1 first level groups").arg(count));
    return count > 0;
}

// One pass over the model stands for a search through all descendants at every layup and sequence.
void ZETLaserReaderComposites::LookThrough(const ZETCompRoot& model)
{
    const QList<const ZETCompPlyBase*>& plies = options->GetPlies();
    selectedPlies = QSet<const ZETCompPlyBase*>(plies.cbegin(), plies.cend());
    nodesWithSelectedPlies.clear();
    allPlies.clear();
    for (ZETFeatObject* feature : model.GetAllChildren()) {
        if (auto* const extra = qobject_cast<ZETLaserExtraGeometry*>(feature)) {
            if (extra->GetScope() == ZETLaserExtraGeometry::AllPlies)
                allPlies.append(extra);
        } else if (IsSelected(qobject_cast<ZETCompPlyBase*>(feature))) {
            const ZETFeatObject* node = feature->GetParent();
            for (; node && !nodesWithSelectedPlies.contains(node); node = node->GetParent())
                nodesWithSelectedPlies.insert(node);
        }
    }
}

void ZETLaserReaderComposites::ReadLayup(ZETCompLayup* layup, QSharedPointer<ZETLaserGroup> group)
{
    if (!nodesWithSelectedPlies.contains(layup))
        return;
    layupDirection = layup->GetLayupDirection();
    const auto layupGroup = AddGroup(group, *layup);
    layupGroup->setProperty(ZETLaserEntityProperties::layup, QVariant::fromValue(layup));
    layupParentOnly = GetParentOnly(*layup);
    layupUntilNext.clear();
    layupPliesBelow.clear();
    for (ZETFeatObject* child : layup->GetChildren()) {
        if (auto* const sequence = qobject_cast<ZETCompSequence*>(child))
            ReadSequence(sequence, layupGroup);
        else
            Remember(child, layupUntilNext, layupPliesBelow);
    }
}

void ZETLaserReaderComposites::ReadSequence(ZETCompSequence* sequence, QSharedPointer<ZETLaserGroup> group)
{
    if (!nodesWithSelectedPlies.contains(sequence))
        return;
    if (options->GetNestPliesWithinSequence()) {
        group = AddGroup(group, *sequence);
        group->setProperty(ZETLaserEntityProperties::sequence, QVariant::fromValue(sequence));
    }
    sequenceParentOnly = GetParentOnly(*sequence);
    sequenceUntilNext.clear();
    sequencePliesBelow.clear();
    for (ZETFeatObject* child : sequence->GetChildren()) {
        if (auto* const ply = qobject_cast<ZETCompPly*>(child))
            ReadPly(ply, group);
        else
            Remember(child, sequenceUntilNext, sequencePliesBelow);
    }
}

void ZETLaserReaderComposites::ReadPly(ZETCompPly* ply, QSharedPointer<ZETLaserGroup> group)
{
    const QList<ZETMatMaterial*> plyMaterials = ply->GetMaterials();
    ZETMatMaterial* const material = plyMaterials.isEmpty() ? nullptr : plyMaterials.first();
    if (!plyMaterials.isEmpty() && !materials->contains(material))
        materials->append(material);

    plyParentOnly = GetParentOnly(*ply);
    plyUntilNext.clear();
    plyPliesBelow.clear();
    for (ZETFeatObject* child : ply->GetChildren())
        Remember(child, plyUntilNext, plyPliesBelow);
    const ExtraGeometries extra = GetPlyExtra();

    // Meant: not the active configuration, here and only here.
    auto* const subdivision = qobject_cast<ZETCompSubdivision*>(ply->GetIncludedStrategyOrSubdivision(nullptr));
    if (subdivision && options->GetSkipParentPlyWithSubPlies() != 0) {
        ReadSubdivision(subdivision, group, material);
        return;
    }
    if (IsSelected(ply)) {
        const auto plyGroup = AddGroup(group, *ply);
        plyGroup->setProperty(ZETLaserEntityProperties::ply, QVariant::fromValue(ply));
        plyGroup->setProperty(ZETLaserEntityProperties::material, QVariant::fromValue(material));
        ReadPlyGeometry(plyGroup, ply, extra);
    }
    if (subdivision)
        ReadSubdivision(subdivision, group, material);
}

void ZETLaserReaderComposites::ReadSubdivision(ZETCompSubdivision* subdivision, QSharedPointer<ZETLaserGroup> group,
                                               ZETMatMaterial* material)
{
    subdivisionParentOnly = GetParentOnly(*subdivision);
    subdivisionUntilNext.clear();
    subdivisionPliesBelow.clear();
    for (ZETFeatObject* child : subdivision->GetChildren()) {
        if (auto* const subPly = qobject_cast<ZETCompSubPly*>(child))
            ReadSubPly(subPly, group, material);
        else
            Remember(child, subdivisionUntilNext, subdivisionPliesBelow);
    }
}

void ZETLaserReaderComposites::ReadSubPly(ZETCompSubPly* subPly, QSharedPointer<ZETLaserGroup> group,
                                          ZETMatMaterial* material)
{
    subPlyParentOnly = GetParentOnly(*subPly);
    subPlyUntilNext.clear();
    ExtraGeometries nothingBelow; // a sub-ply has no level below it that its "plies below" could reach
    for (ZETFeatObject* child : subPly->GetChildren())
        Remember(child, subPlyUntilNext, nothingBelow);
    if (!IsSelected(subPly))
        return;
    const auto subPlyGroup = AddGroup(group, *subPly);
    subPlyGroup->setProperty(ZETLaserEntityProperties::subPly, QVariant::fromValue(subPly));
    subPlyGroup->setProperty(ZETLaserEntityProperties::material, QVariant::fromValue(material));
    ReadPlyGeometry(subPlyGroup, subPly, GetSubPlyExtra());
}

ZETLaserReaderComposites::ExtraGeometries ZETLaserReaderComposites::GetPlyExtra() const
{
    if (options->GetOutputExtraGeometry() == 0)
        return {};
    // What stands below the ply for "plies below" is for its sub-plies, and not for the ply.
    ExtraGeometries extra = allPlies + rootPliesBelow + layupPliesBelow + sequencePliesBelow;
    AppendLive(extra, {&rootUntilNext, &layupUntilNext, &sequenceUntilNext, &plyUntilNext});
    return extra + layupParentOnly + sequenceParentOnly + plyParentOnly;
}

ZETLaserReaderComposites::ExtraGeometries ZETLaserReaderComposites::GetSubPlyExtra() const
{
    if (options->GetOutputExtraGeometry() == 0)
        return {};
    ExtraGeometries extra =
        allPlies + rootPliesBelow + layupPliesBelow + sequencePliesBelow + plyPliesBelow + subdivisionPliesBelow;
    AppendLive(extra, {&rootUntilNext, &layupUntilNext, &sequenceUntilNext, &plyUntilNext, &subdivisionUntilNext,
                       &subPlyUntilNext});
    return extra + layupParentOnly + sequenceParentOnly + plyParentOnly + subdivisionParentOnly + subPlyParentOnly;
}
