#include "writers/ZETLaserWriter.h"

#include "openhost/ZETSystem/ZETOpenMessageQueue.h"
#include "tests/support/TestFiles.h"
#include "tests/support/TestJob.h"
#include "tests/support/TestTranslator.h"

#include <QtTest>

#include <functional>

using namespace Qt::Literals::StringLiterals;

Q_DECLARE_METATYPE(std::function<void(ZETLaserOptions&)>)

namespace
{
/*! Writes nothing but a head or a foot into the report. */
class Reporter final : public ZETLaserWriter
{
public:
    explicit Reporter(TestJob& job)
        : ZETLaserWriter(&job.GetOptions(), job.GetTree())
    {
    }

    bool Write() override { return false; }

    QByteArray Head()
    {
        return Reported([this] { WriteReportHeader(); });
    }
    QByteArray Foot(int plies, int subPlies, int courses)
    {
        plyCount = plies;
        subPlyCount = subPlies;
        courseCount = courses;
        return Reported([this] { WriteReportFooter(); });
    }

private:
    QByteArray Reported(const std::function<void()>& write)
    {
        OpenReportFile();
        write();
        const QString name = reportFile.fileName();
        CloseFiles();
        return ReadBytes(name);
    }
};

using Change = std::function<void(ZETLaserOptions&)>;
Change Set(Change change)
{
    return change;
}

/*! The head of a job with the options as they come, and then \a change. */
QByteArray Head(const Change& change)
{
    TestJob job(u"partname \"Left <wing>\""_s);
    job.GetOptions().SetFileName(u"wing.ply"_s);
    change(job.GetOptions());
    return Reporter(job).Head();
}
} // namespace

class TestLaserReport : public QObject
{
    Q_OBJECT

private slots:
    void init() { ZETOpenMessageQueue::Install(); }
    void cleanup() { ZETOpenMessageQueue::Remove(); }

    void headOf3DOutput();
    void headOf3DOutputWithEverythingOn();
    void headOfFlatOutput();
    void headOfNestingOutput();
    void headOfEmbeddedNestingOutput();
    void headOfAnUnknownOutputType();
    void headOfAJobInInches();
    void headNamesTheFileWithoutItsFolder();
    void rowsOfTheHead_data();
    void rowsOfTheHead();
    void rowsThatNestingLeavesOut_data();
    void rowsThatNestingLeavesOut();
    void axisSystemIsNamedByItsLabel();
    void doublesHaveSixSignificantDigits_data();
    void doublesHaveSixSignificantDigits();

    void footOfAJobThatWroteNothing();
    void footWithPlies();
    void footWithSubPliesOnly();
    void footWithCourses();
    void footWithMessages();
    void footWithoutAQueue();
    void footWithAnEmptyMessage();

    void everyTextIsTranslatedButNoTag();
    void textsOfNestingReportsAreTranslated();
};

void TestLaserReport::headOf3DOutput()
{
    COMPARE_TEXT(Head(Set([](ZETLaserOptions&) {})), "<HTML>\n"
                                                     "<TITLE>Laser Projection Report : wing.ply</TITLE>\n"
                                                     "<BODY>\n"
                                                     "<H2>\n"
                                                     "Laser Projection Report for Virtek laser data file : wing.ply\n"
                                                     "</H2>\n"
                                                     "<HR>\n"
                                                     "<PRE>\n"
                                                     "Part Name: Left <wing>\n"
                                                     "\n"
                                                     "Units: mm\n"
                                                     "\n"
                                                     "Core Sampling: None\n"
                                                     "\n"
                                                     "Material Thickness: uncured\n"
                                                     "\n"
                                                     "Axis System: Not specified\n"
                                                     "\n"
                                                     "Points reduced with a tolerance of: 0.01\n"
                                                     "Geometry Settings:\n"
                                                     "3D Geometry used\n"
                                                     "Sub-plies used\n"
                                                     "Extra Geometry used\n"
                                                     "\n"_ba);
}

