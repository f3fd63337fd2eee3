// A file against what it has to hold: the same up to half a unit of the last decimal, and told at the first place where
// it isn't.

#include "CheckCompare.h"

#include <QTest>

#include <cmath>
#include <functional>

using namespace Qt::Literals::StringLiterals;

class TestCheckCompare : public QObject
{
    Q_OBJECT

private slots:
    void sameFilesDoNotDiffer();
    void numbersMayDifferByHalfAUnit_data();
    void numbersMayDifferByHalfAUnit();
    void everyDifferenceIsTold_data();
    void everyDifferenceIsTold();
    void whatIsLeftOpenIsNotCompared_data();
    void whatIsLeftOpenIsNotCompared();
};

namespace
{
using Change = std::function<void(CheckFile&)>;

/*! One of everything that is compared. */
CheckFile MakeFile()
{
    CheckFile file;
    file.unit = CheckFile::Millimetres;
    file.partName = u"Wing"_s;
    file.projectorCount = 1;
    file.values = {{u"KEY"_s, u"value"_s}};
    file.BeginGroup(CheckGroup::Layer, u"S"_s, 1);
    file.BeginGroup(CheckGroup::Ply, u"P"_s, 2);
    file.groups.back().number = 1;
    file.groups.back().values = {{u"MATERIAL"_s, u"Glass"_s}};
    CheckCurve& curve = file.BeginCurve(CheckCurveKind::Boundary, u"C"_s, 3);
    curve.closedByFlag = true;
    curve.attributes = {4, 0};
    file.AddPoint({1.0, 2.0, 3.0}, 4);
    CheckPoint& point = file.AddPoint({12345.678, -2.0, 3.0}, 5);
    point.hasNormal = true;
    point.normal = {0.0, 0.6, 0.8};
    CheckText& text = file.AddText(u"T"_s, 6);
    text.numbers = {7.0, 8.0, 9.0, std::nan("")};
    text.attributes = {1};
    file.AddParameter(CheckParameter::Message, u"M"_s, 7);
    file.EndGroup(8);
    file.EndGroup(9);
    CheckTarget& target = file.targets.emplace_back();
    target.name = u"TE1"_s;
    target.number = 1;
    target.position = {4.0, 5.0, 6.0};
    target.line = 10;
    return file;
}

QString Compare(const CheckFile& expected, const CheckFile& found, int decimals = 3)
{
    const auto difference = FindDifference(expected, found, decimals);
    if (!difference)
        return {};
    return u"%1: %2: %3"_s.arg(QString::number(difference->line), difference->ply, difference->text);
}
} // namespace

Q_DECLARE_METATYPE(Change)

void TestCheckCompare::sameFilesDoNotDiffer()
{
    QCOMPARE(Compare(MakeFile(), MakeFile()), QString());
    QCOMPARE(Compare(CheckFile(), CheckFile()), QString());
}

void TestCheckCompare::numbersMayDifferByHalfAUnit_data()
{
    QTest::addColumn<double>("wanted");
    QTest::addColumn<double>("held");
    QTest::addColumn<int>("decimals");
    QTest::addColumn<bool>("isSame");
    const auto row = [](const char* name, double wanted, double held, int decimals, bool isSame) {
        QTest::newRow(name) << wanted << held << decimals << isSame;
        QTest::newRow(qPrintable(name + u", negative"_s)) << -wanted << -held << decimals << isSame;
    };
    row("half a unit up", 0.0005, 0.001, 3, true);
    row("half a unit down", 0.0005, 0.0, 3, true);
    row("more than half a unit", 0.00051, 0.0, 3, false);
    row("the next decimal", 1.2344, 1.235, 3, false);
    row("half a unit of a large number", 46799.9995, 46800.0, 3, true);
    row("more of a large number", 46799.9994, 46800.0, 3, false);
    row("half a unit of six decimals", 46799.9999995, 46800.0, 6, true);
    row("more of six decimals", 46799.9999994, 46800.0, 6, false);
    row("a sign", 0.001, -0.001, 3, false);
    row("the sign of zero", 0.0, -0.0, 3, true);
}

