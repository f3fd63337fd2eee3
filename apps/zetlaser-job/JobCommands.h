#pragma once

#include "JobCommand.h"

/*! The table of all commands. */
namespace JobCommands
{
/*! All commands; the one without a name is the first. */
const QList<JobCommand>& GetAll();
/*! The names, but for the command that has none. */
const QStringList& GetNames();
/*! The command of that name, else the one without a name. */
const JobCommand& GetCalled(const QString& word);
/*! Runs the command that the arguments behind the program's name call. Gives the exit code; throws JobError. */
int Run(const QStringList& arguments);
} // namespace JobCommands
