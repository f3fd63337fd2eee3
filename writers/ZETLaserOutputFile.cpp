#include "writers/ZETLaserOutputFile.h"

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
        NoteFault();
    return isOpened;
}

void ZETLaserOutputFile::close()
{
    if (!isOpen())
        return;
    if (!flush())
        NoteFault();
    QFile::close();
    if (error() != NoError)
        NoteFault();
}

qint64 ZETLaserOutputFile::writeData(const char* data, qint64 size)
{
    // Looked at here, because Qt forgets the error of a write with the next one that succeeds.
    const qint64 written = QFile::writeData(data, size);
    if (written != size)
        NoteFault();
    return written;
}

void ZETLaserOutputFile::NoteFault()
{
    if (!faults.contains(fileName()))
        faults.insert(fileName(), errorString());
}
