#include "openhost/layup/ZETOpenLayupBuilder_p.h"

#include "openhost/ZETComposites/ZETOpenComposites.h"
#include "openhost/ZETComposites/ZETOpenGeometryFeature.h"
#include "openhost/ZETFeature/ZETOpenModel.h"
#include "openhost/ZETGeometry/ZETOpenAssembledCurve.h"
#include "openhost/ZETGeometry/ZETOpenRegion.h"
#include "openhost/ZETTopology/ZETOpenBodyBuilder.h"

#include <ZETComposites/ZETCompFlatContour.h>
#include <ZETComposites/ZETCompFlatCurve.h>
#include <ZETComposites/ZETCompFlatPattern.h>
#include <ZETComposites/ZETCompFlatPoint.h>
#include <ZETComposites/ZETCompMfgConfiguration.h>
#include <ZETComposites/ZETCompPly.h>
#include <ZETComposites/ZETCompRoot.h>
#include <ZETComposites/ZETCompSequence.h>
#include <ZETComposites/ZETCompStrategy.h>
#include <ZETComposites/ZETCompSubdivision.h>
#include <ZETComposites/ZETCompSubPly.h>
#include <ZETComposites/ZETCompSurfaceUpdate.h>
#include <ZETFeature/ZETFeatFolder.h>
#include <ZETTopology/ZETTopBody.h>

#include <cmath>
#include <numbers>

using namespace Qt::Literals::StringLiterals;

namespace
{
const QString extraGeometryKind = u"extra-geometry"_s;

/*! Whether a boundary encloses something in space. That counts where it runs round its surface, as about a pole. */
bool HasVectorArea(const ZETGeoAssembledCurveOnSurface& boundary)
{
    // A thin ply is long and has an area all the same; what is called zero is the rounding of the kernel.
    constexpr double smallestRatio = 1e-9;
    const ZETMathPoint start = boundary.GetPoint(0);
    ZETMathVector doubled;
    double length = 0.0;
    for (int i = 1; i < boundary.GetNumPoints(); ++i) {
        const ZETMathPoint before = boundary.GetPoint(i - 1);
        const ZETMathPoint point = boundary.GetPoint(i);
        doubled = doubled + ((before - start) ^ (point - start));
        length += point.GetDistanceTo(before);
    }
    return 0.5 * std::sqrt(doubled.GetSquaredMagnitude()) > smallestRatio * length * length;
}
} // namespace

void ZETOpenLayupBuilder::ReadLayup(const Value& object)
{
    if (!object.IsObject())
        object.FailExpected(tr("an object"));
    if (const auto name = object.Find("name"))
        ClaimName(layupNames, object, name->ToName());
    const auto kind = object.Find("kind");
    if (kind && kind->ToChoice({u"layup"_s, extraGeometryKind}) == 1) {
        ReadExtraGeometry(object, *model.root);
        return;
    }
    object.CheckKeys(KeysOf("layup"));
    ReadRequiredName(object);
    auto* layup = new ZETCompLayup(model.root);
    SetUp(*layup, object);
    if (const auto direction = object.Find("direction"))
        ZETOpenComposites::SetLayupDirection(*layup, direction->ToChoice({u"positive"_s, u"negative"_s}) == 0);

    const Value workpiece = object.Get("workpiece", tr("the name of a surface"));
    const Geometry& surface = ResolveGeometry(workpiece, Geometry::Surface);
    ZETOpenComposites::SetWorkpiece(*layup, surface.feature);
    if (const auto rosette = object.Find("rosette"))
        ZETOpenComposites::SetRosette(*layup, Resolve(rosettes, *rosette, tr("rosette")));
    if (const auto plane = object.Find("flatteningPlane"))
        ZETOpenComposites::SetFlatteningPlane(*layup, Resolve(planes, *plane, tr("plane")));
    if (const auto mode = object.Find("flatteningMode")) {
        const bool isTurned = mode->ToChoice({u"unturned"_s, u"by-direction"_s}) == 1;
        ZETOpenComposites::SetFlatteningMode(*layup, isTurned ? ZETCompLayup::FlatteningByDirection
                                                              : ZETCompLayup::FlatteningUnturned);
    }

    const LayupContext context{surface.surface, workpiece.ToText()};
    ReadChildren(object, {u"sequence"_s, extraGeometryKind}, u"sequence"_s, [&](const Value& child, int which) {
        if (which == 0)
            ReadSequence(child, *layup, context);
        else
            ReadExtraGeometry(child, *layup);
    });
}

