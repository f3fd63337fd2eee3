#include "openhost/ZETComposites/ZETOpenComposites.h"
#include "openhost/ZETComposites/ZETOpenGeometryFeature.h"
#include "openhost/ZETFeature/ZETOpenModel.h"
#include "openhost/ZETFeature/ZETOpenModelStream.h"
#include "openhost/ZETGeometry/ZETOpenAssembledCurve.h"
#include "openhost/ZETGeometry/ZETOpenComboCurve.h"
#include "openhost/ZETGeometry/ZETOpenCurveOnSurface.h"
#include "openhost/ZETGeometry/ZETOpenSurface.h"
#include "openhost/ZETMaterial/ZETOpenMaterial.h"
#include "openhost/ZETTopology/ZETOpenBodyBuilder.h"
#include "openhost/ZETWireframe/ZETOpenWireframe.h"

#include <ZETComposites/ZETCompFlatContour.h>
#include <ZETComposites/ZETCompFlatCurve.h>
#include <ZETComposites/ZETCompFlatPattern.h>
#include <ZETComposites/ZETCompFlatPoint.h>
#include <ZETComposites/ZETCompMfgConfiguration.h>
#include <ZETComposites/ZETCompPly.h>
#include <ZETComposites/ZETCompRoot.h>
#include <ZETComposites/ZETCompRosette.h>
#include <ZETComposites/ZETCompSequence.h>
#include <ZETComposites/ZETCompStrategy.h>
#include <ZETComposites/ZETCompSubdivision.h>
#include <ZETComposites/ZETCompSubPly.h>
#include <ZETComposites/ZETCompSurfaceUpdate.h>
#include <ZETComposites/ZETCompThicknessAnalyzer.h>
#include <ZETFeature/ZETFeatContainer.h>
#include <ZETFeature/ZETFeatFolder.h>
#include <ZETGeometry/ZETGeoComboPoint.h>
#include <ZETMaterial/ZETMatMaterial.h>
#include <ZETMaterial/ZETMatPackaging.h>
#include <ZETMathematics/ZETMathAxis.h>
#include <ZETSystem/ZETSysException.h>
#include <ZETTopology/ZETTopBody.h>
#include <ZETTopology/ZETTopEdge.h>
#include <ZETTopology/ZETTopFace.h>
#include <ZETTopology/ZETTopNet.h>
#include <ZETTopology/ZETTopVertex.h>
#include <ZETWireframe/ZETWFPlane.h>

#include <QtTest>

#include <cmath>

using namespace Qt::Literals::StringLiterals;
using namespace ZETOpenComposites;

namespace
{

template <typename T>
T* Add(ZETFeatObject* parent, const QString& label)
{
    T* const feature = new T(parent);
    ZETOpenModel::SetLabel(*feature, label);
    return feature;
}

template <typename T>
QString Labels(const QList<T*>& features)
{
    QStringList labels;
    for (const auto* feature : features)
        labels.append(feature->GetLabel());
    return labels.join(u' ');
}

ZETOpenRef<ZETOpenSurface> MakeTool()
{
    return ZETOpenSurface::MakePlane(ZETMathAxis(), -500.0, 500.0, -500.0, 500.0);
}

/*! The boundary of a rectangle in the XY plane, counter-clockwise from its lower corner. */
ZETOpenRef<ZETGeoAssembledCurveOnSurface> MakeRectangle(const ZETOpenRef<ZETOpenSurface>& tool, double left,
                                                        double bottom, double right, double top)
{
    return MakeAssembledCurve(ZETOpenCurveOnSurface::MakePolyline(
        tool, QList<ZETMathPoint>{{left, bottom, 0.0}, {right, bottom, 0.0}, {right, top, 0.0}, {left, top, 0.0}},
        true));
}

/*! A layup with one sequence on a flat tool. */
struct Part {
    ZETFeatContainer container;
    ZETOpenRef<ZETOpenSurface> tool = MakeTool();
    ZETCompRoot* root = new ZETCompRoot(&container);
    ZETCompLayup* layup = Add<ZETCompLayup>(root, u"L"_s);
    ZETCompSequence* sequence = Add<ZETCompSequence>(layup, u"S"_s);

    ZETMatMaterial* AddMaterial(const QString& label, double thickness)
    {
        auto* const material = Add<ZETMatMaterial>(root, label);
        ZETOpenMaterial::SetThickness(*material, thickness);
        return material;
    }

    ZETCompPly* AddPly(const QString& label, double thickness, const ZETOpenRef<ZETGeoAssembledCurveOnSurface>& edge)
    {
        auto* const ply = Add<ZETCompPly>(sequence, label);
        SetMaterials(*ply, {AddMaterial(u"of "_s + label, thickness)});
        if (edge)
            SetBoundaryCurves(*ply, {edge.Get()});
        return ply;
    }

