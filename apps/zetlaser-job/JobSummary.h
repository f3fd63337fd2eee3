#pragma once

#include "JobStaging.h"

#include <QString>

class JobInputs;
class JobSettings;
class JobThinning;
class ZETLaserOptions;

/*! The account of an output, as a JSON file: what was read, with which options, what was said, what thinning made of
 *  each ply, and what was written. schema/summary.schema.json tells its form.
 *
 *  The same input gives the same bytes: no time, no folder of this machine and no locale gets into it. Files are named
 *  relative to the folder of the summary. Lengths and coordinates are in mm and the model's own axes, and are rounded
 *  to six decimals. */
class JobSummary
{
public:
    /*! Makes the temporary folder of \a summaryFile; throws JobError if it can't be written. */
    explicit JobSummary(const QString& summaryFile);

    /*! Of the file, without its folder. */
    QString GetName() const { return name; }
    void SetName(const QString& newName) { name = newName; }
    /*! The place that the file comes to. */
    QString GetFile() const { return place.GetFinalPath(name); }
    /*! Where the file is made; it comes to its place with the other files of the job. */
    const JobStaging& GetPlace() const { return place; }

    /*! Writes the file, when all else is written to \a places and nothing more will be said. */
    void Write(const JobInputs& inputs, const JobSettings& settings, const ZETLaserOptions& options,
               const JobThinning& thinning, const QList<const JobStaging*>& places) const;

private:
    QString name;
    JobStaging place;
};
