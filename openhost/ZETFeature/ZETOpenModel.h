#pragma once

#include <ZETFeature/ZETFeatObject.h>
#include <ZETHostGlobal.h>

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QString>

#include <memory>

class QUrl;
class ZETFeatContainer;
class ZETFeatContainerProvider;
class ZETFeatRoot;

/*! What the open host's application does with a model, beyond what the features themselves offer: makes features,
 *  names and switches them, updates them and reads their messages. */
namespace ZETOpenModel
{

/*! What a feature told of its state. */
struct Message {
    ZETFeatObject::MessageStatus status;
    QByteArray property; //!< empty: the feature as a whole
    QString text;

    friend bool operator==(const Message&, const Message&) = default;
};

/*! Whether Create asks the parent's IsChildAllowed. */
enum class ParentCheck {
    AllowedParents, //!< what the class lists in its allowedParents is kept
    None            //!< any parent will do, as with a constructor that is called directly
};

/*! Makes a feature of the registered class \a className as the last child of \a parent, in its container, and
 *  initializes it. The container owns it. Throws ZETSysException if the class isn't registered, isn't a feature class,
 *  or may not stand below \a parent.
 *  A root is a parent like any other here: a class that lists its parents without naming the root's class needs
 *  ParentCheck::None, or its own constructor, to stand right below a root. */
ZETHOST_EXPORT ZETFeatObject* Create(const QByteArray& className, ZETFeatObject& parent,
                                     ParentCheck check = ParentCheck::AllowedParents);
/*! Makes a feature without a parent, such as a root. */
ZETHOST_EXPORT ZETFeatObject* Create(const QByteArray& className, ZETFeatContainer& container);
/*! The names of the registered classes whose objects are features, sorted. */
ZETHOST_EXPORT QList<QByteArray> GetFeatureClasses();

/*! Moves \a feature to \a position among the children of \a parent, to the end for a negative one, and calls its
 *  PostMove. Throws ZETSysException if \a parent is the feature itself or stands below it, is in another container,
 *  or doesn't allow it. */
ZETHOST_EXPORT void Move(ZETFeatObject& feature, ZETFeatObject& parent, int position = -1);

/*! A null \a label goes back to the class's defaultLabel; an empty one stays empty. */
ZETHOST_EXPORT void SetLabel(ZETFeatObject& feature, const QString& label);
/*! The feature's own switch. DEFAULT: true */
ZETHOST_EXPORT void SetEnabled(ZETFeatObject& feature, bool enabled);
ZETHOST_EXPORT bool IsEnabled(const ZETFeatObject& feature);
/*! What SetVisibility of the feature set. DEFAULT: true */
ZETHOST_EXPORT bool IsVisible(const ZETFeatObject& feature);

/*! The messages of the feature and of its properties, in the order in which they came. */
ZETHOST_EXPORT QList<Message> GetMessages(const ZETFeatObject& feature);
/*! Whether the feature waits for an UpdateResult. A new feature does. */
ZETHOST_EXPORT bool IsOutdated(const ZETFeatObject& feature);
/*! What the last UpdateResult said; true before the first. */
ZETHOST_EXPORT bool IsValid(const ZETFeatObject& feature);

/*! Calls UpdateResult of each outdated feature of the tree below \a top, \a top included: a parent ahead of its
 *  children, in model order, except that a feature goes behind those that its input properties point to. Disabled
 *  features are updated as well, because others may stand on them.
 *  An exception passes: the feature that threw and those behind it stay outdated. True if all that were updated
 *  succeeded. */
ZETHOST_EXPORT bool Update(ZETFeatObject& top);
/*! The same for the whole model. */
ZETHOST_EXPORT bool Update(ZETFeatContainer& container);

/*! The first feature of the container that is a root; null if there is none. */
ZETHOST_EXPORT ZETFeatRoot* GetRoot(const ZETFeatContainer& container);
/*! The features without a parent, in the order of their creation. */
ZETHOST_EXPORT QList<ZETFeatObject*> GetTopFeatures(const ZETFeatContainer& container);

/*! Where the model came from. */
ZETHOST_EXPORT void SetProviderUrl(ZETFeatContainer& container, const QUrl& url);
/*! Gives the container a provider that answers with \a parameters. */
ZETHOST_EXPORT void SetTextParameters(ZETFeatContainer& container, const QHash<QString, QString>& parameters);
/*! Gives the container a provider of the caller's making; null takes it away. */
ZETHOST_EXPORT void SetProvider(ZETFeatContainer& container, std::unique_ptr<ZETFeatContainerProvider> provider);

} // namespace ZETOpenModel
