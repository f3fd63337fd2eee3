#include "JobStaging.h"

#include "JobConsole.h"
#include "JobError.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMutex>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <latch>
#include <thread>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;

namespace
{
const QString folderPrefix = u".zetlaser-job-"_s;
const QString previousFolder = u".previous"_s;
const QString lockName = u".lock"_s;
constexpr qsizetype blockSize = 1 << 16; // more than one block of any file system that is in use

/*! Held while files are moved, and by the thread that ends an interrupted program. */
QRecursiveMutex& GetCommitMutex()
{
    static QRecursiveMutex mutex;
    return mutex;
}

/*! Set once files were moved; guarded by the mutex. */
bool isCommitted = false;

/*! The temporary folders that are in use; guarded by the mutex. */
QStringList& GetOpenFolders()
{
    static QStringList folders;
    return folders;
}

QString Translate(const char* text)
{
    return QCoreApplication::translate("zetlaser-job", text);
}

[[noreturn]] void FailWriting(const QString& text)
{
    throw JobError(JobExit::CannotWrite, text);
}

QString GetReason(int error)
{
    switch (error) {
    case ENOSPC:
        return Translate("no room left on the device");
    case EDQUOT:
        return Translate("the disk quota is used up");
    case EACCES:
    case EPERM:
        return Translate("no permission");
    case EROFS:
        return Translate("the file system is read-only");
    case ENAMETOOLONG:
        return Translate("the name is too long");
    default:
        return QString::fromLocal8Bit(std::strerror(error));
    }
}

/*! Closes the descriptor with itself. */
class Descriptor
{
public:
    /*! \a mode: permissions of a file that is made. */
    Descriptor(const QString& file, int flags, mode_t mode = 0600)
        : descriptor(open(QFile::encodeName(file).constData(), flags | O_CLOEXEC, mode))
    {
    }
    ~Descriptor()
    {
        if (descriptor >= 0)
            close(descriptor);
    }
    Q_DISABLE_COPY_MOVE(Descriptor)
    bool IsOpen() const { return descriptor >= 0; }
    int Get() const { return descriptor; }

private:
    int descriptor;
};

bool IsLocked(const QString& temporaryFolder)
{
    const Descriptor file(temporaryFolder + u'/' + lockName, O_RDWR);
    return file.IsOpen() && flock(file.Get(), LOCK_EX | LOCK_NB) != 0;
}

/*! Writes all of \a content: 0 or the error. */
int WriteAll(const Descriptor& file, const QByteArray& content)
{
    for (qsizetype done = 0; done < content.size();) {
        const ssize_t written =
            write(file.Get(), content.constData() + done, static_cast<std::size_t>(content.size() - done));
        if (written < 0 && errno != EINTR)
            return errno;
        done += written > 0 ? written : 0;
    }
    return 0;
}

/*! Copies a file with its permissions: 0 or the error. */
int CopyFile(const QString& from, const QString& to)
{
    const Descriptor source(from, O_RDONLY);
    struct stat status {
    };
    if (!source.IsOpen() || fstat(source.Get(), &status) != 0)
        return errno;
    const Descriptor target(to, O_WRONLY | O_CREAT | O_TRUNC);
    if (!target.IsOpen() || fchmod(target.Get(), status.st_mode & 07777) != 0)
        return errno;
    QByteArray block(blockSize, Qt::Uninitialized);
    for (;;) {
        const ssize_t count = read(source.Get(), block.data(), static_cast<std::size_t>(block.size()));
        if (count == 0)
            return fsync(target.Get()) == 0 ? 0 : errno;
        if (count < 0 && errno != EINTR)
            return errno;
        if (const int error = count > 0 ? WriteAll(target, block.first(count)) : 0)
            return error;
    }
}

/*! Writes, syncs and removes a file: 0 or the error. */
int WriteProbe(const QString& file)
{
    int error = 0;
    {
        const Descriptor probe(file, O_WRONLY | O_CREAT | O_TRUNC);
        if (!probe.IsOpen())
            return errno;
        error = WriteAll(probe, QByteArray(blockSize, '\0'));
        if (error == 0 && fsync(probe.Get()) != 0)
            error = errno;
    }
    QFile::remove(file);
    return error;
}

/*! Throws if what stands at \a place is no file that another one can take the place of. */
void CheckPlace(const QFileInfo& place)
{
    if (place.isDir())
        FailWriting(Translate("can't write %1: it is a folder").arg(place.filePath()));
    if (place.exists() && !place.isFile())
        FailWriting(Translate("can't write %1: it is no regular file").arg(place.filePath()));
}

/*! Ends the program; runs in a thread of its own, which alone receives the signals. */
[[noreturn]] void EndBySignal(int number)
{
    const QMutexLocker locker(&GetCommitMutex()); // never let go: nothing is moved any more
    JobConsole::WriteLastMessage(Translate("error"),
                                 isCommitted ? Translate("interrupted; the new files are in their places already")
                                             : Translate("interrupted; earlier files are as they were"));
    for (const QString& open : std::as_const(GetOpenFolders())) {
        // The job may be making a file at this moment, so once isn't always enough.
        for (int attempt = 0; attempt < 5 && QFileInfo::exists(open); ++attempt)
            QDir(open).removeRecursively();
    }
    _exit(static_cast<int>(JobExit::SignalBase) + number);
}
} // namespace

