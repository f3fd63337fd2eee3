#include "openhost/ZETGeometry/ZETOpenChildProcess_p.h"

#include <ZETSystem/ZETSysException.h>

#include <QCoreApplication>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <new>

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{
using Result = ZETOpenChildProcess::Result;

[[noreturn]] void FailWithErrno()
{
    throw ZETSysException(QCoreApplication::translate("ZETOpenChildProcess", "no process can be started: %1")
                              .arg(QString::fromLocal8Bit(std::strerror(errno))));
}

/*! One end of a pipe. */
class PipeEnd
{
public:
    explicit PipeEnd(int number)
        : descriptor(number)
    {
    }
    ~PipeEnd() { Close(); }
    Q_DISABLE_COPY_MOVE(PipeEnd)

    void Close()
    {
        if (descriptor >= 0)
            close(descriptor);
        descriptor = -1;
    }
    bool Write(const char* data, qint64 size) const
    {
        while (size > 0) {
            const ssize_t written = write(descriptor, data, std::size_t(size));
            if (written < 0 && errno == EINTR)
                continue;
            if (written <= 0)
                return false;
            data += written;
            size -= written;
        }
        return true;
    }
    QByteArray ReadAll() const
    {
        QByteArray all;
        char block[1 << 16];
        for (;;) {
            const ssize_t count = read(descriptor, block, sizeof block);
            if (count > 0)
                all.append(block, count);
            else if (count == 0 || errno != EINTR)
                return all;
        }
    }

private:
    int descriptor;
};

// An answer is one byte that tells its kind, its bytes, and their number once more: that is missing where it is cut
// off.

void Answer(const PipeEnd& pipe, Result::End end, const QByteArray& bytes)
{
    const char kind = char(end);
    const qint64 size = bytes.size();
    pipe.Write(&kind, 1) && pipe.Write(bytes.constData(), size) &&
        pipe.Write(reinterpret_cast<const char*>(&size), sizeof size);
}

/*! False if the answer isn't whole. */
bool TakeAnswer(const QByteArray& answer, Result& result)
{
    qint64 size = 0;
    constexpr qsizetype frame = 1 + qsizetype(sizeof size);
    if (answer.size() < frame)
        return false;
    std::memcpy(&size, answer.constEnd() - sizeof size, sizeof size);
    if (size != answer.size() - frame)
        return false;
    result.end = Result::End(answer[0]);
    result.bytes = answer.mid(1, size);
    return true;
}

/*! How many times its processor time a child may take by the clock: it waits for nothing, so this is for one that
 *  inherited a lock that nobody opens. */
constexpr unsigned waitingFactor = 10;

void LimitChild(pid_t parent, std::chrono::seconds limit)
{
    // It ends with its parent, however that ends.
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != parent)
        _exit(1);
    // What the parent does about faults is no use here: the fault itself is the answer.
    sigset_t faults;
    sigemptyset(&faults);
    for (const int fault : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT, SIGXCPU, SIGALRM}) {
        std::signal(fault, SIG_DFL);
        sigaddset(&faults, fault);
    }
    sigprocmask(SIG_UNBLOCK, &faults, nullptr);
    const rlimit noCore = {0, 0};
    setrlimit(RLIMIT_CORE, &noCore);
    rlimit time = {};
    getrlimit(RLIMIT_CPU, &time);
    time.rlim_cur = std::min(rlim_t(limit.count()), time.rlim_max);
    setrlimit(RLIMIT_CPU, &time);
    alarm(waitingFactor * unsigned(limit.count()));
    const int null = open("/dev/null", O_RDWR);
    for (const int standard : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        dup2(null, standard);
}

[[noreturn]] void BeChild(const PipeEnd& pipe, const std::function<QByteArray()>& work)
{
    try {
        Answer(pipe, Result::Finished, work());
    } catch (const ZETSysException& exception) {
        Answer(pipe, Result::Threw, exception.GetMessage().toUtf8());
    } catch (const std::bad_alloc&) {
        Answer(pipe, Result::Threw, QCoreApplication::translate("ZETOpenChildProcess", "not enough memory").toUtf8());
    } catch (...) {
    }
    _exit(0); // nothing of the parent's is flushed or destroyed twice
}
} // namespace

Result ZETOpenChildProcess::Run(const std::function<QByteArray()>& work, std::chrono::seconds limit)
{
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0)
        FailWithErrno();
    PipeEnd reading(ends[0]);
    PipeEnd writing(ends[1]);
    const pid_t parent = getpid();
    const pid_t child = fork();
    if (child < 0)
        FailWithErrno();
    if (child == 0) {
        reading.Close();
        LimitChild(parent, limit);
        BeChild(writing, work);
    }
    writing.Close();
    const QByteArray answer = reading.ReadAll();
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    Result result;
    if (TakeAnswer(answer, result))
        result.error = result.end == Result::Threw ? QString::fromUtf8(result.bytes) : QString();
    else if (WIFSIGNALED(status) && (WTERMSIG(status) == SIGXCPU || WTERMSIG(status) == SIGALRM))
        result.end = Result::TookTooLong;
    return result;
}
