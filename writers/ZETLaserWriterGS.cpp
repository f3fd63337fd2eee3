#include "writers/ZETLaserWriterGS.h"

#include "features/ZETLaserModelTree.h"
#include "features/ZETLaserParameter.h"
#include "features/ZETLaserProjector.h"
#include "features/ZETLaserTarget.h"
#include "laser/ZETLaserChildren.h"
#include "laser/ZETLaserContour.h"
#include "laser/ZETLaserCurve.h"
#include "laser/ZETLaserEntityProperties.h"
#include "laser/ZETLaserGroup.h"
#include "laser/ZETLaserOptions.h"
#include "laser/ZETLaserPoint.h"
#include "writers/ZETLaserTargetWalk.h"
#include "writers/ZETLaserTreeWalk.h"

#include <ZETComposites/ZETCompPly.h>
#include <ZETComposites/ZETCompRoot.h>
#include <ZETComposites/ZETCompSubPly.h>
#include <ZETMaterial/ZETMatMaterial.h>

#include <QPointer>

using namespace Qt::Literals::StringLiterals;

namespace
{
constexpr double degreesPerRadian = 57.29577951308232;
constexpr int curveLaser = 1; //!< the second number of curve heads and points is always this one

ZETLaserNumber Number(double value)
{
    return {value, 6};
}

/*! \a number with zeros ahead of it, wider if it has more digits. */
QString Padded(int number, int width)
{
    return u"%1"_s.arg(number, width, 10, QChar(u'0'));
}
} // namespace

ZETLaserWriterGS::ZETLaserWriterGS(ZETLaserOptions* jobOptions, QSharedPointer<ZETLaserGroup> treeRoot)
    : ZETLaserWriter(jobOptions, std::move(treeRoot))
{
}

bool ZETLaserWriterGS::Write()
{
    OpenFiles();
    WriteReportHeader();
    if (IsGeneralScanning())
        AddWrittenMessage(u"General Scanning"_s, ZETSysMessageQueue::TypeNote);
    else if (options->GetFileType() == ZETLaserOptions::FileQuilmonPartData)
        AddWrittenMessage(u"Quilmon"_s, ZETSysMessageQueue::TypeNote);
    WriteHead();
    if (IsGeneralScanning())
        WriteTargets();
    stream.WriteLine("N000-00-02M19(2-1)"_L1);
    for (const ZETLaserGroup* group : ChildrenOf<ZETLaserGroup>(*root))
        WriteGroup(*group);
    stream.WriteLine('N', GetPlyNumberText(), "-01-01M30"_L1); // the number of the last ply, not one more
    WriteReportFooter();
    CloseFiles();
    return true;
}

bool ZETLaserWriterGS::IsNesting() const
{
    return options->GetOutputType() == ZETLaserOptions::OutputFlatNesting ||
           options->GetOutputType() == ZETLaserOptions::OutputFlatNestingEmbedded;
}

bool ZETLaserWriterGS::IsGeneralScanning() const
{
    return options->GetFileType() == ZETLaserOptions::FileGeneralScanning;
}

QString ZETLaserWriterGS::GetPlyNumberText() const
{
    return Padded(plyNumber, 3);
}

void ZETLaserWriterGS::WriteHead()
{
    stream.WriteLine(u"N000-00-01M19(%1,1-1,,TOOL0,NEW)"_s.arg(options->GetPartName()));
    if (IsNesting())
        stream.WriteLine("N000-00-01M19(UNITS="_L1,
                         options->GetUnits() == ZETLaserOptions::UnitsInches ? "INCH"_L1 : "MM"_L1, ')');
}

void ZETLaserWriterGS::WriteFrame(QLatin1StringView what, const QString& name)
{
    if (!IsNesting())
        stream.WriteLine("N000-00-01M19("_L1, what, ' ', name, ')');
}

