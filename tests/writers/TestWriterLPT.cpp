#include "features/ZETLaser3DText.h"
#include "features/ZETLaserParameter.h"
#include "laser/ZETLaserChildren.h"
#include "laser/ZETLaserContour.h"
#include "laser/ZETLaserCurve.h"
#include "laser/ZETLaserEntityProperties.h"
#include "laser/ZETLaserParameterEntity.h"
#include "laser/ZETLaserPoint.h"
#include "laser/ZETLaserTextEntity.h"
#include "openhost/ZETSystem/ZETOpenMessageQueue.h"
#include "tests/support/TestFiles.h"
#include "tests/support/TestJob.h"
#include "tests/support/TestOutput.h"
#include "tests/support/TestRandomJob.h"
#include "writers/ZETLaserWriterLPT.h"

#include <ZETComposites/ZETCompRosette.h>

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QPointer>
#include <QRegularExpression>
#include <QTextStream>
#include <QtTest>
#include <QXmlStreamWriter>

using namespace Qt::Literals::StringLiterals;

namespace
{
TestOutput Write(const QString& text, const QString& fileName = u"wing.XML"_s,
                 const QString& targets = u"Tool-wing.XML"_s)
{
    return WriteOutput(u"filetype 1\n"_s + text, fileName, targets);
}

/*! What stands within the PART element, without the line end in front of its end tag. */
QByteArray Inside(const QString& text)
{
    const QByteArray part = Write(text).part;
    const QByteArray begin = "DEFAULTLASER=\"0\">\n";
    const QByteArray end = "    </PART>\n</XML>\n";
    const qsizetype first = part.indexOf(begin) + begin.size();
    if (first < begin.size() || !part.endsWith(end))
        qFatal("not a part file with groups: %s", part.constData());
    return part.mid(first, part.size() - end.size() - first);
}

/*! The lines between the tags of a ply on the top level. */
QByteArray InsidePly(const QString& text, const QByteArray& name = "P")
{
    const QByteArray inside = Inside(text);
    const QByteArray begin = "        <PLY NAME=\"" + name + "\" LASERNUMBER=\"0\">\n";
    const QByteArray end = "        </PLY>\n";
    if (!inside.startsWith(begin) || !inside.endsWith(end))
        qFatal("not one ply: %s", inside.constData());
    return inside.mid(begin.size(), inside.size() - begin.size() - end.size());
}

QByteArray Attributes(const QByteArray& file, const QByteArray& element, const QByteArray& attribute)
{
    QByteArrayList values;
    const QRegularExpression form(
        u"<%1 (?:[^>]* )?%2=\"([^\"]*)\""_s.arg(QString::fromLatin1(element)).arg(QString::fromLatin1(attribute)));
    auto matches = form.globalMatch(QString::fromUtf8(file));
    while (matches.hasNext())
        values += matches.next().captured(1).toUtf8();
    return values.join(',');
}

/*! The part file as it comes out when every element goes through the XML writer, points included. */
class PlainRendering
{
public:
    PlainRendering(TestJob& testJob, const QString& fileName)
        : job(testJob)
        , options(testJob.GetOptions())
        , file(fileName)
    {
        if (options.GetUnits() == ZETLaserOptions::UnitsInches)
            unitScale = 1.0 / 25.4;
        if (options.GetAxisSystem())
            axis = qobject_cast<const ZETCompRosette*>(options.GetAxisSystem().data())->GetAxis();
    }

    void Write()
    {
        file.open(QIODevice::WriteOnly | QIODevice::Text);
        literals.setDevice(&file);
        xml.setDevice(&file);
        xml.setAutoFormatting(true);
        xml.writeStartDocument();
        file.seek(0);
        xml.writeStartElement("XML");
        xml.writeStartElement("PART");
        xml.writeAttribute("NAME", options.GetPartName());
        xml.writeAttribute("STATUS", "Vantrell");
        xml.writeAttribute("TOPLAYERS", QString::number(job.GetTree()->GetChildren().size()));
        xml.writeAttribute("FILEDATE", "12/31/2000 00:00:00");
        xml.writeAttribute("INVERTNORMALS", "");
        xml.writeAttribute("HIGHESTPLY", "50");
        xml.writeAttribute("USEASSIGNEDLASERS", "0");
        xml.writeAttribute("DEFAULTLASER", "0");
        for (const auto* group : ChildrenOf<ZETLaserGroup>(*job.GetTree()))
            WriteGroup(*group);
        xml.writeEndElement();
        xml.writeEndElement();
        xml.writeEndDocument();
        file.close();
    }

private:
    void BeginNamed(const char* element, const QString& name)
    {
        xml.writeStartElement(QString::fromLatin1(element));
        xml.writeAttribute("NAME", name);
        xml.writeAttribute("LASERNUMBER", "0");
    }

