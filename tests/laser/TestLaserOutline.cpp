#include "laser/ZETLaserOutline.h"

#include "features/ZETLaser3DText.h"
#include "features/ZETLaserParameter.h"
#include "laser/ZETLaserEntityProperties.h"
#include "laser/ZETLaserGroup.h"
#include "laser/ZETLaserProcesses.h"
#include "laser/ZETLaserProcesses_p.h"
#include "laser/ZETLaserTextEntity.h"
#include "tests/support/TestJob.h"

#include <ZETComposites/ZETCompPly.h>
#include <ZETComposites/ZETCompRoot.h>
#include <ZETComposites/ZETCompSubPly.h>
#include <ZETMaterial/ZETMatMaterial.h>
#include <ZETMathematics/ZETMathAxis.h>

#include <QTest>

using namespace Qt::Literals::StringLiterals;
using ZETLaserOutline::Group;

namespace
{
const QString wing = uR"(
    partname Wing rootname WingRoot
    layup L1 {
      sequence S1 {
        ply P1 {
          material UD M-1
          contour Edge { closed Outer 0,0,0/0,0,1 10,0,0/0,0,1 10,5,0/0,0,1  open 1,2,3 4,5,6@4,5,7 }
          contour Arms { rosettecurve open Rosette 0,0,0 1,0,0 }
          parameter note "lay %PLY%"
          text "%PLY% of %LAYUP%" 1,2,3 1,0,0 0,1,0 12.5
          parameter 9 second
        }
        subply P1a { contour { open 0,0,0 1,0,0 } }
        nullply Lost { contour { open 0,0,0 } }
      }
    }
    group Loose { contour { open 7,8,9 } parameter message "as typed %PLY%" })"_s;

/*! The driver of \a job, with the job's tree as its own. */
ZETLaserProcesses& DriverOf(TestJob& job)
{
    ZETLaserProcesses& driver = *job.GetOptions().GetLaserProcesses();
    ZETLaserProcessesPrivate::Of(driver).root = job.GetTree();
    return driver;
}

QString Describe(const ZETMathPoint& point)
{
    return u"%1,%2,%3"_s.arg(point.GetX()).arg(point.GetY()).arg(point.GetZ());
}

QString Describe(const ZETMathVector& vector)
{
    return u"%1,%2,%3"_s.arg(vector.GetX()).arg(vector.GetY()).arg(vector.GetZ());
}

QString Describe(const ZETLaserOutline::Curve& curve)
{
    QString text = u"%1 source %2 %3:"_s.arg(curve.name).arg(curve.source).arg(curve.closed ? u"closed" : u"open");
    for (const ZETLaserOutline::Point& point : curve.points) {
        text += u' ' + Describe(point.position);
        if (point.normal)
            text += u'/' + Describe(*point.normal);
        if (point.offsetPoint)
            text += u'@' + Describe(*point.offsetPoint);
    }
    return text;
}

/*! The groups from \a group on, each by kind, name and count of points, and in braces what it holds. */
QString Describe(const Group& group)
{
    static const QStringList kinds{u"root"_s, u"layup"_s, u"sequence"_s, u"ply"_s, u"subply"_s, u"other"_s};
    QStringList groups;
    for (const Group& child : group.groups)
        groups.append(Describe(child));
    const QString below = groups.isEmpty() ? QString() : u" { "_s + groups.join(u' ') + u" }"_s;
    return kinds[static_cast<int>(group.kind)] + u' ' + group.name + u' ' + QString::number(group.pointCount) + below;
}
} // namespace

class TestLaserOutline : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void groupsStandInTreeOrderWithTheirKinds();
    void groupsNameWhatTheyComeFrom();
    void curvesAndPointsAreThoseOfTheTree();
    void textsAndParametersAreEvaluatedForTheirPly();
    void outsideOfAPlyTextsStayAsTyped();
    void textEntityWithoutATextHasNameAndSourceAlone();
    void outlineIsACopy();
    void emptyTreeIsARootAlone();
    void statisticsCountWhatIsWritten();

private:
    const Group& GetSequence() const { return outline.groups.first().groups.first(); }
    const Group& GetPly() const { return GetSequence().groups.first(); }

    std::unique_ptr<TestJob> job;
    Group outline;
};

void TestLaserOutline::init()
{
    job = std::make_unique<TestJob>(wing);
    outline = DriverOf(*job).GetOutline();
}

void TestLaserOutline::groupsStandInTreeOrderWithTheirKinds()
{
    // The ply has 3 + 2 + 2 points and 2 parameters; a text counts nothing.
    QCOMPARE(
        Describe(outline),
        u"root WingRoot 14 { layup L1 12 { sequence S1 12 { ply P1 9 subply P1a 2 ply Lost 1 } } other Loose 2 }"_s);
}

