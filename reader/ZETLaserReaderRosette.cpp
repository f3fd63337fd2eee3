#include "reader/ZETLaserReaderComposites.h"

#include "features/ZETLaserFlatGeometry.h"
#include "laser/ZETLaserContour.h"
#include "laser/ZETLaserCurve.h"
#include "laser/ZETLaserEntityProperties.h"
#include "laser/ZETLaserOptions.h"
#include "reader/ZETLaserReaderTools.h"

#include <ZETComposites/ZETCompFlatPattern.h>
#include <ZETComposites/ZETCompLayup.h>
#include <ZETComposites/ZETCompMfgConfiguration.h>
#include <ZETComposites/ZETCompPly.h>
#include <ZETComposites/ZETCompRosette.h>
#include <ZETComposites/ZETCompSequence.h>
#include <ZETComposites/ZETCompStrategy.h>
#include <ZETFeature/ZETFeatGeometry.h>
#include <ZETGeometry/ZETGeoSurface.h>
#include <ZETMathematics/ZETMathAxis.h>
#include <ZETMathematics/ZETMathPlane.h>
#include <ZETTopology/ZETTopBody.h>
#include <ZETTopology/ZETTopFace.h>
#include <ZETWireframe/ZETWFPlane.h>

#include <QVariant>

#include <cmath>
#include <iostream>

using namespace ZETLaserReaderTools;
using namespace Qt::Literals::StringLiterals;

namespace
{

const ZETMathVector upwards(0.0, 0.0, 1.0);

void AppendPoints(ZETLaserCurve& curve, std::initializer_list<ZETMathPoint> positions, const ZETMathVector& normal)
{
    curve.GetPoints().reserve(static_cast<qsizetype>(positions.size()));
    for (const ZETMathPoint& position : positions)
        curve.GetPoints().emplaceBack(position, normal);
}

/*! The ply direction with the sign that it has in flat patterns, in radians. It tells on standard output what it does:
 *  meant, and past the message queue. */
double GetDirection(const ZETCompStrategy& strategy)
{
    const auto* const ply = FindAncestor<ZETCompPly>(strategy);
    if (!ply)
        return 0.0;
    double direction = ply->GetDirection();
    const auto* const layup = GetGrandparent<ZETCompLayup>(*ply);
    if (layup && !layup->GetLayupDirection()) {
        direction = -direction;
        std::cout << std::endl << "in GetDirection() layup direction is negative, reversing ply direction" << std::endl;
    }
    std::cout << std::endl << "in GetDirection() ply direction " << direction << std::endl;
    return direction;
}

/*! Turns \a axis, which lies in \a plane, by the ply direction. */
void TurnFlatAxis(ZETMathAxis& axis, const ZETMathPlane& plane, const ZETCompStrategy& strategy)
{
    const double x = -GetDirection(strategy);
    const ZETMathVector first = plane.GetFirstDirection();
    const ZETMathVector second = plane.GetSecondDirection();
    axis.SetDirections(std::cos(x) * first - std::sin(x) * second, std::cos(x) * second + std::sin(x) * first,
                       plane.GetNormal());
}

} // namespace

ZETMathAxis ZETLaserReaderComposites::ComputeFlatAxis(ZETCompPlyBase* ply)
{
    ZETMathAxis axis;
    ZETMathPlane plane;
    bool isTurned = false;
    const ZETLaserOptions::EOutputType type = options->GetOutputType();
    if (type != ZETLaserOptions::OutputFlat && type != ZETLaserOptions::OutputFlatNesting &&
        type != ZETLaserOptions::OutputFlatNestingEmbedded)
        return axis;

    const auto* const sequence = FindAncestor<ZETCompSequence>(*ply);
    const auto* const layup = sequence ? qobject_cast<ZETCompLayup*>(sequence->GetParent()) : nullptr;
    if (layup) {
        if (layup->GetFlatteningPlane())
            plane = layup->GetFlatteningPlaneResult();
        axis.SetOrigin(plane.GetOrigin());
        axis.SetDirections(plane.GetFirstDirection(), plane.GetSecondDirection(), plane.GetNormal());
        isTurned =
            type == ZETLaserOptions::OutputFlat && layup->GetFlatteningMode() == ZETCompLayup::FlatteningByDirection;
    }

    ZETCompFlatPattern* const flatPattern = ply->GetFlatPattern(options->GetActiveConfiguration());
    const auto* const strategy = flatPattern ? FindAncestor<ZETCompStrategy>(*flatPattern) : nullptr;
    ZETMathPoint seed;
    if (!strategy || !GetFlattenedSeedPoint(flatPattern, seed))
        return axis;
    if (isTurned)
        TurnFlatAxis(axis, plane, *strategy);
    const ZETMathPoint origin = plane.GetOrigin();
    axis.SetOrigin(origin + (origin - axis / seed));
    return axis;
}

QSharedPointer<ZETLaserCurve> ZETLaserReaderComposites::AddRosetteCurve(QSharedPointer<ZETLaserContour> contour,
                                                                        ZETCompPlyBase* ply)
{
    auto curve = AddCurve(contour, ply->GetLabel() + u"-"_s + tr("Rosette"));
    curve->setProperty(ZETLaserEntityProperties::sourceType, static_cast<int>(ZETLaserOptions::SourceRosette));
    return curve;
}

