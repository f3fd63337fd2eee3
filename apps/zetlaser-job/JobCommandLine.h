#pragma once

#include "JobSettings.h"

#include <QString>
#include <QStringList>

/*! What the user asked for on the command line. */
struct JobCommandLine {
    enum Action { Write, ShowHelp, ShowVersion, ListTypes };

    Action action = Write;
    QString layupFile;
    QString settingsFile; //!< empty: none
    JobSettings settings; //!< of the flags alone
};

/*! Reads the arguments behind the program's name. Throws JobError that tells the first fault. */
JobCommandLine ParseCommandLine(const QStringList& arguments);

/*! The text of --help and that of --list-types, with a line end behind each line. */
QString GetHelpText();
QString GetTypeListText();
