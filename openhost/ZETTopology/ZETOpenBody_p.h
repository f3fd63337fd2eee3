#pragma once

#include "openhost/ZETGeometry/ZETOpenComboCurve.h"
#include "openhost/ZETGeometry/ZETOpenComboPoint.h"
#include "openhost/ZETGeometry/ZETOpenRef.h"
#include "openhost/ZETGeometry/ZETOpenSurface.h"

#include <ZETGeometry/ZETGeoPointOnCurve.h>
#include <ZETTopology/ZETTopBody.h>
#include <ZETTopology/ZETTopEdge.h>
#include <ZETTopology/ZETTopFace.h>
#include <ZETTopology/ZETTopNet.h>
#include <ZETTopology/ZETTopSkin.h>
#include <ZETTopology/ZETTopVertex.h>

#include <memory>
#include <vector>

// The open host's topology. A body owns its domains and entities; those hold references on their geometry.

class ZETOpenFace final : public ZETTopFace
{
    Q_OBJECT

public:
    explicit ZETOpenFace(const ZETOpenRef<ZETOpenSurface>& surfaceOfFace);

    const ZETGeoSurface* GetSurface() const override { return surface.Get(); }

    const ZETOpenRef<ZETOpenSurface> surface;
};

class ZETOpenEdge final : public ZETTopEdge
{
    Q_OBJECT

public:
    explicit ZETOpenEdge(const ZETOpenRef<ZETOpenComboCurve>& curveOfEdge);

    const ZETGeoComboCurve* GetCurve() const override { return curve.Get(); }

    const ZETOpenRef<ZETOpenComboCurve> curve;
};

class ZETOpenVertex final : public ZETTopVertex
{
    Q_OBJECT

public:
    explicit ZETOpenVertex(const ZETOpenRef<ZETOpenComboPoint>& pointOfVertex);

    /*! The point has an image on the face's surface. */
    void AddFace(const ZETTopFace* face);
    /*! The vertex lies on \a edge at \a location. A second place on the same edge is ignored. */
    void AddEdge(const ZETTopEdge* edge, const ZETGeoLocationOnCurve& location);

    const ZETGeoComboPoint* GetPoint() const override { return point.Get(); }
    const ZETGeoPointOnSurface* GetPoint(const ZETTopFace* face) const override;
    const ZETGeoPointOnCurve* GetPoint(const ZETTopEdge* edge) const override;
    QList<const ZETTopFace*> GetFaces() const override { return faces; }
    QList<const ZETTopEdge*> GetEdges() const override { return edges; }

    const ZETOpenRef<ZETOpenComboPoint> point;

private:
    QList<const ZETTopFace*> faces;
    QList<const ZETTopEdge*> edges;
    std::vector<std::unique_ptr<ZETGeoPointOnCurve>> places; //!< one for each edge
};

/*! A domain of vertices. */
class ZETOpenPointDomain final : public ZETTopDomain
{
    Q_OBJECT

public:
    explicit ZETOpenPointDomain(const QList<ZETOpenVertex*>& verticesInOrder);

    QList<const ZETTopEntity*> GetEntities(int dimension) const override;

    const QList<ZETOpenVertex*> vertices;
};

class ZETOpenNet final : public ZETTopNet
{
    Q_OBJECT

public:
    struct Side {
        ZETOpenEdge* edge = nullptr;
        bool reversed = false;
    };

    ZETOpenNet(std::vector<Side> sidesInOrder, const QList<ZETOpenVertex*>& verticesInOrder, bool isClosed);

    QList<const ZETTopEntity*> GetEntities(int dimension) const override;
    bool IsClosed() const override { return closed; }
    int GetNumEdges() const override { return int(sides.size()); }
    const ZETTopEdge* GetEdge(int position) const override;
    int GetEdgePosition(const ZETTopEdge* edge) const override;
    bool GetEdgeSense(int position) const override;

    const std::vector<Side> sides;
    const QList<ZETOpenVertex*> vertices;
    const bool closed;
};

class ZETOpenSkin final : public ZETTopSkin
{
    Q_OBJECT

public:
    explicit ZETOpenSkin(const QList<ZETOpenFace*>& facesInOrder);

    QList<const ZETTopEntity*> GetEntities(int dimension) const override;

    const QList<ZETOpenFace*> faces;
};

class ZETOpenBody final : public ZETTopBody
{
    Q_OBJECT

public:
    int GetDimension() const override { return dimension; }
    QList<const ZETTopDomain*> GetDomains() const override;
    QList<const ZETTopEntity*> GetEntities(int dimensionOfEntities) const override;

    template <typename Entity, typename... Arguments>
    Entity* MakeEntity(Arguments&&... arguments)
    {
        auto entity = std::make_unique<Entity>(std::forward<Arguments>(arguments)...);
        Entity* const result = entity.get();
        entities.push_back(std::move(entity));
        return result;
    }

    int dimension = 0;
    std::vector<std::unique_ptr<ZETTopEntity>> entities;
    std::vector<std::unique_ptr<ZETTopDomain>> domains;
};
