#pragma once

#include "JobPreviewCommandLine.h"

/*! Reads the layup file, and writes the page and the pictures. The settings of the job are complete: flags and settings
 *  file. Needs a QGuiApplication. Throws JobError. */
void RunPreview(const JobPreviewCommandLine& commandLine, const JobSettings& settings);
