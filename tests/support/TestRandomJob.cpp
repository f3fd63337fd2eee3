#include "tests/support/TestRandomJob.h"

#include <QRandomGenerator>
#include <QStringList>

#include <algorithm>
#include <cmath>

using namespace Qt::Literals::StringLiterals;

namespace
{
using Job = TestRandomJob;

QString Exact(double number)
{
    return QString::number(number, 'g', 17);
}

template <typename Triple>
QString Exact(const Triple& triple)
{
    return Exact(triple.GetX()) + u',' + Exact(triple.GetY()) + u',' + Exact(triple.GetZ());
}

QString Quoted(const QString& text)
{
    return u'"' + text + u'"';
}

QString OnOff(bool value)
{
    return value ? u"on"_s : u"off"_s;
}

/*! Makes the pieces of one job. */
class Maker
{
public:
    explicit Maker(quint32 seed)
        : random(seed)
    {
    }

    bool Chance(int percent) { return int(random.bounded(100)) < percent; }
    int Count(int most) { return int(random.bounded(most + 1)); }

    QString Name()
    {
        static const QStringList words{u"P1"_s, u"Ply left"_s, u"Fl\u00fcgel"_s, u"a  b"_s,
                                       u"_"_s,  u"<&>"_s,      u"45\u00b0"_s};
        return words[int(random.bounded(int(words.size())))] + QString::number(random.bounded(100));
    }

    ZETMathPoint Place()
    {
        const auto numbers = Job::RandomNumbers(random);
        return {numbers[0], numbers[1], numbers[2]};
    }

    /*! Two unit vectors at right angles. */
    void Directions(ZETMathVector& first, ZETMathVector& second)
    {
        const double turn = random.generateDouble() * 6.28;
        const double tilt = random.generateDouble() * 3.14;
        first = {std::cos(turn) * std::cos(tilt), std::sin(turn) * std::cos(tilt), std::sin(tilt)};
        second = {-std::sin(turn), std::cos(turn), 0.0};
    }

    Job::Point Point()
    {
        Job::Point point{Place(), {}, {}, false};
        if (Chance(60)) {
            ZETMathVector unused;
            Directions(point.normal, unused);
        }
        if (Chance(15)) {
            point.offset = Place();
            point.hasOffset = true;
        }
        return point;
    }

    Job::Curve Curve()
    {
        Job::Curve curve{Name(), Chance(50), {}};
        const int points = Chance(10) ? 0 : Count(7);
        for (int i = 0; i < points; ++i)
            curve.points += Point();
        return curve;
    }

    void FillLeaf(Job::Group& group)
    {
        if (Chance(15))
            return;
        for (int i = Count(3); i > 0; --i)
            group.curves += Curve();
        if (Chance(40)) {
            for (int i = Count(4); i > 0; --i) {
                const int type = Count(5);
                group.parameters += Job::Parameter{type, (type == 4 ? u"!"_s : u""_s) + Name()};
            }
        }
        if (Chance(30)) {
            Job::Text text{Name(), Place(), {}, {}, 0.5 + random.generateDouble() * 50.0};
            Directions(text.first, text.second);
            group.texts += text;
        }
    }

    Job::Group Group(const QString& kind)
    {
        Job::Group group{kind, Name(), {}, {}, {}, {}};
        const QString inner = kind == u"layup"_s      ? u"sequence"_s
                              : kind == u"sequence"_s ? u"ply"_s
                              : kind == u"ply"_s      ? u"subply"_s
                              : kind == u"group"_s    ? u"ply"_s
                                                      : u""_s;
        const bool branch = !inner.isEmpty() && Chance(kind == u"ply"_s ? 20 : 85);
        if (branch) {
            for (int i = Count(3); i > 0; --i)
                group.groups += Group(Chance(10) && inner == u"sequence"_s ? u"ply"_s : inner);
        }
        if (group.groups.isEmpty())
            FillLeaf(group);
        return group;
    }

