#pragma once

#include "features/ZETLaserTarget.h"
#include "laser/ZETLaserGlobal.h"

#include <ZETFeature/ZETFeatObject.h>
#include <ZETGeometry/ZETGeoGeometryRef.h>

#include <QByteArray>
#include <QList>
#include <QString>

#include <memory>

class ZETLaserProjectorPrivate;

/*! A laser projector of the cell: a name, which is its label, a comment, and the targets that it can see. It refers to
 *  its targets and owns none of them. */
class ZETLASER_EXPORT ZETLaserProjector : public ZETFeatObject
{
    Q_OBJECT
    Q_CLASSINFO("defaultLabel", "Laser Projector")
    Q_CLASSINFO("inputProps", "targets")
    Q_CLASSINFO("outputProps", "")
    Q_CLASSINFO("visProps", "")
    Q_CLASSINFO("contextualActions", "")
    Q_CLASSINFO("editAction", "ZETLaserProjectorCmd.Edit")
    Q_CLASSINFO("allowedParents", "")
    Q_CLASSINFO("PropertyLabel_comment", "Comment")
    Q_CLASSINFO("PropertyLabel_targets", "Targets")

    Q_PROPERTY(QString comment READ GetComment WRITE SetComment NOTIFY CommentChanged)
    Q_PROPERTY(QList<ZETLaserTarget*> targets READ GetTargets WRITE SetTargets NOTIFY TargetsChanged)

public:
    static const QByteArray Property_comment;
    static const QByteArray Property_targets;

    /*! For loading: no parent yet. Both arguments may be null or invalid. */
    Q_INVOKABLE ZETLaserProjector(ZETGeoContainer* container, const ZETGeoGeometryRef& reference);
    ~ZETLaserProjector() override;

    /*! Free text for people. DEFAULT: empty */
    QString GetComment() const;
    void SetComment(const QString& comment);

    /*! The targets, in order. An element is null where a target has gone or wasn't found. Setting another list rebuilds
     *  it element by element: one TargetsChanged, with the list as it stands then, for each element that goes and each
     *  that comes, and one more at the end. Setting the same list does nothing. DEFAULT: empty */
    QList<ZETLaserTarget*> GetTargets() const;
    void SetTargets(const QList<ZETLaserTarget*>& targets);

    /*! comment, number of targets, targets, behind the base's fields. Load throws ZETGeoGeometryNotFoundException if a
     *  target isn't there, or is none. */
    void Save(ZETGeoStream& stream) const override;
    void Load(ZETGeoStream& stream) override;
    /*! Fails without targets. */
    bool UpdateResult() override;

Q_SIGNALS:
    void CommentChanged(const QString& comment);
    void TargetsChanged(const QList<ZETLaserTarget*>& targets);

private:
    /*! Creates the projector as the last child of \a parent, which must not be null. The host makes projectors by the
     *  name of their class, with the loading constructor. */
    explicit ZETLaserProjector(ZETFeatObject* parent);
    /*! Never called: a feature class without its loading constructor shall not build. */
    void _constructor_checker() { ZETLaserProjector(nullptr, ZETGeoGeometryRef()); }

    Q_DECLARE_PRIVATE_D(record, ZETLaserProjector)
    std::unique_ptr<ZETLaserProjectorPrivate> record;
};
