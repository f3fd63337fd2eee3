#include "openhost/ZETGeometry/ZETOpenShapeReader_p.h"

#include "openhost/ZETGeometry/ZETOpenKernel_p.h"

#include <BRep_Builder.hxx>
#include <BRepTools.hxx>
#include <IGESControl_Reader.hxx>
#include <IGESData_GlobalSection.hxx>
#include <IGESData_IGESEntity.hxx>
#include <IGESData_IGESModel.hxx>
#include <Interface_Check.hxx>
#include <Interface_CheckIterator.hxx>
#include <Interface_Static.hxx>
#include <Message.hxx>
#include <Message_Messenger.hxx>
#include <StepBasic_Product.hxx>
#include <StepBasic_ProductDefinition.hxx>
#include <StepBasic_ProductDefinitionFormation.hxx>
#include <STEPConstruct_UnitContext.hxx>
#include <STEPControl_Reader.hxx>
#include <StepData_StepModel.hxx>
#include <StepGeom_GeometricRepresentationContextAndGlobalUnitAssignedContext.hxx>
#include <StepGeom_GeomRepContextAndGlobUnitAssCtxAndGlobUncertaintyAssCtx.hxx>
#include <StepRepr_GlobalUnitAssignedContext.hxx>
#include <StepRepr_RepresentationItem.hxx>
#include <TCollection_HAsciiString.hxx>
#include <TColStd_SequenceOfAsciiString.hxx>
#include <TopExp_Explorer.hxx>
#include <Transfer_TransientProcess.hxx>
#include <TransferBRep.hxx>
#include <XSControl_TransferReader.hxx>
#include <XSControl_WorkSession.hxx>

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <map>
#include <new>
#include <sstream>

using namespace Qt::Literals::StringLiterals;

namespace
{
/*! The texts of this file, in the context of the class that people see. */
struct Text {
    Q_DECLARE_TR_FUNCTIONS(ZETOpenShapeFile)
};

[[noreturn]] void Fail(const QString& path, const QString& text)
{
    throw ZETSysException(u"%1: %2"_s.arg(path, text));
}

/*! The kernel's readers write to standard output; while this lives they don't. */
class Silence
{
public:
    Silence()
        : printers(Message::DefaultMessenger()->Printers())
    {
        Message::DefaultMessenger()->ChangePrinters().Clear();
    }
    ~Silence() { Message::DefaultMessenger()->ChangePrinters() = printers; }
    Q_DISABLE_COPY_MOVE(Silence)

private:
    Message_SequenceOfPrinters printers;
};

// ---- the bytes

QByteArray ReadFile(const QString& path)
{
    const QFileInfo information(path);
    if (!information.exists())
        Fail(path, Text::tr("there is no such file"));
    if (!information.isFile())
        Fail(path, Text::tr("it isn't a file"));
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        Fail(path, Text::tr("it can't be read: %1").arg(file.errorString()));
    const QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError)
        Fail(path, Text::tr("it can't be read: %1").arg(file.errorString()));
    if (bytes.trimmed().isEmpty())
        Fail(path, Text::tr("it is empty"));
    return bytes;
}

QList<QByteArray> GetLines(const QByteArray& bytes)
{
    QList<QByteArray> lines = bytes.split('\n');
    for (QByteArray& line : lines) {
        if (line.endsWith('\r'))
            line.chop(1);
    }
    while (!lines.isEmpty() && lines.last().trimmed().isEmpty())
        lines.removeLast();
    return lines;
}

/*! The letter of an IGES line's section, in column 73; 0 for other lines. */
char GetIgesSection(const QByteArray& line)
{
    constexpr int column = 72;
    if (line.size() <= column)
        return 0;
    const char section = line[column];
    return QByteArrayView("SGDPT").contains(section) ? section : 0;
}

ZETOpenShapeContent::Format GetFormat(const QString& path, const QByteArray& bytes)
{
    const QByteArray head = bytes.left(4096);
    if (head.trimmed().startsWith("ISO-10303-21"))
        return ZETOpenShapeContent::FormatStep;
    if (head.contains("CASCADE Topology V"))
        return ZETOpenShapeContent::FormatBrep;
    if (GetIgesSection(GetLines(head).value(0)) == 'S')
        return ZETOpenShapeContent::FormatIges;
    Fail(path, Text::tr("it is no STEP, IGES or BREP file"));
}

