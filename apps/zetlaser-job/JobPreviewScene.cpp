#include "JobPreviewScene.h"

#include "JobPly.h"
#include "JobSteps.h"

#include "features/ZETLaserProjector.h"
#include "features/ZETLaserTarget.h"
#include "laser/ZETLaserProcesses.h"
#include "openhost/ZETVisualization/ZETOpenScene.h"

#include <ZETComposites/ZETCompLayup.h>
#include <ZETComposites/ZETCompRoot.h>
#include <ZETFeature/ZETFeatGeometry.h>
#include <ZETFeature/ZETFeatVisObject.h>
#include <ZETMaterial/ZETMatMaterial.h>
#include <ZETTopology/ZETTopBody.h>
#include <ZETTopology/ZETTopFace.h>

#include <QCoreApplication>
#include <QSet>

#include <cmath>

using namespace Qt::Literals::StringLiterals;

namespace
{
// A tessellation that looks smooth: the largest distance from the face, as a share of the part's size, and the largest
// angle from one triangle to the next.
constexpr double relativeDeflection = 0.0005;
constexpr double largestAngle = 0.25;

QString Translate(const char* text)
{
    return QCoreApplication::translate("zetlaser-job", text);
}

void DescribeMaterial(const ZETMatMaterial& material, JobPreviewPly& described)
{
    described.material = material.GetLabel();
    QStringList details{material.GetMaterialType(), material.GetMaterialId()};
    if (material.GetThickness() > 0.0)
        details.append(Translate("%1 mm").arg(material.GetThickness()));
    details.removeAll(QString());
    described.materialDetails = details.join(u", "_s);
}

JobPreviewPly Describe(const ZETFeatObject& feature)
{
    const JobPly ply(feature);
    JobPreviewPly described;
    described.layup = ply.layup;
    described.sequence = ply.sequence;
    described.name = ply.parent.isEmpty() ? ply.name : ply.parent + u" / "_s + ply.name;
    described.direction = ply.direction;
    if (ply.material)
        DescribeMaterial(*ply.material, described);
    return described;
}

double GetSize(const ZETTopBody& body)
{
    ZETMathBoundingBox box;
    for (const ZETTopEntity* entity : body.GetEntities(2)) {
        const auto* face = qobject_cast<const ZETTopFace*>(entity);
        if (face && face->GetSurface())
            box.Expand(face->GetSurface()->GetBoundingBox());
    }
    return std::sqrt((box.GetUpperPoint() - box.GetLowerPoint()).GetSquaredMagnitude());
}
} // namespace

QString JobPreviewPly::Describe() const
{
    QStringList words{name, material, Translate("%1°").arg(direction)};
    words.removeAll(QString());
    return words.join(u", "_s);
}

void JobPreviewPly::SetVisible(bool isVisible) const
{
    for (ZETVisVirtualObject* object : objects)
        object->SetVisibility(isVisible);
}

JobPreviewScene::JobPreviewScene(ZETLaserOptions& jobOptions)
    : options(jobOptions)
{
    options.SetEnvironment(&scene);
    JobSteps::Run([&] { options.GetLaserProcesses()->DisplayLaserData(); });
    AddPlies();
    JobSteps::Run([&] { AddTargets(); });
    if (options.GetOutputType() == ZETLaserOptions::Output3D)
        AddSurfaces();
}

void JobPreviewScene::AddPlies()
{
    const auto objects = options.GetLaserProcesses()->GetRenderVisObjects();
    for (ZETFeatObject* feature : options.GetCompRoot()->GetAllChildren()) {
        const auto entry = objects.constFind(feature);
        if (entry == objects.cend())
            continue;
        JobPreviewPly ply = Describe(*feature);
        ply.objects = entry.value();
        for (auto object = ply.objects.cbegin(); object != ply.objects.cend(); ++object) {
            object.value()->setObjectName(
                u"%1/%2/%3: %4"_s.arg(ply.layup, ply.sequence, ply.name, GetTypeName(object.key())));
            // They came in an order that is another one in each run.
            ZETOpenScene::MoveToEnd(scene, *object.value());
        }
        ply.SetVisible(true);
        plies.append(ply);
        features.append(feature);
    }
}

void JobPreviewScene::AddTargets()
{
    QSet<ZETLaserTarget*> known;
    for (const ZETLaserProjector* projector : options.GetProjectors()) {
        for (ZETLaserTarget* target : projector->GetTargets()) {
            if (!target || known.contains(target))
                continue;
            known.insert(target);
            if (ZETVisVirtualObject* object = ZETOpenScene::Show(scene, *target))
                targets.append(object);
        }
    }
}

void JobPreviewScene::AddSurfaces()
{
    QSet<const ZETFeatGeometry*> known{nullptr};
    for (const ZETFeatObject* feature : std::as_const(features)) {
        const auto* layup = FindAbove<ZETCompLayup>(feature);
        const ZETFeatGeometry* workpiece = layup ? layup->GetWorkpiece() : nullptr;
        if (known.contains(workpiece))
            continue;
        if (surfaces.isEmpty())
            isLaidFromNormal = layup->GetLayupDirection();
        known.insert(workpiece);
        const ZETTopBody* body = workpiece->GetBody();
        if (!body)
            continue;
        const double deflection = relativeDeflection * GetSize(*body);
        for (const ZETTopEntity* entity : body->GetEntities(2)) {
            const auto* face = qobject_cast<const ZETTopFace*>(entity);
            const auto* surface = face ? qobject_cast<const ZETOpenSurface*>(face->GetSurface()) : nullptr;
            if (surface)
                surfaces.append(surface->Tessellate(deflection, largestAngle));
        }
    }
}

ZETOpenView::Side JobPreviewScene::GetLayingSide() const
{
    ZETMathVector mean; // each triangle counts by its area
    for (const ZETOpenTriangles& surface : surfaces) {
        for (qsizetype i = 0; i + 2 < surface.indices.size(); i += 3) {
            const ZETMathPoint& corner = surface.points[surface.indices[i]];
            const ZETMathVector across =
                (surface.points[surface.indices[i + 1]] - corner) ^ (surface.points[surface.indices[i + 2]] - corner);
            const ZETMathVector& normal = surface.normals[surface.indices[i]];
            mean = mean + normal * std::sqrt(across.GetSquaredMagnitude());
        }
    }
    return ZETOpenView::GetSideFacing(isLaidFromNormal ? mean : mean * -1.0);
}

QString JobPreviewScene::GetTypeName(ZETLaserOptions::ELaserSourceType type)
{
    switch (type) {
    case ZETLaserOptions::SourcePly:
        return Translate("boundary");
    case ZETLaserOptions::SourceExtraGeometry:
        return Translate("text");
    case ZETLaserOptions::SourceRosette:
        return Translate("rosette");
    case ZETLaserOptions::SourceNormals:
        return Translate("normals");
    case ZETLaserOptions::SourceSeedCurve:
        return Translate("seed curve");
    }
    return QString::number(type);
}
