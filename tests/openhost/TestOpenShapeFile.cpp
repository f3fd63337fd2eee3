#include "openhost/ZETGeometry/ZETOpenComboCurve.h"
#include "openhost/ZETGeometry/ZETOpenCurveOnSurface.h"
#include "openhost/ZETGeometry/ZETOpenRegion.h"
#include "openhost/ZETGeometry/ZETOpenShapeFile.h"
#include "openhost/ZETGeometry/ZETOpenSurface.h"
#include "tests/openhost/TestShapes.h"
#include "tests/support/TestThrown.h"

#include <ZETMathematics/ZETMathAxis.h>
#include <ZETSystem/ZETSysException.h>

#include <BRepBuilderAPI_MakeEdge.hxx>
#include <BRepBuilderAPI_MakeFace.hxx>
#include <BRepPrimAPI_MakeBox.hxx>
#include <Geom_BSplineCurve.hxx>
#include <Geom_BSplineSurface.hxx>
#include <Geom_Circle.hxx>
#include <Geom_CylindricalSurface.hxx>
#include <Geom_Line.hxx>
#include <Geom_RectangularTrimmedSurface.hxx>
#include <Geom_SurfaceOfLinearExtrusion.hxx>
#include <Geom_SurfaceOfRevolution.hxx>
#include <GeomConvert.hxx>
#include <gp_Circ.hxx>
#include <IGESControl_Controller.hxx>
#include <IGESControl_Writer.hxx>
#include <IGESData_IGESEntity.hxx>
#include <IGESData_IGESModel.hxx>
#include <Standard_Failure.hxx>
#include <STEPControl_Controller.hxx>
#include <STEPControl_Writer.hxx>
#include <StepRepr_RepresentationItem.hxx>
#include <StepShape_EdgeCurve.hxx>
#include <StepShape_FaceSurface.hxx>
#include <TCollection_HAsciiString.hxx>
#include <TopExp.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS.hxx>
#include <TopTools_IndexedMapOfShape.hxx>
#include <Transfer_FinderProcess.hxx>
#include <TransferBRep.hxx>
#include <TransferBRep_ShapeMapper.hxx>
#include <XSControl_TransferWriter.hxx>
#include <XSControl_WorkSession.hxx>

#include <QFile>
#include <QRandomGenerator>
#include <QTest>

#include <cmath>
#include <numbers>

Q_DECLARE_METATYPE(TopoDS_Face)

namespace
{
using std::numbers::pi;
using TestShapes::MakeCompound;
using TestShapes::MakePlate;
using TestShapes::MakeQuarter;

void WriteStep(const TopoDS_Shape& shape, const char* path, const char* unit = "MM")
{
    QVERIFY(TestShapes::WriteStep(shape, path, unit));
}

void WriteIges(const TopoDS_Shape& shape, const char* path, const char* unit = "MM")
{
    QVERIFY(TestShapes::WriteIges(shape, path, unit));
}

void WriteBrep(const TopoDS_Shape& shape, const char* path)
{
    QVERIFY(TestShapes::WriteBrep(shape, path));
}

/*! Names as they stand in the file, where characters beyond ASCII are encoded. */
void WriteStepWithNames(const TopoDS_Shape& shape, const char* path, const TestShapes::Names& names)
{
    STEPControl_Controller::Init();
    STEPControl_Writer writer;
    QCOMPARE(writer.Transfer(shape, STEPControl_AsIs), IFSelect_RetDone);
    const auto process = writer.WS()->TransferWriter()->FinderProcess();
    for (const auto& [named, name] : names) {
        const Handle(TransferBRep_ShapeMapper) mapper = TransferBRep::ShapeMapper(process, named);
        Handle(StepRepr_RepresentationItem) item;
        if (named.ShapeType() == TopAbs_FACE) {
            Handle(StepShape_FaceSurface) face;
            QVERIFY(process->FindTypedTransient(mapper, STANDARD_TYPE(StepShape_FaceSurface), face));
            item = face;
        } else {
            Handle(StepShape_EdgeCurve) edge;
            QVERIFY(process->FindTypedTransient(mapper, STANDARD_TYPE(StepShape_EdgeCurve), edge));
            item = edge;
        }
        item->SetName(new TCollection_HAsciiString(name.constData()));
    }
    QCOMPARE(writer.Write(path), IFSelect_RetDone);
}

void WriteBytes(const char* path, const QByteArray& bytes)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), bytes.size());
}

QByteArray ReadBytes(const char* path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/*! What reading says against the file; empty if nothing. */
QString GetFault(const QString& path, std::optional<double> scale = std::nullopt)
{
    return Thrown([&] { const ZETOpenShapeFile file(path, scale); });
}

bool IsNear(const ZETMathPoint& a, const ZETMathPoint& b, double tolerance = 1e-6)
{
    return a.GetDistanceTo(b) <= tolerance;
}
} // namespace

