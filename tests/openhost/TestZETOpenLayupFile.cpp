#include "openhost/layup/ZETOpenLayupFile.h"
#include "openhost/ZETComposites/ZETOpenComposites.h"
#include "openhost/ZETFeature/ZETOpenModel.h"

#include "features/ZETLaser3DTextByAxis.h"
#include "features/ZETLaser3DTextOnSupport.h"
#include "features/ZETLaserExtraGeometry.h"
#include "features/ZETLaserParameter.h"
#include "features/ZETLaserProjector.h"
#include "features/ZETLaserTarget.h"

#include <ZETComposites/ZETCompFlatContour.h>
#include <ZETComposites/ZETCompFlatCurve.h>
#include <ZETComposites/ZETCompFlatPattern.h>
#include <ZETComposites/ZETCompFlatPoint.h>
#include <ZETComposites/ZETCompLayup.h>
#include <ZETComposites/ZETCompMfgConfiguration.h>
#include <ZETComposites/ZETCompPly.h>
#include <ZETComposites/ZETCompRoot.h>
#include <ZETComposites/ZETCompRosette.h>
#include <ZETComposites/ZETCompSequence.h>
#include <ZETComposites/ZETCompStrategy.h>
#include <ZETComposites/ZETCompSubdivision.h>
#include <ZETComposites/ZETCompSubPly.h>
#include <ZETFeature/ZETFeatContainer.h>
#include <ZETGeometry/ZETGeoAssembledCurveOnSurface.h>
#include <ZETMaterial/ZETMatMaterial.h>
#include <ZETMaterial/ZETMatPackaging.h>

#include <QDir>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

#include <cmath>

using namespace Qt::Literals::StringLiterals;

namespace
{
// One key a line, so that a test can say on which line a fault is found.
constexpr char layupText[] = R"({
"format": "zetlaser-layup",
"version": 1,
"units": "cm",
"name": "Plate",
"surfaces": [
{ "name": "Tool", "plane": {"origin": [0, 0, 0], "x": [1, 0, 0], "y": [0, 1, 0], "width": 100, "height": 50} },
{ "name": "Other", "cylinder": {"radius": 10, "height": 20, "angle": 90} }
],
"curves": [
{ "name": "Ring", "on": "Tool", "points": [[1, 1, 0], [9, 1, 0], [9, 5, 0]], "closed": true },
{ "name": "Line", "on": "Tool", "line": {"from": [0, 5, 0], "to": [10, 5, 0]} },
{ "name": "Chain", "on": "Tool", "edges": [{"points": [[0, 0, 0], [5, 0, 0]]}, {"points": [[9, 0, 0], [5, 0, 0]], "reversed": true}] }
],
"points": [
{ "name": "Seed", "at": [5, 5, 0.05], "on": "Tool" }
],
"axisSystems": [ { "name": "Plate", "origin": [1, 2, 3], "x": [0, 2, 0], "y": [-1, 5, 0] } ],
"rosettes": [ { "name": "Rosette", "x": [1, 0, 0], "y": [0, 1, 0] } ],
"materials": [
{ "name": "Glass", "type": "fabric", "id": "G-1", "thickness": 0.1, "packagings": [ {"name": "Roll", "width": 100, "length": 5000} ] }
],
"configurations": [
{ "name": "A", "skipParentPly": true, "laserRosetteSize": 5 },
{ "name": "B", "active": true, "use3D": false }
],
"targets": [
{ "name": "T1", "at": [0, 0, 1], "drift": true, "comment": "corner" },
{ "name": "T2", "point": "Seed" }
],
"projectors": [ { "name": "Ceiling", "targets": ["T2", "T1"], "comment": "left" } ],
"layups": [
{ "name": "L1", "direction": "negative", "workpiece": "Tool", "rosette": "Rosette", "flatteningMode": "by-direction",
"children": [
{ "name": "S1", "children": [
{ "kind": "extra-geometry", "name": "E1", "scope": "until-next", "outputs": ["3d", "nesting"], "children": [
{ "kind": "parameter", "type": "query", "text": "%PLY%?" },
{ "kind": "folder", "name": "F", "children": [ { "kind": "text", "text": "AB", "size": 2, "axis": "Plate" } ] },
{ "kind": "text", "name": "On", "text": "CD", "anchor": "Seed", "support": "Tool", "along": "Line", "verticalMirror": true }
] },
{ "name": "P1", "direction": 45, "material": "Glass", "boundary": [[0, 0, 0], [10, 0, 0], [10, 5, 0]],
"children": [
{ "kind": "subdivision", "name": "Sub", "configurations": ["A"], "children": [
{ "name": "SP1", "boundary": "Ring" }
] },
{ "kind": "strategy", "name": "Whole", "seedPoint": "Seed", "seedCurve": "Chain", "packaging": "Roll",
"flatPattern": { "contours": [ {"points": [[0, 0], [10, 0], [10, 5]]} ], "curves": [ {"points": [[0, 1], [5, 1]], "source": "Chain"} ], "points": [ {"at": [1, 1], "source": "Seed"} ] } }
] },
{ "name": "P2", "enabled": false, "boundary": {"points": [[0, 0, 0], [10, 0, 0], [10, 5, 0]], "limit": 0.5} }
] }
] },
{ "kind": "extra-geometry", "name": "E2", "scope": "all-plies", "outputs": ["flat"] }
]
}
)";