void TestLaserReport::headOf3DOutputWithEverythingOn()
{
    const auto everything = [](ZETLaserOptions& options) {
        options.SetFileType(ZETLaserOptions::FileLAP);
        options.SetOffsetMode(ZETLaserOptions::OffsetDebulk);
        options.SetMaterialThickness(ZETLaserOptions::ThicknessCured);
        options.SetUseMaxLength(true);
        options.SetMaxLength(12.75);
        options.SetOutputRosette(1);
        options.SetUseSeedPoint(1);
        options.SetUseSeedCurve(1);
    };
    COMPARE_TEXT(Head(everything), "<HTML>\n"
                                   "<TITLE>Laser Projection Report : wing.ply</TITLE>\n"
                                   "<BODY>\n"
                                   "<H2>\n"
                                   "Laser Projection Report for LAP Laser laser data file : wing.ply\n"
                                   "</H2>\n"
                                   "<HR>\n"
                                   "<PRE>\n"
                                   "Part Name: Left <wing>\n"
                                   "\n"
                                   "Units: mm\n"
                                   "\n"
                                   "Core Sampling: Debulk\n"
                                   "\n"
                                   "Material Thickness: cured\n"
                                   "\n"
                                   "Axis System: Not specified\n"
                                   "\n"
                                   "Points reduced with a tolerance of: 0.01\n"
                                   "Maximum segment length: 12.75\n"
                                   "\n"
                                   "Geometry Settings:\n"
                                   "3D Geometry used\n"
                                   "Sub-plies used\n"
                                   "Extra Geometry used\n"
                                   "Rosette used\n"
                                   "Seed Point used\n"
                                   "Seed Curve used\n"
                                   "\n"_ba);
}

void TestLaserReport::headOfFlatOutput()
{
    const auto flat = [](ZETLaserOptions& options) {
        options.SetOutputType(ZETLaserOptions::OutputFlat);
        options.SetUseMinimizePointsTolerance(false);
        options.SetUseMaxLength(true);
        options.SetOutputSubPly(0);
        options.SetOutputExtraGeometry(0);
        options.SetUseSeedPoint(1);
    };
    COMPARE_TEXT(Head(flat), "<HTML>\n"
                             "<TITLE>Laser Projection Report : wing.ply</TITLE>\n"
                             "<BODY>\n"
                             "<H2>\n"
                             "Laser Projection Report for Virtek laser data file : wing.ply\n"
                             "</H2>\n"
                             "<HR>\n"
                             "<PRE>\n"
                             "Part Name: Left <wing>\n"
                             "\n"
                             "Units: mm\n"
                             "\n"
                             "Axis System: Not specified\n"
                             "\n"
                             "Maximum segment length: 1e+06\n"
                             "\n"
                             "Geometry Settings:\n"
                             "Flat Geometry used\n"
                             "Seed Point used\n"
                             "\n"_ba);
}

void TestLaserReport::headOfNestingOutput()
{
    const auto nesting = [](ZETLaserOptions& options) {
        options.SetOutputType(ZETLaserOptions::OutputFlatNesting);
        options.SetUseMaxLength(true);
        options.SetOutputRosette(1);
        options.SetUseSeedPoint(1);
        options.SetUseSeedCurve(1);
    };
    COMPARE_TEXT(Head(nesting), "<HTML>\n"
                                "<TITLE>Nesting Interface Report : wing.ply</TITLE>\n"
                                "<BODY>\n"
                                "<H2>\n"
                                "Nesting Interface Report for file : wing.ply\n"
                                "</H2>\n"
                                "<HR>\n"
                                "<PRE>\n"
                                "Part Name: Left <wing>\n"
                                "\n"
                                "Units: mm\n"
                                "\n"
                                "Axis System: Not specified\n"
                                "\n"
                                "Geometry Settings:\n"
                                "Flat Nesting Geometry used\n"
                                "Sub-plies used\n"
                                "Extra Geometry used\n"
                                "Rosette used\n"
                                "\n"_ba);
}