class TestOpenShapeFile : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void everyFormatGivesTheSameFace_data();
    void everyFormatGivesTheSameFace();
    void declaredUnitsAreConverted_data();
    void declaredUnitsAreConverted();
    void scaleOverridesTheDeclaredUnit_data();
    void scaleOverridesTheDeclaredUnit();
    void fileWithoutAUnitNeedsAScale();
    void shapesInSeveralUnitsHaveNoOneScale();
    void reversedFaceKeepsItsNormal_data();
    void reversedFaceKeepsItsNormal();
    void facesAreFoundByName();
    void igesNamesAreRead();
    void nameOfABodyStandsForItsFaces();
    void holeIsNotPartOfTheFace();
    void linesTakeTheShortWayAcrossASeam_data();
    void linesTakeTheShortWayAcrossASeam();
    void edgesOfAFaceKeepTheirCurves();
    void wireRunsRoundTheFace();
    void looseEdgeIsProjected();
    void projectedChordFollowsTheSurface();
    void edgesOfOneNameMakeAChain();
    void polylineOfAnEdge();
    void unknownNamesAndIndicesAreTold();
    void sameFaceIsTheSameSurface();
    void surfacesOutliveTheFile();
    void filesThatAreNoneAreTold_data();
    void filesThatAreNoneAreTold();
    void filesCutShortAreTold_data();
    void filesCutShortAreTold();
    void igesOfMissingLinesIsTold();
    void damagedFileIsReadOrRefused_data();
    void damagedFileIsReadOrRefused();
    void numbersOutOfRangeAreTold();
    void brepThatAnnouncesTooMuchIsTold();
    void fileThatCrashesTheKernelIsTold();
    void placesFarOutOfAnyWorkshopAreTold();
    void bladeOfTheExample();
};

void TestOpenShapeFile::initTestCase()
{
    TestShapes::SilenceKernel();
}

void TestOpenShapeFile::everyFormatGivesTheSameFace_data()
{
    QTest::addColumn<QString>("format");
    QTest::newRow("STEP") << "STEP";
    QTest::newRow("IGES") << "IGES";
    QTest::newRow("BREP") << "BREP";
}

void TestOpenShapeFile::everyFormatGivesTheSameFace()
{
    QFETCH(QString, format);
    // The ending doesn't matter, the content does.
    const char* const path = "quarter.dat";
    if (format == "STEP")
        WriteStep(MakeQuarter(), path);
    else if (format == "IGES")
        WriteIges(MakeQuarter(), path);
    else
        WriteBrep(MakeQuarter(), path);
    const ZETOpenShapeFile file(path);
    QCOMPARE(file.GetFormat(), format);
    QCOMPARE(file.GetUnitInMillimetres(), 1.0);
    QCOMPARE(file.GetNumFaces(), 1);
    const auto surface = file.GetSingleFace();
    const auto location = surface->Project({120.0, 160.0, 50.0});
    QVERIFY(IsNear(location.GetPoint(), {60.0, 80.0, 50.0}));
    const auto normal = surface->GetNormal(location);
    QVERIFY(std::abs(std::abs(normal * ZETMathVector(0.6, 0.8, 0.0)) - 1.0) < 1e-9);
    QVERIFY(IsNear(surface->Project({-50.0, 120.0, 250.0}).GetPoint(), {0.0, 100.0, 200.0}));
    const auto box = surface->GetBoundingBox();
    QVERIFY(IsNear(box.GetLowerPoint(), {0.0, 0.0, 0.0}, 1e-3));
    QVERIFY(IsNear(box.GetUpperPoint(), {100.0, 100.0, 200.0}, 1e-3));
}

void TestOpenShapeFile::declaredUnitsAreConverted_data()
{
    QTest::addColumn<QByteArray>("unit");
    QTest::addColumn<double>("millimetres");
    QTest::newRow("metres") << QByteArray("M") << 1000.0;
    QTest::newRow("inches") << QByteArray("INCH") << 25.4;
    QTest::newRow("centimetres") << QByteArray("CM") << 10.0;
}

void TestOpenShapeFile::declaredUnitsAreConverted()
{
    QFETCH(QByteArray, unit);
    QFETCH(double, millimetres);
    WriteStep(MakeQuarter(), "unit.step", unit.constData());
    const ZETOpenShapeFile step("unit.step");
    QCOMPARE(step.GetUnitInMillimetres(), millimetres);
    QVERIFY(IsNear(step.GetSingleFace()->Project({120.0, 160.0, 50.0}).GetPoint(), {60.0, 80.0, 50.0}));
    WriteIges(MakeQuarter(), "unit.iges", unit.constData());
    const ZETOpenShapeFile iges("unit.iges");
    QCOMPARE(iges.GetUnitInMillimetres(), millimetres);
    QVERIFY(IsNear(iges.GetSingleFace()->Project({120.0, 160.0, 50.0}).GetPoint(), {60.0, 80.0, 50.0}));
}

void TestOpenShapeFile::scaleOverridesTheDeclaredUnit_data()
{
    QTest::addColumn<QByteArray>("unit");
    QTest::addColumn<double>("scale");
    QTest::addColumn<double>("radius");
    // The file's numbers are 100 in mm, and 0.1 in m.
    QTest::newRow("mm as mm") << QByteArray("MM") << 1.0 << 100.0;
    QTest::newRow("mm as inches") << QByteArray("MM") << 25.4 << 2540.0;
    QTest::newRow("m as mm") << QByteArray("M") << 1.0 << 0.1;
    QTest::newRow("m as cm") << QByteArray("M") << 10.0 << 1.0;
}

