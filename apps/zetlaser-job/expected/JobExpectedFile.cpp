#include "JobExpectedFile.h"

#include "JobExpectedParts.h"
#include "JobExpectedTargets.h"
#include "JobExpectedTree.h"
#include "JobSettings.h"

#include "features/ZETLaserParameter.h"
#include "features/ZETLaserParameterProvider.h"

#include <ZETComposites/ZETCompLayup.h>
#include <ZETComposites/ZETCompPly.h>
#include <ZETComposites/ZETCompRoot.h>
#include <ZETComposites/ZETCompSequence.h>
#include <ZETComposites/ZETCompSubPly.h>
#include <ZETFeature/ZETFeatContainer.h>
#include <ZETMaterial/ZETMatMaterial.h>
#include <ZETSystem/ZETSysFileUtilities.h>

#include <QSet>

using namespace Qt::Literals::StringLiterals;

namespace
{
using Group = ZETLaserOutline::Group;

constexpr int fewDecimals = 3; // of LAP, SL and Assembly Guidance

/*! Calls \a visit for \a group and all below it, in their order. */
template <typename Visit>
void VisitAll(const Group& group, const Visit& visit)
{
    visit(group);
    for (const Group& child : group.groups)
        VisitAll(child, visit);
}

bool HasLineEnd(const QString& text)
{
    return text.contains(u'\n') || text.contains(u'\r');
}

QString GetTypeName(const ZETLaserOptions& options)
{
    return JobSettingTable::GetTypeNames().value(options.GetFileType());
}

JobExpectedFile MakePart(const ZETLaserOptions& options, int decimals, CheckFile content)
{
    JobExpectedFile file{.name = options.GetFileName(), .type = GetTypeName(options), .decimals = decimals};
    file.content = std::move(content);
    return file;
}

/*! The file of the targets beside the part file; none if the model has no targets. */
QList<JobExpectedFile> MakeTargets(const ZETLaserOptions& options, const QString& name, const QString& type,
                                   void (JobExpectedTargets::*add)(CheckFile&) const)
{
    const JobExpectedTargets targets(options);
    if (!targets.HasTargets())
        return {};
    JobExpectedFile file{.name = name, .type = type, .isTool = type == u"lpt-tool"_s};
    (targets.*add)(file.content);
    return {file};
}

/*! \a name with \a end in the place of its last \a count characters. */
QString ReplaceEnd(const QString& name, qsizetype count, const QString& end)
{
    return name.chopped(std::min(count, name.size())) + end;
}

// DXF

/*! The name of the file for one material or one shape. */
QString GetFileName(const ZETLaserOptions& options, const QString& shape)
{
    const QString name = options.GetFileName();
    const qsizetype dot = name.lastIndexOf(u'.');
    return QString(name).insert(dot < 0 ? name.size() : dot,
                                u"__"_s + ZETSysFileUtilities::CreateSafeFilename(shape, u'_', u"."_s));
}

QString GetMaterialName(const ZETLaserOptions& options, const ZETMatMaterial& material)
{
    return options.GetUseMaterialID() ? material.GetMaterialId() : material.GetMaterialType();
}

/*! Adds the file of \a shape. Shapes of one name are written one over the other, and the last one stays. */
void AddShape(QList<JobExpectedFile>& files, const ZETLaserOptions& options, const QString& shape, CheckFile content)
{
    const QString name = GetFileName(options, shape);
    files.removeIf([&](const JobExpectedFile& file) { return file.name == name; });
    files.append(MakePart(options, 6, std::move(content)));
    files.last().name = name;
}

/*! A file for each material that the job met. That may be one that no ply of the tree has. */
QList<JobExpectedFile> MakeDxfPerMaterial(const ZETLaserOptions& options, const Group& root)
{
    QSet<const ZETMatMaterial*> used;
    VisitAll(root, [&](const Group& group) { used.insert(group.material); });
    QList<JobExpectedFile> files;
    for (const ZETFeatObject* child : options.GetCompRoot()->GetAllChildren()) {
        const auto* const material = qobject_cast<const ZETMatMaterial*>(child);
        if (!material)
            continue;
        const QString name = GetMaterialName(options, *material);
        AddShape(files, options, name,
                 JobExpectedParts::MakeDxf(options, root, {.labels = {root.name, name}, .material = material}));
        files.last().isOptional = !used.contains(material);
    }
    return files;
}

template <typename Feature>
const Feature* FindAbove(const ZETFeatObject* feature)
{
    for (; feature; feature = feature->GetParent()) {
        if (const auto* const found = qobject_cast<const Feature*>(feature))
            return found;
    }
    return nullptr;
}

QString GetShapeName(const ZETLaserOptions& options, const ZETCompPlyBase& entry)
{
    auto* const container = qobject_cast<ZETFeatContainer*>(options.GetCompRoot()->GetContainer());
    const ZETLaserParameterProvider provider(container);
    const QString pattern = options.GetShapeName();
    const QString name = !pattern.isEmpty() && provider.ValidateLaserParameterText(pattern)
                             ? provider.EvaluateParameterText(&entry, pattern)
                             : QString();
    if (!name.isEmpty())
        return name;
    QStringList labels{FindAbove<ZETCompLayup>(&entry)->GetLabel(), FindAbove<ZETCompSequence>(&entry)->GetLabel(),
                       FindAbove<ZETCompPly>(&entry)->GetLabel()};
    if (qobject_cast<const ZETCompSubPly*>(&entry))
        labels.append(entry.GetLabel());
    return labels.join(u'_');
}

/*! A file for each ply and sub-ply that has a material. */
QList<JobExpectedFile> MakeDxfPerPly(const ZETLaserOptions& options, const Group& root)
{
    QList<const ZETFeatObject*> known;
    QList<JobExpectedFile> files;
    VisitAll(root, [&](const Group& group) {
        const auto* const entry = qobject_cast<const ZETCompPlyBase*>(group.feature);
        const auto* const ply = FindAbove<ZETCompPly>(entry);
        if (!ply || ply->GetMaterials().isEmpty() || known.contains(entry))
            return;
        known.append(entry);
        const QString name = GetShapeName(options, *entry);
        const QString material = GetMaterialName(options, *ply->GetMaterials().first());
        AddShape(files, options, name,
                 JobExpectedParts::MakeDxf(options, root, {.labels = {root.name, name, material}, .ply = entry}));
    });
    return files;
}

QList<JobExpectedFile> MakeDxf(const ZETLaserOptions& options, const Group& root)
{
    if (IsNesting(options) && options.GetDXFFileMode() == ZETLaserOptions::DXFFilePerMaterial)
        return MakeDxfPerMaterial(options, root);
    if (IsNesting(options) && options.GetDXFFileMode() == ZETLaserOptions::DXFFilePerPly)
        return MakeDxfPerPly(options, root);
    return {MakePart(options, 6, JobExpectedParts::MakeDxf(options, root, {.labels = {root.name}}))};
}
} // namespace

