#pragma once

#include "JobCheckSurface.h"
#include "JobSettings.h"

#include "openhost/layup/ZETOpenLayupFile.h"

#include <QByteArrayView>

#include <optional>

class ZETCompMfgConfiguration;
struct CheckedFile;
struct CheckFormat;
struct JobExpectedFile;

/*! The model of a layup file, which written files are held against.
 *
 *  A file that a job with the known options writes is the same to the last decimal, and nothing more can be said of it.
 *  Options that aren't known, such as those of thinning, change points and guides of a file, but neither the order of
 *  the plies nor where their boundaries lie: that is compared then. */
class JobCheckModel
{
public:
    /*! \a flags: the layup file, and what is known of the job that wrote the files. Throws JobError. */
    explicit JobCheckModel(const JobSettings& flags);

    /*! Compares the file that \a bytes were read from as \a file with the model, and adds findings. Points may lie off
     *  by \a limit (mm). \a part is the format of the part file that it stands beside, where somebody knows it. Throws
     *  JobError. */
    void Check(CheckedFile& file, QByteArrayView bytes, double limit, const CheckFormat* part);

private:
    enum Points {
        AsWritten, //!< and all else too
        Defining,  //!< those that the model has
        Dense      //!< and more between them
    };
    struct Expected;

    QList<JobSettings> GetJobs(const CheckedFile& file, const CheckFormat* part) const;
    Expected Expect(const JobSettings& job, const CheckedFile& file, Points points);
    void Read(CheckedFile& file, QByteArrayView bytes, const Expected& expected) const;
    void CompareBoundaries(CheckedFile& file, const JobSettings& job, const Expected& written, double limit);
    void CheckTool(CheckedFile& file, const Expected& expected, double limit,
                   const std::function<bool(size_t)>& isKnown) const;

    JobSettings known;
    QList<JobSettings> outputs; //!< of the settings file, or one of all that is known
    bool isSettled;             //!< there is a settings file: all options are known
    QString typeName;           //!< of the job; empty: nobody knows
    ZETOpenLayupModel model;
    ZETCompMfgConfiguration* ownConfiguration;
    JobCheckSurface tool;
};
