#include "features/ZETLaser3DTextByAxis.h"
#include "features/ZETLaser3DTextOnSupport.h"
#include "features/ZETLaserParameter.h"
#include "laser/ZETLaserContour.h"
#include "laser/ZETLaserCurve.h"
#include "laser/ZETLaserEntityProperties.h"
#include "laser/ZETLaserParameterEntity.h"
#include "laser/ZETLaserTextEntity.h"
#include "openhost/ZETGeometry/ZETOpenComboCurve.h"
#include "reader/ZETLaserReaderComposites.h"
#include "tests/reader/ReaderModel.h"

#include <ZETComposites/ZETCompFlatPoint.h>
#include <ZETFeature/ZETFeatFolder.h>
#include <ZETMathematics/ZETMathAxis.h>
#include <ZETTopology/ZETTopBody.h>
#include <ZETWireframe/ZETWFAxisSystem.h>

#include <QtTest>

using namespace Qt::Literals::StringLiterals;
using namespace ZETOpenComposites;

namespace
{

QStringList logLines;

void KeepLogLine(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    if (type == QtDebugMsg)
        logLines << text + (context.file || context.function || context.line ? u" with a place"_s : QString());
}

/*! Keeps the debug log for as long as it lives. */
class LogCapture
{
public:
    LogCapture()
        : old(qInstallMessageHandler(KeepLogLine))
    {
        logLines.clear();
    }
    ~LogCapture() { qInstallMessageHandler(old); }

private:
    Q_DISABLE_COPY_MOVE(LogCapture)
    QtMessageHandler old;
};

/*! One ply with one extra geometry feature, which is empty. */
class ExtraModel : public ReaderModel
{
public:
    ExtraModel()
        : ReaderModel(u"layup L { sequence S { ply P { strategy One { pattern Flat } } extra X:all } }"_s)
    {
        delete Get<ZETLaserParameter>(u"parameter"_s);
    }
    ZETLaserExtraGeometry* Extra() { return Get<ZETLaserExtraGeometry>(u"X"_s); }
    ZETOpenGeometryFeature* AddTo(ZETFeatObject* parent, const QString& label, std::unique_ptr<ZETTopBody> body)
    {
        auto* const feature = Add<ZETOpenGeometryFeature>(parent, label);
        feature->SetBody(std::move(body));
        return feature;
    }
    ZETOpenGeometryFeature* AddLine(const QString& label)
    {
        return AddTo(Extra(), label, ZETOpenBodyBuilder::MakePolyline({{0.0, 0.0, 1.0}, {9.0, 0.0, 1.0}}, false));
    }
    /*! The entities behind the ply's contour. */
    QList<QSharedPointer<ZETLaserEntity>> ReadEntities()
    {
        Read();
        return Group(u"P"_s)->GetChildren().mid(1);
    }
    QSharedPointer<ZETLaserContour> ReadContour()
    {
        const auto contour = qSharedPointerObjectCast<ZETLaserContour>(ReadEntities().value(0));
        return contour ? contour : QSharedPointer<ZETLaserContour>::create(nullptr);
    }
};

QString Names(const ZETLaserContour& contour)
{
    QStringList names;
    for (const auto& curve : contour.GetCurves())
        names << curve->GetName();
    return names.join(u", "_s);
}

} // namespace

class TestReaderExtraGeometry : public QObject
{
    Q_OBJECT

private slots:
    void anEmptyFeatureAddsNothing();
    void descendantsBecomeEntitiesInTheirOrder();
    void entitiesHoldTheirFeatures();
    void theSourceStandsOnTheContourAndNotOnItsCurves();
    void whatIsNotSupportedCostsALineOfTheLog();
    void netsOfOneGeometryShareTheirName();
    void closedNetsAreClosedCurves();
    void longSegmentsAreCut();
    void aGeometryWithoutNetsLeavesItsContourEmpty_data();
    void aGeometryWithoutNetsLeavesItsContourEmpty();
    void extraGeometryStaysInModelCoordinates();
    void pointsHaveNoNormalsInSpaceEither();
    void namesAreFilledInOneAfterTheOther();
    void eachPlyHasEntitiesOfItsOwn();
    void extraGeometryComesAheadIfTheRosetteDoes();
};

void TestReaderExtraGeometry::anEmptyFeatureAddsNothing()
{
    ExtraModel model;
    const LogCapture capture;
    QCOMPARE(model.ReadEntities().size(), 0);
    QVERIFY(logLines.isEmpty());
}

