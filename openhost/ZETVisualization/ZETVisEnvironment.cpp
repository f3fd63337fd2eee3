#include "openhost/ZETVisualization/ZETVisEnvironment_p.h"

#include "openhost/ZETVisualization/ZETOpenScene.h"

#include <ZETVisualization/ZETVisRep.h>
#include <ZETVisualization/ZETVisVirtualObject.h>

/*! Record of ZETVisVirtualObject. */
class ZETVisVirtualObjectPrivate
{
public:
    std::unique_ptr<const ZETVisRep> rep;
    bool isVisible = true;
};

bool ZETVisEnvironmentPrivate::Forget(ZETVisVirtualObject* object)
{
    const auto place = places.find(object);
    if (place == places.end())
        return false;
    objects.erase(*place);
    places.erase(place);
    return true;
}

QList<ZETVisVirtualObject*> ZETOpenScene::GetObjects(const ZETVisEnvironment& environment)
{
    const ZETVisEnvironmentPrivate& record = ZETVisEnvironmentPrivate::Of(environment);
    return {record.objects.begin(), record.objects.end()};
}

void ZETOpenScene::MoveToEnd(ZETVisEnvironment& environment, ZETVisVirtualObject& object)
{
    ZETVisEnvironmentPrivate& record = ZETVisEnvironmentPrivate::Of(environment);
    const auto place = record.places.constFind(&object);
    if (place != record.places.cend())
        record.objects.splice(record.objects.end(), record.objects, *place);
}

ZETVisEnvironment::ZETVisEnvironment()
    : d(std::make_unique<ZETVisEnvironmentPrivate>())
{
}

ZETVisEnvironment::~ZETVisEnvironment()
{
    while (!d->objects.empty())
        RemoveVirtualObject(d->objects.back());
}

void ZETVisEnvironment::AddVirtualObject(ZETVisVirtualObject* object)
{
    if (!object || d->places.contains(object))
        return;
    d->places.insert(object, d->objects.insert(d->objects.end(), object));
    // An object may have a parent, which may delete it ahead of the scene.
    connect(object, &QObject::destroyed, this, [this, object] { d->Forget(object); });
}

void ZETVisEnvironment::RemoveVirtualObject(ZETVisVirtualObject* object)
{
    if (object && d->Forget(object))
        delete object;
}

ZETVisObject::ZETVisObject(QObject* parent)
    : QObject(parent)
{
}

ZETVisObject::~ZETVisObject() = default;

bool ZETVisObject::IsPosition() const
{
    return false;
}

ZETMathPoint ZETVisObject::GetPosition() const
{
    return {};
}

ZETMathBoundingBox ZETVisObject::GetBoundingBox() const
{
    return {};
}

ZETVisVirtualObject::ZETVisVirtualObject(const ZETVisEnvironment* environment, QObject* parent)
    : ZETVisObject(parent)
    , d(std::make_unique<ZETVisVirtualObjectPrivate>())
{
    Q_UNUSED(environment) // the scene comes to know the object when it is added
}

ZETVisVirtualObject::~ZETVisVirtualObject() = default;

void ZETVisVirtualObject::SetRep(const ZETVisRep* rep)
{
    if (rep != d->rep.get())
        d->rep.reset(rep);
}

const ZETVisRep* ZETVisVirtualObject::GetRep() const
{
    return d->rep.get();
}

void ZETVisVirtualObject::SetVisibility(bool visible)
{
    d->isVisible = visible;
}

bool ZETVisVirtualObject::IsVisible() const
{
    return d->isVisible;
}

bool ZETVisVirtualObject::IsSelectable() const
{
    return false;
}

QString ZETVisVirtualObject::GetLabel() const
{
    return objectName();
}

ZETMathBoundingBox ZETVisVirtualObject::GetBoundingBox() const
{
    return d->rep ? d->rep->GetBoundingBox() : ZETMathBoundingBox();
}