    ZETGeoLocationOnSurface At(double x, double y) const { return tool->Project(ZETMathPoint(x, y, 0.0)); }
};

double ThicknessAt(const Part& part, ZETCompPly* ply, double x, double y, double tolerance = 0.01)
{
    ZETCompThicknessAnalyzer analyzer;
    analyzer.SetBoundaryTolerance(tolerance);
    analyzer.SetCurrentPly(ply);
    return analyzer.ComputeThickness(part.At(x, y));
}

// ---- A whole model as text, so that two can be compared ----

QString Text(const ZETMathPoint& p)
{
    return u"(%1 %2 %3)"_s.arg(p.GetX(), 0, 'g', 17).arg(p.GetY(), 0, 'g', 17).arg(p.GetZ(), 0, 'g', 17);
}

QString Text(const ZETMathVector& v)
{
    return Text(ZETMathPoint(v.GetX(), v.GetY(), v.GetZ()));
}

QString Text(const ZETFeatObject* feature)
{
    return feature ? feature->GetLabel() : u"null"_s;
}

QString Text(const ZETGeoCurve* curve)
{
    if (!curve)
        return u"null"_s;
    QString text = curve->IsClosed() ? u"closed"_s : u"open"_s;
    for (int i = 0; i < curve->GetNumPoints(); ++i)
        text += Text(curve->GetPoint(i));
    return text;
}

QString Text(const ZETTopBody* body)
{
    if (!body)
        return u"null"_s;
    QString text = u"dim %1 "_s.arg(body->GetDimension());
    for (const ZETTopEntity* vertex : body->GetEntities(0))
        text += u" v"_s + Text(qobject_cast<const ZETTopVertex*>(vertex)->GetPoint()->GetPosition());
    for (const ZETTopEntity* edge : body->GetEntities(1))
        text += u" e"_s + Text(qobject_cast<const ZETTopEdge*>(edge)->GetCurve());
    for (const ZETTopEntity* face : body->GetEntities(2)) {
        const ZETMathBoundingBox box = qobject_cast<const ZETTopFace*>(face)->GetSurface()->GetBoundingBox();
        text += u" f"_s + Text(box.GetLowerPoint()) + Text(box.GetUpperPoint());
    }
    return text;
}

QStringList Details(ZETFeatObject* feature)
{
    QStringList lines;
    if (const auto* root = qobject_cast<ZETCompRoot*>(feature))
        lines << u"active "_s + Text(root->GetActiveMfgConfiguration());
    if (const auto* layup = qobject_cast<ZETCompLayup*>(feature)) {
        lines << u"direction %1, mode %2"_s.arg(layup->GetLayupDirection()).arg(layup->GetFlatteningMode());
        lines << Text(layup->GetWorkpiece()) + u", "_s + Text(layup->GetRosette()) + u", "_s +
                     Text(layup->GetFlatteningPlane());
    }
    if (const auto* plyBase = qobject_cast<ZETCompPlyBase*>(feature)) {
        for (const auto* curve : plyBase->GetBoundaryCurves())
            lines << u"boundary "_s + Text(curve);
        for (const auto* curve : plyBase->GetUpdatedBoundaryCurves())
            lines << u"updated "_s + Text(curve);
    }
    if (const auto* ply = qobject_cast<ZETCompPly*>(feature))
        lines << u"direction %1 "_s.arg(ply->GetDirection(), 0, 'g', 17) + Labels(ply->GetMaterials()) + u" on "_s +
                     Text(ply->GetSurfaceUpdateFeature());
    if (const auto* strategy = qobject_cast<ZETCompStrategy*>(feature)) {
        lines << u"seed "_s + Text(strategy->GetSeedPoint()) + u", "_s + Text(strategy->GetSeedCurve());
        lines << u"final "_s + Text(strategy->GetFinalSeedPoint().GetPoint()) + Text(strategy->GetFinalSeedCurve());
        lines << u"packaging "_s + Text(strategy->GetPackaging());
    }
    if (const auto* configuration = qobject_cast<ZETCompMfgConfiguration*>(feature)) {
        const MfgConfigurationSettings s = GetSettings(*configuration);
        lines << u"%1%2%3%4%5%6%7%8"_s.arg(s.use3D)
                     .arg(s.includeNormalVectors)
                     .arg(s.skipParentPlyWithSubPlies)
                     .arg(s.seedPoint)
                     .arg(s.seedCurve)
                     .arg(s.laserDataExtraGeometry)
                     .arg(s.nestingDataExtraGeometry)
                     .arg(s.nestingDataRosette);
        lines << u"sizes %1 %2"_s.arg(s.laserDataRosetteSize).arg(s.nestingDataRosetteSize);
        for (ZETFeatObject* other : feature->GetRoot()->GetAllChildren()) {
            if (const auto* plyBase = qobject_cast<ZETCompPlyBase*>(other))
                lines << u"makes %1 by "_s.arg(other->GetLabel()) +
                             Text(plyBase->GetIncludedStrategyOrSubdivision(configuration));
        }
    }
    if (const auto* flat = qobject_cast<ZETCompFlatGeometry*>(feature))
        lines << u"source "_s + Text(flat->GetSource());
    if (const auto* geometry = qobject_cast<ZETFeatGeometry*>(feature))
        lines << u"body "_s + Text(geometry->GetBody());
    if (const auto* material = qobject_cast<ZETMatMaterial*>(feature))
        lines << material->GetMaterialType() + u", "_s + material->GetMaterialId() +
                     u", %1"_s.arg(material->GetThickness());
    if (const auto* packaging = qobject_cast<ZETMatPackaging*>(feature))
        lines << u"%1 x %2"_s.arg(packaging->GetWidth()).arg(packaging->GetLength());
    if (const auto* system = qobject_cast<ZETWFAxisSystem*>(feature)) {
        const ZETMathAxis axis = system->GetAxis();
        lines << Text(axis.GetOrigin()) + Text(axis.GetFirstDirection()) + Text(axis.GetSecondDirection()) +
                     Text(axis.GetThirdDirection());
    }
    if (const auto* plane = qobject_cast<ZETWFPlane*>(feature))
        lines << Text(plane->GetPlane().GetOrigin()) + Text(plane->GetPlane().GetFirstDirection()) +
                     Text(plane->GetPlane().GetSecondDirection());
    return lines;
}

void Describe(ZETFeatObject* feature, const QString& indent, QStringList& lines)
{
    lines << indent + QString::fromLatin1(feature->metaObject()->className()) + u" "_s + feature->GetLabel() +
                 (ZETOpenModel::IsEnabled(*feature) ? u""_s : u" off"_s);
    for (const QString& detail : Details(feature))
        lines << indent + u"  - "_s + detail;
    for (ZETFeatObject* child : feature->GetChildren())
        Describe(child, indent + u"  "_s, lines);
}

QStringList Describe(const ZETFeatContainer& container)
{
    QStringList lines;
    Describe(ZETOpenModel::GetRoot(container), QString(), lines);
    return lines;
}

/*! A model in which nothing has its default value. */
void FillWholeModel(Part& part)
{
    ZETOpenModel::SetLabel(*part.root, u"Door"_s);
    auto* const folder = Add<ZETFeatFolder>(part.root, u"Geometry"_s);
    auto* const workpiece = Add<ZETOpenGeometryFeature>(folder, u"Tool"_s);
    workpiece->SetBody(ZETOpenBodyBuilder::MakeFace(part.tool));
    auto* const seedPoint = Add<ZETOpenGeometryFeature>(folder, u"Seed"_s);
    seedPoint->SetBody(ZETOpenBodyBuilder::MakePoint(ZETMathPoint(1.5, 2.5, 0.0), part.tool));
    auto* const seedCurve = Add<ZETOpenGeometryFeature>(folder, u"Seed Curve"_s);
    const auto line =
        ZETOpenCurveOnSurface::MakePolyline(part.tool, QList<ZETMathPoint>{{0.0, 0.0, 0.0}, {5.0, 7.0, 0.0}}, false);
    seedCurve->SetBody(ZETOpenBodyBuilder::MakeCurve(line));
    auto* const plane = Add<ZETWFPlane>(folder, u"Table"_s);
    ZETMathPlane table;
    table.SetOrigin(ZETMathPoint(1.0, 2.0, 3.0));
    table.SetDirections(ZETMathVector(0.0, 1.0, 0.0), ZETMathVector(0.0, 0.0, 2.0));
    ZETOpenWireframe::SetPlane(*plane, table);
    auto* const rosette = Add<ZETCompRosette>(folder, u"Zero"_s);
    ZETMathAxis axis;
    axis.SetOrigin(ZETMathPoint(7.0, 8.0, 9.0));
    axis.Tilt(ZETMathAxis::PlaneFirstSecond, 0.5);
    ZETOpenWireframe::SetAxis(*rosette, axis);

    auto* const twill = part.AddMaterial(u"Twill"_s, 0.25);
    ZETOpenMaterial::SetMaterialType(*twill, u"Fabric"_s);
    ZETOpenMaterial::SetMaterialId(*twill, u"T-300"_s);
    auto* const roll = Add<ZETMatPackaging>(twill, u"Roll"_s);
    ZETOpenMaterial::SetSize(*roll, 1270.0, 50000.0);
    auto* const foil = part.AddMaterial(u"Foil"_s, 0.05);

    SetLayupDirection(*part.layup, false);
    SetWorkpiece(*part.layup, workpiece);
    SetRosette(*part.layup, rosette);
    SetFlatteningPlane(*part.layup, plane);
    SetFlatteningMode(*part.layup, ZETCompLayup::FlatteningByDirection);

    auto* const ply = Add<ZETCompPly>(part.sequence, u"P1"_s);
    SetDirection(*ply, 0.7853981633974483);
    SetMaterials(*ply, {foil, twill});
    SetBoundaryCurves(*ply, {MakeRectangle(part.tool, 0.0, 0.0, 60.0, 40.0).Get(), nullptr});
    SetUpdatedBoundaryCurves(*ply, {nullptr, line.Get()});
    auto* const update = Add<ZETCompSurfaceUpdate>(ply, u"Raised"_s);
    SetBody(*update, ZETOpenBodyBuilder::MakeFace(ZETOpenSurface::MakePlane(ZETMathAxis(), 0.0, 9.0, 0.0, 9.0)));
    SetSurfaceUpdateFeature(*ply, update);

    auto* const strategy = Add<ZETCompStrategy>(ply, u"One Piece"_s);
    SetSeedPoint(*strategy, seedPoint);
    SetSeedCurve(*strategy, seedCurve);
    SetFinalSeedPoint(*strategy, part.At(3.0, 4.0));
    SetFinalSeedCurve(*strategy, line.Get());
    SetPackaging(*strategy, roll);
    auto* const pattern = Add<ZETCompFlatPattern>(strategy, u"Pattern"_s);
    auto* const inner = Add<ZETFeatFolder>(pattern, u"Inner"_s);
    auto* const contour = Add<ZETCompFlatContour>(pattern, u"Outline"_s);
    SetBody(*contour, ZETOpenBodyBuilder::MakePolyline({{0.0, 0.0, 0.0}, {60.0, 0.0, 0.0}, {60.0, 40.0, 0.0}}, true));
    auto* const flatCurve = Add<ZETCompFlatCurve>(inner, u"Flat Seed Curve"_s);
    SetBody(*flatCurve, ZETOpenBodyBuilder::MakePolyline({{0.0, 0.0, 0.0}, {5.0, 7.0, 0.0}}, false));
    SetSource(*flatCurve, seedCurve);
    auto* const flatPoint = Add<ZETCompFlatPoint>(inner, u"Flat Seed"_s);
    SetBody(*flatPoint, ZETOpenBodyBuilder::MakePoint(ZETMathPoint(1.5, 2.5, 0.0)));
    SetSource(*flatPoint, seedPoint);

    auto* const subdivision = Add<ZETCompSubdivision>(ply, u"Pieces"_s);
    ZETOpenModel::SetEnabled(*subdivision, false);
    auto* const subPly = Add<ZETCompSubPly>(subdivision, u"P1.1"_s);
    SetBoundaryCurves(*subPly, {MakeRectangle(part.tool, 0.0, 0.0, 30.0, 40.0).Get()});

    Add<ZETCompStrategy>(subPly, u"Piece"_s);

    auto* const first = Add<ZETCompMfgConfiguration>(part.root, u"First"_s);
    SetSettings(*first, {false, false, true, true, true, false, false, true, 25.0, 35.0});
    SetIncluded(*first, *ply, subdivision);
    SetIncluded(*first, *subPly, nullptr);
    auto* const second = Add<ZETCompMfgConfiguration>(part.root, u"Second"_s);
    SetIncluded(*second, *ply, strategy);
    SetActiveMfgConfiguration(*part.root, second);
}

} // namespace