void TestCheckCompare::numbersMayDifferByHalfAUnit()
{
    QFETCH(const double, wanted);
    QFETCH(const double, held);
    QFETCH(const int, decimals);
    QFETCH(const bool, isSame);
    const QList<std::function<double&(CheckFile&)>> numbers{
        [](CheckFile& file) -> double& { return file.points[0].position[0]; },
        [](CheckFile& file) -> double& { return file.points[1].position[2]; },
        [](CheckFile& file) -> double& { return file.points[1].normal[1]; },
        [](CheckFile& file) -> double& { return file.texts[0].numbers[2]; },
        [](CheckFile& file) -> double& { return file.targets[0].position[1]; },
    };
    for (const auto& number : numbers) {
        CheckFile expected = MakeFile();
        CheckFile found = MakeFile();
        number(expected) = wanted;
        number(found) = held;
        QCOMPARE(Compare(expected, found, decimals).isEmpty(), isSame);
    }
}

void TestCheckCompare::everyDifferenceIsTold_data()
{
    QTest::addColumn<Change>("change");
    QTest::addColumn<QString>("told");
    const auto row = [](const char* name, const Change& change, const QString& told) {
        QTest::newRow(name) << change << told;
    };
    row(
        "unit", [](CheckFile& file) { file.unit = CheckFile::Inches; }, u"0: : the unit is another one"_s);
    row(
        "name of the part", [](CheckFile& file) { file.partName = u"wing"_s; },
        u"0: : name of the part: expected \"Wing\", found \"wing\""_s);
    row(
        "projectors", [](CheckFile& file) { file.projectorCount = 2; }, u"0: : projectors: expected 1, found 2"_s);
    row(
        "value of the file", [](CheckFile& file) { file.values[0].second = u"x"_s; },
        u"0: : KEY: expected \"value\", found \"x\""_s);
    row(
        "key of the file", [](CheckFile& file) { file.values[0].first = u"x"_s; }, u"0: : \"KEY\" is missing"_s);
    row(
        "one value more", [](CheckFile& file) { file.values.emplace_back(u"X"_s, u"x"_s); },
        u"0: : \"X\" isn't in the tree"_s);
    row(
        "name of a ply", [](CheckFile& file) { file.groups[1].name = u"Q"_s; },
        u"2: Q: name: expected \"P\", found \"Q\""_s);
    row(
        "place of a ply", [](CheckFile& file) { file.groups[1].parent = -1; },
        u"2: P: place among the groups: expected 0, found -1"_s);
    row(
        "number of a ply", [](CheckFile& file) { file.groups[1].number = 2; }, u"2: P: number: expected 1, found 2"_s);
    row(
        "material of a ply", [](CheckFile& file) { file.groups[1].values[0].second = u"Carbon"_s; },
        u"2: P: MATERIAL: expected \"Glass\", found \"Carbon\""_s);
    row(
        "a ply missing", [](CheckFile& file) { file.groups.pop_back(); }, u"0: : the group \"P\" is missing"_s);
    row(
        "a ply more", [](CheckFile& file) { file.BeginGroup(CheckGroup::Ply, u"R"_s, 11); },
        u"11: : the group \"R\" isn't in the tree"_s);
    row(
        "name of a curve", [](CheckFile& file) { file.curves[0].name.clear(); },
        u"3: P: name of a curve: expected \"C\", found \"\""_s);
    row(
        "ply of a curve", [](CheckFile& file) { file.curves[0].group = 0; },
        u"3: : place of a curve: expected 1, found 0"_s);
    row(
        "an open curve", [](CheckFile& file) { file.curves[0].closedByFlag = false; },
        u"3: P: closed: expected 1, found 0"_s);
    row(
        "a point less", [](CheckFile& file) { file.curves[0].pointCount = 1; }, u"3: P: points: expected 2, found 1"_s);
    row(
        "a curve missing", [](CheckFile& file) { file.curves.clear(); }, u"0: : a curve of 2 points is missing"_s);
    row(
        "attributes of a curve", [](CheckFile& file) { file.curves[0].attributes[0] = 1; },
        u"3: P: attributes of a curve: expected 4, 0, found 1, 0"_s);
    row(
        "a point", [](CheckFile& file) { file.points[1].position[0] = 12345.6786; },
        u"5: P: X of point 2: expected 12345.6780, found 12345.6786"_s);
    row(
        "points the other way round", [](CheckFile& file) { std::swap(file.points[0], file.points[1]); },
        u"5: P: point 1 has a normal that isn't in the tree"_s);
    row(
        "a normal", [](CheckFile& file) { file.points[1].normal[2] = -0.8; },
        u"5: P: K of point 2: expected 0.8000, found -0.8000"_s);
    row(
        "a normal missing", [](CheckFile& file) { file.points[1].hasNormal = false; },
        u"5: P: the normal of point 2 is missing"_s);
    row(
        "a text", [](CheckFile& file) { file.texts[0].text = u"U"_s; }, u"6: P: text: expected \"T\", found \"U\""_s);
    row(
        "a number of a text", [](CheckFile& file) { file.texts[0].numbers[3] = 1.0; },
        u"6: P: number 4 of a text: expected nan, found 1.0000"_s);
    row(
        "numbers of a text", [](CheckFile& file) { file.texts[0].numbers.pop_back(); },
        u"6: P: numbers of a text: expected 4, found 3"_s);
    row(
        "attributes of a text", [](CheckFile& file) { file.texts[0].attributes.clear(); },
        u"6: P: attributes of a text: expected 1, found "_s);
    row(
        "order", [](CheckFile& file) { file.parameters[0].line = 2; },
        u"2: : order: expected a curve of 2 points, found the parameter \"M\""_s);
    row(
        "a parameter", [](CheckFile& file) { file.parameters[0].text = u"m"_s; },
        u"7: P: parameter: expected \"M\", found \"m\""_s);
    row(
        "type of a parameter", [](CheckFile& file) { file.parameters[0].kind = CheckParameter::Query; },
        u"7: P: type of a parameter: expected 1, found 3"_s);
    row(
        "a target", [](CheckFile& file) { file.targets[0].position[2] = 6.25; },
        u"10: : Z of a target: expected 6.0000, found 6.2500"_s);
    row(
        "name of a target", [](CheckFile& file) { file.targets[0].name = u"TE2"_s; },
        u"10: : target: expected \"TE1\", found \"TE2\""_s);
    row(
        "drift", [](CheckFile& file) { file.targets[0].isDrift = true; }, u"10: : drift: expected 0, found 1"_s);
    row(
        "number of a target", [](CheckFile& file) { file.targets[0].number = 2; },
        u"10: : number of a target: expected 1, found 2"_s);
    row(
        "projector of a target", [](CheckFile& file) { file.targets[0].projector = 2; },
        u"10: : projector of a target: expected 0, found 2"_s);
    row(
        "a target missing", [](CheckFile& file) { file.targets.clear(); }, u"0: : the target \"TE1\" is missing"_s);
}