    void WriteGroup(const ZETLaserGroup& group)
    {
        if (group.GetPointCount() < 1)
            return;
        const auto standsFor = [&](const char* name) { return group.property(name).isValid(); };
        const bool isPly = standsFor("ZETCompPly") || standsFor("ZETCompSubPly");
        const bool layer = !isPly && !(standsFor("ZETCompLayup") && !options.GetNestSequencesWithinLayup());
        if (layer)
            BeginNamed("PLY", group.GetName());
        if (group.HasGroups()) {
            for (const auto* child : ChildrenOf<ZETLaserGroup>(group))
                WriteGroup(*child);
        } else {
            BeginNamed("PLY", group.GetName());
            if (options.GetRosetteBeforePlyGeometry() && isPly)
                WriteTexts(group);
            for (const auto* contour : ChildrenOf<ZETLaserContour>(group)) {
                for (const auto& curve : contour->GetCurves())
                    WriteCurve(*curve);
            }
            if (!options.GetRosetteBeforePlyGeometry() && isPly)
                WriteTexts(group);
            xml.writeEndElement();
        }
        if (layer)
            xml.writeEndElement();
    }

    void WriteCurve(const ZETLaserCurve& curve)
    {
        auto points = curve.GetPoints();
        if (points.isEmpty())
            return;
        if (curve.IsClosed() && points.size() >= 2)
            points.append(points.first());
        BeginNamed("SUBPLY", curve.GetName());
        int number = 0;
        for (const auto& point : std::as_const(points)) {
            ZETLaserPoint copy(point);
            copy.Transform(axis);
            const auto place = copy.HasOffsetPoint() ? copy.GetOffsetPoint() : copy.GetPosition();
            xml.writeStartElement("POINT");
            xml.writeAttribute("NUMBER", QString::number(++number));
            WriteNumber("XVAL", place.GetX() * unitScale);
            WriteNumber("YVAL", place.GetY() * unitScale);
            WriteNumber("ZVAL", place.GetZ() * unitScale);
            if (options.GetIncludeNormalVectors() && point.HasNormal()) {
                WriteNumber("IVAL", copy.GetNormal().GetX());
                WriteNumber("JVAL", copy.GetNormal().GetY());
                WriteNumber("KVAL", copy.GetNormal().GetZ());
            }
            xml.writeEndElement();
        }
        xml.writeEndElement();
    }

    void WriteNumber(const char* name, double value)
    {
        xml.writeAttribute(QString::fromLatin1(name), QString::number(value, 'f', 6));
    }

    void WriteTexts(const ZETLaserGroup& group)
    {
        WriteBlock(group, ZETLaserParameter::Information, "INSTRUCTIONS");
        WriteBlock(group, ZETLaserParameter::Note, "NOTES");
        for (const auto* entity : ChildrenOf<ZETLaserParameterEntity>(group)) {
            if (entity->GetParameter()->GetType() == ZETLaserParameter::Literal)
                literals << entity->GetParameter()->GetText() << Qt::endl;
        }
        for (const auto* entity : ChildrenOf<ZETLaserTextEntity>(group))
            WriteText(*entity->GetText());
    }

    void WriteBlock(const ZETLaserGroup& group, ZETLaserParameter::ParameterType type, const char* element)
    {
        QString lines;
        for (const auto* entity : ChildrenOf<ZETLaserParameterEntity>(group)) {
            if (entity->GetParameter()->GetType() == type)
                lines += entity->GetParameter()->GetText() + u'\n';
        }
        if (!lines.isEmpty())
            xml.writeTextElement(QString::fromLatin1(element), lines);
    }