void TestReaderExtraGeometry::descendantsBecomeEntitiesInTheirOrder()
{
    ExtraModel model;
    ZETLaserExtraGeometry* const extra = model.Extra();
    ReaderModel::Add<ZETLaser3DTextOnSupport>(extra, u"T"_s);
    model.AddLine(u"G"_s);
    auto* const folder = ReaderModel::Add<ZETFeatFolder>(extra, u"F"_s);
    ReaderModel::Add<ZETLaserParameter>(folder, u"Q"_s);
    ReaderModel::Add<ZETLaser3DTextByAxis>(folder, u"U"_s);
    ReaderModel::Add<ZETLaserParameter>(extra, u"R"_s);
    const LogCapture capture;
    QStringList classes;
    for (const auto& entity : model.ReadEntities()) {
        classes << QString::fromLatin1(entity->metaObject()->className());
        QCOMPARE(entity->GetName(), u"X"_s);
        QCOMPARE(entity->property(ZETLaserEntityProperties::sourceType), QVariant(1));
        QCOMPARE(entity->parent(), model.Group(u"P"_s).data());
    }
    QCOMPARE(classes, (QStringList{u"ZETLaserTextEntity"_s, u"ZETLaserContour"_s, u"ZETLaserParameterEntity"_s,
                                   u"ZETLaserTextEntity"_s, u"ZETLaserParameterEntity"_s}));
}

void TestReaderExtraGeometry::entitiesHoldTheirFeatures()
{
    ExtraModel model;
    auto* const parameter = ReaderModel::Add<ZETLaserParameter>(model.Extra(), u"Q"_s);
    auto* const byAxis = ReaderModel::Add<ZETLaser3DTextByAxis>(model.Extra(), u"T"_s);
    auto* const onSupport = ReaderModel::Add<ZETLaser3DTextOnSupport>(model.Extra(), u"U"_s);
    const auto entities = model.ReadEntities();
    QCOMPARE(entities.size(), 3);
    QCOMPARE(qSharedPointerObjectCast<ZETLaserParameterEntity>(entities.at(0))->GetParameter(), parameter);
    QCOMPARE(qSharedPointerObjectCast<ZETLaserTextEntity>(entities.at(1))->GetText(), byAxis);
    QCOMPARE(qSharedPointerObjectCast<ZETLaserTextEntity>(entities.at(2))->GetText(), onSupport);
}

void TestReaderExtraGeometry::theSourceStandsOnTheContourAndNotOnItsCurves()
{
    ExtraModel model;
    model.AddLine(u"G"_s);
    const auto contour = model.ReadContour();
    QCOMPARE(contour->property(ZETLaserEntityProperties::sourceType), QVariant(1));
    QCOMPARE(contour->property(ZETLaserEntityProperties::sourceType).metaType(), QMetaType(QMetaType::Int));
    QCOMPARE(Names(*contour), u"G contour 1"_s);
    QVERIFY(contour->GetCurves().first()->dynamicPropertyNames().isEmpty());
}

void TestReaderExtraGeometry::whatIsNotSupportedCostsALineOfTheLog()
{
    ExtraModel model;
    auto* const folder = ReaderModel::Add<ZETFeatFolder>(model.Extra(), u"Sub %1 "_s);
    ReaderModel::Add<ZETLaserParameter>(folder, u"Q"_s);
    ReaderModel::Add<ZETWFAxisSystem>(model.Extra(), u"\"A\""_s);
    const LogCapture capture;
    QCOMPARE(model.ReadEntities().size(), 1);
    // Meant: the line never names the class that isn't supported.
    QCOMPARE(logLines,
             (QStringList{u"   is a not supported in ZETLaserReaderComposites::ReadExtraGeometry() QObject Sub %1 "_s,
                          u"   is a not supported in ZETLaserReaderComposites::ReadExtraGeometry() QObject \"A\""_s}));
    QCOMPARE(model.Messages(), QString());
}

void TestReaderExtraGeometry::netsOfOneGeometryShareTheirName()
{
    ExtraModel model;
    ZETOpenBodyBuilder builder;
    for (const double y : {0.0, 1.0, 2.0})
        builder.AddNet({{ZETOpenComboCurve::MakePolyline({{0.0, y, 0.0}, {1.0, y, 0.0}}), false}});
    model.AddTo(model.Extra(), u"G"_s, builder.Build());
    const auto contour = model.ReadContour();
    QCOMPARE(model.ReadEntities().size(), 1);
    QCOMPARE(Names(*contour), u"G contour 1, G contour 1, G contour 1"_s);
    QCOMPARE(PointsText(*contour->GetCurves().last()), u"0,2,0 1,2,0"_s);
}

void TestReaderExtraGeometry::closedNetsAreClosedCurves()
{
    ExtraModel model;
    model.AddTo(model.Extra(), u"G"_s,
                ZETOpenBodyBuilder::MakePolyline({{0.0, 0.0, 0.0}, {4.0, 0.0, 0.0}, {4.0, 3.0, 0.0}}, true));
    const auto contour = model.ReadContour();
    QCOMPARE(contour->GetCurves().first()->IsClosed(), true);
    QCOMPARE(PointsText(*contour->GetCurves().first()), u"0,0,0 4,0,0 4,3,0 0,0,0"_s);
}

