#include "openhost/ZETVisualization/ZETOpenDrawing_p.h"
#include "openhost/ZETVisualization/ZETOpenScene.h"

#include <ZETVisualization/ZETVisEnvironment.h>
#include <ZETVisualization/ZETVisPointPrimitive.h>
#include <ZETVisualization/ZETVisPolylinePrimitive.h>
#include <ZETVisualization/ZETVisRep.h>
#include <ZETVisualization/ZETVisVirtualObject.h>

#include <QRectF>

#include <algorithm>
#include <cmath>
#include <limits>

using namespace Qt::Literals::StringLiterals;

namespace
{
constexpr double margin = 40.0;
constexpr double bottomMargin = 70.0; // for the scale bar
constexpr double targetMargin = 30.0; // more, for what reaches beyond a target's place
constexpr double titleSize = 26.0;
constexpr double captionSize = 17.0;
constexpr double labelSize = 15.0;

/*! Calls \a visit for each primitive of the visible objects. */
template <typename Visit>
void ForEachVisible(const ZETVisEnvironment& scene, Visit visit)
{
    for (const ZETVisVirtualObject* object : ZETOpenScene::GetObjects(scene)) {
        if (!object->IsVisible() || !object->GetRep())
            continue;
        QList<const ZETVisPrimitive*> primitives;
        QList<ZETVisOptions> options;
        object->GetRep()->GetPrimitives(primitives, options);
        for (qsizetype i = 0; i < primitives.size(); ++i)
            visit(*object, *primitives[i], options[i]);
    }
}

bool HasMarkers(const ZETVisPrimitive& primitive, const ZETVisOptions& options)
{
    return qobject_cast<const ZETVisPointPrimitive*>(&primitive) &&
           options.GetPointSymbol() != ZETVisOptions::SymbolNone;
}

/*! The segments of a primitive as runs of at least two points. */
template <typename Place>
QList<QPolygonF> GetRuns(const ZETVisPrimitive& primitive, Place place)
{
    QList<QPolygonF> runs;
    const auto* lines = qobject_cast<const ZETVisPolylinePrimitive*>(&primitive);
    if (!lines)
        return runs;
    const QList<ZETMathPoint>& points = primitive.GetPoints().points;
    const bool isPairs = lines->GetStructure() == ZETVisPolylinePrimitive::StructurePairs;
    const qsizetype length = isPairs ? 2 : points.size();
    for (qsizetype start = 0; length >= 2 && start + length <= points.size(); start += length) {
        QPolygonF run;
        for (qsizetype i = start; i < start + length; ++i)
            run.append(place(points[i]));
        runs.append(run);
    }
    return runs;
}

/*! What a picture has to hold, in mm as its view shows it. */
class Extent
{
public:
    Extent(const ZETOpenView& shownView, const ZETVisEnvironment& scene, const ZETOpenPicture& picture)
        : view(shownView)
    {
        for (const ZETOpenTriangles& surface : picture.surfaces)
            Include(surface.points);
        ForEachVisible(scene, [&](const auto&, const ZETVisPrimitive& primitive, const auto&) {
            Include(primitive.GetPoints().points);
        });
    }

    const ZETOpenView& GetView() const { return view; }
    bool IsEmpty() const { return left > right; }
    QPointF GetCenter() const { return {(left + right) / 2.0, (lower + upper) / 2.0}; }
    /*! Pixels for a mm that fit it on \a paper. */
    double GetScale(const QRectF& paper) const
    {
        constexpr double least = 1.0; // so that a point alone has a scale too
        return std::max(
            std::min(paper.width() / std::max(right - left, least), paper.height() / std::max(upper - lower, least)),
            1e-9);
    }

private:
    void Include(const QList<ZETMathPoint>& points)
    {
        for (const ZETMathPoint& point : points) {
            const QPointF at = view.Project(point);
            left = std::min(left, at.x());
            right = std::max(right, at.x());
            lower = std::min(lower, at.y());
            upper = std::max(upper, at.y());
        }
    }

