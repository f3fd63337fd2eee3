#include "openhost/ZETGeometry/ZETGeoContainer_p.h"

#include "openhost/ZETGeometry/ZETGeoGeometry_p.h"
#include "openhost/ZETGeometry/ZETOpenTypes.h"

#include <ZETSystem/ZETSysException.h>

#include <QGlobalStatic>
#include <QHash>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace
{
/*! By class name, the oldest registration first. */
using TypeTable = QHash<QByteArray, QList<const QMetaObject*>>;

// Libraries take their registrations back at unload, which may be after the statics of this library have gone.
Q_GLOBAL_STATIC(TypeTable, typeTable)
} // namespace

const QMetaObject* ZETOpenTypes::GetType(const QByteArray& className)
{
    if (typeTable.isDestroyed())
        return nullptr;
    const QList<const QMetaObject*> types = typeTable->value(className);
    return types.isEmpty() ? nullptr : types.last();
}

bool ZETOpenTypes::IsRegistered(const QByteArray& className)
{
    return GetType(className) != nullptr;
}

QList<QByteArray> ZETOpenTypes::GetRegisteredClasses()
{
    QList<QByteArray> names;
    if (!typeTable.isDestroyed())
        names = typeTable->keys();
    std::sort(names.begin(), names.end());
    return names;
}

ZETGeoGeometry* ZETOpenTypes::Make(const QMetaObject* type, ZETGeoContainer& container,
                                   const ZETGeoGeometryRef& reference)
{
    QObject* object = type->newInstance(Q_ARG(ZETGeoContainer*, &container), Q_ARG(ZETGeoGeometryRef, reference));
    auto* geometry = qobject_cast<ZETGeoGeometry*>(object);
    if (geometry)
        return geometry;
    delete object;
    throw ZETSysException(u"The class %1 can't be made by name: it has no invokable constructor "
                          "(ZETGeoContainer*, const ZETGeoGeometryRef&)."_s.arg(QLatin1StringView(type->className())));
}

void ZETGeoContainerPrivate::Add(ZETGeoContainer& container, ZETGeoGeometry& geometry,
                                 const ZETGeoGeometryRef& reference)
{
    ZETGeoContainerPrivate& record = Of(container);
    quint64 id = ZETGeoGeometryRefPrivate::GetId(reference);
    if (id == 0 || record.objects.contains(id))
        id = record.lastId + 1;
    record.objects.emplace(id, &geometry);
    record.lastId = std::max(record.lastId, id);
    ZETGeoGeometryPrivate::Of(geometry).container = &container;
    ZETGeoGeometryPrivate::Of(geometry).id = id;
}

void ZETGeoContainerPrivate::Release(ZETGeoGeometry& geometry)
{
    ZETGeoGeometryPrivate& member = ZETGeoGeometryPrivate::Of(geometry);
    if (!member.container)
        return;
    Of(*member.container).objects.erase(member.id);
    member.container = nullptr;
    member.id = 0;
}

void ZETGeoContainerPrivate::Clear(ZETGeoContainer& container)
{
    ZETGeoContainerPrivate& record = Of(container);
    while (!record.objects.empty()) {
        ZETGeoGeometry* geometry = std::prev(record.objects.end())->second;
        if (ZETGeoGeometryPrivate::Of(*geometry).references > 0)
            Release(*geometry);
        else
            delete geometry;
    }
}

ZETGeoContainer::ZETGeoContainer()
    : d(std::make_unique<ZETGeoContainerPrivate>())
{
}

ZETGeoContainer::~ZETGeoContainer()
{
    ZETGeoContainerPrivate::Clear(*this);
}

void ZETGeoContainer::RegisterType(const QMetaObject* type)
{
    if (!type || typeTable.isDestroyed())
        return;
    QList<const QMetaObject*>& types = (*typeTable)[type->className()];
    if (!types.contains(type))
        types.append(type);
}

void ZETGeoContainer::UnregisterType(const QMetaObject* type)
{
    if (!type || typeTable.isDestroyed())
        return;
    const auto place = typeTable->find(type->className());
    if (place == typeTable->end())
        return;
    place->removeAll(type);
    if (place->isEmpty())
        typeTable->erase(place);
}

ZETGeoGeometry* ZETGeoContainer::GetGeometryByRef(const ZETGeoGeometryRef& reference) const
{
    const auto place = d->objects.find(ZETGeoGeometryRefPrivate::GetId(reference));
    return place == d->objects.end() ? nullptr : place->second;
}