void TestReaderExtraGeometry::longSegmentsAreCut()
{
    ExtraModel model;
    model.AddLine(u"G"_s);
    model.options.SetUseMaxLength(true);
    model.options.SetMaxLength(3.0);
    QCOMPARE(PointsText(*model.ReadContour()->GetCurves().first()), u"0,0,1 3,0,1 6,0,1 9,0,1 9,0,1"_s);
}

void TestReaderExtraGeometry::aGeometryWithoutNetsLeavesItsContourEmpty_data()
{
    QTest::addColumn<int>("kind");
    QTest::newRow("no body") << 0;
    QTest::newRow("a point") << 1;
    QTest::newRow("a face") << 2;
    QTest::newRow("nothing") << 3;
}

void TestReaderExtraGeometry::aGeometryWithoutNetsLeavesItsContourEmpty()
{
    QFETCH(int, kind);
    ExtraModel model;
    std::unique_ptr<ZETTopBody> body;
    if (kind == 1)
        body = ZETOpenBodyBuilder::MakePoint(ZETMathPoint(1.0, 2.0, 3.0));
    else if (kind == 2)
        body = ZETOpenBodyBuilder::MakeFace(MakeFlatTool());
    else if (kind == 3)
        body = ZETOpenBodyBuilder().Build();
    model.AddTo(model.Extra(), u"G"_s, std::move(body));
    const LogCapture capture;
    const auto entities = model.ReadEntities();
    QCOMPARE(entities.size(), 1);
    const auto contour = qSharedPointerObjectCast<ZETLaserContour>(entities.first());
    QVERIFY(contour);
    QCOMPARE(contour->GetName(), u"X"_s);
    QCOMPARE(contour->GetCurves().size(), 0);
    QCOMPARE(model.Messages(), QString());
    QVERIFY(logLines.isEmpty());
}

void TestReaderExtraGeometry::extraGeometryStaysInModelCoordinates()
{
    ExtraModel model;
    model.AddLine(u"G"_s);
    model.AddTable(u"L"_s);
    for (int type = 0; type < 4; ++type) {
        model.options.SetOutputType(static_cast<ZETLaserOptions::EOutputType>(type));
        QCOMPARE(PointsText(*model.ReadContour()->GetCurves().first()), u"0,0,1 9,0,1"_s);
    }
}

void TestReaderExtraGeometry::pointsHaveNoNormalsInSpaceEither()
{
    ExtraModel model;
    model.AddLine(u"G"_s);
    const auto curve = model.ReadContour()->GetCurves().first();
    QCOMPARE(curve->GetPointCount(), 2);
    for (const ZETLaserPoint& point : std::as_const(*curve).GetPoints())
        QVERIFY(!point.HasNormal());
}

void TestReaderExtraGeometry::namesAreFilledInOneAfterTheOther()
{
    ExtraModel model;
    model.AddLine(u"A %1 B"_s);
    QCOMPARE(Names(*model.ReadContour()), u"A 1 B contour %2"_s);
}

void TestReaderExtraGeometry::eachPlyHasEntitiesOfItsOwn()
{
    ReaderModel model(u"layup L { extra X:parent sequence S { ply P ply Q } }"_s);
    QVERIFY(model.Read());
    const auto first = model.Group(u"P"_s)->GetChildren().last();
    const auto second = model.Group(u"Q"_s)->GetChildren().last();
    QVERIFY(first != second);
    QCOMPARE(qSharedPointerObjectCast<ZETLaserParameterEntity>(first)->GetParameter(),
             qSharedPointerObjectCast<ZETLaserParameterEntity>(second)->GetParameter());
}

void TestReaderExtraGeometry::extraGeometryComesAheadIfTheRosetteDoes()
{
    // It lands in the group and the boundaries in the contour, so only what is told on the way shows the order.
    ExtraModel model;
    ReaderModel::Add<ZETFeatFolder>(model.Extra(), u"F"_s);
    SetBoundaryCurves(*model.Ply(u"P"_s), {nullptr});
    const auto linesAtMessage = [&](bool first) {
        qsizetype count = -1;
        model.ListenToMessages([&](const QString&) { count = logLines.size(); });
        logLines.clear();
        model.options.SetRosetteBeforePlyGeometry(first);
        model.Read();
        return count;
    };
    const LogCapture capture;
    QCOMPARE(linesAtMessage(false), 0);
    QCOMPARE(linesAtMessage(true), 1);
}

QTEST_GUILESS_MAIN(TestReaderExtraGeometry)
#include "TestReaderExtraGeometry.moc"
