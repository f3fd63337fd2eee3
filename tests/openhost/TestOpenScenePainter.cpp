#include "openhost/ZETVisualization/ZETOpenScenePainter.h"

#include <ZETVisualization/ZETVisEnvironment.h>
#include <ZETVisualization/ZETVisPointPrimitive.h>
#include <ZETVisualization/ZETVisPolylinePrimitive.h>
#include <ZETVisualization/ZETVisRepGraphics.h>
#include <ZETVisualization/ZETVisVirtualObject.h>

#include <QtTest>
#include <QXmlStreamReader>

#include <cmath>

using namespace Qt::Literals::StringLiterals;
using Points = QList<ZETMathPoint>;

namespace
{
ZETMathSetOfPoints MakeSet(const Points& points)
{
    ZETMathSetOfPoints set;
    set.points = points;
    return set;
}

ZETVisOptions MakeOptions(const QColor& color, int priority = 0)
{
    ZETVisOptions options;
    options.SetColor(color);
    options.SetLineThickness(3.0);
    options.SetPriority(priority);
    return options;
}

const ZETVisPrimitive* MakePairs(const Points& points)
{
    return new ZETVisPolylinePrimitive(MakeSet(points), ZETVisPolylinePrimitive::StructurePairs);
}

const ZETVisPrimitive* MakeRun(const Points& points)
{
    return new ZETVisPolylinePrimitive(MakeSet(points), ZETVisPolylinePrimitive::StructureRun);
}

ZETVisVirtualObject* Add(ZETVisEnvironment& scene, const QString& label,
                         const QList<const ZETVisPrimitive*>& primitives, const ZETVisOptions& options)
{
    auto* object = new ZETVisVirtualObject(&scene, nullptr);
    object->setObjectName(label);
    object->SetRep(new ZETVisRepGraphics(primitives, options));
    scene.AddVirtualObject(object);
    return object;
}

/*! What a stranger finds in a document. */
struct SvgContent {
    qint64 segments = 0;
    int dots = 0;
    int targets = 0;
    QStringList labels;
    QStringList linePaths;
    QStringList strokes; //!< of the line paths
    QStringList texts;
};

SvgContent Read(const QByteArray& document)
{
    SvgContent content;
    QXmlStreamReader xml(document);
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        const QXmlStreamAttributes attributes = xml.attributes();
        const auto kind = attributes.value(u"class"_s);
        if (kind == u"object"_s)
            content.labels.append(attributes.value(u"data-label"_s).toString());
        if (kind == u"lines"_s) {
            content.linePaths.append(attributes.value(u"d"_s).toString());
            content.segments += attributes.value(u"d"_s).count(u'L');
            content.strokes.append(attributes.value(u"stroke"_s).toString());
        }
        content.dots += kind == u"dot"_s;
        content.targets += kind == u"target"_s;
        if (xml.name() == u"text"_s)
            content.texts.append(xml.readElementText());
    }
    if (xml.hasError())
        qFatal("not well-formed: %s", qPrintable(xml.errorString()));
    return content;
}

ZETOpenTriangles MakeSquare(double side)
{
    const ZETMathVector up(0.0, 0.0, 1.0);
    return {
        {{0.0, 0.0, 0.0}, {side, 0.0, 0.0}, {side, side, 0.0}, {0.0, side, 0.0}}, {up, up, up, up}, {0, 1, 2, 0, 2, 3}};
}
} // namespace

/*! Pictures of a scene. What is on paper is looked for in the document, and by its colour in the image. */
class TestOpenScenePainter : public QObject
{
    Q_OBJECT
private slots:
    void documentHasEachSegmentAndMarkerOfTheScene();
    void hiddenObjectsAreNeitherDrawnNorCounted();
    void loosePointsAreNoSegments();
    void pathsKeepTheShape();
    void higherPriorityIsDrawnLater();
    void targetsHaveTheirNames();
    void namesWithOddLettersStayWhole();
    void imageShowsLinesInTheirColour();
    void imageShowsTheSurfaceBehindTheLines();
    void longPartsAreTurnedWhereThatShowsThemLarger();
    void scaleBarHasItsLength();
    void emptySceneGivesAPictureWithItsTitle();
    void sidesLookWhereTheySay_data();
    void sidesLookWhereTheySay();
    void sideFacingFollowsTheNormal();
};