    void WriteText(const ZETLaser3DText& text)
    {
        const auto first = axis * text.GetBasePoint();
        const auto second = axis * (text.GetBasePoint() + text.GetBaseDirection() * text.GetSize());
        const auto third = text.GetBasePoint() + text.GetUpDirection();
        xml.writeStartElement("TEXT");
        xml.writeAttribute("NAME", QString::number(++textNumber));
        xml.writeAttribute("VALUE", text.GetText());
        WriteNumber("PT1XVAL", first.GetX() * unitScale);
        WriteNumber("PT1YVAL", first.GetY() * unitScale);
        WriteNumber("PT1ZVAL", first.GetZ() * unitScale);
        WriteNumber("PT2XVAL", second.GetX() * unitScale);
        WriteNumber("PT2YVAL", second.GetY() * unitScale);
        WriteNumber("PT2ZVAL", second.GetZ() * unitScale);
        WriteNumber("PT3XVAL", third.GetX());
        WriteNumber("PT3YVAL", third.GetY());
        WriteNumber("PT3ZVAL", third.GetZ());
        xml.writeEndElement();
    }

    TestJob& job;
    ZETLaserOptions& options;
    QFile file;
    QTextStream literals;
    QXmlStreamWriter xml;
    ZETMathAxis axis;
    double unitScale = 1.0;
    int textNumber = 0;
};

const QString pointPly = u"ply P { contour { open 0,0,0 } }"_s;
} // namespace

class TestWriterLPT : public QObject
{
    Q_OBJECT

private slots:
    void init() { ZETOpenMessageQueue::Install(); }
    void cleanup() { ZETOpenMessageQueue::Remove(); }

    void theFileStartsWithALineEndAndNoDeclaration();
    void theMakeShowsInTheMessageAlone();
    void theDateIsThatOfTheWriting();
    void theDateIsToldWithoutLeadingZerosAndTheTimeWithThem();
    void allChildrenOfTheRootCountAsTopLayers();
    void contoursOfTheRootAreTopLayersWithoutAnElement();
    void namesAreEscaped();

    void aPlyWithSubPliesLeavesNoElement();
    void withoutNestingTheLayupLeavesNoMark();
    void aLeafThatOpensALayerIsTwoElements();
    void groupsWithoutPointsWriteNothing();

    void aClosedCurveOfThreePointsHasFourNumbered();
    void aClosedCurveOfOnePointHasOne();
    void curvesWithoutPointsWriteNothing();
    void numbersRestartInEachCurve();
    void normalsAreLeftOutWhereThereAreNone();

    void instructionsStandAheadOfNotes();
    void messagesGraphicsAndQueriesAreUnsupported();
    void withoutAQueueUnsupportedTypesAreDropped();
    void parametersOfAGroupThatIsNoPlyAreNotWritten();
    void parametersAndTextsGoFirstIfToldSo();
    void textsAreNumberedThroughTheJob();
    void theThirdPointOfATextStaysInTheModel();

    void aLiteralGoesPastTheXmlWriter();
    void aLiteralBehindAnElementStandsBehindIt();
    void aLiteralCanLandInAStartTag();
    void aLiteralCanLandInAnEmptyElement();

    void allBytesAreThoseOfTheXmlWriter();

    void withoutTargetsNoToolFileIsMade();
    void withoutProjectorsTheTargetsAreThoseOfLaserOne();
    void numbersRestartInEachProjector();
    void nullsUseUpIndexAndLaserButNoNumber();
    void driftShowsInTheTool();
    void theToolFileKeepsTheExtension_data();
    void theToolFileKeepsTheExtension();
    void theToolStandsBesideAPartInAnotherFolder();
    void theToolFileCanHaveItsOwnFolder();
    void targetsInInchesOnAnAxis();
};

void TestWriterLPT::theFileStartsWithALineEndAndNoDeclaration()
{
    const auto output = Write(u"partname Wing target T 0,0,0"_s);
    COMPARE_TEXT(output.part,
                 "\n<XML>\n    <PART NAME=\"Wing\" STATUS=\"Vantrell\" TOPLAYERS=\"0\" "
                 "FILEDATE=\"1/1/2000 00:00:00\" INVERTNORMALS=\"\" HIGHESTPLY=\"50\" USEASSIGNEDLASERS=\"0\" "
                 "DEFAULTLASER=\"0\"/>\n</XML>\n"_ba);
    QVERIFY(!output.part.contains("<?"));
    QVERIFY(output.targets.startsWith("\n<XML>\n    <TOOL NAME=\"Tool-wing.XML\" "));
    QVERIFY(!output.targets.contains("<?"));
}

