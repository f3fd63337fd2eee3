#include "features/ZETLaser3DTextByAxis.h"

#include "features/ZETLaser3DTextByAxis_p.h"
#include "features/ZETLaserFeature.h"

const QByteArray ZETLaser3DTextByAxis::Property_axis = QByteArrayLiteral("axis");

ZETLaser3DTextByAxis::ZETLaser3DTextByAxis(ZETFeatObject* parent)
    : ZETLaser3DText(std::make_unique<ZETLaser3DTextByAxisPrivate>(), parent)
{
}

ZETLaser3DTextByAxis::ZETLaser3DTextByAxis(ZETGeoContainer* container, const ZETGeoGeometryRef& reference)
    : ZETLaser3DText(std::make_unique<ZETLaser3DTextByAxisPrivate>(), container, reference)
{
}

ZETLaser3DTextByAxis::~ZETLaser3DTextByAxis() = default;

ZETWFAxisSystem* ZETLaser3DTextByAxis::GetAxis() const
{
    return d_func()->axis->GetObject();
}

void ZETLaser3DTextByAxis::SetAxis(ZETWFAxisSystem* axis)
{
    d_func()->axis->SetObject(axis, false);
}

void ZETLaser3DTextByAxis::Save(ZETGeoStream& stream) const
{
    ZETLaser3DText::Save(stream);
    ZETLaserFeature::SaveReference(stream, d_func()->axis->GetPointedObject());
}

void ZETLaser3DTextByAxis::Load(ZETGeoStream& stream)
{
    ZETLaser3DText::Load(stream);
    d_func()->axis->SetObject(ZETLaserFeature::LoadReference<ZETWFAxisSystem>(stream), false);
}

bool ZETLaser3DTextByAxis::UpdateResult()
{
    const bool result = ZETLaser3DText::UpdateResult();
    if (GetAxis())
        return result;
    SetPropertyMessage(Property_axis, MessageError, tr("The text by axis must have an axis."));
    return false;
}

ZETMathPoint ZETLaser3DTextByAxis::GetBasePoint() const
{
    const ZETWFAxisSystem* axis = GetAxis();
    return axis ? axis->GetAxis().GetOrigin() : ZETMathPoint();
}

ZETMathVector ZETLaser3DTextByAxis::GetBaseDirection() const
{
    const ZETWFAxisSystem* axis = GetAxis();
    return axis ? axis->GetAxis().GetFirstDirection() : ZETMathVector();
}

ZETMathVector ZETLaser3DTextByAxis::GetUpDirection() const
{
    const ZETWFAxisSystem* axis = GetAxis();
    return axis ? axis->GetAxis().GetSecondDirection() : ZETMathVector();
}