void TestOpenScenePainter::documentHasEachSegmentAndMarkerOfTheScene()
{
    ZETVisEnvironment scene;
    ZETVisOptions dots = MakeOptions(Qt::green);
    ZETVisOptions targets = MakeOptions(Qt::green);
    targets.SetPointSymbol(ZETVisOptions::SymbolTarget);
    ZETVisOptions none = MakeOptions(Qt::green);
    none.SetPointSymbol(ZETVisOptions::SymbolNone);
    const Points four{{0.0, 0.0, 0.0}, {10.0, 0.0, 0.0}, {10.0, 5.0, 0.0}, {0.0, 5.0, 1.0}};
    Add(scene, u"pairs"_s, {MakePairs(four), MakePairs(four)}, MakeOptions(Qt::green)); // 2 + 2
    Add(scene, u"run"_s, {MakeRun(four)}, MakeOptions(Qt::red));                        // 3
    Add(scene, u"dots"_s, {new ZETVisPointPrimitive(MakeSet(four))}, dots);
    Add(scene, u"T"_s, {new ZETVisPointPrimitive(MakeSet(four.mid(0, 2)))}, targets);
    Add(scene, u"none"_s, {new ZETVisPointPrimitive(MakeSet(four))}, none);

    const SvgContent content = Read(ZETOpenScenePainter::WriteSvg(scene, {}));
    QCOMPARE(content.segments, 7);
    QCOMPARE(content.dots, 4);
    QCOMPARE(content.targets, 2);
    const ZETOpenScenePainter::Content expected{7, 6};
    QVERIFY(ZETOpenScenePainter::Count(scene) == expected);
    QCOMPARE(content.labels, QStringList({u"pairs"_s, u"run"_s, u"dots"_s, u"T"_s, u"none"_s}));
}

void TestOpenScenePainter::hiddenObjectsAreNeitherDrawnNorCounted()
{
    ZETVisEnvironment scene;
    Add(scene, u"shown"_s, {MakeRun({{0.0, 0.0, 0.0}, {1.0, 0.0, 0.0}})}, MakeOptions(Qt::green));
    Add(scene, u"hidden"_s, {MakeRun({{0.0, 0.0, 0.0}, {1.0, 0.0, 0.0}})}, MakeOptions(Qt::green))
        ->SetVisibility(false);
    QCOMPARE(Read(ZETOpenScenePainter::WriteSvg(scene, {})).labels, QStringList{u"shown"_s});
    QCOMPARE(ZETOpenScenePainter::Count(scene).segments, 1);
}

void TestOpenScenePainter::loosePointsAreNoSegments()
{
    ZETVisEnvironment scene;
    const ZETMathPoint point(1.0, 2.0, 3.0);
    Add(scene, u"loose"_s, {MakePairs({point}), MakePairs({point, point, point}), MakeRun({point}), MakeRun({})},
        MakeOptions(Qt::green));
    QCOMPARE(Read(ZETOpenScenePainter::WriteSvg(scene, {})).segments, 1); // that of the two equal points
    QCOMPARE(ZETOpenScenePainter::Count(scene).segments, 1);
}

void TestOpenScenePainter::pathsKeepTheShape()
{
    ZETVisEnvironment scene;
    Add(scene, u"square"_s, {MakeRun({{0.0, 0.0, 0.0}, {100.0, 0.0, 0.0}, {100.0, 100.0, 0.0}, {0.0, 100.0, 0.0}})},
        MakeOptions(Qt::green));
    ZETOpenPicture picture;
    picture.size = QSize(1080, 1110); // less the margins: 1000 x 1000
    QCOMPARE(Read(ZETOpenScenePainter::WriteSvg(scene, picture)).linePaths,
             QStringList{u"M40.00,1040.00L1040.00,1040.00L1040.00,40.00L40.00,40.00"_s});
}

void TestOpenScenePainter::higherPriorityIsDrawnLater()
{
    ZETVisEnvironment scene;
    const Points points{{0.0, 0.0, 0.0}, {1.0, 0.0, 0.0}};
    Add(scene, u"late"_s, {MakeRun(points)}, MakeOptions(QColor(1, 0, 0), 100));
    Add(scene, u"early"_s, {MakeRun(points)}, MakeOptions(QColor(2, 0, 0), 10));
    Add(scene, u"late too"_s, {MakeRun(points)}, MakeOptions(QColor(3, 0, 0), 100));
    QCOMPARE(Read(ZETOpenScenePainter::WriteSvg(scene, {})).strokes,
             QStringList({u"#020000"_s, u"#010000"_s, u"#030000"_s}));
}

