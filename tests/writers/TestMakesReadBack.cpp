#include "openhost/ZETSystem/ZETOpenMessageQueue.h"
#include "tests/support/TestFiles.h"
#include "tests/support/TestOutput.h"
#include "tests/writers/MakeFormats.h"

#include <QProcess>
#include <QRandomGenerator>
#include <QStandardPaths>
#include <QtTest>

#include <cmath>

using namespace Qt::Literals::StringLiterals;

namespace
{
/*! Literals go into an XML file as they are, which makes it anything but XML. */
void RemoveLiterals(QList<TestRandomJob::Group>& groups)
{
    for (auto& group : groups) {
        group.parameters.removeIf([](const TestRandomJob::Parameter& parameter) { return parameter.type == 4; });
        RemoveLiterals(group.groups);
    }
}

TestRandomJob MakeJob(const MakeFormat& format, quint32 seed)
{
    TestRandomJob job(seed);
    if (QByteArray(format.partFile).endsWith(".XML"))
        RemoveLiterals(job.groups);
    return job;
}

/*! What is wrong with \a file as that of \a job; empty if nothing is. */
QString FindFault(const MakeFormat& format, const TestRandomJob& job, const QByteArray& file)
{
    QString fault;
    const auto records = format.read(file, format.decimals, &fault);
    return fault.isEmpty() ? GetDifference(records, format.expect(job), format.decimals) : fault;
}

void CountPlies(const QList<TestRandomJob::Group>& groups, int* plies, int* subPlies)
{
    for (const auto& group : groups) {
        if (!group.HasOutput())
            continue;
        *plies += group.kind == "ply"_L1;
        *subPlies += group.kind == "subply"_L1;
        CountPlies(group.groups, plies, subPlies);
    }
}

void AddFormats(bool withStubs)
{
    QTest::addColumn<int>("index");
    const auto formats = MakeFormat::GetAll();
    for (int i = 0; i < formats.size(); ++i) {
        if (withStubs || !QByteArray(formats[i].name).startsWith("APT"))
            QTest::newRow(formats[i].name) << i;
    }
}

/*! How a format writes a target: the text around the numbers for a label, laser and index from 0 in it, \a running from
 *  0 through the job, and whether the job has projectors. */
struct TargetFormat {
    const char* name;
    int fileType;
    const char* partFile;
    const char* targetsFile; //!< null: within the part file
    QString (*head)(const QString& label, int laser, int index, int running, bool projectors);
    const char* start; //!< how a line of a target begins
};

const QList<TargetFormat>& GetTargetFormats()
{
    static const QList<TargetFormat> formats{
        {"Virtek", 0, "random.ply", "random.cal",
         [](const QString& label, int, int, int, bool) { return u"T %1 # # #"_s.arg(label); }, "T "},
        {"LPT", 1, "random.XML", "Tool-random.XML",
         [](const QString& label, int laser, int index, int, bool) {
             return u"        <TARGET LASERNUMBER=\"%1\" NUMBER=\"%2\" NAME=\"%3\" DVAL=\"OFF\" XVAL=\"#\" YVAL=\"#\" "
                    "ZVAL=\"#\" ANGLE1=\"\" ANGLE2=\"\" DISTANCE=\"\" SCANRATIO=\"1.0\" SEARCHRATIO=\"1.0\" "
                    "MISSING=\"\"/>"_s.arg(laser)
                        .arg(index + 1)
                        .arg(label);
         },
         "        <TARGET "},
        {"LAP", 3, "random.lpd", "random.cal",
         [](const QString&, int, int, int running, bool projectors) {
             return u"T %1 # # #"_s.arg(projectors ? running + 1 : running);
         },
         "T "},
        {"SL", 4, "random.sl", "random.cp1",
         [](const QString& label, int laser, int index, int, bool projectors) {
             return u"L=%1\tP=%2\tX=#\tY=#\tZ=#\tXP=0\tYP=0\tG=1\tA=1\tQ=1\tC=1\tL=%1\tL=%1\tT=%3"_s.arg(laser)
                 .arg(projectors ? index + 1 : index)
                 .arg(label);
         },
         "L="},
        {"General Scanning", 7, "random.PRT", nullptr,
         [](const QString&, int laser, int index, int, bool) {
             return u"N000-%1-%2G07X#Y#Z#"_s.arg(laser, 2, 10, QLatin1Char('0'))
                 .arg(index + 1, 2, 10, QLatin1Char('0'));
         },
         "N000-0"},
    };
    return formats;
}

/*! The records of the targets in \a file: lines that begin so, and hold numbers. */
QList<TestRecord> ReadTargets(const QByteArray& file, const char* start, int decimals)
{
    QList<TestRecord> targets;
    for (QString line : QString::fromUtf8(file).split(u'\n')) {
        // In one format a target stands behind the end of the projector before.
        static const QRegularExpression projectorEnds(uR"(^(N000-\d\d-00M02)+)"_s);
        line.remove(projectorEnds);
        const TestRecord record = ReadLine(line, decimals);
        if (line.startsWith(QLatin1StringView(start)) && !record.points.isEmpty())
            targets += record;
    }
    return targets;
}
} // namespace