ZETOpenLayupModel LoadText(const QByteArray& text)
{
    return ZETOpenLayupFile::Load(QDir::current().filePath(u"plate.layup.json"_s), text);
}

/*! The feature of that class and label. */
template <typename Feature>
Feature* Find(const ZETOpenLayupModel& model, const QString& label)
{
    for (ZETFeatObject* feature : model.root->GetAllChildren()) {
        if (auto* found = qobject_cast<Feature*>(feature); found && found->GetLabel() == label)
            return found;
    }
    return nullptr;
}
} // namespace

class TestZETOpenLayupFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void makesTheTreeInItsOrder();
    void bringsLengthsToMillimetresAndAnglesToRadians();
    void takesDirectionsOfAnyLength();
    void fillsPliesAndStrategies();
    void fillsFlatPatterns();
    void fillsExtraGeometryInMixedOrder();
    void fillsTargetsAndProjectors();
    void makesAConfigurationWhereThereIsNone();
    void tellsWhatFeaturesSayOfThemselves();
    void tellsWhatIsWrong_data();
    void tellsWhatIsWrong();
    void tellsSyntaxErrors_data();
    void tellsSyntaxErrors();
    void tellsTheLineInALongFile();
    void tellsOfAShapeFileAheadOfReadingIt();
    void isCalledByItsFileWithoutAName();
    void knowsTheKeysOfTheSchema();
};

void TestZETOpenLayupFile::makesTheTreeInItsOrder()
{
    const ZETOpenLayupModel model = LoadText(layupText);
    QCOMPARE(model.root->GetLabel(), u"Plate"_s);
    QCOMPARE(model.unit, u"cm"_s);
    QCOMPARE(model.root->GetLayups().size(), 1);
    ZETCompLayup* layup = model.root->GetLayups().first();
    QCOMPARE(layup->GetLabel(), u"L1"_s);
    QCOMPARE(layup->GetLayupDirection(), false);
    QCOMPARE(layup->GetFlatteningMode(), ZETCompLayup::FlatteningByDirection);
    QCOMPARE(layup->GetRosette()->GetLabel(), u"Rosette"_s);
    QVERIFY(layup->GetWorkpiece());
    QVERIFY(!layup->GetFlatteningPlane());
    QStringList labels;
    for (const ZETFeatObject* feature : layup->GetSequences().first()->GetChildren())
        labels.append(feature->GetLabel());
    QCOMPARE(labels, (QStringList{u"E1"_s, u"P1"_s, u"P2"_s}));
    QVERIFY(!Find<ZETCompPly>(model, u"P2"_s)->IsEffectivelyEnabled());
    QVERIFY(qobject_cast<ZETLaserExtraGeometry*>(model.root->GetChildren().last()));
    QCOMPARE(model.root->GetActiveMfgConfiguration()->GetLabel(), u"B"_s);
    QCOMPARE(model.root->GetActiveMfgConfiguration()->GetUse3D(), false);
    QVERIFY(model.warnings.isEmpty());
}

