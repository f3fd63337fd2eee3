#pragma once

#include <TopoDS_Shape.hxx>
#include <TopTools_DataMapOfShapeInteger.hxx>

#include <QString>
#include <QStringList>

#include <utility>
#include <vector>

/*! What a shape file holds, in mm: its shapes and the names of its entities. */
class ZETOpenShapeContent
{
public:
    enum Format { FormatStep, FormatIges, FormatBrep };

    /*! Throws ZETSysException that begins with the path and tells what is wrong. */
    static ZETOpenShapeContent Read(const QString& path);

    /*! The name of a face, edge or wire, wherever the file places it; may be empty. */
    QString GetName(const TopoDS_Shape& shape) const;
    /*! Keeps the name of a shape; the first one counts. Larger shapes become bodies. */
    void AddName(const TopoDS_Shape& shape, const QString& name);

    Format format = FormatBrep;
    QString unitName = QStringLiteral("mm");
    double unit = 1.0; //!< of the file, in mm
    TopoDS_Shape shape;
    std::vector<std::pair<QString, TopoDS_Shape>> bodies;

private:
    TopTools_DataMapOfShapeInteger nameIndices; //!< by shape without place and orientation
    QStringList names;
};