void TestWriterLPT::theMakeShowsInTheMessageAlone()
{
    const auto lpt = WriteOutput(u"filetype 1 target T 0,0,0 "_s + pointPly, u"wing.XML"_s, u"Tool-wing.XML"_s);
    const auto faro = WriteOutput(u"filetype 2 target T 0,0,0 "_s + pointPly, u"wing.XML"_s, u"Tool-wing.XML"_s);
    COMPARE_TEXT(faro.part, lpt.part);
    COMPARE_TEXT(faro.targets, lpt.targets);
    QCOMPARE(QueuedMessages(), QStringList({u"0 LPT data have been successfully written to file:\n wing.XML"_s,
                                            u"0 FARO data have been successfully written to file:\n wing.XML"_s}));
}

void TestWriterLPT::theDateIsThatOfTheWriting()
{
    const auto before = QDateTime::currentDateTime();
    const QByteArray part = Write(pointPly).part;
    const auto after = QDateTime::currentDateTime();
    const QString text = QString::fromLatin1(Attributes(part, "PART", "FILEDATE"));
    QStringList dates;
    for (auto time = before; time < after.addSecs(1); time = time.addSecs(1))
        dates.append(ZETLaserWriterLPT::GetFileDate(time));
    QVERIFY2(dates.contains(text), qPrintable(text));
}

void TestWriterLPT::theDateIsToldWithoutLeadingZerosAndTheTimeWithThem()
{
    const auto tell = [](QDate date, QTime time) {
        return ZETLaserWriterLPT::GetFileDate(QDateTime(date, time, Qt::UTC));
    };
    QCOMPARE(tell({2024, 3, 7}, {9, 5, 2}), u"3/7/2024 09:05:02"_s);
    QCOMPARE(tell({2024, 12, 31}, {23, 59, 58}), u"12/31/2024 23:59:58"_s);
    QCOMPARE(tell({2030, 10, 1}, {0, 0, 0}), u"10/1/2030 00:00:00"_s);
    QCOMPARE(tell({2031, 1, 10}, {12, 30, 45}), u"1/10/2031 12:30:45"_s);
}

void TestWriterLPT::allChildrenOfTheRootCountAsTopLayers()
{
    const QByteArray part = Write(u"group A { contour { open 0,0,0 } } group B { contour { open } }"_s).part;
    QCOMPARE(Attributes(part, "PART", "TOPLAYERS"), "2"_ba);
    QCOMPARE(Attributes(part, "PLY", "NAME"), "A,A"_ba);
}

void TestWriterLPT::contoursOfTheRootAreTopLayersWithoutAnElement()
{
    TestJob job(u"filetype 1"_s);
    for (int i = 0; i < 3; ++i)
        job.GetTree()->AddContour(QSharedPointer<ZETLaserContour>::create(job.GetTree()));
    const QByteArray part = WriteOutput(job, u"wing.XML"_s).part;
    QCOMPARE(Attributes(part, "PART", "TOPLAYERS"), "3"_ba);
    QVERIFY(part.endsWith("DEFAULTLASER=\"0\"/>\n</XML>\n"));
}

void TestWriterLPT::namesAreEscaped()
{
    const QByteArray part =
        Write(u"partname \"<&>\\q'\" ply \"a\\nb\u00e4\" { contour { open \"%1 <\" 0,0,0 } }"_s).part;
    QCOMPARE(Attributes(part, "PART", "NAME"), "&lt;&amp;&gt;&quot;'"_ba);
    QCOMPARE(Attributes(part, "PLY", "NAME"), "a&#10;b\xc3\xa4"_ba);
    QCOMPARE(Attributes(part, "SUBPLY", "NAME"), "%1 &lt;"_ba);
}

void TestWriterLPT::aPlyWithSubPliesLeavesNoElement()
{
    const auto output = Write(u"ply P { subply A { contour { open a 0,0,0 } contour { open b 0,0,0 } } "
                              "subply B { parameter note N } }"_s);
    QCOMPARE(Attributes(output.part, "PLY", "NAME"), "A,B"_ba);
    QCOMPARE(Attributes(output.part, "SUBPLY", "NAME"), "a,b"_ba);
    QVERIFY(output.report.contains("   Number of Plies = 1\n   Number of Sub-plies = 2\n"));
}

void TestWriterLPT::withoutNestingTheLayupLeavesNoMark()
{
    const QString tree = u" layup L { sequence S { ply P { contour { open 0,0,0 } } } }"_s;
    QCOMPARE(Attributes(Write(u"nestsequences on"_s + tree).part, "PLY", "NAME"), "L,S,P"_ba);
    QCOMPARE(Attributes(Write(u"nestsequences off"_s + tree).part, "PLY", "NAME"), "S,P"_ba);
}