void TestZETOpenLayupFile::bringsLengthsToMillimetresAndAnglesToRadians()
{
    const ZETOpenLayupModel model = LoadText(layupText);
    const auto* ply = Find<ZETCompPly>(model, u"P1"_s);
    QCOMPARE(ply->GetDirection(), std::acos(-1.0) / 4.0);
    const auto curves = ply->GetBoundaryCurves();
    QCOMPARE(curves.size(), 1);
    QVERIFY(curves.first()->IsClosed());
    QCOMPARE(curves.first()->GetNumSegments(), 3);
    QVERIFY(curves.first()->GetLocation(1).GetMathPoint().GetDistanceTo({100.0, 0.0, 0.0}) < 1e-9);
    QVERIFY(curves.first()->GetLocation(2).GetMathPoint().GetDistanceTo({100.0, 50.0, 0.0}) < 1e-9);
    auto* material = Find<ZETMatMaterial>(model, u"Glass"_s);
    QCOMPARE(material->GetThickness(), 1.0);
    QCOMPARE(material->GetMaterialId(), u"G-1"_s);
    QCOMPARE(material->GetMaterialType(), u"fabric"_s);
    QCOMPARE(Find<ZETMatPackaging>(model, u"Roll"_s)->GetWidth(), 1000.0);
    const auto* configuration = Find<ZETCompMfgConfiguration>(model, u"A"_s);
    QCOMPARE(configuration->GetLaserDataRosetteSize(), 50.0);
    QCOMPARE(configuration->GetNestingDataRosetteSize(), 100.0); // a default is in mm, whatever the file's unit
    const ZETMathAxis axis = Find<ZETWFAxisSystem>(model, u"Plate"_s)->GetAxis();
    QVERIFY(axis.GetOrigin().GetDistanceTo({10.0, 20.0, 30.0}) < 1e-9);
    QVERIFY((axis.GetFirstDirection() - ZETMathVector(0.0, 1.0, 0.0)).GetSquaredMagnitude() < 1e-18);
    QVERIFY((axis.GetSecondDirection() - ZETMathVector(-1.0, 0.0, 0.0)).GetSquaredMagnitude() < 1e-18);
}

void TestZETOpenLayupFile::takesDirectionsOfAnyLength()
{
    for (const char* length : {"2", "1e-200", "1e200", "4.9e-324"}) {
        const auto axis = QByteArray("\"x\": [0, %, 0]").replace("%", length);
        const ZETOpenLayupModel model = LoadText(QByteArray(layupText).replace("\"x\": [0, 2, 0]", axis));
        const auto* system = Find<ZETWFAxisSystem>(model, u"Plate"_s);
        QCOMPARE(system->GetAxis().GetFirstDirection(), ZETMathVector(0.0, 1.0, 0.0));
    }
}

void TestZETOpenLayupFile::fillsPliesAndStrategies()
{
    const ZETOpenLayupModel model = LoadText(layupText);
    const auto* ply = Find<ZETCompPly>(model, u"P1"_s);
    QCOMPARE(ply->GetMaterials().size(), 1);
    const auto* subdivision = qobject_cast<const ZETCompSubdivision*>(
        ply->GetIncludedStrategyOrSubdivision(Find<ZETCompMfgConfiguration>(model, u"A"_s)));
    QVERIFY(subdivision);
    QCOMPARE(subdivision->GetSubPlies().size(), 1);
    QCOMPARE(subdivision->GetSubPlies().first()->GetLabel(), u"SP1"_s);
    QCOMPARE(subdivision->GetSubPlies().first()->GetBoundaryCurves().first()->GetNumSegments(), 3);
    const auto* strategy = qobject_cast<const ZETCompStrategy*>(
        ply->GetIncludedStrategyOrSubdivision(Find<ZETCompMfgConfiguration>(model, u"B"_s)));
    QVERIFY(strategy);
    QCOMPARE(strategy->GetLabel(), u"Whole"_s);
    QVERIFY(strategy->GetSeedPoint());
    QCOMPARE(strategy->GetPackaging()->GetLabel(), u"Roll"_s);
    // The seed lies where its point was projected, and the curve that is walked is the chain of both edges.
    QVERIFY(strategy->GetFinalSeedPoint().GetPoint().GetDistanceTo({50.0, 50.0, 0.0}) < 1e-9);
    QVERIFY(strategy->GetFinalSeedCurve());
    QCOMPARE(strategy->GetFinalSeedCurve()->GetNumSegments(), 2);
    QVERIFY(std::abs(strategy->GetFinalSeedCurve()->GetLength() - 90.0) < 1e-9);
}

