#include "writers/ZETLaserWriter.h"

#include "features/ZETLaserParameter.h"
#include "features/ZETLaserParameterProvider.h"
#include "features/ZETLaserTarget.h"
#include "laser/ZETLaserGroup.h"
#include "laser/ZETLaserPoint.h"
#include "openhost/ZETFeature/ZETOpenModel.h"
#include "openhost/ZETSystem/ZETOpenMessageQueue.h"
#include "tests/support/TestFiles.h"
#include "tests/support/TestJob.h"
#include "tests/support/TestTranslator.h"
#include "writers/ZETLaserTargetWalk.h"

#include <ZETComposites/ZETCompPly.h>
#include <ZETComposites/ZETCompRoot.h>
#include <ZETSystem/ZETSysException.h>

#include <QFileInfo>
#include <QtTest>

using namespace Qt::Literals::StringLiterals;

namespace
{
/*! A writer of no format, with the frame's services open to the tests. */
class Probe final : public ZETLaserWriter
{
public:
    Probe(ZETLaserOptions* jobOptions, QSharedPointer<ZETLaserGroup> treeRoot)
        : ZETLaserWriter(jobOptions, treeRoot)
    {
    }
    explicit Probe(TestJob& job)
        : ZETLaserWriter(&job.GetOptions(), job.GetTree())
    {
    }

    bool Write() override
    {
        OpenFiles();
        WriteReportHeader();
        AddWrittenMessage(u"Probe"_s, ZETSysMessageQueue::TypeNote);
        stream.WriteLine("data"_L1);
        WriteReportFooter();
        CloseFiles();
        return true;
    }

    using Texts = TargetTexts;
    using ZETLaserWriter::AddUnsupportedMessage;
    using ZETLaserWriter::AddWrittenMessage;
    using ZETLaserWriter::CloseFiles;
    using ZETLaserWriter::ClosePartFile;
    using ZETLaserWriter::CollectTargets;
    using ZETLaserWriter::CollectTexts;
    using ZETLaserWriter::courseCount;
    using ZETLaserWriter::EvaluateParameters;
    using ZETLaserWriter::EvaluateTexts;
    using ZETLaserWriter::file;
    using ZETLaserWriter::FindTargets;
    using ZETLaserWriter::GetFileNameWithTail;
    using ZETLaserWriter::GetOutputNormal;
    using ZETLaserWriter::GetOutputPoint;
    using ZETLaserWriter::GetPly;
    using ZETLaserWriter::OpenFiles;
    using ZETLaserWriter::OpenPartFile;
    using ZETLaserWriter::OpenReportFile;
    using ZETLaserWriter::OpensLayer;
    using ZETLaserWriter::outputAxis;
    using ZETLaserWriter::plyCount;
    using ZETLaserWriter::reportStream;
    using ZETLaserWriter::ReportWrittenTargets;
    using ZETLaserWriter::stream;
    using ZETLaserWriter::subPlyCount;
    using ZETLaserWriter::SubstituteBlanks;
    using ZETLaserWriter::unitScale;
    using ZETLaserWriter::WriteOpenReportParagraph;
    using ZETLaserWriter::WriteReportParagraph;
    using ZETLaserWriter::WritesNormal;
    using ZETLaserWriter::WritesTextsFirst;
};

const Probe::Texts texts{u"none"_s, u"no projectors"_s, u"%1 to %2"_s, u"%1 in %2 to %3"_s};

/*! What \a report writes into the report. */
template <typename Report>
QByteArray Reported(Probe& probe, Report report)
{
    QString text;
    probe.reportStream.setString(&text);
    report();
    probe.reportStream.flush();
    probe.reportStream.setDevice(nullptr);
    return text.toUtf8();
}

QString ToText(const QList<ZETLaserTarget*>& targets)
{
    QStringList labels;
    for (const auto* target : targets)
        labels += target->GetLabel();
    return labels.join(u' ');
}
} // namespace

