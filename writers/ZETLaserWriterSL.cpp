#include "writers/ZETLaserWriterSL.h"

#include "features/ZETLaser3DText.h"
#include "features/ZETLaserParameter.h"
#include "features/ZETLaserProjector.h"
#include "features/ZETLaserTarget.h"
#include "laser/ZETLaserContour.h"
#include "laser/ZETLaserCurve.h"
#include "laser/ZETLaserGroup.h"
#include "laser/ZETLaserOptions.h"
#include "laser/ZETLaserPoint.h"
#include "writers/ZETLaserTargetWalk.h"
#include "writers/ZETLaserTreeWalk.h"

#include <array>
#include <cmath>

using namespace Qt::Literals::StringLiterals;

namespace
{
constexpr qsizetype maximumProjectors = 16;

using LaserTable = std::array<qsizetype, maximumProjectors>;

constexpr int decimals = 3;
constexpr int targetDecimals = 6;

/*! The direction of \a vector. Meant: not a number for a zero vector, instead of an exception. */
ZETMathVector DirectionOf(const ZETMathVector& vector)
{
    const double length = std::sqrt(vector.GetSquaredMagnitude());
    return {vector.GetX() / length, vector.GetY() / length, vector.GetZ() / length};
}

void WriteTable(QLatin1StringView key, const LaserTable& table, ZETLaserTextStream& out)
{
    out.Write(key);
    for (const qsizetype entry : table)
        out.Write(entry, ' ');
    out.WriteLine();
}
} // namespace

ZETLaserWriterSL::ZETLaserWriterSL(ZETLaserOptions* jobOptions, QSharedPointer<ZETLaserGroup> treeRoot)
    : ZETLaserWriter(jobOptions, std::move(treeRoot))
{
}

bool ZETLaserWriterSL::Write()
{
    OpenFiles();
    WriteReportHeader();
    AddWrittenMessage(u"SL"_s, ZETSysMessageQueue::TypeNote);
    ZETLaserTreeWalk::Root(*root, *this);
    stream.WriteLine("EOF"_L1);
    WriteTargets();
    WriteReportFooter();
    CloseFiles();
    return true;
}

void ZETLaserWriterSL::BeginLayer(const ZETLaserGroup& group)
{
    stream.WriteLine("GS "_L1, group.GetName());
}

void ZETLaserWriterSL::EndLayer(const ZETLaserGroup&)
{
    stream.WriteLine("GE"_L1);
}

void ZETLaserWriterSL::WriteContour(const ZETLaserContour& contour)
{
    ZETLaserTreeWalk::Curves(contour, *this);
}

void ZETLaserWriterSL::WriteCurve(const ZETLaserCurve& curve)
{
    stream.WriteLine("BG "_L1, curve.GetName());
    stream.WriteLine("L "_L1, ZETLaserTreeWalk::CountPoints(curve), " 1"_L1);
    ZETLaserTreeWalk::Points(curve, *this);
    stream.WriteLine("E "_L1, curve.GetName());
}

void ZETLaserWriterSL::WritePoint(const ZETLaserPoint& point)
{
    const auto place = GetOutputPoint(point);
    stream.Write(ZETLaserNumbers(place, decimals));
    if (WritesNormal(point)) {
        const auto normal = GetOutputNormal(point);
        stream.Write("   "_L1, ZETLaserNumbers(normal, decimals));
    } else {
        stream.Write("  0 0 0"_L1);
    }
    stream.WriteLine("  1"_L1);
}

void ZETLaserWriterSL::WriteParameters(const ZETLaserGroup& group)
{
    const auto parameters = EvaluateParameters(group);
    const auto notes = CollectTexts(parameters, {ZETLaserParameter::Information, ZETLaserParameter::Note});
    if (notes.count >= 1) {
        stream.WriteLine("BG NOTE"_L1);
        stream.WriteLine("N "_L1, notes.count);
        stream.Write(notes.lines);
        stream.WriteLine("E NOTE"_L1);
    }
    for (const auto& parameter : parameters)
        WriteParameter(parameter);
}

void ZETLaserWriterSL::WriteParameter(const Parameter& parameter)
{
    switch (parameter.type) {
    case ZETLaserParameter::Information:
    case ZETLaserParameter::Note:
        break; // in the block
    case ZETLaserParameter::Graphic:
        stream.WriteLine("BG GRAPHIC"_L1);
        stream.WriteLine("BMP 0 "_L1, parameter.text);
        stream.WriteLine("E GRAPHIC"_L1);
        break;
    case ZETLaserParameter::Literal:
        stream.WriteLine(parameter.text);
        break;
    default:
        AddUnsupportedMessage(tr("Unsupported laser parameter type %1 for SL"), parameter.type);
    }
}

void ZETLaserWriterSL::WriteTexts(const ZETLaserGroup& group)
{
    if (!GetPly(group))
        return;
    // Meant: a leaf without texts has an empty block.
    stream.WriteLine("BG "_L1, group.GetName(), " Text"_L1);
    const auto texts = EvaluateTexts(group);
    for (const auto& text : texts)
        WriteText(text);
    stream.WriteLine("E "_L1, group.GetName(), " Text"_L1);
}

