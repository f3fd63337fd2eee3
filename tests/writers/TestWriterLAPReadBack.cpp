#include "openhost/ZETSystem/ZETOpenMessageQueue.h"
#include "tests/support/TestFiles.h"
#include "tests/support/TestRandomJob.h"
#include "tests/support/TestRecords.h"
#include "writers/ZETLaserWriterLAP.h"

#include <QtTest>

using namespace Qt::Literals::StringLiterals;

namespace
{
constexpr int pointDecimals = 3;

/*! Reads the blocks of a projection file, with nothing but the layout of the format: each block must have its colour,
 * and end where it may. Literal lines are known by their first character. */
class Reader
{
public:
    explicit Reader(const QByteArray& bytes)
        : lines(QString::fromUtf8(bytes).split(u'\n'))
    {
        if (lines.takeLast() != u""_s)
            fault = u"the last line doesn't end"_s;
    }

    QList<TestRecord> ReadAll(const QString& scale)
    {
        const QStringList opening{u"#switch to red if any error occurs"_s,
                                  u"ALERT red"_s,
                                  u"#Identification"_s,
                                  u"ID_START"_s,
                                  u"ID_SYNTAX \"1.5\""_s,
                                  u"ID_END"_s,
                                  u"#Source: Vantrell Norvale"_s,
                                  u"PROJECTION_SCALE "_s + scale,
                                  u"PROJECTION_START \"Projection\""_s,
                                  u"DRAWING_START \"\""_s};
        for (const auto& line : opening)
            Expect(line);
        ReadLayers(u"DRAWING_END"_s);
        Expect(u"PROJECTION_END"_s);
        if (next != lines.size() && fault.isEmpty())
            fault = u"lines behind the end"_s;
        return records;
    }

    QString GetFault() const { return fault; }

private:
    QString Take()
    {
        if (next < lines.size())
            return lines[next++];
        if (fault.isEmpty())
            fault = u"the file ends too early"_s;
        return QString();
    }
    void Expect(const QString& expected)
    {
        const QString line = Take();
        if (line != expected && fault.isEmpty())
            fault = u"line %1 is %2, expected %3"_s.arg(next).arg(line, expected);
    }
    /*! Begins a block of that kind, if \a line does. */
    bool Begin(const QString& line, const QString& kind)
    {
        const QString start = kind + u"_START \""_s;
        if (!line.startsWith(start) || !line.endsWith(u'"'))
            return false;
        Expect(kind + u"_COLOR Green"_s);
        records += TestRecord{kind + u' ' + line.mid(start.size()).chopped(1), {}};
        return true;
    }

    void ReadLayers(const QString& end)
    {
        for (QString line = Take(); fault.isEmpty() && line != end; line = Take()) {
            if (Begin(line, u"LAYER"_s)) {
                ReadLayers(u"LAYER_END"_s);
                records += TestRecord{u"LAYER_END"_s, {}};
            } else if (Begin(line, u"GROUP"_s)) {
                ReadEntities();
            } else if (line.startsWith(u'!')) {
                records += TestRecord{line, {}};
            } else {
                fault = u"not a record: "_s + line;
            }
        }
    }

    void ReadEntities()
    {
        for (QString line = Take(); fault.isEmpty() && line != u"GROUP_END"_s; line = Take()) {
            if (Begin(line, u"ENTITY"_s))
                ReadPoints();
            else
                fault = u"not an entity: "_s + line;
        }
    }

    void ReadPoints()
    {
        for (QString line = Take(); fault.isEmpty() && line != u"ENTITY_END"_s; line = Take()) {
            const auto numbers = ReadPointLine(line, pointDecimals);
            if (numbers.isEmpty())
                fault = u"not a point: "_s + line;
            records.last().points += numbers;
        }
    }

    QStringList lines;
    qsizetype next = 0;
    QString fault;
    QList<TestRecord> records;
};

/*! What a projection file must hold, from the random job itself. */
class Expectation
{
public:
    explicit Expectation(const TestRandomJob& random)
        : job(random)
    {
        for (const auto& group : job.groups)
            Expect(group);
    }