// What a file says at its end is looked at first: the kernel's readers make something of half a file, or worse.

void CheckStepEnd(const QString& path, const QByteArray& bytes)
{
    if (!bytes.last(std::min(qsizetype(4096), bytes.size())).contains("END-ISO-10303-21"))
        Fail(path, Text::tr("the STEP file ends too early"));
}

void CheckIgesEnd(const QString& path, const QByteArray& bytes)
{
    std::map<char, int> counts;
    const QList<QByteArray> lines = GetLines(bytes);
    for (const QByteArray& line : lines)
        ++counts[GetIgesSection(line)];
    if (GetIgesSection(lines.last()) != 'T')
        Fail(path, Text::tr("the IGES file ends too early"));
    // The last line tells how many lines each section has: S0000001G0000004D0000030P0000020.
    const QByteArray& last = lines.last();
    for (int at = 0; at < 4; ++at) {
        const char section = "SGDP"[at];
        bool isNumber = false;
        const int announced = last.mid(8 * at + 1, 7).trimmed().toInt(&isNumber);
        if (last[8 * at] != section || !isNumber || announced != counts[section]) {
            Fail(path, Text::tr("the IGES file announces another number of lines than it holds in section %1")
                           .arg(QLatin1Char(section)));
        }
    }
}

void CheckBrepEnd(const QString& path, const QByteArray& bytes)
{
    // The last line names the shape that the file is about: a sense, its number and its place. A zero may follow.
    static const QRegularExpression end(u"\\*\\s+[-+ie]\\d+ \\d+(\\s+\\d+)?\\s*$"_s);
    const auto tail = QString::fromLatin1(bytes.last(std::min(qsizetype(256), bytes.size())));
    if (!end.match(tail).hasMatch())
        Fail(path, Text::tr("the BREP file ends too early"));
    for (const char* section : {"Locations", "Curve2ds", "Curves", "Polygon3D", "PolygonOnTriangulations", "Surfaces",
                                "Triangulations", "TShapes"}) {
        if (!bytes.contains(QByteArray("\n") + section + ' '))
            Fail(path, Text::tr("the BREP file has no section %1").arg(QLatin1StringView(section)));
    }
}

/*! A number out of range becomes infinite, and with that some of the kernel's loops don't end. */
void CheckNumbers(const QString& path, const QByteArray& bytes)
{
    static const QRegularExpression number(u"\\d\\.\\d*[EeDd]\\+?0*[2-9]\\d{2,}|\\d\\.\\d*[EeDd]\\+?0*1\\d{3,}"_s);
    const auto match = number.match(QString::fromLatin1(bytes));
    if (match.hasMatch())
        Fail(path, Text::tr("the number %1 is too large").arg(match.captured()));
}

// ---- names

/*! The text of a STEP string: \X2\ and \X\ stand ahead of characters in hexadecimal digits. */
QString DecodeStep(const Handle(TCollection_HAsciiString) & text)
{
    if (text.IsNull())
        return QString();
    auto result = QString::fromUtf8(text->ToCString());
    static const QRegularExpression wide(u"\\\\X2\\\\((?:[0-9A-Fa-f]{4})*)\\\\X0\\\\"_s);
    for (auto match = wide.match(result); match.hasMatch(); match = wide.match(result)) {
        QString decoded;
        const QString digits = match.captured(1);
        for (qsizetype i = 0; i < digits.size(); i += 4)
            decoded.append(QChar(digits.mid(i, 4).toUShort(nullptr, 16)));
        result.replace(match.capturedStart(), match.capturedLength(), decoded);
    }
    static const QRegularExpression narrow(u"\\\\X\\\\([0-9A-Fa-f]{2})"_s);
    for (auto match = narrow.match(result); match.hasMatch(); match = narrow.match(result)) {
        const QChar decoded(match.captured(1).toUShort(nullptr, 16));
        result.replace(match.capturedStart(), match.capturedLength(), decoded);
    }
    return result.trimmed();
}