void TestOpenShapeFile::scaleOverridesTheDeclaredUnit()
{
    QFETCH(QByteArray, unit);
    QFETCH(double, scale);
    QFETCH(double, radius);
    WriteStep(MakeQuarter(), "scale.step", unit.constData());
    const ZETOpenShapeFile file("scale.step", scale);
    const auto surface = file.GetSingleFace();
    QVERIFY(IsNear(surface->Project({6.0 * radius, 8.0 * radius, 0.5 * radius}).GetPoint(),
                   {0.6 * radius, 0.8 * radius, 0.5 * radius}, 1e-6 * radius));
    // The edges' own curves are scaled as well.
    for (int i = 0; i < file.GetNumEdges(); ++i) {
        const double length = file.GetEdge(i, surface)->GetLength();
        QVERIFY(std::abs(length - 2.0 * radius) < 1e-6 * radius ||
                std::abs(length - 0.5 * pi * radius) < 1e-6 * radius);
    }
}

void TestOpenShapeFile::fileWithoutAUnitNeedsAScale()
{
    WriteStep(MakeQuarter(), "whole.step");
    QByteArray step = ReadBytes("whole.step");
    // The unit stays in the file, and is the shapes' no more.
    const qsizetype unit = step.indexOf('#', step.indexOf("GLOBAL_UNIT_ASSIGNED_CONTEXT"));
    WriteBytes("none.step", step.remove(unit, step.indexOf(',', unit) + 1 - unit));
    QCOMPARE(GetFault("none.step"), "none.step: the file declares no unit of length, so it needs a scale");
    const auto surface = ZETOpenShapeFile("none.step", 25.4).GetSingleFace();
    QVERIFY(IsNear(surface->Project({12.0 * 254.0, 16.0 * 254.0, 50.0}).GetPoint(), {6.0 * 254.0, 8.0 * 254.0, 50.0}));
}

void TestOpenShapeFile::shapesInSeveralUnitsHaveNoOneScale()
{
    gp_Trsf aside;
    aside.SetTranslation(gp_Vec(500.0, 0.0, 0.0));
    const TopoDS_Shape box = BRepPrimAPI_MakeBox(100.0, 200.0, 300.0).Solid();
    WriteStep(MakeCompound({box, box.Moved(aside)}), "twins.step");
    QByteArray step = ReadBytes("twins.step");
    const qsizetype last = step.lastIndexOf("SI_UNIT(.MILLI.,.METRE.)");
    QVERIFY(last > step.indexOf("SI_UNIT(.MILLI.,.METRE.)"));
    WriteBytes("several.step", step.replace(last, 24, "SI_UNIT(.CENTI.,.METRE.)"));
    QCOMPARE(GetFault("twins.step", 25.4), QString());
    QCOMPARE(GetFault("several.step"), QString());
    QCOMPARE(GetFault("several.step", 25.4),
             "several.step: the file has shapes in several units, so it can't have one scale");
}

void TestOpenShapeFile::reversedFaceKeepsItsNormal_data()
{
    // Without IGES, where a trimmed surface has no orientation of its own.
    QTest::addColumn<QString>("format");
    QTest::newRow("STEP") << "STEP";
    QTest::newRow("BREP") << "BREP";
}

void TestOpenShapeFile::reversedFaceKeepsItsNormal()
{
    QFETCH(QString, format);
    for (const bool reversed : {false, true}) {
        const TopoDS_Shape face = reversed ? MakeQuarter().Reversed() : TopoDS_Shape(MakeQuarter());
        if (format == "STEP")
            WriteStep(face, "reversed.dat");
        else
            WriteBrep(face, "reversed.dat");
        const ZETOpenShapeFile file("reversed.dat");
        const auto surface = file.GetSingleFace();
        const auto normal = surface->GetNormal(surface->Project({60.0, 80.0, 50.0}));
        QVERIFY(std::abs(normal * ZETMathVector(0.6, 0.8, 0.0) - (reversed ? -1.0 : 1.0)) < 1e-9);
    }
}

void TestOpenShapeFile::facesAreFoundByName()
{
    const TopoDS_Face quarter = MakeQuarter();
    const TopoDS_Face plate = MakePlate();
    WriteStepWithNames(MakeCompound({quarter, plate}), "named.step",
                       {{quarter, "tool side"}, {plate, "plate \\X2\\00E400DF\\X0\\"}});
    const ZETOpenShapeFile file("named.step");
    QCOMPARE(file.GetNumFaces(), 2);
    QCOMPARE(file.GetFaceName(0), "tool side");
    QCOMPARE(file.GetFaceName(1), QString::fromUtf8("plate \xc3\xa4\xc3\x9f"));
    const auto surface = file.GetFace(QString("tool side"));
    QCOMPARE(surface->GetName(), "tool side");
    QVERIFY(!surface->IsPlane());
    QVERIFY(file.GetFace(file.GetFaceName(1))->IsPlane());
    QVERIFY(file.GetFaceNames().startsWith("tool side"));
}