class TestOpenComposites : public QObject
{
    Q_OBJECT

private slots:
    void childrenComeInModelOrderWithoutTheOthers();
    void aNewLayupIsLaidFromTheFrontWithoutAnything();
    void aFlatteningPlaneGivesItsPlane();
    void aNewConfigurationHasItsDefaults();
    void aConfigurationGivesWhatWasSet();
    void withoutAConfigurationTheFirstStrategyOrSubdivisionCounts();
    void aConfigurationChoosesForEachPly();
    void aConfigurationMayMakeAPlyNotAtAll();
    void aDisabledSubdivisionIsStillWhatThePlyIsMadeBy();
    void aChoiceThatHasGoneSaysNothing();
    void theFlatPatternIsThatOfTheIncludedStrategy();
    void withoutUpdatedBoundariesTheBoundariesAreTheAnswer();
    void aPlyHoldsItsBoundaries();
    void theFinalSeedIsTheSeedOnTheFinalSurface();
    void withoutASeedPointTheFinalSeedHasNoSurface();
    void materialsThatHaveGoneArePassedOver();

    void thicknessIsThatOfThePliesBeneathWhereTheyHoldThePlace_data();
    void thicknessIsThatOfThePliesBeneathWhereTheyHoldThePlace();
    void thicknessCountsThePliesThatAreLaidBefore();
    void thicknessIsTakenOfTheFirstMaterial();
    void thicknessIsZeroWithoutAPly();
    void aDisabledPlyIsNotLaid();
    void aHoleHoldsNothing();
    void anOpenBoundaryHoldsNothing();
    void aPlaceOutsideCountsWithinTheTolerance_data();
    void aPlaceOutsideCountsWithinTheTolerance();
    void theToleranceCountsAlongArcsToo();
    void aNewBoundaryReplacesTheOldOne();
    void aPlaceOfAnotherSurfaceIsProjected();