void TestLaserReport::headOfEmbeddedNestingOutput()
{
    const auto embedded = [](ZETLaserOptions& options) {
        options.SetOutputType(ZETLaserOptions::OutputFlatNestingEmbedded);
        options.SetUseMaxLength(true);
        options.SetUseSeedPoint(1);
        options.SetUseSeedCurve(1);
    };
    COMPARE_TEXT(Head(embedded), "<HTML>\n"
                                 "<TITLE>Nesting Embedded Ply Report</TITLE>\n"
                                 "<BODY>\n"
                                 "<H2>\n"
                                 "Ply Extract Report\n"
                                 "</H2>\n"
                                 "<HR>\n"
                                 "<PRE>\n"
                                 "Part Name: Left <wing>\n"
                                 "\n"
                                 "Units: mm\n"
                                 "\n"
                                 "Axis System: Not specified\n"
                                 "\n"
                                 "Geometry Settings:\n"
                                 "Flat Nesting Geometry used for Embedded Nesting\n"
                                 "Sub-plies used\n"
                                 "Extra Geometry used\n"
                                 "\n"_ba);
}

void TestLaserReport::headOfAnUnknownOutputType()
{
    const auto unknown = [](ZETLaserOptions& options) {
        options.SetOutputType(ZETLaserOptions::EOutputType(4));
        options.SetFileType(ZETLaserOptions::EOutputFileType(13));
        options.SetUseMaxLength(true);
        options.SetUseSeedCurve(1);
    };
    COMPARE_TEXT(Head(unknown), "<HTML>\n"
                                "<TITLE>Laser Projection Report : wing.ply</TITLE>\n"
                                "<BODY>\n"
                                "<H2>\n"
                                "Laser Projection Report for Unknown laser data file : wing.ply\n"
                                "</H2>\n"
                                "<HR>\n"
                                "<PRE>\n"
                                "Part Name: Left <wing>\n"
                                "\n"
                                "Units: mm\n"
                                "\n"
                                "Axis System: Not specified\n"
                                "\n"
                                "Geometry Settings:\n"
                                "Sub-plies used\n"
                                "Extra Geometry used\n"
                                "\n"_ba);
}

void TestLaserReport::headOfAJobInInches()
{
    const auto inches = [](ZETLaserOptions& options) {
        options.SetUnits(ZETLaserOptions::UnitsInches);
        options.SetMinimizePointsTolerance(12.7);
        options.SetUseMaxLength(true);
        options.SetMaxLength(254.0);
    };
    const QByteArray head = Head(inches);
    QVERIFY(head.contains("\n\nUnits: inch\n\n"));
    QVERIFY(head.contains("\nPoints reduced with a tolerance of: 0.5\n"
                          "Maximum segment length: 10\n\n"));
}

void TestLaserReport::headNamesTheFileWithoutItsFolder()
{
    QVERIFY(QDir().mkpath(u"a folder"_s));
    const QByteArray head = Head(Set([](ZETLaserOptions& options) { options.SetFileName(u"a folder/wing 2.ply"_s); }));
    QVERIFY(head.contains("<TITLE>Laser Projection Report : wing 2.ply</TITLE>"));
    QVERIFY(head.contains(" laser data file : wing 2.ply\n"));
    QVERIFY(!head.contains("a folder"));
}

