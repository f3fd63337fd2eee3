// Loaded ahead of a program (LD_PRELOAD), lets one of its calls to the system go wrong, as ZETLASER_FAULT says:
// "rename 3 16" fails the third rename with error 16, "write 0 28" fails each write with error 28, and with a negative
// number, as in "rename 3 -9", the program gets signal 9 ahead of its third rename. "alter 0 57" changes one bit of
// byte 57 in all that is written to files, as a worn out stick may: a digit becomes another one.

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdlib>
#include <sstream>
#include <string>

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <unistd.h>

namespace
{
struct Fault {
    std::string call;
    int number = -1;
    int effect = 0;
};

const Fault& GetFault()
{
    static const Fault fault = [] {
        Fault read;
        if (const char* text = std::getenv("ZETLASER_FAULT"))
            std::istringstream(text) >> read.call >> read.number >> read.effect;
        return read;
    }();
    return fault;
}

/*! Counts a call; whether it fails, with errno set then. */
bool Fails(const char* call)
{
    static std::atomic<int> count = 0;
    const Fault& fault = GetFault();
    if (fault.call != call)
        return false;
    const int number = ++count;
    if (fault.number != 0 && fault.number != number)
        return false;
    if (fault.effect < 0) {
        kill(getpid(), -fault.effect);
        return false;
    }
    errno = fault.effect;
    return true;
}

template <typename Function>
Function GetNext(const char* name)
{
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

using Open = int (*)(const char*, int, ...);
using OneName = int (*)(const char*);
using TwoNames = int (*)(const char*, const char*);

int OpenNext(const char* name, const char* path, int flags, mode_t mode)
{
    if ((flags & O_CREAT) != 0 && Fails("create"))
        return -1;
    return GetNext<Open>(name)(path, flags, mode);
}

mode_t TakeMode(int flags, va_list arguments)
{
    return (flags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0;
}
} // namespace

#define FAULTY extern "C" __attribute__((visibility("default")))

FAULTY int open(const char* path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = TakeMode(flags, arguments);
    va_end(arguments);
    return OpenNext("open", path, flags, mode);
}

FAULTY int open64(const char* path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = TakeMode(flags, arguments);
    va_end(arguments);
    return OpenNext("open64", path, flags, mode);
}

FAULTY ssize_t write(int file, const void* bytes, size_t count)
{
    if (file > STDERR_FILENO && Fails("write"))
        return -1;
    const auto next = GetNext<ssize_t (*)(int, const void*, size_t)>("write");
    const Fault& fault = GetFault();
    if (file <= STDERR_FILENO || fault.call != "alter" || count <= static_cast<size_t>(fault.effect))
        return next(file, bytes, count);
    std::string altered(static_cast<const char*>(bytes), count);
    altered[static_cast<size_t>(fault.effect)] ^= 1;
    return next(file, altered.data(), count);
}

FAULTY int fsync(int file)
{
    return Fails("fsync") ? -1 : GetNext<int (*)(int)>("fsync")(file);
}

FAULTY int rename(const char* from, const char* to) noexcept
{
    return Fails("rename") ? -1 : GetNext<TwoNames>("rename")(from, to);
}

FAULTY int link(const char* from, const char* to) noexcept
{
    return Fails("link") ? -1 : GetNext<TwoNames>("link")(from, to);
}

FAULTY int unlink(const char* path) noexcept
{
    return Fails("unlink") ? -1 : GetNext<OneName>("unlink")(path);
}

FAULTY int mkdir(const char* path, mode_t mode) noexcept
{
    return Fails("mkdir") ? -1 : GetNext<int (*)(const char*, mode_t)>("mkdir")(path, mode);
}

FAULTY char* mkdtemp(char* path) noexcept
{
    return Fails("mkdir") ? nullptr : GetNext<char* (*)(char*)>("mkdtemp")(path);
}