class TestLaserWriterFrame : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void aNewWriterCountsNothing();
    void millimetresAreWrittenAsTheyAre();
    void inchesScaleLengthsAndNoNormals();
    void withoutAnAxisSystemCoordinatesStay();
    void anAxisSystemMovesPointsAndTurnsNormals();
    void theOffsetPointCountsIfThereIsOne();
    void thePointHandedInTellsWhetherItHasANormal();

    void theReportStandsBesideThePartFile_data();
    void theReportStandsBesideThePartFile();
    void partFileAndReportAreOpenedApart();
    void severalPartFilesInOneJob();
    void filesThatCannotBeOpenedStopNothing();
    void filesThatAreNotWholeAreRemembered();
    void whatWasWrittenBeforeAnExceptionIsOnDisk();
    void textStreamsOfOthersMayShareThePartFile();

    void theWrittenMessageNamesMakeAndFile();
    void aFileNameWithAPlaceholderStaysWhole();
    void writtenMessageAndReportNameAreTranslated();
    void anUnsupportedTypeIsNamed();
    void withoutAQueueMessagesAreDropped();

    void layersAndCounters_data();
    void layersAndCounters();
    void thePlyInThePropertyCounts();
    void parametersAreEvaluatedInOrder();
    void textsAreEvaluatedInOrder();
    void textsOfAGroupWithoutAPlyAreNotEvaluated();
    void collectedTextsAreCountedByParameter();

    void targetsAreCollectedInModelOrder();
    void targetsMayStandAnywhereInTheModel();
    void aModelWithoutTargetsIsToldInTheReport();
    void aJobWithoutProjectorsIsToldInTheReport();
    void aJobWithProjectorsIsNotTold();
    void writtenTargetsAreReportedWithTheLineLeftOpen();
    void theTailOfTheFileNameIsReplaced_data();
    void theTailOfTheFileNameIsReplaced();
    void blanksInANameAreSubstituted();
    void aParagraphOfTheReportBeginsWithAnEmptyLine();
};

void TestLaserWriterFrame::init()
{
    ZETOpenMessageQueue::Install();
}

void TestLaserWriterFrame::cleanup()
{
    ZETOpenMessageQueue::Remove();
}

void TestLaserWriterFrame::aNewWriterCountsNothing()
{
    TestJob job(u""_s);
    Probe probe(job);
    QCOMPARE(probe.plyCount, 0);
    QCOMPARE(probe.subPlyCount, 0);
    QCOMPARE(probe.courseCount, 0);
}

void TestLaserWriterFrame::millimetresAreWrittenAsTheyAre()
{
    TestJob job(u"units mm"_s);
    QCOMPARE(Probe(job).unitScale, 1.0);
}

void TestLaserWriterFrame::inchesScaleLengthsAndNoNormals()
{
    TestJob job(u"units inch target T 50.8,0,-25.4"_s);
    Probe probe(job);
    QCOMPARE(probe.unitScale, 0.03937007874015748);
    const ZETLaserPoint point({25.4, -50.8, 0.0}, {0.0, 0.6, 0.8});
    QVERIFY(probe.GetOutputPoint(point) == ZETMathPoint(25.4 * probe.unitScale, -50.8 * probe.unitScale, 0.0));
    QCOMPARE(probe.GetOutputPoint(point).GetX(), 1.0);
    QVERIFY(probe.GetOutputNormal(point) == ZETMathVector(0.0, 0.6, 0.8));
    QCOMPARE(probe.GetOutputPoint(*job.GetTargets().first()).GetZ(), -1.0);
    QCOMPARE(probe.GetOutputPoint(ZETMathPoint(0.0, 254.0, 0.0)).GetY(), 10.0);
}

void TestLaserWriterFrame::withoutAnAxisSystemCoordinatesStay()
{
    TestJob job(u"target T 7,8,9"_s);
    Probe probe(job);
    const ZETLaserPoint point({1.0, 2.0, 3.0}, {0.0, 0.6, 0.8});
    QVERIFY(probe.GetOutputPoint(point) == ZETMathPoint(1.0, 2.0, 3.0));
    QVERIFY(probe.GetOutputNormal(point) == ZETMathVector(0.0, 0.6, 0.8));
    QVERIFY(probe.GetOutputPoint(*job.GetTargets().first()) == ZETMathPoint(7.0, 8.0, 9.0));
}

