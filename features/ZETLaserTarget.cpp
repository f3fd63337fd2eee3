#include "features/ZETLaserTarget.h"

#include "features/ZETLaserFeature.h"
#include "features/ZETLaserModelTree.h"
#include "features/ZETLaserTarget_p.h"

#include <ZETGeometry/ZETGeoComboPoint.h>

const QByteArray ZETLaserTarget::Property_comment = QByteArrayLiteral("comment");
const QByteArray ZETLaserTarget::Property_isDrift = QByteArrayLiteral("isDrift");
const QByteArray ZETLaserTarget::Property_point = QByteArrayLiteral("point");

ZETLaserTarget::ZETLaserTarget(ZETGeoContainer* container, const ZETGeoGeometryRef& reference)
    : ZETFeatObject(reference, container)
    , record(std::make_unique<ZETLaserTargetPrivate>(this))
{
}

ZETLaserTarget::ZETLaserTarget(ZETFeatObject* parent)
    : ZETFeatObject(FindContainer(parent), parent)
    , record(std::make_unique<ZETLaserTargetPrivate>(this))
{
}

ZETLaserTarget::~ZETLaserTarget() = default;

QString ZETLaserTarget::GetComment() const
{
    return d_func()->comment.GetValue();
}

void ZETLaserTarget::SetComment(const QString& comment)
{
    ZETLaserFeature::SetValue(d_func()->comment, comment);
}

bool ZETLaserTarget::IsDrift() const
{
    return d_func()->isDrift.GetValue();
}

void ZETLaserTarget::SetDrift(bool isDrift)
{
    ZETLaserFeature::SetValue(d_func()->isDrift, isDrift);
}

ZETFeatGeometry* ZETLaserTarget::GetPoint() const
{
    return d_func()->point.GetObject();
}

void ZETLaserTarget::SetPoint(ZETFeatGeometry* point)
{
    d_func()->point.SetObject(point, false);
}

ZETMathPoint ZETLaserTarget::GetCoordinates() const
{
    const ZETFeatGeometry* point = GetPoint();
    const ZETTopVertex* vertex = point ? GetFirstVertex(point->GetBody()) : nullptr;
    return vertex ? vertex->GetPoint()->GetPosition() : ZETMathPoint();
}

void ZETLaserTarget::Save(ZETGeoStream& stream) const
{
    ZETFeatObject::Save(stream);
    ZETLaserFeature::SaveValue(stream, d_func()->comment);
    ZETLaserFeature::SaveValue(stream, d_func()->isDrift);
    ZETLaserFeature::SaveReference(stream, d_func()->point.GetPointedObject());
}

void ZETLaserTarget::Load(ZETGeoStream& stream)
{
    ZETFeatObject::Load(stream);
    ZETLaserFeature::LoadValue(stream, d_func()->comment);
    ZETLaserFeature::LoadValue(stream, d_func()->isDrift);
    d_func()->point.SetObject(ZETLaserFeature::LoadReference<ZETFeatGeometry>(stream), false);
}

bool ZETLaserTarget::UpdateResult()
{
    const bool result = ZETFeatObject::UpdateResult();
    const ZETFeatGeometry* point = GetPoint();
    if (!point) {
        SetPropertyMessage(Property_point, MessageError, tr("The target must have a point defined."));
        return false;
    }
    // Meant: a point that isn't one is told, and the result stays the base's. Only a missing point makes a target fail.
    const ZETTopBody* body = point->GetBody();
    if (!body)
        SetPropertyMessage(Property_point, MessageError, tr("The point does not have a body."));
    else if (body->GetDimension() != 0)
        SetPropertyMessage(Property_point, MessageError, tr("The point is not a point."));
    else if (body->GetDomains().size() != 1)
        SetPropertyMessage(Property_point, MessageError, tr("The point does not have exactly one domain."));
    return result;
}
