#pragma once

#include "features/ZETLaser3DText.h"

#include <ZETWireframe/ZETWFAxisSystem.h>

class ZETLaser3DTextByAxisPrivate;

/*! A 3D text that takes its place from an axis system: it starts at the origin, runs along the first direction, and
 *  stands in the second. Without an axis it has no place: origin and zero directions. */
class ZETLASER_EXPORT ZETLaser3DTextByAxis : public ZETLaser3DText
{
    Q_OBJECT
    Q_CLASSINFO("defaultLabel", "3D Text By Axis")
    Q_CLASSINFO("inputProps", "axis")
    Q_CLASSINFO("outputProps", "")
    Q_CLASSINFO("visProps", "axis")
    Q_CLASSINFO("contextualActions", "")
    Q_CLASSINFO("editAction", "ZETLaser3DTextCmd.Edit")
    Q_CLASSINFO("allowedParents", "")
    Q_CLASSINFO("PropertyLabel_axis", "Axis")

    Q_PROPERTY(ZETWFAxisSystem* axis READ GetAxis WRITE SetAxis NOTIFY AxisChanged)

public:
    static const QByteArray Property_axis;

    /*! Creates the text as the last child of \a parent, which must not be null. */
    Q_INVOKABLE explicit ZETLaser3DTextByAxis(ZETFeatObject* parent);
    /*! For loading: no parent yet. Both arguments may be null or invalid. */
    Q_INVOKABLE ZETLaser3DTextByAxis(ZETGeoContainer* container, const ZETGeoGeometryRef& reference);
    ~ZETLaser3DTextByAxis() override;

    /*! The axis system; it belongs to the model. DEFAULT: null, which isn't valid */
    ZETWFAxisSystem* GetAxis() const;
    void SetAxis(ZETWFAxisSystem* axis);

    /*! axis, behind the text's fields. Load throws ZETGeoGeometryNotFoundException if the axis isn't there, or is none.
     */
    void Save(ZETGeoStream& stream) const override;
    void Load(ZETGeoStream& stream) override;
    /*! Fails without an axis. */
    bool UpdateResult() override;

    ZETMathPoint GetBasePoint() const override;
    ZETMathVector GetBaseDirection() const override;
    ZETMathVector GetUpDirection() const override;

Q_SIGNALS:
    void AxisChanged(ZETWFAxisSystem* axis);

private:
    /*! Never called: a feature class without its loading constructor shall not build. */
    void _constructor_checker() { ZETLaser3DTextByAxis(nullptr, ZETGeoGeometryRef()); }

    Q_DECLARE_PRIVATE_D(record, ZETLaser3DTextByAxis)
};