void TestLaserWriterFrame::anAxisSystemMovesPointsAndTurnsNormals()
{
    // X of the axis system is Y of the model, Y is -X, and its origin is at 10, 20, 30.
    TestJob job(u"axis 10,20,30 0,1,0 -1,0,0 target T 10,20,35"_s);
    Probe probe(job);
    const ZETLaserPoint point({11.0, 22.0, 33.0}, {1.0, 0.0, 0.0});
    QVERIFY(probe.GetOutputPoint(point) == ZETMathPoint(2.0, -1.0, 3.0));
    QVERIFY(probe.GetOutputNormal(point) == ZETMathVector(0.0, -1.0, 0.0));
    QVERIFY(probe.GetOutputPoint(*job.GetTargets().first()) == ZETMathPoint(0.0, 0.0, 5.0));
    QVERIFY(point.GetPosition() == ZETMathPoint(11.0, 22.0, 33.0)); // the tree stays as it is
}

void TestLaserWriterFrame::theOffsetPointCountsIfThereIsOne()
{
    TestJob job(u"axis 10,0,0 1,0,0 0,1,0"_s);
    Probe probe(job);
    ZETLaserPoint point({11.0, 22.0, 33.0}, {0.0, 0.0, 1.0});
    point.SetOffsetPoint({11.0, 22.0, 43.0});
    QVERIFY(probe.GetOutputPoint(point) == ZETMathPoint(1.0, 22.0, 43.0));
}

void TestLaserWriterFrame::thePointHandedInTellsWhetherItHasANormal()
{
    TestJob job(u""_s);
    Probe probe(job);
    const ZETLaserPoint without({1.0, 2.0, 3.0}, {0.0, 0.0, 0.0});
    const ZETLaserPoint with({1.0, 2.0, 3.0}, {0.0, 0.0, 1e-100});
    QVERIFY(!probe.WritesNormal(without));
    QVERIFY(probe.WritesNormal(with));
    job.GetOptions().SetIncludeNormalVectors(false);
    QVERIFY(!probe.WritesNormal(with));
}

void TestLaserWriterFrame::theReportStandsBesideThePartFile_data()
{
    QTest::addColumn<QString>("partFile");
    QTest::addColumn<QString>("report");
    QTest::newRow("with extension") << u"wing.ply"_s << u"wing.ply-report.htm"_s;
    QTest::newRow("without extension") << u"wing"_s << u"wing-report.htm"_s;
    QTest::newRow("upper case") << u"WING.XML"_s << u"WING.XML-report.htm"_s;
}

void TestLaserWriterFrame::theReportStandsBesideThePartFile()
{
    QFETCH(QString, partFile);
    QFETCH(QString, report);
    TestJob job(u""_s);
    QVERIFY(job.Write<Probe>(partFile));
    QCOMPARE(ReadBytes(partFile), "data\n"_ba);
    QVERIFY(ReadBytes(report).startsWith("<HTML>\n"));
    QVERIFY(ReadBytes(report).endsWith("</HTML>\n"));
}

void TestLaserWriterFrame::partFileAndReportAreOpenedApart()
{
    TestJob job(u""_s);
    job.GetOptions().SetFileName(u"apart.DXF"_s);
    Probe probe(job);
    probe.OpenPartFile(u"apart__S.DXF"_s);
    QVERIFY(QFileInfo::exists(u"apart__S.DXF"_s));
    QVERIFY(!QFileInfo::exists(u"apart.DXF-report.htm"_s));
    probe.OpenReportFile();
    QVERIFY(QFileInfo::exists(u"apart.DXF-report.htm"_s));
    QVERIFY(!QFileInfo::exists(u"apart.DXF"_s));
}

void TestLaserWriterFrame::severalPartFilesInOneJob()
{
    TestJob job(u""_s);
    Probe probe(job);
    for (const auto* name : {"first", "second"}) {
        probe.OpenPartFile(QString::fromLatin1(name));
        probe.stream.WriteLine(QLatin1StringView(name));
        probe.ClosePartFile();
        QCOMPARE(ReadBytes(QString::fromLatin1(name)), QByteArray(name) + '\n');
    }
}