void TestOpenShapeFile::igesNamesAreRead()
{
    IGESControl_Controller::Init();
    IGESControl_Writer writer("MM", 1);
    QVERIFY(writer.AddShape(MakeQuarter()));
    QVERIFY(writer.AddShape(MakePlate()));
    writer.ComputeModel();
    int count = 0;
    const auto model = writer.Model();
    for (int i = 1; i <= model->NbEntities(); ++i) {
        // Type 144 is a trimmed surface, 510 a face.
        const auto entity = model->Entity(i);
        if (entity->TypeNumber() == 144 || entity->TypeNumber() == 510)
            entity->SetLabel(new TCollection_HAsciiString(++count == 1 ? "SIDE" : "PLATE"));
    }
    QCOMPARE(count, 2);
    QVERIFY(writer.Write("named.iges"));
    const ZETOpenShapeFile file("named.iges");
    QCOMPARE(file.GetNumFaces(), 2);
    QVERIFY(!file.GetFace(QString("SIDE"))->IsPlane());
    QVERIFY(file.GetFace(QString("PLATE"))->Project({10.0, 10.0, 5.0}).GetPoint().GetDistanceTo({10.0, 10.0, 0.0}) <
            1e-6);
}

void TestOpenShapeFile::nameOfABodyStandsForItsFaces()
{
    WriteStep(BRepPrimAPI_MakeBox(10.0, 20.0, 30.0).Solid(), "box.step");
    const ZETOpenShapeFile box("box.step");
    QCOMPARE(box.GetNumFaces(), 6);
    QCOMPARE(box.GetFaceNames().size(), 1); // the product's
    const QString product = box.GetFaceNames().first();
    QCOMPARE(Thrown([&] { box.GetFace(product); }), QString("box.step: \"%1\" stands for 6 faces").arg(product));
    // Two bodies of one name stand for the faces of both.
    const TopoDS_Shape first = BRepPrimAPI_MakeBox(10.0, 20.0, 30.0).Solid();
    const TopoDS_Shape second = BRepPrimAPI_MakeBox(gp_Pnt(50.0, 0.0, 0.0), 10.0, 20.0, 30.0).Solid();
    QVERIFY(TestShapes::WriteNamedStep(MakeCompound({first, second}), "two.step", {{first, "Part"}, {second, "Part"}}));
    QCOMPARE(Thrown([&] { ZETOpenShapeFile("two.step").GetFace(QString("Part")); }),
             "two.step: \"Part\" stands for 12 faces");
    // A name is not filled in, whatever it looks like.
    QVERIFY(TestShapes::WriteNamedStep(MakeCompound({first, second}), "two.step", {{first, "%2"}, {second, "%2"}}));
    QCOMPARE(Thrown([&] { ZETOpenShapeFile("two.step").GetFace(QString("%2")); }),
             "two.step: \"%2\" stands for 12 faces");

    WriteStep(MakeQuarter(), "quarter.step");
    const ZETOpenShapeFile quarter("quarter.step");
    QCOMPARE(quarter.GetFace(quarter.GetFaceNames().first()), quarter.GetFace(0));
}

void TestOpenShapeFile::holeIsNotPartOfTheFace()
{
    for (const char* path : {"plate.step", "plate.brep", "plate.iges"}) {
        if (QByteArray(path).endsWith("step"))
            WriteStep(MakePlate(), path);
        else if (QByteArray(path).endsWith("brep"))
            WriteBrep(MakePlate(), path);
        else
            WriteIges(MakePlate(), path);
        const ZETOpenShapeFile file(path);
        const auto plate = file.GetSingleFace();
        QVERIFY(IsNear(plate->Project({10.0, 10.0, 3.0}).GetPoint(), {10.0, 10.0, 0.0}));
        QVERIFY(IsNear(plate->Project({60.0, 50.0, 3.0}).GetPoint(), {70.0, 50.0, 0.0}));
        QVERIFY(IsNear(plate->Project({50.0, 38.0, -3.0}).GetPoint(), {50.0, 30.0, 0.0}));
    }
}

void TestOpenShapeFile::linesTakeTheShortWayAcrossASeam_data()
{
    // A tube of radius 100, in all forms that a file may have for it.
    QTest::addColumn<TopoDS_Face>("face");
    const auto add = [](const char* name, const Handle(Geom_Surface) & surface, double u0, double u1, double v0,
                        double v1) {
        QTest::newRow(name) << TopoDS_Face(BRepBuilderAPI_MakeFace(surface, u0, u1, v0, v1, 1e-6));
    };
    const Handle(Geom_Surface) cylinder = new Geom_CylindricalSurface(gp_Ax3(), 100.0);
    add("cylinder", cylinder, 0.0, 2.0 * pi, 0.0, 200.0);
    add("turn told with ten digits", cylinder, 0.0, 6.283185307, 0.0, 200.0);
    const Handle(Geom_Surface) piece = new Geom_RectangularTrimmedSurface(cylinder, 0.0, 2.0 * pi, 0.0, 200.0);
    Handle(Geom_BSplineSurface) spline = GeomConvert::SurfaceToBSplineSurface(piece);
    spline->SetUNotPeriodic();
    add("spline without a period", spline, 0.0, 2.0 * pi, 0.0, 200.0);
    Handle(Geom_BSplineSurface) turned = Handle(Geom_BSplineSurface)::DownCast(spline->Copy());
    turned->ExchangeUV();
    add("spline without a period in its other direction", turned, 0.0, 200.0, 0.0, 2.0 * pi);
    Handle(Geom_BSplineCurve) circle =
        GeomConvert::CurveToBSplineCurve(new Geom_Circle(gp_Ax2(gp_Pnt(), gp_Dir(0.0, 0.0, 1.0)), 100.0));
    circle->SetNotPeriodic();
    add("extrusion of a spline", new Geom_SurfaceOfLinearExtrusion(circle, gp_Dir(0.0, 0.0, 1.0)),
        circle->FirstParameter(), circle->LastParameter(), 0.0, 200.0);
    const Handle(Geom_Curve) wall = new Geom_Line(gp_Pnt(100.0, 0.0, 0.0), gp_Dir(0.0, 0.0, 1.0));
    add("revolution", new Geom_SurfaceOfRevolution(wall, gp_Ax1()), 0.0, 2.0 * pi, 0.0, 200.0);
}

