#include "writers/ZETLaserWriterLAP.h"

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
// Points have fewer decimals than targets: that is the format's precision for them.
constexpr int pointDecimals = 3;
constexpr int targetDecimals = 6;
} // namespace

ZETLaserWriterLAP::ZETLaserWriterLAP(ZETLaserOptions* jobOptions, QSharedPointer<ZETLaserGroup> treeRoot)
    : ZETLaserWriter(jobOptions, std::move(treeRoot))
{
}

bool ZETLaserWriterLAP::Write()
{
    OpenFiles();
    WriteReportHeader();
    AddWrittenMessage(u"LAP"_s, ZETSysMessageQueue::TypeNote);
    WriteOpening();
    ZETLaserTreeWalk::Root(*root, *this);
    WriteClosing();
    WriteTargets();
    WriteReportFooter();
    CloseFiles();
    return true;
}

void ZETLaserWriterLAP::WriteOpening()
{
    // Meant: all units but millimetres are called inches here, while only inches are scaled.
    const bool millimetres = options->GetUnits() == ZETLaserOptions::UnitsMillimeters;
    stream.WriteLine("#switch to red if any error occurs"_L1);
    stream.WriteLine("ALERT red"_L1);
    stream.WriteLine("#Identification"_L1);
    stream.WriteLine("ID_START"_L1);
    stream.WriteLine("ID_SYNTAX \"1.5\""_L1);
    stream.WriteLine("ID_END"_L1);
    stream.WriteLine("#Source: Vantrell Norvale"_L1);
    stream.WriteLine("PROJECTION_SCALE "_L1, millimetres ? "mm"_L1 : "in"_L1);
    stream.WriteLine("PROJECTION_START \"Projection\""_L1);
    stream.WriteLine("DRAWING_START \""_L1, options->GetPartName(), '"');
}

void ZETLaserWriterLAP::WriteClosing()
{
    stream.WriteLine("DRAWING_END"_L1);
    stream.WriteLine("PROJECTION_END"_L1);
}

void ZETLaserWriterLAP::BeginLayer(const ZETLaserGroup& group)
{
    stream.WriteLine("LAYER_START \""_L1, group.GetName(), '"');
    stream.WriteLine("LAYER_COLOR Green"_L1);
}

void ZETLaserWriterLAP::EndLayer(const ZETLaserGroup&)
{
    stream.WriteLine("LAYER_END"_L1);
}

void ZETLaserWriterLAP::WriteContour(const ZETLaserContour& contour)
{
    stream.WriteLine("GROUP_START \""_L1, contour.GetName(), '"');
    stream.WriteLine("GROUP_COLOR Green"_L1);
    ZETLaserTreeWalk::Curves(contour, *this);
    stream.WriteLine("GROUP_END"_L1);
}

void ZETLaserWriterLAP::WriteCurve(const ZETLaserCurve& curve)
{
    stream.WriteLine("ENTITY_START \""_L1, curve.GetName(), '"');
    stream.WriteLine("ENTITY_COLOR Green"_L1);
    ZETLaserTreeWalk::Points(curve, *this);
    stream.WriteLine("ENTITY_END"_L1);
}

void ZETLaserWriterLAP::WritePoint(const ZETLaserPoint& point)
{
    const auto place = GetOutputPoint(point);
    stream.Write(ZETLaserNumbers(place, pointDecimals));
    if (WritesNormal(point)) {
        const auto normal = GetOutputNormal(point);
        stream.Write("   "_L1, ZETLaserNumbers(normal, pointDecimals));
    }
    stream.WriteLine();
}

void ZETLaserWriterLAP::WriteParameters(const ZETLaserGroup& group)
{
    const auto parameters = EvaluateParameters(group);
    for (const auto& [type, text] : parameters) {
        if (type == ZETLaserParameter::Literal)
            stream.WriteLine(text);
        else
            AddUnsupportedMessage(tr("Unsupported laser parameter type %1 for LAP"), type);
    }
}

void ZETLaserWriterLAP::WriteTargets()
{
    const TargetTexts texts{
        .noTargets = tr("No laser targets found in model."),
        .noProjectors = tr("No laser projectors found in model, using all targets in one projector."),
        .written = tr("Writing %1 targets to file %2"),
        .writtenInProjectors = tr("Writing %1 targets in %2 projectors to file %3"),
    };
    // Meant: with projectors one number runs through the file, from 1; without, targets have their index, from 0.
    const bool hasProjectors = !options->GetProjectors().isEmpty();
    int runningNumber = 0;
    WriteCalibrationFile(texts, [&](const ZETLaserTarget& target, int index, ZETLaserTextStream& calibration) {
        WriteTarget(target, hasProjectors ? ++runningNumber : index, calibration);
    });
}

void ZETLaserWriterLAP::WriteTarget(const ZETLaserTarget& target, int number, ZETLaserTextStream& calibration)
{
    // The format knows targets by their number; the report tells which name that was.
    const auto place = GetOutputPoint(target);
    const QString numberText = QString::number(number);
    const QString label = target.GetLabel();
    if (!label.isEmpty() && label != numberText)
        reportStream << "Target name '" << label << "' saved with LAP number " << numberText << '\n';
    calibration.WriteLine("T "_L1, numberText, ' ', ZETLaserNumbers(place, targetDecimals));
}