/*! Random jobs in every text format, read back. */
class TestMakesReadBack : public QObject
{
    Q_OBJECT

private slots:
    void init() { ZETOpenMessageQueue::Install(); }
    void cleanup() { ZETOpenMessageQueue::Remove(); }

    void randomJobsReadBackAsTheyAre_data() { AddFormats(false); }
    void randomJobsReadBackAsTheyAre();
    void theComparisonFindsFaults_data() { AddFormats(true); }
    void theComparisonFindsFaults();
    void settingsShowInEveryMake_data() { AddFormats(true); }
    void settingsShowInEveryMake();
    void anotherXmlParserReadsTheFiles();
    void randomTargetsReadBackAsTheyAre_data();
    void randomTargetsReadBackAsTheyAre();
};

void TestMakesReadBack::randomJobsReadBackAsTheyAre()
{
    QFETCH(int, index);
    const auto format = MakeFormat::GetAll().at(index);
    qsizetype lines = 0;
    for (quint32 seed = 1; seed <= 200; ++seed) {
        const TestRandomJob job = MakeJob(format, seed);
        const auto output = WriteOutput(format.ToText(job), QString::fromLatin1(format.partFile));
        const QString fault = FindFault(format, job, output.part);
        QVERIFY2(fault.isEmpty(), qPrintable(u"seed %1: %2\n%3"_s.arg(seed).arg(fault, job.ToText())));
        lines += output.part.count('\n');

        int plies = 0;
        int subPlies = 0;
        CountPlies(job.groups, &plies, &subPlies);
        const auto tells = [&](const char* text, int count) {
            return output.report.contains(QByteArray(text) + QByteArray::number(count) + '\n') == (count > 0);
        };
        QVERIFY2(tells("   Number of Plies = ", plies), qPrintable(u"seed %1"_s.arg(seed)));
        QVERIFY2(tells("   Number of Sub-plies = ", subPlies), qPrintable(u"seed %1"_s.arg(seed)));
    }
    QVERIFY(lines > 3000); // the jobs aren't all empty
}

void TestMakesReadBack::theComparisonFindsFaults()
{
    QFETCH(int, index);
    const auto format = MakeFormat::GetAll().at(index);
    const bool isStub = QByteArray(format.name).startsWith("APT");
    for (quint32 seed = 1; seed <= 20; ++seed) {
        const TestRandomJob job = MakeJob(format, seed);
        const QByteArray part = WriteOutput(format.ToText(job), QString::fromLatin1(format.partFile)).part;
        QCOMPARE(FindFault(format, job, part), u""_s);

        // Any line taken out, and a digit changed in any number.
        const QByteArrayList lines = part.split('\n');
        const qsizetype line = 1 + (seed * 7) % qMax(1, int(lines.size()) - 3);
        QByteArrayList shortened = lines;
        shortened.removeAt(line);
        if (!lines[line].isEmpty())
            QVERIFY2(!FindFault(format, job, shortened.join('\n')).isEmpty(), lines[line].constData());
        const QRegularExpression number(uR"(\d\.\d{%1}(?!\d))"_s.arg(format.decimals));
        const auto match = number.match(QString::fromLatin1(part));
        if (!match.hasMatch() || isStub)
            continue;
        QByteArray changed = part;
        char& digit = changed.data()[match.capturedEnd() - 1];
        digit = digit >= '5' ? char(digit - 2) : char(digit + 2);
        QVERIFY(!FindFault(format, job, changed).isEmpty());
    }
}

