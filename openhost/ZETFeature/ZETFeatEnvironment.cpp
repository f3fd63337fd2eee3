#include <ZETFeature/ZETFeatEnvironment.h>

#include "openhost/ZETFeature/ZETFeatObject_p.h"
#include "openhost/ZETVisualization/ZETOpenScene.h"

#include <ZETFeature/ZETFeatVisObject.h>
#include <ZETSystem/ZETSysException.h>
#include <ZETVisualization/ZETVisRepGraphics.h>

#include <QGlobalStatic>
#include <QHash>
#include <QPointer>
#include <QSet>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

/*! Record of ZETFeatVisObject. */
class ZETFeatVisObjectPrivate
{
public:
    QPointer<ZETFeatObject> feature;
};

namespace
{
/*! Display object classes by name of the feature class; the last one registered counts. */
using VisObjectTable = QHash<QByteArray, QList<const QMetaObject*>>;

// Libraries take their registrations back at unload, which may be after the statics of this library have gone.
Q_GLOBAL_STATIC(VisObjectTable, visObjectTable)

QList<QByteArray> Sorted(QList<QByteArray> names)
{
    std::sort(names.begin(), names.end());
    return names;
}
} // namespace

const QMetaObject* ZETOpenScene::GetVisObjectClass(const QMetaObject* featureClass)
{
    for (; featureClass && !visObjectTable.isDestroyed(); featureClass = featureClass->superClass()) {
        const auto place = visObjectTable->constFind(featureClass->className());
        if (place != visObjectTable->constEnd())
            return place->last();
    }
    return nullptr;
}

QList<QByteArray> ZETOpenScene::GetRegisteredVisObjectClasses()
{
    QSet<QByteArray> names;
    if (!visObjectTable.isDestroyed()) {
        for (const QList<const QMetaObject*>& types : std::as_const(*visObjectTable)) {
            for (const QMetaObject* type : types)
                names.insert(type->className());
        }
    }
    return Sorted(names.values());
}

QList<QByteArray> ZETOpenScene::GetRegisteredFeatureClasses()
{
    return visObjectTable.isDestroyed() ? QList<QByteArray>() : Sorted(visObjectTable->keys());
}

std::unique_ptr<ZETFeatVisObject> ZETOpenScene::CreateVisObject(const ZETFeatEnvironment& environment,
                                                                ZETFeatObject& feature)
{
    const QMetaObject* type = GetVisObjectClass(feature.metaObject());
    if (!type)
        return nullptr;
    std::unique_ptr<QObject> object(
        type->newInstance(Q_ARG(const ZETFeatEnvironment*, &environment), Q_ARG(ZETFeatObject*, &feature)));
    auto* visObject = qobject_cast<ZETFeatVisObject*>(object.get());
    if (!visObject)
        throw ZETSysException(
            u"The class %1 can't be made as a display object: it has no invokable constructor "
            "(const ZETFeatEnvironment*, ZETFeatObject*)."_s.arg(QLatin1StringView(type->className())));
    static_cast<void>(object.release()); // visObject is the same object
    return std::unique_ptr<ZETFeatVisObject>(visObject);
}

ZETFeatVisObject* ZETOpenScene::Show(ZETFeatEnvironment& environment, ZETFeatObject& feature)
{
    std::unique_ptr<ZETFeatVisObject> object = CreateVisObject(environment, feature);
    if (!object)
        return nullptr;
    object->SetRep(object->CreateRepresentation());
    environment.AddVirtualObject(object.get());
    return object.release();
}

ZETFeatEnvironment::ZETFeatEnvironment() = default;

ZETFeatEnvironment::~ZETFeatEnvironment() = default;

void ZETFeatEnvironment::RegisterGlobalVisualizationObject(const QList<QByteArray>& classNames,
                                                           const QMetaObject* visObjectClass)
{
    if (!visObjectClass || visObjectTable.isDestroyed())
        return;
    for (const QByteArray& name : classNames) {
        QList<const QMetaObject*>& types = (*visObjectTable)[name];
        if (!types.contains(visObjectClass))
            types.append(visObjectClass);
    }
}

void ZETFeatEnvironment::UnregisterGlobalVisualizationObject(const QMetaObject* visObjectClass)
{
    if (visObjectTable.isDestroyed())
        return;
    for (auto place = visObjectTable->begin(); place != visObjectTable->end();) {
        place->removeAll(visObjectClass);
        place = place->isEmpty() ? visObjectTable->erase(place) : std::next(place);
    }
}

ZETFeatVisObject::ZETFeatVisObject(const ZETFeatEnvironment* environment, ZETFeatObject* feature)
    : ZETVisVirtualObject(environment, nullptr)
    , d(std::make_unique<ZETFeatVisObjectPrivate>())
{
    d->feature = feature;
}

ZETFeatVisObject::~ZETFeatVisObject() = default;

ZETFeatObject* ZETFeatVisObject::GetFeature() const
{
    return d->feature;
}

bool ZETFeatVisObject::IsVisible() const
{
    return ZETVisVirtualObject::IsVisible() && d->feature && ZETOpenModel::IsVisible(*d->feature);
}

bool ZETFeatVisObject::IsSelectable() const
{
    return !d->feature.isNull();
}

QString ZETFeatVisObject::GetLabel() const
{
    return d->feature ? d->feature->GetLabel() : QString();
}