    void aSavedModelIsLoadedAsItWas();
    void aLoadedModelSharesItsSurfacesAsBefore();
    void brokenFieldsEndWithAnException();
};

void TestOpenComposites::childrenComeInModelOrderWithoutTheOthers()
{
    ZETFeatContainer container;
    auto* const root = new ZETCompRoot(&container);
    auto* const layup = Add<ZETCompLayup>(root, u"L1"_s);
    Add<ZETFeatFolder>(root, u"F"_s);
    Add<ZETCompLayup>(root, u"L2"_s);
    auto* const sequence = Add<ZETCompSequence>(layup, u"S1"_s);
    Add<ZETFeatFolder>(layup, u"F"_s);
    Add<ZETCompSequence>(layup, u"S2"_s);
    auto* const ply = Add<ZETCompPly>(sequence, u"P1"_s);
    Add<ZETFeatFolder>(sequence, u"F"_s);
    Add<ZETCompPly>(sequence, u"P2"_s);
    auto* const subdivision = Add<ZETCompSubdivision>(ply, u"D"_s);
    Add<ZETCompSubPly>(subdivision, u"A"_s);
    Add<ZETFeatFolder>(subdivision, u"F"_s);
    Add<ZETCompSubPly>(subdivision, u"B"_s);

    QCOMPARE(Labels(root->GetLayups()), u"L1 L2"_s);
    QCOMPARE(Labels(layup->GetSequences()), u"S1 S2"_s);
    QCOMPARE(Labels(sequence->GetPlies()), u"P1 P2"_s);
    QCOMPARE(Labels(subdivision->GetSubPlies()), u"A B"_s);
    QCOMPARE(ply->GetParent()->GetParent(), layup);
    QCOMPARE(static_cast<ZETFeatObject*>(ply->GetRoot()), root);
}

void TestOpenComposites::aNewLayupIsLaidFromTheFrontWithoutAnything()
{
    const Part part;
    QCOMPARE(part.layup->GetLayupDirection(), true);
    QVERIFY(!part.layup->GetWorkpiece());
    QVERIFY(!part.layup->GetRosette());
    QVERIFY(!part.layup->GetFlatteningPlane());
    QCOMPARE(part.layup->GetFlatteningMode(), ZETCompLayup::FlatteningUnturned);
    QCOMPARE(part.layup->GetFlatteningPlaneResult().GetNormal(), ZETMathVector(0.0, 0.0, 1.0));
    QVERIFY(!part.root->GetActiveMfgConfiguration());
}

void TestOpenComposites::aFlatteningPlaneGivesItsPlane()
{
    Part part;
    auto* const feature = Add<ZETWFPlane>(part.root, u"Table"_s);
    ZETMathPlane plane;
    plane.SetOrigin(ZETMathPoint(1.0, 2.0, 3.0));
    plane.SetDirections(ZETMathVector(0.0, 1.0, 0.0), ZETMathVector(0.0, 0.0, 1.0));
    ZETOpenWireframe::SetPlane(*feature, plane);
    SetFlatteningPlane(*part.layup, feature);
    QCOMPARE(part.layup->GetFlatteningPlaneResult().GetOrigin(), ZETMathPoint(1.0, 2.0, 3.0));
    QCOMPARE(part.layup->GetFlatteningPlaneResult().GetNormal(), ZETMathVector(1.0, 0.0, 0.0));
    delete feature;
    QVERIFY(!part.layup->GetFlatteningPlane());
    QCOMPARE(part.layup->GetFlatteningPlaneResult().GetOrigin(), ZETMathPoint());
}

void TestOpenComposites::aNewConfigurationHasItsDefaults()
{
    const ZETCompMfgConfiguration configuration(nullptr);
    QCOMPARE(configuration.GetUse3D(), true);
    QCOMPARE(configuration.GetIncludeNormalVectorsEnabled(), true);
    QCOMPARE(configuration.GetSkipParentPlyWithSubPliesEnabled(), false);
    QCOMPARE(configuration.GetSeedPointEnabled(), false);
    QCOMPARE(configuration.GetSeedCurveEnabled(), false);
    QCOMPARE(configuration.GetLaserDataExtraGeometryEnabled(), true);
    QCOMPARE(configuration.GetNestingDataExtraGeometryEnabled(), true);
    QCOMPARE(configuration.GetNestingDataRosetteEnabled(), false);
    QCOMPARE(configuration.GetLaserDataRosetteSize(), 100.0);
    QCOMPARE(configuration.GetNestingDataRosetteSize(), 100.0);
}

