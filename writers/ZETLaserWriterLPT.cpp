#include "writers/ZETLaserWriterLPT.h"

#include "features/ZETLaser3DText.h"
#include "features/ZETLaserParameter.h"
#include "features/ZETLaserTarget.h"
#include "laser/ZETLaserContour.h"
#include "laser/ZETLaserCurve.h"
#include "laser/ZETLaserGroup.h"
#include "laser/ZETLaserOptions.h"
#include "laser/ZETLaserPoint.h"
#include "writers/ZETLaserTargetWalk.h"
#include "writers/ZETLaserTreeWalk.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>

using namespace Qt::Literals::StringLiterals;

namespace
{
constexpr int decimals = 6;
constexpr int indentation = 4; //!< blanks for each open element: the XML writer's default

ZETLaserNumber Number(double value)
{
    return {value, decimals};
}

QString NumberText(double value)
{
    return QString::number(value, 'f', decimals);
}

/*! An element that ends with its scope. */
class Element
{
public:
    Element(QXmlStreamWriter& writer, const QString& name)
        : xml(writer)
    {
        xml.writeStartElement(name);
    }
    ~Element() { xml.writeEndElement(); }
    Q_DISABLE_COPY_MOVE(Element)

private:
    QXmlStreamWriter& xml;
};

/*! Puts \a xml on \a device.
 *  Meant: the position goes back to the start behind the declaration, so that the elements overwrite it: projectors
 *  take files without one. */
void BeginDocument(QXmlStreamWriter& xml, QIODevice& device)
{
    xml.setDevice(&device);
    xml.setAutoFormatting(true);
    xml.writeStartDocument();
    device.seek(0);
}

void WriteNumbers(QXmlStreamWriter& xml, std::initializer_list<QString> names, const ZETMathPoint& point)
{
    const auto* name = names.begin();
    xml.writeAttribute(*name++, NumberText(point.GetX()));
    xml.writeAttribute(*name++, NumberText(point.GetY()));
    xml.writeAttribute(*name, NumberText(point.GetZ()));
}
} // namespace

ZETLaserWriterLPT::ZETLaserWriterLPT(ZETLaserOptions* jobOptions, QSharedPointer<ZETLaserGroup> treeRoot)
    : ZETLaserWriter(jobOptions, std::move(treeRoot))
{
}

bool ZETLaserWriterLPT::Write()
{
    OpenFiles();
    WriteReportHeader();
    if (options->GetFileType() == ZETLaserOptions::FileLPT)
        AddWrittenMessage(u"LPT"_s, ZETSysMessageQueue::TypeNote);
    else if (options->GetFileType() == ZETLaserOptions::FileFARO)
        AddWrittenMessage(u"FARO"_s, ZETSysMessageQueue::TypeNote);
    BeginDocument(xmlWriter, file);
    WritePart();
    xmlWriter.writeEndDocument();
    WriteTargets();
    WriteReportFooter();
    CloseFiles();
    return true;
}

QString ZETLaserWriterLPT::GetFileDate(const QDateTime& time)
{
    return time.toString(u"M/d/yyyy hh:mm:ss");
}

void ZETLaserWriterLPT::WritePart()
{
    const Element document(xmlWriter, u"XML"_s);
    const Element part(xmlWriter, u"PART"_s);
    xmlWriter.writeAttribute(u"NAME"_s, options->GetPartName());
    xmlWriter.writeAttribute(u"STATUS"_s, u"Vantrell"_s);
    // All children count, also those that have nothing to write.
    xmlWriter.writeAttribute(u"TOPLAYERS"_s, QString::number(root->GetChildren().size()));
    xmlWriter.writeAttribute(u"FILEDATE"_s, GetFileDate(QDateTime::currentDateTime()));
    xmlWriter.writeAttribute(u"INVERTNORMALS"_s, QString());
    xmlWriter.writeAttribute(u"HIGHESTPLY"_s, u"50"_s);
    xmlWriter.writeAttribute(u"USEASSIGNEDLASERS"_s, u"0"_s);
    xmlWriter.writeAttribute(u"DEFAULTLASER"_s, u"0"_s);
    depth = 2;
    ZETLaserTreeWalk::Root(*root, *this);
}

