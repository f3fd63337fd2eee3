#include "writers/ZETLaserWriter.h"

#include "features/ZETLaser3DText.h"
#include "features/ZETLaserModelTree.h"
#include "features/ZETLaserParameter.h"
#include "features/ZETLaserParameterProvider.h"
#include "features/ZETLaserTarget.h"
#include "laser/ZETLaserChildren.h"
#include "laser/ZETLaserEntityProperties.h"
#include "laser/ZETLaserGroup.h"
#include "laser/ZETLaserMessages.h"
#include "laser/ZETLaserOptions.h"
#include "laser/ZETLaserParameterEntity.h"
#include "laser/ZETLaserTextEntity.h"
#include "writers/ZETLaserTargetWalk.h"

#include <ZETComposites/ZETCompPlyBase.h>
#include <ZETComposites/ZETCompRoot.h>
#include <ZETComposites/ZETCompRosette.h>

#include <QPointer>
#include <QVariant>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace
{
constexpr double inchesPerMillimetre = 1.0 / 25.4;
} // namespace

ZETLaserWriter::ZETLaserWriter(ZETLaserOptions* jobOptions, QSharedPointer<ZETLaserGroup> treeRoot)
    : options(jobOptions)
    , root(std::move(treeRoot))
{
    if (options->GetUnits() == ZETLaserOptions::UnitsInches)
        unitScale = inchesPerMillimetre;
    // An axis system of the options is a rosette: whoever fills the options sees to that.
    if (const auto axisSystem = options->GetAxisSystem())
        outputAxis = static_cast<const ZETCompRosette*>(axisSystem.data())->GetAxis();
    parameterProvider = std::make_unique<ZETLaserParameterProvider>(FindContainer(options->GetCompRoot()));
}

ZETLaserWriter::~ZETLaserWriter() = default;

bool ZETLaserWriter::OpenFiles()
{
    OpenPartFile(options->GetFileName());
    OpenReportFile();
    return true;
}

void ZETLaserWriter::OpenPartFile(const QString& fileName)
{
    file.setFileName(fileName);
    file.open(fileMode);
    stream.SetDevice(&file);
}

void ZETLaserWriter::OpenReportFile()
{
    // The part file's extension stays in the name: wing.ply has the report wing.ply-report.htm.
    reportFile.setFileName(options->GetFileName() + tr("-report") + u".htm"_s);
    reportFile.open(fileMode);
    reportStream.setDevice(&reportFile);
}

void ZETLaserWriter::ClosePartFile()
{
    stream.Flush();
    file.close();
}

bool ZETLaserWriter::CloseFiles()
{
    ClosePartFile();
    reportStream.flush();
    reportFile.close();
    return true;
}

void ZETLaserWriter::AddWrittenMessage(const QString& makeName, ZETSysMessageQueue::Type type)
{
    ZETLaserMessages::Add(
        tr("%1 data have been successfully written to file:\n %2").arg(makeName).arg(options->GetFileName()), type);
}

void ZETLaserWriter::AddUnsupportedMessage(const QString& text, int type)
{
    ZETLaserMessages::Add(text.arg(ZETLaserParameter::GetParameterTypeString(ZETLaserParameter::ParameterType(type))),
                          ZETSysMessageQueue::TypeProblem);
}

bool ZETLaserWriter::OpensLayer(const ZETLaserGroup& group)
{
    if (StandsFor(group, ZETLaserEntityProperties::ply)) {
        ++plyCount;
        return false;
    }
    if (StandsFor(group, ZETLaserEntityProperties::subPly)) {
        ++subPlyCount;
        return false;
    }
    return !StandsFor(group, ZETLaserEntityProperties::layup) || options->GetNestSequencesWithinLayup();
}

bool ZETLaserWriter::WritesTextsFirst() const
{
    return options->GetRosetteBeforePlyGeometry();
}

bool ZETLaserWriter::StandsFor(const ZETLaserGroup& group, const char* name)
{
    return group.property(name).isValid();
}

const ZETCompPlyBase* ZETLaserWriter::GetPly(const ZETLaserGroup& group)
{
    if (const auto* ply = ObjectIn<const ZETCompPlyBase>(group, ZETLaserEntityProperties::ply))
        return ply;
    return ObjectIn<const ZETCompPlyBase>(group, ZETLaserEntityProperties::subPly);
}

