#include "openhost/ZETSystem/ZETOpenMessageQueue.h"
#include "tests/support/TestFiles.h"
#include "tests/support/TestRandomJob.h"
#include "tests/support/TestRecords.h"
#include "writers/ZETLaserWriterVirtek.h"

#include <QRandomGenerator>
#include <QtTest>

#include <cmath>

using namespace Qt::Literals::StringLiterals;

namespace
{
constexpr int decimals = 6;

/*! Reads the records of a part file, with nothing but the layout of the format. Literal lines are known by their first
 *  character, which random jobs see to. */
class Reader
{
public:
    explicit Reader(const QByteArray& bytes)
        : lines(QString::fromUtf8(bytes).split(u'\n'))
    {
        if (lines.takeLast() != u""_s)
            fault = u"the last line doesn't end"_s;
    }

    QList<TestRecord> ReadAll()
    {
        QList<TestRecord> records;
        while (next < lines.size() && fault.isEmpty())
            records += ReadRecord();
        return records;
    }

    QString GetFault() const { return fault; }

private:
    QString Take()
    {
        if (next < lines.size())
            return lines[next++];
        fault = u"the file ends inside a record"_s;
        return QString();
    }

    TestRecord ReadRecord()
    {
        const QString line = Take();
        TestRecord record{line, {}};
        if (line.startsWith("P "_L1))
            ReadPoints(record, line.mid(2).toInt());
        else if (line.startsWith("T 3 "_L1))
            ReadPoints(record, 3);
        else if (line.startsWith("I "_L1))
            for (int i = line.mid(2).toInt(); i > 0; --i)
                record.head += u'|' + Take();
        else if (line == "L 1"_L1 || line == "Q 1"_L1)
            record.head += u'|' + Take();
        else if (!line.startsWith("LAYER START "_L1) && !line.startsWith("LAYER END "_L1) &&
                 !line.startsWith("START "_L1) && !line.startsWith("END "_L1) && !line.startsWith("G 0 "_L1) &&
                 !line.startsWith(u'!') && !(line == "EOD"_L1 && next == lines.size()))
            fault = u"not a record: "_s + line;
        return record;
    }

    void ReadPoints(TestRecord& record, int count)
    {
        for (; count > 0; --count) {
            const QString line = Take();
            const auto numbers = ReadPointLine(line, decimals);
            if (numbers.isEmpty())
                fault = u"not a point: "_s + line;
            record.points += numbers;
        }
    }

    QStringList lines;
    qsizetype next = 0;
    QString fault;
};

/*! What a part file must hold, from the random job itself. */
class Expectation
{
public:
    explicit Expectation(const TestRandomJob& random)
        : job(random)
    {
        for (const auto& group : job.groups)
            Expect(group);
        records += TestRecord{u"EOD"_s, {}};
    }

    QList<TestRecord> records;
    int plies = 0;
    int subPlies = 0;

private:
    using Group = TestRandomJob::Group;

    void Expect(const Group& group)
    {
        if (!group.HasOutput())
            return;
        plies += group.kind == "ply"_L1;
        subPlies += group.kind == "subply"_L1;
        const bool isPly = group.IsPly();
        const bool isLayer = !isPly && (group.kind != "layup"_L1 || job.nestSequences);
        if (isLayer)
            Add(u"LAYER START "_s + group.name);
        for (const auto& child : group.groups)
            Expect(child);
        if (group.groups.isEmpty()) {
            Add(u"START "_s + group.name);
            if (job.rosetteFirst && isPly)
                ExpectTexts(group);
            for (const auto& curve : group.curves)
                ExpectCurve(curve);
            if (!job.rosetteFirst && isPly)
                ExpectTexts(group);
            Add(u"END "_s + group.name);
        }
        if (isLayer)
            Add(u"LAYER END "_s + group.name);
    }

    void ExpectTexts(const Group& group)
    {
        QStringList information;
        for (const auto& parameter : group.parameters)
            if (parameter.type == 0)
                information += parameter.text;
        if (!information.isEmpty())
            Add(u"I %1|"_s.arg(information.size()) + information.join(u'|'));
        for (const auto& parameter : group.parameters) {
            switch (parameter.type) {
            case 1:
                Add(u"L 1|"_s + parameter.text);
                break;
            case 2:
                Add(u"G 0 "_s + parameter.text);
                break;
            case 3:
                Add(u"Q 1|"_s + parameter.text);
                break;
            case 4:
                Add(parameter.text);
                break;
            }
        }
        for (const auto& text : group.texts) {
            TestRecord record{u"T 3 "_s + text.text, {}};
            record.points += job.Place(text.origin);
            record.points += job.Place(text.origin + text.first * text.size);
            record.points += job.Place(text.origin + text.second);
            records += record;
        }
    }

    void ExpectCurve(const TestRandomJob::Curve& curve)
    {
        if (curve.points.isEmpty())
            return;
        const auto points = job.GetWrittenPoints(curve);
        records += TestRecord{u"P %1"_s.arg(points.size()), points};
    }

    void Add(const QString& head) { records += TestRecord{head, {}}; }