void TestLaserWriterFrame::filesThatCannotBeOpenedStopNothing()
{
    TestJob job(u""_s);
    QVERIFY(job.Write<Probe>(u"no such folder/wing.ply"_s));
    QVERIFY(!QFileInfo::exists(u"no such folder"_s));
    QCOMPARE(ZETOpenMessageQueue::GetMessages().size(), 1); // it says "successfully" all the same
}

void TestLaserWriterFrame::filesThatAreNotWholeAreRemembered()
{
    TestJob job(u""_s);
    job.GetOptions().SetFileName(u"whole.ply"_s);
    Probe probe(job);
    probe.Write();
    QVERIFY(probe.GetFaults().isEmpty());
    probe.OpenPartFile(u"no such folder/wing.ply"_s);
    probe.ClosePartFile();
    probe.OpenPartFile(u"/dev/full"_s); // opens, and takes nothing
    for (int i = 0; i < 100000; ++i)
        probe.stream.WriteLine(i); // more than any buffer, so that it is written in several pieces
    probe.ClosePartFile();
    probe.OpenPartFile(u"whole again.ply"_s);
    probe.stream.WriteLine("data"_L1);
    probe.CloseFiles();
    QCOMPARE(probe.GetFaults().keys(), (QStringList{u"/dev/full"_s, u"no such folder/wing.ply"_s}));
    QVERIFY(!probe.GetFaults().first().isEmpty());
}

void TestLaserWriterFrame::whatWasWrittenBeforeAnExceptionIsOnDisk()
{
    TestJob job(u""_s);
    job.GetOptions().SetFileName(u"broken.ply"_s);
    const auto write = [&] {
        Probe probe(job);
        probe.OpenFiles();
        probe.stream.WriteLine("half"_L1);
        probe.reportStream << "half\n";
        throw ZETSysException(u"stop"_s);
    };
    QVERIFY_THROWS_EXCEPTION(ZETSysException, write());
    QCOMPARE(ReadBytes(u"broken.ply"_s), "half\n"_ba);
    QCOMPARE(ReadBytes(u"broken.ply-report.htm"_s), "half\n"_ba);
}

void TestLaserWriterFrame::textStreamsOfOthersMayShareThePartFile()
{
    TestJob job(u""_s);
    Probe probe(job);
    probe.OpenPartFile(u"shared.DXF"_s);
    {
        QTextStream other(&probe.file);
        other << "1\n";
    }
    probe.stream.WriteLine("2"_L1);
    probe.stream.Flush();
    {
        QTextStream other(&probe.file);
        other << "3\n";
    }
    probe.ClosePartFile();
    QCOMPARE(ReadBytes(u"shared.DXF"_s), "1\n2\n3\n"_ba);
}

void TestLaserWriterFrame::theWrittenMessageNamesMakeAndFile()
{
    TestJob job(u""_s);
    job.GetOptions().SetFileName(u"folder/wing.ply"_s);
    Probe(job).AddWrittenMessage(u"Virtek"_s, ZETSysMessageQueue::TypeNote);
    const auto messages = ZETOpenMessageQueue::GetMessages();
    QCOMPARE(messages.size(), 1);
    QCOMPARE(messages[0].text, u"Virtek data have been successfully written to file:\n folder/wing.ply"_s);
    QCOMPARE(int(messages[0].type), 0);
}

void TestLaserWriterFrame::aFileNameWithAPlaceholderStaysWhole()
{
    TestJob job(u""_s);
    job.GetOptions().SetFileName(u"wing %1 %2.ply"_s);
    Probe(job).AddWrittenMessage(u"Virtek"_s, ZETSysMessageQueue::TypeNote);
    QCOMPARE(ZETOpenMessageQueue::GetMessages().value(0).text,
             u"Virtek data have been successfully written to file:\n wing %1 %2.ply"_s);
}