ZETMathPoint ZETLaserWriter::GetOutputPoint(const ZETLaserTarget& target) const
{
    return GetOutputPoint(target.GetCoordinates());
}

bool ZETLaserWriter::WritesNormal(const ZETLaserPoint& point) const
{
    return options->GetIncludeNormalVectors() && point.HasNormal();
}

QList<ZETLaserWriter::Parameter> ZETLaserWriter::EvaluateParameters(const ZETLaserGroup& group) const
{
    QList<Parameter> parameters;
    const auto* ply = GetPly(group);
    if (!ply)
        return parameters;
    for (const ZETLaserParameterEntity* entity : ChildrenOf<ZETLaserParameterEntity>(group)) {
        const auto* parameter = entity->GetParameter();
        parameters.append(
            {int(parameter->GetType()), parameterProvider->EvaluateParameterText(ply, parameter->GetText())});
    }
    return parameters;
}

ZETLaserWriter::TextBlock ZETLaserWriter::CollectTexts(const QList<Parameter>& parameters,
                                                       std::initializer_list<int> types)
{
    TextBlock block;
    for (const auto& parameter : parameters) {
        if (std::find(types.begin(), types.end(), parameter.type) == types.end())
            continue;
        ++block.count;
        block.lines += parameter.text + u'\n';
    }
    return block;
}

QList<ZETLaserWriter::Text> ZETLaserWriter::EvaluateTexts(const ZETLaserGroup& group) const
{
    QList<Text> texts;
    const auto* ply = GetPly(group);
    if (!ply)
        return texts;
    for (const ZETLaserTextEntity* entity : ChildrenOf<ZETLaserTextEntity>(group)) {
        const auto* text = entity->GetText();
        texts.append({text, parameterProvider->EvaluateParameterText(ply, text->GetText())});
    }
    return texts;
}

QList<ZETLaserTarget*> ZETLaserWriter::CollectTargets(ZETFeatObject* modelRoot)
{
    return FindDescendants<ZETLaserTarget>(modelRoot);
}

QList<ZETLaserTarget*> ZETLaserWriter::FindTargets(const TargetTexts& texts)
{
    const auto targets = CollectTargets(options->GetCompRoot());
    if (targets.isEmpty())
        WriteReportParagraph(texts.noTargets);
    else if (options->GetProjectors().isEmpty())
        WriteReportParagraph(texts.noProjectors);
    return targets;
}

void ZETLaserWriter::ReportWrittenTargets(const TargetTexts& texts, const ZETLaserTargetCounts& counts,
                                          const QString& fileName)
{
    if (options->GetProjectors().isEmpty())
        WriteOpenReportParagraph(texts.written.arg(counts.targets).arg(fileName));
    else
        WriteOpenReportParagraph(texts.writtenInProjectors.arg(counts.targets).arg(counts.projectors).arg(fileName));
}

void ZETLaserWriter::WriteCalibrationFile(const TargetTexts& texts, const WriteTargetLine& writeTargetLine)
{
    const auto targets = FindTargets(texts);
    if (targets.isEmpty())
        return;

    const QString fileName = GetFileNameWithTail(3, u"cal");
    ZETLaserOutputFile calibrationFile(faults, fileName);
    calibrationFile.open(fileMode);
    ZETLaserTextStream calibration(&calibrationFile);
    const auto counts = WalkTargets(
        targets, options->GetProjectors(), [&](int, qsizetype count) { calibration.WriteLine(count); },
        [&](const ZETLaserTarget& target, int index, int) { writeTargetLine(target, index, calibration); });
    ReportWrittenTargets(texts, counts, fileName);
}

QString ZETLaserWriter::GetFileNameWithTail(int count, QStringView tail) const
{
    QString name = options->GetFileName();
    name.chop(count); // a shorter name goes whole
    return name.append(tail);
}

QString ZETLaserWriter::SubstituteBlanks(const QString& name, QLatin1StringView kind)
{
    if (!name.contains(u' '))
        return name;
    reportStream << "Substituting spaces in " << kind << " '" << name << "' with underscore\n";
    return QString(name).replace(u' ', u'_');
}
