#pragma once

#include <QChar>
#include <QList>
#include <QString>
#include <QStringList>

/*! A record of a CSV file. */
struct JobCsvRecord {
    int line; //!< where it begins, from 1; a value in quotes may run over several lines
    QStringList values;
};

/*! What a CSV file holds: RFC 4180, with commas or semicolons, in UTF-8 with or without a byte order mark, with line
 *  ends of any system. Blanks around a value without quotes don't count, and empty lines are no records. */
struct JobCsvFile {
    QChar separator; //!< the one that comes first in the first line
    QList<JobCsvRecord> records;

    /*! Throws JobError that tells file and line. */
    static JobCsvFile Read(const QString& file);
};
