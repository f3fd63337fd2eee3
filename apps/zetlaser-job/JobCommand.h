#pragma once

#include "JobSettings.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

/*! A word of the command line that is no option, such as the layup file. */
struct JobArgument {
    enum Count { One, Optional, OneOrMore }; //!< but One stands for the last argument alone

    QString placeholder;       //!< "LAYUP"
    QString noun;              //!< "layup file", for messages
    QStringList suffixes = {}; //!< of the files that are meant; none: any
    bool isCommand = false;    //!< the name of a command is meant, and no file
    Count count = One;
};

/*! What a user called for: the values of the options, by key, and the arguments. */
struct JobCall {
    JobSettings settings; //!< of the flags alone
    QStringList arguments;
    /*! The text that an option such as --help asks for; where there is one, the command isn't run. */
    std::optional<QString> answer;
};

/*! An exit code as it stands in the documents. */
struct JobExitCode {
    QString code; //!< "0", or "128 + N"
    QString meaning;

    bool operator==(const JobExitCode& other) const = default;
};

/*! A call by example, as it stands in --help and in the manual page. */
struct JobExample {
    QString arguments; //!< behind the program's and the command's name
    QString purpose;
};

/*! One command of the tool: the row that its parsing, its --help and its documents are made of. */
struct JobCommand {
    QString name;        //!< empty: the command of a call that begins with no command's name
    QString purpose;     //!< one sentence, for the list of commands
    QStringList usage;   //!< each way to call it, behind the program's and the command's name
    QString description; //!< a paragraph under the usage
    QList<JobArgument> arguments;
    QList<JobSetting> options; //!< but --help, which each command has
    /*! Taken as well, and told by the --help of the command that has them as its own. */
    QList<JobSetting> sharedOptions = {};
    QString notes = {}; //!< a paragraph behind the options
    QList<JobExample> examples = {};
    QList<JobExitCode> exitCodes = {};
    bool isDrawing = false; //!< needs a QGuiApplication
    /*! Gives the exit code; throws JobError. */
    std::function<int(const JobCall&)> run = {};

    /*! "zetlaser-job preview" */
    QString GetCall() const { return (QLatin1String("zetlaser-job ") + name).trimmed(); }
    /*! Its own options and those shared; where both have a key, its own is meant. */
    QList<JobSetting> GetAllOptions() const;
};
