#include "openhost/ZETSystem/ZETOpenMessageQueue.h"
#include "tests/support/TestDxf.h"
#include "tests/support/TestFiles.h"
#include "tests/support/TestRandomJob.h"
#include "writers/ZETLaserWriterDXF.h"

#include <ZETMathematics/ZETMathBoundingBox.h>

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QStandardPaths>
#include <QtTest>

using namespace Qt::Literals::StringLiterals;

namespace
{
/*! The settings of a job, other than the library's own, so that none is mistaken for another. */
constexpr int textLayer = 11;
constexpr int textColor = 2;
constexpr int geometryLayer = 12;
constexpr int geometryColor = 3;
constexpr int lineStyle = 5;
constexpr double labelHeight = 7.5;
const QString partName = u"Fl\u00fcgel <left>"_s;

/*! What a file must hold, from the random job itself. */
class Expectation
{
public:
    Expectation(const TestRandomJob& random, bool nesting)
        : job(random)
        , isNesting(nesting)
    {
        ExpectLabel();
        for (const auto& group : job.groups)
            Expect(group);
    }

    QJsonArray entities;

private:
    using Group = TestRandomJob::Group;
    using Curve = TestRandomJob::Curve;

    double GetScale() const { return job.inches ? 1.0 / 25.4 : 1.0; }

    void ExpectLabel()
    {
        ZETMathBoundingBox box;
        if (const Group* ply = FindPly(job.groups); ply && !ply->curves.isEmpty()) {
            for (const auto& point : ply->curves.first().points)
                box.Expand(ZETMathBoundingBox(point.position, point.position));
        }
        const double scale = GetScale();
        const auto mean = [&](double low, double high) { return (low + high) / 2.0 * scale * scale; };
        const auto low = box.GetLowerPoint();
        const auto high = box.GetUpperPoint();
        const double height = labelHeight * scale;
        AddText(partName,
                {mean(low.GetX(), high.GetX()), mean(low.GetY(), high.GetY()) + (isNesting ? height : 0.0),
                 mean(low.GetZ(), high.GetZ())},
                height);
    }

    static const Group* FindPly(const QList<Group>& groups)
    {
        for (const auto& group : groups) {
            if (group.IsPly())
                return &group;
            if (const Group* inner = FindPly(group.groups))
                return inner;
        }
        return nullptr;
    }

    void Expect(const Group& group)
    {
        if (!group.HasOutput())
            return;
        for (const auto& child : group.groups)
            Expect(child);
        if (!group.groups.isEmpty())
            return;
        if (job.rosetteFirst)
            ExpectTexts(group);
        for (const auto& curve : group.curves)
            ExpectCurve(curve);
        if (!job.rosetteFirst)
            ExpectTexts(group);
    }

    void ExpectTexts(const Group& group)
    {
        if (!group.IsPly())
            return;
        const double millimetres = 1.0 / GetScale();
        for (const auto& text : group.texts) {
            QList<double> place = job.Place(text.origin);
            for (double& number : place)
                number *= millimetres; // a 3D text isn't scaled
            AddText(text.text, place, text.size);
        }
    }

    void ExpectCurve(const Curve& curve)
    {
        if (curve.points.isEmpty())
            return;
        QJsonArray points;
        for (const auto& point : curve.points)
            points.append(ToJson(job.Place(point.hasOffset ? point.offset : point.position)));
        entities.append(QJsonObject{{u"points"_s, points},
                                    {u"closed"_s, curve.closed},
                                    {u"is3D"_s, !isNesting},
                                    {u"layer"_s, QString::number(geometryLayer)},
                                    {u"color"_s, geometryColor},
                                    {u"lineStyle"_s, QString::number(lineStyle)}});
    }

    void AddText(const QString& text, const QList<double>& place, double height)
    {
        entities.append(QJsonObject{{u"text"_s, text},
                                    {u"at"_s, ToJson(place)},
                                    {u"height"_s, height},
                                    {u"layer"_s, QString::number(textLayer)},
                                    {u"color"_s, textColor}});
    }

    static QJsonArray ToJson(const QList<double>& numbers)
    {
        QJsonArray array;
        for (const double number : numbers)
            array.append(number);
        return array;
    }