void ZETOpenLayupBuilder::ReadSequence(const Value& object, ZETFeatObject& parent, const LayupContext& context)
{
    object.CheckKeys(KeysOf("sequence"));
    ReadRequiredName(object);
    auto* sequence = new ZETCompSequence(&parent);
    SetUp(*sequence, object);
    ReadChildren(object, {u"ply"_s, extraGeometryKind}, u"ply"_s, [&](const Value& child, int which) {
        if (which == 0)
            ReadPly(child, *sequence, context);
        else
            ReadExtraGeometry(child, *sequence);
    });
}

void ZETOpenLayupBuilder::ReadPly(const Value& object, ZETFeatObject& parent, const LayupContext& context)
{
    object.CheckKeys(KeysOf("ply"));
    ReadRequiredName(object);
    auto* ply = new ZETCompPly(&parent);
    SetUp(*ply, object);
    if (const auto direction = object.Find("direction"))
        ZETOpenComposites::SetDirection(*ply,
                                        direction->ToNumber(tr("an angle in degrees")) * std::numbers::pi / 180.0);

    const auto material = object.Find("material");
    const auto list = object.Find("materials");
    if (material && list)
        list->Fail(tr("expected either \"material\" or \"materials\", found both"));
    QList<ZETMatMaterial*> plyMaterials;
    if (material)
        plyMaterials.append(Resolve(materials, *material, tr("material")));
    if (list) {
        for (const Value& name : list->GetElements(tr("an array of names of materials")))
            plyMaterials.append(Resolve(materials, name, tr("material")));
    }
    ZETOpenComposites::SetMaterials(*ply, plyMaterials);

    if (const auto update = object.Find("surfaceUpdate")) {
        const Geometry& surface = ResolveGeometry(*update, Geometry::Surface);
        auto* feature = new ZETCompSurfaceUpdate(ply);
        ZETOpenComposites::SetBody(*feature, ZETOpenBodyBuilder::MakeFace(surface.surface));
        ZETOpenComposites::SetSurfaceUpdateFeature(*ply, feature);
    }
    ReadBoundaries(object, *ply, context);
    if (const auto pattern = object.Find("flatPattern"))
        ReadFlatPattern(*pattern, *ply);
    ReadStrategies(object, *ply, context, false);
}

void ZETOpenLayupBuilder::ReadSubPly(const Value& object, ZETFeatObject& parent, const LayupContext& context)
{
    object.CheckKeys(KeysOf("subPly"));
    ReadRequiredName(object);
    auto* subPly = new ZETCompSubPly(&parent);
    SetUp(*subPly, object);
    ReadBoundaries(object, *subPly, context);
    if (const auto pattern = object.Find("flatPattern"))
        ReadFlatPattern(*pattern, *subPly);
    ReadStrategies(object, *subPly, context, true);
}

