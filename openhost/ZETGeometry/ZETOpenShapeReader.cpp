#include "openhost/ZETGeometry/ZETOpenShapeReader_p.h"

#include "openhost/ZETGeometry/ZETOpenChildProcess_p.h"
#include "openhost/ZETGeometry/ZETOpenKernel_p.h"

#include <BinTools.hxx>
#include <BRep_Builder.hxx>
#include <BRepTools.hxx>
#include <IGESControl_Reader.hxx>
#include <IGESData_GlobalSection.hxx>
#include <IGESData_IGESEntity.hxx>
#include <IGESData_IGESModel.hxx>
#include <Interface_Check.hxx>
#include <Interface_CheckIterator.hxx>
#include <Interface_Static.hxx>
#include <NCollection_DataMap.hxx>
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
#include <TopExp.hxx>
#include <TopTools_IndexedMapOfShape.hxx>
#include <TopTools_ShapeMapHasher.hxx>
#include <Transfer_TransientProcess.hxx>
#include <TransferBRep.hxx>
#include <XSControl_TransferReader.hxx>
#include <XSControl_WorkSession.hxx>

#include <QCoreApplication>
#include <QDataStream>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>
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
    constexpr int sequenceColumn = 73;
    if (GetIgesSection(lines.last()) != 'T' || lines.last().mid(sequenceColumn).trimmed().toInt() != 1)
        Fail(path, Text::tr("the IGES file ends too early"));
    // The last line, which is the first of its section, tells how many lines each section has:
    // S0000001G0000004D0000030P0000020.
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
    // The last line names the shape that the file is about: a sense, its number and its place. A zero may follow. Each
    // number has a blank behind it, or some of its digits may be missing.
    static const QRegularExpression end(u"\\*\\s+[-+ie]\\d+ \\d+\\s+(\\d+\\s+)?$"_s);
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

/*! The names of shapes, wherever the file places them. */
class ShapeNames
{
public:
    /*! The first name of a shape counts. */
    void Add(const TopoDS_Shape& shape, const QString& name)
    {
        if (shape.IsNull())
            return;
        const auto kind = shape.ShapeType();
        if (kind != TopAbs_FACE && kind != TopAbs_EDGE && kind != TopAbs_WIRE)
            bodies.append({name, shape});
        else if (!names.IsBound(WithoutPlace(shape)))
            names.Bind(WithoutPlace(shape), name);
    }
    void Fill(ZETOpenShapeContent& content) const
    {
        FillNames(content.shape, TopAbs_FACE, content.faceNames);
        FillNames(content.shape, TopAbs_EDGE, content.edgeNames);
        FillNames(content.shape, TopAbs_WIRE, content.wireNames);
        FillBodies(content);
    }

private:
    using NameMap = NCollection_DataMap<TopoDS_Shape, QString, TopTools_ShapeMapHasher>;
    using IndexMap = NCollection_DataMap<TopoDS_Shape, QList<int>, TopTools_ShapeMapHasher>;

    static TopoDS_Shape WithoutPlace(const TopoDS_Shape& shape) { return shape.Located(TopLoc_Location()); }

    void FillNames(const TopoDS_Shape& whole, TopAbs_ShapeEnum kind, QStringList& list) const
    {
        TopTools_IndexedMapOfShape shapes;
        TopExp::MapShapes(whole, kind, shapes);
        for (int i = 1; i <= shapes.Extent(); ++i) {
            const QString* const name = names.Seek(WithoutPlace(shapes(i)));
            list.append(name ? *name : QString());
        }
    }
    void FillBodies(ZETOpenShapeContent& content) const
    {
        IndexMap indices; // instances of a body share their faces, which differ in their places
        TopTools_IndexedMapOfShape faces;
        TopExp::MapShapes(content.shape, TopAbs_FACE, faces);
        for (int i = 1; i <= faces.Extent(); ++i) {
            const TopoDS_Shape face = WithoutPlace(faces(i));
            if (!indices.IsBound(face))
                indices.Bind(face, {});
            indices.ChangeFind(face).append(i - 1);
        }
        for (const auto& [name, body] : bodies) {
            TopTools_IndexedMapOfShape own;
            TopExp::MapShapes(body, TopAbs_FACE, own);
            QList<int> found;
            for (int i = 1; i <= own.Extent(); ++i) {
                if (const QList<int>* const partners = indices.Seek(WithoutPlace(own(i))))
                    found.append(*partners);
            }
            std::sort(found.begin(), found.end());
            found.erase(std::unique(found.begin(), found.end()), found.end());
            if (!found.isEmpty())
                content.bodies.append({name, found});
        }
    }

    NameMap names;
    QList<std::pair<QString, TopoDS_Shape>> bodies;
};

template <typename GetNameOf>
void CollectNames(const XSControl_Reader& reader, ZETOpenShapeContent& content, GetNameOf getName)
{
    ShapeNames names;
    const auto process = reader.WS()->TransferReader()->TransientProcess();
    const auto model = reader.Model();
    for (int i = 1; i <= model->NbEntities(); ++i) {
        const Handle(Standard_Transient) entity = model->Value(i);
        const QString name = getName(entity);
        if (!name.isEmpty())
            names.Add(TransferBRep::ShapeResult(process, entity), name);
    }
    names.Fill(content);
}