    QRandomGenerator random;
};

void AddText(const Job::Group& group, int depth, QString& text)
{
    const QString indent(2 * depth, u' ');
    text += indent + group.kind + u' ' + Quoted(group.name) + u" {\n"_s;
    for (const auto& child : group.groups)
        AddText(child, depth + 1, text);
    for (const auto& curve : group.curves) {
        text += indent + u"  contour { "_s + (curve.closed ? u"closed "_s : u"open "_s) + Quoted(curve.name);
        for (const auto& point : curve.points) {
            text += u' ' + Exact(point.position) + u'/' + Exact(point.normal);
            if (point.hasOffset)
                text += u'@' + Exact(point.offset);
        }
        text += u" }\n"_s;
    }
    for (const auto& parameter : group.parameters)
        text += indent + u"  parameter "_s + QString::number(parameter.type) + u' ' + Quoted(parameter.text) + u'\n';
    for (const auto& shown : group.texts)
        text += indent + u"  text "_s + Quoted(shown.text) + u' ' + Exact(shown.origin) + u' ' + Exact(shown.first) +
                u' ' + Exact(shown.second) + u' ' + Exact(shown.size) + u'\n';
    text += indent + u"}\n"_s;
}
} // namespace

TestRandomJob::TestRandomJob(quint32 seed)
{
    Maker maker(seed);
    inches = maker.Chance(30);
    normals = maker.Chance(70);
    rosetteFirst = maker.Chance(50);
    nestSequences = maker.Chance(50);
    hasAxis = maker.Chance(50);
    axisOrigin = maker.Place();
    maker.Directions(axisFirst, axisSecond);
    for (int i = maker.Count(4); i > 0; --i)
        groups += maker.Group(maker.Chance(70) ? u"layup"_s : maker.Chance(50) ? u"ply"_s : u"group"_s);
}

bool TestRandomJob::Group::HasOutput() const
{
    return !parameters.isEmpty() ||
           std::any_of(curves.begin(), curves.end(), [](const Curve& curve) { return !curve.points.isEmpty(); }) ||
           std::any_of(groups.begin(), groups.end(), [](const Group& group) { return group.HasOutput(); });
}

QString TestRandomJob::ToText() const
{
    QString text = u"units "_s + (inches ? u"inch"_s : u"mm"_s) + u"\nnormals "_s + OnOff(normals) +
                   u"\nrosettefirst "_s + OnOff(rosetteFirst) + u"\nnestsequences "_s + OnOff(nestSequences) + u'\n';
    if (hasAxis)
        text += u"axis "_s + Exact(axisOrigin) + u' ' + Exact(axisFirst) + u' ' + Exact(axisSecond) + u'\n';
    for (const auto& group : groups)
        AddText(group, 0, text);
    return text;
}

QList<double> TestRandomJob::Place(const ZETMathPoint& point) const
{
    const double scale = inches ? 1.0 / 25.4 : 1.0;
    QList<double> numbers = Turned(hasAxis ? point - axisOrigin : point - ZETMathPoint());
    for (double& number : numbers)
        number *= scale;
    return numbers;
}

QList<double> TestRandomJob::Turned(const ZETMathVector& vector) const
{
    if (!hasAxis)
        return {vector.GetX(), vector.GetY(), vector.GetZ()};
    return {vector * axisFirst, vector * axisSecond, vector * (axisFirst ^ axisSecond)};
}

QList<QList<double>> TestRandomJob::GetWrittenPoints(const Curve& curve) const
{
    QList<QList<double>> written;
    for (const auto& point : curve.points) {
        QList<double> numbers = Place(point.hasOffset ? point.offset : point.position);
        if (normals && point.HasNormal())
            numbers += Turned(point.normal);
        written += numbers;
    }
    if (curve.closed && curve.points.size() > 1)
        written += QList<double>(written.first());
    return written;
}

QList<double> TestRandomJob::RandomNumbers(QRandomGenerator& random)
{
    QList<double> numbers;
    for (int i = 0; i < 3; ++i) {
        const double size = std::pow(10.0, random.bounded(9) - 4.0); // a tenth of a micrometre to ten metres
        numbers += random.bounded(8) == 0 ? 0.0 : (random.generateDouble() * 2.0 - 1.0) * size;
    }
    return numbers;
}
