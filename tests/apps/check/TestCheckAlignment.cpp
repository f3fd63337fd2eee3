// What two lists have in common, in their order.

#include "CheckAlignment.h"

#include <QTest>

#include <algorithm>
#include <random>
#include <string>

class TestCheckAlignment : public QObject
{
    Q_OBJECT

private slots:
    void findsTheMostPairs();
    void longListsArePairedPlaceByPlace();
};

namespace
{
CheckPairs Align(const std::string& first, const std::string& second)
{
    return AlignInOrder(first.size(), second.size(), [&](size_t i, size_t j) { return first[i] == second[j]; });
}

/*! The plain definition. */
size_t CountMost(const std::string& first, const std::string& second)
{
    if (first.empty() || second.empty())
        return 0;
    const std::string restOfFirst = first.substr(1);
    const std::string restOfSecond = second.substr(1);
    if (first.front() == second.front())
        return 1 + CountMost(restOfFirst, restOfSecond);
    return std::max(CountMost(restOfFirst, second), CountMost(first, restOfSecond));
}

std::string MakeText(std::mt19937& random)
{
    std::string text(random() % 8, ' ');
    std::generate(text.begin(), text.end(), [&] { return static_cast<char>('a' + random() % 3); });
    return text;
}
} // namespace

void TestCheckAlignment::findsTheMostPairs()
{
    std::mt19937 random(1);
    for (int run = 0; run < 2000; ++run) {
        const std::string first = MakeText(random);
        const std::string second = MakeText(random);
        const CheckPairs pairs = Align(first, second);
        QCOMPARE(pairs.size(), CountMost(first, second));
        for (size_t i = 0; i < pairs.size(); ++i) {
            QCOMPARE(first.at(pairs[i].first), second.at(pairs[i].second));
            QVERIFY(i == 0 || (pairs[i - 1].first < pairs[i].first && pairs[i - 1].second < pairs[i].second));
        }
    }
}

void TestCheckAlignment::longListsArePairedPlaceByPlace()
{
    constexpr size_t count = 20000;
    const std::string first = "x" + std::string(count, 'a') + "x";
    const std::string second = "y" + std::string(count, 'a') + "y";
    QCOMPARE(Align(first, second).size(), count);
}

QTEST_GUILESS_MAIN(TestCheckAlignment)
#include "TestCheckAlignment.moc"
