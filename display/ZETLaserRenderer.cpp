#include "display/ZETLaserRenderer.h"

#include "features/ZETLaser3DText.h"
#include "features/ZETLaserModelTree.h"
#include "features/ZETLaserParameterProvider.h"
#include "laser/ZETLaserContour.h"
#include "laser/ZETLaserCurve.h"
#include "laser/ZETLaserEntityProperties.h"
#include "laser/ZETLaserGroup.h"
#include "laser/ZETLaserTextEntity.h"

#include <ZETComposites/ZETCompPlyBase.h>
#include <ZETComposites/ZETCompRoot.h>
#include <ZETMathematics/ZETMathPlane.h>
#include <ZETMathematics/ZETMathSetOfPoints.h>
#include <ZETVisualization/ZETVisEnvironment.h>
#include <ZETVisualization/ZETVisOptions.h>
#include <ZETVisualization/ZETVisPointPrimitive.h>
#include <ZETVisualization/ZETVisPolylinePrimitive.h>
#include <ZETVisualization/ZETVisRepGraphics.h>
#include <ZETVisualization/ZETVisRepSet.h>
#include <ZETVisualization/ZETVisVectorFont.h>
#include <ZETVisualization/ZETVisVectorText.h>
#include <ZETVisualization/ZETVisVirtualObject.h>

#include <QVariant>

using namespace Qt::Literals::StringLiterals;

namespace
{
namespace Properties = ZETLaserEntityProperties;

/*! Colour of laser lines and texts. */
const QColor laserColor(0, 255, 0, 255);

/*! What curves and texts have in common: they are drawn over whatever lies in front of them. */
ZETVisOptions GetOptions(const QColor& color, double lineThickness, int priority)
{
    ZETVisOptions result;
    result.SetColor(color);
    result.SetLineThickness(lineThickness);
    result.SetDepthEnabled(false);
    result.SetPriority(priority);
    return result;
}

ZETVisOptions GetLineOptions()
{
    return GetOptions(laserColor, 3.0, 100);
}

ZETVisOptions GetNormalOptions(const QColor& color)
{
    return GetOptions(color, 2.0, 100);
}

ZETVisOptions GetPointOptions(const QColor& color)
{
    ZETVisOptions result = GetOptions(color, 1.0, 100);
    result.SetPointSymbol(ZETVisOptions::SymbolDot);
    result.SetFixedPerspective(true);
    return result;
}

ZETVisOptions GetTextOptions()
{
    ZETVisOptions result = GetOptions(laserColor, 5.0, 10);
    result.SetPointSymbol(ZETVisOptions::SymbolNone);
    return result;
}

/*! What a curve looks like, in model coordinates. */
struct CurvePicture {
    ZETMathSetOfPoints lines;   //!< pairs
    ZETMathSetOfPoints normals; //!< pairs
    ZETMathSetOfPoints dots;
};

/*! A point has a stick if it has a normal, otherwise a dot. */
CurvePicture GetPicture(const ZETLaserCurve& curve, double normalSize)
{
    CurvePicture picture;
    const QList<ZETLaserPoint>& points = curve.GetPoints();
    picture.lines.points.reserve(2 * points.size());
    for (const ZETLaserPoint& point : points) {
        const ZETMathPoint& at = point.GetShownPoint();
        const bool isInner = &point != &points.first() && &point != &points.last();
        if (isInner) // ends one segment and starts the next
            picture.lines.points.append(at);
        picture.lines.points.append(at);
        if (point.HasNormal())
            picture.normals.points << at << at + point.GetNormal() * normalSize;
        else
            picture.dots.points.append(at);
    }
    if (curve.IsClosed() && points.size() >= 2) {
        const ZETLaserPoint& first = points.first();
        const ZETLaserPoint& last = points.last();
        // Meant: with an offset point at one end only, the closing segment runs between the positions.
        if (first.HasOffsetPoint() && last.HasOffsetPoint())
            picture.lines.points << last.GetOffsetPoint() << first.GetOffsetPoint();
        else
            picture.lines.points << last.GetPosition() << first.GetPosition();
    }
    return picture;
}

ZETVisRep* MakePairs(const ZETMathSetOfPoints& points, const ZETVisOptions& visOptions)
{
    return new ZETVisRepGraphics({new ZETVisPolylinePrimitive(points, ZETVisPolylinePrimitive::StructurePairs)},
                                 visOptions);
}

ZETVisRep* MakeDots(const ZETMathSetOfPoints& points, const ZETVisOptions& visOptions)
{
    return new ZETVisRepGraphics({new ZETVisPointPrimitive(points)}, visOptions);
}

/*! The strokes of \a shownText where the feature \a text stands. */
QList<ZETMathSetOfPoints> GetStrokes(const ZETLaser3DText& text, const QString& shownText)
{
    ZETMathPlane plane;
    plane.SetOrigin(text.GetBasePoint());
    plane.SetDirections(text.GetBaseDirection(), text.GetUpDirection());

    ZETVisVectorText vectorText;
    vectorText.SetFont(ZETVisVectorFont(u"simple"_s));
    vectorText.SetAnchor(ZETVisVectorText::AnchorBaseLeft);
    vectorText.SetOrientation(ZETVisVectorText::OrientationHorizontal);
    vectorText.SetJustification(ZETVisVectorText::JustificationLeft);
    vectorText.SetDecorations({});
    vectorText.SetText(shownText);
    vectorText.SetTextSize(text.GetSize());
    vectorText.SetLineSpacing(2.0);
    vectorText.SetPlane(plane);
    return vectorText.GetPolylines();
}

/*! An absent property reads as SourcePly. */
int GetSourceType(const ZETLaserEntity& entity)
{
    const QVariant type = entity.property(Properties::sourceType);
    return type.isValid() ? type.toInt() : ZETLaserOptions::SourcePly;
}

/*! The ply that \a group stands for, otherwise the sub-ply; null if the property that decides holds null. */
ZETFeatObject* GetFeature(const ZETLaserGroup& group)
{
    const QVariant ply = group.property(Properties::ply);
    return (ply.isValid() ? ply : group.property(Properties::subPly)).value<ZETFeatObject*>();
}

/*! The ply whose macros a text of \a group shows. Unlike above the pointers decide. */
const ZETCompPlyBase* GetPly(const ZETLaserGroup& group)
{
    auto* ply = group.property(Properties::ply).value<ZETCompPlyBase*>();
    return ply ? ply : group.property(Properties::subPly).value<ZETCompPlyBase*>();
}
} // namespace