    ZETOpenView view;
    double left = std::numeric_limits<double>::infinity();
    double right = -std::numeric_limits<double>::infinity();
    double lower = std::numeric_limits<double>::infinity();
    double upper = -std::numeric_limits<double>::infinity();
};

bool HasTargets(const ZETVisEnvironment& scene)
{
    bool hasTargets = false;
    ForEachVisible(scene, [&](const auto&, const ZETVisPrimitive& primitive, const ZETVisOptions& options) {
        hasTargets |= options.GetPointSymbol() == ZETVisOptions::SymbolTarget && HasMarkers(primitive, options);
    });
    return hasTargets;
}

/*! The part of the picture that is free for the scene. */
QRectF GetPaper(const ZETVisEnvironment& scene, const ZETOpenPicture& picture)
{
    const double more = HasTargets(scene) ? targetMargin : 0.0;
    const double titleRoom = picture.title.isEmpty() ? 0.0 : 1.5 * titleSize;
    const double top = margin + titleRoom + 1.5 * captionSize * static_cast<double>(picture.captions.size());
    return {QPointF(margin + more, top + more),
            QPointF(picture.size.width() - margin - more, picture.size.height() - bottomMargin - more)};
}

/*! Where points of the model come to lie in a picture. */
class Frame
{
public:
    Frame(const Extent& extent, const QRectF& paper)
        : view(extent.GetView())
        , scale(extent.GetScale(paper))
    {
        const QPointF middle = extent.GetCenter();
        origin = paper.center() - scale * QPointF(middle.x(), -middle.y());
    }