void TestOpenScenePainter::targetsHaveTheirNames()
{
    ZETVisEnvironment scene;
    ZETVisOptions options = MakeOptions(Qt::green);
    options.SetPointSymbol(ZETVisOptions::SymbolTarget);
    Add(scene, u"Target 1"_s, {new ZETVisPointPrimitive(MakeSet({{0.0, 0.0, 0.0}}))}, options);
    options.SetPointSymbol(ZETVisOptions::SymbolDot);
    Add(scene, u"dot"_s, {new ZETVisPointPrimitive(MakeSet({{9.0, 0.0, 0.0}}))}, options);
    const QStringList texts = Read(ZETOpenScenePainter::WriteSvg(scene, {})).texts;
    QVERIFY(texts.contains(u"Target 1"_s));
    QVERIFY(!texts.contains(u"dot"_s));
}

void TestOpenScenePainter::namesWithOddLettersStayWhole()
{
    ZETVisEnvironment scene;
    const QString odd = u"<P1> & \"Größe\" ]]>"_s;
    Add(scene, odd, {MakeRun({{0.0, 0.0, 0.0}, {1.0, 0.0, 0.0}})}, MakeOptions(Qt::green));
    ZETOpenPicture picture;
    picture.title = odd;
    const SvgContent content = Read(ZETOpenScenePainter::WriteSvg(scene, picture));
    QCOMPARE(content.labels, QStringList{odd});
    QCOMPARE(content.texts.value(0), odd);
}

void TestOpenScenePainter::imageShowsLinesInTheirColour()
{
    ZETVisEnvironment scene;
    const QColor color(10, 250, 20);
    Add(scene, u"frame"_s, {MakeRun({{0.0, 0.0, 0.0}, {100.0, 0.0, 0.0}, {100.0, 100.0, 0.0}, {0.0, 100.0, 0.0}})},
        MakeOptions(color));
    ZETOpenPicture picture;
    picture.size = QSize(1080, 1110);
    const QImage image = ZETOpenScenePainter::PaintImage(scene, picture);
    QCOMPARE(image.size(), picture.size);
    QCOMPARE(image.pixelColor(540, 1040), color); // the first side is below
    QCOMPARE(image.pixelColor(1040, 540), color);
    QCOMPARE(image.pixelColor(540, 40), color);
    QVERIFY(image.pixelColor(40, 540) != color); // the run isn't closed
    QVERIFY(image.pixelColor(540, 540) != color);
}

void TestOpenScenePainter::imageShowsTheSurfaceBehindTheLines()
{
    ZETVisEnvironment scene;
    const QColor color(10, 250, 20);
    Add(scene, u"middle"_s, {MakeRun({{0.0, 50.0, -10.0}, {100.0, 50.0, -10.0}})}, MakeOptions(color));
    ZETOpenPicture picture;
    picture.size = QSize(1080, 1110);
    const QImage before = ZETOpenScenePainter::PaintImage(scene, picture);
    picture.surfaces = {MakeSquare(100.0)};
    const QImage image = ZETOpenScenePainter::PaintImage(scene, picture);
    QCOMPARE(image.pixelColor(540, 540), color);
    QVERIFY(image.pixelColor(540, 300) != before.pixelColor(540, 300));
    QCOMPARE(image.pixelColor(540, 300), image.pixelColor(300, 700)); // flat, so one shade
}

void TestOpenScenePainter::longPartsAreTurnedWhereThatShowsThemLarger()
{
    ZETVisEnvironment scene;
    Add(scene, u"tall"_s, {MakeRun({{0.0, 0.0, 0.0}, {0.0, 100.0, 0.0}})}, MakeOptions(Qt::green));
    ZETOpenPicture picture;
    picture.size = QSize(1080, 510);
    // Clockwise: what was below lies on the left.
    QCOMPARE(Read(ZETOpenScenePainter::WriteSvg(scene, picture)).linePaths,
             QStringList{u"M40.00,240.00L1040.00,240.00"_s});
    picture.size = QSize(510, 1110);
    QCOMPARE(Read(ZETOpenScenePainter::WriteSvg(scene, picture)).linePaths,
             QStringList{u"M255.00,1040.00L255.00,40.00"_s});
}

