#include "JobCheckModel.h"

#include "check/CheckBoundaries.h"
#include "check/CheckCompare.h"
#include "check/CheckFormat.h"
#include "check/CheckMeasures.h"
#include "expected/JobExpectedFile.h"
#include "expected/JobExpectedTree.h"
#include "JobError.h"
#include "JobFileName.h"
#include "JobSelection.h"
#include "JobSteps.h"

#include "laser/ZETLaserOptions.h"
#include "laser/ZETLaserProcesses.h"
#include "openhost/ZETComposites/ZETOpenComposites.h"

#include <ZETComposites/ZETCompRoot.h>

#include <QCoreApplication>
#include <QFileInfo>

#include <algorithm>
#include <array>
#include <cmath>
#include <iostream>

using namespace Qt::Literals::StringLiterals;

namespace
{
QString Translate(const char* text)
{
    return QCoreApplication::translate("zetlaser-job", text);
}

/*! A line between points on an arc of 100 mm is off it by 0.13 mm then, and by less on what is bent less. Ten times as
 * many points would take ten times as long to make. */
constexpr double denseLength = 10.0; // mm

const QString toolPrefix = u"Tool-"_s; // of the tool file's name

/*! What flags of `check` say of the job that wrote the files. */
JobSettings GetKnown(const JobSettings& flags)
{
    JobSettings known;
    for (const JobSetting& setting : JobSettingTable::GetAll()) {
        if (flags.Has(setting.key) && setting.key != u"type"_s)
            known.Set(setting.key, flags.Get(setting.key));
    }
    if (flags.Has(u"settings"_s))
        known.Set(u"settings"_s, flags.GetText(u"settings"_s));
    return known;
}

/*! Jobs of that type write files of that format, as part file or beside it. */
bool Writes(const CheckFormat& part, const CheckFormat& format)
{
    return &part == &format || format.types.contains(part.companionType);
}

bool HasExtension(const QString& path, int type)
{
    const auto value = static_cast<ZETLaserOptions::EOutputFileType>(type);
    return path.endsWith(ZETLaserOptions::GetFileTypeExtensionString(value), Qt::CaseInsensitive);
}

void SetUnit(JobSettings& job, CheckFile::Unit unit)
{
    if (unit != CheckFile::UnknownUnit)
        job.Set(u"units"_s,
                unit == CheckFile::Inches ? ZETLaserOptions::UnitsInches : ZETLaserOptions::UnitsMillimeters);
}

/*! That of the part file. */
QString GetPartName(const CheckedFile& file)
{
    const QString name = QFileInfo(file.path).fileName();
    return CheckFormats::IsCompanion(*file.format) && name.startsWith(toolPrefix) ? name.mid(toolPrefix.size()) : name;
}

/*! The one of \a files that \a file should be. Of several part files, the shape behind the name that they share tells;
 *  null if none does. */
const JobExpectedFile* FindFile(const QList<JobExpectedFile>& files, const QString& partName, const CheckedFile& file)
{
    QList<const JobExpectedFile*> found;
    for (const JobExpectedFile& one : files) {
        if (file.format->types.contains(one.type))
            found.append(&one);
    }
    if (found.size() < 2)
        return found.value(0);
    const qsizetype shared = std::max<qsizetype>(partName.lastIndexOf(u'.'), 0);
    const JobExpectedFile* best = nullptr;
    for (const JobExpectedFile* one : found) {
        if (file.path.endsWith(one->name.mid(shared)) && (!best || one->name.size() > best->name.size()))
            best = one;
    }
    return best;
}

/*! The reader of flat rosettes prints directions, which would come among what `check` tells. */
class SilenceGuard
{
public:
    SilenceGuard()
        : before(std::cout.rdbuf(nullptr))
    {
    }
    ~SilenceGuard() { std::cout.rdbuf(before); }
    Q_DISABLE_COPY_MOVE(SilenceGuard)

private:
    std::streambuf* before;
};

CheckFile GetTargets(const CheckFile& file)
{
    CheckFile targets;
    targets.targets = file.targets;
    targets.projectorCount = file.projectorCount;
    return targets;
}

void AddDifference(CheckedFile& file, const CheckFinding& difference)
{
    file.AddWarning(difference.line, difference.ply, difference.text);
}

/*! The longest side of all plies, in the file's unit. */
double GetSize(const CheckFile& file)
{
    CheckBox box;
    for (const CheckPly& ply : CheckMeasures::GetPlies(file))
        box.Add(ply.box);
    const std::array<double, 3> sides = box.GetSides();
    return *std::max_element(sides.begin(), sides.end());
}

/*! The commonest fault of all, in a file that should be in mm. */
bool HasSizeInInches(const CheckFile& file, const CheckFile& inMillimetres)
{
    constexpr double inch = 25.4; // mm
    constexpr double range = 0.05;
    const double size = GetSize(file) * inch;
    return size > 0.0 && std::abs(GetSize(inMillimetres) - size) < range * size;
}

/*! What was told of plies by what other plies have, where the model knows better. */
void RemoveGuesses(CheckedFile& file)
{
    std::erase_if(file.findings, [](const CheckFinding& finding) { return finding.isGuess; });
}

/*! Both have the same curves, so what is known of one is known of the other. */
void TakeKinds(CheckFile& file, const CheckFile& same)
{
    for (size_t i = 0; i < file.curves.size(); ++i)
        file.curves[i].kind = same.curves[i].kind;
}
} // namespace