void ZETOpenLayupBuilder::ReadBoundaries(const Value& object, ZETCompPlyBase& ply, const LayupContext& context)
{
    const auto boundary = object.Find("boundary");
    const auto list = object.Find("boundaries");
    if (boundary && list)
        list->Fail(tr("expected either \"boundary\" or \"boundaries\", found both"));
    QList<BoundaryRef> boundaries;
    if (list)
        boundaries = MakeBoundaries(*list, context);
    else
        boundaries.append(MakeBoundary(object.Get("boundary", tr("the outline of the ply")), context));
    QList<ZETGeoAssembledCurveOnSurface*> curves;
    for (const BoundaryRef& curve : boundaries)
        curves.append(curve.Get());
    ZETOpenComposites::SetBoundaryCurves(ply, curves);

    if (const auto updated = object.Find("updatedBoundaries")) {
        LayupContext updatedContext = context;
        if (const auto update = object.Find("surfaceUpdate"))
            updatedContext = {ResolveGeometry(*update, Geometry::Surface).surface, update->ToText()};
        const QList<BoundaryRef> updatedBoundaries = MakeBoundaries(*updated, updatedContext);
        QList<const ZETGeoCurveOnSurface*> updatedCurves;
        for (const BoundaryRef& curve : updatedBoundaries)
            updatedCurves.append(curve.Get());
        ZETOpenComposites::SetUpdatedBoundaryCurves(ply, updatedCurves);
    }
}

QList<ZETOpenLayupBuilder::BoundaryRef> ZETOpenLayupBuilder::MakeBoundaries(const Value& array,
                                                                            const LayupContext& context) const
{
    QList<BoundaryRef> boundaries;
    for (const Value& value : array.GetElements(tr("an array of boundaries")))
        boundaries.append(MakeBoundary(value, context));
    if (boundaries.isEmpty())
        array.FailExpected(tr("an array of at least one boundary"));
    return boundaries;
}

ZETOpenLayupBuilder::BoundaryRef ZETOpenLayupBuilder::MakeBoundary(const Value& value,
                                                                   const LayupContext& context) const
{
    if (value.IsText())
        return MakeNamedBoundary(value, context);
    Value points = value;
    SurfaceRef surface = context.workpiece;
    bool isSmooth = false;
    double limit = projectionLimit;
    if (value.IsObject()) {
        value.CheckKeys(KeysOf("boundary"));
        if (const auto curve = value.Find("curve"))
            return MakeNamedBoundary(*curve, context);
        points = value.Get("points", tr("an array of points"));
        const auto closed = value.Find("closed");
        if (closed && !closed->ToBool())
            closed->Fail(tr("expected a closed boundary, found an open one"));
        const auto smooth = value.Find("smooth");
        isSmooth = smooth && smooth->ToBool();
        if (SurfaceRef other = FindSurface(value))
            surface = other;
        limit = GetLimit(value);
    } else if (!value.IsArray()) {
        value.FailExpected(tr("an array of points, the name of a curve or an object"));
    }
    const CurveRef curve = MakeCurveOnSurface(points, ToPoints(points), surface, true, isSmooth, limit);
    BoundaryRef boundary = Guard(points, [&] { return MakeAssembledCurve(curve); });
    CheckArea(points, *boundary);
    return boundary;
}

ZETOpenLayupBuilder::BoundaryRef ZETOpenLayupBuilder::MakeNamedBoundary(const Value& reference,
                                                                        const LayupContext& context) const
{
    const Curve& curve = ResolveGeometry(reference, Geometry::CurveKind).curve;
    if (!curve.surface)
        reference.Fail(tr("expected a curve on the surface \"%1\", found the curve \"%2\", which lies on none")
                           .arg(context.workpieceName, reference.ToText()));
    if (!(curve.surface == context.workpiece))
        reference.Fail(tr("expected a curve on the surface \"%1\", found the curve \"%2\" on \"%3\"")
                           .arg(context.workpieceName, reference.ToText(), curve.surface->GetName()));
    if (!curve.isClosed)
        reference.Fail(tr("expected a closed boundary, found the open curve \"%1\"").arg(reference.ToText()));
    BoundaryRef boundary = Guard(reference, [&] { return MakeAssembledCurve(curve.edges, curve.senses); });
    CheckArea(reference, *boundary);
    return boundary;
}

void ZETOpenLayupBuilder::CheckArea(const Value& value, const ZETGeoAssembledCurveOnSurface& boundary) const
{
    const ZETOpenRegion region({&boundary});
    if (!region.IsEmpty() || (region.HasWinding() && HasVectorArea(boundary)))
        return;
    value.Fail(tr("expected a boundary with an area, found one that encloses none"));
}