    QList<TestRecord> records;

private:
    void Expect(const TestRandomJob::Group& group)
    {
        if (!group.HasOutput())
            return;
        const bool isPly = group.IsPly();
        const bool isLayer = !isPly && (group.kind != "layup"_L1 || job.nestSequences);
        if (isLayer)
            records += TestRecord{u"LAYER "_s + group.name, {}};
        for (const auto& child : group.groups)
            Expect(child);
        if (group.groups.isEmpty()) {
            if (job.rosetteFirst && isPly)
                ExpectLiterals(group);
            for (const auto& curve : group.curves)
                ExpectCurve(curve);
            if (!job.rosetteFirst && isPly)
                ExpectLiterals(group);
        }
        if (isLayer)
            records += TestRecord{u"LAYER_END"_s, {}};
    }

    void ExpectLiterals(const TestRandomJob::Group& group)
    {
        for (const auto& parameter : group.parameters) {
            if (parameter.type == 4)
                records += TestRecord{parameter.text, {}};
        }
    }

    void ExpectCurve(const TestRandomJob::Curve& curve)
    {
        if (curve.points.isEmpty())
            return;
        records += TestRecord{u"GROUP "_s, {}};
        records += TestRecord{u"ENTITY "_s + curve.name, job.GetWrittenPoints(curve)};
    }

    const TestRandomJob& job;
};
} // namespace

class TestWriterLAPReadBack : public QObject
{
    Q_OBJECT

private slots:
    void init() { ZETOpenMessageQueue::Install(); }
    void cleanup() { ZETOpenMessageQueue::Remove(); }
    void randomJobsReadBackAsTheyAre();
    void theReaderFindsFaults_data();
    void theReaderFindsFaults();
};

void TestWriterLAPReadBack::randomJobsReadBackAsTheyAre()
{
    qsizetype records = 0;
    for (quint32 seed = 1; seed <= 300; ++seed) {
        const TestRandomJob random(seed);
        TestJob job(random.ToText());
        QVERIFY(job.Write<ZETLaserWriterLAP>(u"random.lpd"_s));
        Reader reader(ReadBytes(u"random.lpd"_s));
        const auto actual = reader.ReadAll(random.inches ? u"in"_s : u"mm"_s);
        const auto expected = Expectation(random).records;
        const QString difference =
            reader.GetFault().isEmpty() ? GetDifference(actual, expected, pointDecimals) : reader.GetFault();
        QVERIFY2(difference.isEmpty(), qPrintable(u"seed %1: %2\n%3"_s.arg(seed).arg(difference, random.ToText())));
        records += actual.size();
    }
    QVERIFY(records > 3000); // the jobs aren't all empty
}

void TestWriterLAPReadBack::theReaderFindsFaults_data()
{
    QTest::addColumn<QByteArray>("from");
    QTest::addColumn<QByteArray>("to");
    QTest::newRow("missing colour") << "GROUP_COLOR Green\n"_ba
                                    << ""_ba;
    QTest::newRow("missing end") << "ENTITY_END\n"_ba
                                 << ""_ba;
    QTest::newRow("missing closing") << "PROJECTION_END\n"_ba
                                     << ""_ba;
    QTest::newRow("six decimals") << "1.000 2.000 3.000"_ba
                                  << "1.000000 2.000000 3.000000"_ba;
    QTest::newRow("trailing blank") << "3.000\n"_ba
                                    << "3.000 \n"_ba;
    QTest::newRow("wrong scale") << "SCALE mm"_ba
                                 << "SCALE in"_ba;
    QTest::newRow("line behind the end") << "PROJECTION_END\n"_ba
                                         << "PROJECTION_END\n\n"_ba;
}

void TestWriterLAPReadBack::theReaderFindsFaults()
{
    QFETCH(QByteArray, from);
    QFETCH(QByteArray, to);
    TestJob job(u"ply P { contour { open 1,2,3 } }"_s);
    QVERIFY(job.Write<ZETLaserWriterLAP>(u"sound.lpd"_s));
    QByteArray bytes = ReadBytes(u"sound.lpd"_s);
    Reader sound(bytes);
    sound.ReadAll(u"mm"_s);
    QCOMPARE(sound.GetFault(), u""_s);
    QVERIFY(bytes.contains(from));
    Reader broken(bytes.replace(from, to));
    broken.ReadAll(u"mm"_s);
    QVERIFY(!broken.GetFault().isEmpty());
}

QTEST_GUILESS_MAIN(TestWriterLAPReadBack)
#include "TestWriterLAPReadBack.moc"