void TestOpenScenePainter::scaleBarHasItsLength()
{
    ZETVisEnvironment scene;
    Add(scene, u"line"_s, {MakeRun({{0.0, 0.0, 0.0}, {2000.0, 0.0, 0.0}})}, MakeOptions(Qt::green));
    ZETOpenPicture picture;
    picture.size = QSize(1080, 600); // half a pixel for a mm
    const QByteArray document = ZETOpenScenePainter::WriteSvg(scene, picture);
    QVERIFY(Read(document).texts.contains(u"200 mm"_s)); // a fifth of the width would be 432 mm
    QVERIFY(document.contains("d=\"M40.00,560.00L140.00,560.00\""));
}

void TestOpenScenePainter::emptySceneGivesAPictureWithItsTitle()
{
    const ZETVisEnvironment scene;
    ZETOpenPicture picture;
    picture.title = u"Nothing"_s;
    picture.captions = {u"at all"_s};
    QCOMPARE(Read(ZETOpenScenePainter::WriteSvg(scene, picture)).texts, QStringList({u"Nothing"_s, u"at all"_s}));
    QCOMPARE(ZETOpenScenePainter::PaintImage(scene, picture).size(), picture.size);
    QVERIFY(ZETOpenScenePainter::Count(scene) == ZETOpenScenePainter::Content{});
}

void TestOpenScenePainter::sidesLookWhereTheySay_data()
{
    QTest::addColumn<int>("side");
    QTest::addColumn<ZETMathVector>("toEye");
    QTest::addColumn<ZETMathVector>("up");
    const double third = std::sqrt(1.0 / 3.0);
    const double sixth = std::sqrt(1.0 / 6.0);
    QTest::newRow("top") << 0 << ZETMathVector(0, 0, 1) << ZETMathVector(0, 1, 0);
    QTest::newRow("bottom") << 1 << ZETMathVector(0, 0, -1) << ZETMathVector(0, -1, 0);
    QTest::newRow("front") << 2 << ZETMathVector(0, -1, 0) << ZETMathVector(0, 0, 1);
    QTest::newRow("back") << 3 << ZETMathVector(0, 1, 0) << ZETMathVector(0, 0, 1);
    QTest::newRow("left") << 4 << ZETMathVector(-1, 0, 0) << ZETMathVector(0, 0, 1);
    QTest::newRow("right") << 5 << ZETMathVector(1, 0, 0) << ZETMathVector(0, 0, 1);
    QTest::newRow("oblique") << 6 << ZETMathVector(third, -third, third) << ZETMathVector(-sixth, sixth, 2.0 * sixth);
}

void TestOpenScenePainter::sidesLookWhereTheySay()
{
    QFETCH(int, side);
    QFETCH(ZETMathVector, toEye);
    QFETCH(ZETMathVector, up);
    QCOMPARE(ZETOpenView::GetSideNames().value(side), QString::fromLatin1(QTest::currentDataTag()));
    const ZETOpenView view(static_cast<ZETOpenView::Side>(side));
    QVERIFY((view.GetToEye() - toEye).GetSquaredMagnitude() < 1e-20);
    QVERIFY((view.GetUp() - up).GetSquaredMagnitude() < 1e-20);
    const ZETMathPoint ahead = ZETMathPoint() + up * 2.0 + toEye * 5.0;
    QVERIFY(std::abs(view.Project(ahead).x()) < 1e-12);
    QVERIFY(std::abs(view.Project(ahead).y() - 2.0) < 1e-12);
    QVERIFY(std::abs(view.GetDepth(ahead) - 5.0) < 1e-12);
}

void TestOpenScenePainter::sideFacingFollowsTheNormal()
{
    QCOMPARE(ZETOpenView::GetSideFacing({0.1, -0.2, 0.9}), ZETOpenView::Top);
    QCOMPARE(ZETOpenView::GetSideFacing({0.1, -0.2, -0.9}), ZETOpenView::Bottom);
    QCOMPARE(ZETOpenView::GetSideFacing({0.1, -2.0, -0.9}), ZETOpenView::Front);
    QCOMPARE(ZETOpenView::GetSideFacing({-3.0, -2.0, -0.9}), ZETOpenView::Left);
    QCOMPARE(ZETOpenView::GetSideFacing({}), ZETOpenView::Top);
}

QTEST_MAIN(TestOpenScenePainter)
#include "TestOpenScenePainter.moc"