    const TestRandomJob& job;
    bool isNesting;
};

void WriteBytes(const QString& name, const QByteArray& bytes)
{
    QFile file(name);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("can't write %s", qPrintable(name));
}

/*! Writes the random job into \a fileName, and beside it what has to be in it. */
int WriteRandom(quint32 seed, bool isNesting, const QString& fileName)
{
    const TestRandomJob random(seed);
    const QString settings =
        u"rootname \"%1\" labelsize %2 dxf %3 %4 %5 %6 %7 type %8 filemode single\n"_s.arg(partName)
            .arg(2.0 * labelHeight)
            .arg(textLayer)
            .arg(textColor)
            .arg(geometryLayer)
            .arg(geometryColor)
            .arg(lineStyle)
            .arg(isNesting ? 2 : 0);
    TestJob job(settings + random.ToText());
    if (!job.Write<ZETLaserWriterDXF>(fileName))
        qFatal("Write() returned false");
    const QJsonArray entities = Expectation(random, isNesting).entities;
    WriteBytes(fileName + u".expected.json"_s, QJsonDocument(entities).toJson());
    return int(entities.size());
}

/*! A new folder below the working folder. */
QString MakeFolder(const QString& name)
{
    QDir folder(QDir::current().filePath(name));
    folder.removeRecursively();
    if (!folder.mkpath(u"."_s))
        qFatal("can't make %s", qPrintable(folder.path()));
    return folder.path();
}
} // namespace

/*! Independent programs read what the writer makes. */
class TestWriterDXFReadBack : public QObject
{
    Q_OBJECT

private slots:
    void init() { ZETOpenMessageQueue::Install(); }
    void cleanup() { ZETOpenMessageQueue::Remove(); }
    void ezdxfFindsTheTreeInRandomJobs();
    void ezdxfReadsTheExpectedFiles();
    void ezdxfFindsFaults_data();
    void ezdxfFindsFaults();
    void libreCadDrawsAFile();
};

void TestWriterDXFReadBack::ezdxfFindsTheTreeInRandomJobs()
{
    const QString folder = MakeFolder(u"random"_s);
    int entities = 0;
    for (quint32 seed = 1; seed <= 100; ++seed) {
        entities += WriteRandom(seed, false, u"%1/laser-%2.DXF"_s.arg(folder).arg(seed));
        entities += WriteRandom(seed, true, u"%1/nesting-%2.DXF"_s.arg(folder).arg(seed));
    }
    QVERIFY2(entities > 1000, qPrintable(QString::number(entities))); // the jobs aren't all empty
    QString skipped;
    const QString faults = TestDxf::ReadWithEzdxf(folder, &skipped);
    if (!skipped.isEmpty())
        QSKIP(qPrintable(skipped));
    QVERIFY2(faults.isEmpty(), qPrintable(faults));
}

void TestWriterDXFReadBack::ezdxfReadsTheExpectedFiles()
{
    QString skipped;
    const QString faults = TestDxf::ReadWithEzdxf(QStringLiteral(ZET_SOURCE_DIR "/tests/golden/dxf"), &skipped);
    if (!skipped.isEmpty())
        QSKIP(qPrintable(skipped));
    QVERIFY2(faults.isEmpty(), qPrintable(faults));
}

void TestWriterDXFReadBack::ezdxfFindsFaults_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("after");
    QTest::addColumn<QString>("fault");
    QTest::newRow("coordinate") << "  10\n1.500000\n"_ba
                                << "  10\n1.500002\n"_ba << u"entity 2: found"_s;
    QTest::newRow("flag") << "  70\n9\n"_ba
                          << "  70\n8\n"_ba << u"entity 2: found"_s;
    QTest::newRow("text") << "  1\nWing\n"_ba
                          << "  1\nWinG\n"_ba << u"entity 1: found"_s;
    QTest::newRow("layer of a vertex") << "VERTEX\n  8\n1\n"_ba
                                       << "VERTEX\n  8\n2\n"_ba << u"a vertex is not on the layer"_s;
    QTest::newRow("units") << "$INSUNITS\n  70\n4\n"_ba
                           << "$INSUNITS\n  70\n5\n"_ba << u"units 5"_s;
    QTest::newRow("no end of the entities") << "  0\nENDSEC\n  0\nEOF\n"_ba << QByteArray() << u"not read"_s;
    QTest::newRow("no pair") << "  66\n1\n"_ba
                             << "  66\n"_ba << u"not read"_s;
    QTest::newRow("layer without a name") << "TEXT\n  8\n0\n"_ba
                                          << "TEXT\n  8\n<*>\n"_ba << u"audit: "_s;
    QTest::newRow("other entity") << "  0\nPOLYLINE\n"_ba
                                  << "  0\nPOINT\n  8\n0\n  10\n0.0\n  20\n0.0\n  0\nPOLYLINE\n"_ba
                                  << u"an entity POINT"_s;
}

