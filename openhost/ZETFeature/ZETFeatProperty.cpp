#include "openhost/ZETFeature/ZETFeatProperty_p.h"

#include "openhost/ZETFeature/ZETFeatObject_p.h"
#include "openhost/ZETGeometry/ZETGeoGeometry_p.h"

#include <ZETFeature/ZETFeatObjectListProperty.h>

#include <QGlobalStatic>
#include <QHash>
#include <QMetaProperty>

namespace
{
struct PropertyTable {
    QHash<const ZETFeatObject*, QList<ZETFeatValuePropertyBase*>> pending;
    QHash<const ZETFeatObject*, QList<ZETFeatObjectPropertyBase*>> references;
};

Q_GLOBAL_STATIC(PropertyTable, propertyTable)

template <typename Property>
void RemoveFrom(QHash<const ZETFeatObject*, QList<Property*>>& table, Property* property)
{
    const auto place = table.find(property->GetFeature());
    if (place == table.end())
        return;
    place->removeOne(property);
    if (place->isEmpty())
        table.erase(place);
}
} // namespace

void ZETFeatPropertyTable::AddPending(ZETFeatValuePropertyBase* property)
{
    if (propertyTable.isDestroyed() || !property->GetFeature())
        return;
    QList<ZETFeatValuePropertyBase*>& pending = propertyTable->pending[property->GetFeature()];
    if (!pending.contains(property))
        pending.append(property);
}

void ZETFeatPropertyTable::RemovePending(ZETFeatValuePropertyBase* property)
{
    if (!propertyTable.isDestroyed())
        RemoveFrom(propertyTable->pending, property);
}

QList<ZETFeatValuePropertyBase*> ZETFeatPropertyTable::TakePending(const ZETFeatObject* feature)
{
    return propertyTable.isDestroyed() ? QList<ZETFeatValuePropertyBase*>() : propertyTable->pending.take(feature);
}

void ZETFeatPropertyTable::AddReference(ZETFeatObjectPropertyBase* property)
{
    if (!propertyTable.isDestroyed() && property->GetFeature())
        propertyTable->references[property->GetFeature()].append(property);
}

void ZETFeatPropertyTable::RemoveReference(ZETFeatObjectPropertyBase* property)
{
    if (!propertyTable.isDestroyed())
        RemoveFrom(propertyTable->references, property);
}

QList<ZETFeatObjectPropertyBase*> ZETFeatPropertyTable::GetReferences(const ZETFeatObject* feature)
{
    return propertyTable.isDestroyed() ? QList<ZETFeatObjectPropertyBase*>() : propertyTable->references.value(feature);
}

ZETFeatPropertyBase::ZETFeatPropertyBase(ZETFeatObject* owner, int index)
    : feature(owner)
    , propertyIndex(index)
    , input(false)
{
}

ZETFeatPropertyBase::ZETFeatPropertyBase(ZETFeatObject* owner, bool isInput)
    : feature(owner)
    , propertyIndex(-1)
    , input(isInput)
{
}

ZETFeatPropertyBase::~ZETFeatPropertyBase() = default;

void ZETFeatPropertyBase::BeginModify()
{
    ++modifyDepth;
}

void ZETFeatPropertyBase::EndModify(bool silent)
{
    Q_UNUSED(silent) // the feature is worked out anew, whether or not somebody is told
    if (modifyDepth > 0)
        --modifyDepth;
    // A feature that is being loaded has its state in the stream.
    if (modifyDepth == 0 && feature && !ZETGeoGeometryPrivate::Of(*feature).isLoading && IsInputProperty())
        feature->SetOutdated();
}

bool ZETFeatPropertyBase::IsInputProperty() const
{
    if (propertyIndex < 0 || !feature)
        return input;
    // Asked anew each time: while the feature is being made, its meta-object is still that of a base class.
    const QMetaObject* type = feature->metaObject();
    return ZETFeatClassInfo::IsInputProperty(type, type->property(propertyIndex).name());
}