/*! The file that a job writes, and what of its options counts for reading it. */
struct JobCheckModel::Expected {
    std::optional<JobExpectedFile> file; //!< none if the job writes no such file
    CheckKnownTexts texts;
    CheckFile::Unit unit = CheckFile::Millimetres;
    ZETMathAxis axis;
    bool isFlat = false;
    double thinning = 0.0; //!< mm
};

JobCheckModel::JobCheckModel(const JobSettings& flags)
    : known(GetKnown(flags))
    , outputs(JobSettingsFile::Read(known).GetOutputs(known))
    , isSettled(known.Has(u"settings"_s))
    , typeName(flags.GetText(u"type"_s))
    , model(JobSteps::LoadModel(flags.GetText(u"layup"_s)))
    , ownConfiguration(model.root->GetActiveMfgConfiguration())
    , tool(*model.root)
{
    if (tool.IsEmpty())
        throw JobError(JobExit::WrongInput,
                       Translate("%1: no layup has a tool surface").arg(flags.GetText(u"layup"_s)));
}

/*! The jobs that may have written \a file, the likeliest one first. */
QList<JobSettings> JobCheckModel::GetJobs(const CheckedFile& file, const CheckFormat* part) const
{
    const QStringList& names = JobSettingTable::GetTypeNames();
    const bool isTypeOfJob = names.contains(typeName) && file.format->types.contains(typeName);
    QList<JobSettings> jobs;
    for (const JobSettings& output : outputs) {
        for (int type = 0; type < names.size(); ++type) {
            const CheckFormat& format = *CheckFormats::Find(names[type]);
            const bool isMeant = (!output.Has(u"type"_s) || output.Get(u"type"_s).toInt() == type) &&
                                 (!isTypeOfJob || names[type] == typeName) && (!part || part == &format);
            if (!isMeant || !Writes(format, *file.format))
                continue;
            jobs.append(output);
            jobs.last().Set(u"type"_s, type);
        }
    }
    const QString name = QFileInfo(file.path).fileName();
    std::stable_partition(jobs.begin(), jobs.end(), [&](const JobSettings& job) {
        return job.Has(u"output"_s) ? QFileInfo(job.GetText(u"output"_s)).fileName() == name
                                    : HasExtension(name, job.Get(u"type"_s).toInt());
    });
    if (jobs.isEmpty())
        throw JobError(JobExit::WrongCall, Translate("%1: no output of %2 is of the type %3")
                                               .arg(file.path, known.GetText(u"settings"_s), file.format->name));
    return jobs;
}

