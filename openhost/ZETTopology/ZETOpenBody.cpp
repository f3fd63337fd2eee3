#include "openhost/ZETTopology/ZETOpenBody_p.h"

// ---- what the host declares

ZETTopEntity::ZETTopEntity() = default;
ZETTopEntity::~ZETTopEntity() = default;
ZETTopVertex::~ZETTopVertex() = default;
ZETTopEdge::~ZETTopEdge() = default;
ZETTopFace::~ZETTopFace() = default;
ZETTopDomain::ZETTopDomain() = default;
ZETTopDomain::~ZETTopDomain() = default;
ZETTopNet::~ZETTopNet() = default;
ZETTopSkin::~ZETTopSkin() = default;
ZETTopBody::ZETTopBody() = default;
ZETTopBody::~ZETTopBody() = default;

// ---- entities

ZETOpenFace::ZETOpenFace(const ZETOpenRef<ZETOpenSurface>& surfaceOfFace)
    : surface(surfaceOfFace)
{
}

ZETOpenEdge::ZETOpenEdge(const ZETOpenRef<ZETOpenComboCurve>& curveOfEdge)
    : curve(curveOfEdge)
{
}

ZETOpenVertex::ZETOpenVertex(const ZETOpenRef<ZETOpenComboPoint>& pointOfVertex)
    : point(pointOfVertex)
{
}

void ZETOpenVertex::AddFace(const ZETTopFace* face)
{
    faces.append(face);
}

void ZETOpenVertex::AddEdge(const ZETTopEdge* edge, const ZETGeoLocationOnCurve& location)
{
    if (edges.contains(edge))
        return;
    edges.append(edge);
    places.push_back(std::make_unique<ZETGeoPointOnCurve>(location));
}

const ZETGeoPointOnSurface* ZETOpenVertex::GetPoint(const ZETTopFace* face) const
{
    return faces.contains(face) ? point->GetPoint(face->GetSurface()) : nullptr;
}

const ZETGeoPointOnCurve* ZETOpenVertex::GetPoint(const ZETTopEdge* edge) const
{
    const qsizetype index = edges.indexOf(edge);
    return index < 0 ? nullptr : places[std::size_t(index)].get();
}

// ---- domains

ZETOpenPointDomain::ZETOpenPointDomain(const QList<ZETOpenVertex*>& verticesInOrder)
    : vertices(verticesInOrder)
{
}

QList<const ZETTopEntity*> ZETOpenPointDomain::GetEntities(int dimension) const
{
    return dimension == 0 ? QList<const ZETTopEntity*>(vertices.begin(), vertices.end()) : QList<const ZETTopEntity*>();
}

ZETOpenNet::ZETOpenNet(std::vector<Side> sidesInOrder, const QList<ZETOpenVertex*>& verticesInOrder, bool isClosed)
    : sides(std::move(sidesInOrder))
    , vertices(verticesInOrder)
    , closed(isClosed)
{
}

QList<const ZETTopEntity*> ZETOpenNet::GetEntities(int dimension) const
{
    if (dimension == 0)
        return QList<const ZETTopEntity*>(vertices.begin(), vertices.end());
    QList<const ZETTopEntity*> found;
    if (dimension == 1) {
        for (const Side& side : sides)
            found.append(side.edge);
    }
    return found;
}

const ZETTopEdge* ZETOpenNet::GetEdge(int position) const
{
    return position >= 0 && position < GetNumEdges() ? sides[std::size_t(position)].edge : nullptr;
}

int ZETOpenNet::GetEdgePosition(const ZETTopEdge* edge) const
{
    for (int i = 0; i < GetNumEdges(); ++i) {
        if (sides[std::size_t(i)].edge == edge)
            return i;
    }
    return -1;
}

bool ZETOpenNet::GetEdgeSense(int position) const
{
    return position >= 0 && position < GetNumEdges() && sides[std::size_t(position)].reversed;
}

ZETOpenSkin::ZETOpenSkin(const QList<ZETOpenFace*>& facesInOrder)
    : faces(facesInOrder)
{
}

QList<const ZETTopEntity*> ZETOpenSkin::GetEntities(int dimension) const
{
    return dimension == 2 ? QList<const ZETTopEntity*>(faces.begin(), faces.end()) : QList<const ZETTopEntity*>();
}

// ---- the body

QList<const ZETTopDomain*> ZETOpenBody::GetDomains() const
{
    QList<const ZETTopDomain*> list;
    for (const auto& domain : domains)
        list.append(domain.get());
    return list;
}

QList<const ZETTopEntity*> ZETOpenBody::GetEntities(int dimensionOfEntities) const
{
    QList<const ZETTopEntity*> list;
    for (const auto& domain : domains)
        list.append(domain->GetEntities(dimensionOfEntities));
    return list;
}