QString JobStaging::CheckFile(const QString& fileName)
{
    const QFileInfo file(fileName);
    if (file.fileName().isEmpty())
        FailWriting(Translate("can't write %1: it is a folder").arg(fileName));
    CheckPlace(file);
    return file.absolutePath();
}

JobStaging::JobStaging(const QString& inFolder)
    : folder(QFileInfo(inFolder).absoluteFilePath())
{
    const QFileInfo info(folder);
    if (!info.exists())
        FailWriting(Translate("can't write into the folder %1: there is no such folder").arg(folder));
    if (!info.isDir())
        FailWriting(Translate("can't write into %1: it is no folder").arg(folder));
    // One job at a time looks for leftovers and makes its folder, so that none takes a folder without a lock yet for
    // one that was left. A file system without locks has to do without.
    const Descriptor parent(folder, O_RDONLY | O_DIRECTORY);
    RemoveLeftovers(parent.IsOpen() && flock(parent.Get(), LOCK_EX) == 0);

    const QMutexLocker locker(&GetCommitMutex());
    QByteArray pattern = QFile::encodeName(folder + u'/' + folderPrefix + u"XXXXXX"_s);
    if (!mkdtemp(pattern.data()))
        FailWriting(Translate("can't write into the folder %1: %2").arg(folder, GetReason(errno)));
    path = QFile::decodeName(pattern);
    GetOpenFolders().append(path);
    lock = open(QFile::encodeName(path + u'/' + lockName).constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    if (lock < 0) {
        const int error = errno;
        Remove();
        FailWriting(Translate("can't write into the folder %1: %2").arg(folder, GetReason(error)));
    }
    flock(lock, LOCK_EX | LOCK_NB);
}

JobStaging::~JobStaging()
{
    const QMutexLocker locker(&GetCommitMutex());
    Remove();
    close(lock);
}

void JobStaging::Remove() const
{
    QDir(path).removeRecursively();
    GetOpenFolders().removeOne(path);
}

void JobStaging::RemoveLeftovers(bool isAlone) const
{
    const QStringList names = QDir(folder).entryList({folderPrefix + u'*'}, QDir::Dirs | QDir::Hidden);
    for (const QString& name : names) {
        const QString leftover = folder + u'/' + name;
        // One without a lock was left ahead of locking it or in the midst of its removal, unless another job is making
        // it.
        if (!IsLocked(leftover) && (isAlone || QFileInfo::exists(leftover + u'/' + lockName)))
            QDir(leftover).removeRecursively();
    }
}

QString JobStaging::GetFinalPath(const QString& name) const
{
    return QDir(folder).filePath(name);
}

QStringList JobStaging::GetNames() const
{
    return QDir(path).entryList(QDir::Files, QDir::Name); // without hidden ones: the lock isn't part of the job
}

void JobStaging::WriteFile(const QString& name, const QByteArray& content) const
{
    // Not by QFile, which has no reason to tell for a file that was written in part.
    const Descriptor file(path + u'/' + name, O_WRONLY | O_CREAT | O_TRUNC, 0666);
    if (const int error = file.IsOpen() ? WriteAll(file, content) : errno)
        FailWriting(Translate("can't write %1: %2").arg(GetFinalPath(name), GetReason(error)));
}

void JobStaging::CheckWritten() const
{
    rlimit limit{};
    const bool hasLimit = getrlimit(RLIMIT_FSIZE, &limit) == 0 && limit.rlim_cur != RLIM_INFINITY;
    for (const QString& name : GetNames()) {
        const QString finalPath = GetFinalPath(name);
        const Descriptor file(path + u'/' + name, O_RDONLY);
        struct stat status {
        };
        if (!file.IsOpen() || fsync(file.Get()) != 0 || fstat(file.Get(), &status) != 0)
            FailWriting(Translate("can't write %1: %2").arg(finalPath, GetReason(errno)));
        if (hasLimit && static_cast<rlim_t>(status.st_size) >= limit.rlim_cur)
            FailWriting(Translate("can't write %1: it is larger than the limit of %2 bytes")
                            .arg(finalPath, QString::number(static_cast<qulonglong>(limit.rlim_cur))));
    }
    // A device that was full while the job wrote is full still, because nothing has been freed since.
    if (const int error = WriteProbe(path + u"/.probe"_s))
        FailWriting(Translate("can't write into the folder %1: %2").arg(folder, GetReason(error)));
}

void JobStaging::CheckPlaces() const
{
    for (const QString& name : GetNames()) {
        const QFileInfo place(GetFinalPath(name));
        CheckPlace(place);
        if (place.exists() && !place.isWritable())
            FailWriting(Translate("can't write %1: it is write-protected").arg(place.filePath()));
    }
}

int JobStaging::KeepPrevious(const QString& name) const
{
    // A second name for the old file, so that its place is never empty.
    const QString kept = path + u'/' + previousFolder;
    if (mkdir(QFile::encodeName(kept).constData(), 0700) != 0 && errno != EEXIST)
        return errno;
    const QString previous = kept + u'/' + name;
    const QByteArray from = QFile::encodeName(GetFinalPath(name));
    if (link(from.constData(), QFile::encodeName(previous).constData()) == 0 || errno == ENOENT)
        return 0;
    return CopyFile(GetFinalPath(name), previous); // a file system without second names
}

int JobStaging::MoveOver(const QString& name) const
{
    if (const int error = KeepPrevious(name))
        return error;
    const QByteArray from = QFile::encodeName(path + u'/' + name);
    return std::rename(from.constData(), QFile::encodeName(GetFinalPath(name)).constData()) == 0 ? 0 : errno;
}

bool JobStaging::RestorePrevious(const QString& name) const
{
    const QByteArray previous = QFile::encodeName(path + u'/' + previousFolder + u'/' + name);
    const QByteArray place = QFile::encodeName(GetFinalPath(name));
    if (access(previous.constData(), F_OK) == 0)
        return std::rename(previous.constData(), place.constData()) == 0;
    return unlink(place.constData()) == 0;
}

QStringList JobStaging::Commit(const QList<const JobStaging*>& places)
{
    const QMutexLocker locker(&GetCommitMutex());
    struct Moved {
        const JobStaging* place;
        QString name;
    };
    QList<Moved> moved;
    QStringList finalPaths;
    for (const JobStaging* place : places) {
        for (const QString& name : place->GetNames()) {
            const QString finalPath = place->GetFinalPath(name);
            if (const int error = place->MoveOver(name)) {
                QString text = Translate("can't write %1: %2").arg(finalPath, GetReason(error));
                for (const Moved& done : std::as_const(moved)) {
                    if (!done.place->RestorePrevious(done.name))
                        text += Translate("; %1 is new and can't be put back").arg(done.place->GetFinalPath(done.name));
                }
                FailWriting(text);
            }
            moved.append({place, name});
            finalPaths.append(finalPath);
        }
    }
    isCommitted = true;
    return finalPaths;
}

JobStaging::InterruptionGuard::InterruptionGuard()
{
    GetCommitMutex().lock();
}

JobStaging::InterruptionGuard::~InterruptionGuard()
{
    GetCommitMutex().unlock();
}

void JobStaging::WatchForInterruption()
{
    std::signal(SIGXFSZ, SIG_IGN); // a write beyond the limit fails instead, and is told
    std::signal(SIGPIPE, SIG_IGN); // who doesn't read what we say gets the files all the same
    static sigset_t watched;
    sigemptyset(&watched);
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction action {
        };
        sigaction(number, nullptr, &action);
        if (action.sa_handler != SIG_IGN) // nohup and job control of shells have a say
            sigaddset(&watched, number);
    }
    pthread_sigmask(SIG_BLOCK, &watched, nullptr);
    // It holds no lock of the allocator any more when this returns: who forks then has a child that can allocate.
    static std::latch started(1);
    std::thread([] {
        int number = 0;
        started.count_down();
        while (sigwait(&watched, &number) != 0) {
        }
        EndBySignal(number);
    }).detach();
    started.wait();
}