QString GetStepName(const Handle(Standard_Transient) & entity)
{
    if (const auto item = Handle(StepRepr_RepresentationItem)::DownCast(entity); !item.IsNull())
        return DecodeStep(item->Name());
    const auto definition = Handle(StepBasic_ProductDefinition)::DownCast(entity);
    if (!definition.IsNull() && !definition->Formation().IsNull() && !definition->Formation()->OfProduct().IsNull())
        return DecodeStep(definition->Formation()->OfProduct()->Name());
    return QString();
}

QString GetIgesName(const Handle(Standard_Transient) & entity)
{
    const auto item = Handle(IGESData_IGESEntity)::DownCast(entity);
    if (item.IsNull())
        return QString();
    const Handle(TCollection_HAsciiString) name = item->HasName() ? item->NameValue() : item->ShortLabel();
    return name.IsNull() ? QString() : QString::fromUtf8(name->ToCString()).trimmed();
}

template <typename GetNameOf>
void CollectNames(const XSControl_Reader& reader, ZETOpenShapeContent& content, GetNameOf getName)
{
    const auto process = reader.WS()->TransferReader()->TransientProcess();
    const auto model = reader.Model();
    for (int i = 1; i <= model->NbEntities(); ++i) {
        const Handle(Standard_Transient) entity = model->Value(i);
        const QString name = getName(entity);
        if (!name.isEmpty())
            content.AddName(TransferBRep::ShapeResult(process, entity), name);
    }
}

// ---- units

void CollectStepUnit(STEPControl_Reader& reader, ZETOpenShapeContent& content)
{
    TColStd_SequenceOfAsciiString lengths;
    TColStd_SequenceOfAsciiString angles;
    TColStd_SequenceOfAsciiString solidAngles;
    reader.FileUnits(lengths, angles, solidAngles);
    if (!lengths.IsEmpty())
        content.unitName = QString::fromUtf8(lengths.First().ToCString());
    const auto model = reader.StepModel();
    for (int i = 1; i <= model->NbEntities(); ++i) {
        Handle(StepRepr_GlobalUnitAssignedContext) units;
        const Handle(Standard_Transient) entity = model->Value(i);
        using Plain = StepGeom_GeometricRepresentationContextAndGlobalUnitAssignedContext;
        using WithUncertainty = StepGeom_GeomRepContextAndGlobUnitAssCtxAndGlobUncertaintyAssCtx;
        if (const auto plain = Handle(Plain)::DownCast(entity); !plain.IsNull())
            units = plain->GlobalUnitAssignedContext();
        else if (const auto full = Handle(WithUncertainty)::DownCast(entity); !full.IsNull())
            units = full->GlobalUnitAssignedContext();
        STEPConstruct_UnitContext context;
        if (!units.IsNull() && context.ComputeFactors(units) == 0 && context.LengthDone()) {
            content.unit = context.LengthFactor();
            return;
        }
    }
}

void CollectIgesUnit(const IGESControl_Reader& reader, ZETOpenShapeContent& content)
{
    const IGESData_GlobalSection& section = reader.IGESModel()->GlobalSection();
    if (!section.UnitName().IsNull())
        content.unitName = QString::fromUtf8(section.UnitName()->ToCString());
    content.unit = section.UnitValue(); // in the unit that is set for reading: mm
}

// ---- faults within

/*! Refuses a file whose shapes miss what they refer to: the kernel goes on with such a file, and falls over it. */
void CheckEntities(const QString& path, const XSControl_Reader& reader)
{
    Interface_CheckIterator faults = reader.WS()->ModelCheckList();
    for (faults.Start(); faults.More(); faults.Next()) {
        if (faults.Value()->NbFails() == 0)
            continue;
        const auto fault = QString::fromUtf8(faults.Value()->CFail(1));
        if (faults.Number() == 0)
            Fail(path, fault);
        const auto model = reader.Model();
        const auto label = model->StringLabel(model->Value(faults.Number()));
        Fail(path, Text::tr("entity %1 is faulty: %2").arg(QString::fromUtf8(label->ToCString()), fault));
    }
}

// ---- the formats

