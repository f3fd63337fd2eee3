#include "writers/ZETLaserWriterDXF.h"

#include "features/ZETLaser3DText.h"
#include "features/ZETLaserFlatGeometry.h"
#include "features/ZETLaserModelTree.h"
#include "features/ZETLaserParameterProvider.h"
#include "laser/ZETLaserChildren.h"
#include "laser/ZETLaserContour.h"
#include "laser/ZETLaserCurve.h"
#include "laser/ZETLaserDXFOutputSettings.h"
#include "laser/ZETLaserEntityProperties.h"
#include "laser/ZETLaserGroup.h"
#include "laser/ZETLaserMessages.h"
#include "laser/ZETLaserOptions.h"
#include "laser/ZETLaserPoint.h"
#include "writers/ZETLaserTreeWalk.h"

#include <ZETComposites/ZETCompFlatContour.h>
#include <ZETComposites/ZETCompFlatPattern.h>
#include <ZETComposites/ZETCompLayup.h>
#include <ZETComposites/ZETCompMfgConfiguration.h>
#include <ZETComposites/ZETCompPly.h>
#include <ZETComposites/ZETCompRoot.h>
#include <ZETComposites/ZETCompSequence.h>
#include <ZETComposites/ZETCompStrategy.h>
#include <ZETComposites/ZETCompSubPly.h>
#include <ZETFeature/ZETFeatRoot.h>
#include <ZETMaterial/ZETMatDefinition.h>
#include <ZETMaterial/ZETMatMaterial.h>
#include <ZETMaterial/ZETMatPackaging.h>
#include <ZETMathematics/ZETMathSetOfPoints.h>
#include <ZETSystem/ZETSysException.h>
#include <ZETSystem/ZETSysFileUtilities.h>

#include <QPointer>
#include <QVariant>

#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace
{
constexpr int unitsInches = 1; //!< values of $INSUNITS
constexpr int unitsMillimetres = 4;
constexpr int rosetteLayer = 4; //!< whatever the settings say

QString MakeSafe(const QString& name)
{
    return ZETSysFileUtilities::CreateSafeFilename(name, u'_', u"."_s);
}

/*! \a material with all its properties, as a host takes it over; empty if it is null. */
ZETMatDefinition DefinitionOf(ZETMatMaterial* material)
{
    ZETMatDefinition definition;
    if (!material)
        return definition;
    definition.SetKey(material->GetMaterialType().toUtf8());
    const auto names = material->GetAllProperties();
    for (const auto& property : names)
        definition.AddAllowedProperty(QByteArray(), property);
    definition.LoadFromFeature(material);
    definition.Commit();
    return definition;
}
} // namespace

ZETLaserWriterDXF::ZETLaserWriterDXF(ZETLaserOptions* jobOptions, QSharedPointer<ZETLaserGroup> treeRoot,
                                     QList<ZETMatMaterial*>* jobMaterials)
    : ZETLaserWriter(jobOptions, std::move(treeRoot))
    , materials(jobMaterials)
{
}

bool ZETLaserWriterDXF::Write()
{
    OpenReportFile();
    WriteReportHeader();
    CollectPlies(*root);
    const auto type = options->GetOutputType();
    if (type == ZETLaserOptions::OutputFlatNesting || type == ZETLaserOptions::OutputFlatNestingEmbedded)
        WriteNestingFiles();
    else
        WriteLaserFile();
    WriteReportFooter();
    CloseFiles();
    return true;
}

void ZETLaserWriterDXF::WriteLaserFile()
{
    ZETLaserMessages::Add(
        tr("%1 ply geometry have been successfully written to file:\n %2").arg(u"DXF"_s).arg(options->GetFileName()),
        ZETSysMessageQueue::TypeNote);
    is3D = true;
    BeginFile(options->GetFileName());
    WriteLabel(root->GetName(), GetPlyTextPoint(plies.isEmpty() ? nullptr : plies.first()), 0);
    WriteTree(nullptr, nullptr);
    EndFile();
}