void TestMakesReadBack::settingsShowInEveryMake()
{
    QFETCH(int, index);
    const auto format = MakeFormat::GetAll().at(index);
    QSet<QByteArray> files;
    for (quint32 seed = 40; seed < 44; ++seed) {
        for (int settings = 0; settings < 64; ++settings) {
            TestRandomJob job = MakeJob(format, seed);
            job.inches = settings & 1;
            job.hasAxis = settings & 2;
            job.normals = settings & 4;
            job.rosetteFirst = settings & 8;
            job.nestSequences = settings & 16;
            const QString nestPlies = settings & 32 ? u"nestplies on\n"_s : u"nestplies off\n"_s;
            const QByteArray part =
                WriteOutput(nestPlies + format.ToText(job), QString::fromLatin1(format.partFile)).part;
            const QString fault = FindFault(format, job, part);
            QVERIFY2(fault.isEmpty(), qPrintable(u"seed %1, settings %2: %3\n%4"_s.arg(seed).arg(settings).arg(
                                          fault, format.ToText(job))));
            files.insert(part);
        }
    }
    // The settings make a difference: two files at least for units, axis and normals each, but for the stubs.
    QVERIFY2(QByteArray(format.name).startsWith("APT") ? files.size() == 1 : files.size() >= 8,
             qPrintable(QString::number(files.size())));
}

void TestMakesReadBack::anotherXmlParserReadsTheFiles()
{
    const QString program = QStandardPaths::findExecutable(u"xmllint"_s);
    if (program.isEmpty())
        QSKIP("xmllint isn't installed; the files are read with Qt's parser alone");
    const auto format = MakeFormat::GetAll().at(1);
    QStringList files;
    for (quint32 seed = 1; seed <= 50; ++seed) {
        const TestRandomJob job = MakeJob(format, seed);
        const QString file = u"lint%1.XML"_s.arg(seed);
        const QString tool = u"Tool-"_s + file;
        QVERIFY(WriteOutput(u"target \"A <&> B\" 1,2,3\n"_s + format.ToText(job), file, tool).hasTargets);
        files << file << tool;
    }
    QCOMPARE(QProcess::execute(program, QStringList(u"--noout"_s) + files), 0);
}

void TestMakesReadBack::randomTargetsReadBackAsTheyAre_data()
{
    QTest::addColumn<int>("index");
    for (int i = 0; i < GetTargetFormats().size(); ++i)
        QTest::newRow(GetTargetFormats()[i].name) << i;
}

void TestMakesReadBack::randomTargetsReadBackAsTheyAre()
{
    QFETCH(int, index);
    const TargetFormat& format = GetTargetFormats()[index];
    QRandomGenerator random(11);
    for (int round = 0; round < 40; ++round) {
        const bool inches = round % 2;
        const int projectors = round % 4; // 0: all targets in one
        const int count = random.bounded(1, 12);
        QString text = u"filetype %1 units %2\n"_s.arg(format.fileType).arg(inches ? u"inch"_s : u"mm"_s);
        QList<QList<double>> places;
        for (int i = 0; i < count; ++i) {
            QList<double> place = TestRandomJob::RandomNumbers(random);
            text += u"target T%1 "_s.arg(i) + QString::number(place[0], 'g', 17) + u',' +
                    QString::number(place[1], 'g', 17) + u',' + QString::number(place[2], 'g', 17) + u'\n';
            for (double& number : place)
                number *= inches ? 1.0 / 25.4 : 1.0;
            places += place;
        }
        QList<TestRecord> expected;
        for (int laser = 1; laser <= qMax(1, projectors); ++laser) {
            text += projectors ? u"projector P {"_s : QString();
            const int own = projectors ? int(random.bounded(count + 1)) : count;
            for (int i = 0; i < own; ++i) {
                const int target = projectors ? int(random.bounded(count)) : i;
                text += projectors ? u" %1"_s.arg(target + 1) : QString();
                const QString label = u"T%1"_s.arg(target);
                expected += {format.head(label, laser, i, int(expected.size()), projectors > 0), {places[target]}};
            }
            text += projectors ? u" }\n"_s : QString();
        }
        const auto output =
            WriteOutput(text, QString::fromLatin1(format.partFile), QString::fromLatin1(format.targetsFile));
        const auto actual = ReadTargets(format.targetsFile ? output.targets : output.part, format.start, 6);
        const QString difference = GetDifference(actual, expected, 6);
        QVERIFY2(difference.isEmpty(), qPrintable(difference + u'\n' + text));
        QVERIFY(output.report.contains("Writing " + QByteArray::number(expected.size()) + " targets"));
    }
}

QTEST_GUILESS_MAIN(TestMakesReadBack)
#include "TestMakesReadBack.moc"
