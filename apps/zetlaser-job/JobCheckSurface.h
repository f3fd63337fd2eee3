#pragma once

#include "openhost/layup/ZETOpenLayupFile.h"

#include <ZETMathematics/ZETMathAxis.h>

#include <QList>
#include <QString>

#include <optional>

class ZETGeoSurface;
struct CheckedFile;

/*! The tool of a layup file, which the points and normals of written files are held against. */
class JobCheckSurface
{
public:
    /*! \a axisSystem: the rosette that the files refer to; empty for the model's own axes. Throws JobError. */
    JobCheckSurface(const QString& layupFile, const QString& axisSystem);

    /*! Finds the point of \a file that lies farthest from the tool, and adds findings: for each ply with a point that
     * is farther than \a limit (mm), and for each whose normals go to the side of the tool that isn't laid on. Only
     *  boundaries count, and closed curves where the file doesn't tell what is one. */
    void Check(CheckedFile& file, double limit) const;

private:
    struct Place {
        double distance;
        double
            side; //!< cosine of the normal with that of the tool, as seen from where the plies are laid; 0: no normal
    };
    Place Measure(const ZETMathPoint& point, const std::optional<ZETMathVector>& normal) const;

    ZETOpenLayupModel model;
    ZETMathAxis axis;
    QList<const ZETGeoSurface*> surfaces;
    double direction = 0.0; //!< 1 or -1, the side that the plies are laid from; 0 if layups differ
};
