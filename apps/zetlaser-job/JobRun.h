#pragma once

#include "JobSettings.h"

#include <QList>
#include <QString>

/*! Reads the layup file once, makes an output of it for each of the settings (flags and settings file together), and
 *  tells the results. Throws JobError.
 *
 *  Of several outputs, one that fails doesn't stop the others: each is whole or not there, and the error at the end has
 *  the highest exit code of those that failed. Outputs that would write the same file stop all of them. */
void RunJob(const QString& layupFile, const QList<JobSettings>& outputs);