void TestLaserReport::rowsOfTheHead_data()
{
    QTest::addColumn<Change>("change");
    QTest::addColumn<QByteArray>("row");
    QTest::addColumn<bool>("present");
    const auto row = [](const char* name, const QByteArray& text, bool present, const Change& change) {
        QTest::newRow(name) << change << text << present;
    };
    using Options = ZETLaserOptions;
    row("offset complete", "\nCore Sampling: Complete\n\n", true,
        [](Options& o) { o.SetOffsetMode(Options::OffsetComplete); });
    row("offset layup", "\nCore Sampling: Layup\n\n", true, [](Options& o) { o.SetOffsetMode(Options::OffsetLayup); });
    row("offset unknown", "\nCore Sampling: unset\n\n", true,
        [](Options& o) { o.SetOffsetMode(Options::EOffsetMode(4)); });
    row("any thickness but 0 is uncured", "\nMaterial Thickness: uncured\n\n", true,
        [](Options& o) { o.SetMaterialThickness(Options::EMaterialThickness(7)); });
    row("any units but 1 are mm", "\nUnits: mm\n\n", true, [](Options& o) { o.SetUnits(Options::EUnits(7)); });
    row("no part name", "\nPart Name: \n\n", true, [](Options& o) { o.SetPartName(QString()); });
    row("points reduced", "\nPoints reduced with a tolerance of: 0.25\n", true,
        [](Options& o) { o.SetMinimizePointsTolerance(0.25); });
    row("points not reduced", "Points reduced", false, [](Options& o) { o.SetUseMinimizePointsTolerance(false); });
    row("points reduced, flat", "\nPoints reduced with a tolerance of: 0.01\n", true,
        [](Options& o) { o.SetOutputType(Options::OutputFlat); });
    row("no maximum length", "Maximum segment length", false, [](Options&) {});
    row("sub-plies on by any value", "\nSub-plies used\n", true, [](Options& o) { o.SetOutputSubPly(2); });
    row("sub-plies off", "Sub-plies used", false, [](Options& o) { o.SetOutputSubPly(0); });
    row("extra geometry on by any value", "\nExtra Geometry used\n", true,
        [](Options& o) { o.SetOutputExtraGeometry(-1); });
    row("extra geometry off", "Extra Geometry used", false, [](Options& o) { o.SetOutputExtraGeometry(0); });
    row("rosette on by any value", "\nRosette used\n", true, [](Options& o) { o.SetOutputRosette(2); });
    row("rosette off", "Rosette used", false, [](Options&) {});
    row("seed point off", "Seed Point used", false, [](Options&) {});
    row("seed curve off", "Seed Curve used", false, [](Options&) {});
    row("seed curve, flat", "\nSeed Curve used\n", true, [](Options& o) {
        o.SetOutputType(Options::OutputFlat);
        o.SetUseSeedCurve(2);
    });
}

void TestLaserReport::rowsOfTheHead()
{
    QFETCH(Change, change);
    QFETCH(QByteArray, row);
    QTEST(Head(change).contains(row), "present");
}

void TestLaserReport::rowsThatNestingLeavesOut_data()
{
    QTest::addColumn<int>("type");
    QTest::newRow("nesting") << 2;
    QTest::newRow("embedded nesting") << 3;
}

void TestLaserReport::rowsThatNestingLeavesOut()
{
    QFETCH(int, type);
    const QByteArray head = Head(Set([type](ZETLaserOptions& options) {
        options.SetOutputType(ZETLaserOptions::EOutputType(type));
        options.SetUseMinimizePointsTolerance(true);
        options.SetUseMaxLength(true);
        options.SetUseSeedPoint(1);
        options.SetUseSeedCurve(1);
    }));
    QVERIFY(head.contains("Geometry Settings:\n"));
    for (const auto* absent :
         {"Core Sampling", "Material Thickness", "Points reduced", "Maximum segment", "Seed Point", "Seed Curve"})
        QVERIFY2(!head.contains(absent), absent);
    QCOMPARE(head.contains("wing.ply"), type == 2); // a ply extract names no file
}

void TestLaserReport::axisSystemIsNamedByItsLabel()
{
    TestJob job(u"axis 1,2,3 1,0,0 0,1,0"_s);
    job.GetOptions().SetFileName(u"wing.ply"_s);
    const QByteArray head = Reporter(job).Head();
    QVERIFY(head.contains("\n\nAxis System: Cell\n\n"));
    QVERIFY(!head.contains("Not specified"));
}

void TestLaserReport::doublesHaveSixSignificantDigits_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("short") << 0.5 << "0.5"_ba;
    QTest::newRow("tiny") << 0.00001 << "1e-05"_ba;
    QTest::newRow("rounded") << 1.23456789 << "1.23457"_ba;
    QTest::newRow("whole") << 12.0 << "12"_ba;
    QTest::newRow("large") << 1234567.0 << "1.23457e+06"_ba;
    QTest::newRow("zero") << 0.0 << "0"_ba;
}

void TestLaserReport::doublesHaveSixSignificantDigits()
{
    QFETCH(double, value);
    QFETCH(QByteArray, text);
    const QByteArray head = Head(Set([value](ZETLaserOptions& options) { options.SetMinimizePointsTolerance(value); }));
    QVERIFY2(head.contains("tolerance of: " + text + '\n'), head.constData());
}