void TestOpenComposites::aConfigurationGivesWhatWasSet()
{
    ZETCompMfgConfiguration configuration(nullptr);
    MfgConfigurationSettings settings;
    settings.use3D = false;
    settings.seedCurve = true;
    settings.nestingDataExtraGeometry = false;
    settings.laserDataRosetteSize = 25.0;
    settings.nestingDataRosetteSize = 35.0;
    SetSettings(configuration, settings);
    QCOMPARE(configuration.GetUse3D(), false);
    QCOMPARE(configuration.GetSeedPointEnabled(), false);
    QCOMPARE(configuration.GetSeedCurveEnabled(), true);
    QCOMPARE(configuration.GetLaserDataExtraGeometryEnabled(), true);
    QCOMPARE(configuration.GetNestingDataExtraGeometryEnabled(), false);
    QCOMPARE(configuration.GetLaserDataRosetteSize(), 25.0);
    QCOMPARE(configuration.GetNestingDataRosetteSize(), 35.0);
}

void TestOpenComposites::withoutAConfigurationTheFirstStrategyOrSubdivisionCounts()
{
    Part part;
    auto* const ply = Add<ZETCompPly>(part.sequence, u"P1"_s);
    QVERIFY(!ply->GetIncludedStrategyOrSubdivision(nullptr));
    Add<ZETFeatFolder>(ply, u"F"_s);
    auto* const subdivision = Add<ZETCompSubdivision>(ply, u"Pieces"_s);
    Add<ZETCompStrategy>(ply, u"One Piece"_s);
    QCOMPARE(ply->GetIncludedStrategyOrSubdivision(nullptr), subdivision);
    const auto* const configuration = Add<ZETCompMfgConfiguration>(part.root, u"C"_s);
    QCOMPARE(ply->GetIncludedStrategyOrSubdivision(configuration), subdivision);
}

void TestOpenComposites::aConfigurationChoosesForEachPly()
{
    Part part;
    auto* const first = Add<ZETCompPly>(part.sequence, u"P1"_s);
    Add<ZETCompSubdivision>(first, u"Pieces"_s);
    auto* const strategy = Add<ZETCompStrategy>(first, u"One Piece"_s);
    auto* const second = Add<ZETCompPly>(part.sequence, u"P2"_s);
    auto* const subdivision = Add<ZETCompSubdivision>(second, u"Pieces"_s);
    auto* const configuration = Add<ZETCompMfgConfiguration>(part.root, u"C"_s);
    const auto* const other = Add<ZETCompMfgConfiguration>(part.root, u"D"_s);

    SetIncluded(*configuration, *first, strategy);
    QCOMPARE(first->GetIncludedStrategyOrSubdivision(configuration), strategy);
    QCOMPARE(second->GetIncludedStrategyOrSubdivision(configuration), subdivision);
    QCOMPARE(Labels<ZETFeatObject>({first->GetIncludedStrategyOrSubdivision(other)}), u"Pieces"_s);
    SetIncluded(*configuration, *first, second->GetIncludedStrategyOrSubdivision(nullptr));
    QCOMPARE(first->GetIncludedStrategyOrSubdivision(configuration), subdivision);
}

void TestOpenComposites::aConfigurationMayMakeAPlyNotAtAll()
{
    Part part;
    auto* const ply = Add<ZETCompPly>(part.sequence, u"P1"_s);
    Add<ZETCompStrategy>(ply, u"One Piece"_s);
    auto* const configuration = Add<ZETCompMfgConfiguration>(part.root, u"C"_s);
    SetIncluded(*configuration, *ply, nullptr);
    QVERIFY(!ply->GetIncludedStrategyOrSubdivision(configuration));
    QVERIFY(ply->GetIncludedStrategyOrSubdivision(nullptr));
}

void TestOpenComposites::aDisabledSubdivisionIsStillWhatThePlyIsMadeBy()
{
    Part part;
    auto* const ply = Add<ZETCompPly>(part.sequence, u"P1"_s);
    auto* const subdivision = Add<ZETCompSubdivision>(ply, u"Pieces"_s);
    Add<ZETCompStrategy>(ply, u"One Piece"_s);
    ZETOpenModel::SetEnabled(*subdivision, false);
    QCOMPARE(ply->GetIncludedStrategyOrSubdivision(nullptr), subdivision);
}

void TestOpenComposites::aChoiceThatHasGoneSaysNothing()
{
    Part part;
    auto* const ply = Add<ZETCompPly>(part.sequence, u"P1"_s);
    auto* const strategy = Add<ZETCompStrategy>(ply, u"One Piece"_s);
    auto* const subdivision = Add<ZETCompSubdivision>(ply, u"Pieces"_s);
    auto* const configuration = Add<ZETCompMfgConfiguration>(part.root, u"C"_s);
    SetIncluded(*configuration, *ply, subdivision);
    QCOMPARE(ply->GetIncludedStrategyOrSubdivision(configuration), subdivision);
    delete subdivision;
    QCOMPARE(ply->GetIncludedStrategyOrSubdivision(configuration), strategy);
}

void TestOpenComposites::theFlatPatternIsThatOfTheIncludedStrategy()
{
    Part part;
    auto* const ply = Add<ZETCompPly>(part.sequence, u"P1"_s);
    auto* const strategy = Add<ZETCompStrategy>(ply, u"One Piece"_s);
    auto* const subdivision = Add<ZETCompSubdivision>(ply, u"Pieces"_s);
    auto* const configuration = Add<ZETCompMfgConfiguration>(part.root, u"C"_s);
    QVERIFY(!ply->GetFlatPattern(nullptr));
    auto* const pattern = Add<ZETCompFlatPattern>(strategy, u"Pattern"_s);
    QCOMPARE(ply->GetFlatPattern(nullptr), pattern);
    QCOMPARE(strategy->GetFlatPattern(), pattern);
    SetIncluded(*configuration, *ply, subdivision);
    QVERIFY(!ply->GetFlatPattern(configuration));
}

