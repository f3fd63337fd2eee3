// What the library wrote, held against the tree before it is kept: all golden jobs, jobs made at random, and files and
// trees in which one thing was altered.

#include "JobReadBack.h"

#include "JobError.h"

#include "laser/ZETLaserContour.h"
#include "laser/ZETLaserCurve.h"
#include "laser/ZETLaserGroup.h"
#include "laser/ZETLaserProcesses.h"
#include "laser/ZETLaserProcesses_p.h"
#include "tests/support/TestFiles.h"
#include "tests/support/TestGolden.h"
#include "tests/support/TestJob.h"
#include "tests/support/TestRandomJob.h"

#include <QDir>
#include <QSet>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

class TestJobReadBack : public QObject
{
    Q_OBJECT

private slots:
    void goldenJobsAreAsTheirTrees_data();
    void goldenJobsAreAsTheirTrees();
    void randomJobsAreAsTheirTrees_data();
    void randomJobsAreAsTheirTrees();
    void aFileThatIsAlteredIsRefused_data();
    void aFileThatIsAlteredIsRefused();
    void parametersOnTheOtherSideOfTheCurvesAreRefused_data();
    void parametersOnTheOtherSideOfTheCurvesAreRefused();
    void aTreeMayDifferByLessThanHalfAUnit_data();
    void aTreeMayDifferByLessThanHalfAUnit();
    void filesThatAreMissingOrTooManyAreRefused();
    void namesWithLineEndsAreToldAndNotCompared();
    void whatIsDoubtfulIsTold();
};

namespace
{
/*! A job whose files stand in a folder of their own, and what the tool says of them. */
class WrittenJob
{
public:
    WrittenJob(const QString& text, const QString& partFile)
        : job(text)
        , folder(QDir::current().absoluteFilePath(QString::fromLatin1(QTest::currentTestFunction()) + u'/' +
                                                  QString::fromLatin1(QTest::currentDataTag())))
    {
        QDir(folder).removeRecursively();
        QDir().mkpath(folder);
        const QString before = QDir::currentPath();
        QDir::setCurrent(folder);
        job.GetOptions().SetFileName(partFile);
        ZETLaserProcesses& driver = *job.GetOptions().GetLaserProcesses();
        ZETLaserProcessesPrivate::Of(driver).root = job.GetTree();
        ZETLaserProcessesPrivate::Of(driver).materials = job.GetMaterials();
        if (!driver.WriteLaserData())
            qFatal("nothing was written");
        QDir::setCurrent(before);
    }

    /*! Empty if all is as it should be. */
    QString FindFault()
    {
        try {
            warnings = JobReadBack::Check(job.GetOptions(), folder, folder);
        } catch (const JobError& error) {
            return error.GetText();
        }
        return {};
    }

    QStringList GetWarnings() const { return warnings; }
    QString GetPath(const QString& name) const { return folder + u'/' + name; }
    QStringList GetNames() const { return QDir(folder).entryList(QDir::Files, QDir::Name); }
    TestJob job;

private:
    QString folder;
    QStringList warnings;
};

void WriteBytes(const QString& path, const QByteArray& bytes)
{
    // A file system that looks after data waits for the disk when a file is cut and written again.
    QFile::remove(path);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("can't write %s", qPrintable(path));
}

const QString literal = u"parameter literal \"# raw 9\""_s;

/*! Some of everything that a tree can hold; all numbers are whole units of three decimals in mm. */
const QString everything = uR"(
    partname "Left wing" rootname Root normals on
    target "T 1" 1.5,2.25,-3 drift target T2 10,20,30 target "" 11,22,33
    projector L { 1 2 3 } projector R { 2 3 }
    layup L1 { sequence S1 {
        ply P1 {
          material UD M-1
          contour P1 {
            closed "P1 boundary 1" 0,0,0/0,0,1 100.5,0,0/0,0.6,0.8 100,80.125,7/0,0,1
            rosettecurve open P1-Rosette 10,10,0 20,10,0
          }
          contour Lines { open Line 1,2,3@4,5,6 7,8,9 }
          parameter information "turn %PLY%\nand stop"
          parameter message "lay"
          parameter graphic "logo.bmp"
          parameter query "done?"
          parameter note "42"
          text "%PLY% 7" 1,2,3 1,0,0 0,1,0 12.5
        }
        ply P2 {
          subply P2a { contour { closed 0,0,0/0,0,1 50,0,0/0,0,1 50,50,0/0,0,1 0,50,0/0,0,1 } }
          subply P2b { contour { closed 50,0,0/0,0,1 90,0,0/0,0,1 90,50,0/0,0,1 } %1 }
        }
    } })"_s.arg(literal);