JobCheckModel::Expected JobCheckModel::Expect(const JobSettings& job, const CheckedFile& file, Points points)
{
    ZETOpenComposites::SetActiveMfgConfiguration(*model.root, ownConfiguration);
    ZETLaserOptions options;
    FillOptions(options, *model.root, job);
    JobSteps::CheckSelection(options);
    const QString partName =
        job.Has(u"output"_s) ? GetFileName(options, QFileInfo(job.GetText(u"output"_s)).fileName()) : GetPartName(file);
    options.SetFileName(partName);
    if (points != AsWritten) {
        options.SetUseMaxLength(points == Dense);
        options.SetMaxLength(denseLength);
        options.SetIncludeNormalVectors(true);
        options.SetOutputExtraGeometry(1); // guides may be there or not, so they have to be known
        options.SetUseSeedCurve(1);
    }
    {
        const SilenceGuard silence;
        JobSteps::Read(options);
    }
    if (points == AsWritten)
        JobSteps::Thin(options);

    const ZETLaserOutline::Group root = options.GetLaserProcesses()->GetOutline();
    Expected expected;
    const QList<JobExpectedFile> files = GetExpectedFiles(options, root);
    if (const JobExpectedFile* found = FindFile(files, partName, file))
        expected.file = *found;
    expected.texts = GetKnownTexts(options, root);
    expected.unit = options.GetUnits() == ZETLaserOptions::UnitsInches ? CheckFile::Inches : CheckFile::Millimetres;
    expected.axis = GetOutputAxis(options);
    expected.isFlat = options.GetOutputType() != ZETLaserOptions::Output3D;
    expected.thinning = options.GetUseMinimizePointsTolerance() ? options.GetMinimizePointsTolerance() : 0.0;
    return expected;
}

void JobCheckModel::Read(CheckedFile& file, QByteArrayView bytes, const Expected& expected) const
{
    file = CheckBytes(file.path, *file.format, bytes, expected.unit, expected.texts);
}

void JobCheckModel::Check(CheckedFile& file, QByteArrayView bytes, double limit, const CheckFormat* part)
{
    const QList<JobSettings> jobs = GetJobs(file, part);
    std::optional<Expected> likeliest;
    std::optional<CheckFinding> difference;
    for (JobSettings job : jobs) {
        if (!job.Has(u"units"_s))
            SetUnit(job, file.content.unit);
        const Expected expected = Expect(job, file, AsWritten);
        Read(file, bytes, expected);
        if (expected.file) {
            const auto own = FindDifference(expected.file->content, file.content, expected.file->decimals);
            if (!own) {
                file.compared = CheckedFile::Everything;
                RemoveGuesses(file);
                TakeKinds(file.content, expected.file->content);
                CheckTool(file, expected, limit, [](size_t) { return true; });
                return;
            }
            difference = likeliest ? difference : own;
        }
        if (!likeliest)
            likeliest = expected;
    }
    Read(file, bytes, *likeliest);
    if (!likeliest->file) {
        file.AddWarning(0, {}, Translate("the model gives no such file"));
        return;
    }
    if (file.content.unit == CheckFile::UnknownUnit && likeliest->unit == CheckFile::Millimetres &&
        HasSizeInInches(file.content, likeliest->file->content)) {
        file.AddWarning(0, {}, Translate("the part has the size of the model in inches: --units in compares it so"));
        return;
    }
    file.compared = CheckedFile::Boundaries;
    file.difference = difference;
    RemoveGuesses(file);
    const size_t before = file.findings.size();
    JobSettings job = jobs.first();
    SetUnit(job, file.content.unit);
    CompareBoundaries(file, job, *likeliest, limit);
    if (isSettled && file.findings.size() == before)
        AddDifference(file, *difference);
}

void JobCheckModel::CompareBoundaries(CheckedFile& file, const JobSettings& job, const Expected& written, double limit)
{
    const Expected expected = Expect(job, file, Defining);
    if (!expected.file)
        return;
    const CheckFile& content = expected.file->content;
    const CheckedModel plies{&content, CheckMeasures::GetPlies(content)};
    const CheckPairs pairs = PairPlies(file, plies);
    std::optional<CheckFile> dense;
    const auto getDense = [&]() -> const CheckFile& {
        if (!dense) {
            const Expected more = Expect(job, file, Dense);
            dense =
                more.file && more.file->content.curves.size() == content.curves.size() ? more.file->content : content;
        }
        return *dense;
    };
    const double lastDigit = std::pow(10.0, -expected.file->decimals) * file.unitLength;
    ::CompareBoundaries(file, plies, pairs, {limit + lastDigit, written.thinning + lastDigit}, getDense);
    if (const auto difference = FindDifference(GetTargets(content), GetTargets(file.content), expected.file->decimals))
        AddDifference(file, *difference);
    CheckTool(file, expected, limit, [&](size_t ply) {
        return std::any_of(pairs.begin(), pairs.end(), [ply](const auto& pair) { return pair.second == ply; });
    });
}

void JobCheckModel::CheckTool(CheckedFile& file, const Expected& expected, double limit,
                              const std::function<bool(size_t)>& isKnown) const
{
    if (!expected.isFlat)
        tool.Check(file, expected.axis, limit, isKnown);
}
