#include <ZETTopology/ZETTopFactory.h>

#include "openhost/ZETGeometry/ZETOpenAssembledCurve.h"
#include "openhost/ZETTopology/ZETOpenBody_p.h"

#include <algorithm>
#include <limits>

class ZETTopFactoryPrivate
{
public:
    /*! A place of the target that answers a point of the source. */
    struct Place {
        const ZETOpenFace* face = nullptr;
        const ZETOpenEdge* edge = nullptr;
        ZETGeoLocationOnSurface onSurface;
        ZETGeoLocationOnCurve onCurve;
        ZETMathPoint point;
        double distance = std::numeric_limits<double>::infinity();
    };

    static QList<Place> GetPlaces(const ZETTopBody& target, const ZETMathPoint& point);
    static ZETOpenVertex* MakeVertex(ZETOpenBody& body, const QList<Place>& places);

    std::vector<std::unique_ptr<ZETTopBody>> bodies;
};

/*! The nearest place of each face, or if the target has none of each edge: the nearest first, and only those that are
 *  the same point within the tolerance. */
QList<ZETTopFactoryPrivate::Place> ZETTopFactoryPrivate::GetPlaces(const ZETTopBody& target, const ZETMathPoint& point)
{
    QList<Place> places;
    for (const ZETTopEntity* entity : target.GetEntities(2)) {
        Place place;
        if ((place.face = qobject_cast<const ZETOpenFace*>(entity))) {
            place.onSurface = place.face->surface->Project(point);
            place.point = place.onSurface.GetPoint();
            places.append(place);
        }
    }
    for (const ZETTopEntity* entity : places.isEmpty() ? target.GetEntities(1) : QList<const ZETTopEntity*>()) {
        Place place;
        if ((place.edge = qobject_cast<const ZETOpenEdge*>(entity))) {
            place.onCurve = place.edge->curve->Project(point);
            place.point = place.onCurve.GetMathPoint();
            places.append(place);
        }
    }
    for (Place& place : places)
        place.distance = place.point.GetDistanceTo(point);
    std::stable_sort(places.begin(), places.end(),
                     [](const Place& a, const Place& b) { return a.distance < b.distance; });
    const auto isElsewhere = [&](const Place& place) {
        return place.point.GetDistanceTo(places.first().point) > openJoinTolerance;
    };
    places.erase(std::find_if(places.begin(), places.end(), isElsewhere), places.end());
    return places;
}

ZETOpenVertex* ZETTopFactoryPrivate::MakeVertex(ZETOpenBody& body, const QList<Place>& places)
{
    const auto point = ZETOpenComboPoint::Make(places.first().point, {});
    auto* const vertex = body.MakeEntity<ZETOpenVertex>(point);
    for (const Place& place : places) {
        if (place.face) {
            if (!point->GetPoint(place.face->GetSurface()))
                point->AddImage(place.face->surface, place.onSurface);
            vertex->AddFace(place.face);
        } else {
            vertex->AddEdge(place.edge, place.onCurve);
        }
    }
    return vertex;
}

ZETTopFactory::ZETTopFactory(ZETGeoContainer*)
    : d(std::make_unique<ZETTopFactoryPrivate>())
{
}

ZETTopFactory::~ZETTopFactory() = default;

ZETTopBody* ZETTopFactory::Project(const ZETTopBody* target, const ZETTopBody* source)
{
    if (!target || !source)
        return nullptr;
    auto body = std::make_unique<ZETOpenBody>();
    QList<ZETOpenVertex*> vertices;
    for (const ZETTopEntity* entity : source->GetEntities(0)) {
        const auto* const vertex = qobject_cast<const ZETTopVertex*>(entity);
        if (!vertex || !vertex->GetPoint())
            continue;
        const auto places = ZETTopFactoryPrivate::GetPlaces(*target, vertex->GetPoint()->GetPosition());
        if (!places.isEmpty())
            vertices.append(ZETTopFactoryPrivate::MakeVertex(*body, places));
    }
    if (vertices.isEmpty())
        return nullptr;
    body->domains.push_back(std::make_unique<ZETOpenPointDomain>(vertices));
    d->bodies.push_back(std::move(body));
    return d->bodies.back().get();
}