void TestLaserWriterFrame::writtenMessageAndReportNameAreTranslated()
{
    const TestTranslator translator("ZETLaserWriter");
    TestJob job(u""_s);
    QVERIFY(job.Write<Probe>(u"wing.ply"_s));
    QCOMPARE(ZETOpenMessageQueue::GetMessages().value(0).text,
             u"* Probe data have been successfully written to file:\n wing.ply"_s);
    QVERIFY(QFileInfo::exists(u"wing.ply* -report.htm"_s)); // the extension isn't a word
}

void TestLaserWriterFrame::anUnsupportedTypeIsNamed()
{
    Probe::AddUnsupportedMessage(u"Unsupported laser parameter type %1 for X"_s, ZETLaserParameter::Note);
    Probe::AddUnsupportedMessage(u"Unsupported laser parameter type %1 for X"_s, 77);
    const auto messages = ZETOpenMessageQueue::GetMessages();
    QCOMPARE(messages.size(), 2);
    QCOMPARE(messages[0].text, u"Unsupported laser parameter type Note for X"_s);
    QCOMPARE(int(messages[0].type), 2);
    QCOMPARE(messages[1].text, u"Unsupported laser parameter type  for X"_s); // the name of an unknown type is empty
}

void TestLaserWriterFrame::withoutAQueueMessagesAreDropped()
{
    ZETOpenMessageQueue::Remove();
    TestJob job(u""_s);
    Probe probe(job);
    probe.AddWrittenMessage(u"Virtek"_s, ZETSysMessageQueue::TypeNote);
    Probe::AddUnsupportedMessage(u"%1"_s, 5);
    QVERIFY(job.Write<Probe>(u"silent.ply"_s));
    QCOMPARE(ReadBytes(u"silent.ply"_s), "data\n"_ba);
}

void TestLaserWriterFrame::layersAndCounters_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<bool>("nestSequences");
    QTest::addColumn<bool>("layer");
    QTest::addColumn<int>("plies");
    QTest::addColumn<int>("subPlies");
    for (const bool nest : {false, true}) {
        const auto row = [nest](const char* kind) -> QTestData& {
            return QTest::addRow("%s, %s", kind, nest ? "nested" : "not nested") << QString::fromLatin1(kind) << nest;
        };
        row("ply") << false << 1 << 0;
        row("nullply") << false << 1 << 0; // the property counts, not the pointer
        row("subply") << false << 0 << 1;
        row("nullsubply") << false << 0 << 1;
        row("layup") << nest << 0 << 0;
        row("sequence") << true << 0 << 0;
        row("group") << true << 0 << 0;
    }
}

void TestLaserWriterFrame::layersAndCounters()
{
    QFETCH(QString, kind);
    QFETCH(bool, nestSequences);
    QFETCH(bool, layer);
    QFETCH(int, plies);
    QFETCH(int, subPlies);
    TestJob job(kind + u" A { }"_s);
    job.GetOptions().SetNestSequencesWithinLayup(nestSequences);
    Probe probe(job);
    const auto group = job.GetTree()->GetChildren().first().staticCast<ZETLaserGroup>();
    QCOMPARE(probe.OpensLayer(*group), layer);
    QCOMPARE(probe.plyCount, plies);
    QCOMPARE(probe.subPlyCount, subPlies);
}

void TestLaserWriterFrame::thePlyInThePropertyCounts()
{
    TestJob job(u"ply P { } subply S { } nullply N { } nullsubply M { } sequence Q { } group G { }"_s);
    QStringList labels;
    for (const auto& child : job.GetTree()->GetChildren()) {
        const auto* ply = Probe::GetPly(*child.staticCast<ZETLaserGroup>());
        labels += ply ? ply->GetLabel() : u"-"_s;
    }
    QCOMPARE(labels.join(u' '), u"P S - - - -"_s);

    // A null ply doesn't hide a sub-ply.
    const auto subPly = job.GetTree()->GetChildren()[1].staticCast<ZETLaserGroup>();
    subPly->setProperty("ZETCompPly", QVariant::fromValue<ZETCompPly*>(nullptr));
    QCOMPARE(Probe::GetPly(*subPly)->GetLabel(), u"S"_s);
}

