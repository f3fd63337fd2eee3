#pragma once

#include <ZETMathematics/ZETMathPoint.h>

#include <QList>
#include <QString>
#include <QStringList>

class ZETLaserOptions;

/*! A target as one projector has it. */
struct JobTarget {
    QString name;
    ZETMathPoint place; //!< in mm and model coordinates
    bool isDrift;
};

/*! The targets that two projectors have in common. */
struct JobSharedTargets {
    QString projector; //!< the other one
    QStringList targets;
};

/*! One projector of a job. */
struct JobProjector {
    QString name;
    QList<JobTarget> targets; //!< one for each place: of targets closer than a millimetre the first
    double spread = 0.0;      //!< the longest line from one target to another, in mm
    double width = 0.0;       //!< the farthest that a target lies off this line, in mm
    QString spreadFrom;       //!< the ends of this line, by name
    QString spreadTo;
    QList<JobSharedTargets> shared; //!< with projectors that have targets in common with this one
};

/*! Whether the targets of a job let its projectors be aligned, and aligned with one another. */
class JobTargets
{
public:
    /*! Looks at the projectors of \a options and, if there are none, at all targets of the model as those of one, which
     *  has no name: that is what is written. */
    explicit JobTargets(const ZETLaserOptions& options);

    const QList<JobProjector>& GetProjectors() const { return projectors; }
    /*! What is wrong, each in one line; nothing for a type of file that has no targets. */
    QStringList GetWarnings() const;
    /*! A line for each projector; none for a type of file that has no targets. */
    QStringList GetLines() const;

private:
    void FindShared();
    /*! Neighbours are two projectors if no third one is nearer to both than they are to one another, from the middle of
     *  the targets of one to that of the other. In a row only those side by side are neighbours, in a grid those that
     *  share a side of it, and two alone always are, so that nobody has to say what near means. */
    bool AreNeighbours(const JobProjector& one, const JobProjector& other) const;

    bool areWritten;
    QList<JobProjector> projectors;
};
