#pragma once

#include <QByteArray>
#include <QString>

/*! The bytes of the file, as they stand; the test fails with a message, and the result is null, if there is no such
 *  file. */
QByteArray ReadBytes(const QString& fileName);

/*! Whether \a actualText is \a expectedText; otherwise \a difference tells, in lines, where they part. The one clock
 *  field of all formats, FILEDATE, may differ in its digits. */
bool IsSameText(const QByteArray& actualText, const QByteArray& expectedText, QString* difference);

/*! Compares two texts byte by byte, and shows the lines around the first difference. */
#define COMPARE_TEXT(actual, expected)                                                                                 \
    do {                                                                                                               \
        QString difference_;                                                                                           \
        if (!IsSameText(actual, expected, &difference_))                                                               \
            QFAIL(qUtf8Printable(difference_));                                                                        \
    } while (false)