void TestCheckCompare::everyDifferenceIsTold()
{
    QFETCH(const Change, change);
    CheckFile found = MakeFile();
    change(found);
    QTEST(Compare(MakeFile(), found), "told");
}

void TestCheckCompare::whatIsLeftOpenIsNotCompared_data()
{
    QTest::addColumn<Change>("leaveOpen");
    const auto row = [](const char* name, const Change& change) { QTest::newRow(name) << change; };
    row("unit", [](CheckFile& file) { file.unit = CheckFile::UnknownUnit; });
    row("name of the part", [](CheckFile& file) { file.partName.clear(); });
    row("values of the file", [](CheckFile& file) { file.values.clear(); });
    row("number of a ply", [](CheckFile& file) { file.groups[1].number = -1; });
    row("values of a ply", [](CheckFile& file) { file.groups[1].values.clear(); });
    row("numbers of a text", [](CheckFile& file) { file.texts[0].numbers.clear(); });
    row("attributes of a curve", [](CheckFile& file) { file.curves[0].attributes.clear(); });
    row("attributes of a text", [](CheckFile& file) { file.texts[0].attributes.clear(); });
    row("number of a target", [](CheckFile& file) { file.targets[0].number = -1; });
    row("lines", [](CheckFile& file) { file.points[0].line = file.parameters[0].line = file.groups[0].endLine = 99; });
    row("kinds", [](CheckFile& file) { file.groups[0].kind = CheckGroup::Part; });
}

void TestCheckCompare::whatIsLeftOpenIsNotCompared()
{
    QFETCH(const Change, leaveOpen);
    CheckFile expected = MakeFile();
    leaveOpen(expected);
    QCOMPARE(Compare(expected, MakeFile()), QString());
}

QTEST_APPLESS_MAIN(TestCheckCompare)
#include "TestCheckCompare.moc"
