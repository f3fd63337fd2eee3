#include "writers/ZETLaserOutputFile.h"

#include <cerrno>
#include <cstring>

ZETLaserOutputFile::ZETLaserOutputFile(Faults& jobFaults, const QString& name)
    : QFile(name)
    , faults(jobFaults)
{
}

ZETLaserOutputFile::~ZETLaserOutputFile()
{
    ZETLaserOutputFile::close();
}

bool ZETLaserOutputFile::open(OpenMode mode)
{
    const bool isOpened = QFile::open(mode);
    if (!isOpened)
        NoteFault(errorString());
    return isOpened;
}

void ZETLaserOutputFile::close()
{
    if (!isOpen())
        return;
    errno = 0;
    if (!flush())
        NoteFault(GetReasonOfWrite());
    QFile::close();
    if (error() != NoError)
        NoteFault(errorString());
}

qint64 ZETLaserOutputFile::writeData(const char* data, qint64 size)
{
    // Looked at here, because Qt forgets the error of a write with the next one that succeeds.
    errno = 0;
    const qint64 written = QFile::writeData(data, size);
    if (written != size)
        NoteFault(GetReasonOfWrite());
    return written;
}

QString ZETLaserOutputFile::GetReasonOfWrite() const
{
    // Qt keeps no reason where a part could be written ahead of the fault.
    return errno != 0 ? QString::fromLocal8Bit(std::strerror(errno)) : errorString();
}

void ZETLaserOutputFile::NoteFault(const QString& reason)
{
    if (!faults.contains(fileName()))
        faults.insert(fileName(), reason);
}