void ZETLaserWriterLPT::BeginPly(const ZETLaserGroup& group)
{
    xmlWriter.writeStartElement(u"PLY"_s);
    xmlWriter.writeAttribute(u"NAME"_s, group.GetName());
    xmlWriter.writeAttribute(u"LASERNUMBER"_s, u"0"_s);
    ++depth;
}

void ZETLaserWriterLPT::EndLayer(const ZETLaserGroup&)
{
    xmlWriter.writeEndElement();
    --depth;
}

void ZETLaserWriterLPT::WriteContour(const ZETLaserContour& contour)
{
    ZETLaserTreeWalk::Curves(contour, *this);
}

void ZETLaserWriterLPT::WriteCurve(const ZETLaserCurve& curve)
{
    const Element subPly(xmlWriter, u"SUBPLY"_s);
    xmlWriter.writeAttribute(u"NAME"_s, curve.GetName());
    xmlWriter.writeAttribute(u"LASERNUMBER"_s, u"0"_s);
    // Characters end the start tag, and make the XML writer leave the line of the end tag to us.
    xmlWriter.writeCharacters(QString());
    pointNumber = 0;
    // Indent and keyword in one piece: as two they made the writing of points twice as slow.
    pointStart = QByteArray((depth + 1) * indentation, ' ') + "<POINT NUMBER=\"";
    stream.WriteLine();
    ZETLaserTreeWalk::Points(curve, *this);
    stream.Write(QLatin1StringView(pointStart).first(depth * indentation));
    stream.Flush();
}

void ZETLaserWriterLPT::WritePoint(const ZETLaserPoint& point)
{
    const auto place = GetOutputPoint(point);
    stream.Write(QLatin1StringView(pointStart), ++pointNumber, "\" XVAL=\""_L1, Number(place.GetX()), "\" YVAL=\""_L1,
                 Number(place.GetY()), "\" ZVAL=\""_L1, Number(place.GetZ()));
    if (WritesNormal(point)) {
        const auto normal = GetOutputNormal(point);
        stream.Write("\" IVAL=\""_L1, Number(normal.GetX()), "\" JVAL=\""_L1, Number(normal.GetY()), "\" KVAL=\""_L1,
                     Number(normal.GetZ()));
    }
    stream.WriteLine("\"/>"_L1);
}

void ZETLaserWriterLPT::WriteParameters(const ZETLaserGroup& group)
{
    const auto parameters = EvaluateParameters(group);
    WriteBlock(u"INSTRUCTIONS"_s, CollectTexts(parameters, {ZETLaserParameter::Information}));
    WriteBlock(u"NOTES"_s, CollectTexts(parameters, {ZETLaserParameter::Note}));
    for (const auto& parameter : parameters)
        WriteParameter(parameter);
}

void ZETLaserWriterLPT::WriteBlock(const QString& element, const TextBlock& block)
{
    if (block.count >= 1)
        xmlWriter.writeTextElement(element, block.lines);
}

void ZETLaserWriterLPT::WriteParameter(const Parameter& parameter)
{
    switch (parameter.type) {
    case ZETLaserParameter::Information:
    case ZETLaserParameter::Note:
        break; // in the blocks
    case ZETLaserParameter::Literal:
        // Meant: past the XML writer and unescaped, to where the file ends now. That can be within a start tag that the
        // XML writer hasn't finished yet.
        stream.WriteLine(parameter.text);
        stream.Flush();
        break;
    default:
        AddUnsupportedMessage(QObject::tr("Unsupported laser parameter type %1 for LPT"), parameter.type);
    }
}

void ZETLaserWriterLPT::WriteTexts(const ZETLaserGroup& group)
{
    const auto texts = EvaluateTexts(group);
    for (const auto& text : texts)
        WriteText(text);
}

