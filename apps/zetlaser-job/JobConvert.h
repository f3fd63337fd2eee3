#pragma once

#include "JobLayupText.h"

#include <QString>

/*! What makes a layup file of a ply list. */
struct JobConvertOptions {
    QString plyList;     //!< a CSV file
    QString toolFile;    //!< STEP, IGES or BREP
    QString output;      //!< the layup file
    bool isForced;       //!< the output may be there already
    JobLayupFrame frame; //!< but the path of the tool file
};

/*! Makes the layup file and says what is in it. It is written when it has been read back as a job reads it, and all of
 *  it or nothing. Throws JobError; faults of the list are told with their lines, all of them. */
void RunConvert(const JobConvertOptions& options);
