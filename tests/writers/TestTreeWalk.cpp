#include "writers/ZETLaserTreeWalk.h"

#include "laser/ZETLaserEntityProperties.h"
#include "tests/support/TestJob.h"
#include "writers/ZETLaserTargetWalk.h"

#include <QStringList>
#include <QtTest>

using namespace Qt::Literals::StringLiterals;

namespace
{
/*! Keeps what the walk calls, as one word each. */
class Recorder
{
public:
    bool OpensLayer(const ZETLaserGroup& group)
    {
        events += u"opens?"_s + group.GetName();
        return layers.contains(group.GetName());
    }
    void BeginLayer(const ZETLaserGroup& group) { events += u"layer+"_s + group.GetName(); }
    void EndLayer(const ZETLaserGroup& group) { events += u"layer-"_s + group.GetName(); }
    void BeginLeaf(const ZETLaserGroup& group) { events += u"leaf+"_s + group.GetName(); }
    void EndLeaf(const ZETLaserGroup& group) { events += u"leaf-"_s + group.GetName(); }
    bool WritesTextsFirst() const { return textsFirst; }
    void WriteParameters(const ZETLaserGroup& group) { events += u"parameters:"_s + group.GetName(); }
    void WriteTexts(const ZETLaserGroup& group) { events += u"texts:"_s + group.GetName(); }
    void WriteContour(const ZETLaserContour& contour)
    {
        events += u"contour:"_s + contour.GetName();
        ZETLaserTreeWalk::Curves(contour, *this);
    }
    void WriteCurve(const ZETLaserCurve& curve)
    {
        events += u"curve:"_s + curve.GetName() + u'(' + QString::number(ZETLaserTreeWalk::CountPoints(curve)) + u')';
        ZETLaserTreeWalk::Points(curve, *this);
    }
    void WritePoint(const ZETLaserPoint& point) { events += QString::number(point.GetPosition().GetX()); }

    QStringList layers;
    bool textsFirst = false;
    QStringList events;
};

QString Walk(const QString& text, Recorder recorder = {})
{
    const auto root = ParseTree(text);
    ZETLaserTreeWalk::Root(*root, recorder);
    return recorder.events.join(u' ');
}
} // namespace

class TestTreeWalk : public QObject
{
    Q_OBJECT

private slots:
    void theRootItselfIsNoGroupOfTheFile();
    void groupsWithoutPointsAreSkippedWhole();
    void aParameterKeepsItsGroup();
    void aLayerEnclosesWhatTheGroupHolds();
    void leavesOfTheRootArePassedOver();
    void aLeafTakesItsChildrenByKind();
    void textsFirstPutsThemAheadOfTheContours();
    void contoursAndCurvesWithoutPointsAreSkipped();
    void aClosedCurveRepeatsItsFirstPoint();
    void aClosedCurveOfOnePointDoesNot();
    void theWalkDetachesNothing();
    void targetsOfAJobWithoutProjectorsAreThoseOfOne();
    void nullTargetsUseUpTheirIndex();
    void projectorsKeepTheirIndexBesideNulls();
};

void TestTreeWalk::theRootItselfIsNoGroupOfTheFile()
{
    QCOMPARE(Walk(u"rootname R group A { contour { open 1,0,0 } } group B { contour { open 2,0,0 } }"_s),
             u"opens?A leaf+A contour: curve:(1) 1 parameters:A texts:A leaf-A "
             "opens?B leaf+B contour: curve:(1) 2 parameters:B texts:B leaf-B"_s);
}

void TestTreeWalk::groupsWithoutPointsAreSkippedWhole()
{
    QCOMPARE(Walk(u""_s), u""_s);
    QCOMPARE(Walk(u"group A { }"_s), u""_s);
    QCOMPARE(Walk(u"group A { group B { contour { open closed } } group C { } }"_s), u""_s);
    QCOMPARE(Walk(u"ply P { text T 0,0,0 1,0,0 0,1,0 5 }"_s), u""_s); // texts don't count
    QCOMPARE(Walk(u"group A { group B { } group C { contour { open 3,0,0 } } }"_s),
             u"opens?A opens?C leaf+C contour: curve:(1) 3 parameters:C texts:C leaf-C"_s);
}

void TestTreeWalk::aParameterKeepsItsGroup()
{
    QCOMPARE(Walk(u"group A { parameter message M }"_s), u"opens?A leaf+A parameters:A texts:A leaf-A"_s);
}

void TestTreeWalk::aLayerEnclosesWhatTheGroupHolds()
{
    Recorder recorder;
    recorder.layers = QStringList{u"A"_s, u"C"_s};
    QCOMPARE(Walk(u"group A { group B { contour { open 1,0,0 } } group C { contour { open 2,0,0 } } }"_s, recorder),
             u"opens?A layer+A "
             "opens?B leaf+B contour: curve:(1) 1 parameters:B texts:B leaf-B "
             "opens?C layer+C leaf+C contour: curve:(1) 2 parameters:C texts:C leaf-C layer-C "
             "layer-A"_s);
}

void TestTreeWalk::leavesOfTheRootArePassedOver()
{
    const auto tree = ParseTree(u"group A { contour { open 1,0,0 } parameter message M }"_s);
    const auto root = tree->GetChildren().first().staticCast<ZETLaserGroup>(); // walked as a root that holds leaves
    QCOMPARE(root->GetPointCount(), 2);
    Recorder recorder;
    ZETLaserTreeWalk::Root(*root, recorder);
    QCOMPARE(recorder.events, QStringList());
}

