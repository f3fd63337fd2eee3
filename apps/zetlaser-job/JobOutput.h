#pragma once

#include "JobSettings.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <memory>

class JobInputs;
class JobStaging;
class JobSummary;
class ZETCompMfgConfiguration;
class ZETCompRoot;
class ZETLaserOptions;

/*! One output of a job: what its settings ask for, from a model that is loaded already. It has a record of options and
 *  a tree of its own, because what is read depends on them; so several outputs of one model don't disturb each other.
 *
 *  The steps are called in the order of this header. Each throws JobError, and then the output leaves nothing behind
 *  when it goes. The model must outlive the output. */
class JobOutput
{
public:
    /*! \a settings: flags and settings file together. */
    explicit JobOutput(const JobSettings& settings);
    ~JobOutput();

    /*! The file as the settings name it, or the type where they name none; for messages. */
    QString GetName() const;

    /*! Makes the temporary folders, so that a place that can't be written is told before the model is read. */
    void PreparePlaces();
    /*! Fills the options from \a root, and puts the macros of the file name in. The active configuration of \a root is
     *  then that of this output. */
    void SetUp(ZETCompRoot& root);
    /*! Path of the part file; none where files aren't asked for. */
    QStringList GetPartFile() const;
    /*! Reads the selected plies, thins their points, writes all files into the temporary folders, and looks whether
     *  they are whole, hold what the tree holds and can come to their places. The active configuration is that of
     *  this output again. The summary, where one is asked for, tells of \a inputs. */
    void Make(const JobInputs& inputs);
    /*! Final paths of all files that Make has written. */
    QStringList GetFiles() const;
    /*! Moves the files over: all of them or none. */
    void Commit();
    /*! Says what was written. */
    void TellResult() const;

private:
    Q_DISABLE_COPY_MOVE(JobOutput)
    QString GetTypeName() const;
    QList<const JobStaging*> GetPlaces() const;
    void WarnOfExtension() const;
    void Write();
    void WriteFiles();
    void NameFinalToolFolder() const;
    void CheckWhole() const;
    void ReadBack() const;
    void DescribeResult();

    JobSettings settings;
    QString fileName; //!< of the part file; with macros until SetUp
    std::unique_ptr<JobStaging> partPlace;
    std::unique_ptr<JobStaging> toolPlace; //!< of the tool file, where it has a folder of its own
    std::unique_ptr<JobSummary> summary;   //!< null if none is asked for
    ZETCompRoot* root = nullptr;
    ZETCompMfgConfiguration* configuration = nullptr;
    std::unique_ptr<ZETLaserOptions> options; //!< with the tree, hence from SetUp to the end of Make only
    QStringList files;                        //!< that were moved over
    QStringList result;                       //!< lines about what is in them
};