/*! The curve that a walk over the tree meets first. */
ZETLaserCurve& FindFirstCurve(const ZETLaserGroup& group)
{
    const auto child = group.GetChildren().first();
    if (const auto inner = child.objectCast<ZETLaserGroup>())
        return FindFirstCurve(*inner);
    return *child.objectCast<ZETLaserContour>()->GetCurves().first();
}

struct Format {
    QString folder; //!< of its golden jobs
    QString partFile;
};

QList<Format> GetFormats()
{
    return {{u"virtek"_s, u"part.ply"_s},
            {u"dxf"_s, u"part.DXF"_s},
            {u"lap"_s, u"part.lpd"_s},
            {u"assembly-guidance"_s, u"part.PRT"_s},
            {u"lpt"_s, u"part.XML"_s},
            {u"sl"_s, u"part.sl"_s},
            {u"general-scanning"_s, u"part.PRT"_s},
            {u"quilmon"_s, u"part.CPD"_s},
            {u"apt"_s, u"part.APT"_s}};
}

void AddGoldenJobs()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("partFile");
    for (const Format& format : GetFormats()) {
        for (const QString& name : TestGolden(format.folder).GetCases()) {
            const QString job = QStringLiteral(ZET_SOURCE_DIR) + u"/tests/golden/"_s + format.folder + u'/' + name;
            QTest::addRow("%s-%s", qPrintable(format.folder), qPrintable(name))
                << QString::fromUtf8(ReadBytes(job + u"/job.txt"_s)) << format.partFile;
        }
    }
}
} // namespace

void TestJobReadBack::goldenJobsAreAsTheirTrees_data()
{
    AddGoldenJobs();
}

void TestJobReadBack::goldenJobsAreAsTheirTrees()
{
    QFETCH(const QString, text);
    QFETCH(const QString, partFile);
    QCOMPARE(WrittenJob(text, partFile).FindFault(), QString());
}

void TestJobReadBack::randomJobsAreAsTheirTrees_data()
{
    QTest::addColumn<QString>("head");
    QTest::addColumn<QString>("partFile");
    const QStringList names{u"r.ply"_s, u"r.XML"_s, u"r.XML"_s, u"r.lpd"_s, u"r.sl"_s,  u"r.PRT"_s, u"r.PRT"_s,
                            u"r.PRT"_s, u"r.APT"_s, u"r.APT"_s, u"r.APT"_s, u"r.DXF"_s, u"r.CPD"_s};
    for (int type = 0; type < names.size(); ++type) {
        for (const int outputType : {0, 2})
            QTest::addRow("type %d output %d", type, outputType)
                << u"filetype %1 type %2\n"_s.arg(type).arg(outputType) << names[type];
    }
}

void TestJobReadBack::randomJobsAreAsTheirTrees()
{
    QFETCH(const QString, head);
    QFETCH(const QString, partFile);
    for (quint32 seed = 0; seed < 40; ++seed) {
        const QString targets = seed % 3 == 0 ? QString()
                                : seed % 3 == 1
                                    ? u"target \"T 1\" 1,2,3 drift target \"\" 4,5,6.5\n"_s
                                    : u"target A 1,2,3 target \"\" 4,5,6 projector L { 1 2 } projector R { 2 }\n"_s;
        const QString text = head + targets + TestRandomJob(seed).ToText();
        const QString fault = WrittenJob(text, partFile).FindFault();
        QVERIFY2(fault.isEmpty(), qPrintable(u"seed %1: %2\n%3"_s.arg(QString::number(seed), fault, text)));
    }
}

void TestJobReadBack::aFileThatIsAlteredIsRefused_data()
{
    QTest::addColumn<QString>("head");
    QTest::addColumn<QString>("partFile");
    QTest::addColumn<QStringList>("kept");
    const auto row = [](const char* name, int type, int outputType, const QString& partFile, const QStringList& kept) {
        QTest::newRow(name) << u"filetype %1 type %2\n"_s.arg(type).arg(outputType) << partFile << kept;
    };
    row("virtek", 0, 0, u"p.ply"_s, {});
    row("lpt", 1, 0, u"p.XML"_s, {u"FILEDATE"_s});
    row("lap", 3, 0, u"p.lpd"_s,
        {u"#"_s, u"ALERT"_s, u"PROJECTION_START"_s, u"LAYER_COLOR"_s, u"GROUP_COLOR"_s, u"ENTITY_COLOR"_s});
    row("sl", 4, 0, u"p.sl"_s, {});
    row("assembly-guidance", 5, 0, u"p.PRT"_s, {u"$*DISPLAYMODE"_s});
    row("general-scanning", 7, 0, u"p.PRT"_s, {});
    row("general-scanning-nesting", 7, 2, u"p.PRT"_s, {});
    row("apt", 8, 0, u"p.APT"_s, {});
    row("quilmon", 12, 2, u"p.CPD"_s, {});
    // The place of the label is no part of the tree.
    row("dxf", 11, 0, u"p.DXF"_s, {u"label"_s});
}