void TestOpenShapeFile::linesTakeTheShortWayAcrossASeam()
{
    QFETCH(TopoDS_Face, face);
    WriteBrep(face, "tube.brep");
    const auto surface = ZETOpenShapeFile("tube.brep").GetSingleFace();
    const auto at = [](double degrees, double height) {
        const double angle = degrees * pi / 180.0;
        return ZETMathPoint(100.0 * std::cos(angle), 100.0 * std::sin(angle), height);
    };
    for (const double turn : {0.0, 90.0, 180.0, 270.0}) {
        const auto curve =
            ZETOpenCurveOnSurface::MakePolyline(surface, {at(turn - 20.0, 50.0), at(turn + 20.0, 50.0)}, false);
        // The parameter of a spline isn't the angle, but its way is the arc all the same.
        QVERIFY(std::abs(curve->GetLength() - 100.0 * pi * 40.0 / 180.0) < 1e-3);
        QVERIFY(IsNear(curve->GetLocation(0.5 * curve->GetLength(), nullptr).GetMathPoint(), at(turn, 50.0), 1e-3));
    }
    const auto square = ZETOpenCurveOnSurface::MakePolyline(
        surface, {at(-20.0, 50.0), at(20.0, 50.0), at(20.0, 150.0), at(-20.0, 150.0)}, true);
    const ZETOpenRegion region({square.Get()});
    QVERIFY(region.Contains(surface->Project(at(0.0, 100.0))));
    QVERIFY(!region.Contains(surface->Project(at(180.0, 100.0))));
}

void TestOpenShapeFile::edgesOfAFaceKeepTheirCurves()
{
    WriteBrep(MakeQuarter(), "quarter.brep");
    const ZETOpenShapeFile file("quarter.brep");
    QCOMPARE(file.GetNumEdges(), 4);
    const auto surface = file.GetSingleFace();
    int arcs = 0;
    for (int i = 0; i < 4; ++i) {
        const auto curve = file.GetEdge(i, surface);
        QCOMPARE(curve->GetNumSegments(), 1);
        QVERIFY(!curve->IsClosed());
        QCOMPARE(curve->GetSurface(), surface.Get());
        if (std::abs(curve->GetLength() - 50.0 * pi) < 1e-6)
            ++arcs;
        else
            QVERIFY(std::abs(curve->GetLength() - 200.0) < 1e-6);
    }
    QCOMPARE(arcs, 2);
}

void TestOpenShapeFile::wireRunsRoundTheFace()
{
    WriteBrep(MakeQuarter(), "quarter.brep");
    const ZETOpenShapeFile quarter("quarter.brep");
    QCOMPARE(quarter.GetNumWires(), 1);
    const auto boundary = quarter.GetWire(0, quarter.GetSingleFace());
    QVERIFY(boundary->IsClosed());
    QCOMPARE(boundary->GetNumSegments(), 4);
    QVERIFY(std::abs(boundary->GetLength() - (400.0 + 100.0 * pi)) < 1e-6);
    // One after the other: where one segment ends the next begins.
    for (int i = 0; i < 4; ++i) {
        const auto end = ZETGeoLocationOnCurve(boundary.Get(), i + 1 - 1e-12).GetMathPoint();
        QVERIFY(IsNear(end, boundary->GetLocation((i + 1) % 4).GetMathPoint()));
    }
    WriteBrep(MakePlate(), "plate.brep");
    const ZETOpenShapeFile plate("plate.brep");
    QCOMPARE(plate.GetNumWires(), 2);
    const auto hole = plate.GetWire(1, plate.GetSingleFace());
    QVERIFY(hole->IsClosed());
    QCOMPARE(hole->GetNumSegments(), 1);
    QVERIFY(std::abs(hole->GetLength() - 40.0 * pi) < 1e-6);
}

void TestOpenShapeFile::looseEdgeIsProjected()
{
    // Straight lines and a circle 5 mm above the plate, and a chord of the cylinder.
    const gp_Circ circle(gp_Ax2(gp_Pnt(50.0, 50.0, 5.0), gp_Dir(0.0, 0.0, 1.0)), 40.0);
    WriteBrep(MakeCompound({MakePlate(), BRepBuilderAPI_MakeEdge(gp_Pnt(5.0, 5.0, 5.0), gp_Pnt(95.0, 5.0, 5.0)),
                            BRepBuilderAPI_MakeEdge(circle, 0.0, pi)}),
              "loose.brep");
    const ZETOpenShapeFile file("loose.brep");
    const auto plate = file.GetSingleFace();
    const int count = file.GetNumEdges();
    const auto line = file.GetEdge(count - 2, plate);
    QVERIFY(std::abs(line->GetLength() - 90.0) < 1e-9);
    QVERIFY(IsNear(line->GetLocation(45.0, nullptr).GetMathPoint(), {50.0, 5.0, 0.0}));
    const auto arc = file.GetEdge(count - 1, plate);
    // Of pieces that leave the arc by 0.01 mm, which makes it shorter by a twelve thousandth.
    QVERIFY(std::abs(arc->GetLength() - 40.0 * pi) < 2e-2);
    QVERIFY(IsNear(arc->GetLocation(20.0 * pi, nullptr).GetMathPoint(), {50.0, 90.0, 0.0}, 2e-2));
    QVERIFY(std::abs(line->GetMaxProjectionDistance() - 5.0) < 1e-9);
    QCOMPARE(file.GetEdge(0, plate)->GetMaxProjectionDistance(), 0.0);
}

