#pragma once

#include <ZETFeature/ZETFeatObjectProperty.h>
#include <ZETFeature/ZETFeatValueProperty.h>

#include <QList>
#include <QPointer>
#include <QVariant>

/*! Record of ZETFeatValuePropertyBase. */
class ZETFeatValuePropertyBasePrivate
{
public:
    QVariant lastSaved;
};

/*! Record of ZETFeatObjectPropertyBase. */
class ZETFeatObjectPropertyBasePrivate
{
public:
    static ZETFeatObjectPropertyBasePrivate& Of(ZETFeatObjectPropertyBase& property) { return *property.d; }

    ZETFeatObject* object = nullptr; //!< which lists the property among its referrers
    QPointer<ZETFeatObject> lastSaved;
    bool isSaved = false; //!< there is a last saved reference, which may be null
};

/*! The properties of each feature. It stands apart from the features, because a feature may make its properties ahead
 *  of its base class, when there is nothing yet to register with. */
namespace ZETFeatPropertyTable
{
void AddPending(ZETFeatValuePropertyBase* property);
void RemovePending(ZETFeatValuePropertyBase* property);
QList<ZETFeatValuePropertyBase*> TakePending(const ZETFeatObject* feature);

void AddReference(ZETFeatObjectPropertyBase* property);
void RemoveReference(ZETFeatObjectPropertyBase* property);
/*! The properties of \a feature that can point to others; items of lists too. */
QList<ZETFeatObjectPropertyBase*> GetReferences(const ZETFeatObject* feature);

/*! Remembers what the references of \a feature point to as their last saved state. */
void MarkSaved(const ZETFeatObject* feature);

/*! Lets all properties that point to \a object point to nothing. */
void ForgetObject(ZETFeatObject& object);
} // namespace ZETFeatPropertyTable