// ---- units

/*! The length unit, in mm, of an entity that gives shapes their units; 0 for any other and where it names no length. */
double GetStepLengthUnit(const Handle(Standard_Transient) & entity)
{
    Handle(StepRepr_GlobalUnitAssignedContext) units;
    using Plain = StepGeom_GeometricRepresentationContextAndGlobalUnitAssignedContext;
    using WithUncertainty = StepGeom_GeomRepContextAndGlobUnitAssCtxAndGlobUncertaintyAssCtx;
    if (const auto plain = Handle(Plain)::DownCast(entity); !plain.IsNull())
        units = plain->GlobalUnitAssignedContext();
    else if (const auto full = Handle(WithUncertainty)::DownCast(entity); !full.IsNull())
        units = full->GlobalUnitAssignedContext();
    STEPConstruct_UnitContext context;
    const bool isLength = !units.IsNull() && context.ComputeFactors(units) == 0 && context.LengthDone();
    return isLength ? context.LengthFactor() : 0.0;
}

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
        const double unit = GetStepLengthUnit(model->Value(i));
        if (content.unit == 0.0)
            content.unit = unit;
        else if (unit != 0.0 && unit != content.unit)
            content.hasOtherUnits = true;
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
    // Lengths come out in mm whatever somebody else in this process has set.
    Interface_Static::SetCVal("xstep.cascade.unit", "MM");
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
    Interface_Static::SetCVal("xstep.cascade.unit", "MM");
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
    content.unitName = u"mm"_s; // which is a convention: the format declares no unit
    content.unit = 1.0;
    ShapeNames().Fill(content);
}

ZETOpenShapeContent::Format CheckFile(const QString& path, const QByteArray& bytes)
{
    const auto format = GetFormat(path, bytes);
    switch (format) {
    case ZETOpenShapeContent::FormatStep:
        CheckStepEnd(path, bytes);
        CheckNumbers(path, bytes);
        break;
    case ZETOpenShapeContent::FormatIges:
        CheckIgesEnd(path, bytes);
        CheckNumbers(path, bytes);
        break;
    case ZETOpenShapeContent::FormatBrep:
        CheckBrepEnd(path, bytes);
        CheckBrepCounts(path, bytes);
        break;
    }
    return format;
}

ZETOpenShapeContent ReadWithKernel(const QString& path, ZETOpenShapeContent::Format format, const QByteArray& bytes)
{
    ZETOpenShapeContent content;
    content.format = format;
    CallKernel(Text::tr("%1: it can't be understood").arg(path), [&] {
        switch (format) {
        case ZETOpenShapeContent::FormatStep:
            ReadStep(path, content);
            break;
        case ZETOpenShapeContent::FormatIges:
            ReadIges(path, content);
            break;
        case ZETOpenShapeContent::FormatBrep:
            ReadBrep(path, bytes, content);
            break;
        }
    });
    if (content.shape.IsNull())
        Fail(path, Text::tr("the file holds no shapes"));
    return content;
}

// ---- the way from one process to the other

QByteArray Pack(const ZETOpenShapeContent& content)
{
    std::ostringstream shape;
    BinTools::Write(content.shape, shape);
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << content.unitName << content.unit << content.hasOtherUnits << content.faceNames << content.edgeNames
           << content.wireNames << content.bodies << QByteArray::fromStdString(shape.str());
    return bytes;
}

ZETOpenShapeContent Unpack(const QByteArray& bytes)
{
    ZETOpenShapeContent content;
    QByteArray shapeBytes;
    QDataStream stream(bytes);
    stream >> content.unitName >> content.unit >> content.hasOtherUnits >> content.faceNames >> content.edgeNames >>
        content.wireNames >> content.bodies >> shapeBytes;
    std::istringstream shape(shapeBytes.toStdString());
    BinTools::Read(content.shape, shape);
    return content;
}

/*! Far more than the slowest machine needs for a sound file, which is about a second for each megabyte. */
std::chrono::seconds GetTimeLimit(const QByteArray& bytes)
{
    return std::chrono::seconds(60 + 20 * (bytes.size() >> 20));
}
} // namespace

ZETOpenShapeContent ZETOpenShapeContent::Read(const QString& path)
{
    const QByteArray bytes = ReadFile(path);
    const Format format = CheckFile(path, bytes);
    const auto result =
        ZETOpenChildProcess::Run([&] { return Pack(ReadWithKernel(path, format, bytes)); }, GetTimeLimit(bytes));
    switch (result.end) {
    case ZETOpenChildProcess::Result::Finished:
        break;
    case ZETOpenChildProcess::Result::Threw:
        throw ZETSysException(result.error);
    case ZETOpenChildProcess::Result::Crashed:
        Fail(path, Text::tr("the CAD kernel crashes on it, so it is likely damaged"));
    case ZETOpenChildProcess::Result::TookTooLong:
        Fail(path, Text::tr("the CAD kernel doesn't come to an end with it, so it is likely damaged"));
    }
    return CallKernel(Text::tr("%1: it can't be understood").arg(path), [&] {
        ZETOpenShapeContent content = Unpack(result.bytes);
        content.format = format;
        return content;
    });
}