void TestOpenShapeFile::projectedChordFollowsTheSurface()
{
    // From one border of the quarter to the other, far within: the projection turns faster in its middle than at its
    // ends, while it climbs evenly, so it is no straight line in angle and height.
    const gp_Pnt start(100.0, 0.0, 0.0);
    const gp_Pnt end(0.0, 100.0, 200.0);
    WriteBrep(MakeCompound({MakeQuarter(), BRepBuilderAPI_MakeEdge(start, end)}), "chord.brep");
    const ZETOpenShapeFile file("chord.brep");
    const auto curve = file.GetEdge(file.GetNumEdges() - 1, file.GetSingleFace());
    double farthest = 0.0;
    for (int i = 0; i <= 100; ++i) {
        const double fraction = i / 100.0;
        const double angle = std::atan2(fraction, 1.0 - fraction);
        const ZETMathPoint expected(100.0 * std::cos(angle), 100.0 * std::sin(angle), 200.0 * fraction);
        farthest = std::max(farthest, curve->Project(expected).GetMathPoint().GetDistanceTo(expected));
    }
    QVERIFY2(farthest < 0.015, qPrintable(QString::number(farthest)));
    QVERIFY(std::abs(curve->GetMaxProjectionDistance() - (100.0 - 50.0 * std::sqrt(2.0))) < 1e-6);
}

void TestOpenShapeFile::edgesOfOneNameMakeAChain()
{
    const TopoDS_Face quarter = MakeQuarter();
    TopTools_IndexedMapOfShape edges;
    TopExp::MapShapes(quarter, TopAbs_EDGE, edges);
    TestShapes::Names names;
    for (int i = 1; i <= 3; ++i)
        names.append({edges(i), i < 3 ? "seed" : "other"});
    WriteStepWithNames(quarter, "edges.step", names);
    const ZETOpenShapeFile file("edges.step");
    QCOMPARE(file.GetCurveNames(), QStringList({"seed", "other"}));
    const auto surface = file.GetSingleFace();
    const auto other = file.GetCurve("other", surface);
    QCOMPARE(other->GetName(), "other");
    QCOMPARE(other->GetNumSegments(), 1);
    const auto seed = file.GetCurve("seed", surface);
    QCOMPARE(seed->GetNumSegments(), 2);
    QVERIFY(!seed->IsClosed());
    QVERIFY(std::abs(seed->GetLength() - (200.0 + 50.0 * pi)) < 1e-6);
}

void TestOpenShapeFile::polylineOfAnEdge()
{
    const TopoDS_Face quarter = MakeQuarter();
    TopTools_IndexedMapOfShape edges;
    TopExp::MapShapes(quarter, TopAbs_EDGE, edges);
    TestShapes::Names names;
    for (int i = 1; i <= 4; ++i)
        names.append({edges(i), "edge " + QByteArray::number(i)});
    WriteStepWithNames(quarter, "polyline.step", names);
    const ZETOpenShapeFile file("polyline.step");
    int arcs = 0;
    for (int i = 1; i <= 4; ++i) {
        const auto polylines = file.GetPolylines(QString("edge %1").arg(i), 0.1);
        QCOMPARE(polylines.size(), 1);
        const auto& polyline = polylines.first();
        if (polyline->GetNumPoints() > 2) {
            ++arcs;
            QVERIFY(polyline->GetLength() < 50.0 * pi && polyline->GetLength() > 50.0 * pi - 0.5);
        } else {
            QVERIFY(std::abs(polyline->GetLength() - 200.0) < 1e-9);
        }
    }
    QCOMPARE(arcs, 2);
    QVERIFY_THROWS_EXCEPTION(ZETSysException, file.GetPolylines("edge 1", 0.0));
    QVERIFY_THROWS_EXCEPTION(ZETSysException, file.GetPolylines("edge 9", 0.1));
}

void TestOpenShapeFile::unknownNamesAndIndicesAreTold()
{
    const TopoDS_Face quarter = MakeQuarter();
    const TopoDS_Face plate = MakePlate();
    WriteStepWithNames(MakeCompound({quarter, plate}), "unknown.step", {{quarter, "side"}, {plate, "plate"}});
    const ZETOpenShapeFile file("unknown.step");
    const auto surface = file.GetFace(0);
    QVERIFY(Thrown([&] {
                file.GetFace(QString("Side"));
            }).startsWith("unknown.step: no face is called \"Side\"; its names are side, plate"));
    QVERIFY(Thrown([&] { file.GetFace(QString()); }).startsWith("unknown.step: no face is called \"\""));
    QCOMPARE(Thrown([&] { file.GetFace(2); }), "unknown.step: there is no face 2, the file holds 2 faces");
    QCOMPARE(Thrown([&] { file.GetFace(-1); }), "unknown.step: there is no face -1, the file holds 2 faces");
    QVERIFY(Thrown([&] {
                file.GetSingleFace();
            }).startsWith("unknown.step: the file holds 2 faces, so one has to be named; its names are side, plate"));
    QCOMPARE(Thrown([&] { file.GetEdge(99, surface); }), "unknown.step: there is no edge 99, the file holds 9 edges");
    QCOMPARE(Thrown([&] { file.GetWire(99, surface); }), "unknown.step: there is no wire 99, the file holds 3 wires");
    QCOMPARE(Thrown([&] { file.GetCurve("seed", surface); }),
             "unknown.step: no edge or wire is called \"seed\"; it has no names");
    QCOMPARE(Thrown([&] { file.GetEdge(0, nullptr); }), "unknown.step: a curve on a surface needs a surface");
}

