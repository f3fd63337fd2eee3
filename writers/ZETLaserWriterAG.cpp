#include "writers/ZETLaserWriterAG.h"

#include "features/ZETLaser3DText.h"
#include "features/ZETLaserParameter.h"
#include "features/ZETLaserTarget.h"
#include "laser/ZETLaserContour.h"
#include "laser/ZETLaserCurve.h"
#include "laser/ZETLaserEntityProperties.h"
#include "laser/ZETLaserGroup.h"
#include "laser/ZETLaserOptions.h"
#include "laser/ZETLaserPoint.h"
#include "writers/ZETLaserTreeWalk.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace
{
// Keywords of fixed width: their trailing blanks are part of them.
constexpr auto partNumberKeyword = "$*PARTNO    "_L1;
constexpr auto fileNameKeyword = "$*DOSNAME   "_L1;
constexpr auto unitsKeyword = "$*UNITS     "_L1;
constexpr auto sensorKeyword = "$*SENSOR    "_L1;
constexpr auto plyKeyword = "$*PLY       "_L1;
constexpr auto sequenceKeyword = "$*SEQ       "_L1;
constexpr auto layupKeyword = "$*PLYGROUP  "_L1;
constexpr auto pointKeyword = "GOTO        "_L1;

constexpr int decimals = 3;
} // namespace

ZETLaserWriterAG::ZETLaserWriterAG(ZETLaserOptions* jobOptions, QSharedPointer<ZETLaserGroup> treeRoot)
    : ZETLaserWriter(jobOptions, std::move(treeRoot))
{
}

bool ZETLaserWriterAG::Write()
{
    OpenFiles();
    WriteReportHeader();
    if (options->GetFileType() == ZETLaserOptions::FileAssemblyGuidance)
        AddWrittenMessage(u"Assembly Guidance"_s, ZETSysMessageQueue::TypeNote);
    else if (options->GetFileType() == ZETLaserOptions::FileAlignedVision)
        AddWrittenMessage(u"Aligned Vision"_s, ZETSysMessageQueue::TypeNote);
    WritePartNumber();
    WriteFileName();
    WriteUnits();
    WriteTargets();
    stream.WriteLine("$*DISPLAYMODE WCAICT"_L1);
    ZETLaserTreeWalk::Root(*root, *this);
    WritePartNumber(); // the same line begins and ends the file
    WriteReportFooter();
    CloseFiles();
    return true;
}

QString ZETLaserWriterAG::SafeCommandName(const QString& name)
{
    return SubstituteBlanks(name, "command name"_L1);
}

void ZETLaserWriterAG::WritePartNumber()
{
    stream.WriteLine(partNumberKeyword, SafeCommandName(root->GetName()));
}

void ZETLaserWriterAG::WriteFileName()
{
    // Both kinds of separator count on every platform, the last one of either kind.
    const QString path = options->GetFileName();
    const auto separator = std::max(path.lastIndexOf(u'/'), path.lastIndexOf(u'\\'));
    stream.WriteLine(fileNameKeyword, SafeCommandName(path.mid(separator + 1)));
}

void ZETLaserWriterAG::WriteUnits()
{
    stream.WriteLine(unitsKeyword, options->GetUnits() == ZETLaserOptions::UnitsInches ? "IN"_L1 : "MM"_L1);
}

void ZETLaserWriterAG::WriteTargets()
{
    const auto targets = FindTargets({
        .noTargets = tr("No laser targets found in model."),
        .noProjectors = tr("No laser projectors found in model, using all targets in one projector."),
    });
    if (targets.isEmpty())
        return;
    // Meant: the sensors are those of the model, whatever projectors the job has.
    int number = 0;
    for (const ZETLaserTarget* target : targets)
        WriteTarget(*target, ++number);
    WriteOpenReportParagraph(tr("Writing %1 targets").arg(targets.size()));
}

