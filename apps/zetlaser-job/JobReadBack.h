#pragma once

#include <QString>
#include <QStringList>

class ZETLaserOptions;

/*! Reads the files of a job back, before they are moved to their places. */
namespace JobReadBack
{
/*! Compares all files of the job with the tree of \a options, point by point, to half a unit of the last decimal.
 *  Throws JobError for the first difference: then a writer is at fault, and the files must not reach the floor. Gives
 *  one line for each thing that is doubtful in them, which the model is at fault for.
 *
 *  The files lie in \a partFolder, the tool file in \a toolFolder, which may be the same. */
QStringList Check(ZETLaserOptions& options, const QString& partFolder, const QString& toolFolder);
} // namespace JobReadBack
