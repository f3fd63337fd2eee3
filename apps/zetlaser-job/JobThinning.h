#pragma once

#include "laser/ZETLaserOutline.h"

#include <QList>
#include <QString>
#include <QStringList>

/*! What thinning made of a ply or sub-ply, and what is drawn of it: all curves, also those of rosette, seed and extra
 *  geometry. Lengths are in mm. */
struct JobThinnedPly {
    const ZETFeatObject* feature = nullptr; //!< never null
    qint64 curves = 0;                      //!< that have points
    qint64 pointsBefore = 0;
    qint64 pointsAfter = 0;
    /*! The farthest that a removed point lies off the line that is drawn instead of it; the line ends at the points
     *  that stayed. */
    double worstDeviation = 0.0;
    /*! Of all lines, that which closes a closed curve included. */
    double length = 0.0;
};

/*! What thinning made of the tree of a job. */
class JobThinning
{
public:
    /*! Thins the tree of \a options, and looks at it before and behind that. */
    explicit JobThinning(ZETLaserOptions& options);

    /*! In tree order. */
    const QList<JobThinnedPly>& GetPlies() const { return plies; }
    /*! A warning, if a point was removed that the tolerance of \a options doesn't cover. Thinning looks at the lines
     *  between points as if they had no ends, and at points that come back to within 0.005 mm not at all, so it can
     *  take a spike or a line's end away. */
    QStringList GetWarnings(const ZETLaserOptions& options) const;

private:
    QList<JobThinnedPly> plies;
};
