#include "CheckCompare.h"

#include "CheckLines.h"

#include <QStringList>

#include <algorithm>
#include <cmath>
#include <limits>

namespace
{
QString Quote(const QString& text)
{
    return CheckLines::Show(text.toUtf8());
}

/*! Walks through two files side by side, until they differ. */
class Comparison
{
public:
    Comparison(const CheckFile& expectedFile, const CheckFile& foundFile, int decimals)
        : expected(expectedFile)
        , found(foundFile)
        , tolerance(0.5 * std::pow(10.0, -decimals))
        , shownDecimals(decimals + 1)
    {
    }

    std::optional<CheckFinding> Run()
    {
        const bool isSame = CompareFile() && CompareAll(expected.groups, found.groups, &Comparison::CompareGroup) &&
                            CompareAll(expected.curves, found.curves, &Comparison::CompareCurve) &&
                            CompareAll(expected.texts, found.texts, &Comparison::CompareText) &&
                            CompareAll(expected.parameters, found.parameters, &Comparison::CompareParameter) &&
                            CompareAll(expected.targets, found.targets, &Comparison::CompareTarget) && CompareOrder();
        return isSame ? std::nullopt : std::optional(difference);
    }

private:
    /*! Always false, so that a comparison can end with it. */
    bool Tell(int line, int group, const QString& text)
    {
        difference = {CheckSeverity::Error, line, group < 0 ? QString() : found.GetPlyName(group), text};
        return false;
    }

    bool TellExpected(int line, int group, const QString& what, const QString& wanted, const QString& held)
    {
        return Tell(line, group, Check::tr("%1: expected %2, found %3").arg(what, wanted, held));
    }

    bool CompareTexts(int line, int group, const QString& what, const QString& wanted, const QString& held)
    {
        return wanted == held || TellExpected(line, group, what, Quote(wanted), Quote(held));
    }

    template <typename Integer>
    bool CompareIntegers(int line, int group, const QString& what, Integer wanted, Integer held)
    {
        return wanted == held || TellExpected(line, group, what, QString::number(wanted), QString::number(held));
    }

    /*! Half a unit is exact in decimals alone, so the last bits of the numbers are allowed for. */
    bool IsSame(double wanted, double held) const
    {
        const double bits = 4.0 * std::numeric_limits<double>::epsilon() * std::abs(wanted);
        return std::abs(wanted - held) <= tolerance + bits || (std::isnan(wanted) && std::isnan(held));
    }

    bool TellNumber(int line, int group, const QString& what, double wanted, double held)
    {
        return TellExpected(line, group, what, QString::number(wanted, 'f', shownDecimals),
                            QString::number(held, 'f', shownDecimals));
    }

    template <typename Item>
    bool CompareAll(const std::vector<Item>& wanted, const std::vector<Item>& held,
                    bool (Comparison::*compare)(const Item&, const Item&))
    {
        for (size_t i = 0; i < wanted.size(); ++i) {
            if (i >= held.size())
                return Tell(0, -1, Check::tr("%1 is missing").arg(Describe(wanted[i])));
            if (!(this->*compare)(wanted[i], held[i]))
                return false;
        }
        return held.size() <= wanted.size() ||
               Tell(held[wanted.size()].line, -1, Check::tr("%1 isn't in the tree").arg(Describe(held[wanted.size()])));
    }

    static QString Describe(const CheckGroup& group) { return Check::tr("the group %1").arg(Quote(group.name)); }
    static QString Describe(const CheckCurve& curve) { return Check::tr("a curve of %1 points").arg(curve.pointCount); }
    static QString Describe(const CheckText& text) { return Check::tr("the text %1").arg(Quote(text.text)); }
    static QString Describe(const CheckParameter& parameter)
    {
        return Check::tr("the parameter %1").arg(Quote(parameter.text));
    }
    static QString Describe(const CheckTarget& target) { return Check::tr("the target %1").arg(Quote(target.name)); }

    bool CompareFile()
    {
        if (expected.unit != CheckFile::UnknownUnit && expected.unit != found.unit)
            return Tell(0, -1, Check::tr("the unit is another one"));
        return (expected.partName.isEmpty() ||
                CompareTexts(0, -1, Check::tr("name of the part"), expected.partName, found.partName)) &&
               CompareIntegers(0, -1, Check::tr("projectors"), expected.projectorCount, found.projectorCount) &&
               CompareValues(0, -1, expected.values, found.values);
    }

