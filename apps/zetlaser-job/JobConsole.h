#pragma once

#include <QList>
#include <QString>
#include <QStringList>

class ZETMathBoundingBox;

/*! Something that the user was told of the model or of what is written. */
struct JobMessage {
    QString severity; //!< "note", "warning" or "problem"
    QString text;
    int count = 1; //!< how often it came
};

/*! What the tool says: results on standard output, messages and progress on standard error. */
namespace JobConsole
{
/*! A line of the result. */
void WriteResult(const QString& line);
/*! A text of lines, such as that of --help. */
void WriteText(const QString& text);
/*! Throws JobError if a result could not be written. */
void RequireResultsWritten();
/*! The lines of files that were written, each with its path from the current folder if it stands below it, and its
 *  size. */
void WriteWritten(const QStringList& files);
/*! "11.7 m x 5.0 m x 0.9 m": in metres from one metre on, in mm below. */
QString DescribeSize(const ZETMathBoundingBox& box);
/*! A message: "warning: text". Lines behind the first are indented. */
void WriteMessage(const QString& severity, const QString& text);
/*! A message of a thread that ends the program: whatever another thread has to say behind it makes that thread wait. */
void WriteLastMessage(const QString& severity, const QString& text);
/*! The step that begins, on a terminal; into a pipe or a file nothing is written. */
void ShowProgress(const QString& step);
/*! Takes the progress line away. */
void EndProgress();

// Messages on the model and on what is written. Of equal ones, which come once for each ply, only the first is written
// at once.

/*! Takes the messages of the queue from here on, with their severity in words. */
void ListenToMessageQueue();
/*! Takes a warning. */
void Warn(const QString& text);
/*! Those that came so far, in the order in which they first came. */
QList<JobMessage> GetMessages();
/*! Tells how many equal messages came behind the first. Then forgets them all and empties the queue, so that what comes
 *  next begins anew. */
void TellRepeatedMessages();
/*! From here on GetMessages has those that came so far whatever is forgotten: they are on the model, hence on every
 *  output. */
void KeepMessages();
} // namespace JobConsole
