#pragma once

#include "JobSettings.h"

#include <QString>

/*! Reads the layup file, writes the job and tells its result. The settings are complete: flags and settings file.
 *  Throws JobError. */
void RunJob(const QString& layupFile, const JobSettings& settings);