void ZETLaserWriterDXF::WriteNestingFiles()
{
    ZETLaserMessages::Add(
        tr("%1 nesting data have been successfully written to file:\n %2").arg(u"DXF"_s).arg(options->GetFileName()),
        ZETSysMessageQueue::TypeNote);
    switch (options->GetDXFFileMode()) {
    case ZETLaserOptions::DXFSingleFile:
        WritePartFile();
        break;
    case ZETLaserOptions::DXFFilePerMaterial:
        WriteMaterialFiles();
        break;
    case ZETLaserOptions::DXFFilePerPly:
        WritePlyFiles();
        break;
    }
}

void ZETLaserWriterDXF::WritePartFile()
{
    const QString name = root->GetName();
    BeginFile(options->GetFileName());
    WriteReportFile(tr("Part "), name, options->GetFileName());
    WriteLabel(name, GetPlyTextPoint(plies.isEmpty() ? nullptr : plies.first()), 1);
    WriteTree(nullptr, nullptr);
    EndFile();
    WriteReportCounts(tr("Plies Written for part "), name);
}

void ZETLaserWriterDXF::WriteMaterialFiles()
{
    ZETLaserMessages::Add(tr("There are %1 materials").arg(materials->size()), ZETSysMessageQueue::TypeNote);
    // A material that no ply uses has a file, too.
    for (auto* material : std::as_const(*materials)) {
        if (material)
            WriteMaterialFile(material);
    }
}

void ZETLaserWriterDXF::WriteMaterialFile(ZETMatMaterial* material)
{
    const QString name = GetMaterialName(*material);
    const QString fileName = GetFileNameFor(MakeSafe(name));
    const auto textPoint = GetPlyTextPoint(FindPlyOfMaterial(material));
    BeginFile(fileName);
    WriteReportFile(tr("Material "), name, fileName);
    WriteLabel(root->GetName(), textPoint, 1);
    WriteLabel(name, textPoint, 0);
    WriteTree(material, nullptr);
    EndFile();
    WriteReportCounts(tr("Plies Written for material "), name);
}

void ZETLaserWriterDXF::WritePlyFiles()
{
    ZETLaserMessages::Add(tr("There are %1 plies").arg(plies.size()), ZETSysMessageQueue::TypeNote);
    for (auto* entry : std::as_const(plies))
        WritePlyFile(entry);
}

void ZETLaserWriterDXF::WritePlyFile(ZETCompPlyBase* entry)
{
    const auto textPoint = GetPlyTextPoint(entry);
    if (!FindAncestor<ZETCompSequence>(*entry))
        throw ZETSysException(u"Ply is not in a sequence"_s);
    const auto* layup = FindAncestor<ZETCompLayup>(*entry);
    if (!layup)
        throw ZETSysException(u"Sequence is not in a layup"_s);
    auto* ply = FindSelfOrAncestor<ZETCompPly>(*entry);
    if (!ply || ply->GetMaterials().isEmpty())
        return; // nothing to cut it from

    const ZETLaserParameterProvider provider(FindContainer(layup));
    const QString shapeName = GetShapeName(provider, entry, *ply);
    const QString safeName = MakeSafe(shapeName);
    AddNotUniqueMessages(safeName);
    const QString fileName = GetFileNameFor(safeName);
    BeginFile(fileName);
    RecordCreatedFile(safeName, fileName, FindMaterialOfShape(provider, entry, *ply));
    WriteReportFile(tr("Ply "), safeName, fileName);
    WriteLabel(root->GetName(), textPoint, 1);
    WriteLabel(shapeName, textPoint, 0);
    // The name is that of the ply's own material, whatever the shape is cut from.
    auto* material = GetMaterial(*ply);
    WriteLabel(material ? GetMaterialName(*material) : tr("unknown material"), textPoint, -1);
    WriteTree(nullptr, entry);
    EndFile();
}