namespace
{
/*! What the character at \a place is part of, if it is of something that the tree doesn't have; empty otherwise. */
QString NameOpenPlace(const QByteArray& bytes, qsizetype place)
{
    const qsizetype line = bytes.lastIndexOf('\n', place) + 1;
    if (bytes.indexOf(" FILEDATE=\"", line) < place && place < bytes.indexOf("\" INVERTNORMALS", line))
        return u"FILEDATE"_s;
    for (const char* begin :
         {"#", "ALERT ", "LAYER_COLOR ", "GROUP_COLOR ", "ENTITY_COLOR ", "PROJECTION_START ", "$*DISPLAYMODE "}) {
        if (QByteArrayView(bytes).sliced(line).startsWith(begin))
            return QString::fromLatin1(begin).trimmed();
    }
    if (!bytes.startsWith("  0\nSECTION"))
        return {};
    const qsizetype codeLine = bytes.lastIndexOf('\n', line - 2) + 1;
    const QByteArray code = bytes.mid(codeLine, line - 1 - codeLine).trimmed();
    const qsizetype entity = bytes.lastIndexOf("\n  0\n", place) + 5;
    const bool isFirstText = bytes.indexOf("\n  0\nTEXT\n") + 5 == entity;
    return isFirstText && (code == "10" || code == "20" || code == "30" || code == "40") ? u"label"_s : QString();
}
} // namespace

void TestJobReadBack::aFileThatIsAlteredIsRefused()
{
    QFETCH(const QString, head);
    QFETCH(const QString, partFile);
    QFETCH(const QStringList, kept);
    // A literal may break XML, so what it may have broken is told and kept.
    const bool isXml = partFile.endsWith(u".XML"_s);
    WrittenJob job(head + (isXml ? QString(everything).remove(literal) : everything), partFile);
    QCOMPARE(job.FindFault(), QString());
    QSet<QString> found;
    int refused = 0;
    for (const QString& name : job.GetNames()) {
        const QByteArray bytes = name.endsWith(u".htm"_s) ? QByteArray() : ReadBytes(job.GetPath(name));
        for (qsizetype at = 0; at < bytes.size(); ++at) {
            if (bytes[at] <= ' ')
                continue;
            QByteArray other = bytes;
            other[at] = bytes[at] == '4' ? '6' : '4';
            WriteBytes(job.GetPath(name), other);
            const QString open = NameOpenPlace(bytes, at);
            const bool isRefused = !job.FindFault().isEmpty();
            refused += isRefused ? 1 : 0;
            if (!isRefused)
                found.insert(open.isEmpty() ? u"line %1"_s.arg(bytes.first(at).count('\n') + 1) : open);
        }
        if (!bytes.isEmpty())
            WriteBytes(job.GetPath(name), bytes);
    }
    QCOMPARE(found, QSet<QString>(kept.begin(), kept.end()));
    QVERIFY(refused > 0);
}

void TestJobReadBack::parametersOnTheOtherSideOfTheCurvesAreRefused_data()
{
    QTest::addColumn<QString>("head");
    QTest::addColumn<QString>("partFile");
    QTest::addColumn<bool>("isRefused");
    const auto row = [](const char* name, int type, const QString& partFile, bool isRefused) {
        QTest::newRow(name) << u"filetype %1\n"_s.arg(type) << partFile << isRefused;
    };
    row("virtek", 0, u"p.ply"_s, true);
    row("lpt", 1, u"p.XML"_s, true);
    row("lap", 3, u"p.lpd"_s, true);
    row("sl", 4, u"p.sl"_s, true);
    row("assembly-guidance", 5, u"p.PRT"_s, true);
    row("general-scanning", 7, u"p.PRT"_s, false); // they have one place there
    row("dxf", 11, u"p.DXF"_s, true);
}

void TestJobReadBack::parametersOnTheOtherSideOfTheCurvesAreRefused()
{
    QFETCH(const QString, head);
    QFETCH(const QString, partFile);
    QFETCH(const bool, isRefused);
    for (const bool isAhead : {false, true}) {
        WrittenJob job(head + u"rosettefirst "_s + (isAhead ? u"on\n"_s : u"off\n"_s) + everything, partFile);
        QCOMPARE(job.FindFault(), QString());
        job.job.GetOptions().SetRosetteBeforePlyGeometry(!isAhead);
        QCOMPARE(job.FindFault().contains(u": order: "_s), isRefused);
    }
}