void TestOpenShapeFile::sameFaceIsTheSameSurface()
{
    WriteBrep(MakeQuarter(), "same.brep");
    const ZETOpenShapeFile file("same.brep");
    QCOMPARE(file.GetFace(0), file.GetSingleFace());
}

void TestOpenShapeFile::surfacesOutliveTheFile()
{
    WriteBrep(MakeQuarter(), "gone.brep");
    ZETOpenRef<ZETOpenSurface> surface;
    ZETOpenRef<ZETOpenCurveOnSurface> curve;
    {
        const ZETOpenShapeFile file("gone.brep");
        surface = file.GetSingleFace();
        curve = file.GetWire(0, surface);
    }
    QVERIFY(IsNear(surface->Project({120.0, 160.0, 50.0}).GetPoint(), {60.0, 80.0, 50.0}));
    QVERIFY(std::abs(curve->GetLength() - (400.0 + 100.0 * pi)) < 1e-6);
}

void TestOpenShapeFile::filesThatAreNoneAreTold_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("fault");
    QTest::newRow("empty") << QByteArray() << "none.dat: it is empty";
    QTest::newRow("blank") << QByteArray(" \n\n") << "none.dat: it is empty";
    QTest::newRow("text") << QByteArray("hello\n") << "none.dat: it is no STEP, IGES or BREP file";
    QTest::newRow("zeros") << QByteArray(10000, '\0') << "none.dat: it is no STEP, IGES or BREP file";
    QTest::newRow("STEP without shapes")
        << QByteArray(
               "ISO-10303-21;\nHEADER;\nFILE_DESCRIPTION((''),'2;1');\nFILE_NAME('','',(''),(''),'','','');\n"
               "FILE_SCHEMA(('AUTOMOTIVE_DESIGN'));\nENDSEC;\nDATA;\n#1=CARTESIAN_POINT('',(0.,0.,0.));\nENDSEC;\n"
               "END-ISO-10303-21;\n")
        << "none.dat: the file holds no shapes";
}

void TestOpenShapeFile::filesThatAreNoneAreTold()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, fault);
    WriteBytes("none.dat", content);
    QCOMPARE(GetFault("none.dat"), fault);
    QCOMPARE(GetFault("nowhere.step"), "nowhere.step: there is no such file");
    QCOMPARE(GetFault("."), ".: it isn't a file");
    for (const double scale : {0.0, -1.0, std::nan("")})
        QVERIFY(GetFault("none.dat", scale).endsWith("isn't a scale"));
}

void TestOpenShapeFile::filesCutShortAreTold_data()
{
    everyFormatGivesTheSameFace_data();
}

void TestOpenShapeFile::filesCutShortAreTold()
{
    QFETCH(QString, format);
    const TopoDS_Compound shape = MakeCompound({MakeQuarter(), MakePlate()});
    if (format == "STEP")
        WriteStep(shape, "whole.dat");
    else if (format == "IGES")
        WriteIges(shape, "whole.dat");
    else
        WriteBrep(shape, "whole.dat");
    const QByteArray whole = ReadBytes("whole.dat");
    QVERIFY(whole.size() > 1000);
    QCOMPARE(GetFault("whole.dat"), QString());
    // Everywhere near the end, where a cut is easily missed, and at steps from the start.
    QList<qsizetype> lengths;
    const qsizetype end = whole.trimmed().size();
    for (qsizetype length = 1; length < end; length += end / 200 + 1)
        lengths.append(length);
    for (qsizetype cut = 2; cut < 30; ++cut)
        lengths.append(end - cut);
    for (const qsizetype length : lengths) {
        WriteBytes("cut.dat", whole.first(length));
        const QString fault = GetFault("cut.dat");
        QVERIFY2(fault.startsWith("cut.dat: "), qPrintable(QString("cut at %1 of %2").arg(length).arg(whole.size())));
    }
}

void TestOpenShapeFile::igesOfMissingLinesIsTold()
{
    WriteIges(MakeQuarter(), "whole.iges");
    QList<QByteArray> lines = ReadBytes("whole.iges").split('\n');
    lines.removeAt(lines.size() / 2);
    WriteBytes("missing.iges", lines.join('\n'));
    QVERIFY(GetFault("missing.iges")
                .startsWith("missing.iges: the IGES file announces another number of lines than it holds"));
}

void TestOpenShapeFile::damagedFileIsReadOrRefused_data()
{
    everyFormatGivesTheSameFace_data();
}

