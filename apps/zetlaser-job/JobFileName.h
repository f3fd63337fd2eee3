#pragma once

#include <QString>

class ZETLaserOptions;

/*! The file name that \a pattern, a file name with macros such as "%PART%-%LAYUP%.ply", gives for the selected plies.
 *
 *  A file is one for all of its plies, so a macro has to give all of them the same text. Characters that a file system
 *  refuses in the text of a macro become underscores. Throws JobError. */
QString GetFileName(const ZETLaserOptions& options, const QString& pattern);