void TestJobReadBack::aTreeMayDifferByLessThanHalfAUnit_data()
{
    QTest::addColumn<QString>("head");
    QTest::addColumn<QString>("partFile");
    QTest::addColumn<double>("unit");
    const auto row = [](const char* name, int type, const QString& partFile, double unit) {
        QTest::newRow(name) << u"filetype %1\n"_s.arg(type) << partFile << unit;
    };
    row("virtek", 0, u"p.ply"_s, 1e-6);
    row("lpt", 1, u"p.XML"_s, 1e-6);
    row("lap", 3, u"p.lpd"_s, 1e-3);
    row("sl", 4, u"p.sl"_s, 1e-3);
    row("assembly-guidance", 5, u"p.PRT"_s, 1e-3);
    row("general-scanning", 7, u"p.PRT"_s, 1e-6);
    row("dxf", 11, u"p.DXF"_s, 1e-6);
    row("quilmon", 12, u"p.CPD"_s, 1e-6);
}

void TestJobReadBack::aTreeMayDifferByLessThanHalfAUnit()
{
    QFETCH(const QString, head);
    QFETCH(const QString, partFile);
    QFETCH(const double, unit);
    WrittenJob job(head + everything, partFile);
    ZETLaserCurve& curve = FindFirstCurve(*job.job.GetTree());
    const ZETMathPoint place = curve.GetPoints()[1].GetPosition();
    const auto move = [&](double x, double y, double z) {
        curve.GetPoints()[1].SetPosition(place + ZETMathVector(x, y, z) * unit);
        return job.FindFault();
    };
    QCOMPARE(move(0.0, 0.0, 0.0), QString());
    QCOMPARE(move(0.49, -0.49, 0.49), QString());
    QVERIFY(move(0.51, 0.0, 0.0).contains(u"X of point 2: expected "_s));
    QVERIFY(move(0.0, -0.51, 0.0).contains(u"Y of point 2: expected "_s));
    QVERIFY(move(0.0, 0.0, 0.51).contains(u"Z of point 2: expected "_s));
    QCOMPARE(move(0.0, 0.0, 0.0), QString());
    curve.GetPoints().removeLast();
    QVERIFY(job.FindFault().contains(u"points: expected "_s));
}

void TestJobReadBack::filesThatAreMissingOrTooManyAreRefused()
{
    WrittenJob job(u"filetype 0\n"_s + everything, u"p.ply"_s);
    WriteBytes(job.GetPath(u"other.ply"_s), "EOD\n");
    QVERIFY(job.FindFault().endsWith(u"other.ply: no file of this name was to be written"_s));
    QFile::remove(job.GetPath(u"other.ply"_s));
    QCOMPARE(job.FindFault(), QString());
    QFile::remove(job.GetPath(u"p.cal"_s));
    QVERIFY(job.FindFault().endsWith(u"p.cal: there is no such file"_s));
}

void TestJobReadBack::namesWithLineEndsAreToldAndNotCompared()
{
    WrittenJob job(u"filetype 0 ply \"P\\n1\" { contour { closed 0,0,0 100,0,0 100,100,0 } }"_s, u"p.ply"_s);
    QCOMPARE(job.FindFault(), QString());
    QVERIFY(!job.GetWarnings().isEmpty());
    QCOMPARE(job.GetWarnings().first(),
             u"the name \"P\\x0a1\" holds a line end, so the files can't be compared with the model"_s);
}

void TestJobReadBack::whatIsDoubtfulIsTold()
{
    WrittenJob job(u"filetype 0 ply A { contour { closed 0,0,0 1,0,0 1,1,0 } } ply A { contour { closed 0,0,0 } }"_s,
                   u"p.ply"_s);
    QCOMPARE(job.FindFault(), QString());
    QCOMPARE(job.GetWarnings(), QStringList({u"p.ply:1: ply A: the ply is tiny: it encloses 0.5 square millimetres"_s,
                                             u"p.ply:8: ply A: has the same name as the ply in line 1"_s}));
    QString many = u"filetype 0\n"_s;
    for (int i = 0; i < 12; ++i)
        many += u"ply P%1 { contour { closed 0,0,0 1,0,0 1,1,0 } }\n"_s.arg(i);
    WrittenJob manyJob(many, u"q.ply"_s);
    QCOMPARE(manyJob.FindFault(), QString());
    QCOMPARE(manyJob.GetWarnings().size(), 11);
    QCOMPARE(manyJob.GetWarnings().last(), u"q.ply: and 2 findings more, which zetlaser-job check shows"_s);
}

QTEST_GUILESS_MAIN(TestJobReadBack)
#include "TestJobReadBack.moc"