void ZETLaserWriterDXF::BeginFile(const QString& fileName)
{
    filePlyCount = 0;
    fileSubPlyCount = 0;
    OpenPartFile(fileName);
    dxfStream.setDevice(&file);
    parser = std::make_unique<ZETDxfParser>(dxfStream);
    parser->WriteStartSection(options->GetUnits() == ZETLaserOptions::UnitsInches ? unitsInches : unitsMillimetres);
}

void ZETLaserWriterDXF::EndFile()
{
    parser->WriteEndSection();
    parser.reset();
    ClosePartFile();
}

void ZETLaserWriterDXF::WriteLabel(const QString& text, const ZETMathPoint& textPoint, int lines)
{
    const auto settings = options->GetDXFOutputSettings();
    const double height = GetTextHeight();
    parser->WriteText(text, textPoint.GetX(), textPoint.GetY() + lines * height, textPoint.GetZ(), height,
                      settings.GetTextLayer(), settings.GetTextColor());
}

void ZETLaserWriterDXF::WriteTree(const ZETMatMaterial* material, const ZETCompPlyBase* ply)
{
    for (const ZETLaserGroup* group : ChildrenOf<ZETLaserGroup>(*root))
        WriteGroup(*group, material, ply);
}

void ZETLaserWriterDXF::WriteReportFile(const QString& kind, const QString& name, const QString& fileName)
{
    // Meant: no blank between the colon and the file name.
    reportStream << "\n\n" << kind << name << tr(" Written to file:") << fileName << '\n';
}

void ZETLaserWriterDXF::WriteReportCounts(const QString& heading, const QString& name)
{
    reportStream << "\n\n" << heading << name << ":\n";
    // Meant: whether a line is there hangs on the job's totals so far, and the number is the file's.
    if (plyCount > 0)
        reportStream << tr("   Number of Plies = ") << filePlyCount << '\n';
    if (subPlyCount > 0)
        reportStream << tr("   Number of Sub-plies = ") << fileSubPlyCount << '\n';
}

QString ZETLaserWriterDXF::GetFileNameFor(const QString& name) const
{
    QString fileName = options->GetFileName();
    const auto dot = fileName.lastIndexOf(u'.');
    fileName.insert(dot < 0 ? fileName.size() : dot, u"__"_s + name);
    return fileName;
}

double ZETLaserWriterDXF::GetTextHeight() const
{
    return options->GetRosetteSizeQuilmon() * 0.5 * unitScale;
}

void ZETLaserWriterDXF::CollectPlies(const ZETLaserGroup& group)
{
    const char* name = StandsFor(group, ZETLaserEntityProperties::ply) ? ZETLaserEntityProperties::ply
                                                                       : ZETLaserEntityProperties::subPly;
    auto* entry = ObjectIn<ZETCompPlyBase>(group, name);
    if (entry && !plies.contains(entry))
        plies.append(entry);
    for (const ZETLaserGroup* child : ChildrenOf<ZETLaserGroup>(group))
        CollectPlies(*child);
}

ZETCompPlyBase* ZETLaserWriterDXF::FindPlyOfMaterial(const ZETMatMaterial* material) const
{
    for (auto* entry : plies) {
        const auto* ply = FindSelfOrAncestor<ZETCompPly>(*entry);
        if (ply && GetMaterial(*ply) && GetMaterial(*ply) == material)
            return entry; // the sub-ply itself, where it is one
    }
    return nullptr;
}

QString ZETLaserWriterDXF::GetMaterialName(ZETMatMaterial& material) const
{
    return options->GetUseMaterialID() ? material.GetMaterialId() : material.GetMaterialType();
}