    const TestRandomJob& job;
};
} // namespace

class TestWriterVirtekReadBack : public QObject
{
    Q_OBJECT

private slots:
    void init() { ZETOpenMessageQueue::Install(); }
    void cleanup() { ZETOpenMessageQueue::Remove(); }
    void randomJobsReadBackAsTheyAre();
    void theReaderFindsFaults_data();
    void theReaderFindsFaults();
    void randomTargetsReadBackAsTheyAre();
};

void TestWriterVirtekReadBack::randomJobsReadBackAsTheyAre()
{
    int records = 0;
    for (quint32 seed = 1; seed <= 300; ++seed) {
        const TestRandomJob random(seed);
        TestJob job(random.ToText());
        QVERIFY(job.Write<ZETLaserWriterVirtek>(u"random.ply"_s));
        Reader reader(ReadBytes(u"random.ply"_s));
        const auto actual = reader.ReadAll();
        const Expectation expected(random);
        const QString difference =
            reader.GetFault().isEmpty() ? GetDifference(actual, expected.records, decimals) : reader.GetFault();
        QVERIFY2(difference.isEmpty(), qPrintable(u"seed %1: %2\n%3"_s.arg(seed).arg(difference, random.ToText())));
        records += int(actual.size());

        const QByteArray report = ReadBytes(u"random.ply-report.htm"_s);
        const auto counts = [&](const char* text, int count) {
            return report.contains(QByteArray(text) + QByteArray::number(count) + '\n') == (count > 0);
        };
        QVERIFY2(counts("   Number of Plies = ", expected.plies), qPrintable(u"seed %1"_s.arg(seed)));
        QVERIFY2(counts("   Number of Sub-plies = ", expected.subPlies), qPrintable(u"seed %1"_s.arg(seed)));
    }
    QVERIFY(records > 3000); // the jobs aren't all empty
}

void TestWriterVirtekReadBack::theReaderFindsFaults_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::newRow("point with seven decimals") << "START P\nP 1\n0.0000000 0.000000 0.000000\nEND P\nEOD\n"_ba;
    QTest::newRow("trailing blank") << "START P\nP 1\n0.000000 0.000000 0.000000 \nEND P\nEOD\n"_ba;
    QTest::newRow("two blanks ahead of the normal")
        << "P 1\n0.000000 0.000000 0.000000  0.000000 0.000000 0.000000\nEOD\n"_ba;
    QTest::newRow("count too large") << "P 2\n0.000000 0.000000 0.000000\nEOD\n"_ba;
    QTest::newRow("end of data in the middle") << "EOD\nEOD\n"_ba;
    QTest::newRow("no line end") << "EOD"_ba;
    QTest::newRow("unknown keyword") << "LAYERSTART L\nEOD\n"_ba;
}

void TestWriterVirtekReadBack::theReaderFindsFaults()
{
    QFETCH(QByteArray, file);
    Reader reader(file);
    reader.ReadAll();
    QVERIFY(!reader.GetFault().isEmpty());
}

void TestWriterVirtekReadBack::randomTargetsReadBackAsTheyAre()
{
    QRandomGenerator random(7);
    for (int round = 0; round < 50; ++round) {
        QString text = round % 2 ? u"units inch\n"_s : QString();
        const double scale = round % 2 ? 1.0 / 25.4 : 1.0;
        const int count = random.bounded(1, 20);
        QList<QList<double>> coordinates;
        QList<bool> drifts;
        for (int i = 0; i < count; ++i) {
            coordinates += TestRandomJob::RandomNumbers(random);
            drifts += random.bounded(2) == 1;
            text += u"target \"T %1\" %2,%3,%4%5\n"_s.arg(i)
                        .arg(coordinates[i][0], 0, 'g', 17)
                        .arg(coordinates[i][1], 0, 'g', 17)
                        .arg(coordinates[i][2], 0, 'g', 17)
                        .arg(drifts[i] ? u" drift"_s : u""_s);
        }
        TestJob job(text);
        QVERIFY(job.Write<ZETLaserWriterVirtek>(u"targets.ply"_s));
        const QStringList lines = QString::fromUtf8(ReadBytes(u"targets.cal"_s)).split(u'\n');
        QCOMPARE(lines.size(), count + 2);
        QCOMPARE(lines.first(), QString::number(count));
        for (int i = 0; i < count; ++i) {
            const QStringList words = lines[i + 1].split(u' ');
            QCOMPARE(words.size(), drifts[i] ? 6 : 5);
            QCOMPARE(words[0], u"T"_s);
            QCOMPARE(words[1], u"T_%1"_s.arg(i));
            QCOMPARE(words[2] == u"D"_s, drifts[i]);
            for (int c = 0; c < 3; ++c) {
                const double expected = coordinates[i][c] * scale;
                QVERIFY(std::abs(words[words.size() - 3 + c].toDouble() - expected) <=
                        0.5e-6 + 1e-14 * std::abs(expected));
            }
        }
    }
}

QTEST_GUILESS_MAIN(TestWriterVirtekReadBack)
#include "TestWriterVirtekReadBack.moc"
