#pragma once

#include <ZETMathematics/ZETMathAxis.h>

#include <QList>

#include <functional>
#include <optional>

class ZETCompRoot;
class ZETGeoSurface;
struct CheckedFile;

/*! The tool of a model, which the points and normals of written files are held against. */
class JobCheckSurface
{
public:
    /*! The model must outlive it. */
    explicit JobCheckSurface(const ZETCompRoot& root);

    /*! No layup has a tool surface. */
    bool IsEmpty() const { return surfaces.isEmpty(); }

    /*! Finds the point of \a file that lies farthest from the tool. \a axis is the axis system that the file was
     * written in. Only boundaries count, and closed curves where nobody knows what is one.
     *
     *  Adds findings for plies that \a isKnown, by their place in the file, has no better knowledge of: for each with a
     *  point that is farther off than \a limit (mm), and for each whose normals go to the side that no layup is laid
     *  on. */
    void Check(CheckedFile& file, const ZETMathAxis& axis, double limit,
               const std::function<bool(size_t)>& isKnown) const;

private:
    struct Place {
        double distance;
        double
            side; //!< cosine of the normal with that of the tool, as seen from where the plies are laid; 0: no normal
    };
    Place Measure(const ZETMathPoint& point, const std::optional<ZETMathVector>& normal) const;

    QList<const ZETGeoSurface*> surfaces;
    double direction = 0.0; //!< 1 or -1, the side that the plies are laid from; 0 if layups differ
};
