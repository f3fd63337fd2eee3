#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

class TestJob;

/*! The files that a writer made of a job. */
struct TestOutput {
    QByteArray part;
    QByteArray report;
    QByteArray targets;      //!< the file of the targets beside the part file, if the format has one
    bool hasTargets = false; //!< whether it was made
};

/*! Writes \a job with the writer of its file type into \a partFile in the working folder, and reads what came of it.
 *  \a targetsFile is where the format puts the targets. All three are removed ahead of the writing. */
TestOutput WriteOutput(TestJob& job, const QString& partFile, const QString& targetsFile = QString());
TestOutput WriteOutput(const QString& jobText, const QString& partFile, const QString& targetsFile = QString());

/*! What stands in the report of a 3D job between its head and its foot. */
QByteArray ReportBody(const QByteArray& report);

/*! The messages in the queue, each as its type, a blank and its text. */
QStringList QueuedMessages();
