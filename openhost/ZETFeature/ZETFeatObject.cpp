#include "openhost/ZETFeature/ZETFeatObject_p.h"

#include "openhost/ZETFeature/ZETFeatProperty_p.h"
#include "openhost/ZETGeometry/ZETGeoGeometry_p.h"

#include <ZETFeature/ZETFeatContainer.h>
#include <ZETFeature/ZETFeatRoot.h>
#include <ZETGeometry/ZETGeoGeometryRef.h>
#include <ZETGeometry/ZETGeoStream.h>

#include <QDataStream>
#include <QMetaClassInfo>
#include <QMetaProperty>

#include <algorithm>

const char* ZETFeatClassInfo::Get(const QMetaObject* type, const char* key)
{
    const int index = type->indexOfClassInfo(key);
    return index < 0 ? nullptr : type->classInfo(index).value();
}

bool ZETFeatClassInfo::Contains(const char* list, const char* name)
{
    return name && *name && QByteArray(list).split(' ').contains(name);
}

bool ZETFeatClassInfo::IsInputProperty(const QMetaObject* type, const char* property)
{
    for (; type; type = type->superClass()) {
        const char* list = Get(type, "inputProps");
        if (Contains(list, property))
            return true;
    }
    return false;
}

bool ZETFeatClassInfo::Inherits(const QMetaObject* type, const QMetaObject* base)
{
    for (; type; type = type->superClass()) {
        if (qstrcmp(type->className(), base->className()) == 0)
            return true;
    }
    return false;
}

void ZETFeatObjectPrivate::SetParent(ZETFeatObject& feature, ZETFeatObject* parent, int position)
{
    ZETFeatObjectPrivate& record = Of(feature);
    if (record.parent) {
        // From the end, because a container deletes its objects in this order.
        QList<ZETFeatObject*>& siblings = Of(*record.parent).children;
        siblings.removeAt(siblings.lastIndexOf(&feature));
    }
    record.parent = parent;
    if (!parent)
        return;
    QList<ZETFeatObject*>& siblings = Of(*parent).children;
    const bool isLast = position < 0 || position > siblings.size();
    siblings.insert(isLast ? siblings.size() : position, &feature);
}

void ZETFeatObjectPrivate::FinishInitialization(ZETFeatObject& feature)
{
    for (ZETFeatValuePropertyBase* property : ZETFeatPropertyTable::TakePending(&feature)) {
        const QMetaProperty meta = feature.metaObject()->property(property->GetPropertyIndex());
        if (meta.isValid() && !property->GetLastSavedValue().isValid())
            property->SetLastSavedValue(meta.read(&feature));
    }
}

bool ZETFeatObjectPrivate::Update(ZETFeatObject& feature)
{
    ZETFeatObjectPrivate& record = Of(feature);
    FinishInitialization(feature);
    record.isOutdated = false;
    try {
        record.isValid = feature.UpdateResult();
    } catch (...) {
        record.isOutdated = true;
        throw;
    }
    return record.isValid;
}

ZETFeatObject::ZETFeatObject(ZETFeatContainer* container, ZETFeatObject* parent)
    : ZETGeoGeometry(container)
    , d(std::make_unique<ZETFeatObjectPrivate>())
{
    ZETFeatObjectPrivate::SetParent(*this, parent);
}

ZETFeatObject::ZETFeatObject(const ZETGeoGeometryRef& reference, ZETGeoContainer* container)
    : ZETGeoGeometry(container, reference)
    , d(std::make_unique<ZETFeatObjectPrivate>())
{
}

ZETFeatObject::~ZETFeatObject()
{
    ZETFeatPropertyTable::ForgetObject(*this);
    for (ZETFeatObject* child : std::as_const(d->children))
        child->d->parent = nullptr;
    ZETFeatObjectPrivate::SetParent(*this, nullptr);
}

void ZETFeatObject::Save(ZETGeoStream& stream) const
{
    ZETGeoGeometry::Save(stream);
    // Messages aren't saved: they are in somebody's language. A feature that has some is worked out anew instead.
    const bool needsUpdate = d->isOutdated || !d->messages.isEmpty();
    stream.GetDataStream() << d->label << d->isEnabled << d->isVisible << needsUpdate;
    ZETFeatPropertyTable::MarkSaved(this);
}

void ZETFeatObject::Load(ZETGeoStream& stream)
{
    ZETGeoGeometry::Load(stream);
    stream.GetDataStream() >> d->label >> d->isEnabled >> d->isVisible >> d->isOutdated;
}

void ZETFeatObject::SetCurrentState(const QByteArray& state)
{
    ZETGeoGeometry::SetCurrentState(state);
}

void ZETFeatObject::Initialize()
{
    ZETGeoGeometry::Initialize();
    ZETFeatObjectPrivate::FinishInitialization(*this);
}