    QPointF Place(const ZETMathPoint& point) const
    {
        const QPointF at = view.Project(point);
        return {origin.x() + scale * at.x(), origin.y() - scale * at.y()};
    }
    const ZETOpenView& GetView() const { return view; }
    double GetScale() const { return scale; }

private:
    ZETOpenView view;
    double scale;
    QPointF origin;
};

/*! Lit from the eye's upper left, from both sides alike. */
QColor GetShade(const ZETMathVector& normal, const ZETOpenView& view)
{
    const ZETMathVector light = view.GetToEye() * 0.8 + view.GetUp() * 0.5 - view.GetRight() * 0.33;
    const double length = std::sqrt(normal.GetSquaredMagnitude() * light.GetSquaredMagnitude());
    const double amount = length > 0.0 ? std::abs(normal * light) / length : 0.0;
    const double brightness = 0.35 + 0.65 * amount;
    return QColor::fromRgbF(static_cast<float>(0.36 * brightness), static_cast<float>(0.42 * brightness),
                            static_cast<float>(0.50 * brightness));
}

void AddFacets(const ZETOpenPicture& picture, const Frame& frame, ZETOpenDrawing& drawing)
{
    struct Placed {
        double depth;
        ZETOpenDrawing::Facet facet;
    };
    QList<Placed> placed;
    for (const ZETOpenTriangles& surface : picture.surfaces) {
        for (qsizetype i = 0; i + 2 < surface.indices.size(); i += 3) {
            Placed next{0.0, {}};
            ZETMathVector normal;
            for (qsizetype corner = i; corner < i + 3; ++corner) {
                const ZETMathPoint& point = surface.points[surface.indices[corner]];
                next.depth += frame.GetView().GetDepth(point);
                next.facet.corners.append(frame.Place(point));
                normal = normal + surface.normals[surface.indices[corner]];
            }
            next.facet.color = GetShade(normal, frame.GetView());
            placed.append(next);
        }
    }
    std::stable_sort(placed.begin(), placed.end(), [](const Placed& a, const Placed& b) { return a.depth < b.depth; });
    for (const Placed& next : std::as_const(placed))
        drawing.facets.append(next.facet);
}

void AddTargetNames(const ZETOpenDrawing::Item& item, ZETOpenDrawing& drawing)
{
    if (item.options.GetPointSymbol() != ZETVisOptions::SymbolTarget)
        return;
    for (const QPointF& marker : item.markers) {
        const bool isRight = marker.x() > 0.85 * drawing.size.width();
        const double aside = ZETOpenDrawing::targetRadius + 6.0;
        drawing.texts.append({marker + QPointF(isRight ? -aside : aside, labelSize / 3.0), item.label, labelSize,
                              item.options.GetColor(), isRight});
    }
}

void AddItems(const ZETVisEnvironment& scene, const Frame& frame, ZETOpenDrawing& drawing)
{
    const auto place = [&](const ZETMathPoint& point) { return frame.Place(point); };
    ForEachVisible(
        scene, [&](const ZETVisVirtualObject& object, const ZETVisPrimitive& primitive, const ZETVisOptions& options) {
            ZETOpenDrawing::Item item{object.GetLabel(), GetRuns(primitive, place), {}, options};
            if (HasMarkers(primitive, options))
                std::transform(primitive.GetPoints().points.begin(), primitive.GetPoints().points.end(),
                               std::back_inserter(item.markers), place);
            AddTargetNames(item, drawing);
            drawing.items.append(item);
        });
    std::stable_sort(drawing.items.begin(), drawing.items.end(),
                     [](const auto& a, const auto& b) { return a.options.GetPriority() < b.options.GetPriority(); });
}

void AddTitle(const ZETOpenPicture& picture, ZETOpenDrawing& drawing)
{
    double y = margin;
    if (!picture.title.isEmpty()) {
        y += titleSize * 0.6;
        drawing.texts.append({{margin, y}, picture.title, titleSize});
        y += 0.9 * titleSize;
    }
    for (const QString& caption : picture.captions) {
        y += 0.5 * captionSize;
        drawing.texts.append({{margin, y}, caption, captionSize, QColor(160, 170, 182)});
        y += captionSize;
    }
}

/*! The round length (1, 2 or 5 times a power of ten) nearest below a fifth of the picture. */
void AddScaleBar(const Frame& frame, ZETOpenDrawing& drawing)
{
    const double wanted = drawing.size.width() / 5.0 / frame.GetScale();
    double length = std::pow(10.0, std::floor(std::log10(wanted)));
    for (const double factor : {5.0, 2.0}) {
        if (length * factor <= wanted) {
            length *= factor;
            break;
        }
    }
    const QPointF start(margin, drawing.size.height() - margin);
    drawing.scaleBar = QLineF(start, start + QPointF(length * frame.GetScale(), 0.0));
    drawing.texts.append({start - QPointF(0.0, 10.0), u"%1 mm"_s.arg(length), labelSize});
}
} // namespace

ZETOpenDrawing ZETOpenDrawing::Make(const ZETVisEnvironment& scene, const ZETOpenPicture& picture)
{
    ZETOpenDrawing drawing;
    drawing.size = picture.size;
    drawing.lineScale = picture.lineScale;
    AddTitle(picture, drawing);
    const ZETOpenView view(picture.side);
    const Extent upright(view, scene, picture);
    if (upright.IsEmpty())
        return drawing;
    const Extent turned(view.GetTurned(), scene, picture);
    const QRectF paper = GetPaper(scene, picture);
    const Frame frame(turned.GetScale(paper) > upright.GetScale(paper) ? turned : upright, paper);
    AddFacets(picture, frame, drawing);
    AddItems(scene, frame, drawing);
    AddScaleBar(frame, drawing);
    return drawing;
}

ZETOpenScenePainter::Content ZETOpenScenePainter::Count(const ZETVisEnvironment& scene)
{
    Content content;
    ForEachVisible(scene, [&](const auto&, const ZETVisPrimitive& primitive, const ZETVisOptions& options) {
        const qint64 points = primitive.GetPoints().points.size();
        if (HasMarkers(primitive, options))
            content.markers += points;
        const auto* lines = qobject_cast<const ZETVisPolylinePrimitive*>(&primitive);
        if (!lines || points < 2)
            return;
        content.segments += lines->GetStructure() == ZETVisPolylinePrimitive::StructurePairs ? points / 2 : points - 1;
    });
    return content;
}
