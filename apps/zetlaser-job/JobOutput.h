#pragma once

#include "JobSettings.h"

#include "laser/ZETLaserOptions.h"

#include <QString>
#include <QStringList>

#include <memory>

class JobStaging;
class ZETCompRoot;

/*! One output of a job: what its settings ask for, from a model that is loaded already. It has a record of options and
 *  a tree of its own, because what is read depends on them; so several outputs of one model don't disturb each other.
 *
 *  The steps are called in the order of this header. Each throws JobError, and then the output has left nothing behind.
 *  The model must outlive the output. */
class JobOutput
{
public:
    /*! \a settings: flags and settings file together. */
    explicit JobOutput(const JobSettings& settings);
    ~JobOutput();

    /*! Makes the temporary folders, so that a place that can't be written is told before the model is read. */
    void PreparePlaces();
    /*! Reads the selected plies of the model and thins their points. */
    void Read(ZETCompRoot& root);
    /*! Writes all files into the temporary folders, and looks whether they are whole and can come to their places. */
    void Write();
    /*! Moves the files over: all of them or none. */
    void Commit();
    /*! Says what was written. */
    void TellResult();

private:
    Q_DISABLE_COPY_MOVE(JobOutput)
    bool IsDxf() const { return options.GetFileType() == ZETLaserOptions::FileDXF; }
    QString GetTypeName() const { return ZETLaserOptions::GetFileTypeString(options.GetFileType()); }
    QList<JobStaging*> GetPlaces() const;
    void WriteFiles();
    void WarnOfLetters() const;

    JobSettings settings;
    QString outputName;
    std::unique_ptr<JobStaging> partPlace;
    std::unique_ptr<JobStaging> toolPlace; //!< of the tool file, where it has a folder of its own
    ZETLaserOptions options;
    QStringList files; //!< final paths, once they are there
};