QList<JobExpectedFile> GetExpectedFiles(const ZETLaserOptions& options, const ZETLaserOutline::Group& root)
{
    using namespace JobExpectedParts;
    using Targets = JobExpectedTargets;
    const QString name = options.GetFileName();
    switch (options.GetFileType()) {
    case ZETLaserOptions::FileVirtek:
        return QList{MakePart(options, 6, MakeVirtek(options, root))} +
               MakeTargets(options, ReplaceEnd(name, 3, u"cal"_s), u"calibration"_s, &Targets::AddVirtek);
    case ZETLaserOptions::FileLPT:
    case ZETLaserOptions::FileFARO:
        return QList{MakePart(options, 6, MakeLpt(options, root))} +
               MakeTargets(options, u"Tool-"_s + name, u"lpt-tool"_s, &Targets::AddTool);
    case ZETLaserOptions::FileLAP:
        return QList{MakePart(options, fewDecimals, MakeLap(options, root))} +
               MakeTargets(options, ReplaceEnd(name, 3, u"cal"_s), u"calibration"_s, &Targets::AddLap);
    case ZETLaserOptions::FileSL:
        return QList{MakePart(options, fewDecimals, MakeSl(options, root))} +
               MakeTargets(options, ReplaceEnd(name, 2, u"cp1"_s), u"sl-targets"_s, &Targets::AddSl);
    case ZETLaserOptions::FileAssemblyGuidance:
    case ZETLaserOptions::FileAlignedVision:
        return {MakePart(options, fewDecimals, MakeAssemblyGuidance(options, root))};
    case ZETLaserOptions::FileGeneralScanning:
    case ZETLaserOptions::FileQuilmonPartData:
        return {MakePart(options, 6, MakeNLines(options, root))};
    case ZETLaserOptions::FileDXF:
        return MakeDxf(options, root);
    default:
        return {MakePart(options, 6, MakeApt(options, root))};
    }
}

CheckKnownTexts GetKnownTexts(const ZETLaserOptions& options, const ZETLaserOutline::Group& root)
{
    const bool isWithoutBlanks = options.GetFileType() == ZETLaserOptions::FileAssemblyGuidance ||
                                 options.GetFileType() == ZETLaserOptions::FileAlignedVision;
    CheckKnownTexts known;
    const auto add = [&](const QString& text, QList<QByteArray>& texts) {
        const QByteArray bytes = (isWithoutBlanks ? WithoutBlanks(text) : text).toUtf8();
        if (!texts.contains(bytes))
            texts.append(bytes);
    };
    VisitAll(root, [&](const Group& group) {
        for (const ZETLaserOutline::Text& text : group.texts) {
            if (HasLineEnd(text.text))
                add(text.text, known.withLineEnds);
        }
        for (const ZETLaserOutline::Parameter& parameter : group.parameters) {
            if (parameter.type == ZETLaserParameter::Literal)
                add(parameter.text, known.literals);
            else if (HasLineEnd(parameter.text))
                add(parameter.text, known.withLineEnds);
        }
    });
    return known;
}
