#include "JobTargets.h"

#include "features/ZETLaserProjector.h"
#include "features/ZETLaserTarget.h"
#include "laser/ZETLaserOptions.h"

#include <ZETComposites/ZETCompRoot.h>
#include <ZETMathematics/ZETMathLine.h>

#include <QCoreApplication>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace
{
constexpr double samePlace = 1.0; //!< mm: less than a target's own size
constexpr int fewestTargets = 4;  //!< three give a position, the fourth tells whether it is right
/*! Least width of the targets in relation to their spread. Who stands half the spread off the line is moved by ten
 *  times what the target farthest off the line is wrong, if it lies a twentieth off. */
constexpr double leastWidth = 0.05;

QString Translate(const char* text)
{
    return QCoreApplication::translate("zetlaser-job", text);
}

bool HasTargets(ZETLaserOptions::EOutputFileType type)
{
    switch (type) {
    case ZETLaserOptions::FileDXF:
    case ZETLaserOptions::FileAPT:
    case ZETLaserOptions::FileAPT_2:
    case ZETLaserOptions::FileAPT_SL:
    case ZETLaserOptions::FileQuilmonPartData:
        return false;
    default:
        return true;
    }
}

const JobTarget* FindAt(const QList<JobTarget>& targets, const ZETMathPoint& place)
{
    const auto found = std::find_if(targets.begin(), targets.end(), [&](const JobTarget& target) {
        return target.place.GetDistanceTo(place) < samePlace;
    });
    return found == targets.end() ? nullptr : &*found;
}

void MeasureSpread(JobProjector& projector)
{
    ZETMathLine line;
    for (const JobTarget& from : projector.targets) {
        for (const JobTarget& to : projector.targets) {
            const double distance = from.place.GetDistanceTo(to.place);
            if (distance <= projector.spread)
                continue;
            projector.spread = distance;
            projector.spreadFrom = from.name;
            projector.spreadTo = to.name;
            line.SetOrigin(from.place);
            line.SetVector(to.place - from.place);
        }
    }
    if (projector.spread > 0.0) {
        for (const JobTarget& target : projector.targets)
            projector.width = std::max(projector.width, line.GetDistanceTo(target.place));
    }
}

JobProjector MakeProjector(const QString& name, const QList<ZETLaserTarget*>& targets)
{
    JobProjector projector;
    projector.name = name;
    for (const ZETLaserTarget* target : targets) {
        if (target && !FindAt(projector.targets, target->GetCoordinates()))
            projector.targets.append({target->GetLabel(), target->GetCoordinates(), target->IsDrift()});
    }
    MeasureSpread(projector);
    return projector;
}

QList<ZETLaserTarget*> GetAllTargets(const ZETCompRoot& root)
{
    QList<ZETLaserTarget*> targets;
    for (ZETFeatObject* child : root.GetAllChildren()) {
        if (auto* target = qobject_cast<ZETLaserTarget*>(child))
            targets.append(target);
    }
    return targets;
}

QStringList FindCommon(const JobProjector& one, const JobProjector& other)
{
    QStringList names;
    for (const JobTarget& target : one.targets) {
        if (FindAt(other.targets, target.place))
            names.append(target.name);
    }
    return names;
}

ZETMathPoint GetMiddle(const JobProjector& projector)
{
    ZETMathVector sum;
    for (const JobTarget& target : projector.targets)
        sum = sum + (target.place - ZETMathPoint());
    return ZETMathPoint() + sum * (1.0 / static_cast<double>(projector.targets.size()));
}

double GetDistance(const JobProjector& one, const JobProjector& other)
{
    return GetMiddle(one).GetDistanceTo(GetMiddle(other));
}

bool Shares(const JobProjector& one, const JobProjector& other)
{
    return std::any_of(one.shared.begin(), one.shared.end(),
                       [&](const JobSharedTargets& shared) { return shared.projector == other.name; });
}

QString GetTitle(const JobProjector& projector)
{
    return projector.name.isEmpty() ? Translate("the model, which has no projectors,")
                                    : Translate("the projector \"%1\"").arg(projector.name);
}

/*! In mm, for people. */
QString GetLength(double length)
{
    return QString::number(length, 'f', 1);
}

QString CountTargets(const JobProjector& projector)
{
    const auto count = projector.targets.size();
    return count == 0   ? Translate("no targets")
           : count == 1 ? Translate("1 target")
                        : Translate("%1 targets").arg(count);
}

bool IsOnLine(const JobProjector& projector)
{
    return projector.targets.size() > 2 && projector.width < leastWidth * projector.spread;
}

QString DescribeLine(const JobProjector& projector)
{
    return Translate("%1 has its targets on one line: none is farther than %2 mm off the line from \"%3\" to \"%4\", "
                     "which is %5 mm long")
        .arg(GetTitle(projector), GetLength(projector.width), projector.spreadFrom, projector.spreadTo,
             GetLength(projector.spread));
}
} // namespace