void ZETLaserWriterSL::WriteText(const Text& text)
{
    const auto base = text.feature->GetBasePoint();
    const auto origin = outputAxis * base;
    const auto along = DirectionOf(outputAxis * (base + text.feature->GetBaseDirection()) - origin);
    // Meant: the end of the up direction stays in model coordinates, although the origin is in the output axis.
    const auto up = DirectionOf((base + text.feature->GetUpDirection()) - origin);
    const auto normal = along ^ up;

    const auto place = origin * unitScale;
    stream.Write("T "_L1, ZETLaserNumbers(place, decimals), " 0 "_L1,
                 ZETLaserNumber{text.feature->GetSize() * unitScale, decimals});
    // The three directions are the columns of a matrix, which is written by rows.
    stream.Write(' ', ZETLaserNumbers(ZETMathVector(along.GetX(), up.GetX(), normal.GetX()), decimals));
    stream.Write(' ', ZETLaserNumbers(ZETMathVector(along.GetY(), up.GetY(), normal.GetY()), decimals));
    stream.Write(' ', ZETLaserNumbers(ZETMathVector(along.GetZ(), up.GetZ(), normal.GetZ()), decimals));
    stream.WriteLine("  1  0.0 0.0 0.0  ~"_L1, text.text);
}

void ZETLaserWriterSL::WriteTargets()
{
    const TargetTexts texts{
        .noTargets = tr("No laser targets found in model."),
        .noProjectors = tr("No laser projectors found in model, using all targets in one projector."),
        .written = tr("Writing %1 targets to file %2"),
        .writtenInProjectors = tr("Writing %1 targets in %2 projectors to file %3"),
    };
    const auto targets = FindTargets(texts);
    if (targets.isEmpty())
        return; // a targets file of an earlier job stays as it is

    // Meant: two characters make room for three, because only those of "sl" stand behind the dot.
    const QString fileName = GetFileNameWithTail(2, u"cp1");
    ZETLaserOutputFile targetsFile(faults, fileName);
    targetsFile.open(fileMode);
    ZETLaserTextStream out(&targetsFile);

    const auto projectors = GetWrittenProjectors();
    const bool hasProjectors = !projectors.isEmpty();
    WriteTargetsHead(targets.size(), projectors, out);

    int point = 0;
    const auto written = WalkTargets(
        targets, projectors, [&](int, qsizetype) { point = 0; },
        [&](const ZETLaserTarget& target, int index, int projector) {
            // Meant: from 0 without projectors, and from 1 in each of them, null targets not counted, with projectors.
            WriteTarget(target, projector + 1, hasProjectors ? ++point : index, out);
        });
    ReportWrittenTargets(texts, written, fileName);
}

QList<const ZETLaserProjector*> ZETLaserWriterSL::GetWrittenProjectors()
{
    const auto& projectors = options->GetProjectors();
    if (projectors.size() > maximumProjectors)
        reportStream << "SL data only supports 16 Laser projectors\n";
    return projectors.first(qMin(projectors.size(), maximumProjectors));
}

void ZETLaserWriterSL::WriteTargetsHead(qsizetype targetCount, const QList<const ZETLaserProjector*>& projectors,
                                        ZETLaserTextStream& out)
{
    LaserTable table{1}; // without projectors there is one laser all the same
    for (qsizetype i = 1; i < projectors.size(); ++i)
        table[size_t(i)] = i + 1;
    out.WriteLine(options->GetPartName(), " targets"_L1);
    WriteTable("LaserUsage="_L1, table, out);
    WriteTable("AssignedLaser="_L1, table, out);

    // The same table turned into counts. Meant: a null projector keeps the number that it had as a laser.
    if (projectors.isEmpty())
        table[0] = targetCount;
    for (qsizetype i = 0; i < projectors.size(); ++i) {
        if (projectors[i])
            table[size_t(i)] = projectors[i]->GetTargets().size();
    }
    WriteTable("TargetPoints="_L1, table, out);
}

void ZETLaserWriterSL::WriteTarget(const ZETLaserTarget& target, int laser, int point, ZETLaserTextStream& out)
{
    const auto place = GetOutputPoint(target);
    QString name = target.GetLabel();
    if (name.isEmpty())
        name = QString::number(laser); // meant: the laser's number, so such targets share a name
    name = SubstituteBlanks(name, "target name"_L1);
    out.Write("L="_L1, laser, "\tP="_L1, point);
    out.Write("\tX="_L1, ZETLaserNumber{place.GetX(), targetDecimals});
    out.Write("\tY="_L1, ZETLaserNumber{place.GetY(), targetDecimals});
    out.Write("\tZ="_L1, ZETLaserNumber{place.GetZ(), targetDecimals});
    out.Write("\tXP=0\tYP=0\tG=1\tA=1\tQ=1\tC=1"_L1);
    out.WriteLine("\tL="_L1, laser, "\tL="_L1, laser, "\tT="_L1, name); // meant: the key of field 1 twice more
}