void TestOpenComposites::withoutUpdatedBoundariesTheBoundariesAreTheAnswer()
{
    Part part;
    const auto edge = MakeRectangle(part.tool, 0.0, 0.0, 60.0, 60.0);
    const auto raised = MakeRectangle(part.tool, 0.0, 0.0, 61.0, 61.0);
    auto* const ply = part.AddPly(u"P1"_s, 0.25, edge);
    SetBoundaryCurves(*ply, {edge.Get(), nullptr});
    QCOMPARE(ply->GetUpdatedBoundaryCurves(), (QList<const ZETGeoCurveOnSurface*>{edge.Get(), nullptr}));
    SetUpdatedBoundaryCurves(*ply, {raised.Get()});
    QCOMPARE(ply->GetUpdatedBoundaryCurves(), (QList<const ZETGeoCurveOnSurface*>{raised.Get()}));
    SetUpdatedBoundaryCurves(*ply, {});
    QVERIFY2(ply->GetUpdatedBoundaryCurves().isEmpty(), "given and empty is not the same as not given");
    ResetUpdatedBoundaryCurves(*ply);
    QCOMPARE(ply->GetUpdatedBoundaryCurves().size(), 2);
}

void TestOpenComposites::aPlyHoldsItsBoundaries()
{
    Part part;
    QPointer<QObject> edge;
    {
        const auto rectangle = MakeRectangle(part.tool, 0.0, 0.0, 60.0, 60.0);
        edge = rectangle.Get();
        part.AddPly(u"P1"_s, 0.25, rectangle);
    }
    auto* const ply = part.sequence->GetPlies().first();
    QCOMPARE(ply->GetBoundaryCurves().first()->GetNumSegments(), 4);
    SetBoundaryCurves(*ply, {});
    QVERIFY2(!edge, "nobody holds it any more");
}

void TestOpenComposites::theFinalSeedIsTheSeedOnTheFinalSurface()
{
    Part part;
    auto* const ply = Add<ZETCompPly>(part.sequence, u"P1"_s);
    auto* const strategy = Add<ZETCompStrategy>(ply, u"One Piece"_s);
    auto* const workpiece = Add<ZETOpenGeometryFeature>(part.root, u"Tool"_s);
    workpiece->SetBody(ZETOpenBodyBuilder::MakeFace(part.tool));
    auto* const seed = Add<ZETOpenGeometryFeature>(part.root, u"Seed"_s);
    seed->SetBody(ZETOpenBodyBuilder::MakePoint(ZETMathPoint(10.0, 20.0, 5.0)));
    SetSeedPoint(*strategy, seed);
    QVERIFY2(!strategy->GetFinalSeedPoint().GetSurface(), "there is no surface yet");

    SetWorkpiece(*part.layup, workpiece);
    QCOMPARE(strategy->GetFinalSeedPoint().GetPoint().GetDistanceTo(ZETMathPoint(10.0, 20.0, 0.0)), 0.0);
    QCOMPARE(strategy->GetFinalSeedPoint().GetSurface(), part.tool.Get());

    ZETMathAxis raised;
    raised.SetOrigin(ZETMathPoint(0.0, 0.0, 1.0));
    auto* const update = Add<ZETCompSurfaceUpdate>(ply, u"Raised"_s);
    SetBody(*update, ZETOpenBodyBuilder::MakeFace(ZETOpenSurface::MakePlane(raised, -500.0, 500.0, -500.0, 500.0)));
    SetSurfaceUpdateFeature(*ply, update);
    QCOMPARE(strategy->GetFinalSeedPoint().GetPoint().GetDistanceTo(ZETMathPoint(10.0, 20.0, 1.0)), 0.0);

    SetFinalSeedPoint(*strategy, part.At(3.0, 4.0));
    QCOMPARE(strategy->GetFinalSeedPoint().GetPoint(), ZETMathPoint(3.0, 4.0, 0.0));
}

void TestOpenComposites::withoutASeedPointTheFinalSeedHasNoSurface()
{
    Part part;
    auto* const ply = Add<ZETCompPly>(part.sequence, u"P1"_s);
    const auto* const strategy = Add<ZETCompStrategy>(ply, u"One Piece"_s);
    auto* const workpiece = Add<ZETOpenGeometryFeature>(part.root, u"Tool"_s);
    workpiece->SetBody(ZETOpenBodyBuilder::MakeFace(part.tool));
    SetWorkpiece(*part.layup, workpiece);
    QVERIFY(!strategy->GetFinalSeedPoint().GetSurface());
    QVERIFY(!strategy->GetFinalSeedCurve());
}

void TestOpenComposites::materialsThatHaveGoneArePassedOver()
{
    Part part;
    auto* const ply = Add<ZETCompPly>(part.sequence, u"P1"_s);
    QVERIFY(ply->GetMaterials().isEmpty());
    auto* const first = part.AddMaterial(u"A"_s, 0.25);
    auto* const second = part.AddMaterial(u"B"_s, 0.5);
    SetMaterials(*ply, {first, second});
    QCOMPARE(Labels(ply->GetMaterials()), u"A B"_s);
    delete first;
    QCOMPARE(Labels(ply->GetMaterials()), u"B"_s);
}

void TestOpenComposites::thicknessIsThatOfThePliesBeneathWhereTheyHoldThePlace_data()
{
    QTest::addColumn<double>("x");
    QTest::addColumn<double>("y");
    QTest::addColumn<double>("thickness");
    QTest::newRow("on both") << 50.0 << 50.0 << 0.75;
    QTest::newRow("on the first") << 10.0 << 10.0 << 0.25;
    QTest::newRow("on the second") << 90.0 << 90.0 << 0.5;
    QTest::newRow("on none") << 95.0 << 5.0 << 0.0;
    QTest::newRow("on the edge of the first") << 60.0 << 10.0 << 0.25;
    QTest::newRow("on a corner of the second") << 100.0 << 100.0 << 0.5;
}

void TestOpenComposites::thicknessIsThatOfThePliesBeneathWhereTheyHoldThePlace()
{
    QFETCH(double, x);
    QFETCH(double, y);
    QFETCH(double, thickness);
    Part part;
    part.AddPly(u"P1"_s, 0.25, MakeRectangle(part.tool, 0.0, 0.0, 60.0, 60.0));
    part.AddPly(u"P2"_s, 0.5, MakeRectangle(part.tool, 40.0, 40.0, 100.0, 100.0));
    auto* const ply = part.AddPly(u"P3"_s, 8.0, MakeRectangle(part.tool, 0.0, 0.0, 100.0, 100.0));
    QCOMPARE(ThicknessAt(part, ply, x, y), thickness);
}