void TestZETOpenLayupFile::fillsFlatPatterns()
{
    const ZETOpenLayupModel model = LoadText(layupText);
    const auto* strategy = Find<ZETCompStrategy>(model, u"Whole"_s);
    const auto* pattern = strategy->GetFlatPattern();
    QVERIFY(pattern);
    QCOMPARE(pattern->GetChildren().size(), 3);
    const auto* contour = qobject_cast<ZETCompFlatContour*>(pattern->GetChildren()[0]);
    QVERIFY(contour && contour->GetBody());
    const auto* curve = qobject_cast<ZETCompFlatCurve*>(pattern->GetChildren()[1]);
    QVERIFY(curve && curve->GetSource() == strategy->GetSeedCurve());
    const auto* point = qobject_cast<ZETCompFlatPoint*>(pattern->GetChildren()[2]);
    QVERIFY(point && point->GetSource() == strategy->GetSeedPoint());
}

void TestZETOpenLayupFile::fillsExtraGeometryInMixedOrder()
{
    const ZETOpenLayupModel model = LoadText(layupText);
    const auto* extra = Find<ZETLaserExtraGeometry>(model, u"E1"_s);
    QCOMPARE(extra->GetScope(), ZETLaserExtraGeometry::UntilNext);
    QCOMPARE(extra->GetFilters().toInt(), 2 | 4);
    QCOMPARE(Find<ZETLaserExtraGeometry>(model, u"E2"_s)->GetFilters().toInt(), 1);
    const auto all = extra->GetAllChildren();
    QCOMPARE(all.size(), 4);
    const auto* parameter = qobject_cast<ZETLaserParameter*>(all[0]);
    QVERIFY(parameter);
    QCOMPARE(parameter->GetType(), ZETLaserParameter::Query);
    QCOMPARE(parameter->GetText(), u"%PLY%?"_s);
    const auto* byAxis = qobject_cast<ZETLaser3DTextByAxis*>(all[2]);
    QVERIFY(byAxis);
    QCOMPARE(byAxis->GetSize(), 20.0);
    QCOMPARE(byAxis->GetAxis()->GetLabel(), u"Plate"_s);
    const auto* onSupport = qobject_cast<ZETLaser3DTextOnSupport*>(all[3]);
    QVERIFY(onSupport);
    QCOMPARE(onSupport->GetSize(), 10.0);
    // Updated with the model: at the anchor, against the line because of the mirror.
    QVERIFY(onSupport->GetBasePoint().GetDistanceTo({50.0, 50.0, 0.0}) < 1e-6);
    QVERIFY((onSupport->GetBaseDirection() - ZETMathVector(-1.0, 0.0, 0.0)).GetSquaredMagnitude() < 1e-12);
}

void TestZETOpenLayupFile::fillsTargetsAndProjectors()
{
    const ZETOpenLayupModel model = LoadText(layupText);
    const auto* target = Find<ZETLaserTarget>(model, u"T1"_s);
    QVERIFY(target->IsDrift());
    QCOMPARE(target->GetComment(), u"corner"_s);
    QVERIFY(target->GetCoordinates().GetDistanceTo({0.0, 0.0, 10.0}) < 1e-9);
    const auto* projector = Find<ZETLaserProjector>(model, u"Ceiling"_s);
    QCOMPARE(projector->GetTargets().size(), 2);
    QCOMPARE(projector->GetTargets().last(), target);
    QVERIFY(projector->GetTargets().first()->GetCoordinates().GetDistanceTo({50.0, 50.0, 0.0}) < 1e-9);
}

void TestZETOpenLayupFile::makesAConfigurationWhereThereIsNone()
{
    const auto model = LoadText(R"({"format": "zetlaser-layup", "version": 1, "units": "mm"})");
    QVERIFY(model.root->GetActiveMfgConfiguration());
    QCOMPARE(model.root->GetLabel(), u"plate"_s);
}

void TestZETOpenLayupFile::tellsWhatFeaturesSayOfThemselves()
{
    QByteArray text(layupText);
    text.replace("\"CD\"", "\"\xC3\xA4\"");
    const ZETOpenLayupModel model = LoadText(text);
    QCOMPARE(model.warnings.size(), 1);
    QCOMPARE(model.warnings.first().GetPath(), u"layups[0].S1.E1.On"_s);
    QCOMPARE(model.warnings.first().GetText(), u"Unicode characters are not supported for 3D Text."_s);
    QCOMPARE(model.warnings.first().GetLine(), 39);
}

