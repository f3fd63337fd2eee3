#include "JobReadBack.h"

#include "check/CheckCompare.h"
#include "check/CheckReport.h"
#include "expected/JobExpectedFile.h"
#include "expected/JobExpectedTargets.h"
#include "JobError.h"

#include "features/ZETLaserTarget.h"
#include "laser/ZETLaserProcesses.h"

#include <ZETComposites/ZETCompRoot.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace
{
constexpr qsizetype mostFindings = 10; // of one file

QString Translate(const char* text)
{
    return QCoreApplication::translate("zetlaser-job", text);
}

void CollectNames(const ZETLaserOutline::Group& group, QStringList& names)
{
    names.append(group.name);
    for (const ZETLaserOutline::Contour& contour : group.contours) {
        names.append(contour.name);
        for (const ZETLaserOutline::Curve& curve : contour.curves)
            names.append(curve.name);
    }
    for (const ZETLaserOutline::Group& child : group.groups)
        CollectNames(child, names);
}

/*! A name that holds a line end, which no format of lines can hold; empty if none does. */
QString FindBrokenName(const ZETLaserOptions& options, const ZETLaserOutline::Group& root)
{
    QStringList names{options.GetPartName()};
    CollectNames(root, names);
    const QPointer<ZETCompRoot> model = options.GetCompRoot();
    for (const ZETFeatObject* feature : model ? model->GetAllChildren() : QList<ZETFeatObject*>()) {
        if (qobject_cast<const ZETLaserTarget*>(feature))
            names.append(feature->GetLabel());
    }
    const auto isBroken = [](const QString& name) { return name.contains(u'\n') || name.contains(u'\r'); };
    const auto broken = std::find_if(names.begin(), names.end(), isBroken);
    return broken == names.end() ? QString() : *broken;
}

QString Describe(const CheckFinding& finding)
{
    return finding.ply.isEmpty() ? finding.text : Translate("ply %1: %2").arg(finding.ply, finding.text);
}

QString GetPlace(const QString& name, const CheckFinding& finding)
{
    return finding.line > 0 ? name + u':' + QString::number(finding.line) : name;
}

[[noreturn]] void Refuse(const QString& place, const QString& what)
{
    throw JobError(JobExit::Failed,
                   Translate("what was written isn't what was to be written, and isn't kept: %1: %2").arg(place, what));
}

/*! What breaks the syntax of a file may come from the model: names with line ends, the user's own texts within XML,
 *  targets that are gone. Otherwise it comes from the writer. */
bool MayBreakSyntax(const ZETLaserOptions& options, const CheckKnownTexts& known, const QString& brokenName)
{
    const bool isXml =
        options.GetFileType() == ZETLaserOptions::FileLPT || options.GetFileType() == ZETLaserOptions::FileFARO;
    return !brokenName.isEmpty() || (isXml && !known.literals.isEmpty()) || JobExpectedTargets(options).HasGaps();
}

void RefuseErrors(const CheckedFile& file)
{
    for (const CheckFinding& finding : file.findings) {
        if (finding.severity == CheckSeverity::Error)
            Refuse(GetPlace(file.path, finding), Describe(finding));
    }
}

void Compare(const JobExpectedFile& expected, const CheckFile& found)
{
    if (const auto difference = FindDifference(expected.content, found, expected.decimals))
        Refuse(GetPlace(expected.name, *difference), Describe(*difference));
}

/*! The doubtful places. What is doubtful of a file as a whole, such as one without plies, the job tells itself. */
QStringList GetWarnings(const CheckedFile& file)
{
    QStringList lines;
    for (const CheckFinding& finding : file.findings) {
        if (finding.line > 0)
            lines.append(GetPlace(file.path, finding) + u": "_s + CheckLines::Escape(Describe(finding)));
    }
    const qsizetype more = lines.size() - mostFindings;
    if (more > 0)
        lines = lines.first(mostFindings)
                << Translate("%1: and %2 findings more, which zetlaser-job check shows").arg(file.path).arg(more);
    return lines;
}

/*! A file that nobody expects is as wrong as one that is missing. */
void CheckNames(const QString& folder, const QList<JobExpectedFile>& files)
{
    for (const QString& name : QDir(folder).entryList(QDir::Files)) {
        const bool isExpected =
            std::any_of(files.begin(), files.end(), [&](const JobExpectedFile& file) { return file.name == name; });
        if (!isExpected && !name.endsWith(u"-report.htm"_s))
            Refuse(name, Translate("no file of this name was to be written"));
    }
}
} // namespace

QStringList JobReadBack::Check(ZETLaserOptions& options, const QString& partFolder, const QString& toolFolder)
{
    const ZETLaserOutline::Group root = options.GetLaserProcesses()->GetOutline();
    const QList<JobExpectedFile> files = GetExpectedFiles(options, root);
    for (const QString& folder : {partFolder, toolFolder})
        CheckNames(folder, files);
    const CheckKnownTexts known = GetKnownTexts(options, root);
    const QString brokenName = FindBrokenName(options, root);
    const bool mayBreakSyntax = MayBreakSyntax(options, known, brokenName);
    const auto unit = options.GetUnits() == ZETLaserOptions::UnitsInches ? CheckFile::Inches : CheckFile::Millimetres;

    QStringList warnings;
    if (!brokenName.isEmpty())
        warnings.append(Translate("the name %1 holds a line end, so the files can't be compared with the model")
                            .arg(CheckLines::Show(brokenName.toUtf8())));
    for (const JobExpectedFile& expected : files) {
        QFile file((expected.isTool ? toolFolder : partFolder) + u'/' + expected.name);
        if (expected.isOptional && !file.exists())
            continue;
        if (!file.open(QIODevice::ReadOnly))
            Refuse(expected.name, Translate("there is no such file"));
        const CheckedFile checked =
            CheckBytes(expected.name, *CheckFormats::Find(expected.type), file.readAll(), unit, known);
        if (brokenName.isEmpty())
            Compare(expected, checked.content);
        if (!mayBreakSyntax)
            RefuseErrors(checked);
        warnings += GetWarnings(checked);
    }
    return warnings;
}
