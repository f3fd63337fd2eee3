#include "JobExpectedTree.h"

#include <ZETComposites/ZETCompRosette.h>
#include <ZETFeature/ZETFeatObject.h>

#include <algorithm>

namespace
{
CheckCurveKind GetKind(const ZETLaserOutline::Contour& contour, const ZETLaserOutline::Curve& curve)
{
    if (contour.source != ZETLaserOptions::SourcePly) // its curves don't tell it
        return CheckCurveKind::Other;
    switch (curve.source) {
    case ZETLaserOptions::SourcePly: // flat rosettes and seed curves too: only their names tell them apart
        return GetCurveKindByName(curve.name);
    case ZETLaserOptions::SourceRosette:
        return CheckCurveKind::Rosette;
    case ZETLaserOptions::SourceSeedCurve:
        return CheckCurveKind::SeedCurve;
    default:
        return CheckCurveKind::Other;
    }
}
} // namespace

JobExpectedTree::JobExpectedTree(const ZETLaserOptions& jobOptions, const ZETLaserOutline::Group& treeRoot)
    : options(jobOptions)
    , root(treeRoot)
    , axis(GetOutputAxis(jobOptions))
    , scale(GetUnitScale(jobOptions))
{
}

CheckFile JobExpectedTree::Make()
{
    AddHead();
    AddGroups(root.groups);
    AddTail();
    return std::move(file);
}

void JobExpectedTree::AddGroups(const QList<Group>& groups)
{
    for (const Group& group : groups) {
        if (group.pointCount < 1)
            continue;
        owner = group.name;
        AddGroup(group);
    }
}

bool JobExpectedTree::IsLayer(const Group& group) const
{
    return !IsPly(group) && (group.kind != Kind::Layup || options.GetNestSequencesWithinLayup());
}

bool JobExpectedTree::HasModelObject(const Group& group)
{
    return IsPly(group) && group.feature;
}

bool JobExpectedTree::HasPoints(const Contour& contour)
{
    return std::any_of(contour.curves.begin(), contour.curves.end(),
                       [](const Curve& curve) { return !curve.points.isEmpty(); });
}

void JobExpectedTree::AddContent(const Group& group)
{
    const bool isAhead = options.GetRosetteBeforePlyGeometry();
    if (isAhead && HasModelObject(group))
        AddOwnContent(group);
    AddContours(group);
    if (!isAhead && HasModelObject(group))
        AddOwnContent(group);
}

void JobExpectedTree::AddContours(const Group& group)
{
    for (const Contour& contour : group.contours)
        AddCurves(contour);
}

void JobExpectedTree::AddBrackets(const Group& group, CheckGroup::Kind kind)
{
    for (const Contour& contour : group.contours) {
        if (!HasPoints(contour))
            continue;
        BeginGroup(kind, contour.name);
        AddCurves(contour);
        EndGroup();
    }
}

void JobExpectedTree::AddCurves(const Contour& contour)
{
    for (const Curve& curve : contour.curves) {
        if (curve.points.isEmpty())
            continue;
        AddCurve(curve);
        file.curves.back().kind = GetKind(contour, curve);
        file.curves.back().owner = owner;
    }
}

void JobExpectedTree::AddCurve(const Curve& curve)
{
    BeginCurve({});
    AddPoints(curve, RepeatedPoint, WhereKnown);
}

void JobExpectedTree::AddPoints(const Curve& curve, Closing closing, Normals normals)
{
    const auto add = [&](const ZETLaserOutline::Point& point) {
        CheckPoint& added = file.AddPoint(ToFile(point.GetShownPoint()), 0);
        const bool isKnown = point.normal && options.GetIncludeNormalVectors();
        added.hasNormal = normals == WhereKnown ? isKnown : normals == Always && options.GetIncludeNormalVectors();
        if (added.hasNormal && point.normal)
            added.normal = ToNumbers(axis * *point.normal);
    };
    for (const ZETLaserOutline::Point& point : curve.points)
        add(point);
    const bool isRepeated = closing == AlwaysRepeated || (closing == RepeatedPoint && curve.points.size() > 1);
    if (curve.closed && isRepeated)
        add(curve.points.front());
    if (closing == Flag)
        file.curves.back().closedByFlag = curve.closed;
}

void JobExpectedTree::AddParameters(const Group& group, std::initializer_list<int> types, CheckParameter::Kind kind)
{
    for (const Parameter& parameter : group.parameters) {
        if (std::find(types.begin(), types.end(), parameter.type) != types.end())
            AddParameter(kind, parameter.text);
    }
}

std::array<double, 3> JobExpectedTree::ToFile(const ZETMathPoint& point) const
{
    return ToNumbers(axis * point, scale);
}

void JobExpectedTree::Append(std::vector<double>& numbers, const std::array<double, 3>& more)
{
    numbers.insert(numbers.end(), more.begin(), more.end());
}

ZETMathAxis GetOutputAxis(const ZETLaserOptions& options)
{
    const auto* rosette = qobject_cast<const ZETCompRosette*>(options.GetAxisSystem().data());
    return rosette ? rosette->GetAxis() : ZETMathAxis();
}

bool IsNesting(const ZETLaserOptions& options)
{
    return options.GetOutputType() == ZETLaserOptions::OutputFlatNesting ||
           options.GetOutputType() == ZETLaserOptions::OutputFlatNestingEmbedded;
}

double GetUnitScale(const ZETLaserOptions& options)
{
    constexpr double inch = 25.4; // mm
    return options.GetUnits() == ZETLaserOptions::UnitsInches ? 1.0 / inch : 1.0;
}

std::array<double, 3> ToNumbers(const ZETMathPoint& point, double scale)
{
    return {point.GetX() * scale, point.GetY() * scale, point.GetZ() * scale};
}

std::array<double, 3> ToNumbers(const ZETMathVector& vector)
{
    return {vector.GetX(), vector.GetY(), vector.GetZ()};
}

QString WithoutBlanks(const QString& name)
{
    return QString(name).replace(u' ', u'_');
}
