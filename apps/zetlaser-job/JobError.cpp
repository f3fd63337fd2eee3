#include "JobError.h"

#include <QCoreApplication>

#include <new>

JobError JobError::OfCurrentException()
{
    const auto translate = [](const char* source) { return QCoreApplication::translate("zetlaser-job", source); };
    try {
        throw;
    } catch (const JobError& error) {
        return error;
    } catch (const std::bad_alloc&) {
        return {JobExit::Failed, translate("not enough memory")};
    } catch (const std::exception& error) {
        return {JobExit::Failed, translate("the job failed: %1").arg(QString::fromUtf8(error.what()))};
    }
}
