#pragma once

#include "openhost/ZETGeometry/ZETOpenRef.h"

#include <ZETHostGlobal.h>
#include <ZETMathematics/ZETMathBoundingBox.h>

#include <QList>
#include <QString>
#include <QStringList>

#include <memory>
#include <optional>
#include <utility>

class ZETOpenComboCurve;
class ZETOpenCurveOnSurface;
class ZETOpenShapeFilePrivate;
class ZETOpenSurface;

/*! The shapes of a STEP, IGES or BREP file. What is taken out of it lives on without it.
 *
 *  Everything is in mm: lengths are converted from the unit that the file declares, or, with a scale, multiplied by the
 *  scale as they stand in the file, whatever it declares. A BREP file can't declare a unit and counts as mm; a STEP
 *  file that declares none needs a scale. Names are those of the file's entities; faces, edges and wires of no name are
 *  reached by their index, in the file's order. */
class ZETHOST_EXPORT ZETOpenShapeFile
{
public:
    /*! Reads the file, whose kind is told by its content. \a scale: mm a file unit. Throws ZETSysException that tells
     *  what is wrong: no such file, no shape file, a file that ends too early, no shapes in it. */
    explicit ZETOpenShapeFile(const QString& path, std::optional<double> scale = std::nullopt);
    ~ZETOpenShapeFile();

    QString GetPath() const;
    /*! "STEP", "IGES" or "BREP". */
    QString GetFormat() const;
    /*! The declared unit of length as the file names it, "mm" for BREP; and what it is in mm. Empty and 0 if the file
     *  declares none. */
    QString GetUnitName() const;
    double GetUnitInMillimetres() const;

    int GetNumFaces() const;
    QString GetFaceName(int index) const;
    /*! Face \a index, from 0. Two calls give the same surface. Throws ZETSysException if there is none. */
    ZETOpenRef<ZETOpenSurface> GetFace(int index) const;
    /*! The face called \a name; a name that stands for several faces (a body) is refused unless it has one face. Throws
     *  ZETSysException that tells which names there are. */
    ZETOpenRef<ZETOpenSurface> GetFace(const QString& name) const;
    /*! The only face of the file; throws ZETSysException if there are more or none. */
    ZETOpenRef<ZETOpenSurface> GetSingleFace() const;

    /*! Edges and wires: the boundaries of faces as well as those that stand alone. */
    int GetNumEdges() const;
    QString GetEdgeName(int index) const;
    int GetNumWires() const;
    QString GetWireName(int index) const;
    /*! All names of faces, or of edges and wires, each once, in the file's order. */
    QStringList GetFaceNames() const;
    QStringList GetCurveNames() const;

    /*! What a face, edge or wire is, for people who have to choose one. */
    struct Part {
        QString name;
        QString kind;           //!< "plane", "line" and so on; of a wire "closed" or "open"
        ZETMathBoundingBox box; //!< of a face, in mm
        double length = 0.0;    //!< of an edge or a wire, in mm
        int numEdges = 0;       //!< of a wire
        QList<int> faces;       //!< that an edge or a wire bounds
        QString fault;          //!< why it can't be used; empty if it can
    };
    QList<Part> DescribeFaces() const;
    QList<Part> DescribeEdges() const;
    QList<Part> DescribeWires() const;
    /*! Groups of faces that have a name, such as solids and products, with their faces. */
    QList<std::pair<QString, QList<int>>> GetBodies() const;

    /*! An edge, or all edges of a wire in order of travel, as a curve on \a surface: one segment for each edge that
     *  bounds this face of the file, its own curve in the face's parameters; any other edge is projected, in as many
     *  segments as that takes, and the curve tells how far it was away. Throws ZETSysException for an unknown name or
     *  index, and where nothing can be projected. */
    ZETOpenRef<ZETOpenCurveOnSurface> GetEdge(int index, const ZETOpenRef<ZETOpenSurface>& surface) const;
    ZETOpenRef<ZETOpenCurveOnSurface> GetWire(int index, const ZETOpenRef<ZETOpenSurface>& surface) const;
    ZETOpenRef<ZETOpenCurveOnSurface> GetCurve(const QString& name, const ZETOpenRef<ZETOpenSurface>& surface) const;
    /*! The edges of that name as polylines in space, which leave them by at most \a deflection. */
    QList<ZETOpenRef<ZETOpenComboCurve>> GetPolylines(const QString& name, double deflection) const;

private:
    Q_DISABLE_COPY_MOVE(ZETOpenShapeFile)
    std::unique_ptr<ZETOpenShapeFilePrivate> d;
};