void ZETLaserWriterGS::WriteGroup(const ZETLaserGroup& group)
{
    if (group.GetPointCount() < 1)
        return; // nothing written, nothing counted
    const bool isPly =
        StandsFor(group, ZETLaserEntityProperties::ply) || StandsFor(group, ZETLaserEntityProperties::subPly);
    WriteFrame("GROUP START"_L1, group.GetName());
    EnterLevel(group);
    if (isPly && IsNesting())
        WriteNestingData(group);
    // Parameters have this place alone, whatever the job says about the rosette.
    WriteParameters(group);
    for (ZETLaserEntity* child : ChildrenOf<ZETLaserEntity>(group)) {
        if (const auto* childGroup = qobject_cast<const ZETLaserGroup*>(child))
            WriteGroup(*childGroup);
        else if (const auto* contour = qobject_cast<const ZETLaserContour*>(child))
            WriteContour(*contour);
    }
    WriteFrame("GROUP END"_L1, group.GetName());
    if (isPly)
        stream.WriteLine('N', GetPlyNumberText(), "-00-01M01"_L1);
}

void ZETLaserWriterGS::EnterLevel(const ZETLaserGroup& group)
{
    if (StandsFor(group, ZETLaserEntityProperties::ply))
        EnterPly(group);
    else if (StandsFor(group, ZETLaserEntityProperties::subPly))
        EnterSubPly(group);
    else if (StandsFor(group, ZETLaserEntityProperties::sequence))
        sequenceName = group.GetName();
    else if (StandsFor(group, ZETLaserEntityProperties::layup))
        layupName = group.GetName();
}

void ZETLaserWriterGS::EnterPly(const ZETLaserGroup& group)
{
    ply = ObjectIn<ZETCompPly>(group, ZETLaserEntityProperties::ply);
    plyName = ply ? ply->GetLabel() : group.GetName();
    ++plyCount;
    ++plyNumber;
}

void ZETLaserWriterGS::EnterSubPly(const ZETLaserGroup& group)
{
    const auto* subPly = ObjectIn<ZETCompSubPly>(group, ZETLaserEntityProperties::subPly);
    if (subPly) {
        subPlyName = subPly->GetLabel();
        ply = FindAncestor<ZETCompPly>(*subPly);
        if (ply)
            plyName = ply->GetLabel() + u';' + subPlyName; // without a ply the name of the level before stays
    } else {
        ply = nullptr;
        subPlyName = group.GetName();
        plyName += u';' + subPlyName;
    }
    ++subPlyCount;
    ++plyNumber;
}

void ZETLaserWriterGS::WriteNestingData(const ZETLaserGroup& group)
{
    WriteNestingLine(u"N%1-01-01M19(NESTSUBA=%2)"_s, sequenceName);
    WriteNestingLine(u"N%1-01-01M19(NESTPART=%2)"_s, group.GetName());
    WriteNestingLine(u"N%1-01-01M19(LAYUP=%2)"_s, layupName);
    WriteNestingLine(u"N%1-01-01M19(MATERIAL=%2)"_s, GetMaterialText(group));
    if (ply) {
        stream.WriteLine(
            u"N%1-01-01M19(DIRECTION=%2)"_s.arg(GetPlyNumberText()).arg(ply->GetDirection() * degreesPerRadian));
    }
    stream.WriteLine('N', GetPlyNumberText(), "-01-01M19(NESTROTATION=0;NONE)"_L1);
}

void ZETLaserWriterGS::WriteNestingLine(const QString& format, const QString& value)
{
    stream.WriteLine(format.arg(GetPlyNumberText()).arg(value));
}

QString ZETLaserWriterGS::GetMaterialText(const ZETLaserGroup& group) const
{
    const auto* material = ObjectIn<ZETMatMaterial>(group, ZETLaserEntityProperties::material);
    if (!material)
        return {};
    return options->GetUseMaterialID() ? material->GetMaterialId() : material->GetMaterialType();
}

void ZETLaserWriterGS::WriteContour(const ZETLaserContour& contour)
{
    if (contour.GetPointCount() < 1)
        return;
    WriteFrame("CONTOUR START"_L1, contour.GetName());
    curveNumber = 1;
    ZETLaserTreeWalk::Curves(contour, *this);
    WriteFrame("CONTOUR END"_L1, contour.GetName());
}

void ZETLaserWriterGS::WriteCurve(const ZETLaserCurve& curve)
{
    WriteFrame("CURVE START"_L1, curve.GetName());
    WriteCurveHead(curve);
    pointStart = u"N%1-%2-01G01X"_s.arg(GetPlyNumberText(), Padded(curveLaser, 2)).toLatin1();
    const auto& points = curve.GetPoints();
    for (const auto& point : points)
        WritePoint(point);
    // Meant: here a closed curve of one point is closed, too.
    if (curve.IsClosed())
        WritePoint(points.first());
    WriteFrame("CURVE END"_L1, curve.GetName());
}