void TestWriterLPT::aLeafThatOpensALayerIsTwoElements()
{
    COMPARE_TEXT(Inside(u"group G { contour { open C 1,2,3 } }"_s),
                 "        <PLY NAME=\"G\" LASERNUMBER=\"0\">\n"
                 "            <PLY NAME=\"G\" LASERNUMBER=\"0\">\n"
                 "                <SUBPLY NAME=\"C\" LASERNUMBER=\"0\">\n"
                 "                    <POINT NUMBER=\"1\" XVAL=\"1.000000\" YVAL=\"2.000000\" ZVAL=\"3.000000\"/>\n"
                 "                </SUBPLY>\n"
                 "            </PLY>\n"
                 "        </PLY>\n"_ba);
}

void TestWriterLPT::groupsWithoutPointsWriteNothing()
{
    const QByteArray part = Write(u"layup L { sequence S { ply P { text T 0,0,0 1,0,0 0,1,0 1 } } }"_s).part;
    QVERIFY(part.endsWith("DEFAULTLASER=\"0\"/>\n</XML>\n"));
}

void TestWriterLPT::aClosedCurveOfThreePointsHasFourNumbered()
{
    const QByteArray part = Write(u"ply P { contour { closed 1,0,0/0,0,1 2,0,0 3,0,0 } }"_s).part;
    QCOMPARE(Attributes(part, "POINT", "NUMBER"), "1,2,3,4"_ba);
    QCOMPARE(Attributes(part, "POINT", "XVAL"), "1.000000,2.000000,3.000000,1.000000"_ba);
    QCOMPARE(Attributes(part, "POINT", "KVAL"), "1.000000,1.000000"_ba);
}

void TestWriterLPT::aClosedCurveOfOnePointHasOne()
{
    QCOMPARE(Attributes(Write(u"ply P { contour { closed 1,0,0 } }"_s).part, "POINT", "NUMBER"), "1"_ba);
}

void TestWriterLPT::curvesWithoutPointsWriteNothing()
{
    QCOMPARE(Attributes(Write(u"ply P { contour { open A closed B } contour { open C open D 0,0,0 } }"_s).part,
                        "SUBPLY", "NAME"),
             "D"_ba);
}

void TestWriterLPT::numbersRestartInEachCurve()
{
    QCOMPARE(
        Attributes(Write(u"ply P { contour { open 0,0,0 1,0,0 closed 0,0,0 1,0,0 } contour { open 0,0,0 } }"_s).part,
                   "POINT", "NUMBER"),
        "1,2,1,2,3,1"_ba);
}

void TestWriterLPT::normalsAreLeftOutWhereThereAreNone()
{
    const QString ply = u"units inch ply P { contour { open 25.4,-0.0000001,0/0.6,0,-0.8@254,-0.00001,0 0,0,25.4 } }"_s;
    COMPARE_TEXT(InsidePly(u"normals on "_s + ply),
                 "            <SUBPLY NAME=\"\" LASERNUMBER=\"0\">\n"
                 "                <POINT NUMBER=\"1\" XVAL=\"10.000000\" YVAL=\"-0.000000\" ZVAL=\"0.000000\" "
                 "IVAL=\"0.600000\" JVAL=\"0.000000\" KVAL=\"-0.800000\"/>\n"
                 "                <POINT NUMBER=\"2\" XVAL=\"0.000000\" YVAL=\"0.000000\" ZVAL=\"1.000000\"/>\n"
                 "            </SUBPLY>\n"_ba);
    QCOMPARE(Attributes(Write(u"normals off "_s + ply).part, "POINT", "IVAL"), ""_ba);
}

void TestWriterLPT::instructionsStandAheadOfNotes()
{
    COMPARE_TEXT(InsidePly(u"ply P { parameter note \"<n>\" parameter information \"%PLY%\\nb\" "
                           "parameter note \"\" parameter information \"a & b\" }"_s),
                 "            <INSTRUCTIONS>P\nb\na &amp; b\n</INSTRUCTIONS>\n"
                 "            <NOTES>&lt;n&gt;\n\n</NOTES>\n"_ba);
    QCOMPARE(QueuedMessages().size(), 1); // notes are supported
}

void TestWriterLPT::messagesGraphicsAndQueriesAreUnsupported()
{
    COMPARE_TEXT(Inside(u"ply P { parameter query Q parameter message M parameter graphic G parameter query Q }"_s),
                 "        <PLY NAME=\"P\" LASERNUMBER=\"0\"/>\n"_ba);
    QCOMPARE(QueuedMessages().mid(1), QStringList({u"2 Unsupported laser parameter type Query for LPT"_s,
                                                   u"2 Unsupported laser parameter type Message for LPT"_s,
                                                   u"2 Unsupported laser parameter type Graphic for LPT"_s,
                                                   u"2 Unsupported laser parameter type Query for LPT"_s}));
}