void TestLaserWriterFrame::parametersAreEvaluatedInOrder()
{
    TestJob job(u"layup L { sequence Q { ply P { parameter note \"%PLY% of %SEQ%\" contour { open 0,0,0 } "
                "parameter information plain parameter 9 %NONE%x } } }"_s);
    Probe probe(job);
    const auto layup = job.GetTree()->GetChildren().first().staticCast<ZETLaserGroup>();
    const auto sequence = layup->GetChildren().first().staticCast<ZETLaserGroup>();
    const auto ply = sequence->GetChildren().first().staticCast<ZETLaserGroup>();
    const auto parameters = probe.EvaluateParameters(*ply);
    QCOMPARE(parameters.size(), 3);
    QCOMPARE(parameters[0].type, 5);
    QCOMPARE(parameters[0].text, u"P of Q"_s);
    QCOMPARE(parameters[1].type, 0);
    QCOMPARE(parameters[1].text, u"plain"_s);
    QCOMPARE(parameters[2].type, 9);
    QCOMPARE(parameters[2].text, u"x"_s);
}

void TestLaserWriterFrame::textsAreEvaluatedInOrder()
{
    TestJob job(u"ply P { text %PLY% 1,0,0 1,0,0 0,1,0 5 text two 2,0,0 1,0,0 0,1,0 5 }"_s);
    Probe probe(job);
    const auto evaluated = probe.EvaluateTexts(*job.GetTree()->GetChildren().first().staticCast<ZETLaserGroup>());
    QCOMPARE(evaluated.size(), 2);
    QCOMPARE(evaluated[0].text, u"P"_s);
    QCOMPARE(evaluated[1].text, u"two"_s);
    QVERIFY(evaluated[1].feature != evaluated[0].feature);
}

void TestLaserWriterFrame::textsOfAGroupWithoutAPlyAreNotEvaluated()
{
    for (const auto* kind : {"group", "sequence", "layup", "nullply", "nullsubply"}) {
        TestJob job(QString::fromLatin1(kind) + u" A { parameter note N text T 1,0,0 1,0,0 0,1,0 5 }"_s);
        Probe probe(job);
        const auto group = job.GetTree()->GetChildren().first().staticCast<ZETLaserGroup>();
        QVERIFY2(probe.EvaluateParameters(*group).isEmpty(), kind);
        QVERIFY2(probe.EvaluateTexts(*group).isEmpty(), kind);
    }
}

void TestLaserWriterFrame::collectedTextsAreCountedByParameter()
{
    TestJob job(
        u"ply P { parameter information \"a\\nb\" parameter note n parameter message m parameter information c }"_s);
    Probe probe(job);
    const auto parameters = probe.EvaluateParameters(*job.GetTree()->GetChildren().first().staticCast<ZETLaserGroup>());
    const auto information = Probe::CollectTexts(parameters, {ZETLaserParameter::Information});
    QCOMPARE(information.count, 2); // parameters, not lines
    QCOMPARE(information.lines, u"a\nb\nc\n"_s);
    const auto both = Probe::CollectTexts(parameters, {ZETLaserParameter::Information, ZETLaserParameter::Note});
    QCOMPARE(both.count, 3);
    QCOMPARE(both.lines, u"a\nb\nn\nc\n"_s);
    QCOMPARE(Probe::CollectTexts(parameters, {ZETLaserParameter::Query}).count, 0);
}

void TestLaserWriterFrame::targetsAreCollectedInModelOrder()
{
    TestJob job(u"target B 0,0,0 projector P { 1 } target A 0,0,0 layup L { } target C 0,0,0"_s);
    QCOMPARE(ToText(Probe::CollectTargets(job.GetModel())), u"B A C"_s);
    QCOMPARE(ToText(Probe::CollectTargets(nullptr)), u""_s);
}

void TestLaserWriterFrame::targetsMayStandAnywhereInTheModel()
{
    TestJob job(u"target A 0,0,0 target C 0,0,0"_s);
    auto* below = ZETOpenModel::Create("ZETLaserTarget", *job.GetTargets().first(), ZETOpenModel::ParentCheck::None);
    ZETOpenModel::SetLabel(*below, u"B"_s);
    QCOMPARE(ToText(Probe::CollectTargets(job.GetModel())), u"A B C"_s);
}

