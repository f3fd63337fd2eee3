#pragma once

#include "tests/support/TestRandomJob.h"
#include "tests/support/TestRecords.h"

#include <QByteArray>
#include <QList>
#include <QString>

#include <functional>

/*! The record of \a line: in its head a # for each number with exactly that many \a decimals, and the numbers as one
 *  point if there are any. */
TestRecord ReadLine(QString line, int decimals);

/*! One output format as tests know it: how its part file is read, and what it must hold for a random job. Both stand on
 *  the layout of the format alone, and use nothing of the writers.
 *
 *  A record is one line of a text format, or one tag or text of XML, as ReadLine() makes it. So names, keywords, counts
 *  and blanks are compared to the letter, and numbers within half a unit of their last decimal. */
struct MakeFormat {
    using Expect = std::function<QList<TestRecord>(const TestRandomJob& job)>;
    using Read = QList<TestRecord> (*)(const QByteArray& file, int decimals, QString* fault);

    const char* name;
    int fileType;
    int outputType; //!< 0 is 3D, 2 is nesting
    const char* partFile;
    int decimals;
    Expect expect;
    Read read;

    /*! All text formats: each make, and both outputs where they differ. */
    static QList<MakeFormat> GetAll();

    /*! The text of \a job for this format. */
    QString ToText(const TestRandomJob& job) const;
};
