#pragma once

#include <QList>
#include <QString>

/*! One record of a part file: a keyword with its text, and the numbers of its point lines. */
struct TestRecord {
    QString head;
    QList<QList<double>> points;
};

/*! Where two lists of records part, in one line; empty if they are the same, and every number of \a actual is within
 *  half a unit of the last of its \a decimals decimals. */
QString GetDifference(const QList<TestRecord>& actual, const QList<TestRecord>& expected, int decimals);