ZETLaserRenderer::ZETLaserRenderer(ZETLaserOptions* jobOptions, QSharedPointer<ZETLaserGroup> treeRoot)
    : options(jobOptions)
    , parameterProvider(std::make_unique<ZETLaserParameterProvider>(FindContainer(jobOptions->GetCompRoot())))
    , root(treeRoot)
{
}

ZETLaserRenderer::~ZETLaserRenderer() = default;

bool ZETLaserRenderer::Render()
{
    const QList<QSharedPointer<ZETLaserEntity>> layups = root->GetChildren();
    for (const QSharedPointer<ZETLaserEntity>& child : layups) {
        const auto layup = child.objectCast<ZETLaserGroup>();
        if (!layup)
            continue;
        workingMap.clear();
        CollectGroup(layup);
        for (auto entry = workingMap.cbegin(); entry != workingMap.cend(); ++entry) {
            if (ZETFeatObject* feature = GetFeature(*entry.key())) {
                AddVisObjects(feature, entry.value());
                continue;
            }
            for (const Reps& reps : entry.value()) // nobody takes them over
                qDeleteAll(reps);
        }
    }
    return true;
}

void ZETLaserRenderer::AddVisObjects(ZETFeatObject* feature, const QMap<int, Reps>& repsByType)
{
    const QPointer<ZETVisEnvironment> environment = options->GetEnvironment();
    auto& objects = visObjects[feature];
    for (auto entry = repsByType.cbegin(); entry != repsByType.cend(); ++entry) {
        auto* object = new ZETVisVirtualObject(environment, nullptr);
        object->SetRep(new ZETVisRepSet(QList<const ZETVisRep*>(entry->cbegin(), entry->cend())));
        object->SetVisibility(false);
        objects[static_cast<ZETLaserOptions::ELaserSourceType>(entry.key())] = object;
        if (environment)
            environment->AddVirtualObject(object);
    }
}

