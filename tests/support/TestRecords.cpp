#include "tests/support/TestRecords.h"

#include <cmath>

using namespace Qt::Literals::StringLiterals;

namespace
{
bool IsClose(double actual, double expected, int decimals)
{
    const double halfUnit = 0.5 * std::pow(10.0, -decimals);
    const double slack = 8e-15 * std::abs(expected) + 1e-11; // of the arithmetic ahead of the text
    return std::abs(actual - expected) <= halfUnit + slack;  // false for not-a-number
}

QString GetPointDifference(const QList<double>& actual, const QList<double>& expected, int decimals)
{
    if (actual.size() != expected.size())
        return u"%1 columns, expected %2"_s.arg(actual.size()).arg(expected.size());
    for (qsizetype column = 0; column < actual.size(); ++column) {
        if (!IsClose(actual[column], expected[column], decimals))
            return u"column %1 is %2, expected %3"_s.arg(column)
                .arg(actual[column], 0, 'g', 17)
                .arg(expected[column], 0, 'g', 17);
    }
    return QString();
}
} // namespace

QString GetDifference(const QList<TestRecord>& actual, const QList<TestRecord>& expected, int decimals)
{
    for (qsizetype i = 0; i < qMax(actual.size(), expected.size()); ++i) {
        const TestRecord a = actual.value(i);
        const TestRecord e = expected.value(i);
        if (a.head != e.head || a.points.size() != e.points.size())
            return u"record %1 is \"%2\" with %3 points, expected \"%4\" with %5"_s.arg(i)
                .arg(a.head)
                .arg(a.points.size())
                .arg(e.head)
                .arg(e.points.size());
        for (qsizetype p = 0; p < a.points.size(); ++p) {
            const QString difference = GetPointDifference(a.points[p], e.points[p], decimals);
            if (!difference.isEmpty())
                return u"record %1, point %2: "_s.arg(i).arg(p) + difference;
        }
    }
    return QString();
}
