#pragma once

#include <TopoDS_Shape.hxx>

#include <QList>
#include <QString>
#include <QStringList>

#include <utility>

/*! What a shape file holds, in mm: its shapes and the names of its entities. */
struct ZETOpenShapeContent {
    enum Format { FormatStep, FormatIges, FormatBrep };

    /*! Throws ZETSysException that begins with the path and tells what is wrong. The file is read in a process of its
     *  own, because the kernel's readers crash on some files that are damaged. */
    static ZETOpenShapeContent Read(const QString& path);

    Format format = FormatBrep;
    QString unitName;           //!< empty: the file names none
    double unit = 0.0;          //!< of the file, in mm; 0 if it declares none, and then its numbers are taken as mm
    bool hasOtherUnits = false; //!< some of the shapes are in other units
    TopoDS_Shape shape;
    /*! The names in the order of TopExp::MapShapes; may be empty. */
    QStringList faceNames;
    QStringList edgeNames;
    QStringList wireNames;
    QList<std::pair<QString, QList<int>>> bodies; //!< names of groups of faces
};