void TestZETOpenLayupFile::tellsWhatIsWrong_data()
{
    QTest::addColumn<QByteArray>("old");
    QTest::addColumn<QByteArray>("replacement");
    QTest::addColumn<int>("linesBehind"); // behind the line of what is replaced
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("text");
    const auto row = [](const char* name, const char* old, const char* replacement, int linesBehind, const char* path,
                        const char* text) {
        QTest::newRow(name) << QByteArray(old) << QByteArray(replacement) << linesBehind << QString::fromUtf8(path)
                            << QString::fromUtf8(text);
    };
    row("other format", "\"zetlaser-layup\"", "\"other\"", 0, "format",
        "expected \"zetlaser-layup\", found the text \"other\"");
    row("no units", "\"units\": \"cm\",", "", -3, "",
        "expected the key \"units\" with one of \"mm\", \"cm\", \"m\", \"in\", found none");
    row("unknown units", "\"cm\"", "\"km\"", 0, "units",
        "expected one of \"mm\", \"cm\", \"m\", \"in\", found the text \"km\"");
    row("version", "\"version\": 1", "\"version\": 2", 0, "version", "expected the version 1, found the number 2");
    row("unknown key", "\"rosettes\"", "\"rosetes\"", 0, "", "unknown key \"rosetes\", did you mean \"rosettes\"?");
    row("unknown key of a ply", "\"direction\": 45", "\"angle\": 45", 0, "layups[0].S1.P1",
        "unknown key \"angle\", expected one of: kind, name, enabled, direction, material, materials, boundary, "
        "boundaries, updatedBoundaries, surfaceUpdate, flatPattern, children");
    row("wrong type", "\"direction\": 45", "\"direction\": \"45\"", 0, "layups[0].S1.P1.direction",
        "expected an angle in degrees, found the text \"45\"");
    row("number for text", "\"id\": \"G-1\"", "\"id\": 7", 0, "materials[0].id", "expected a text, found the number 7");
    row("object for array", "\"targets\": [\"T2\", \"T1\"]", "\"targets\": {}", 0, "projectors[0].targets",
        "expected an array of names of targets, found an object");
    row("text for flag", "\"drift\": true", "\"drift\": \"yes\"", 0, "targets[0].drift",
        "expected true or false, found the text \"yes\"");
    row("far point", "[9, 5, 0]", "\n[9, -1000001, 0]", 1, "curves[0].points[2]",
        "expected 10 km at most, found -1000001 cm");
    row("more than a number", "\"thickness\": 0.1", "\"thickness\": 1e308", 0, "materials[0].thickness",
        "expected 10 km at most, found 1e+308 cm");
    row("unknown surface", "\"workpiece\": \"Tool\"", "\"workpiece\": \"Tol\"", 0, "layups[0].workpiece",
        "unknown surface \"Tol\", did you mean \"Tool\"?");
    row("a curve for a surface", "\"workpiece\": \"Tool\"", "\"workpiece\": \"Ring\"", 0, "layups[0].workpiece",
        "expected the name of a surface, found the curve \"Ring\"");
    row("unknown material", "\"material\": \"Glass\"", "\"material\": \"Carbon\"", 0, "layups[0].S1.P1.material",
        "unknown material \"Carbon\"");
    row("unknown target", "[\"T2\", \"T1\"]", "[\"T2\",\n\"T3\"]", 1, "projectors[0].targets[1]",
        "unknown target \"T3\", did you mean \"T1\"?");
    row("line ends", "[\"T2\", \"T1\"]", "[\"two\\r\\nlines\"]", 0, "projectors[0].targets[0]",
        "unknown target \"two\\r\\nlines\"");
    row("unknown configuration", "[\"A\"]", "[\"C\"]", 0, "layups[0].S1.P1.Sub.configurations[0]",
        "unknown configuration \"C\"");
    row("duplicate surface", "\"name\": \"Other\"", "\"name\": \"Tool\"", 0, "surfaces[1]",
        "duplicate name \"Tool\" of a surface, curve or point, first used on line 7");
    row("duplicate ply", "\"name\": \"P2\"", "\"name\": \"P1\"", 0, "layups[0].S1.P1",
        "duplicate name \"P1\", first used on line 41");
    row("duplicate name like a place to fill in", "\"points\": [\n{",
        "\"points\": [\n{\"name\": \"%2 %3\", \"at\": [0, 0, 0]},\n{\"name\": \"%2 %3\", \"at\": [0, 0, 0]},\n{", 2,
        "points[1]", "duplicate name \"%2 %3\" of a surface, curve or point, first used on line 16");
    row("second active configuration", "\"skipParentPly\"", "\"active\": true, \"skipParentPly\"", 1,
        "configurations[1].active", "expected one active configuration, found a second beside \"A\"");
    row("open boundary", "\"limit\": 0.5", "\"closed\": false", 0, "layups[0].S1.P2.boundary.closed",
        "expected a closed boundary, found an open one");
    row("open curve as boundary", "\"boundary\": \"Ring\"", "\"boundary\": \"Line\"", 0,
        "layups[0].S1.P1.Sub.SP1.boundary", "expected a closed boundary, found the open curve \"Line\"");
    row("zero area", "[[0, 0, 0], [10, 0, 0], [10, 5, 0]],\n\"children\"",
        "[[0, 0, 0], [10, 0, 0], [5, 0, 0]],\n\"children\"", 0, "layups[0].S1.P1.boundary",
        "expected a boundary with an area, found one that encloses none");
    row("two points", "[[0, 0, 0], [10, 0, 0], [10, 5, 0]],\n\"children\"", "[[0, 0, 0], [10, 0, 0]],\n\"children\"", 0,
        "layups[0].S1.P1.boundary", "expected at least 3 points, found 2");
    row("far from the surface", "[10, 5, 0]],\n\"children\"", "\n[10, 5, 0.2]],\n\"children\"", 1,
        "layups[0].S1.P1.boundary[2]", "expected a point at most 1 mm from the surface \"Tool\", found one at 2 mm");
    row("far from the surface, own limit", "[10, 5, 0]], \"limit\": 0.5", "[10, 5, -0.6]], \"limit\": 0.5", 0,
        "layups[0].S1.P2.boundary.points[2]",
        "expected a point at most 5 mm from the surface \"Tool\", found one at 6 mm");
    row("two coordinates", "[10, 5, 0]], \"limit\"", "[10, 5]], \"limit\"", 0, "layups[0].S1.P2.boundary.points[2]",
        "expected three coordinates, found an array of 2");
    row("text as coordinate", "[10, 5, 0]], \"limit\"", "[10, \"5\", 0]], \"limit\"", 0,
        "layups[0].S1.P2.boundary.points[2][1]", "expected a number, found the text \"5\"");
    row("no boundary", ", \"boundary\": {\"points\": [[0, 0, 0], [10, 0, 0], [10, 5, 0]], \"limit\": 0.5}", "", 0,
        "layups[0].S1.P2", "expected the key \"boundary\" with the outline of the ply, found none");
    row("direction of no length", "\"x\": [0, 2, 0]", "\"x\": [0, 0, 0]", 0, "axisSystems[0].x",
        "expected a direction, found one of length 0");
    row("parallel directions", "\"y\": [-1, 5, 0]", "\"y\": [0, 1, 0]", 0, "axisSystems[0].y",
        "expected a direction that isn't parallel to \"x\"");
    row("unknown scope", "\"until-next\"", "\"until\"", 0, "layups[0].S1.E1.scope",
        "expected one of \"all-plies\", \"plies-below\", \"until-next\", \"parent-only\", found the text \"until\"");
    row("empty text", "\"text\": \"%PLY%?\"", "\"text\": \"\"", 0, "layups[0].S1.E1.children[0].text",
        "expected a text that isn't empty, found the text \"\"");
    row("missing shape file", "\"surfaces\": [",
        "\"shapes\": [\n{\"name\": \"X\", \"file\": \"none.step\"}],\n\"surfaces\": [", 1, "shapes[0].file",
        "expected a shape file, found no file DIR/none.step");
    row("negative thickness", "\"thickness\": 0.1", "\"thickness\": -0.1", 0, "materials[0].thickness",
        "expected a thickness above 0, found the number -0.1");
    row("two choices for one configuration", "\"packaging\": \"Roll\"", "\"configurations\": [\"A\"]", 0,
        "layups[0].S1.P1.Whole.configurations[0]",
        "expected one choice for the configuration \"A\", found a second beside \"Sub\"");
    row("text by axis and on support", "\"size\": 2, \"axis\"", "\"support\": \"Tool\", \"axis\"", 0,
        "layups[0].S1.E1.F.children[0].support", "expected a text either by \"axis\" or on a \"support\", found both");
    row("edges that don't join", "[9, 0, 0], [5, 0, 0]", "[9, 0, 0], [6, 0, 0]", 0, "curves[2].edges", "*");
    row("surface of no radius", "\"radius\": 10", "\"radius\": 0", 0, "surfaces[1].cylinder.radius",
        "expected a radius above 0, found the number 0");
    row("seed in space", "\"at\": [5, 5, 0.05], \"on\": \"Tool\"", "\"at\": [5, 5, 0.05]", 30,
        "layups[0].S1.P1.Whole.seedPoint", "expected a point on a surface (\"on\"), found \"Seed\" in space");
}

