#include "features/ZETLaser3DTextOnSupport.h"

#include "features/ZETLaser3DTextOnSupport_p.h"
#include "features/ZETLaserFeature.h"
#include "features/ZETLaserModelTree.h"

#include <ZETGeometry/ZETGeoCurve.h>
#include <ZETGeometry/ZETGeoPointOnCurve.h>
#include <ZETGeometry/ZETGeoPointOnSurface.h>
#include <ZETGeometry/ZETGeoSurface.h>
#include <ZETSystem/ZETSysException.h>
#include <ZETTopology/ZETTopEdge.h>
#include <ZETTopology/ZETTopFace.h>
#include <ZETTopology/ZETTopFactory.h>
#include <ZETTopology/ZETTopSkin.h>

#include <QDebug>

using namespace Qt::Literals::StringLiterals;

namespace
{
constexpr unsigned int firstVersionWithPlane = 2;

/*! Where \a source falls on \a target: the first vertex of the projection, which \a factory owns. Null if a feature or
 *  its body is missing, or nothing can be projected. */
const ZETTopVertex* Project(ZETTopFactory& factory, const ZETFeatGeometry* target, const ZETFeatGeometry* source)
{
    const ZETTopBody* targetBody = target ? target->GetBody() : nullptr;
    const ZETTopBody* sourceBody = source ? source->GetBody() : nullptr;
    if (!targetBody || !sourceBody)
        return nullptr;
    return GetFirstVertex(factory.Project(targetBody, sourceBody));
}

/*! The place of \a vertex on the first edge that it lies on; null if there is none. \a vertex may be null. */
const ZETGeoPointOnCurve* GetPointOnEdge(const ZETTopVertex* vertex)
{
    const ZETTopEdge* edge = vertex ? vertex->GetEdges().value(0) : nullptr;
    const ZETGeoPointOnCurve* point = edge ? vertex->GetPoint(edge) : nullptr;
    return point && point->GetCurve() ? point : nullptr;
}

/*! The place of \a vertex on the first face that it lies on; null if there is none. \a vertex may be null. */
const ZETGeoPointOnSurface* GetPointOnFace(const ZETTopVertex* vertex)
{
    const ZETTopFace* face = vertex ? vertex->GetFaces().value(0) : nullptr;
    const ZETGeoPointOnSurface* point = face ? vertex->GetPoint(face) : nullptr;
    return point && point->GetSurface() ? point : nullptr;
}
} // namespace

const QByteArray ZETLaser3DTextOnSupport::Property_anchorpoint = QByteArrayLiteral("anchorpoint");
const QByteArray ZETLaser3DTextOnSupport::Property_support = QByteArrayLiteral("support");
const QByteArray ZETLaser3DTextOnSupport::Property_direction = QByteArrayLiteral("direction");
const QByteArray ZETLaser3DTextOnSupport::Property_verticalMirror = QByteArrayLiteral("verticalMirror");
const QByteArray ZETLaser3DTextOnSupport::Property_horizontalMirror = QByteArrayLiteral("horizontalMirror");

ZETLaser3DTextOnSupport::ZETLaser3DTextOnSupport(ZETFeatObject* parent)
    : ZETLaser3DText(std::make_unique<ZETLaser3DTextOnSupportPrivate>(), parent)
{
}

ZETLaser3DTextOnSupport::ZETLaser3DTextOnSupport(ZETGeoContainer* container, const ZETGeoGeometryRef& reference)
    : ZETLaser3DText(std::make_unique<ZETLaser3DTextOnSupportPrivate>(), container, reference)
{
}

ZETLaser3DTextOnSupport::~ZETLaser3DTextOnSupport() = default;

ZETFeatGeometry* ZETLaser3DTextOnSupport::GetAnchorPoint() const
{
    return d_func()->anchorPoint->GetObject();
}

void ZETLaser3DTextOnSupport::SetAnchorPoint(ZETFeatGeometry* anchorPoint)
{
    d_func()->anchorPoint->SetObject(anchorPoint, false);
}

ZETFeatGeometry* ZETLaser3DTextOnSupport::GetSupport() const
{
    return d_func()->support->GetObject();
}

void ZETLaser3DTextOnSupport::SetSupport(ZETFeatGeometry* support)
{
    d_func()->support->SetObject(support, false);
}

ZETFeatGeometry* ZETLaser3DTextOnSupport::GetDirection() const
{
    return d_func()->direction->GetObject();
}

void ZETLaser3DTextOnSupport::SetDirection(ZETFeatGeometry* direction)
{
    d_func()->direction->SetObject(direction, false);
}

bool ZETLaser3DTextOnSupport::IsVerticalMirror() const
{
    return d_func()->verticalMirror->GetValue();
}

void ZETLaser3DTextOnSupport::SetVerticalMirror(bool isMirrored)
{
    ZETLaserFeature::SetValue(*d_func()->verticalMirror, isMirrored);
}

bool ZETLaser3DTextOnSupport::IsHorizontalMirror() const
{
    return d_func()->horizontalMirror->GetValue();
}

void ZETLaser3DTextOnSupport::SetHorizontalMirror(bool isMirrored)
{
    ZETLaserFeature::SetValue(*d_func()->horizontalMirror, isMirrored);
}

void ZETLaser3DTextOnSupport::Save(ZETGeoStream& stream) const
{
    ZETLaser3DText::Save(stream);
    ZETLaserFeature::SaveReference(stream, d_func()->anchorPoint->GetPointedObject());
    ZETLaserFeature::SaveReference(stream, d_func()->support->GetPointedObject());
    ZETLaserFeature::SaveReference(stream, d_func()->direction->GetPointedObject());
    ZETLaserFeature::SaveValue(stream, *d_func()->verticalMirror);
    ZETLaserFeature::SaveValue(stream, *d_func()->horizontalMirror);
    stream.GetDataStream() << d_func()->plane;
}