void TestLaserOutline::groupsNameWhatTheyComeFrom()
{
    const Group& ply = GetPly();
    QVERIFY(qobject_cast<const ZETCompPly*>(ply.feature));
    QCOMPARE(ply.feature->GetLabel(), u"P1"_s);
    QVERIFY(ply.material);
    QCOMPARE(ply.material->GetMaterialType(), u"UD"_s);
    QVERIFY(qobject_cast<const ZETCompSubPly*>(GetSequence().groups[1].feature));
    QVERIFY(!GetSequence().groups[2].feature); // a ply by its property, though the pointer in it is null
    QVERIFY(!outline.groups[1].feature);
    QVERIFY(!outline.groups[1].material);
}

void TestLaserOutline::curvesAndPointsAreThoseOfTheTree()
{
    const auto& contours = GetPly().contours;
    QCOMPARE(contours.size(), 2);
    QCOMPARE(contours[0].name, u"Edge"_s);
    QCOMPARE(contours[0].source, ZETLaserOptions::SourcePly);
    QCOMPARE(contours[0].curves.size(), 2);
    QCOMPARE(Describe(contours[0].curves[0]), u"Outer source 0 closed: 0,0,0/0,0,1 10,0,0/0,0,1 10,5,0/0,0,1"_s);
    QCOMPARE(Describe(contours[0].curves[1]), u" source 0 open: 1,2,3 4,5,6@4,5,7"_s);
    QCOMPARE(Describe(contours[0].curves[1].points[1].GetShownPoint()), u"4,5,7"_s);
    QCOMPARE(Describe(contours[0].curves[1].points[0].GetShownPoint()), u"1,2,3"_s);
    QCOMPARE(contours[1].name, u"Arms"_s);
    QCOMPARE(Describe(contours[1].curves[0]), u"Rosette source 2 open: 0,0,0 1,0,0"_s);
}

void TestLaserOutline::textsAndParametersAreEvaluatedForTheirPly()
{
    const Group& ply = GetPly();
    QCOMPARE(ply.parameters.size(), 2);
    QCOMPARE(ply.parameters[0].type, int(ZETLaserParameter::Note));
    QCOMPARE(ply.parameters[0].text, u"lay P1"_s);
    QCOMPARE(ply.parameters[0].feature->GetText(), u"lay %PLY%"_s);
    QCOMPARE(ply.parameters[1].type, 9);
    QCOMPARE(ply.parameters[1].text, u"second"_s);

    QCOMPARE(ply.texts.size(), 1);
    const auto& text = ply.texts.first();
    QCOMPARE(text.text, u"P1 of L1"_s);
    QCOMPARE(text.feature->GetText(), u"%PLY% of %LAYUP%"_s);
    QCOMPARE(Describe(text.basePoint), u"1,2,3"_s);
    QCOMPARE(Describe(text.baseDirection), u"1,0,0"_s);
    QCOMPARE(Describe(text.upDirection), u"0,1,0"_s);
    QCOMPARE(text.size, 12.5);
}

void TestLaserOutline::outsideOfAPlyTextsStayAsTyped()
{
    QCOMPARE(outline.groups[1].parameters.first().text, u"as typed %PLY%"_s);
}

void TestLaserOutline::textEntityWithoutATextHasNameAndSourceAlone()
{
    const auto group = QSharedPointer<ZETLaserGroup>::create(job->GetTree());
    const auto entity = QSharedPointer<ZETLaserTextEntity>::create(group, nullptr);
    entity->SetName(u"Extra"_s);
    entity->setProperty(ZETLaserEntityProperties::sourceType, int(ZETLaserOptions::SourceExtraGeometry));
    group->AddTextEntity(entity);
    job->GetTree()->AddGroup(group);
    const ZETLaserOutline::Text text = DriverOf(*job).GetOutline().groups.last().texts.first();
    QVERIFY(!text.feature);
    QVERIFY(text.text.isEmpty());
    QCOMPARE(text.name, u"Extra"_s);
    QCOMPARE(text.source, ZETLaserOptions::SourceExtraGeometry);
}

void TestLaserOutline::outlineIsACopy()
{
    job->GetTree()->Clear();
    QCOMPARE(GetPly().contours[0].curves[0].points.size(), 3);
}

void TestLaserOutline::emptyTreeIsARootAlone()
{
    TestJob empty(u"rootname Nothing"_s);
    QCOMPARE(Describe(DriverOf(empty).GetOutline()), u"root Nothing 0"_s);
}

void TestLaserOutline::statisticsCountWhatIsWritten()
{
    job = std::make_unique<TestJob>(
        u"ply P1 { contour { open 0,0,0 1,0,0@1,0,5 } parameter note n } ply Empty { contour { } } "
        u"ply P2 { subply P2a { contour { closed 0,-2,0 0,0,0 0,1,0 } } }"_s);
    const auto statistics = DriverOf(*job).GetStatistics(ZETMathAxis());
    QCOMPARE(statistics.plies, 2);
    QCOMPARE(statistics.subPlies, 1);
    QCOMPARE(statistics.points, 5);
    QCOMPARE(Describe(statistics.box.GetLowerPoint()), u"0,-2,0"_s);
    QCOMPARE(Describe(statistics.box.GetUpperPoint()), u"1,1,5"_s);
}

QTEST_GUILESS_MAIN(TestLaserOutline)
#include "TestLaserOutline.moc"
