#include "openhost/ZETSystem/ZETOpenMessageQueue.h"
#include "tests/support/TestFiles.h"
#include "tests/support/TestOutput.h"
#include "tests/support/TestTranslator.h"

#include <QtTest>

using namespace Qt::Literals::StringLiterals;

class TestWriterAPT : public QObject
{
    Q_OBJECT

private slots:
    void init() { ZETOpenMessageQueue::Install(); }
    void cleanup() { ZETOpenMessageQueue::Remove(); }

    void theStubIsTheSameForEveryTree_data();
    void theStubIsTheSameForEveryTree();
    void theUserIsToldThatTheFormatIsNotSupported_data() { theStubIsTheSameForEveryTree_data(); }
    void theUserIsToldThatTheFormatIsNotSupported();
    void theMessageIsTranslatedAndTheFormatIsNot_data() { theStubIsTheSameForEveryTree_data(); }
    void theMessageIsTranslatedAndTheFormatIsNot();
    void withoutAQueueTheFilesAreWrittenAllTheSame();
    void theNameOfTheRootStandsAsItIs();
};

void TestWriterAPT::theStubIsTheSameForEveryTree_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QByteArray>("format");
    QTest::newRow("APT") << u"filetype 8 "_s << "APT"_ba;
    QTest::newRow("APT_2") << u"filetype 9 "_s << "APT_2"_ba;
    QTest::newRow("APT_SL") << u"filetype 10 "_s << "APT_SL"_ba;
}

void TestWriterAPT::theStubIsTheSameForEveryTree()
{
    QFETCH(QString, type);
    QFETCH(QByteArray, format);
    const QByteArray expected = "LAYER START myData\n... this will become " + format +
                                " ply data ...\nBaser laser Group Name R\nLAYER END myData\n";
    COMPARE_TEXT(WriteOutput(type + u"rootname R"_s, u"wing.APT"_s).part, expected);
    COMPARE_TEXT(WriteOutput(type + u"rootname R target T 0,0,0 ply P { contour { open 0,0,0 } parameter note N }"_s,
                             u"wing.APT"_s)
                     .part,
                 expected);
}

void TestWriterAPT::theUserIsToldThatTheFormatIsNotSupported()
{
    QFETCH(QString, type);
    QFETCH(QByteArray, format);
    const auto output = WriteOutput(type + u"target T 0,0,0 ply P { contour { open 0,0,0 } }"_s, u"wing.APT"_s);
    QCOMPARE(QueuedMessages(), QStringList(u"2 %1 laser data not supported"_s.arg(QString::fromLatin1(format))));
    // The tree isn't walked, so nothing is counted; targets aren't looked for.
    COMPARE_TEXT(ReportBody(output.report), ""_ba);
    QVERIFY(output.report.contains("\n\nNO PLY DATA WRITTEN!\n"));
    QVERIFY(output.report.contains("Warning & Error messages:\n" + format + " laser data not supported\n"));
}

void TestWriterAPT::theMessageIsTranslatedAndTheFormatIsNot()
{
    QFETCH(QString, type);
    QFETCH(QByteArray, format);
    const QByteArray context = "ZETLaserWriter" + format;
    const TestTranslator translator(context.constData());
    const auto output = WriteOutput(type + u"rootname R"_s, u"wing.APT"_s);
    QCOMPARE(QueuedMessages(), QStringList(u"2 * %1 laser data not supported"_s.arg(QString::fromLatin1(format))));
    QVERIFY(output.part.startsWith("LAYER START myData\n... this will become " + format + " ply data ...\n"));
}

void TestWriterAPT::withoutAQueueTheFilesAreWrittenAllTheSame()
{
    ZETOpenMessageQueue::Remove();
    const auto output = WriteOutput(u"filetype 8"_s, u"wing.APT"_s);
    QVERIFY(output.part.endsWith("LAYER END myData\n"));
    QVERIFY(output.report.endsWith("</HTML>\n"));
}

void TestWriterAPT::theNameOfTheRootStandsAsItIs()
{
    QVERIFY(WriteOutput(u"filetype 8 rootname \" a  b \""_s, u"wing.APT"_s)
                .part.contains("\nBaser laser Group Name  a  b \n"));
}

QTEST_GUILESS_MAIN(TestWriterAPT)
#include "TestWriterAPT.moc"