void TestLaserReport::footOfAJobThatWroteNothing()
{
    TestJob job(u""_s);
    COMPARE_TEXT(Reporter(job).Foot(0, 0, 0), "\n\nNO PLY DATA WRITTEN!\n\n"
                                              "\n\nNo Warning or Error messages.\n"
                                              "\n\nPlies Written Report:\n"
                                              "   No plies, sub-plies, or courses written \n"
                                              "\nEnd of report.\n"
                                              "</PRE>\n<HR>\n</BODY>\n</HTML>\n"_ba);
}

void TestLaserReport::footWithPlies()
{
    TestJob job(u""_s);
    COMPARE_TEXT(Reporter(job).Foot(12, 3, 0), "\n\nNo Warning or Error messages.\n"
                                               "\n\nPlies Written Report:\n"
                                               "   Number of Plies = 12\n"
                                               "   Number of Sub-plies = 3\n"
                                               "\nEnd of report.\n"
                                               "</PRE>\n<HR>\n</BODY>\n</HTML>\n"_ba);
}

void TestLaserReport::footWithSubPliesOnly()
{
    TestJob job(u""_s);
    COMPARE_TEXT(Reporter(job).Foot(0, 1, 0), "\n\nNo Warning or Error messages.\n"
                                              "\n\nPlies Written Report:\n"
                                              "   Number of Sub-plies = 1\n"
                                              "\nEnd of report.\n"
                                              "</PRE>\n<HR>\n</BODY>\n</HTML>\n"_ba);
}

void TestLaserReport::footWithCourses()
{
    TestJob job(u""_s);
    COMPARE_TEXT(Reporter(job).Foot(0, 0, 2), "\n\nNo Warning or Error messages.\n"
                                              "\n\nPlies Written Report:\n"
                                              "   Number of Courses = 2\n"
                                              "\nEnd of report.\n"
                                              "</PRE>\n<HR>\n</BODY>\n</HTML>\n"_ba);
}

void TestLaserReport::footWithMessages()
{
    ZETSysMessageQueue::GetMessageQueue()->AddMessage(u"first <b>"_s, ZETSysMessageQueue::TypeNote);
    ZETSysMessageQueue::GetMessageQueue()->AddMessage(u"second"_s, ZETSysMessageQueue::TypeProblem);
    TestJob job(u""_s);
    COMPARE_TEXT(Reporter(job).Foot(1, 0, 0), "\n\nWarning & Error messages:\n"
                                              "first <b>\nsecond\n"
                                              "\n\nPlies Written Report:\n"
                                              "   Number of Plies = 1\n"
                                              "\nEnd of report.\n"
                                              "</PRE>\n<HR>\n</BODY>\n</HTML>\n"_ba);
    QCOMPARE(ZETOpenMessageQueue::GetMessages().size(), 2); // the queue keeps them
}

void TestLaserReport::footWithoutAQueue()
{
    ZETOpenMessageQueue::Remove();
    TestJob job(u""_s);
    COMPARE_TEXT(Reporter(job).Foot(1, 0, 0), "\n\nPlies Written Report:\n"
                                              "   Number of Plies = 1\n"
                                              "\nEnd of report.\n"
                                              "</PRE>\n<HR>\n</BODY>\n</HTML>\n"_ba);
}

void TestLaserReport::footWithAnEmptyMessage()
{
    // The text of the queue decides, not the number of its messages.
    ZETSysMessageQueue::GetMessageQueue()->AddMessage(QString(), ZETSysMessageQueue::TypeNote);
    TestJob job(u""_s);
    QVERIFY(Reporter(job).Foot(1, 0, 0).startsWith("\n\nNo Warning or Error messages.\n"));
}

