#include "JobCheckSurface.h"

#include "check/CheckReport.h"

#include <ZETComposites/ZETCompLayup.h>
#include <ZETComposites/ZETCompRoot.h>
#include <ZETFeature/ZETFeatGeometry.h>
#include <ZETGeometry/ZETGeoLocationOnSurface.h>
#include <ZETGeometry/ZETGeoSurface.h>
#include <ZETTopology/ZETTopBody.h>
#include <ZETTopology/ZETTopFace.h>

#include <QCoreApplication>

#include <limits>

namespace
{
QString Translate(const char* text)
{
    return QCoreApplication::translate("zetlaser-job", text);
}

ZETMathPoint ToPoint(const std::array<double, 3>& numbers, double factor)
{
    return {numbers[0] * factor, numbers[1] * factor, numbers[2] * factor};
}

/*! What a ply's boundaries amount to. */
struct PlyOnTool {
    CheckedFile::Farthest farthest;
    int before = 0; //!< normals to the side that is laid on
    int behind = 0; //!< to the other one
};
} // namespace

JobCheckSurface::JobCheckSurface(const ZETCompRoot& root)
{
    bool isFirst = true;
    for (const ZETFeatObject* child : root.GetAllChildren()) {
        const auto* const layup = qobject_cast<const ZETCompLayup*>(child);
        if (!layup)
            continue;
        const double own = layup->GetLayupDirection() ? 1.0 : -1.0;
        direction = isFirst || direction == own ? own : 0.0;
        isFirst = false;
        const ZETFeatGeometry* const workpiece = layup->GetWorkpiece();
        const ZETTopBody* const body = workpiece ? workpiece->GetBody() : nullptr;
        if (!body)
            continue;
        for (const ZETTopEntity* entity : body->GetEntities(2)) {
            const auto* const face = qobject_cast<const ZETTopFace*>(entity);
            if (face && !surfaces.contains(face->GetSurface()))
                surfaces.append(face->GetSurface());
        }
    }
}

JobCheckSurface::Place JobCheckSurface::Measure(const ZETMathPoint& point,
                                                const std::optional<ZETMathVector>& normal) const
{
    Place place{std::numeric_limits<double>::infinity(), 0.0};
    for (const ZETGeoSurface* surface : surfaces) {
        const ZETGeoLocationOnSurface location = surface->Project(point);
        const double distance = location.GetPoint().GetDistanceTo(point);
        if (distance >= place.distance)
            continue;
        place.distance = distance;
        ZETMathVector own = surface->GetNormal(location);
        own.Normalize();
        place.side = normal ? own * *normal : 0.0;
    }
    return place;
}

void JobCheckSurface::Check(CheckedFile& file, const ZETMathAxis& axis, double limit,
                            const std::function<bool(size_t)>& isKnown) const
{
    const CheckFile& content = file.content;
    const ZETMathPoint origin = axis / ZETMathPoint();
    for (size_t place = 0; place < file.plies.size(); ++place) {
        const CheckPly& ply = file.plies[place];
        PlyOnTool onTool;
        onTool.farthest = {-1.0, 0, content.GetPlyName(ply.group)};
        for (const size_t index : ply.curves) {
            const CheckCurve& curve = content.curves[index];
            const bool isMeant = curve.kind == CheckCurveKind::Unknown ? CheckMeasures::IsClosed(content, curve)
                                                                       : curve.kind == CheckCurveKind::Boundary;
            if (!isMeant)
                continue;
            for (const CheckPoint& point : content.GetPoints(curve)) {
                std::optional<ZETMathVector> normal;
                if (CheckMeasures::HasNormal(point))
                    normal = axis / ToPoint(point.normal, 1.0) - origin;
                const Place nearest = Measure(axis / ToPoint(point.position, file.unitLength), normal);
                if (nearest.distance > onTool.farthest.distance) {
                    onTool.farthest.distance = nearest.distance;
                    onTool.farthest.line = point.line;
                }
                onTool.before += nearest.side > 0.0 ? 1 : 0;
                onTool.behind += nearest.side < 0.0 ? 1 : 0;
            }
        }
        if (onTool.farthest.distance < 0.0)
            continue;
        if (!file.farthest || onTool.farthest.distance > file.farthest->distance)
            file.farthest = onTool.farthest;
        if (isKnown(place))
            continue;
        const QString& name = onTool.farthest.ply;
        const int line = ply.group < 0 ? 0 : content.groups[static_cast<size_t>(ply.group)].line;
        if (onTool.farthest.distance > limit)
            file.AddWarning(onTool.farthest.line, name,
                            Translate("a point is %1 mm off the tool").arg(onTool.farthest.distance, 0, 'f', 3));
        if (onTool.before > 0 && onTool.behind > 0)
            file.AddWarning(line, name,
                            Translate("of the normals %1 go to one side of the tool and %2 to the other")
                                .arg(onTool.before)
                                .arg(onTool.behind));
        else if ((direction > 0.0 && onTool.behind > 0) || (direction < 0.0 && onTool.before > 0))
            file.AddWarning(line, name, Translate("the normals go to the side of the tool that isn't laid on"));
    }
}
