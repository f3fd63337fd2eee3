#pragma once

#include "laser/ZETLaserOptions.h"

#include <ZETMathematics/ZETMathPoint.h>
#include <ZETMathematics/ZETMathVector.h>

#include <QList>
#include <QString>

#include <optional>

class ZETFeatObject;
class ZETLaser3DText;
class ZETLaserParameter;
class ZETMatMaterial;

/*! The laser tree as plain values, for clients: the tree itself is hidden. It holds all that a writer can write of the
 *  tree, in millimetres and model coordinates, so that a written file can be compared with it point by point. Lists are
 *  in tree order.
 *
 *  A copy of the moment at which it was asked for: thinning and reading again don't reach it. Model objects belong to
 *  the host, and each may be null. */
namespace ZETLaserOutline
{
using Source = ZETLaserOptions::ELaserSourceType;

/*! What a group of the tree stands for. */
enum class Kind {
    Root,
    Layup,
    Sequence,
    Ply,
    SubPly,
    Other //!< a group that stands for no model object
};

struct Point {
    ZETMathPoint position;
    std::optional<ZETMathVector> normal; //!< the surface normal at the position
    std::optional<ZETMathPoint> offsetPoint;

    /*! Where the point is shown and written: the offset point if there is one, otherwise the position. */
    const ZETMathPoint& GetShownPoint() const { return offsetPoint ? *offsetPoint : position; }
};

struct Curve {
    QString name;
    Source source = ZETLaserOptions::SourcePly;
    bool closed = false; //!< the first point isn't repeated for that
    QList<Point> points;
};

struct Contour {
    QString name;
    Source source = ZETLaserOptions::SourcePly; //!< not inherited by its curves
    QList<Curve> curves;
};

/*! Writers pass over texts and parameters of a group that isn't that of a ply or sub-ply with a feature. */
struct Text {
    QString name;
    Source source = ZETLaserOptions::SourcePly;
    const ZETLaser3DText* feature = nullptr;
    QString text; //!< with its macros replaced for the ply
    ZETMathPoint basePoint;
    ZETMathVector baseDirection; //!< of any length
    ZETMathVector upDirection;   //!< of any length
    double size = 0.0;           //!< height of a capital letter, in mm
};

struct Parameter {
    QString name;
    Source source = ZETLaserOptions::SourcePly;
    const ZETLaserParameter* feature = nullptr;
    int type = 0; //!< a ZETLaserParameter::ParameterType, or a value outside of it
    QString text; //!< with its macros replaced for the ply
};

/*! A node: either of groups or of contours, texts and parameters, never of both. */
struct Group {
    Kind kind = Kind::Other;
    QString name;
    const ZETFeatObject* feature = nullptr;   //!< what the group stands for
    const ZETMatMaterial* material = nullptr; //!< of a ply or sub-ply
    /*! The points of all contours below, and 1 for each parameter. Writers pass over a group that has none. */
    int pointCount = 0;

    QList<Group> groups;
    QList<Contour> contours;
    QList<Text> texts;
    QList<Parameter> parameters;
};
} // namespace ZETLaserOutline