void TestWriterLPT::withoutAQueueUnsupportedTypesAreDropped()
{
    ZETOpenMessageQueue::Remove();
    COMPARE_TEXT(Inside(u"ply P { parameter query Q }"_s), "        <PLY NAME=\"P\" LASERNUMBER=\"0\"/>\n"_ba);
}

void TestWriterLPT::parametersOfAGroupThatIsNoPlyAreNotWritten()
{
    COMPARE_TEXT(Inside(u"group G { parameter note N parameter literal L text T 0,0,0 1,0,0 0,1,0 1 }"_s),
                 "        <PLY NAME=\"G\" LASERNUMBER=\"0\">\n            <PLY NAME=\"G\" LASERNUMBER=\"0\"/>\n"
                 "        </PLY>\n"_ba);
}

void TestWriterLPT::parametersAndTextsGoFirstIfToldSo()
{
    const auto order = [](const QString& text) {
        const QByteArray part = Write(text).part;
        return part.indexOf("<NOTES>") < part.indexOf("<TEXT ") && part.indexOf("<TEXT ") < part.indexOf("<SUBPLY ") ? 1
               : part.indexOf("<SUBPLY ") < part.indexOf("<NOTES>") && part.indexOf("<NOTES>") < part.indexOf("<TEXT ")
                   ? 2
                   : 0;
    };
    const QString ply = u" ply P { text T 0,0,0 1,0,0 0,1,0 1 parameter note N contour { open 0,0,0 } }"_s;
    QCOMPARE(order(u"rosettefirst on"_s + ply), 1);
    QCOMPARE(order(u"rosettefirst off"_s + ply), 2);
}

void TestWriterLPT::textsAreNumberedThroughTheJob()
{
    const QByteArray part =
        Write(u"ply P { parameter note N text %PLY% 0,0,0 1,0,0 0,1,0 1 text B 0,0,0 1,0,0 0,1,0 1 } "
              "ply Q { parameter note N text \"a\\q\" 0,0,0 1,0,0 0,1,0 1 }"_s)
            .part;
    QCOMPARE(Attributes(part, "TEXT", "NAME"), "1,2,3"_ba);
    QCOMPARE(Attributes(part, "TEXT", "VALUE"), "P,B,a&quot;"_ba);
}

void TestWriterLPT::theThirdPointOfATextStaysInTheModel()
{
    // X of the axis system is Y of the model, Y is -X, its origin is at 10, 20, 30.
    QVERIFY(Write(u"units inch axis 10,20,30 0,1,0 -1,0,0 "
                  "ply P { parameter note N text T 35.4,45.4,30 0,1,0 0,0,2 50.8 }"_s)
                .part.contains("<TEXT NAME=\"1\" VALUE=\"T\" "
                               "PT1XVAL=\"1.000000\" PT1YVAL=\"-1.000000\" PT1ZVAL=\"0.000000\" "
                               "PT2XVAL=\"3.000000\" PT2YVAL=\"-1.000000\" PT2ZVAL=\"0.000000\" "
                               "PT3XVAL=\"35.400000\" PT3YVAL=\"45.400000\" PT3ZVAL=\"32.000000\"/>\n"));
}

void TestWriterLPT::aLiteralGoesPastTheXmlWriter()
{
    // Behind a curve the last element is finished, so the line stands behind it, and an empty line remains.
    const QByteArray inside = InsidePly(u"ply P { contour { open 0,0,0 } parameter literal \"<a> & \\q%PLY%\\q\" }"_s);
    QVERIFY2(inside.endsWith("            </SUBPLY><a> & \"P\"\n\n"), inside);
}

void TestWriterLPT::aLiteralBehindAnElementStandsBehindIt()
{
    COMPARE_TEXT(InsidePly(u"rosettefirst on ply P { parameter literal \"<A/>\" parameter information I "
                           "parameter literal \"<B/>\" contour { open C 0,0,0 } }"_s),
                 "            <INSTRUCTIONS>I\n</INSTRUCTIONS><A/>\n<B/>\n\n"
                 "            <SUBPLY NAME=\"C\" LASERNUMBER=\"0\">\n"
                 "                <POINT NUMBER=\"1\" XVAL=\"0.000000\" YVAL=\"0.000000\" ZVAL=\"0.000000\"/>\n"
                 "            </SUBPLY>\n"_ba);
}