void ZETLaser3DTextOnSupport::Load(ZETGeoStream& stream)
{
    ZETLaser3DText::Load(stream);
    d_func()->anchorPoint->SetObject(ZETLaserFeature::LoadReference<ZETFeatGeometry>(stream), false);
    d_func()->support->SetObject(ZETLaserFeature::LoadReference<ZETFeatGeometry>(stream), false);
    d_func()->direction->SetObject(ZETLaserFeature::LoadReference<ZETFeatGeometry>(stream), false);
    ZETLaserFeature::LoadValue(stream, *d_func()->verticalMirror);
    ZETLaserFeature::LoadValue(stream, *d_func()->horizontalMirror);
    if (stream.GetVersion(&staticMetaObject) < firstVersionWithPlane)
        SetOutdated(); // the next update makes the plane
    else
        stream.GetDataStream() >> d_func()->plane;
}

bool ZETLaser3DTextOnSupport::UpdateResult()
{
    bool result = ZETLaser3DText::UpdateResult();
    if (!TestSupport())
        return false;
    result = TestAnchorPoint() && result;
    result = TestDirection() && result;
    if (!UpdatePlane()) {
        AddMessage(MessageError, tr("Failed to calculate the text plane."));
        result = false;
    }
    return result;
}

ZETMathPoint ZETLaser3DTextOnSupport::GetBasePoint() const
{
    return d_func()->plane.GetOrigin();
}

ZETMathVector ZETLaser3DTextOnSupport::GetBaseDirection() const
{
    return d_func()->plane.GetFirstDirection();
}

ZETMathVector ZETLaser3DTextOnSupport::GetUpDirection() const
{
    return d_func()->plane.GetSecondDirection();
}

bool ZETLaser3DTextOnSupport::UpdatePlane()
{
    if (!GetAnchorPoint() || !GetSupport() || !GetDirection())
        return false;
    ZETTopFactory factory(GetContainer());

    const ZETGeoPointOnCurve* onDirection = GetPointOnEdge(Project(factory, GetDirection(), GetAnchorPoint()));
    if (!onDirection) {
        qDebug("Failed to project the anchor point to the direction curve");
        return false;
    }
    ZETMathVector tangent = onDirection->GetCurve()->GetTangent(onDirection->GetLocationOnCurve());
    if (IsVerticalMirror())
        tangent *= -1.0;

    const ZETGeoPointOnSurface* onSupport = GetPointOnFace(Project(factory, GetSupport(), GetAnchorPoint()));
    if (!onSupport) {
        qDebug("Failed to project the anchor point to the support surface");
        return false;
    }
    const ZETGeoLocationOnSurface location = onSupport->GetLocationOnSurface();
    ZETMathVector normal = onSupport->GetSurface()->GetNormal(location);
    if (IsHorizontalMirror())
        normal *= -1.0;

    if (normal.IsParallel(tangent)) {
        qDebug("The support surface normal is parallel with the direction");
        return false;
    }
    d_func()->plane.SetOrigin(location.GetPoint());
    d_func()->plane.SetDirections(tangent, normal ^ tangent);
    return true;
}

bool ZETLaser3DTextOnSupport::Fail(const QByteArray& property, const QString& text)
{
    SetPropertyMessage(property, MessageError, text);
    return false;
}

bool ZETLaser3DTextOnSupport::TestSupport()
{
    if (!GetSupport())
        return Fail(Property_support, tr("The text on support must have a support."));
    const ZETTopBody* body = GetSupport()->GetBody();
    if (!body)
        return Fail(Property_support, tr("The support does not have a body."));
    if (body->GetDimension() != 2)
        return Fail(Property_support, tr("The support is not a surface."));
    const QList<const ZETTopDomain*> domains = body->GetDomains();
    if (domains.size() != 1)
        return Fail(Property_support, tr("The support does not have exactly one domain."));
    if (!qobject_cast<const ZETTopSkin*>(domains.first()))
        return Fail(Property_support, tr("The support surface does not have a skin domain."));
    return true;
}

bool ZETLaser3DTextOnSupport::TestAnchorPoint()
{
    if (!GetAnchorPoint())
        return Fail(Property_anchorpoint, tr("The text on support must have an anchor point."));
    const ZETTopBody* body = GetAnchorPoint()->GetBody();
    if (!body) {
        // Meant: told and thrown; the update ends here, and the direction isn't looked at.
        Fail(Property_anchorpoint, tr("The anchor point does not have a body."));
        throw ZETSysException(u"geometry does not have a body"_s);
    }
    if (body->GetDimension() != 0)
        return Fail(Property_anchorpoint, tr("The anchor point is not a point."));
    if (body->GetDomains().size() != 1)
        return Fail(Property_anchorpoint, tr("The anchor point does not have exactly one domain."));
    ZETTopFactory factory(GetContainer());
    if (!Project(factory, GetSupport(), GetAnchorPoint()))
        return Fail(Property_anchorpoint, tr("Failed to project the anchor point to the support surface."));
    return true;
}

bool ZETLaser3DTextOnSupport::TestDirection()
{
    if (!GetDirection())
        return Fail(Property_direction, tr("The text on support must specify a direction."));
    ZETTopFactory factory(GetContainer());
    if (!Project(factory, GetDirection(), GetAnchorPoint()))
        return Fail(Property_direction, tr("Failed to project the anchor point to the direction curve."));
    return true;
}