void ZETLaserWriterGS::WriteCurveHead(const ZETLaserCurve& curve)
{
    // A rosette uses up no number.
    const QString number = curve.GetName().endsWith(tr("Rosette")) ? u"ROSETTE"_s : QString::number(curveNumber++);
    const QString format = IsNesting() ? u"N%1-%2-01M11(%3;%4)"_s : u"N%1-%2-01M11(%3-%4)"_s;
    stream.WriteLine(
        format.arg(GetPlyNumberText()).arg(Padded(curveLaser, 2)).arg(sequenceName + u';' + plyName).arg(number));
}

void ZETLaserWriterGS::WritePoint(const ZETLaserPoint& point)
{
    const auto place = GetOutputPoint(point);
    stream.Write(QLatin1StringView(pointStart), Number(place.GetX()), 'Y', Number(place.GetY()), 'Z',
                 Number(place.GetZ()));
    if (options->GetIncludeNormalVectors()) {
        // Meant: a point without a normal shows zeros.
        const auto normal = GetOutputNormal(point);
        stream.Write('I', Number(normal.GetX()), 'J', Number(normal.GetY()), 'K', Number(normal.GetZ()));
    }
    stream.WriteLine();
}

void ZETLaserWriterGS::WriteParameters(const ZETLaserGroup& group)
{
    const auto parameters = EvaluateParameters(group);
    const auto information = CollectTexts(parameters, {ZETLaserParameter::Information});
    if (information.count >= 1) {
        stream.WriteLine("I "_L1, information.count);
        stream.Write(information.lines);
    }
    for (const auto& parameter : parameters) {
        if (parameter.type == ZETLaserParameter::Literal)
            stream.WriteLine(parameter.text);
        else
            AddUnsupportedParameterMessage(parameter.type); // meant: also for the Information that was just written
    }
}

void ZETLaserWriterGS::AddUnsupportedParameterMessage(int type)
{
    if (IsGeneralScanning())
        AddUnsupportedMessage(tr("Unsupported laser parameter type %1 for GS"), type);
    else if (options->GetFileType() == ZETLaserOptions::FileQuilmonPartData)
        AddUnsupportedMessage(tr("Unsupported laser parameter type %1 for CPD"), type);
}

void ZETLaserWriterGS::WriteTargets()
{
    const auto targets = CollectTargets(options->GetCompRoot());
    if (targets.isEmpty()) {
        WriteReportParagraph(tr("No laser targets found in model."));
        return;
    }
    // Meant: all projectors of the model, and not the job's selection.
    const auto projectors = FindDescendants<const ZETLaserProjector>(options->GetCompRoot());
    if (projectors.isEmpty())
        WriteReportParagraph(tr("No laser projectors found in model, using all targets in one projector."));

    stream.WriteLine("N000-00-02M19(1-1)"_L1);
    stream.WriteLine("N000-00-00M17(CALIBRATION TARGETS)"_L1);
    const auto counts = WalkTargets(
        targets, projectors, [](int, qsizetype) {},
        [this](const ZETLaserTarget& target, int index, int projector) {
            WriteTarget(target, index + 1, projector + 1);
        },
        [this](int projector) {
            // Meant: the line isn't ended, so the next one stands on it.
            stream.Write("N000-"_L1, Padded(projector + 1, 2), "-00M02"_L1);
        });
    if (projectors.isEmpty())
        WriteOpenReportParagraph(tr("Writing %1 targets").arg(counts.targets));
    else
        WriteOpenReportParagraph(tr("Writing %1 targets in %2 projectors").arg(counts.targets).arg(counts.projectors));
}

void ZETLaserWriterGS::WriteTarget(const ZETLaserTarget& target, int index, int laser)
{
    const auto place = GetOutputPoint(target);
    stream.WriteLine("N000-"_L1, Padded(laser, 2), '-', Padded(index, 2), "G07X"_L1, Number(place.GetX()), 'Y',
                     Number(place.GetY()), 'Z', Number(place.GetZ()));
}