void ZETOpenLayupBuilder::ReadStrategies(const Value& object, ZETCompPlyBase& ply, const LayupContext& context,
                                         bool isSubPly)
{
    QHash<const ZETCompMfgConfiguration*, ZETCompStrategyBase*> chosen;
    ZETCompStrategyBase* others = nullptr;
    bool hasChoice = false;
    const auto choose = [&](const Value& child, ZETCompStrategyBase* made) {
        hasChoice = true;
        const auto list = child.Find("configurations");
        if (!list) {
            if (others)
                child.Fail(tr("expected the key \"configurations\", because \"%1\" is already for all the others")
                               .arg(others->GetLabel()));
            others = made;
            return;
        }
        for (const Value& name : list->GetElements(tr("an array of names of configurations"))) {
            const auto* configuration = Resolve(configurations, name, tr("configuration"));
            if (const auto* before = chosen.value(configuration))
                name.Fail(tr("expected one choice for the configuration \"%1\", found a second beside \"%2\"")
                              .arg(name.ToText(), before->GetLabel()));
            chosen.insert(configuration, made);
        }
    };

    const QStringList kinds = isSubPly ? QStringList{u"strategy"_s, extraGeometryKind}
                                       : QStringList{u"strategy"_s, extraGeometryKind, u"subdivision"_s};
    ReadChildren(object, kinds, QString(), [&](const Value& child, int which) {
        if (which == 0)
            choose(child, ReadStrategy(child, ply));
        else if (which == 1)
            ReadExtraGeometry(child, ply);
        else
            choose(child, ReadSubdivision(child, ply, context));
    });
    if (!hasChoice)
        return;
    for (ZETCompMfgConfiguration* configuration : std::as_const(configurationOrder))
        ZETOpenComposites::SetIncluded(*configuration, ply, chosen.value(configuration, others));
}

ZETCompStrategy* ZETOpenLayupBuilder::ReadStrategy(const Value& object, ZETCompPlyBase& ply)
{
    object.CheckKeys(KeysOf("strategy"));
    auto* strategy = new ZETCompStrategy(&ply);
    SetUp(*strategy, object);
    if (const auto point = object.Find("seedPoint")) {
        const Geometry& geometry = ResolveGeometry(*point, Geometry::Point);
        if (!geometry.surface)
            point->Fail(tr("expected a point on a surface (\"on\"), found \"%1\" in space").arg(point->ToText()));
        ZETOpenComposites::SetSeedPoint(*strategy, geometry.feature);
    }
    const auto readCurve = [&](const Value& reference) -> const Geometry& {
        const Geometry& geometry = ResolveGeometry(reference, Geometry::CurveKind);
        if (!geometry.curve.surface)
            reference.Fail(tr("expected a curve on a surface (\"on\"), found \"%1\" in space").arg(reference.ToText()));
        return geometry;
    };
    const auto seedCurve = object.Find("seedCurve");
    if (seedCurve)
        ZETOpenComposites::SetSeedCurve(*strategy, readCurve(*seedCurve).feature);
    if (const auto point = object.Find("finalSeedPoint")) {
        const Geometry& geometry = ResolveGeometry(*point, Geometry::Point);
        if (!geometry.surface)
            point->Fail(tr("expected a point on a surface (\"on\"), found \"%1\" in space").arg(point->ToText()));
        ZETOpenComposites::SetFinalSeedPoint(*strategy, geometry.surface->Project(geometry.point));
    }
    const auto finalCurve = object.Find("finalSeedCurve");
    if (finalCurve || seedCurve) {
        const Curve& curve = readCurve(finalCurve ? *finalCurve : *seedCurve).curve;
        const BoundaryRef chain =
            Guard(finalCurve ? *finalCurve : *seedCurve, [&] { return MakeAssembledCurve(curve.edges, curve.senses); });
        ZETOpenComposites::SetFinalSeedCurve(*strategy, chain.Get());
    }
    if (const auto packaging = object.Find("packaging"))
        ZETOpenComposites::SetPackaging(*strategy, Resolve(packagings, *packaging, tr("packaging")));
    if (const auto pattern = object.Find("flatPattern"))
        ReadFlatPattern(*pattern, *strategy);
    return strategy;
}

