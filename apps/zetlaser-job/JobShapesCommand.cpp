#include "JobShapesCommand.h"

#include "JobConsole.h"
#include "JobError.h"
#include "JobLayupText.h"

#include "openhost/ZETGeometry/ZETOpenShapeFile.h"

#include <ZETSystem/ZETSysException.h>

#include <QCoreApplication>

#include <cmath>
#include <optional>

using namespace Qt::Literals::StringLiterals;

namespace
{
using Part = ZETOpenShapeFile::Part;

QString Translate(const char* text)
{
    return QCoreApplication::translate("zetlaser-job", text);
}

/*! With the digits that tell the files of wrong units: "11707.4", "0.0039". */
QString FormatLength(double length)
{
    constexpr double rounding = 1e-6;
    constexpr int digits = 6;
    return QString::number(std::abs(length) < rounding ? 0.0 : length, 'g', digits);
}

QString FormatSize(const ZETMathBoundingBox& box)
{
    const ZETMathVector size = box.GetUpperPoint() - box.GetLowerPoint();
    return Translate("%1 x %2 x %3 mm")
        .arg(FormatLength(size.GetX()), FormatLength(size.GetY()), FormatLength(size.GetZ()));
}

/*! "face 2", "faces 0-3, 7"; the indices rise. */
QString FormatFaces(const QList<int>& indices)
{
    QStringList ranges;
    for (qsizetype first = 0, last = 0; first < indices.size(); first = last + 1) {
        last = first;
        while (last + 1 < indices.size() && indices[last + 1] == indices[last] + 1)
            ++last;
        const QString range = QString::number(indices[first]);
        ranges.append(last == first ? range : range + u'-' + QString::number(indices[last]));
    }
    return (indices.size() == 1 ? Translate("face %1") : Translate("faces %1")).arg(ranges.join(u", "_s));
}

QString DescribeUnit(const ZETOpenShapeFile& file, const std::optional<double>& scale)
{
    const double unit = file.GetUnitInMillimetres();
    const QString size = Translate("%1 mm").arg(FormatLength(unit));
    const QString declared = !(unit > 0.0)                  ? Translate("none is declared")
                             : file.GetUnitName().isEmpty() ? size
                                                            : Translate("%1, %2").arg(file.GetUnitName(), size);
    return scale ? Translate("%1; read as %2 mm").arg(declared, QString::number(*scale)) : declared;
}

/*! What the lines of all parts begin with: kind, index and name. */
QString DescribePlace(const QString& kind, qsizetype index, const QString& name)
{
    const QString place = kind + u' ' + QString::number(index);
    return name.isEmpty() ? place : place + u' ' + QuoteJson(name);
}

QString DescribeLength(const Part& part)
{
    const QString length = Translate("%1 mm").arg(FormatLength(part.length));
    return part.faces.isEmpty() ? length : Translate("%1, bounds %2").arg(length, FormatFaces(part.faces));
}

/*! Lines of the parts of one kind, each with what \a describe tells of it. */
template <typename Describe>
void TellParts(const QString& kind, const QList<Part>& parts, Describe describe)
{
    for (qsizetype i = 0; i < parts.size(); ++i) {
        const QString told =
            parts[i].fault.isEmpty() ? describe(parts[i]) : Translate("can't be used: %1").arg(parts[i].fault);
        JobConsole::WriteResult(DescribePlace(kind, i, parts[i].name) + u": "_s + told);
    }
}

void TellBodies(const ZETOpenShapeFile& file)
{
    for (const auto& [name, faces] : file.GetBodies())
        JobConsole::WriteResult(Translate("body %1: %2").arg(QuoteJson(name), FormatFaces(faces)));
}

void TellShapes(const ZETOpenShapeFile& file, const std::optional<double>& scale)
{
    const QList<Part> faces = file.DescribeFaces();
    JobConsole::WriteResult(Translate("format: %1").arg(file.GetFormat()));
    JobConsole::WriteResult(Translate("unit: %1").arg(DescribeUnit(file, scale)));
    JobConsole::WriteResult(Translate("faces: %1, wires: %2, edges: %3")
                                .arg(file.GetNumFaces())
                                .arg(file.GetNumWires())
                                .arg(file.GetNumEdges()));
    TellBodies(file);
    TellParts(Translate("face"), faces,
              [](const Part& part) { return Translate("%1, %2").arg(part.kind, FormatSize(part.box)); });
    TellParts(Translate("wire"), file.DescribeWires(), [](const Part& part) {
        return Translate("%1, edges: %2, %3").arg(part.kind).arg(part.numEdges).arg(DescribeLength(part));
    });
    TellParts(Translate("edge"), file.DescribeEdges(),
              [](const Part& part) { return Translate("%1, %2").arg(part.kind, DescribeLength(part)); });
}

int RunShapesCommand(const JobCall& call)
{
    std::optional<double> scale;
    if (call.settings.Has(u"scale"_s))
        scale = call.settings.Get(u"scale"_s).toDouble();
    JobConsole::ShowProgress(Translate("reading %1").arg(call.arguments.first()));
    try {
        TellShapes(ZETOpenShapeFile(call.arguments.first(), scale), scale);
    } catch (const ZETSysException& error) {
        throw JobError(JobExit::WrongInput, error.GetMessage());
    }
    return static_cast<int>(JobExit::Written);
}
} // namespace

JobCommand MakeShapesCommand()
{
    return {
        .name = u"shapes"_s,
        .purpose = Translate("Tells what a shape file holds: faces, wires and edges, by index and by name."),
        .usage = {u"FILE [options]"_s},
        .description = Translate(
            "Tells what a STEP, IGES or BREP file holds, as a layup file can name it: each face with its "
            "kind and size, each wire and edge with its length and the faces that it bounds, each by its index, "
            "and by its name where it has one. A body is a name that stands for several faces."),
        .arguments = {{.placeholder = u"FILE"_s,
                       .noun = Translate("shape file"),
                       .suffixes = {u"step"_s, u"stp"_s, u"iges"_s, u"igs"_s, u"brep"_s}}},
        .options = {{.key = u"scale"_s,
                     .kind = JobSetting::Scale,
                     .section = Translate("Shapes"),
                     .help = Translate("Millimetres a unit of the file, where the unit that it declares is wrong.")}},
        .exitCodes = {{u"0"_s, Translate("all is told")},
                      {u"2"_s, Translate("the command line is wrong")},
                      {u"3"_s, Translate("the file is no shape file, is damaged or can't be read")},
                      {u"4"_s, Translate("the standard output can't be written")},
                      {u"5"_s, Translate("the command failed")}},
        .run = RunShapesCommand,
    };
}