void ReadStep(const QString& path, ZETOpenShapeContent& content)
{
    STEPControl_Reader reader;
    if (reader.ReadFile(QFile::encodeName(path).constData()) != IFSelect_RetDone)
        Fail(path, Text::tr("the STEP file can't be understood"));
    CheckEntities(path, reader);
    CollectStepUnit(reader, content);
    reader.TransferRoots();
    content.shape = reader.OneShape();
    CollectNames(reader, content, GetStepName);
}

void ReadIges(const QString& path, ZETOpenShapeContent& content)
{
    IGESControl_Reader reader;
    if (reader.ReadFile(QFile::encodeName(path).constData()) != IFSelect_RetDone)
        Fail(path, Text::tr("the IGES file can't be understood"));
    CheckEntities(path, reader);
    CollectIgesUnit(reader, content);
    reader.TransferRoots();
    content.shape = reader.OneShape();
    CollectNames(reader, content, GetIgesName);
}

/*! The kernel makes room for as many things as the file announces, before it looks whether they are there. */
void CheckBrepCounts(const QString& path, const QByteArray& bytes)
{
    // No whole number of a sound file has that many digits: flags have seven, and places are far from 10 km.
    static const QRegularExpression count(u"(?:^|\\s)(\\d{8,})(?=\\s|$)"_s);
    const auto match = count.match(QString::fromLatin1(bytes));
    if (match.hasMatch())
        Fail(path, Text::tr("the BREP file is faulty: %1 is too large").arg(match.captured(1)));
}

void ReadBrep(const QString& path, const QByteArray& bytes, ZETOpenShapeContent& content)
{
    std::istringstream stream(bytes.toStdString());
    // At the end of the file the kernel would go on until it has counted to what the file announces.
    stream.exceptions(std::ios::failbit | std::ios::badbit);
    try {
        BRepTools::Read(content.shape, stream, BRep_Builder());
    } catch (const std::ios_base::failure&) {
        Fail(path, Text::tr("the BREP file is faulty"));
    } catch (const std::bad_alloc&) {
        Fail(path, Text::tr("the BREP file is faulty, or too large for the memory"));
    }
    if (content.shape.IsNull())
        Fail(path, Text::tr("the BREP file can't be understood"));
}
} // namespace

ZETOpenShapeContent ZETOpenShapeContent::Read(const QString& path)
{
    const QByteArray bytes = ReadFile(path);
    ZETOpenShapeContent content;
    content.format = GetFormat(path, bytes);
    const Silence silence;
    // Lengths come out in mm whatever somebody else in this process has set.
    Interface_Static::SetCVal("xstep.cascade.unit", "MM");
    CallKernel(Text::tr("%1: it can't be understood").arg(path), [&] {
        switch (content.format) {
        case FormatStep:
            CheckStepEnd(path, bytes);
            CheckNumbers(path, bytes);
            ReadStep(path, content);
            break;
        case FormatIges:
            CheckIgesEnd(path, bytes);
            CheckNumbers(path, bytes);
            ReadIges(path, content);
            break;
        case FormatBrep:
            CheckBrepEnd(path, bytes);
            CheckBrepCounts(path, bytes);
            ReadBrep(path, bytes, content);
            break;
        }
    });
    if (content.shape.IsNull())
        Fail(path, Text::tr("the file holds no shapes"));
    if (!std::isfinite(content.unit) || !(content.unit > 0.0))
        Fail(path, Text::tr("the file has no unit of length"));
    return content;
}

QString ZETOpenShapeContent::GetName(const TopoDS_Shape& named) const
{
    const TopoDS_Shape bare = named.Located(TopLoc_Location());
    return nameIndices.IsBound(bare) ? names[nameIndices.Find(bare)] : QString();
}

void ZETOpenShapeContent::AddName(const TopoDS_Shape& named, const QString& name)
{
    if (named.IsNull())
        return;
    const auto kind = named.ShapeType();
    if (kind != TopAbs_FACE && kind != TopAbs_EDGE && kind != TopAbs_WIRE) {
        bodies.emplace_back(name, named);
        return;
    }
    const TopoDS_Shape bare = named.Located(TopLoc_Location());
    if (nameIndices.IsBound(bare))
        return;
    nameIndices.Bind(bare, int(names.size()));
    names.append(name);
}