void TestOpenComposites::thicknessCountsThePliesThatAreLaidBefore()
{
    Part part;
    const auto edge = MakeRectangle(part.tool, 0.0, 0.0, 60.0, 60.0);
    auto* const first = part.AddPly(u"P1"_s, 0.25, edge);
    auto* const second = part.AddPly(u"P2"_s, 0.5, edge);
    auto* const later = Add<ZETCompSequence>(part.layup, u"S2"_s);
    auto* const third = Add<ZETCompPly>(later, u"P3"_s);
    SetMaterials(*third, {part.AddMaterial(u"M"_s, 1.0)});
    SetBoundaryCurves(*third, {edge.Get()});
    auto* const otherLayup = Add<ZETCompLayup>(part.root, u"L2"_s);
    auto* const fourth = Add<ZETCompPly>(Add<ZETCompSequence>(otherLayup, u"S1"_s), u"P4"_s);
    SetBoundaryCurves(*fourth, {edge.Get()});

    QCOMPARE(ThicknessAt(part, first, 30.0, 30.0), 0.0);
    QCOMPARE(ThicknessAt(part, second, 30.0, 30.0), 0.25);
    QCOMPARE(ThicknessAt(part, third, 30.0, 30.0), 0.75);
    QCOMPARE(ThicknessAt(part, fourth, 30.0, 30.0), 0.0);
}

void TestOpenComposites::thicknessIsTakenOfTheFirstMaterial()
{
    Part part;
    const auto edge = MakeRectangle(part.tool, 0.0, 0.0, 60.0, 60.0);
    auto* const first = part.AddPly(u"P1"_s, 0.25, edge);
    SetMaterials(*first, {part.AddMaterial(u"A"_s, 0.125), part.AddMaterial(u"B"_s, 4.0)});
    auto* const bare = Add<ZETCompPly>(part.sequence, u"P2"_s);
    SetBoundaryCurves(*bare, {edge.Get()});
    auto* const ply = part.AddPly(u"P3"_s, 1.0, edge);
    QCOMPARE(ThicknessAt(part, ply, 30.0, 30.0), 0.125);
}

void TestOpenComposites::thicknessIsZeroWithoutAPly()
{
    Part part;
    part.AddPly(u"P1"_s, 0.25, MakeRectangle(part.tool, 0.0, 0.0, 60.0, 60.0));
    QCOMPARE(ThicknessAt(part, nullptr, 30.0, 30.0), 0.0);
    ZETCompThicknessAnalyzer analyzer;
    QCOMPARE(analyzer.ComputeThickness(part.At(30.0, 30.0)), 0.0);
}

void TestOpenComposites::aDisabledPlyIsNotLaid()
{
    Part part;
    const auto edge = MakeRectangle(part.tool, 0.0, 0.0, 60.0, 60.0);
    auto* const first = part.AddPly(u"P1"_s, 0.25, edge);
    part.AddPly(u"P2"_s, 0.5, edge);
    auto* const ply = part.AddPly(u"P3"_s, 1.0, edge);
    ZETOpenModel::SetEnabled(*first, false);
    QCOMPARE(ThicknessAt(part, ply, 30.0, 30.0), 0.5);
}

void TestOpenComposites::aHoleHoldsNothing()
{
    Part part;
    auto* const first = part.AddPly(u"P1"_s, 0.25, nullptr);
    SetBoundaryCurves(*first, {MakeRectangle(part.tool, 0.0, 0.0, 60.0, 60.0).Get(), nullptr,
                               MakeRectangle(part.tool, 20.0, 20.0, 40.0, 40.0).Get()});
    auto* const ply = part.AddPly(u"P2"_s, 1.0, nullptr);
    QCOMPARE(ThicknessAt(part, ply, 10.0, 10.0), 0.25);
    QCOMPARE(ThicknessAt(part, ply, 30.0, 30.0), 0.0);
    QCOMPARE(ThicknessAt(part, ply, 20.0, 30.0), 0.25);
}

void TestOpenComposites::anOpenBoundaryHoldsNothing()
{
    Part part;
    const auto open = MakeAssembledCurve(ZETOpenCurveOnSurface::MakePolyline(
        part.tool, QList<ZETMathPoint>{{0.0, 0.0, 0.0}, {60.0, 0.0, 0.0}, {60.0, 60.0, 0.0}}, false));
    part.AddPly(u"P1"_s, 0.25, open);
    auto* const ply = part.AddPly(u"P2"_s, 1.0, nullptr);
    QCOMPARE(ThicknessAt(part, ply, 50.0, 20.0), 0.0);
    QCOMPARE(ThicknessAt(part, ply, 60.0, 30.0), 0.0);
}

void TestOpenComposites::aPlaceOutsideCountsWithinTheTolerance_data()
{
    QTest::addColumn<double>("x");
    QTest::addColumn<double>("y");
    QTest::addColumn<double>("tolerance");
    QTest::addColumn<double>("thickness");
    QTest::newRow("within, beside an edge") << 60.005 << 33.3 << 0.01 << 0.25;
    QTest::newRow("outside, beside an edge") << 60.02 << 33.3 << 0.01 << 0.0;
    QTest::newRow("within, off a corner") << 60.006 << 60.006 << 0.01 << 0.25;
    QTest::newRow("outside, off a corner") << 60.008 << 60.008 << 0.01 << 0.0;
    QTest::newRow("within a wide tolerance") << 64.0 << 12.0 << 4.5 << 0.25;
    QTest::newRow("outside a wide tolerance") << 65.0 << 12.0 << 4.5 << 0.0;
    QTest::newRow("no tolerance") << 60.005 << 33.3 << 0.0 << 0.0;
}

void TestOpenComposites::aPlaceOutsideCountsWithinTheTolerance()
{
    QFETCH(double, x);
    QFETCH(double, y);
    QFETCH(double, tolerance);
    QFETCH(double, thickness);
    Part part;
    part.AddPly(u"P1"_s, 0.25, MakeRectangle(part.tool, 0.0, 0.0, 60.0, 60.0));
    auto* const ply = part.AddPly(u"P2"_s, 1.0, nullptr);
    QCOMPARE(ThicknessAt(part, ply, x, y, tolerance), thickness);
}