JobTargets::JobTargets(const ZETLaserOptions& options)
    : areWritten(HasTargets(options.GetFileType()))
{
    for (const ZETLaserProjector* projector : options.GetProjectors()) {
        if (projector)
            projectors.append(MakeProjector(projector->GetLabel(), projector->GetTargets()));
    }
    if (projectors.isEmpty() && options.GetCompRoot())
        projectors.append(MakeProjector(QString(), GetAllTargets(*options.GetCompRoot())));
    FindShared();
}

void JobTargets::FindShared()
{
    for (JobProjector& projector : projectors) {
        for (const JobProjector& other : std::as_const(projectors)) {
            const QStringList names = FindCommon(projector, other);
            if (&projector != &other && !names.isEmpty())
                projector.shared.append({other.name, names});
        }
    }
}

bool JobTargets::AreNeighbours(const JobProjector& one, const JobProjector& other) const
{
    const double distance = GetDistance(one, other);
    return std::none_of(projectors.begin(), projectors.end(), [&](const JobProjector& third) {
        return !third.targets.isEmpty() && GetDistance(one, third) < distance && GetDistance(other, third) < distance;
    });
}

QStringList JobTargets::GetWarnings() const
{
    QStringList warnings;
    if (!areWritten)
        return warnings;
    for (const JobProjector& projector : projectors) {
        if (projector.targets.size() < fewestTargets)
            warnings.append(Translate("%1 has %2, expected at least %3: three give a position, a fourth tells whether "
                                      "it is right")
                                .arg(GetTitle(projector), CountTargets(projector), QString::number(fewestTargets)));
        if (IsOnLine(projector))
            warnings.append(DescribeLine(projector));
    }
    for (auto one = projectors.begin(); one != projectors.end(); ++one) {
        for (auto other = one + 1; other != projectors.end(); ++other) {
            if (!one->targets.isEmpty() && !other->targets.isEmpty() && !Shares(*one, *other) &&
                AreNeighbours(*one, *other))
                warnings.append(Translate("the projectors \"%1\" and \"%2\" are neighbours and share no target: what "
                                          "they draw may not meet")
                                    .arg(one->name, other->name));
        }
    }
    return warnings;
}

QStringList JobTargets::GetLines() const
{
    QStringList lines;
    if (!areWritten)
        return lines;
    for (const JobProjector& projector : projectors) {
        QString line =
            Translate("projector %1: %2")
                .arg(projector.name.isEmpty() ? Translate("(all targets)") : projector.name, CountTargets(projector));
        if (projector.spread > 0.0)
            line += Translate(", spread %1 mm x %2 mm").arg(GetLength(projector.spread), GetLength(projector.width));
        for (const JobSharedTargets& shared : projector.shared)
            line += Translate(", %1 shared with %2").arg(QString::number(shared.targets.size()), shared.projector);
        lines.append(line);
    }
    return lines;
}