void TestWriterLPT::aLiteralCanLandInAStartTag()
{
    COMPARE_TEXT(Inside(u"rosettefirst on ply P { parameter literal \" EXTRA=\\q1\\q\" contour { open C 0,0,0 } }"_s),
                 "        <PLY NAME=\"P\" LASERNUMBER=\"0\" EXTRA=\"1\"\n>\n"
                 "            <SUBPLY NAME=\"C\" LASERNUMBER=\"0\">\n"
                 "                <POINT NUMBER=\"1\" XVAL=\"0.000000\" YVAL=\"0.000000\" ZVAL=\"0.000000\"/>\n"
                 "            </SUBPLY>\n        </PLY>\n"_ba);
}

void TestWriterLPT::aLiteralCanLandInAnEmptyElement()
{
    COMPARE_TEXT(Inside(u"ply P { parameter literal A parameter literal B }"_s),
                 "        <PLY NAME=\"P\" LASERNUMBER=\"0\"A\nB\n/>\n"_ba);
}

void TestWriterLPT::allBytesAreThoseOfTheXmlWriter()
{
    int points = 0;
    int literals = 0;
    for (quint32 seed = 1; seed <= 200; ++seed) {
        const QString text = u"filetype 1\n"_s + TestRandomJob(seed).ToText();
        TestJob job(text);
        const QByteArray part = WriteOutput(job, u"wing.XML"_s).part;
        PlainRendering(job, u"plain.XML"_s).Write();
        QString difference;
        QVERIFY2(IsSameText(part, ReadBytes(u"plain.XML"_s), &difference),
                 qPrintable(u"seed %1: %2\n%3"_s.arg(seed).arg(difference, text)));
        points += int(part.count("<POINT "));
        literals += int(part.count("\n!") + part.count(">!") + part.count("\"!"));
    }
    QVERIFY(points > 1000); // the jobs aren't all empty
    QVERIFY(literals > 50);
}

void TestWriterLPT::withoutTargetsNoToolFileIsMade()
{
    const auto output = Write(u"projector P { } "_s + pointPly);
    QVERIFY(!output.hasTargets);
    COMPARE_TEXT(ReportBody(output.report), "\nNo laser targets found in model.\n"_ba);
}

void TestWriterLPT::withoutProjectorsTheTargetsAreThoseOfLaserOne()
{
    const auto output = Write(u"target \"A <B>\" 1,2,3 target \"\" -0.5,0,0 "_s + pointPly);
    COMPARE_TEXT(output.targets,
                 "\n<XML>\n"
                 "    <TOOL NAME=\"Tool-wing.XML\" STATUS=\"Vantrell\" COORDSYSTEM=\"RIGHT\">\n"
                 "        <TARGET LASERNUMBER=\"1\" NUMBER=\"1\" NAME=\"A &lt;B&gt;\" DVAL=\"OFF\" XVAL=\"1.000000\" "
                 "YVAL=\"2.000000\" ZVAL=\"3.000000\" ANGLE1=\"\" ANGLE2=\"\" DISTANCE=\"\" SCANRATIO=\"1.0\" "
                 "SEARCHRATIO=\"1.0\" MISSING=\"\"/>\n"
                 "        <TARGET LASERNUMBER=\"1\" NUMBER=\"2\" NAME=\"1\" DVAL=\"OFF\" XVAL=\"-0.500000\" "
                 "YVAL=\"0.000000\" ZVAL=\"0.000000\" ANGLE1=\"\" ANGLE2=\"\" DISTANCE=\"\" SCANRATIO=\"1.0\" "
                 "SEARCHRATIO=\"1.0\" MISSING=\"\"/>\n"
                 "    </TOOL>\n</XML>\n"_ba);
    COMPARE_TEXT(ReportBody(output.report),
                 "\nNo laser projectors found in model, using all targets in one projector.\n"
                 "\nWriting 2 targets to file " +
                     QDir::currentPath().toUtf8() + "/Tool-wing.XML");
}

