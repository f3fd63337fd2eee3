#pragma once

#include "check/CheckFile.h"
#include "check/CheckLines.h"
#include "laser/ZETLaserOutline.h"

#include <QList>
#include <QString>

class ZETLaserOptions;

/*! What a file that a job writes has to hold, worked out from the tree, the options and the model by what the format is
 *  described as: without the writers, so that a fault of theirs is told and not repeated.
 *
 *  Names, texts and numbers are as exact as they are known: the comparison allows for the decimals of the file. What
 *  the tree has no part in, such as the places of labels in DXF, is left open. */
struct JobExpectedFile {
    QString name; //!< without the folder
    QString type; //!< of the format that reads it back
    int decimals = 6;
    bool isTool = false;     //!< of the tool file, which may have a folder of its own
    bool isOptional = false; //!< it may be missing
    CheckFile content = {};
};

/*! All files of the job but the report. \a root is the tree; the targets come from the model, as the format takes them.
 */
QList<JobExpectedFile> GetExpectedFiles(const ZETLaserOptions& options, const ZETLaserOutline::Group& root);

/*! The names and texts of the tree that a reader of lines has to know (CheckKnownTexts), as they stand in the file. */
CheckKnownTexts GetKnownTexts(const ZETLaserOptions& options, const ZETLaserOutline::Group& root);