    using Values = std::vector<std::pair<QString, QString>>;

    bool CompareValues(int line, int group, const Values& wanted, const Values& held)
    {
        if (wanted.empty())
            return true;
        for (size_t i = 0; i < wanted.size(); ++i) {
            const auto& [key, value] = wanted[i];
            if (i >= held.size() || held[i].first != key)
                return Tell(line, group, Check::tr("%1 is missing").arg(Quote(key)));
            if (!CompareTexts(line, group, key, value, held[i].second))
                return false;
        }
        return held.size() == wanted.size() ||
               Tell(line, group, Check::tr("%1 isn't in the tree").arg(Quote(held[wanted.size()].first)));
    }

    bool CompareGroup(const CheckGroup& wanted, const CheckGroup& held)
    {
        const int index = static_cast<int>(&held - found.groups.data());
        return CompareTexts(held.line, index, Check::tr("name"), wanted.name, held.name) &&
               CompareIntegers(held.line, index, Check::tr("place among the groups"), wanted.parent, held.parent) &&
               (wanted.number < 0 ||
                CompareIntegers(held.line, index, Check::tr("number"), wanted.number, held.number)) &&
               CompareValues(held.line, index, wanted.values, held.values);
    }

    bool CompareCurve(const CheckCurve& wanted, const CheckCurve& held)
    {
        const bool isSame =
            CompareIntegers(held.line, held.group, Check::tr("place of a curve"), wanted.group, held.group) &&
            CompareTexts(held.line, held.group, Check::tr("name of a curve"), wanted.name, held.name) &&
            CompareIntegers(held.line, held.group, Check::tr("closed"), int(wanted.closedByFlag.value_or(false)),
                            int(held.closedByFlag.value_or(false))) &&
            CompareIntegers(held.line, held.group, Check::tr("points"), wanted.pointCount, held.pointCount) &&
            CompareAttributes(held.line, held.group, Check::tr("curve"), wanted.attributes, held.attributes);
        if (!isSame)
            return false;
        const auto wantedPoints = expected.GetPoints(wanted);
        const auto heldPoints = found.GetPoints(held);
        for (size_t i = 0; i < wantedPoints.size(); ++i) {
            if (!ComparePoint(wantedPoints[i], heldPoints[i], held.group, i))
                return false;
        }
        return true;
    }

    bool CompareAttributes(int line, int group, const QString& what, const std::vector<int>& wanted,
                           const std::vector<int>& held)
    {
        if (wanted.empty() || wanted == held)
            return true;
        const auto show = [](const std::vector<int>& attributes) {
            QStringList words;
            for (const int attribute : attributes)
                words.append(QString::number(attribute));
            return words.join(u", ");
        };
        return TellExpected(line, group, Check::tr("attributes of a %1").arg(what), show(wanted), show(held));
    }

    bool ComparePoint(const CheckPoint& wanted, const CheckPoint& held, int group, size_t index)
    {
        if (wanted.hasNormal != held.hasNormal)
            return Tell(held.line, group,
                        wanted.hasNormal ? Check::tr("the normal of point %1 is missing").arg(index + 1)
                                         : Check::tr("point %1 has a normal that isn't in the tree").arg(index + 1));
        for (size_t i = 0; i < wanted.position.size(); ++i) {
            if (!IsSame(wanted.position[i], held.position[i]))
                return TellNumber(held.line, group, NameNumber(index, "XYZ"[i]), wanted.position[i], held.position[i]);
            if (wanted.hasNormal && !IsSame(wanted.normal[i], held.normal[i]))
                return TellNumber(held.line, group, NameNumber(index, "IJK"[i]), wanted.normal[i], held.normal[i]);
        }
        return true;
    }

    static QString NameNumber(size_t point, char number)
    {
        return Check::tr("%1 of point %2").arg(QLatin1Char(number)).arg(point + 1);
    }

