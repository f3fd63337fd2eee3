#pragma once

#include "openhost/ZETGeometry/ZETOpenCurveOnSurface_p.h"
#include "openhost/ZETGeometry/ZETOpenShapeFile.h"
#include "openhost/ZETGeometry/ZETOpenShapeReader_p.h"

#include <TopoDS_Edge.hxx>
#include <TopoDS_Wire.hxx>
#include <TopTools_IndexedMapOfShape.hxx>

#include <QCoreApplication>

#include <map>

/*! ZETOpenShapeFile.cpp holds how faces and curves are found and made, ZETOpenShapeFileParts.cpp what is told of them.
 */
class ZETOpenShapeFilePrivate
{
    Q_DECLARE_TR_FUNCTIONS(ZETOpenShapeFile)

public:
    using Segments = ZETOpenCurveOnSurfacePrivate::Segments;
    using SurfaceRef = ZETOpenRef<ZETOpenSurface>;

    /*! The shapes of one kind, in order, and their names. */
    struct Shapes {
        TopTools_IndexedMapOfShape map;
        QStringList names;

        int GetCount() const { return map.Extent(); }
        bool Has(int index) const { return index >= 0 && index < GetCount(); }
        const TopoDS_Shape& Get(int index) const { return map(index + 1); }
        QList<int> Find(const QString& name) const;
        QStringList GetDistinctNames() const;
    };

    [[noreturn]] void Fail(const QString& text) const;
    double GetFactor(const ZETOpenShapeContent& content, std::optional<double> scale) const;
    void SetShapes(const ZETOpenShapeContent& content, double factor);
    QList<int> FindFaces(const QString& name) const;
    QString ListNames(const QStringList& names) const;
    QList<TopoDS_Edge> FindEdges(const QString& name) const;
    void CheckReach(const TopoDS_Shape& part) const;
    double GetLength(const TopoDS_Edge& edge) const;

    Segments MakeSegments(const TopoDS_Edge& edge, const SurfaceRef& surface, double& distance) const;
    std::shared_ptr<const ZETOpenSurfaceSegment> MakeOwnSegment(const TopoDS_Edge& edge,
                                                                const ZETOpenSurface& surface) const;
    ZETOpenRef<ZETOpenCurveOnSurface> MakeCurve(const QList<TopoDS_Edge>& edges, const SurfaceRef& surface,
                                                const QString& name) const;
    QList<TopoDS_Edge> GetEdgesInOrder(const TopoDS_Wire& wire) const;

    QString path;
    ZETOpenShapeContent::Format format = ZETOpenShapeContent::FormatBrep;
    QString unitName;
    double unit = 1.0;
    Shapes faces;
    Shapes edges;
    Shapes wires;
    QList<std::pair<QString, QList<int>>> bodies;       //!< names of groups of faces
    std::map<int, ZETOpenRef<ZETOpenSurface>> surfaces; //!< that were asked for
};
