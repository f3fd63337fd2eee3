#include "writers/ZETLaserWriterVirtek.h"

#include "features/ZETLaser3DText.h"
#include "features/ZETLaserParameter.h"
#include "features/ZETLaserTarget.h"
#include "laser/ZETLaserContour.h"
#include "laser/ZETLaserCurve.h"
#include "laser/ZETLaserGroup.h"
#include "laser/ZETLaserOptions.h"
#include "laser/ZETLaserPoint.h"
#include "writers/ZETLaserTreeWalk.h"

using namespace Qt::Literals::StringLiterals;

namespace
{
constexpr int decimals = 6;
} // namespace

ZETLaserWriterVirtek::ZETLaserWriterVirtek(ZETLaserOptions* jobOptions, QSharedPointer<ZETLaserGroup> treeRoot)
    : ZETLaserWriter(jobOptions, std::move(treeRoot))
{
}

bool ZETLaserWriterVirtek::Write()
{
    OpenFiles();
    WriteReportHeader();
    AddWrittenMessage(u"Virtek"_s, ZETSysMessageQueue::TypeNote);
    ZETLaserTreeWalk::Root(*root, *this);
    stream.WriteLine("EOD"_L1);
    WriteTargets();
    WriteReportFooter();
    CloseFiles();
    return true;
}

void ZETLaserWriterVirtek::BeginLayer(const ZETLaserGroup& group)
{
    stream.WriteLine("LAYER START "_L1, group.GetName());
}

void ZETLaserWriterVirtek::EndLayer(const ZETLaserGroup& group)
{
    stream.WriteLine("LAYER END "_L1, group.GetName());
}

void ZETLaserWriterVirtek::BeginLeaf(const ZETLaserGroup& group)
{
    stream.WriteLine("START "_L1, group.GetName());
}

void ZETLaserWriterVirtek::EndLeaf(const ZETLaserGroup& group)
{
    stream.WriteLine("END "_L1, group.GetName());
}

void ZETLaserWriterVirtek::WriteContour(const ZETLaserContour& contour)
{
    ZETLaserTreeWalk::Curves(contour, *this);
}

void ZETLaserWriterVirtek::WriteCurve(const ZETLaserCurve& curve)
{
    stream.WriteLine("P "_L1, ZETLaserTreeWalk::CountPoints(curve));
    ZETLaserTreeWalk::Points(curve, *this);
}

void ZETLaserWriterVirtek::WritePoint(const ZETLaserPoint& point)
{
    const auto place = GetOutputPoint(point);
    stream.Write(ZETLaserNumbers(place, decimals));
    if (WritesNormal(point)) {
        const auto normal = GetOutputNormal(point);
        stream.Write("   "_L1, ZETLaserNumbers(normal, decimals));
    }
    stream.WriteLine();
}

void ZETLaserWriterVirtek::WritePoint(const ZETMathPoint& point)
{
    const auto place = GetOutputPoint(point);
    stream.WriteLine(ZETLaserNumbers(place, decimals));
}

void ZETLaserWriterVirtek::WriteParameters(const ZETLaserGroup& group)
{
    const auto parameters = EvaluateParameters(group);
    // The block of Information goes ahead of all others, wherever its parts stand among the children.
    const auto information = CollectTexts(parameters, {ZETLaserParameter::Information});
    if (information.count >= 1) {
        stream.WriteLine("I "_L1, information.count);
        stream.Write(information.lines);
    }
    for (const auto& parameter : parameters)
        WriteParameter(parameter);
}

void ZETLaserWriterVirtek::WriteParameter(const Parameter& parameter)
{
    switch (parameter.type) {
    case ZETLaserParameter::Information:
        break; // in the block
    case ZETLaserParameter::Message:
        stream.WriteLine("L 1"_L1);
        stream.WriteLine(parameter.text);
        break;
    case ZETLaserParameter::Graphic:
        stream.WriteLine("G 0 "_L1, parameter.text);
        break;
    case ZETLaserParameter::Query:
        stream.WriteLine("Q 1"_L1);
        stream.WriteLine(parameter.text);
        break;
    case ZETLaserParameter::Literal:
        stream.WriteLine(parameter.text);
        break;
    default:
        AddUnsupportedMessage(tr("Unsupported laser parameter type %1 for Virtek"), parameter.type);
    }
}

void ZETLaserWriterVirtek::WriteTexts(const ZETLaserGroup& group)
{
    const auto texts = EvaluateTexts(group);
    for (const auto& [feature, text] : texts) {
        const auto base = feature->GetBasePoint();
        stream.WriteLine("T 3 "_L1, text);
        WritePoint(base);
        WritePoint(base + feature->GetBaseDirection() * feature->GetSize());
        // Meant: the up direction keeps its own length, it isn't multiplied by the size.
        WritePoint(base + feature->GetUpDirection());
    }
}

void ZETLaserWriterVirtek::WriteTargets()
{
    const TargetTexts texts{
        .noTargets = tr("No laser targets found in model."),
        .noProjectors = tr("No laser projectors found in model, using all targets in one projector."),
        .written = tr("Writing %1 targets to file %2"),
        .writtenInProjectors = tr("Writing %1 targets in %2 projectors to file %3"),
    };
    WriteCalibrationFile(texts, [this](const ZETLaserTarget& target, int index, ZETLaserTextStream& calibration) {
        WriteTarget(target, index, calibration);
    });
}

void ZETLaserWriterVirtek::WriteTarget(const ZETLaserTarget& target, int index, ZETLaserTextStream& calibration)
{
    const auto place = GetOutputPoint(target);
    QString name = target.GetLabel();
    if (name.isEmpty())
        name = QString::number(index);
    calibration.WriteLine("T "_L1, SubstituteBlanks(name, "target name"_L1), target.IsDrift() ? " D"_L1 : ""_L1, ' ',
                          ZETLaserNumbers(place, decimals));
}
