#include "openhost/ZETTopology/ZETOpenBodyBuilder.h"

#include "openhost/ZETGeometry/ZETOpenAssembledCurve.h"
#include "openhost/ZETGeometry/ZETOpenComboCurve_p.h"
#include "openhost/ZETTopology/ZETOpenBody_p.h"

#include <ZETSystem/ZETSysException.h>

#include <QCoreApplication>

#include <optional>

class ZETOpenBodyBuilderPrivate
{
    Q_DECLARE_TR_FUNCTIONS(ZETOpenBodyBuilder)

public:
    /*! An end of an edge, at the start or the end of the edge's own sense. */
    struct End {
        ZETOpenEdge* edge = nullptr;
        bool atEnd = false;

        ZETGeoLocationOnCurve GetLocation() const;
        ZETMathPoint GetPoint() const { return GetLocation().GetMathPoint(); }
    };

    static void AddImages(ZETOpenComboPoint& point, const End& end);
    ZETOpenVertex* MakeVertex(const QList<End>& ends);
    QList<ZETOpenVertex*> MakeVertices(const std::vector<ZETOpenNet::Side>& sides, bool closed);
    void ConnectFaces();

    std::unique_ptr<ZETOpenBody> body = std::make_unique<ZETOpenBody>();
    std::optional<int> dimension;
    int highest = 0; //!< dimension of the domains so far
};

ZETGeoLocationOnCurve ZETOpenBodyBuilderPrivate::End::GetLocation() const
{
    return ZETGeoLocationOnCurve(edge->curve.Get(), atEnd ? edge->curve->GetNumSegments() : 0);
}

void ZETOpenBodyBuilderPrivate::AddImages(ZETOpenComboPoint& point, const End& end)
{
    for (const auto& image : ZETOpenComboCurvePrivate::Of(*end.edge->curve).images) {
        if (point.GetPoint(image.curve->GetSurface()))
            continue;
        const auto& place = end.atEnd == image.reversed ? image.range.GetStart() : image.range.GetEnd();
        const ZETGeoLocationOnSurface location = image.curve->GetLocationOnSurface(place);
        auto* const surface = const_cast<ZETOpenSurface*>(qobject_cast<const ZETOpenSurface*>(location.GetSurface()));
        point.AddImage(ZETOpenRef<ZETOpenSurface>(surface), location);
    }
}

ZETOpenVertex* ZETOpenBodyBuilderPrivate::MakeVertex(const QList<End>& ends)
{
    const auto point = ZETOpenComboPoint::Make(ends.first().GetPoint(), {});
    for (const End& end : ends)
        AddImages(*point, end);
    auto* const vertex = body->MakeEntity<ZETOpenVertex>(point);
    for (const End& end : ends)
        vertex->AddEdge(end.edge, end.GetLocation());
    return vertex;
}

QList<ZETOpenVertex*> ZETOpenBodyBuilderPrivate::MakeVertices(const std::vector<ZETOpenNet::Side>& sides, bool closed)
{
    QList<ZETOpenVertex*> vertices;
    for (std::size_t i = 0; i < sides.size(); ++i) {
        const End start{sides[i].edge, sides[i].reversed};
        const End end{sides[i].edge, !sides[i].reversed};
        const bool last = i + 1 == sides.size();
        if (i == 0) {
            const End before{sides.back().edge, !sides.back().reversed};
            vertices.append(MakeVertex(closed ? QList<End>{start, before} : QList<End>{start}));
        }
        if (last) {
            if (!closed)
                vertices.append(MakeVertex({end}));
            break;
        }
        const End next{sides[i + 1].edge, sides[i + 1].reversed};
        if (end.GetPoint().GetDistanceTo(next.GetPoint()) <= openJoinTolerance) {
            vertices.append(MakeVertex({end, next}));
        } else {
            vertices.append(MakeVertex({end}));
            vertices.append(MakeVertex({next}));
        }
    }
    return vertices;
}

void ZETOpenBodyBuilderPrivate::ConnectFaces()
{
    const auto faces = body->GetEntities(2);
    for (const auto& entity : body->entities) {
        auto* const vertex = qobject_cast<ZETOpenVertex*>(entity.get());
        for (qsizetype i = 0; vertex && i < faces.size(); ++i) {
            const auto* const face = qobject_cast<const ZETTopFace*>(faces[i]);
            if (vertex->point->GetPoint(face->GetSurface()))
                vertex->AddFace(face);
        }
    }
}