void TestLaserReport::everyTextIsTranslatedButNoTag()
{
    TestJob job(u"partname Wing"_s);
    ZETLaserOptions& options = job.GetOptions();
    options.SetFileName(u"wing.ply"_s);
    options.SetUseMaxLength(true);
    options.SetOutputRosette(1);
    options.SetUseSeedPoint(1);
    options.SetUseSeedCurve(1);
    const TestTranslator translator("ZETLaserWriter");
    COMPARE_TEXT(Reporter(job).Head(), "<HTML>\n"
                                       "<TITLE>* Laser Projection Report : wing.ply</TITLE>\n"
                                       "<BODY>\n"
                                       "<H2>\n"
                                       "* Laser Projection Report for Virtek*  laser data file : wing.ply\n"
                                       "</H2>\n"
                                       "<HR>\n"
                                       "<PRE>\n"
                                       "* Part Name: Wing\n"
                                       "\n"
                                       "* Units: * mm\n"
                                       "\n"
                                       "* Core Sampling: None\n"
                                       "\n"
                                       "* Material Thickness: * uncured\n"
                                       "\n"
                                       "* Axis System: Not specified\n"
                                       "\n"
                                       "* Points reduced with a tolerance of: 0.01\n"
                                       "* Maximum segment length: 1e+06\n"
                                       "\n"
                                       "* Geometry Settings:\n"
                                       "* 3D Geometry used\n"
                                       "* Sub-plies used\n"
                                       "* Extra Geometry used\n"
                                       "* Rosette used\n"
                                       "* Seed Point used\n"
                                       "* Seed Curve used\n"
                                       "\n"_ba);
    COMPARE_TEXT(Reporter(job).Foot(0, 0, 0), "\n\n* NO PLY DATA WRITTEN!\n\n"
                                              "\n\n* No Warning or Error messages.\n"
                                              "\n\n* Plies Written Report:\n"
                                              "*    No plies, sub-plies, or courses written \n"
                                              "\n* End of report.\n"
                                              "</PRE>\n<HR>\n</BODY>\n</HTML>\n"_ba);
    ZETSysMessageQueue::GetMessageQueue()->AddMessage(u"message"_s, ZETSysMessageQueue::TypeNote);
    COMPARE_TEXT(Reporter(job).Foot(1, 2, 3), "\n\n* Warning & Error messages:\n"
                                              "message\n"
                                              "\n\n* Plies Written Report:\n"
                                              "*    Number of Plies = 1\n"
                                              "*    Number of Sub-plies = 2\n"
                                              "*    Number of Courses = 3\n"
                                              "\n* End of report.\n"
                                              "</PRE>\n<HR>\n</BODY>\n</HTML>\n"_ba);
}

void TestLaserReport::textsOfNestingReportsAreTranslated()
{
    TestJob job(u"units inch axis 1,2,3 1,0,0 0,1,0"_s);
    ZETLaserOptions& options = job.GetOptions();
    options.SetFileName(u"wing.ply"_s);
    options.SetMaterialThickness(ZETLaserOptions::ThicknessCured);
    const TestTranslator translator("ZETLaserWriter");
    QVERIFY(Reporter(job).Head().contains("\n* Units: * inch\n\n"));
    QVERIFY(Reporter(job).Head().contains("\n* Material Thickness: * cured\n\n* Axis System: Cell\n"));
    options.SetOutputType(ZETLaserOptions::OutputFlat);
    QVERIFY(Reporter(job).Head().contains("\n* Flat Geometry used\n"));
    options.SetOutputType(ZETLaserOptions::OutputFlatNesting);
    const QByteArray nesting = Reporter(job).Head();
    QVERIFY(nesting.contains("<TITLE>* Nesting Interface Report : wing.ply</TITLE>\n"));
    QVERIFY(nesting.contains("\n* Nesting Interface Report for file : wing.ply\n"));
    QVERIFY(nesting.contains("\n* Flat Nesting Geometry used\n"));
    options.SetOutputType(ZETLaserOptions::OutputFlatNestingEmbedded);
    const QByteArray embedded = Reporter(job).Head();
    QVERIFY(embedded.contains("<TITLE>* Nesting Embedded Ply Report</TITLE>\n"));
    QVERIFY(embedded.contains("\n* Ply Extract Report\n"));
    QVERIFY(embedded.contains("\n* Flat Nesting Geometry used for Embedded Nesting\n"));
}

QTEST_GUILESS_MAIN(TestLaserReport)
#include "TestLaserReport.moc"