    bool CompareText(const CheckText& wanted, const CheckText& held)
    {
        const bool isSame =
            CompareIntegers(held.line, held.group, Check::tr("place of a text"), wanted.group, held.group) &&
            CompareTexts(held.line, held.group, Check::tr("text"), wanted.text, held.text) &&
            CompareAttributes(held.line, held.group, Check::tr("text"), wanted.attributes, held.attributes);
        if (!isSame || wanted.numbers.empty())
            return isSame;
        if (!CompareIntegers(held.line, held.group, Check::tr("numbers of a text"), wanted.numbers.size(),
                             held.numbers.size()))
            return false;
        for (size_t i = 0; i < wanted.numbers.size(); ++i) {
            if (!IsSame(wanted.numbers[i], held.numbers[i]))
                return TellNumber(held.line, held.group, Check::tr("number %1 of a text").arg(i + 1), wanted.numbers[i],
                                  held.numbers[i]);
        }
        return true;
    }

    bool CompareParameter(const CheckParameter& wanted, const CheckParameter& held)
    {
        return CompareIntegers(held.line, held.group, Check::tr("place of a parameter"), wanted.group, held.group) &&
               CompareIntegers(held.line, held.group, Check::tr("type of a parameter"), int(wanted.kind),
                               int(held.kind)) &&
               CompareTexts(held.line, held.group, Check::tr("parameter"), wanted.text, held.text);
    }

    bool CompareTarget(const CheckTarget& wanted, const CheckTarget& held)
    {
        const bool isSame =
            CompareTexts(held.line, -1, Check::tr("target"), wanted.name, held.name) &&
            CompareIntegers(held.line, -1, Check::tr("projector of a target"), wanted.projector, held.projector) &&
            CompareIntegers(held.line, -1, Check::tr("drift"), int(wanted.isDrift), int(held.isDrift)) &&
            (wanted.number < 0 ||
             CompareIntegers(held.line, -1, Check::tr("number of a target"), wanted.number, held.number));
        for (size_t i = 0; isSame && i < wanted.position.size(); ++i) {
            if (!IsSame(wanted.position[i], held.position[i]))
                return TellNumber(held.line, -1, Check::tr("%1 of a target").arg(QLatin1Char("XYZ"[i])),
                                  wanted.position[i], held.position[i]);
        }
        return isSame;
    }

    // The order among what lies in different lists, such as parameters ahead of curves or behind them.

    enum Kind { Groups, Curves, Texts, Parameters };

    struct Place {
        int line = 0;
        Kind kind = Groups;
        size_t index = 0;
    };

    template <typename Item>
    static void AddPlaces(const std::vector<Item>& items, Kind kind, std::vector<Place>& places)
    {
        for (size_t i = 0; i < items.size(); ++i)
            places.push_back({items[i].line, kind, i});
    }

    static std::vector<Place> GetOrder(const CheckFile& file)
    {
        std::vector<Place> places;
        AddPlaces(file.groups, Groups, places);
        AddPlaces(file.curves, Curves, places);
        AddPlaces(file.texts, Texts, places);
        AddPlaces(file.parameters, Parameters, places);
        std::stable_sort(places.begin(), places.end(), [](const Place& a, const Place& b) { return a.line < b.line; });
        return places;
    }

    /*! To be called when both have the same. */
    bool CompareOrder()
    {
        const std::vector<Place> wanted = GetOrder(expected);
        const std::vector<Place> held = GetOrder(found);
        for (size_t i = 0; i < wanted.size(); ++i) {
            if (wanted[i].kind != held[i].kind || wanted[i].index != held[i].index)
                return Tell(held[i].line, -1,
                            Check::tr("order: expected %1, found %2").arg(Describe(wanted[i]), Describe(held[i])));
        }
        return true;
    }

    QString Describe(const Place& place) const
    {
        switch (place.kind) {
        case Groups:
            return Describe(found.groups[place.index]);
        case Curves:
            return Describe(found.curves[place.index]);
        case Texts:
            return Describe(found.texts[place.index]);
        case Parameters:
            break;
        }
        return Describe(found.parameters[place.index]);
    }

    const CheckFile& expected;
    const CheckFile& found;
    double tolerance;
    int shownDecimals;
    CheckFinding difference;
};
} // namespace

std::optional<CheckFinding> FindDifference(const CheckFile& expected, const CheckFile& found, int decimals)
{
    return Comparison(expected, found, decimals).Run();
}
