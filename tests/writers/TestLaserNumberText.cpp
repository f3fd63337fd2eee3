#include "writers/ZETLaserNumberText.h"

#include <QByteArray>
#include <QLocale>
#include <QString>
#include <QtTest>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>

namespace
{
constexpr int mostFastDecimals = 8;

QByteArray GetText(double value, int decimals)
{
    QByteArray text;
    ZETLaserNumberText::Append(text, value, decimals);
    return text;
}

/*! Compares with QString::number, and counts what was compared. */
class Comparison
{
public:
    bool IsEqual(double value, int decimals)
    {
        ++count;
        buffer.resize(0);
        ZETLaserNumberText::Append(buffer, value, decimals);
        const QString expected = QString::number(value, 'f', decimals);
        if (QLatin1StringView(buffer) == expected)
            return true;
        qWarning("%a with %d decimals: %s, expected %s", value, decimals, buffer.constData(), qPrintable(expected));
        return false;
    }
    /*! With all counts of decimals that formats use, and with both signs. */
    bool IsEqual(double value)
    {
        for (const int decimals : {0, 1, 2, 3, 6, mostFastDecimals}) {
            if (!IsEqual(value, decimals) || !IsEqual(-value, decimals))
                return false;
        }
        return true;
    }
    /*! The value and its nearest neighbours on both sides. */
    bool IsEqualAround(double value)
    {
        constexpr double infinity = std::numeric_limits<double>::infinity();
        return IsEqual(value) && IsEqual(std::nextafter(value, infinity)) && IsEqual(std::nextafter(value, -infinity));
    }

    int count = 0;

private:
    QByteArray buffer;
};
} // namespace

/*! The text of a number equals that of QString::number to the letter. */
class TestLaserNumberText : public QObject
{
    Q_OBJECT

private slots:
    void examplesReadAsExpected_data();
    void examplesReadAsExpected();
    void textGoesBehindWhatIsThere();
    void localeHasNoInfluence();
    void anyCountOfDecimalsIsAllowed();
    void valuesOfAPartEqual();
    void tiesEqual();
    void neighboursOfHalfUnitsEqual();
    void powersOfTwoAndTenEqual();
    void randomBitPatternsEqual();
    void subnormalsEqual();
};

void TestLaserNumberText::examplesReadAsExpected_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("decimals");
    QTest::addColumn<QByteArray>("expected");

    QTest::newRow("zero") << 0.0 << 6 << QByteArray("0.000000");
    QTest::newRow("minus zero loses its sign") << -0.0 << 6 << QByteArray("0.000000");
    QTest::newRow("tiny negative keeps its sign") << -1e-9 << 6 << QByteArray("-0.000000");
    QTest::newRow("one") << 1.0 << 6 << QByteArray("1.000000");
    QTest::newRow("inch of 25.4 mm") << 25.4 * (1.0 / 25.4) << 6 << QByteArray("1.000000");
    QTest::newRow("negative") << -1234.5678 << 3 << QByteArray("-1234.568");
    QTest::newRow("carry into the whole part") << 9.9999999 << 6 << QByteArray("10.000000");
    QTest::newRow("carry over all digits") << -999.9996 << 3 << QByteArray("-1000.000");
    QTest::newRow("tie goes away from zero") << 1.0 / 128.0 << 6 << QByteArray("0.007813");
    QTest::newRow("negative tie goes away from zero") << -3.0 / 128.0 << 6 << QByteArray("-0.023438");
    QTest::newRow("tie without decimals") << 0.5 << 0 << QByteArray("1");
    QTest::newRow("even tie without decimals") << 2.5 << 0 << QByteArray("3");
    QTest::newRow("short of a tie by its binary value") << 0.0000005 << 6 << QByteArray("0.000000");
    QTest::newRow("largest with a fraction") << 4503599627370495.5 << 6 << QByteArray("4503599627370495.500000");
    QTest::newRow("first without a fraction") << 4503599627370496.0 << 6 << QByteArray("4503599627370496.000000");
    QTest::newRow("last below eight digits") << 99999999.25 << 6 << QByteArray("99999999.250000");
    QTest::newRow("rounded to nine digits") << 99999999.9999999 << 6 << QByteArray("100000000.000000");
    QTest::newRow("huge") << 1e22 << 3 << QByteArray("10000000000000000000000.000");
    QTest::newRow("infinity") << std::numeric_limits<double>::infinity() << 6 << QByteArray("inf");
    QTest::newRow("minus infinity") << -std::numeric_limits<double>::infinity() << 6 << QByteArray("-inf");
    QTest::newRow("not a number") << std::numeric_limits<double>::quiet_NaN() << 6 << QByteArray("nan");
}

void TestLaserNumberText::examplesReadAsExpected()
{
    QFETCH(double, value);
    QFETCH(int, decimals);
    QFETCH(QByteArray, expected);
    QCOMPARE(GetText(value, decimals), expected);
    QCOMPARE(QString::number(value, 'f', decimals).toLatin1(), expected);
}

