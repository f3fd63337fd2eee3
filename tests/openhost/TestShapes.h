#pragma once

#include <TopoDS_Compound.hxx>
#include <TopoDS_Face.hxx>
#include <TopoDS_Shape.hxx>

#include <QByteArray>
#include <QList>

#include <utility>

/*! Shapes for tests, in mm, and shape files made of them by the kernel's own writers. */
namespace TestShapes
{
/*! A quarter of a cylinder of radius 100 about z, from 0 to 200 in height; its normal points outwards. */
TopoDS_Face MakeQuarter();
/*! A square from 0 to 100 in the plane z = 0, with a round hole of radius 20 in its middle; its normal is z. */
TopoDS_Face MakePlate();
TopoDS_Compound MakeCompound(const QList<TopoDS_Shape>& shapes);

/*! The kernel's writers write to standard output; from here on they don't. */
void SilenceKernel();

/*! A shape and the name that it gets. */
using Names = QList<std::pair<TopoDS_Shape, QByteArray>>;

/*! Each is false if the file isn't written. The unit is one of the kernel's words, "MM", "INCH", "M", "CM". */
bool WriteStep(const TopoDS_Shape& shape, const char* path, const char* unit = "MM");
bool WriteIges(const TopoDS_Shape& shape, const char* path, const char* unit = "MM");
bool WriteBrep(const TopoDS_Shape& shape, const char* path);
/*! Through the kernel's extended data exchange (XDE), which brings names of faces, edges and wires. */
bool WriteNamedStep(const TopoDS_Shape& shape, const char* path, const Names& names);
bool WriteNamedIges(const TopoDS_Shape& shape, const char* path, const Names& names);
} // namespace TestShapes
