#include "laser/ZETLaserGroup.h"

#include "laser/ZETLaserContour.h"
#include "laser/ZETLaserParameterEntity.h"
#include "laser/ZETLaserTextEntity.h"

ZETLaserGroup::ZETLaserGroup(QSharedPointer<QObject> parent)
    : ZETLaserEntity(std::move(parent))
{
}

ZETLaserGroup::~ZETLaserGroup() = default;

void ZETLaserGroup::AddGroup(QSharedPointer<ZETLaserGroup> group)
{
    if (!onlyGroups)
        return;
    onlyLeaves = false;
    // A null pointer is no group: what comes behind it is refused.
    onlyGroups = !group.isNull();
    anyGroup = anyGroup || !group.isNull();
    children.append(std::move(group));
}

void ZETLaserGroup::AddContour(QSharedPointer<ZETLaserContour> contour)
{
    AddLeaf(std::move(contour));
}

void ZETLaserGroup::AddTextEntity(QSharedPointer<ZETLaserTextEntity> text)
{
    AddLeaf(std::move(text));
}

void ZETLaserGroup::AddParameterEntity(QSharedPointer<ZETLaserParameterEntity> parameter)
{
    AddLeaf(std::move(parameter));
}

void ZETLaserGroup::AddLeaf(QSharedPointer<ZETLaserEntity> leaf)
{
    if (!onlyLeaves)
        return;
    onlyGroups = false;
    onlyLeaves = !leaf.isNull();
    children.append(std::move(leaf));
}

void ZETLaserGroup::Clear()
{
    children.clear();
    onlyGroups = true;
    onlyLeaves = true;
    anyGroup = false;
}

bool ZETLaserGroup::HasGroups() const
{
    return anyGroup;
}

int ZETLaserGroup::GetPointCount() const
{
    int count = 0;
    for (const QSharedPointer<ZETLaserEntity>& child : children) {
        if (const auto* group = qobject_cast<const ZETLaserGroup*>(child.data()))
            count += group->GetPointCount();
        else if (const auto* contour = qobject_cast<const ZETLaserContour*>(child.data()))
            count += contour->GetPointCount();
        else if (qobject_cast<const ZETLaserParameterEntity*>(child.data()) != nullptr)
            ++count;
    }
    return count;
}

void ZETLaserGroup::MinimizePoints(double tolerance, double maxLength)
{
    for (const QSharedPointer<ZETLaserEntity>& child : std::as_const(children))
        child->MinimizePoints(tolerance, maxLength);
}

void ZETLaserGroup::Transform(const ZETMathAxis& axis)
{
    for (const QSharedPointer<ZETLaserEntity>& child : std::as_const(children))
        child->Transform(axis);
}