void ZETLaserReaderComposites::ReadRosette(QSharedPointer<ZETLaserContour> contour, ZETCompPlyBase* ply)
{
    const auto rosette = AddRosetteCurve(contour, ply);
    auto* const parentPly = FindSelfOrAncestor<ZETCompPly>(*ply);
    if (!parentPly) {
        AddWarning(tr("Could not get rosette for %1").arg(ply->GetLabel()));
        return;
    }
    const auto* const layup = GetGrandparent<ZETCompLayup>(*parentPly);
    const auto* const feature = layup ? layup->GetRosette() : nullptr;
    if (!feature)
        return;
    // Meant: the seed is fetched whether it is used or not, and what is wrong with it comes out either way.
    ZETCompStrategy* const strategy = GetActiveStrategy(*ply);
    const ZETGeoLocationOnSurface location = strategy ? GetSeedLocation(strategy) : ZETGeoLocationOnSurface();
    const bool useSeedPoint = options->GetUseSeedPoint() != 0;
    if (useSeedPoint && !strategy)
        AddWarning(tr("Could not get seed point for %1").arg(ply->GetLabel()));
    if (useSeedPoint && location.GetSurface())
        ReadSeedFormRosette(*rosette, feature->GetAxis(), parentPly->GetDirection(), location);
    else
        ReadAxisFormRosette(*rosette, feature->GetAxis(), parentPly->GetDirection(), parentPly);
}

void ZETLaserReaderComposites::ReadSeedFormRosette(ZETLaserCurve& rosette, const ZETMathAxis& axis, double direction,
                                                   const ZETGeoLocationOnSurface& location)
{
    const double size = options->GetRosetteSize();
    const ZETMathPoint seed = location.GetPoint();
    const ZETMathVector normal = GetSignedNormal(*location.GetSurface(), location);
    const ZETMathVector first = axis.GetFirstDirection();

    ZETMathVector tangent = first - (first * normal) * normal;
    tangent.Normalize();
    ZETMathVector across = normal ^ tangent;
    across.Normalize();
    ZETMathVector longArm = std::cos(direction) * tangent + std::sin(direction) * across;
    longArm.Normalize();
    longArm *= size;
    ZETMathVector shortArm = longArm ^ normal;
    shortArm.Normalize();
    shortArm *= -size * 0.5;
    AppendPoints(rosette, {seed + longArm, seed, seed + shortArm}, normal);
}

void ZETLaserReaderComposites::ReadAxisFormRosette(ZETLaserCurve& rosette, ZETMathAxis axis, double direction,
                                                   ZETCompPly* ply)
{
    const double size = options->GetRosetteSize();
    if (0.0 > GetWorkpieceNormal(ply) * axis.GetThirdDirection())
        direction *= -1.0;
    axis.Tilt(ZETMathAxis::PlaneFirstSecond, direction);
    const ZETMathPoint origin = axis.GetOrigin();
    AppendPoints(rosette,
                 {origin + size * axis.GetFirstDirection(), origin, origin + (size * 0.5) * axis.GetSecondDirection()},
                 ZETMathVector());
}

void ZETLaserReaderComposites::ReadFlatRosette(QSharedPointer<ZETLaserContour> contour, ZETCompPlyBase* ply,
                                               ZETCompFlatPattern* flatPattern, const ZETMathAxis& axis)
{
    ZETMathPoint seed;
    if (!GetFlattenedSeedPoint(flatPattern, seed)) {
        AddWarning(tr("Could not get flattened seed point for %1").arg(ply->GetLabel()));
        return;
    }
    const auto rosette = AddRosetteCurve(contour, ply);
    const double size = options->GetOutputType() == ZETLaserOptions::OutputFlat ? options->GetRosetteSize()
                                                                                : options->GetRosetteSizeQuilmon();
    AppendPoints(*rosette,
                 {axis / (seed + ZETMathVector(size, 0.0, 0.0)), axis / seed,
                  axis / (seed + ZETMathVector(0.0, size * 0.5, 0.0))},
                 ZETMathVector());
}

ZETMathVector ZETLaserReaderComposites::GetWorkpieceNormal(ZETCompPly* ply)
{
    const auto* const layup = GetGrandparent<ZETCompLayup>(*ply);
    const ZETFeatGeometry* const workpiece = layup ? layup->GetWorkpiece() : nullptr;
    if (!workpiece) {
        AddWarning(tr("Could not get workpiece for %1").arg(ply->GetLabel()));
        return upwards;
    }
    const QList<const ZETTopEntity*> faces = GetEntities(workpiece->GetBody(), 2);
    const auto* const face = faces.isEmpty() ? nullptr : qobject_cast<const ZETTopFace*>(faces.first());
    if (!face) {
        AddWarning(tr("Could not get workpiece face for %1").arg(ply->GetLabel()));
        return upwards;
    }
    const ZETGeoSurface* const surface = face->GetSurface();
    const ZETMathBoundingBox box = surface->GetBoundingBox();
    const ZETMathPoint middle = box.GetLowerPoint() + 0.5 * (box.GetUpperPoint() - box.GetLowerPoint());
    return surface->GetNormal(surface->Project(middle)) * (layup->GetLayupDirection() ? 1.0 : -1.0);
}
