#pragma once

#include "laser/ZETLaserGlobal.h"

#include <ZETFeature/ZETFeatGeometry.h>
#include <ZETFeature/ZETFeatObject.h>
#include <ZETGeometry/ZETGeoGeometryRef.h>
#include <ZETMathematics/ZETMathPoint.h>

#include <QByteArray>
#include <QString>

#include <memory>

class ZETLaserTargetPrivate;

/*! A reflective point of the cell by which a projector finds its place. It refers to a point feature of the model, has
 *  a free comment, and may be a drift target, one that the projector watches while it works.
 *
 *  A target doesn't know its projectors. */
class ZETLASER_EXPORT ZETLaserTarget : public ZETFeatObject
{
    Q_OBJECT
    Q_CLASSINFO("defaultLabel", "Laser Target")
    Q_CLASSINFO("inputProps", "point")
    Q_CLASSINFO("outputProps", "isDrift")
    Q_CLASSINFO("visProps", "point")
    Q_CLASSINFO("contextualActions", "")
    Q_CLASSINFO("editAction", "ZETLaserTargetCmd.Edit")
    Q_CLASSINFO("allowedParents", "")
    Q_CLASSINFO("PropertyLabel_comment", "Comment")
    Q_CLASSINFO("PropertyLabel_isDrift", "Is Drift")
    Q_CLASSINFO("PropertyLabel_point", "Point")

    Q_PROPERTY(QString comment READ GetComment WRITE SetComment NOTIFY CommentChanged)
    Q_PROPERTY(bool isDrift READ IsDrift WRITE SetDrift NOTIFY DriftChanged)
    Q_PROPERTY(ZETFeatGeometry* point READ GetPoint WRITE SetPoint NOTIFY PointChanged)

public:
    static const QByteArray Property_comment;
    static const QByteArray Property_isDrift;
    static const QByteArray Property_point;

    /*! For loading: no parent yet. Both arguments may be null or invalid. */
    Q_INVOKABLE ZETLaserTarget(ZETGeoContainer* container, const ZETGeoGeometryRef& reference);
    ~ZETLaserTarget() override;

    /*! Free text for people. DEFAULT: empty */
    QString GetComment() const;
    void SetComment(const QString& comment);

    /*! Whether the projector watches this target for drift. DEFAULT: false */
    bool IsDrift() const;
    void SetDrift(bool isDrift);

    /*! The feature whose body is the point; it belongs to the model. DEFAULT: null */
    ZETFeatGeometry* GetPoint() const;
    void SetPoint(ZETFeatGeometry* point);

    /*! The target's position in model coordinates, in mm: that of the first vertex of the point's body. The origin if
     *  there is none. */
    ZETMathPoint GetCoordinates() const;

    /*! comment, isDrift, point, behind the base's fields. Load throws ZETGeoGeometryNotFoundException if the point
     *  isn't there, or is no geometry. */
    void Save(ZETGeoStream& stream) const override;
    void Load(ZETGeoStream& stream) override;
    /*! Fails without a point. A point that isn't one is told, and doesn't fail. */
    bool UpdateResult() override;

Q_SIGNALS:
    void CommentChanged(const QString& comment);
    void DriftChanged(bool bDrift);
    void PointChanged(ZETFeatGeometry* point);

private:
    /*! Creates the target as the last child of \a parent, which must not be null. The host makes targets by the name of
     *  their class, with the loading constructor. */
    explicit ZETLaserTarget(ZETFeatObject* parent);
    /*! Never called: a feature class without its loading constructor shall not build. */
    void _constructor_checker() { ZETLaserTarget(nullptr, ZETGeoGeometryRef()); }

    Q_DECLARE_PRIVATE_D(record, ZETLaserTarget)
    std::unique_ptr<ZETLaserTargetPrivate> record;
};