void TestZETOpenLayupFile::tellsWhatIsWrong()
{
    QFETCH(QByteArray, old);
    QFETCH(QByteArray, replacement);
    QFETCH(int, linesBehind);
    QFETCH(QString, path);
    QFETCH(QString, text);
    QByteArray content(layupText);
    QVERIFY(content.contains(old));
    const int line = 1 + static_cast<int>(content.left(content.indexOf(old)).count('\n')) + linesBehind;
    content.replace(content.indexOf(old), old.size(), replacement);
    text.replace(u"DIR"_s, QDir::currentPath());
    try {
        LoadText(content);
        QFAIL("nothing was thrown");
    } catch (const ZETOpenJsonError& error) {
        QCOMPARE(error.GetPath(), path);
        QCOMPARE(error.GetLine(), line);
        if (text == u"*"_s) // the kernel's own words
            QVERIFY(!error.GetText().isEmpty());
        else
            QCOMPARE(error.GetText(), text);
        QVERIFY(!error.GetMessage().contains(u'\n'));
        const QString place = QDir::current().filePath(u"plate.layup.json"_s) + u':' + QString::number(line) + u": "_s;
        QCOMPARE(error.GetMessage(), place + (path.isEmpty() ? QString() : path + u": "_s) + error.GetText());
    }
}

