#pragma once

#include "features/ZETLaser3DText.h"

#include <ZETFeature/ZETFeatGeometry.h>

class ZETLaser3DTextOnSupportPrivate;

/*! A 3D text that stands on a surface: it starts where the anchor point falls on the support, runs along the tangent of
 *  the direction curve at the place nearest to the anchor, and stands in the tangent plane of the support.
 *
 *  Its plane is worked out by UpdateResult and saved with it. After an update that failed the old plane stays, and
 *  everybody goes on reading it; before the first one it is the XY plane at the origin. */
class ZETLASER_EXPORT ZETLaser3DTextOnSupport : public ZETLaser3DText
{
    Q_OBJECT
    Q_CLASSINFO("version", "2") // from 2 on, the plane is in the stream
    Q_CLASSINFO("defaultLabel", "3D Text On Support")
    Q_CLASSINFO("inputProps", "anchorpoint support direction verticalMirror horizontalMirror")
    Q_CLASSINFO("outputProps", "")
    Q_CLASSINFO("visProps", "anchorpoint support direction verticalMirror horizontalMirror")
    Q_CLASSINFO("contextualActions", "")
    Q_CLASSINFO("editAction", "ZETLaser3DTextCmd.Edit")
    Q_CLASSINFO("allowedParents", "")
    Q_CLASSINFO("PropertyLabel_anchorpoint", "Anchor point")
    Q_CLASSINFO("PropertyLabel_support", "Support surface")
    Q_CLASSINFO("PropertyLabel_direction", "Direction")
    Q_CLASSINFO("PropertyLabel_verticalMirror", "Vertical Mirror")
    Q_CLASSINFO("PropertyLabel_horizontalMirror", "Horizontal Mirror")

    Q_PROPERTY(ZETFeatGeometry* anchorpoint READ GetAnchorPoint WRITE SetAnchorPoint NOTIFY AnchorPointChanged)
    Q_PROPERTY(ZETFeatGeometry* support READ GetSupport WRITE SetSupport NOTIFY SupportChanged)
    Q_PROPERTY(ZETFeatGeometry* direction READ GetDirection WRITE SetDirection NOTIFY DirectionChanged)
    Q_PROPERTY(bool verticalMirror READ IsVerticalMirror WRITE SetVerticalMirror NOTIFY VerticalMirrorChanged)
    Q_PROPERTY(bool horizontalMirror READ IsHorizontalMirror WRITE SetHorizontalMirror NOTIFY HorizontalMirrorChanged)

public:
    static const QByteArray Property_anchorpoint;
    static const QByteArray Property_support;
    static const QByteArray Property_direction;
    static const QByteArray Property_verticalMirror;
    static const QByteArray Property_horizontalMirror;

    /*! Creates the text as the last child of \a parent, which must not be null. */
    Q_INVOKABLE explicit ZETLaser3DTextOnSupport(ZETFeatObject* parent);
    /*! For loading: no parent yet. Both arguments may be null or invalid. */
    Q_INVOKABLE ZETLaser3DTextOnSupport(ZETGeoContainer* container, const ZETGeoGeometryRef& reference);
    ~ZETLaser3DTextOnSupport() override;

    /*! A single point: the text starts where it falls on the support. This and the next two features belong to the
     *  model. DEFAULT: null, which isn't valid */
    ZETFeatGeometry* GetAnchorPoint() const;
    void SetAnchorPoint(ZETFeatGeometry* anchorPoint);
    /*! A surface of one skin. DEFAULT: null, which isn't valid */
    ZETFeatGeometry* GetSupport() const;
    void SetSupport(ZETFeatGeometry* support);
    /*! The curve along which the text runs. DEFAULT: null, which isn't valid */
    ZETFeatGeometry* GetDirection() const;
    void SetDirection(ZETFeatGeometry* direction);

    /*! Whether the text runs against the direction curve. It turns the up direction as well. DEFAULT: false */
    bool IsVerticalMirror() const;
    void SetVerticalMirror(bool isMirrored);
    /*! Whether the text is read from the other side of the support: turns the up direction. DEFAULT: false */
    bool IsHorizontalMirror() const;
    void SetHorizontalMirror(bool isMirrored);

    /*! anchorpoint, support, direction, verticalMirror, horizontalMirror, plane, behind the text's fields. A stream of
     *  version 1 has no plane, and leaves the text outdated. Load throws ZETGeoGeometryNotFoundException if one of the
     *  three features isn't there, or is no geometry. */
    void Save(ZETGeoStream& stream) const override;
    void Load(ZETGeoStream& stream) override;
    /*! Tests the inputs and works the plane out. Throws ZETSysException for an anchor point without a body. */
    bool UpdateResult() override;

    /*! The three read the plane as it was last worked out. */
    ZETMathPoint GetBasePoint() const override;
    ZETMathVector GetBaseDirection() const override;
    ZETMathVector GetUpDirection() const override;

Q_SIGNALS:
    void AnchorPointChanged(ZETFeatGeometry* anchorPoint);
    void SupportChanged(ZETFeatGeometry* support);
    void DirectionChanged(ZETFeatGeometry* direction);
    void VerticalMirrorChanged(bool isMirrored);
    void HorizontalMirrorChanged(bool isMirrored);

protected:
    /*! Works the plane out from the inputs. False, and the plane stays as it was, if it can't; the reason goes to the
     *  debug log. */
    bool UpdatePlane();

private:
    /*! The inputs of UpdateResult, one at a time: false, with a message on the property, for one that won't do. */
    bool TestSupport();
    bool TestAnchorPoint();
    bool TestDirection();
    /*! Attaches an error to \a property; always false. */
    bool Fail(const QByteArray& property, const QString& text);

    /*! Never called: a feature class without its loading constructor shall not build. */
    void _constructor_checker() { ZETLaser3DTextOnSupport(nullptr, ZETGeoGeometryRef()); }

    Q_DECLARE_PRIVATE_D(record, ZETLaser3DTextOnSupport)
};