void ZETLaserRenderer::CollectGroup(QSharedPointer<ZETLaserGroup> group)
{
    const QList<QSharedPointer<ZETLaserEntity>> children = group->GetChildren();
    for (const QSharedPointer<ZETLaserEntity>& child : children) {
        if (const auto subGroup = child.objectCast<ZETLaserGroup>()) {
            CollectGroup(subGroup);
        } else if (const auto contour = child.objectCast<ZETLaserContour>()) {
            for (const QSharedPointer<ZETLaserCurve>& curve : std::as_const(*contour).GetCurves())
                RenderCurve(curve);
        } else if (const auto text = child.objectCast<ZETLaserTextEntity>()) {
            RenderText(text, group);
        }
    }
}

void ZETLaserRenderer::RenderCurve(QSharedPointer<ZETLaserCurve> curve)
{
    ZETLaserGroup* owner = FindOwnerGroup(curve.data());
    if (!owner)
        return;
    const int type = GetSourceType(*curve);
    const QColor normalColor = options->GetNormalVectorColor();
    const CurvePicture picture = GetPicture(*curve, options->GetNormalVectorSize());

    Reps reps;
    if (!picture.lines.points.isEmpty())
        reps.append(MakePairs(picture.lines, GetLineOptions()));
    if (!picture.dots.points.isEmpty())
        reps.append(MakeDots(picture.dots, GetPointOptions(normalColor)));
    if (!picture.normals.points.isEmpty()) {
        ZETVisRep* normals = MakePairs(picture.normals, GetNormalOptions(normalColor));
        if (type == ZETLaserOptions::SourcePly) // so that they can be shown or hidden by themselves
            AddRepresentations(owner, ZETLaserOptions::SourceNormals, {normals});
        else
            reps.append(normals);
    }
    // Meant: a curve without points still makes the object of its type.
    AddRepresentations(owner, type, reps);
}

void ZETLaserRenderer::RenderText(QSharedPointer<ZETLaserTextEntity> entity, QSharedPointer<ZETLaserGroup> group)
{
    ZETLaserGroup* owner = FindOwnerGroup(entity.data());
    if (!owner)
        return;
    const ZETLaser3DText& text = *entity->GetText();
    const QString shownText = parameterProvider->EvaluateParameterText(GetPly(*group), text.GetText());

    QList<const ZETVisPrimitive*> primitives;
    for (const ZETMathSetOfPoints& stroke : GetStrokes(text, shownText))
        primitives.append(new ZETVisPolylinePrimitive(stroke, ZETVisPolylinePrimitive::StructureRun));
    const QList<ZETVisOptions> visOptions(primitives.size(), GetTextOptions());
    AddRepresentations(owner, GetSourceType(*entity), {new ZETVisRepGraphics(primitives, visOptions)});
}

ZETLaserGroup* ZETLaserRenderer::FindOwnerGroup(const QPointer<ZETLaserEntity>& entity)
{
    for (ZETLaserEntity* at = entity; at; at = qobject_cast<ZETLaserEntity*>(at->parent())) {
        auto* group = qobject_cast<ZETLaserGroup*>(at);
        if (group && (group->property(Properties::ply).isValid() || group->property(Properties::subPly).isValid()))
            return group;
    }
    return nullptr;
}

void ZETLaserRenderer::AddRepresentations(const QPointer<ZETLaserGroup>& group, int type, const Reps& reps)
{
    workingMap[group][type] += reps;
}

void ZETLaserRenderer::Erase()
{
    const QPointer<ZETVisEnvironment> environment = options->GetEnvironment();
    for (const auto& objects : std::as_const(visObjects)) {
        for (ZETVisVirtualObject* object : objects) {
            if (environment)
                environment->RemoveVirtualObject(object);
        }
    }
    visObjects.clear();
    workingMap.clear();
}