void TestLaserWriterFrame::aModelWithoutTargetsIsToldInTheReport()
{
    TestJob job(u""_s);
    Probe probe(job);
    QCOMPARE(Reported(probe, [&] { QVERIFY(probe.FindTargets(texts).isEmpty()); }), "\nnone\n"_ba);
    job.RemoveModel();
    QCOMPARE(Reported(probe, [&] { QVERIFY(probe.FindTargets(texts).isEmpty()); }), "\nnone\n"_ba);
}

void TestLaserWriterFrame::aJobWithoutProjectorsIsToldInTheReport()
{
    TestJob job(u"target A 0,0,0"_s);
    Probe probe(job);
    QCOMPARE(Reported(probe, [&] { QCOMPARE(probe.FindTargets(texts).size(), 1); }), "\nno projectors\n"_ba);
}

void TestLaserWriterFrame::aJobWithProjectorsIsNotTold()
{
    TestJob job(u"target A 0,0,0 projector P { }"_s);
    Probe probe(job);
    QCOMPARE(Reported(probe, [&] { QCOMPARE(probe.FindTargets(texts).size(), 1); }), ""_ba);
}

void TestLaserWriterFrame::writtenTargetsAreReportedWithTheLineLeftOpen()
{
    TestJob all(u"target A 0,0,0"_s);
    Probe probeOfAll(all);
    QCOMPARE(Reported(probeOfAll,
                      [&] {
                          probeOfAll.ReportWrittenTargets(texts, {3, 0}, u"%1 %2.cal"_s);
                      }),
             "\n3 to %1 %2.cal"_ba);
    TestJob some(u"target A 0,0,0 projector P { 1 }"_s);
    Probe probeOfSome(some);
    QCOMPARE(Reported(probeOfSome,
                      [&] {
                          probeOfSome.ReportWrittenTargets(texts, {4, 2}, u"%1 %2.cal"_s);
                      }),
             "\n4 in 2 to %1 %2.cal"_ba);
}

void TestLaserWriterFrame::theTailOfTheFileNameIsReplaced_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("calibration");
    QTest::newRow("extension of three") << u"a/wing.ply"_s << u"a/wing.cal"_s;
    QTest::newRow("no extension") << u"wingspan"_s << u"wingscal"_s;
    QTest::newRow("longer extension") << u"wing.plies"_s << u"wing.plcal"_s;
    QTest::newRow("three characters") << u"ply"_s << u"cal"_s;
    QTest::newRow("two characters") << u"sl"_s << u"cal"_s;
    QTest::newRow("nothing") << u""_s << u"cal"_s;
}

void TestLaserWriterFrame::theTailOfTheFileNameIsReplaced()
{
    QFETCH(QString, name);
    TestJob job(u""_s);
    job.GetOptions().SetFileName(name);
    QTEST(Probe(job).GetFileNameWithTail(3, u"cal"), "calibration");
}

void TestLaserWriterFrame::blanksInANameAreSubstituted()
{
    TestJob job(u""_s);
    Probe probe(job);
    QString name;
    QCOMPARE(Reported(probe, [&] { name = probe.SubstituteBlanks(u" Target  A\tB"_s, "target name"_L1); }),
             "Substituting spaces in target name ' Target  A\tB' with underscore\n"_ba);
    QCOMPARE(name, u"_Target__A\tB"_s); // a blank is U+0020 and nothing else
    QCOMPARE(Reported(probe, [&] { name = probe.SubstituteBlanks(u"Target_A"_s, "target name"_L1); }), ""_ba);
    QCOMPARE(name, u"Target_A"_s);
}

void TestLaserWriterFrame::aParagraphOfTheReportBeginsWithAnEmptyLine()
{
    TestJob job(u""_s);
    Probe probe(job);
    QCOMPARE(Reported(probe, [&] { probe.WriteReportParagraph(u"text"_s); }), "\ntext\n"_ba);
    QCOMPARE(Reported(probe, [&] { probe.WriteOpenReportParagraph(u"text"_s); }), "\ntext"_ba);
}

QTEST_GUILESS_MAIN(TestLaserWriterFrame)
#include "TestLaserWriterFrame.moc"