void ZETFeatObject::Remove()
{
    const QList<ZETFeatObject*> descendants = GetAllChildren();
    std::for_each(descendants.rbegin(), descendants.rend(), [](ZETFeatObject* feature) { feature->Remove(); });
    ZETFeatObjectPrivate::SetParent(*this, nullptr);
    ZETGeoGeometry::Remove();
}

void ZETFeatObject::EndStateLoad()
{
    ZETFeatObjectPrivate::FinishInitialization(*this);
    ZETFeatPropertyTable::MarkSaved(this);
    ZETGeoGeometry::EndStateLoad();
}

QString ZETFeatObject::GetLabel() const
{
    if (!d->label.isNull())
        return d->label;
    const char* defaultLabel = ZETFeatClassInfo::Get(metaObject(), "defaultLabel");
    return QString::fromUtf8(defaultLabel ? defaultLabel : metaObject()->className());
}

QString ZETFeatObject::GetLabelSuffix() const
{
    return {};
}

QString ZETFeatObject::GetLabelPrefix() const
{
    return {};
}

bool ZETFeatObject::IsChildAllowed(const QMetaObject* type) const
{
    if (!type || !ZETFeatClassInfo::Inherits(type, &ZETFeatObject::staticMetaObject))
        return false;
    const QByteArray allowedParents(ZETFeatClassInfo::Get(type, "allowedParents"));
    if (allowedParents.trimmed().isEmpty())
        return true;
    for (const QMetaObject* own = metaObject(); own; own = own->superClass()) {
        if (ZETFeatClassInfo::Contains(allowedParents.constData(), own->className()))
            return true;
    }
    return false;
}

int ZETFeatObject::GetAllowedMoveActions()
{
    return 0;
}

bool ZETFeatObject::IsUserDeletable() const
{
    return true;
}

bool ZETFeatObject::CanUserDuplicate() const
{
    return true;
}

void ZETFeatObject::SetVisibility(bool visible)
{
    d->isVisible = visible;
}

bool ZETFeatObject::UpdateResult()
{
    d->messages.clear();
    return true;
}

void ZETFeatObject::PostDuplicate(const ZETFeatObject* source, const ZETFeatObject* sourceRoot)
{
    Q_UNUSED(source)
    Q_UNUSED(sourceRoot)
}

void ZETFeatObject::PostMove(ZETFeatObject* oldParent, int oldPosition)
{
    Q_UNUSED(oldParent)
    Q_UNUSED(oldPosition)
}

void ZETFeatObject::InitializeNonStreamed()
{
}

ZETFeatObject* ZETFeatObject::GetParent() const
{
    return d->parent;
}

ZETFeatRoot* ZETFeatObject::GetRoot() const
{
    auto* top = const_cast<ZETFeatObject*>(this);
    while (top->d->parent)
        top = top->d->parent;
    return qobject_cast<ZETFeatRoot*>(top);
}

QList<ZETFeatObject*> ZETFeatObject::GetChildren() const
{
    return d->children;
}

QList<ZETFeatObject*> ZETFeatObject::GetAllChildren() const
{
    // A stack of our own, because a tree may be deeper than the program's.
    QList<ZETFeatObject*> all;
    QList<ZETFeatObject*> waiting(d->children.rbegin(), d->children.rend());
    while (!waiting.isEmpty()) {
        ZETFeatObject* feature = waiting.takeLast();
        all.append(feature);
        const QList<ZETFeatObject*>& children = feature->d->children;
        std::for_each(children.rbegin(), children.rend(), [&](ZETFeatObject* child) { waiting.append(child); });
    }
    return all;
}

bool ZETFeatObject::IsEffectivelyEnabled() const
{
    for (const ZETFeatObject* feature = this; feature; feature = feature->d->parent) {
        if (!feature->d->isEnabled)
            return false;
    }
    return true;
}

QSet<QByteArray> ZETFeatObject::GetAllProperties() const
{
    QSet<QByteArray> names;
    for (int i = QObject::staticMetaObject.propertyCount(); i < metaObject()->propertyCount(); ++i)
        names.insert(metaObject()->property(i).name());
    return names;
}

void ZETFeatObject::UpdateProperty(const QByteArray& property)
{
    if (ZETFeatClassInfo::IsInputProperty(metaObject(), property.constData()))
        SetOutdated();
}

void ZETFeatObject::SetOutdated()
{
    QList<ZETFeatObject*> waiting{this};
    while (!waiting.isEmpty()) {
        ZETFeatObject* feature = waiting.takeLast();
        if (feature->d->isOutdated)
            continue;
        feature->d->isOutdated = true;
        for (const ZETFeatObjectPropertyBase* referrer : std::as_const(feature->d->referrers)) {
            if (referrer->IsInputProperty())
                waiting.append(referrer->GetFeature());
        }
    }
}

void ZETFeatObject::AddMessage(MessageStatus status, const QString& text)
{
    d->messages.append({status, QByteArray(), text});
}

void ZETFeatObject::SetPropertyMessage(const QByteArray& property, MessageStatus status, const QString& text)
{
    d->messages.append({status, property, text});
}
