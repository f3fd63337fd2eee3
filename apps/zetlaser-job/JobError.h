#pragma once

#include <QString>

#include <exception>

/*! What the tool tells the shell. Documented in --help; a number never changes its meaning. */
enum class JobExit : int {
    Written = 0,     //!< all files are written and checked
    NothingToDo = 1, //!< no ply is selected, or the model has none
    WrongCall = 2,   //!< the command line is wrong
    WrongInput = 3,  //!< the layup file, a shape file or the settings file is wrong or can't be read
    CannotWrite = 4, //!< no permission, no room, no such folder
    Failed = 5,      //!< the job itself failed
    SignalBase = 128 //!< interrupted: this plus the number of the signal
};

/*! Ends a job: one line for the user, and the exit code that goes with it. */
class JobError : public std::exception
{
public:
    JobError(JobExit jobExit, const QString& message)
        : exit(jobExit)
        , text(message)
        , bytes(message.toUtf8())
    {
    }
    /*! What is being caught, as an error of the job; to be called while an std::exception is handled. */
    static JobError OfCurrentException();

    JobExit GetExit() const { return exit; }
    QString GetText() const { return text; }
    const char* what() const noexcept override { return bytes.constData(); }

private:
    JobExit exit;
    QString text;
    QByteArray bytes;
};