void TestOpenComposites::theToleranceCountsAlongArcsToo()
{
    // A patch of a cylinder whose upper and lower sides are single arcs, 250 mm long.
    Part part;
    constexpr double radius = 100.0;
    part.tool = ZETOpenSurface::MakeCylinder(ZETMathAxis(), radius, 0.0, 3.0, -100.0, 100.0);
    const auto at = [](double angle, double height) {
        return ZETMathPoint(radius * std::cos(angle), radius * std::sin(angle), height);
    };
    const auto patch = MakeAssembledCurve(ZETOpenCurveOnSurface::MakePolyline(
        part.tool, QList<ZETMathPoint>{at(0.1, 0.0), at(2.6, 0.0), at(2.6, 60.0), at(0.1, 60.0)}, true));
    part.AddPly(u"P1"_s, 0.25, patch);
    auto* const ply = part.AddPly(u"P2"_s, 1.0, nullptr);
    ZETCompThicknessAnalyzer analyzer;
    analyzer.SetBoundaryTolerance(0.01);
    analyzer.SetCurrentPly(ply);
    for (double angle = 0.11; angle < 2.6; angle += 0.0531) {
        const auto thickness = [&](double height) {
            return analyzer.ComputeThickness(part.tool->Project(at(angle, height)));
        };
        QCOMPARE(thickness(30.0), 0.25);
        QCOMPARE(thickness(60.0095), 0.25);
        QCOMPARE(thickness(60.0105), 0.0);
        QCOMPARE(thickness(-0.0095), 0.25);
        QCOMPARE(thickness(-0.0105), 0.0);
    }
}

void TestOpenComposites::aNewBoundaryReplacesTheOldOne()
{
    Part part;
    auto* const first = part.AddPly(u"P1"_s, 0.25, MakeRectangle(part.tool, 0.0, 0.0, 60.0, 60.0));
    auto* const ply = part.AddPly(u"P2"_s, 1.0, nullptr);
    ZETCompThicknessAnalyzer analyzer;
    analyzer.SetCurrentPly(ply);
    QCOMPARE(analyzer.ComputeThickness(part.At(50.0, 50.0)), 0.25);
    SetBoundaryCurves(*first, {MakeRectangle(part.tool, 0.0, 0.0, 40.0, 40.0).Get()});
    analyzer.SetCurrentPly(ply);
    QCOMPARE(analyzer.ComputeThickness(part.At(50.0, 50.0)), 0.0);
    QCOMPARE(analyzer.ComputeThickness(part.At(30.0, 30.0)), 0.25);
}

void TestOpenComposites::aPlaceOfAnotherSurfaceIsProjected()
{
    Part part;
    part.AddPly(u"P1"_s, 0.25, MakeRectangle(part.tool, 0.0, 0.0, 60.0, 60.0));
    auto* const ply = part.AddPly(u"P2"_s, 1.0, nullptr);
    ZETMathAxis raised;
    raised.SetOrigin(ZETMathPoint(100.0, 0.0, 1.0));
    const auto other = ZETOpenSurface::MakePlane(raised, -500.0, 500.0, -500.0, 500.0);
    ZETCompThicknessAnalyzer analyzer;
    analyzer.SetCurrentPly(ply);
    QCOMPARE(analyzer.ComputeThickness(other->Project(ZETMathPoint(30.0, 30.0, 1.0))), 0.25);
    QCOMPARE(analyzer.ComputeThickness(other->Project(ZETMathPoint(130.0, 30.0, 1.0))), 0.0);
}

void TestOpenComposites::aSavedModelIsLoadedAsItWas()
{
    Part part;
    FillWholeModel(part);
    const QByteArray bytes = ZETOpenModelStream::Save(part.container);
    const std::unique_ptr<ZETFeatContainer> loaded = ZETOpenModelStream::Load(bytes);
    const QStringList expected = Describe(part.container);
    const QStringList found = Describe(*loaded);
    QVERIFY(expected.size() > 50);
    for (qsizetype i = 0; i < qMin(expected.size(), found.size()); ++i)
        QCOMPARE(found.at(i), expected.at(i));
    QCOMPARE(found.size(), expected.size());
}

void TestOpenComposites::aLoadedModelSharesItsSurfacesAsBefore()
{
    Part part;
    FillWholeModel(part);
    const std::unique_ptr<ZETFeatContainer> loaded = ZETOpenModelStream::Load(ZETOpenModelStream::Save(part.container));
    const auto* const root = qobject_cast<ZETCompRoot*>(ZETOpenModel::GetRoot(*loaded));
    const auto* const layup = root->GetLayups().first();
    const auto* const ply = layup->GetSequences().first()->GetPlies().first();
    const auto* const face = qobject_cast<const ZETTopFace*>(layup->GetWorkpiece()->GetBody()->GetEntities(2).first());
    QCOMPARE(ply->GetBoundaryCurves().first()->GetSurface(), face->GetSurface());
    const auto* const strategy = qobject_cast<ZETCompStrategy*>(ply->GetIncludedStrategyOrSubdivision(nullptr));
    QCOMPARE(strategy->GetFinalSeedPoint().GetSurface(), face->GetSurface());
    QCOMPARE(strategy->GetFinalSeedCurve()->GetSurface(), face->GetSurface());
}

void TestOpenComposites::brokenFieldsEndWithAnException()
{
    Part part;
    FillWholeModel(part);
    for (ZETFeatObject* feature : part.root->GetAllChildren()) {
        const QByteArray fields = ZETOpenModelStream::SaveFields(*feature);
        const int step = qMax(1, static_cast<int>(fields.size()) / 16);
        for (qsizetype size = 0; size < fields.size(); size += step) {
            auto* const fresh = ZETOpenModel::Create(feature->metaObject()->className(), part.container);
            QVERIFY_THROWS_EXCEPTION(std::exception, ZETOpenModelStream::LoadFields(*fresh, fields.left(size)));
        }
    }
}

QTEST_GUILESS_MAIN(TestOpenComposites)
#include "TestOpenComposites.moc"
