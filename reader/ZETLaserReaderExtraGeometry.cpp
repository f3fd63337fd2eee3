#include "reader/ZETLaserReaderComposites.h"

#include "features/ZETLaser3DTextByAxis.h"
#include "features/ZETLaser3DTextOnSupport.h"
#include "features/ZETLaserExtraGeometry.h"
#include "features/ZETLaserParameter.h"
#include "laser/ZETLaserContour.h"
#include "laser/ZETLaserEntityProperties.h"
#include "laser/ZETLaserGroup.h"
#include "laser/ZETLaserOptions.h"
#include "laser/ZETLaserParameterEntity.h"
#include "laser/ZETLaserTextEntity.h"

#include <ZETFeature/ZETFeatGeometry.h>
#include <ZETMathematics/ZETMathAxis.h>

#include <QMessageLogger>
#include <QVariant>

using namespace Qt::Literals::StringLiterals;

namespace
{

void MarkAsExtra(ZETLaserEntity& entity, const QString& label)
{
    entity.setProperty(ZETLaserEntityProperties::sourceType, static_cast<int>(ZETLaserOptions::SourceExtraGeometry));
    entity.SetName(label);
}

void AddParameter(const QSharedPointer<ZETLaserGroup>& group, ZETLaserParameter* parameter, const QString& label)
{
    const auto entity = QSharedPointer<ZETLaserParameterEntity>::create(group, parameter);
    MarkAsExtra(*entity, label);
    group->AddParameterEntity(entity);
}

void AddText(const QSharedPointer<ZETLaserGroup>& group, ZETLaser3DText* text, const QString& label)
{
    const auto entity = QSharedPointer<ZETLaserTextEntity>::create(group, text);
    MarkAsExtra(*entity, label);
    group->AddTextEntity(entity);
}

// Meant: the line names QObject and not the class that isn't supported; it is what the log has to show.
void LogUnsupported(const ZETFeatObject& feature)
{
    QMessageLogger().debug().noquote().nospace()
        << u"   is a not supported in ZETLaserReaderComposites::ReadExtraGeometry() "_s
        << QString::fromLatin1(QObject::staticMetaObject.className()) << u" "_s << feature.GetLabel();
}

} // namespace

void ZETLaserReaderComposites::ReadExtraGeometry(ZETLaserExtraGeometry* feature, QSharedPointer<ZETLaserGroup> group)
{
    const QString label = feature->GetLabel();
    for (ZETFeatObject* child : feature->GetAllChildren()) {
        if (auto* const parameter = qobject_cast<ZETLaserParameter*>(child))
            AddParameter(group, parameter, label);
        else if (auto* const byAxis = qobject_cast<ZETLaser3DTextByAxis*>(child))
            AddText(group, byAxis, label);
        else if (auto* const onSupport = qobject_cast<ZETLaser3DTextOnSupport*>(child))
            AddText(group, onSupport, label);
        else if (auto* const geometry = qobject_cast<ZETFeatGeometry*>(child))
            ReadExtraCurves(group, geometry, label);
        else
            LogUnsupported(*child);
    }
}

void ZETLaserReaderComposites::ReadExtraCurves(QSharedPointer<ZETLaserGroup> group, ZETFeatGeometry* geometry,
                                               const QString& label)
{
    const auto contour = QSharedPointer<ZETLaserContour>::create(group);
    MarkAsExtra(*contour, label);
    group->AddContour(contour);
    QString number;
    ReadFlatCurves(contour, geometry, tr("%1 contour %2"), geometry->GetLabel(), number, ZETMathAxis());
}