void TestZETOpenLayupFile::tellsSyntaxErrors_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<int>("line");
    QTest::addColumn<QString>("text");
    const auto row = [](const char* name, const QByteArray& content, int line, const char* text) {
        QTest::newRow(name) << content << line << QString::fromUtf8(text);
    };
    row("duplicate key", "{\"a\": 1,\n\"a\": 2}", 2, "no valid JSON: Duplicate key: 'a' (column 1)");
    row("trailing garbage", "{}\nx", 2, "no valid JSON: Extra non-whitespace after JSON value (column 1)");
    row("not a number", "{\"a\":\nNaN}", 2, "no valid JSON: Syntax error: value, object or array expected (column 1)");
    row("infinity", "{\"a\":\n-Infinity}", 2, "*");
    row("too large a number", "{\"a\":\n1e999}", 2, "no valid JSON: '1e999' is not a number (column 1)");
    row("trailing comma", "{\"a\": 1,}", 1, "*");
    row("comment", "// x\n{}", 1, "no valid JSON: expected \"{\", found \"// x\"");
    row("empty", "", 1, "no valid JSON: the file is empty");
    row("blanks alone", " \n\n", 1, "no valid JSON: the file is empty");
    row("another file", "\n\nISO-10303-21;\nHEADER;\n", 3, "no valid JSON: expected \"{\", found \"ISO-10303-21;\"");
    row("ends too early", "{\"a\": [1, 2", 1, "*");
    row("no UTF-8", "{\n\"\xFF\": 1}", 2, "no valid UTF-8");
    row("nested too deeply", QByteArray(100000, '['), 0, "no valid JSON: nested too deeply");
    row("an array", "[]", 1, "expected an object, found an array of 0");
    row("byte order mark", "\xEF\xBB\xBF{\n\"format\": 7}", 2, "expected \"zetlaser-layup\", found the number 7");
}

