#pragma once

#include <QByteArray>
#include <QString>

#include <chrono>
#include <functional>

/*! Work that may crash, in a process of its own. */
namespace ZETOpenChildProcess
{
struct Result {
    enum End { Finished, Threw, Crashed, TookTooLong };

    End end = Crashed;
    QByteArray bytes; //!< what the work gave
    QString error;    //!< what it threw
};

/*! Runs \a work in a child of this process, which sees all that this one has in memory, and waits for it. What it
 *  writes to standard output and standard error is lost. \a limit is processor time. Throws ZETSysException if there
 *  can be no child. */
Result Run(const std::function<QByteArray()>& work, std::chrono::seconds limit);
} // namespace ZETOpenChildProcess