QString ZETLaserWriterDXF::GetShapeName(const ZETLaserParameterProvider& provider, ZETCompPlyBase* entry,
                                        const ZETCompPly& ply) const
{
    const QString pattern = options->GetShapeName();
    if (!pattern.isEmpty() && provider.ValidateLaserParameterText(pattern)) {
        const QString name = provider.EvaluateParameterText(entry, pattern);
        if (!name.isEmpty())
            return name;
    }
    QString name = FindAncestor<ZETCompLayup>(*entry)->GetLabel() + u'_' +
                   FindAncestor<ZETCompSequence>(*entry)->GetLabel() + u'_' + ply.GetLabel();
    if (const auto* subPly = qobject_cast<const ZETCompSubPly*>(entry))
        name += u'_' + subPly->GetLabel();
    return name;
}

ZETMatMaterial* ZETLaserWriterDXF::FindMaterialOfShape(const ZETLaserParameterProvider& provider, ZETCompPlyBase* entry,
                                                       ZETCompPly& ply) const
{
    ZETMatMaterial* material = nullptr;
    const auto* modelRoot = qobject_cast<const ZETCompRoot*>(entry->GetRoot());
    const auto* configuration = modelRoot ? modelRoot->GetActiveMfgConfiguration() : nullptr;
    if (const auto* contour = provider.GetEvaluatingFlatContourFromPly(configuration, entry)) {
        if (const auto* strategy = FindAncestor<ZETCompStrategy>(*contour)) {
            if (const auto* packaging = strategy->GetPackaging())
                material = qobject_cast<ZETMatMaterial*>(packaging->GetParent());
        } else if (const auto* ancestor = FindAncestor<ZETCompPly>(*contour)) {
            material = GetMaterial(*ancestor);
        }
    }
    return material ? material : GetMaterial(ply);
}

void ZETLaserWriterDXF::AddNotUniqueMessages(const QString& name)
{
    // One message for each earlier file of that name. The job goes on, and writes a file of the same name again.
    for (const auto& created : options->GetCreatedFiles()) {
        if (created.first.compare(name, Qt::CaseInsensitive) == 0)
            ZETLaserMessages::Add(tr("Shape name %1 is not unique, fix your model").arg(name),
                                  ZETSysMessageQueue::TypeProblem);
    }
}

void ZETLaserWriterDXF::RecordCreatedFile(const QString& name, const QString& fileName, ZETMatMaterial* material)
{
    auto& createdFiles = options->GetCreatedFiles();
    // A file stands in the list once: what an earlier run or ply said of it goes.
    for (const auto& created : std::as_const(createdFiles)) {
        if (created.second.first != fileName)
            continue;
        const ZETLaserOptions::CreatedFile earlier = created;
        createdFiles.removeIf([&](const ZETLaserOptions::CreatedFile& other) {
            return other.first == earlier.first && other.second.first == earlier.second.first &&
                   other.second.second == earlier.second.second;
        });
        break;
    }
    createdFiles.append({name, {fileName, DefinitionOf(material)}});
}

ZETMathPoint ZETLaserWriterDXF::GetPlyTextPoint(const ZETCompPlyBase* ply) const
{
    ZETMathPoint point;
    if (!ply)
        return point;
    const auto configuration = options->GetActiveConfiguration();
    if (!GetFlattenedSeedPoint(ply->GetFlatPattern(configuration.data()), point)) {
        // Meant: the centre is scaled already, so in inches the label moves.
        point = GetContourCentre(GetPlyContour(*root, ply));
    }
    return point * unitScale;
}

const ZETLaserContour* ZETLaserWriterDXF::GetPlyContour(const ZETLaserGroup& group, const ZETCompPlyBase* ply) const
{
    if (ObjectIn<ZETCompPlyBase>(group, ZETLaserEntityProperties::ply) == ply ||
        ObjectIn<ZETCompPlyBase>(group, ZETLaserEntityProperties::subPly) == ply) {
        for (const ZETLaserContour* contour : ChildrenOf<ZETLaserContour>(group))
            return contour;
    }
    for (const ZETLaserGroup* child : ChildrenOf<ZETLaserGroup>(group)) {
        if (const auto* contour = GetPlyContour(*child, ply))
            return contour;
    }
    return nullptr;
}