void TestZETOpenLayupFile::tellsSyntaxErrors()
{
    QFETCH(QByteArray, content);
    QFETCH(int, line);
    QFETCH(QString, text);
    try {
        LoadText(content);
        QFAIL("nothing was thrown");
    } catch (const ZETOpenJsonError& error) {
        QCOMPARE(error.GetLine(), line);
        if (text != u"*"_s) // otherwise the words are the parser's
            QCOMPARE(error.GetText(), text);
        QVERIFY(!error.GetMessage().contains(u'\n'));
    }
}

void TestZETOpenLayupFile::tellsTheLineInALongFile()
{
    // Around the places where a count of lines may begin anew, and far behind the first of them.
    for (const int lines : {0, 1, 4084, 4085, 4086, 4094, 4095, 4096, 4097, 100000}) {
        try {
            LoadText('{' + QByteArray(lines, '\n') + "\"format\": 7}");
            QFAIL("nothing was thrown");
        } catch (const ZETOpenJsonError& error) {
            QCOMPARE(error.GetLine(), lines + 1);
        }
    }
}

// A sum that is taken later may be that of another file than the one that was read.
void TestZETOpenLayupFile::tellsOfAShapeFileAheadOfReadingIt()
{
    QVERIFY(QDir().mkpath(u"sub"_s));
    QFile::remove(u"sub/tool.step"_s);
    QFile file(u"sub/a.layup.json"_s);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(
        R"({"format": "zetlaser-layup", "version": 1, "units": "mm", "shapes": [{"name": "T", "file": "tool.step"}],
"surfaces": [{"name": "Tool", "shape": "T"}]})");
    file.close();
    QStringList told;
    const ZETOpenLayupModel model = ZETOpenLayupFile::Load(u"sub/a.layup.json"_s, [&](const QString& path) {
        told.append(path);
        QVERIFY(QFile::copy(QStringLiteral(ZET_SOURCE_DIR "/examples/blade/tool_ss_r30_r40.step"), path));
    });
    QCOMPARE(told, QStringList{QDir::current().filePath(u"sub/tool.step"_s)});
    QVERIFY(Find<ZETFeatGeometry>(model, u"Tool"_s)->GetBody());
}

void TestZETOpenLayupFile::isCalledByItsFileWithoutAName()
{
    const QByteArray text = R"({"format": "zetlaser-layup", "version": 1, "units": "mm"})";
    const auto getName = [&](const QString& file) { return ZETOpenLayupFile::Load(file, text).root->GetLabel(); };
    QCOMPARE(getName(u"wing.layup.json"_s), u"wing"_s);
    QCOMPARE(getName(u"wing-v1.2.layup.json"_s), u"wing-v1.2"_s);
    QCOMPARE(getName(u"wing.json"_s), u"wing"_s);
    QCOMPARE(getName(u"wing.left.txt"_s), u"wing.left"_s);
}

void TestZETOpenLayupFile::knowsTheKeysOfTheSchema()
{
    QFile file(QStringLiteral(ZET_SOURCE_DIR "/schema/layup.schema.json"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QJsonDocument schema = QJsonDocument::fromJson(file.readAll());
    QVERIFY(schema.isObject());
    const QJsonObject definitions = schema.object().value(u"$defs"_s).toObject();
    const auto& known = ZETOpenLayupFile::GetKnownKeys();
    QVERIFY(known.size() > 20);
    for (auto it = known.constBegin(); it != known.constEnd(); ++it) {
        const QJsonObject definition = it.key() == u"file"_s ? schema.object() : definitions.value(it.key()).toObject();
        QVERIFY2(!definition.isEmpty(), qPrintable(u"the schema has no "_s + it.key()));
        QStringList keys = definition.value(u"properties"_s).toObject().keys();
        QStringList expected = it.value();
        keys.sort();
        expected.sort();
        QCOMPARE(keys, expected);
        QCOMPARE(definition.value(u"additionalProperties"_s), QJsonValue(false));
    }
    // What the schema has beside them are forms of values, not objects.
    for (const QString& name : definitions.keys()) {
        const bool isObject = definitions.value(name).toObject().contains(u"properties"_s);
        QVERIFY2(!isObject || known.contains(name), qPrintable(u"the reader knows no "_s + name));
    }
}

QTEST_GUILESS_MAIN(TestZETOpenLayupFile)
#include "TestZETOpenLayupFile.moc"