void TestWriterDXFReadBack::ezdxfFindsFaults()
{
    QFETCH(QByteArray, before);
    QFETCH(QByteArray, after);
    const QString folder = MakeFolder(u"faults"_s);
    const QString name = folder + u"/part.DXF"_s;
    TestJob job(u"rootname Wing ply P { contour { closed 1.5,0,0 2,3,4 } }"_s);
    QVERIFY(job.Write<ZETLaserWriterDXF>(name));
    const QJsonArray entities{
        QJsonObject{{u"text"_s, u"Wing"_s},
                    {u"at"_s, QJsonArray{1.75, 1.5, 2.0}},
                    {u"height"_s, 50.0},
                    {u"layer"_s, u"0"_s},
                    {u"color"_s, 0}},
        QJsonObject{{u"points"_s, QJsonArray{QJsonArray{1.5, 0.0, 0.0}, QJsonArray{2.0, 3.0, 4.0}}},
                    {u"closed"_s, true},
                    {u"is3D"_s, true},
                    {u"layer"_s, u"1"_s},
                    {u"color"_s, 0},
                    {u"lineStyle"_s, u"0"_s}}};
    WriteBytes(name + u".expected.json"_s, QJsonDocument(entities).toJson());
    QString skipped;
    QCOMPARE(TestDxf::ReadWithEzdxf(folder, &skipped), QString());
    if (!skipped.isEmpty())
        QSKIP(qPrintable(skipped));

    QByteArray bytes = ReadBytes(name);
    const qsizetype at = bytes.indexOf(before);
    QVERIFY(at >= 0);
    WriteBytes(name, bytes.replace(at, before.size(), after));
    const QString faults = TestDxf::ReadWithEzdxf(folder, &skipped);
    QFETCH(QString, fault);
    QVERIFY2(faults.contains(fault), qPrintable(faults));
}

void TestWriterDXFReadBack::libreCadDrawsAFile()
{
    const QString program = QStandardPaths::findExecutable(u"librecad"_s);
    if (program.isEmpty())
        QSKIP("LibreCAD is not installed (Debian: librecad), so no file was drawn with it");
    const QString folder = MakeFolder(u"drawn"_s);
    const auto draw = [&](const QString& text, const QString& name) {
        TestJob job(text);
        job.Write<ZETLaserWriterDXF>(folder + u'/' + name + u".dxf"_s);
        const QString picture = folder + u'/' + name + u".pdf"_s;
        QProcess::execute(program, {u"dxf2pdf"_s, u"-a"_s, u"-o"_s, picture, folder + u'/' + name + u".dxf"_s});
        return QFileInfo(picture).size();
    };
    // Its picture of many lines is larger than that of one. How it looks is for people to see.
    QString points;
    for (int i = 0; i < 500; ++i)
        points += u" %1,%2,0"_s.arg(i).arg(i * i % 97);
    const qint64 oneLine = draw(u"ply P { contour { open 0,0,0 499,96,0 } }"_s, u"one"_s);
    const qint64 manyLines = draw(u"ply P { contour { open 0,0,0 499,96,0"_s + points + u" } }"_s, u"many"_s);
    QVERIFY(oneLine > 0);
    QVERIFY2(manyLines > oneLine + 1000, qPrintable(u"%1 and %2 bytes"_s.arg(manyLines).arg(oneLine)));
}

QTEST_GUILESS_MAIN(TestWriterDXFReadBack)
#include "TestWriterDXFReadBack.moc"