ZETFeatValuePropertyBase::ZETFeatValuePropertyBase(ZETFeatObject* owner, int index)
    : ZETFeatPropertyBase(owner, index)
    , d(std::make_unique<ZETFeatValuePropertyBasePrivate>())
{
}

ZETFeatValuePropertyBase::~ZETFeatValuePropertyBase()
{
    ZETFeatPropertyTable::RemovePending(this);
}

bool ZETFeatValuePropertyBase::HasLimits() const
{
    return false;
}

bool ZETFeatValuePropertyBase::TestLimits()
{
    return true;
}

QVariant ZETFeatValuePropertyBase::GetMinLimit()
{
    return {};
}

bool ZETFeatValuePropertyBase::GetMinLimitInclusion()
{
    return false;
}

QVariant ZETFeatValuePropertyBase::GetMaxLimit()
{
    return {};
}

bool ZETFeatValuePropertyBase::GetMaxLimitInclusion()
{
    return false;
}

void ZETFeatValuePropertyBase::RequestInitialization()
{
    ZETFeatPropertyTable::AddPending(this);
}

QVariant ZETFeatValuePropertyBase::GetLastSavedValue() const
{
    return d->lastSaved;
}

void ZETFeatValuePropertyBase::SetLastSavedValue(const QVariant& value)
{
    d->lastSaved = value;
}

ZETFeatObjectPropertyBase::ZETFeatObjectPropertyBase(ZETFeatObject* owner, int index)
    : ZETFeatPropertyBase(owner, index)
    , d(std::make_unique<ZETFeatObjectPropertyBasePrivate>())
{
    ZETFeatPropertyTable::AddReference(this);
}

ZETFeatObjectPropertyBase::ZETFeatObjectPropertyBase(ZETFeatObject* owner, bool isInput)
    : ZETFeatPropertyBase(owner, isInput)
    , d(std::make_unique<ZETFeatObjectPropertyBasePrivate>())
{
    ZETFeatPropertyTable::AddReference(this);
}

ZETFeatObjectPropertyBase::~ZETFeatObjectPropertyBase()
{
    ZETFeatObjectPropertyBase::SetPointedObject(nullptr);
    ZETFeatPropertyTable::RemoveReference(this);
}

void ZETFeatObjectPropertyBase::ResetToLastSaved()
{
    if (d->isSaved)
        SetPointedObject(d->lastSaved);
}

void ZETFeatObjectPropertyBase::SetPointedObject(ZETFeatObject* object)
{
    if (d->object)
        ZETFeatObjectPrivate::Of(*d->object).referrers.removeOne(this);
    d->object = object;
    if (d->object)
        ZETFeatObjectPrivate::Of(*d->object).referrers.append(this);
}

bool ZETFeatObjectPropertyBase::CanExternalReference(ZETFeatObject* object)
{
    Q_UNUSED(object)
    return false;
}

ZETFeatObject* ZETFeatObjectPropertyBase::GetPointedObject() const
{
    return d->object;
}

void ZETFeatPropertyTable::MarkSaved(const ZETFeatObject* feature)
{
    for (ZETFeatObjectPropertyBase* property : GetReferences(feature)) {
        ZETFeatObjectPropertyBasePrivate& record = ZETFeatObjectPropertyBasePrivate::Of(*property);
        record.lastSaved = record.object;
        record.isSaved = true;
    }
}

void ZETFeatPropertyTable::ForgetObject(ZETFeatObject& object)
{
    const QList<ZETFeatObjectPropertyBase*> referrers = ZETFeatObjectPrivate::Of(object).referrers;
    for (ZETFeatObjectPropertyBase* referrer : referrers) {
        referrer->ZETFeatObjectPropertyBase::SetPointedObject(nullptr);
        if (referrer->IsInputProperty())
            referrer->GetFeature()->SetOutdated();
    }
}

ZETFeatObjectListPropertyBase::ZETFeatObjectListPropertyBase(ZETFeatObject* owner, int index)
    : ZETFeatPropertyBase(owner, index)
{
}

ZETFeatObjectListPropertyBase::~ZETFeatObjectListPropertyBase() = default;