void ZETLaserWriterLPT::WriteText(const Text& text)
{
    const auto base = text.feature->GetBasePoint();
    const Element element(xmlWriter, u"TEXT"_s);
    xmlWriter.writeAttribute(u"NAME"_s, QString::number(++textNumber));
    xmlWriter.writeAttribute(u"VALUE"_s, text.text);
    WriteNumbers(xmlWriter, {u"PT1XVAL"_s, u"PT1YVAL"_s, u"PT1ZVAL"_s}, GetOutputPoint(base));
    WriteNumbers(xmlWriter, {u"PT2XVAL"_s, u"PT2YVAL"_s, u"PT2ZVAL"_s},
                 GetOutputPoint(base + text.feature->GetBaseDirection() * text.feature->GetSize()));
    // Meant: the third point stays in the model's own terms, without output axis and unit scale.
    WriteNumbers(xmlWriter, {u"PT3XVAL"_s, u"PT3YVAL"_s, u"PT3ZVAL"_s}, base + text.feature->GetUpDirection());
}

void ZETLaserWriterLPT::WriteTargets()
{
    const TargetTexts texts{
        .noTargets = QObject::tr("No laser targets found in model."),
        .noProjectors = QObject::tr("No laser projectors found in model, using all targets in one projector."),
        .written = QObject::tr("Writing %1 targets to file %2"),
        .writtenInProjectors = QObject::tr("Writing %1 targets in %2 projectors to file %3"),
    };
    const auto targets = FindTargets(texts);
    if (targets.isEmpty())
        return; // a tool file of an earlier job stays as it is

    const QFileInfo partFile(options->GetFileName());
    const QString folder =
        options->GetUseSpecificPathForLaserFile() ? options->GetTargetFilePath() : partFile.absolutePath();
    const QString name = u"Tool-"_s + partFile.fileName();
    const QString path = folder + QDir::separator() + name;
    ZETLaserOutputFile toolFile(faults, path);
    toolFile.open(fileMode);
    QXmlStreamWriter tool;
    BeginDocument(tool, toolFile);
    const auto counts = WriteTool(targets, name, tool);
    tool.writeEndDocument();
    ReportWrittenTargets(texts, counts, path);
}

ZETLaserTargetCounts ZETLaserWriterLPT::WriteTool(const QList<ZETLaserTarget*>& targets, const QString& name,
                                                  QXmlStreamWriter& tool)
{
    const Element document(tool, u"XML"_s);
    const Element toolElement(tool, u"TOOL"_s);
    tool.writeAttribute(u"NAME"_s, name);
    tool.writeAttribute(u"STATUS"_s, u"Vantrell"_s);
    tool.writeAttribute(u"COORDSYSTEM"_s, u"RIGHT"_s);
    return WalkTargets(
        targets, options->GetProjectors(), [&](int, qsizetype) { pointNumber = 0; },
        [&](const ZETLaserTarget& target, int index, int projector) {
            WriteTarget(target, index, projector + 1, tool);
        });
}

void ZETLaserWriterLPT::WriteTarget(const ZETLaserTarget& target, int index, int laser, QXmlStreamWriter& tool)
{
    const QString label = target.GetLabel();
    const Element element(tool, u"TARGET"_s);
    tool.writeAttribute(u"LASERNUMBER"_s, QString::number(laser));
    tool.writeAttribute(u"NUMBER"_s, QString::number(++pointNumber));
    tool.writeAttribute(u"NAME"_s, label.isEmpty() ? QString::number(index) : label);
    tool.writeAttribute(u"DVAL"_s, target.IsDrift() ? u"ON"_s : u"OFF"_s);
    WriteNumbers(tool, {u"XVAL"_s, u"YVAL"_s, u"ZVAL"_s}, GetOutputPoint(target));
    tool.writeAttribute(u"ANGLE1"_s, QString());
    tool.writeAttribute(u"ANGLE2"_s, QString());
    tool.writeAttribute(u"DISTANCE"_s, QString());
    tool.writeAttribute(u"SCANRATIO"_s, u"1.0"_s);
    tool.writeAttribute(u"SEARCHRATIO"_s, u"1.0"_s);
    tool.writeAttribute(u"MISSING"_s, QString());
}
