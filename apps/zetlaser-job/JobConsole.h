#pragma once

#include <QString>
#include <QStringList>

class ZETMathBoundingBox;

/*! What the tool says: results on standard output, messages and progress on standard error. */
namespace JobConsole
{
/*! A line of the result. */
void WriteResult(const QString& line);
/*! The lines of files that were written, each with its path from the current folder if it stands below it, and its
 *  size. */
void WriteWritten(const QStringList& files);
/*! "11.7 m x 5.0 m x 0.9 m": in metres from one metre on, in mm below. */
QString DescribeSize(const ZETMathBoundingBox& box);
/*! A message: "warning: text". Lines behind the first are indented. */
void WriteMessage(const QString& severity, const QString& text);
/*! The step that begins, on a terminal; into a pipe or a file nothing is written. */
void ShowProgress(const QString& step);
/*! Takes the progress line away. */
void EndProgress();
/*! Sends messages of the queue to WriteMessage, with their severity in words. Of equal ones, which come once for each
 *  ply, only the first is written at once. */
void ListenToMessageQueue();
/*! Tells how many equal messages came behind the first. Then forgets them all and empties the queue, so that what comes
 *  next begins anew. */
void TellRepeatedMessages();
} // namespace JobConsole
