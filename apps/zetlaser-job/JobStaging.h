#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

#include <memory>

/*! The place where a job writes: a folder of its own inside the folder of the finished files, hence on the same file
 *  system, so that moving a file over its predecessor is one step that can't fail for want of room.
 *
 *  The library doesn't tell whether its files could be opened and written, so that is found out here: before the job by
 *  looking at the folder, after it by looking at the files. Every failure is a JobError with CannotWrite.
 *
 *  Until Commit the folder of the finished files holds nothing new. The temporary folder goes with the object, at an
 *  interruption too; what a killed job left is removed by the next job in the same folder. */
class JobStaging
{
public:
    /*! The folder of \a fileName; throws if a folder, a device or the like stands in the place of the file. */
    static QString CheckFile(const QString& fileName);

    /*! Makes the temporary folder in \a folder, which must be there. */
    explicit JobStaging(const QString& folder);
    ~JobStaging();

    /*! The temporary folder, with an absolute path. */
    QString GetPath() const { return path; }
    /*! The finished place of the file \a name of the temporary folder. */
    QString GetFinalPath(const QString& name) const;
    /*! Names of the files that the job has made, sorted. */
    QStringList GetNames() const;

    /*! Writes a file that the tool itself has made. */
    void WriteFile(const QString& name, const QByteArray& content) const;
    /*! Throws unless all that was written is on the disk and the disk still takes some more. */
    void CheckWritten() const;
    /*! Throws if one of the files can't come to its place: a folder or a device stands there, or a protected file. */
    void CheckPlaces() const;

    /*! Moves the files of all \a places over, or none: where one can't be moved, those moved before it are taken back.
     *  The error names those for which that failed, too. Interruptions wait until it is done. Returns the final paths.
     */
    static QStringList Commit(const QList<const JobStaging*>& places);

    /*! While one lives, interruptions wait: for several calls of Commit that belong together. */
    class InterruptionGuard
    {
    public:
        InterruptionGuard();
        ~InterruptionGuard();
        Q_DISABLE_COPY_MOVE(InterruptionGuard)
    };

    /*! From here on SIGINT, SIGTERM and SIGHUP remove all temporary folders, say so and end the program with 128 plus
     *  the number of the signal. To be called once, before any other thread is made. */
    static void WatchForInterruption();

private:
    Q_DISABLE_COPY_MOVE(JobStaging)
    /*! \a isAlone: no other job is making its folder. */
    void RemoveLeftovers(bool isAlone) const;
    void Remove() const;
    // 0, or the error.
    int KeepPrevious(const QString& name) const;
    int MoveOver(const QString& name) const;
    bool RestorePrevious(const QString& name) const;

    QString folder;
    QString path;
    int lock = -1; //!< file descriptor that holds the lock by which a living job is told from a dead one
};