void TestWriterLPT::numbersRestartInEachProjector()
{
    const auto output = Write(u"target A 0,0,0 target B 0,0,0 projector P { 1 2 } projector Q { 2 1 } "_s + pointPly);
    QCOMPARE(Attributes(output.targets, "TARGET", "LASERNUMBER"), "1,1,2,2"_ba);
    QCOMPARE(Attributes(output.targets, "TARGET", "NUMBER"), "1,2,1,2"_ba);
    QCOMPARE(Attributes(output.targets, "TARGET", "NAME"), "A,B,B,A"_ba);
    COMPARE_TEXT(ReportBody(output.report),
                 "\nWriting 4 targets in 2 projectors to file " + QDir::currentPath().toUtf8() + "/Tool-wing.XML");
}

void TestWriterLPT::nullsUseUpIndexAndLaserButNoNumber()
{
    const auto output =
        Write(u"target \"\" 0,0,0 nullprojector projector P { null 1 null 1 } nullprojector projector Q { 1 }"_s);
    QCOMPARE(Attributes(output.targets, "TARGET", "LASERNUMBER"), "2,2,4"_ba);
    QCOMPARE(Attributes(output.targets, "TARGET", "NUMBER"), "1,2,1"_ba);
    QCOMPARE(Attributes(output.targets, "TARGET", "NAME"), "1,3,0"_ba);
    QVERIFY(output.report.contains("\nWriting 3 targets in 2 projectors to file "));
}

void TestWriterLPT::driftShowsInTheTool()
{
    QCOMPARE(Attributes(Write(u"target A 0,0,0 drift target B 0,0,0"_s).targets, "TARGET", "DVAL"), "ON,OFF"_ba);
}

void TestWriterLPT::theToolFileKeepsTheExtension_data()
{
    QTest::addColumn<QString>("part");
    QTest::addColumn<QString>("tool");
    QTest::newRow("XML") << u"wing.XML"_s << u"Tool-wing.XML"_s;
    QTest::newRow("two dots") << u"wing.left.txt"_s << u"Tool-wing.left.txt"_s;
    QTest::newRow("none") << u"wing"_s << u"Tool-wing"_s;
    QTest::newRow("backward separator") << u"a\\wing.XML"_s << u"Tool-a\\wing.XML"_s;
}

void TestWriterLPT::theToolFileKeepsTheExtension()
{
    QFETCH(QString, part);
    QFETCH(QString, tool);
    const auto output = Write(u"target A 0,0,0"_s, part, tool);
    QVERIFY(output.hasTargets);
    QCOMPARE(Attributes(output.targets, "TOOL", "NAME"), tool.toUtf8());
}

void TestWriterLPT::theToolStandsBesideAPartInAnotherFolder()
{
    QVERIFY(QDir().mkpath(u"parts"_s));
    const auto output = Write(u"target A 0,0,0 "_s + pointPly, u"parts/wing.XML"_s, u"parts/Tool-wing.XML"_s);
    QVERIFY(output.hasTargets);
    QCOMPARE(Attributes(output.targets, "TOOL", "NAME"), "Tool-wing.XML"_ba);
    QVERIFY(ReportBody(output.report)
                .endsWith("\nWriting 1 targets to file " + QDir::currentPath().toUtf8() + "/parts/Tool-wing.XML"));
}

void TestWriterLPT::theToolFileCanHaveItsOwnFolder()
{
    QVERIFY(QDir().mkpath(u"tools"_s));
    QFile::remove(u"Tool-wing.XML"_s);
    TestJob job(u"filetype 1 target A 0,0,0 "_s + pointPly);
    job.GetOptions().SetTargetFilePath(u"tools"_s);
    QVERIFY(!WriteOutput(job, u"wing.XML"_s, u"tools/Tool-wing.XML"_s).hasTargets); // the folder alone isn't asked for
    QVERIFY(QFile::remove(u"Tool-wing.XML"_s));
    job.GetOptions().SetUseSpecificPathForLaserFile(true);
    const auto output = WriteOutput(job, u"wing.XML"_s, u"tools/Tool-wing.XML"_s);
    QVERIFY(output.hasTargets);
    QVERIFY(!QFile::exists(u"Tool-wing.XML"_s));
    QVERIFY(ReportBody(output.report).endsWith("\nWriting 1 targets to file tools/Tool-wing.XML"));
}

void TestWriterLPT::targetsInInchesOnAnAxis()
{
    QVERIFY(Write(u"units inch axis 10,20,30 0,1,0 -1,0,0 target T 35.4,45.4,-20.8"_s)
                .targets.contains(" XVAL=\"1.000000\" YVAL=\"-1.000000\" ZVAL=\"-2.000000\" "));
}

QTEST_GUILESS_MAIN(TestWriterLPT)
#include "TestWriterLPT.moc"
