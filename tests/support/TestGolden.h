#pragma once

#include "tests/support/TestJob.h"

#include <QString>
#include <QStringList>

/*! Whole outputs against expected files.
 *
 *  A case is a folder tests/golden/FORMAT/CASE with job.txt, a job as TestJob reads it, and the files that the job is
 *  expected to make: all of them, and no others. In these @FOLDER@ stands for the absolute path of the output folder.
 *  What a test makes stays in the folder FORMAT/CASE below its working folder; scripts/accept-golden.sh copies it back
 *  when it was looked at and found right. */
class TestGolden
{
public:
    explicit TestGolden(const QString& formatName);

    /*! The names of the cases. A format without cases is a fault, and ends the test program. */
    QStringList GetCases() const;

    /*! Writes the job of \a name with \a Writer into the part file \a partFile, and compares all that came of it. The
     *  result is empty if all is as expected, otherwise it tells the differences. */
    template <typename Writer>
    QString Run(const QString& name, const QString& partFile) const
    {
        const Folder folder(*this, name);
        TestJob job(ReadJob(name));
        if (!job.Write<Writer>(partFile))
            return QStringLiteral("Write() returned false");
        return Compare(name);
    }
    /*! The same with the writer of the job's file type. */
    QString Run(const QString& name, const QString& partFile) const;

private:
    /*! The empty output folder of a case, and the current folder as long as this lives. */
    class Folder
    {
    public:
        Folder(const TestGolden& golden, const QString& name);
        ~Folder();
        Q_DISABLE_COPY_MOVE(Folder)

    private:
        QString previous;
    };

    QString ReadJob(const QString& name) const;
    QString Compare(const QString& name) const;

    QString format;
    QString expectedFolder; // of the format
    QString outputFolder;
};