void ZETLaserWriterAG::WriteTarget(const ZETLaserTarget& target, int number)
{
    const auto place = GetOutputPoint(target);
    QString label = target.GetLabel();
    if (label.isEmpty())
        label = QString::number(number);
    stream.WriteLine(sensorKeyword, number, "   "_L1, ZETLaserNumbers(place, decimals), ' ', SafeCommandName(label));
}

bool ZETLaserWriterAG::OpensLayer(const ZETLaserGroup& group)
{
    // The name is made safe, and a blank in it is told, also where no line comes of it.
    const QString name = SafeCommandName(group.GetName());
    if (StandsFor(group, ZETLaserEntityProperties::ply)) {
        ++plyCount;
        stream.WriteLine(plyKeyword, name);
    } else if (StandsFor(group, ZETLaserEntityProperties::subPly)) {
        ++subPlyCount;
        stream.WriteLine(plyKeyword, name); // the projector knows no sub-plies
    } else if (StandsFor(group, ZETLaserEntityProperties::sequence)) {
        stream.WriteLine(sequenceKeyword, name);
    } else if (StandsFor(group, ZETLaserEntityProperties::layup)) {
        stream.WriteLine(layupKeyword, name);
    }
    return false;
}

void ZETLaserWriterAG::WriteContour(const ZETLaserContour& contour)
{
    ZETLaserTreeWalk::Curves(contour, *this);
}

void ZETLaserWriterAG::WriteCurve(const ZETLaserCurve& curve)
{
    stream.WriteLine("PENUP"_L1);
    const auto& points = curve.GetPoints();
    WritePoint(points.first());
    stream.WriteLine("PENDWN"_L1);
    for (auto point = points.cbegin() + 1; point != points.cend(); ++point)
        WritePoint(*point);
    if (ZETLaserTreeWalk::RepeatsFirstPoint(curve))
        WritePoint(points.first());
}

void ZETLaserWriterAG::WritePoint(const ZETLaserPoint& point)
{
    const auto place = GetOutputPoint(point);
    stream.Write(pointKeyword, ZETLaserNumbers(place, decimals));
    if (WritesNormal(point)) {
        const auto normal = GetOutputNormal(point);
        stream.Write("  "_L1, ZETLaserNumbers(normal, decimals));
    }
    stream.WriteLine();
}

void ZETLaserWriterAG::WriteParameters(const ZETLaserGroup& group)
{
    const auto parameters = EvaluateParameters(group);
    for (const auto& parameter : parameters)
        WriteParameter(parameter);
}

void ZETLaserWriterAG::WriteParameter(const Parameter& parameter)
{
    const QString text = SafeCommandName(parameter.text);
    switch (parameter.type) {
    case ZETLaserParameter::Information:
    case ZETLaserParameter::Message:
        stream.WriteLine("$*MSG "_L1, text);
        break;
    case ZETLaserParameter::Graphic:
        stream.WriteLine("$*DISPLAYGRAPHICS "_L1, text);
        break;
    case ZETLaserParameter::Literal:
        stream.WriteLine(text); // meant: the blanks of a literal are replaced like all others
        break;
    default:
        AddUnsupportedMessage(tr("Unsupported laser parameter type %1 for AG"), parameter.type);
    }
}

void ZETLaserWriterAG::WriteTexts(const ZETLaserGroup& group)
{
    const auto texts = EvaluateTexts(group);
    for (const auto& [feature, text] : texts) {
        const QString safeText = SafeCommandName(text);
        const auto place = GetOutputPoint(feature->GetBasePoint());
        stream.WriteLine("PENUP"_L1);
        stream.WriteLine(pointKeyword, ZETLaserNumbers(place, decimals));
        // The text stands between double quotes, which aren't escaped within it.
        stream.WriteLine("$*LASERTEXT "_L1, ZETLaserNumber{feature->GetSize() * unitScale, decimals}, " \""_L1,
                         safeText, '"');
    }
}