ZETMathPoint ZETLaserWriterDXF::GetContourCentre(const ZETLaserContour* contour) const
{
    ZETMathBoundingBox box; // grows from nothing, so an empty curve adds nothing
    if (contour) {
        for (const auto& curve : contour->GetCurves()) {
            for (const auto& point : curve->GetPoints()) {
                const auto place = point.GetPosition() * unitScale;
                box.Expand(ZETMathBoundingBox(place, place));
            }
        }
    }
    return (box.GetLowerPoint() + (box.GetUpperPoint() - ZETMathPoint())) / 2.0;
}

void ZETLaserWriterDXF::WriteGroup(const ZETLaserGroup& group, const ZETMatMaterial* material,
                                   const ZETCompPlyBase* ply)
{
    if (group.GetPointCount() < 1 || IsFilteredOut(group, material, ply))
        return;
    if (StandsFor(group, ZETLaserEntityProperties::ply)) {
        ++plyCount;
        ++filePlyCount;
    } else if (StandsFor(group, ZETLaserEntityProperties::subPly)) {
        ++subPlyCount;
        ++fileSubPlyCount;
    }
    if (!group.HasGroups()) {
        ZETLaserTreeWalk::Leaf(group, *this);
        return;
    }
    for (const ZETLaserGroup* child : ChildrenOf<ZETLaserGroup>(group))
        WriteGroup(*child, material, ply);
}

bool ZETLaserWriterDXF::IsFilteredOut(const ZETLaserGroup& group, const ZETMatMaterial* material,
                                      const ZETCompPlyBase* ply) const
{
    const bool isPly = StandsFor(group, ZETLaserEntityProperties::ply);
    if (!isPly && !StandsFor(group, ZETLaserEntityProperties::subPly))
        return false; // only plies and sub-plies are filtered
    if (material && ObjectIn<ZETMatMaterial>(group, ZETLaserEntityProperties::material) != material)
        return true;
    const char* name = isPly ? ZETLaserEntityProperties::ply : ZETLaserEntityProperties::subPly;
    return ply && ObjectIn<ZETCompPlyBase>(group, name) != ply;
}

void ZETLaserWriterDXF::WriteContour(const ZETLaserContour& contour)
{
    ZETLaserTreeWalk::Curves(contour, *this);
}

void ZETLaserWriterDXF::WriteCurve(const ZETLaserCurve& curve)
{
    const auto settings = options->GetDXFOutputSettings();
    const QVariant source = curve.property(ZETLaserEntityProperties::sourceType);
    const bool isRosette = source.isValid() && source.toInt() == ZETLaserOptions::SourceRosette;
    ZETMathSetOfPoints points;
    points.points.reserve(curve.GetPointCount());
    for (const auto& point : curve.GetPoints())
        points.points.append(GetOutputPoint(point));
    parser->WritePolyline(points, is3D, curve.IsClosed(), isRosette ? rosetteLayer : settings.GetGeometryLayer(),
                          settings.GetGeometryColor(), settings.GetGeometryLineStyle(), 0, 0.0, 0.0, 0.0);
}

void ZETLaserWriterDXF::WriteParameters(const ZETLaserGroup& group)
{
    const auto parameters = EvaluateParameters(group);
    for (const auto& parameter : parameters)
        AddUnsupportedMessage(tr("Unsupported laser parameter type %1 for DXF"), parameter.type);
}

void ZETLaserWriterDXF::WriteTexts(const ZETLaserGroup& group)
{
    const auto settings = options->GetDXFOutputSettings();
    const auto texts = EvaluateTexts(group);
    for (const auto& [feature, text] : texts) {
        // Meant: neither place nor size is scaled, so a 3D text keeps its millimetres in an inch file.
        const auto place = outputAxis * feature->GetBasePoint();
        parser->WriteText(text, place.GetX(), place.GetY(), place.GetZ(), feature->GetSize(), settings.GetTextLayer(),
                          settings.GetTextColor());
    }
}
