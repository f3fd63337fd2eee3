#pragma once

#include <ZETGeometry/ZETGeoGeometry.h>
#include <ZETHostGlobal.h>

#include <QByteArray>
#include <QList>
#include <QSet>
#include <QString>

#include <memory>

class ZETFeatContainer;
class ZETFeatObjectPrivate;
class ZETFeatPropertyBase;
class ZETFeatRoot;

/*! Base of all model features: a node of the model's tree with a label, an enabled state, properties and messages.
 *
 *  A feature class describes itself by the class information of its meta-object: defaultLabel, inputProps, outputProps,
 *  visProps (property names, separated by one blank), contextualActions, editAction, allowedParents (class names,
 *  separated by one blank; empty puts no limit), version, and one PropertyLabel_ entry for each property. A class
 *  answers with its own entry, and where it has none, with that of its nearest base that has one; but the inputs of a
 *  class are those of its bases too, and its version is its own alone, 1 without one.
 *
 *  The container owns its features; a parent decides their order. The tree belongs to the thread that owns the model.
 */
class ZETHOST_EXPORT ZETFeatObject : public ZETGeoGeometry
{
    Q_OBJECT

public:
    /*! How grave a message is. */
    enum MessageStatus : int {
        MessageWarning = 2, //!< the feature works, with a limitation
        MessageError = 3    //!< the feature can't work
    };
    Q_ENUM(MessageStatus)

    /*! Creates the feature in \a container, as the last child of \a parent. Null for \a parent makes a feature without
     *  a place in the tree, which the root is. allowedParents isn't looked at here, because the class of a feature
     *  isn't known before its construction is done: whoever makes features by name asks IsChildAllowed first. */
    ZETFeatObject(ZETFeatContainer* container, ZETFeatObject* parent);
    /*! The form for loading: no parent yet. Both arguments may be null or invalid. */
    ZETFeatObject(const ZETGeoGeometryRef& reference, ZETGeoContainer* container);
    ~ZETFeatObject() override;

    void Save(ZETGeoStream& stream) const override;
    void Load(ZETGeoStream& stream) override;
    void SetCurrentState(const QByteArray& state) override;
    void Initialize() override;
    /*! Takes the feature and all its children out of the model. */
    void Remove() override;
    void EndStateLoad() override;

    /*! The name that people see: the label that was set, otherwise the class's defaultLabel. */
    virtual QString GetLabel() const;
    /*! What a host shows behind and ahead of the label; empty, as here, for nothing. */
    virtual QString GetLabelSuffix() const;
    virtual QString GetLabelPrefix() const;
    /*! Whether a feature of class \a type may stand below this one: answered from allowedParents of that class. */
    virtual bool IsChildAllowed(const QMetaObject* type) const;
    /*! How a user may move the feature among its siblings, as bits of the host's own; 0 for not at all, as here. */
    virtual int GetAllowedMoveActions();
    /*! Whether a user may delete the feature, and whether a user may duplicate it; true, as here. */
    virtual bool IsUserDeletable() const;
    virtual bool CanUserDuplicate() const;
    /*! Shows or hides the feature itself in the scene. DEFAULT: true */
    virtual void SetVisibility(bool visible);
    /*! Works the feature out anew. A feature calls its base first, and returns false if its state is invalid. The
     *  base's part empties the messages and succeeds. */
    virtual bool UpdateResult();
    /*! Steps that a host takes behind a duplication, behind a move, and for what no stream holds. Nothing happens here.
     */
    virtual void PostDuplicate(const ZETFeatObject* source, const ZETFeatObject* sourceRoot);
    virtual void PostMove(ZETFeatObject* oldParent, int oldPosition);
    virtual void InitializeNonStreamed();

    /*! The parent in the tree; null at the root. */
    ZETFeatObject* GetParent() const;
    /*! The root of the tree; null outside a tree. */
    ZETFeatRoot* GetRoot() const;
    /*! The direct children, in model order. */
    QList<ZETFeatObject*> GetChildren() const;
    /*! All descendants: a parent ahead of its children, depth first, in model order. */
    QList<ZETFeatObject*> GetAllChildren() const;
    /*! False if the feature or any ancestor is disabled. */
    bool IsEffectivelyEnabled() const;

    /*! The names of all properties of the feature's meta-object, below those of QObject itself. */
    QSet<QByteArray> GetAllProperties() const;
    /*! Re-evaluates one property after a change from outside: an input property makes the feature outdated. */
    void UpdateProperty(const QByteArray& property);
    /*! Marks the feature for a new UpdateResult. */
    void SetOutdated();
    /*! Attaches a message to the feature. */
    void AddMessage(MessageStatus status, const QString& text);
    /*! Attaches a message to one property of the feature. */
    void SetPropertyMessage(const QByteArray& property, MessageStatus status, const QString& text);

private:
    friend class ZETFeatObjectPrivate;
    friend class ZETFeatPropertyBase;
    std::unique_ptr<ZETFeatObjectPrivate> d;
};
