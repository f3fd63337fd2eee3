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