void TestTreeWalk::aLeafTakesItsChildrenByKind()
{
    QCOMPARE(Walk(u"ply P { contour C1 { open 1,0,0 } parameter message M text T 0,0,0 1,0,0 0,1,0 5 "
                  "contour C2 { open 2,0,0 } }"_s),
             u"opens?P leaf+P contour:C1 curve:(1) 1 contour:C2 curve:(1) 2 parameters:P texts:P leaf-P"_s);
}

void TestTreeWalk::textsFirstPutsThemAheadOfTheContours()
{
    Recorder recorder;
    recorder.textsFirst = true;
    QCOMPARE(Walk(u"ply P { contour C1 { open 1,0,0 } contour C2 { open 2,0,0 } }"_s, recorder),
             u"opens?P leaf+P parameters:P texts:P contour:C1 curve:(1) 1 contour:C2 curve:(1) 2 leaf-P"_s);
}

void TestTreeWalk::contoursAndCurvesWithoutPointsAreSkipped()
{
    QCOMPARE(
        Walk(u"ply P { contour C1 { open A closed B } contour C2 { closed C open D 1,0,0 2,0,0 } contour C3 { } }"_s),
        u"opens?P leaf+P contour:C2 curve:D(2) 1 2 parameters:P texts:P leaf-P"_s);
}

void TestTreeWalk::aClosedCurveRepeatsItsFirstPoint()
{
    QCOMPARE(
        Walk(u"ply P { contour { closed A 1,0,0 2,0,0 3,0,0 closed B 4,0,0 5,0,0 open C 6,0,0 7,0,0 } }"_s),
        u"opens?P leaf+P contour: curve:A(4) 1 2 3 1 curve:B(3) 4 5 4 curve:C(2) 6 7 parameters:P texts:P leaf-P"_s);
}

void TestTreeWalk::aClosedCurveOfOnePointDoesNot()
{
    QCOMPARE(Walk(u"ply P { contour { closed A 1,0,0 } }"_s),
             u"opens?P leaf+P contour: curve:A(1) 1 parameters:P texts:P leaf-P"_s);
}

void TestTreeWalk::theWalkDetachesNothing()
{
    const auto root = ParseTree(u"ply P { contour { closed 1,0,0 2,0,0 3,0,0 } }"_s);
    const auto leaf = root->GetChildren().first().staticCast<ZETLaserGroup>();
    const auto contour = leaf->GetChildren().first().staticCast<ZETLaserContour>();
    const auto curve = contour->GetCurves().first();
    const auto curves = std::as_const(*contour).GetCurves(); // shared from here on: a write would detach
    const auto points = std::as_const(*curve).GetPoints();
    Recorder recorder;
    ZETLaserTreeWalk::Root(*root, recorder);
    QCOMPARE(std::as_const(*contour).GetCurves().constData(), curves.constData());
    QCOMPARE(std::as_const(*curve).GetPoints().constData(), points.constData());
}

namespace
{
QString WalkAll(const QList<ZETLaserTarget*>& targets, const QList<const ZETLaserProjector*>& projectors)
{
    QStringList events;
    const auto counts = WalkTargets(
        targets, projectors,
        [&](int projector, qsizetype count) { events += u"projector%1(%2)"_s.arg(projector).arg(count); },
        [&](const ZETLaserTarget& target, int index, int projector) {
            events += u"%1/%2:%3"_s.arg(projector).arg(index).arg(target.GetLabel());
        });
    events += u"=%1,%2"_s.arg(counts.targets).arg(counts.projectors);
    return events.join(u' ');
}
} // namespace

void TestTreeWalk::targetsOfAJobWithoutProjectorsAreThoseOfOne()
{
    TestJob job(u"target A 0,0,0 target B 0,0,0"_s);
    QCOMPARE(WalkAll(job.GetTargets(), {}), u"projector0(2) 0/0:A 0/1:B =2,0"_s);
    QCOMPARE(WalkAll({}, {}), u"projector0(0) =0,0"_s);
}

void TestTreeWalk::nullTargetsUseUpTheirIndex()
{
    TestJob job(u"target A 0,0,0 target B 0,0,0"_s);
    QCOMPARE(WalkAll({job.GetTargets()[0], nullptr, job.GetTargets()[1]}, {}), u"projector0(3) 0/0:A 0/2:B =2,0"_s);
}

void TestTreeWalk::projectorsKeepTheirIndexBesideNulls()
{
    TestJob job(u"target A 0,0,0 target B 0,0,0 target C 0,0,0 "
                "projector P { 2 1 } projector Q { } projector R { 3 }"_s);
    auto projectors = job.GetOptions().GetProjectors();
    QCOMPARE(projectors.size(), 3);
    QCOMPARE(WalkAll(job.GetTargets(), projectors),
             u"projector0(2) 0/0:B 0/1:A projector1(0) projector2(1) 2/0:C =3,3"_s);
    projectors.insert(1, nullptr);
    QCOMPARE(WalkAll(job.GetTargets(), projectors),
             u"projector0(2) 0/0:B 0/1:A projector2(0) projector3(1) 3/0:C =3,3"_s);
    QCOMPARE(WalkAll(job.GetTargets(), {nullptr}), u"=0,0"_s);
}

QTEST_GUILESS_MAIN(TestTreeWalk)
#include "TestTreeWalk.moc"