void TestOpenShapeFile::damagedFileIsReadOrRefused()
{
    QFETCH(QString, format);
    const TopoDS_Compound shape = MakeCompound({MakeQuarter(), MakePlate()});
    if (format == "STEP")
        WriteStep(shape, "sound.dat");
    else if (format == "IGES")
        WriteIges(shape, "sound.dat");
    else
        WriteBrep(shape, "sound.dat");
    const QByteArray sound = ReadBytes("sound.dat");
    QRandomGenerator random(7);
    int refused = 0;
    for (int n = 0; n < 60; ++n) {
        QByteArray damaged = sound;
        for (int k = 0; k <= n % 3; ++k)
            damaged[random.bounded(int(damaged.size()) - 200)] = char(random.bounded(32, 127));
        WriteBytes("damaged.dat", damaged);
        try {
            const ZETOpenShapeFile file("damaged.dat");
            for (int i = 0; i < file.GetNumFaces(); ++i)
                file.GetFace(i)->Project({10.0, 10.0, 10.0});
        } catch (const ZETSysException& exception) {
            QVERIFY(!exception.GetMessage().isEmpty());
            ++refused;
        }
    }
    QVERIFY(refused > 10);
}

void TestOpenShapeFile::numbersOutOfRangeAreTold()
{
    // Of the same length, because an IGES line has its columns.
    WriteIges(MakeQuarter(), "whole.iges");
    WriteBytes("huge.iges", ReadBytes("whole.iges").replace("6.123233996E-15", "6.123233996E815"));
    QCOMPARE(GetFault("huge.iges"), "huge.iges: the number 6.123233996E815 is too large");
    WriteStep(MakeQuarter(), "whole.step");
    WriteBytes("huge.step", ReadBytes("whole.step").replace("(100.,", "(1.E999,"));
    QCOMPARE(GetFault("huge.step"), "huge.step: the number 1.E999 is too large");
}

void TestOpenShapeFile::brepThatAnnouncesTooMuchIsTold()
{
    WriteBrep(MakeQuarter(), "whole.brep");
    const QByteArray whole = ReadBytes("whole.brep");
    for (const char* count : {"Curves 4", "Curve2ds 4", "Surfaces 1", "TShapes 10"}) {
        QVERIFY2(whole.contains(count), count);
        QByteArray changed = whole;
        // Within what is believed at first, then beyond it.
        WriteBytes("many.brep", changed.replace(count, QByteArray(count) + "99999"));
        QVERIFY(GetFault("many.brep").startsWith("many.brep: "));
        WriteBytes("many.brep", changed.replace(QByteArray(count) + "99999", QByteArray(count) + "99999999"));
        QVERIFY(GetFault("many.brep").contains("99999999 is too large"));
    }
}

void TestOpenShapeFile::fileThatCrashesTheKernelIsTold()
{
    // The first curve, a straight line, becomes one that is trimmed of another; and there is no other.
    WriteBrep(MakeQuarter(), "whole.brep");
    QByteArray brep = ReadBytes("whole.brep");
    const qsizetype first = brep.indexOf("\n1 ", brep.indexOf("\nCurves "));
    QVERIFY(first > 0);
    WriteBytes("crash.brep", brep.replace(first, 3, "\n8 "));
    QCOMPARE(GetFault("crash.brep"), "crash.brep: the CAD kernel crashes on it, so it is likely damaged");
}

void TestOpenShapeFile::placesFarOutOfAnyWorkshopAreTold()
{
    const auto getFault = [](const char* path, double scale) {
        return Thrown([&] { ZETOpenShapeFile(path, scale).GetSingleFace(); });
    };
    WriteBrep(MakePlate(), "far.brep");
    QCOMPARE(getFault("far.brep", 99e3), QString());
    QCOMPARE(getFault("far.brep", 101e3), "far.brep: a coordinate of 1.01e+07 mm is too large, at most 10 km are read");
    WriteBrep(BRepBuilderAPI_MakeEdge(gp_Pnt(0.0, 0.0, 0.0), gp_Pnt(0.0, 0.0, 12345678.5)), "edge.brep");
    const ZETOpenShapeFile edge("edge.brep");
    const ZETOpenShapeFile plate("far.brep");
    QVERIFY_THROWS_EXCEPTION(ZETSysException, edge.GetEdge(0, plate.GetSingleFace()));
}

void TestOpenShapeFile::bladeOfTheExample()
{
    const QString path = ZET_SOURCE_DIR "/examples/blade/tool_ss_r30_r40.step";
    const ZETOpenShapeFile file(path);
    QCOMPARE(file.GetFormat(), "STEP");
    QCOMPARE(file.GetUnitInMillimetres(), 1.0);
    const auto surface = file.GetSingleFace();
    const auto box = surface->GetBoundingBox();
    const ZETMathVector size = box.GetUpperPoint() - box.GetLowerPoint();
    QVERIFY(size.GetZ() > 11690.0 && size.GetZ() < 11710.0);
    // Corners of the first ply, which lie within half a millimetre of the face.
    for (const ZETMathPoint& point : {ZETMathPoint(723.23, 3315.74, 35100.0), ZETMathPoint(651.74, 3209.11, 38442.86)})
        QVERIFY(surface->GetDistanceTo(point) < 0.5);
}

QTEST_GUILESS_MAIN(TestOpenShapeFile)
#include "TestOpenShapeFile.moc"