void TestLaserNumberText::textGoesBehindWhatIsThere()
{
    QByteArray buffer("X ");
    const QByteArray before = buffer;
    ZETLaserNumberText::Append(buffer, -1.5, 3);
    buffer.append(' ');
    ZETLaserNumberText::Append(buffer, 20.0, 1);
    QCOMPARE(buffer, QByteArray("X -1.500 20.0"));
    QCOMPARE(before, QByteArray("X ")); // a copy isn't written into
}

void TestLaserNumberText::localeHasNoInfluence()
{
    const QLocale previous;
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    const QByteArray text = GetText(1234567.25, 2);
    QLocale::setDefault(previous);
    QCOMPARE(text, QByteArray("1234567.25"));
}

void TestLaserNumberText::anyCountOfDecimalsIsAllowed()
{
    Comparison comparison;
    for (int decimals = -2; decimals <= 25; ++decimals) {
        for (const double value : {0.0, -0.0, 1.0 / 3.0, -123456.789, 1e-20, 0.1, 1e18})
            QVERIFY(comparison.IsEqual(value, decimals));
    }
}

void TestLaserNumberText::valuesOfAPartEqual()
{
    Comparison comparison;
    std::mt19937_64 random(1);
    std::uniform_real_distribution<double> millimetres(-20000.0, 20000.0);
    std::uniform_real_distribution<double> components(-1.0, 1.0);
    for (int i = 0; i < 800000; ++i) {
        const double length = millimetres(random);
        for (const double value : {length, length / 25.4, components(random)})
            QVERIFY(comparison.IsEqual(value, i % 2 == 0 ? 6 : 3));
    }
    QCOMPARE(comparison.count, 2400000);
}

void TestLaserNumberText::tiesEqual()
{
    Comparison comparison;
    // Odd multiples of 2^-(n+1) lie exactly between two texts of n decimals.
    for (int decimals = 0; decimals <= mostFastDecimals; ++decimals) {
        const double unit = std::ldexp(1.0, -(decimals + 1));
        for (std::int64_t multiple = -20001; multiple <= 20001; multiple += 2)
            QVERIFY(comparison.IsEqual(double(multiple) * unit, decimals));
    }
    // Those of 1/128 with all counts, far up into the range of lengths.
    for (std::int64_t multiple = 1; multiple < 3000000; multiple += 202)
        QVERIFY(comparison.IsEqual(double(multiple) / 128.0));
    QVERIFY(comparison.count > 200000);
}

void TestLaserNumberText::neighboursOfHalfUnitsEqual()
{
    Comparison comparison;
    std::mt19937_64 random(2);
    std::uniform_int_distribution<std::int64_t> counts(0, 20000000000);
    for (int i = 0; i < 10000; ++i) {
        for (const double unit : {1.0, 1e-1, 1e-3, 1e-6, 1e-9})
            QVERIFY(comparison.IsEqualAround((double(counts(random)) + 0.5) * unit));
    }
}

void TestLaserNumberText::powersOfTwoAndTenEqual()
{
    Comparison comparison;
    // Huge values are slow on both sides and all take the same way, so that fewer do.
    for (int exponent = -1080; exponent <= 1023; exponent += exponent < 80 ? 1 : 41)
        QVERIFY(comparison.IsEqualAround(std::ldexp(1.0, exponent)));
    for (int exponent = -330; exponent <= 308; exponent += exponent < 25 ? 1 : 13) {
        for (const double digits : {1.0, 5.0, 9.0, 9.5, 9.9999995})
            QVERIFY(comparison.IsEqualAround(digits * std::pow(10.0, exponent)));
    }
    QVERIFY(comparison.IsEqual(std::numeric_limits<double>::max()));
}

void TestLaserNumberText::randomBitPatternsEqual()
{
    Comparison comparison;
    std::mt19937_64 random(3);
    for (int i = 0; i < 5000; ++i) // half of them are huge or tiny, and slow on both sides
        QVERIFY(comparison.IsEqual(std::bit_cast<double>(std::uint64_t(random())), i % 10));
    // All exponents whose numbers have digits on both sides, or just miss them.
    std::uniform_int_distribution<int> exponents(-140, 70);
    std::uniform_real_distribution<double> mantissas(1.0, 2.0);
    for (int i = 0; i < 1000000; ++i) {
        const double value = std::ldexp(mantissas(random), exponents(random));
        QVERIFY(comparison.IsEqual(i % 3 == 0 ? -value : value, i % 10));
    }
}

void TestLaserNumberText::subnormalsEqual()
{
    Comparison comparison;
    std::mt19937_64 random(4);
    for (int i = 0; i < 2000; ++i)
        QVERIFY(comparison.IsEqual(std::bit_cast<double>(std::uint64_t(random()) >> 12)));
    QVERIFY(comparison.IsEqual(0.0)); // with -0.0
    QVERIFY(comparison.IsEqual(std::numeric_limits<double>::denorm_min()));
    QVERIFY(comparison.IsEqual(std::numeric_limits<double>::min()));
}

QTEST_GUILESS_MAIN(TestLaserNumberText)
#include "TestLaserNumberText.moc"
