#include "openhost/ZETSystem/ZETOpenMessageQueue.h"
#include "tests/support/TestFiles.h"
#include "tests/support/TestJob.h"
#include "tests/support/TestOutput.h"
#include "tests/support/TestTranslator.h"

#include <QDir>
#include <QFile>
#include <QScopeGuard>
#include <QtTest>

using namespace Qt::Literals::StringLiterals;

namespace
{
struct Make {
    const char* name;
    int fileType;
    const char* context; //!< of its translations
    const char* suffix;  //!< what its messages call it
    const char* partFile;
    const char* targetsFile; //!< null: none, or within the part file
};

constexpr Make makes[] = {
    {"Virtek", 0, "ZETLaserWriterVirtek", "Virtek", "wing.ply", "wing.cal"},
    {"LPT", 1, "QObject", "LPT", "wing.XML", "Tool-wing.XML"},
    {"FARO", 2, "QObject", "LPT", "wing.XML", "Tool-wing.XML"},
    {"LAP", 3, "ZETLaserWriterLAP", "LAP", "wing.lpd", "wing.cal"},
    {"SL", 4, "ZETLaserWriterSL", "SL", "wing.sl", "wing.cp1"},
    {"Assembly Guidance", 5, "ZETLaserWriterAG", "AG", "wing.PRT", nullptr},
    {"Aligned Vision", 6, "ZETLaserWriterAG", "AG", "wing.PRT", nullptr},
    {"General Scanning", 7, "ZETLaserWriterGS", "GS", "wing.PRT", nullptr},
    {"Quilmon", 12, "ZETLaserWriterGS", "CPD", "wing.CPD", nullptr},
};

void AddMakes(bool (*isWanted)(const Make&))
{
    QTest::addColumn<Make>("make");
    for (const Make& make : makes) {
        if (isWanted(make))
            QTest::newRow(make.name) << make;
    }
}

TestOutput Write(const Make& make, const QString& text)
{
    return WriteOutput(u"filetype %1\n"_s.arg(make.fileType) + text, QString::fromLatin1(make.partFile),
                       QString::fromLatin1(make.targetsFile));
}
} // namespace

Q_DECLARE_METATYPE(Make)

/*! What the makes do alike, each in its own words. */
class TestMakesAlike : public QObject
{
    Q_OBJECT

private slots:
    void init() { ZETOpenMessageQueue::Install(); }
    void cleanup() { ZETOpenMessageQueue::Remove(); }

    void messagesAreTranslatedAndFilesAreNot_data();
    void messagesAreTranslatedAndFilesAreNot();
    void projectorsThatAreAllNullAreProjectors_data();
    void projectorsThatAreAllNullAreProjectors();
    void aPartFileThatCannotBeOpenedStopsNothing_data();
    void aPartFileThatCannotBeOpenedStopsNothing();
    void aTargetsFileThatCannotBeOpenedStopsNothing_data();
    void aTargetsFileThatCannotBeOpenedStopsNothing();
};

void TestMakesAlike::messagesAreTranslatedAndFilesAreNot_data()
{
    AddMakes([](const Make&) { return true; });
}

void TestMakesAlike::messagesAreTranslatedAndFilesAreNot()
{
    QFETCH(Make, make);
    const bool hasTargets = make.fileType != 12;
    // A type that no format knows.
    const QString job = u"target A 1,2,3 ply P { parameter 6 X contour { open 1,2,3 } }"_s;
    const auto plain = Write(make, job);
    QCOMPARE(QueuedMessages().last(), u"2 Unsupported laser parameter type  for "_s + QLatin1StringView(make.suffix));

    const TestTranslator translator(make.context);
    const auto output = Write(make, job);
    COMPARE_TEXT(output.part, plain.part);
    COMPARE_TEXT(output.targets, plain.targets);
    QCOMPARE(QueuedMessages().last(), u"2 * Unsupported laser parameter type  for "_s + QLatin1StringView(make.suffix));
    const QByteArray body = ReportBody(output.report);
    QCOMPARE(body.contains("\n* No laser projectors found in model, using all targets in one projector.\n"),
             hasTargets);
    QCOMPARE(body.contains("\n* Writing 1 targets"), hasTargets);
    QCOMPARE(ReportBody(Write(make, job + u" projector P { 1 }"_s).report).contains("\n* Writing 1 targets"),
             hasTargets);
    COMPARE_TEXT(ReportBody(Write(make, QString()).report),
                 hasTargets ? "\n* No laser targets found in model.\n"_ba : ""_ba);
}

void TestMakesAlike::projectorsThatAreAllNullAreProjectors_data()
{
    AddMakes([](const Make& make) { return make.targetsFile != nullptr; });
}

void TestMakesAlike::projectorsThatAreAllNullAreProjectors()
{
    QFETCH(Make, make);
    const QByteArray body = ReportBody(Write(make, u"target A 1,2,3 nullprojector nullprojector"_s).report);
    QVERIFY2(body.startsWith("\nWriting 0 targets in 0 projectors to file "), body);
}

void TestMakesAlike::aPartFileThatCannotBeOpenedStopsNothing_data()
{
    AddMakes([](const Make&) { return true; });
}

void TestMakesAlike::aPartFileThatCannotBeOpenedStopsNothing()
{
    QFETCH(Make, make);
    const QString file = QString::fromLatin1(make.partFile);
    QFile::remove(file);
    QVERIFY(QDir().mkpath(file)); // a folder of that name
    const auto unblock = qScopeGuard([&] { QDir().rmdir(file); });
    TestJob job(u"filetype %1 ply P { contour { open C 1,2,3 2,3,4 } parameter literal L }"_s.arg(make.fileType));
    QVERIFY(job.WriteFileType(file));
    QCOMPARE(QueuedMessages().size(), 1); // it says "successfully" all the same
    QVERIFY(ReadBytes(file + u"-report.htm"_s).contains("   Number of Plies = 1\n"));
}

void TestMakesAlike::aTargetsFileThatCannotBeOpenedStopsNothing_data()
{
    AddMakes([](const Make& make) { return make.targetsFile != nullptr; });
}

void TestMakesAlike::aTargetsFileThatCannotBeOpenedStopsNothing()
{
    QFETCH(Make, make);
    const QString job = u"target A 1,2,3 projector P { 1 } ply P { contour { open 1,2,3 } }"_s;
    const auto whole = Write(make, job);
    QVERIFY(whole.hasTargets);
    const QString file = QString::fromLatin1(make.targetsFile);
    QVERIFY(QFile::remove(file) && QDir().mkpath(file));
    const auto unblock = qScopeGuard([&] { QDir().rmdir(file); });
    const auto output = WriteOutput(u"filetype %1\n"_s.arg(make.fileType) + job, QString::fromLatin1(make.partFile));
    COMPARE_TEXT(output.part, whole.part);
    COMPARE_TEXT(ReportBody(output.report), ReportBody(whole.report)); // it says that they were written
}

QTEST_GUILESS_MAIN(TestMakesAlike)
#include "TestMakesAlike.moc"