ZETOpenBodyBuilder::ZETOpenBodyBuilder()
    : d(std::make_unique<ZETOpenBodyBuilderPrivate>())
{
}

ZETOpenBodyBuilder::~ZETOpenBodyBuilder() = default;

void ZETOpenBodyBuilder::AddPoints(const QList<ZETOpenRef<ZETOpenComboPoint>>& points)
{
    QList<ZETOpenVertex*> vertices;
    for (const auto& point : points) {
        if (!point)
            throw ZETSysException(ZETOpenBodyBuilderPrivate::tr("a vertex needs a point"));
        vertices.append(d->body->MakeEntity<ZETOpenVertex>(point));
    }
    d->body->domains.push_back(std::make_unique<ZETOpenPointDomain>(vertices));
}

void ZETOpenBodyBuilder::AddNet(const QList<Side>& sides)
{
    std::vector<ZETOpenNet::Side> edges;
    double length = 0.0;
    for (const Side& side : sides) {
        if (!side.curve)
            throw ZETSysException(ZETOpenBodyBuilderPrivate::tr("an edge needs a curve"));
        edges.push_back({d->body->MakeEntity<ZETOpenEdge>(side.curve), side.reversed});
        length += side.curve->GetLength();
    }
    bool closed = false;
    if (!edges.empty()) {
        const ZETOpenBodyBuilderPrivate::End start{edges.front().edge, edges.front().reversed};
        const ZETOpenBodyBuilderPrivate::End end{edges.back().edge, !edges.back().reversed};
        // A net so short that its ends meet anyway isn't closed.
        closed =
            length > 2.0 * openJoinTolerance && start.GetPoint().GetDistanceTo(end.GetPoint()) <= openJoinTolerance;
    }
    const auto vertices = d->MakeVertices(edges, closed);
    d->body->domains.push_back(std::make_unique<ZETOpenNet>(std::move(edges), vertices, closed));
    d->highest = std::max(d->highest, 1);
}

void ZETOpenBodyBuilder::AddSkin(const QList<ZETOpenRef<ZETOpenSurface>>& surfaces)
{
    QList<ZETOpenFace*> faces;
    for (const auto& surface : surfaces) {
        if (!surface)
            throw ZETSysException(ZETOpenBodyBuilderPrivate::tr("a face needs a surface"));
        faces.append(d->body->MakeEntity<ZETOpenFace>(surface));
    }
    d->body->domains.push_back(std::make_unique<ZETOpenSkin>(faces));
    d->highest = std::max(d->highest, 2);
}

void ZETOpenBodyBuilder::SetDimension(int dimension)
{
    d->dimension = dimension;
}

std::unique_ptr<ZETTopBody> ZETOpenBodyBuilder::Build()
{
    d->ConnectFaces();
    d->body->dimension = d->dimension.value_or(d->highest);
    std::unique_ptr<ZETTopBody> body = std::move(d->body);
    d = std::make_unique<ZETOpenBodyBuilderPrivate>();
    return body;
}

std::unique_ptr<ZETTopBody> ZETOpenBodyBuilder::MakePoint(const ZETMathPoint& point,
                                                          const ZETOpenRef<ZETOpenSurface>& surface)
{
    ZETOpenBodyBuilder builder;
    builder.AddPoints({ZETOpenComboPoint::Make(point, surface ? QList<ZETOpenRef<ZETOpenSurface>>{surface}
                                                              : QList<ZETOpenRef<ZETOpenSurface>>())});
    return builder.Build();
}

std::unique_ptr<ZETTopBody> ZETOpenBodyBuilder::MakeCurve(const ZETOpenRef<ZETOpenCurveOnSurface>& curve)
{
    ZETOpenBodyBuilder builder;
    builder.AddNet({{ZETOpenComboCurve::MakeFromImage(curve, false), false}});
    return builder.Build();
}

std::unique_ptr<ZETTopBody> ZETOpenBodyBuilder::MakePolyline(const QList<ZETMathPoint>& points, bool closed)
{
    QList<ZETMathPoint> vertices = points;
    if (closed && vertices.size() > 2 && vertices.first() != vertices.last())
        vertices.append(vertices.first());
    ZETOpenBodyBuilder builder;
    builder.AddNet({{ZETOpenComboCurve::MakePolyline(vertices), false}});
    return builder.Build();
}

std::unique_ptr<ZETTopBody> ZETOpenBodyBuilder::MakeFace(const ZETOpenRef<ZETOpenSurface>& surface)
{
    ZETOpenBodyBuilder builder;
    builder.AddSkin({surface});
    return builder.Build();
}