ZETCompStrategyBase* ZETOpenLayupBuilder::ReadSubdivision(const Value& object, ZETCompPlyBase& ply,
                                                          const LayupContext& context)
{
    object.CheckKeys(KeysOf("subdivision"));
    auto* subdivision = new ZETCompSubdivision(&ply);
    SetUp(*subdivision, object);
    ReadChildren(object, {u"sub-ply"_s, extraGeometryKind}, u"sub-ply"_s, [&](const Value& child, int which) {
        if (which == 0)
            ReadSubPly(child, *subdivision, context);
        else
            ReadExtraGeometry(child, *subdivision);
    });
    return subdivision;
}

void ZETOpenLayupBuilder::ReadFlatPattern(const Value& object, ZETFeatObject& parent)
{
    auto* pattern = new ZETCompFlatPattern(&parent);
    ReadFlatGeometry(object, *pattern);
}

void ZETOpenLayupBuilder::ReadFlatGeometry(const Value& object, ZETFeatObject& parent)
{
    object.CheckKeys(KeysOf("flatPattern"));
    SetUp(parent, object);
    const auto forEach = [&](const char* key, auto read) {
        if (const auto list = object.Find(key)) {
            for (const Value& element : list->GetElements(tr("an array of objects")))
                read(element);
        }
    };
    forEach("contours", [&](const Value& element) { ReadFlatCurve<ZETCompFlatContour>(element, parent); });
    forEach("curves", [&](const Value& element) { ReadFlatCurve<ZETCompFlatCurve>(element, parent); });
    forEach("points", [&](const Value& element) { ReadFlatPoint(element, parent); });
    forEach("folders", [&](const Value& element) {
        auto* inner = new ZETFeatFolder(&parent);
        ReadFlatGeometry(element, *inner);
    });
}

template <typename FlatCurve>
void ZETOpenLayupBuilder::ReadFlatCurve(const Value& object, ZETFeatObject& parent)
{
    constexpr bool isContour = std::is_same_v<FlatCurve, ZETCompFlatContour>;
    object.CheckKeys(KeysOf("flatCurve"));
    auto* feature = new FlatCurve(&parent);
    SetUp(*feature, object);
    const auto closed = object.Find("closed");
    const bool isClosed = closed ? closed->ToBool() : isContour;
    const Value list = object.Get("points", tr("an array of points"));
    QList<ZETMathPoint> points;
    for (const Value& point : list.GetElements(tr("an array of points")))
        points.append(ToFlatPoint(point));
    const int fewest = isClosed ? 3 : 2;
    if (points.size() < fewest)
        list.Fail(tr("expected at least %1 points, found %2").arg(fewest).arg(points.size()));
    ZETOpenComposites::SetBody(*feature,
                               Guard(list, [&] { return ZETOpenBodyBuilder::MakePolyline(points, isClosed); }));
    if (const auto source = object.Find("source"))
        ZETOpenComposites::SetSource(*feature, Resolve(geometries, *source, tr("surface, curve or point")).feature);
}

void ZETOpenLayupBuilder::ReadFlatPoint(const Value& object, ZETFeatObject& parent)
{
    object.CheckKeys(KeysOf("flatPoint"));
    auto* feature = new ZETCompFlatPoint(&parent);
    SetUp(*feature, object);
    const Value at = object.Get("at", tr("two coordinates"));
    ZETOpenComposites::SetBody(*feature, ZETOpenBodyBuilder::MakePoint(ToFlatPoint(at)));
    if (const auto source = object.Find("source"))
        ZETOpenComposites::SetSource(*feature, Resolve(geometries, *source, tr("surface, curve or point")).feature);
}
