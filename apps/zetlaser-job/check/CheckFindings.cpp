#include "CheckFindings.h"

#include "CheckLines.h"

#include <QHash>

#include <algorithm>
#include <cmath>
#include <map>
#include <unordered_map>

using namespace Qt::Literals::StringLiterals;

namespace
{
/*! A gap that nobody means: as wide as a drawn line at most. */
constexpr double smallGap = 1.0; // mm
constexpr double noGap = 0.001;  // mm: the ends meet, as those of a seed curve that goes round
/*! What can't be cut and laid by hand. */
constexpr double tinyArea = 100.0; // square millimetres
/*! Below this width an area is a line that goes back on itself. */
constexpr double noWidth = 0.001; // mm
/*! Normals have the length 1, as far as three decimals can tell. */
constexpr double lengthTolerance = 0.01;
/*! The cosine of the angle between neighbours beyond which a normal has changed the side. Edges of a tool turn less. */
constexpr double turned = -0.5;
/*! Side of the cells within which plies are taken to lie on each other. */
constexpr double cellSize = 10.0; // mm

using Vector = std::array<double, 3>;

double Dot(const Vector& a, const Vector& b)
{
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

QString ShowLength(double millimetres)
{
    return Check::tr("%1 mm").arg(millimetres, 0, 'f', millimetres < 1.0 ? 3 : 1);
}

class Faults
{
public:
    Faults(const CheckFile& checkFile, std::span<const CheckPly> checkPlies, double length)
        : file(checkFile)
        , plies(checkPlies)
        , unitLength(length)
    {
    }

    std::vector<CheckFinding> Find()
    {
        CheckNames();
        CheckRepeatedNames();
        CheckTexts();
        hasNormals =
            std::any_of(plies.begin(), plies.end(), [](const CheckPly& ply) { return ply.pointsWithNormal > 0; });
        CollectHolders();
        for (const CheckPly& ply : plies)
            CheckOnePly(ply);
        CheckSides();
        CheckTargets();
        std::stable_sort(findings.begin(), findings.end(),
                         [](const CheckFinding& a, const CheckFinding& b) { return a.line < b.line; });
        return std::move(findings);
    }

private:
    void Warn(int line, const QString& ply, const QString& text, bool isGuess = false)
    {
        if (findings.size() < CheckFile::maxFindings)
            findings.push_back(
                {.severity = CheckSeverity::Warning, .line = line, .ply = ply, .text = text, .isGuess = isGuess});
    }

    // Names

    void CheckNames()
    {
        CheckCharacters(file.partName, Check::tr("the part's name"), 0, {});
        for (const CheckGroup& group : file.groups) {
            if (group.kind == CheckGroup::Part)
                continue;
            const bool isPly = group.kind == CheckGroup::Ply;
            if (group.name.trimmed().isEmpty())
                Warn(group.line, {}, isPly ? Check::tr("a ply has no name") : Check::tr("a layer has no name"));
            CheckCharacters(group.name, isPly ? Check::tr("the ply's name") : Check::tr("the layer's name"), group.line,
                            isPly ? group.name : QString());
        }
    }

    void CheckCharacters(const QString& text, const QString& what, int line, const QString& ply)
    {
        if (std::any_of(text.begin(), text.end(), [](QChar c) { return c == u'\n' || c == u'\r'; }))
            Warn(line, ply, Check::tr("%1 has a line end in it: %2").arg(what, CheckLines::Show(text.toUtf8())));
        if (std::any_of(text.begin(), text.end(), [](QChar c) { return c.unicode() >= 128; }))
            Warn(line, ply,
                 Check::tr("%1 has characters beyond ASCII, which projectors may show as others: %2")
                     .arg(what, CheckLines::Show(text.toUtf8())));
    }

    /*! Plies, and layers, of one name side by side: the operator can't tell which of them is shown. */
    void CheckRepeatedNames()
    {
        std::map<std::tuple<int, int, QString>, int> lines;
        for (size_t i = 0; i < file.groups.size(); ++i) {
            const CheckGroup& group = file.groups[i];
            if (group.kind == CheckGroup::Part || group.name.isEmpty() || IsExtraGeometry(static_cast<int>(i)))
                continue;
            int& line = lines[{group.parent, group.kind, group.name}];
            if (line == 0)
                line = group.line;
            else if (group.kind == CheckGroup::Ply)
                Warn(group.line, group.name, Check::tr("has the same name as the ply in line %1").arg(line));
            else
                Warn(group.line, {},
                     Check::tr("layer %1: has the same name as the layer in line %2")
                         .arg(group.name, QString::number(line)));
        }
    }

    /*! The file tells that no curve of the group is one of a ply. */
    bool IsExtraGeometry(int group)
    {
        if (otherGroups.empty())
            CollectOtherGroups();
        return otherGroups[static_cast<size_t>(group)];
    }

    void CollectOtherGroups()
    {
        otherGroups.assign(file.groups.size(), false);
        for (const CheckPly& ply : plies) {
            const bool isOther = std::all_of(ply.curves.begin(), ply.curves.end(), [this](size_t curve) {
                return file.curves[curve].kind == CheckCurveKind::Other;
            });
            if (ply.group >= 0 && !ply.curves.empty())
                otherGroups[static_cast<size_t>(ply.group)] = isOther;
        }
    }

    void CheckTexts()
    {
        const auto check = [this](const auto& item, const QString& what) {
            CheckCharacters(item.text, what, item.line, file.GetPlyName(item.group));
        };
        for (const CheckText& text : file.texts)
            check(text, Check::tr("a text"));
        for (const CheckParameter& parameter : file.parameters) {
            if (parameter.kind != CheckParameter::Literal) // the user's own records
                check(parameter, Check::tr("a parameter's text"));
        }
    }

    // Plies and their curves

    /*! A curve that bounds a ply, as far as the file tells. */
    static bool MayBound(const CheckCurve& curve)
    {
        return curve.kind == CheckCurveKind::Boundary || curve.kind == CheckCurveKind::Unknown;
    }

    void CheckOnePly(const CheckPly& ply)
    {
        const CheckGroup* const group = ply.group < 0 ? nullptr : &file.groups[static_cast<size_t>(ply.group)];
        const QString name = group ? group->name : QString();
        if (group && IsEmpty(ply))
            Warn(group->line, name, Check::tr("the ply holds nothing"));
        double largestArea = -1.0;
        bool mayBeOpen = false;
        for (const size_t index : ply.curves) {
            const CheckCurve& curve = file.curves[index];
            if (curve.pointCount == 0)
                Warn(curve.line, name, Check::tr("a curve holds no points"));
            CheckRepeatedPoints(curve, name);
            CheckNormals(curve, name);
            if (CheckMeasures::IsClosed(file, curve)) {
                if (MayBound(curve))
                    largestArea = std::max(largestArea, CheckArea(curve, name));
            } else {
                CheckGap(curve, name);
                mayBeOpen |= curve.kind == CheckCurveKind::Unknown && curve.pointCount > 2;
            }
        }
        if (!group)
            return;
        if (largestArea < 0.0 && mayBeOpen)
            Warn(group->line, name, Check::tr("no curve of the ply is closed"));
        if (largestArea > 0.0 && largestArea < tinyArea)
            Warn(group->line, name,
                 Check::tr("the ply is tiny: it encloses %1 square millimetres").arg(largestArea, 0, 'f', 1));
        if (hasNormals && largestArea >= 0.0 && ply.pointsWithNormal == 0)
            Warn(group->line, name, Check::tr("the ply has no normals, though others have"));
    }

    /*! Where the file doesn't end a ply, an empty one may be that of the sub-plies behind it. */
    bool IsEmpty(const CheckPly& ply) const
    {
        const auto group = static_cast<size_t>(ply.group);
        return ply.curves.empty() && ply.texts + ply.parameters == 0 && file.groups[group].endLine > 0 &&
               !holdsPlies[group];
    }

    void CollectHolders()
    {
        holdsPlies.assign(file.groups.size(), false);
        for (const CheckGroup& group : file.groups) {
            if (const int holder = file.GetPly(group.parent); group.kind == CheckGroup::Ply && holder >= 0)
                holdsPlies[static_cast<size_t>(holder)] = true;
        }
    }

    /*! The area, with a finding if there is none. */
    double CheckArea(const CheckCurve& curve, const QString& ply)
    {
        const double area = CheckMeasures::GetArea(file, curve) * unitLength * unitLength;
        const double length = CheckMeasures::GetLength(file, curve) * unitLength;
        if (curve.pointCount <= 2 || area > noWidth * length)
            return area;
        Warn(curve.line, ply, Check::tr("a closed curve of %1 points encloses no area").arg(curve.pointCount));
        return 0.0;
    }

    void CheckGap(const CheckCurve& curve, const QString& ply)
    {
        if (curve.pointCount < 3 || curve.kind == CheckCurveKind::Rosette || curve.kind == CheckCurveKind::SeedCurve)
            return;
        const auto points = file.GetPoints(curve);
        const double gap = CheckMeasures::GetDistance(points.front().position, points.back().position) * unitLength;
        constexpr double share = 0.05; // of the curve's length: a short open curve is no nearly closed one
        if (curve.kind == CheckCurveKind::Boundary)
            Warn(curve.line, ply, Check::tr("the boundary isn't closed: %1 are missing").arg(ShowLength(gap)));
        else if (gap > noGap && gap <= smallGap && gap <= share * CheckMeasures::GetLength(file, curve) * unitLength)
            Warn(curve.line, ply, Check::tr("a curve is nearly closed: %1 are missing").arg(ShowLength(gap)));
    }

    void CheckRepeatedPoints(const CheckCurve& curve, const QString& ply)
    {
        const auto points = file.GetPoints(curve);
        if (points.size() < 3) // two equal points make a dot
            return;
        int first = 0;
        int count = 0;
        const auto compare = [&](const CheckPoint& a, const CheckPoint& b) {
            if (a.position != b.position)
                return;
            if (count++ == 0)
                first = b.line;
        };
        for (size_t i = 1; i < points.size(); ++i)
            compare(points[i - 1], points[i]);
        if (curve.closedByFlag.value_or(false))
            compare(points.front(), points.back());
        if (count > 0)
            Warn(first, ply,
                 Check::tr("a point stands twice in a row, %1 times in the curve of line %2")
                     .arg(count)
                     .arg(curve.line));
    }

    // Normals

    void CheckNormals(const CheckCurve& curve, const QString& ply)
    {
        const auto points = file.GetPoints(curve);
        const auto with = static_cast<size_t>(std::count_if(points.begin(), points.end(), CheckMeasures::HasNormal));
        if (with == 0)
            return;
        if (with < points.size())
            Warn(curve.line, ply, Check::tr("%1 of %2 points of a curve have a normal").arg(with).arg(points.size()));
        const CheckPoint* previous = nullptr;
        bool hasTurned = false;
        bool hasLength = true;
        for (const CheckPoint& point : points) {
            if (!CheckMeasures::HasNormal(point))
                continue;
            const double length = std::sqrt(Dot(point.normal, point.normal));
            if (hasLength && !(std::abs(length - 1.0) < lengthTolerance)) {
                hasLength = false; // told once
                Warn(point.line, ply, Check::tr("a normal has the length %1, expected 1").arg(length, 0, 'g', 3));
            }
            if (!hasTurned && previous && Dot(previous->normal, point.normal) < turned) {
                hasTurned = true;
                Warn(point.line, ply, Check::tr("the normal points to the other side than that of the point before"));
            }
            previous = &point;
        }
    }

    /*! Within a cell of space the normals of all plies should go to one side. A ply whose normals go against those of
     *  the others in nearly all cells that it shares with them lies with its back to them. */
    void CheckSides()
    {
        if (!hasNormals)
            return;
        std::unordered_map<Cell, Vector, CellHash> all;
        for (const CheckPly& ply : plies)
            AddNormals(ply, all);
        for (const CheckPly& ply : plies) {
            if (ply.group < 0)
                continue;
            std::unordered_map<Cell, Vector, CellHash> own;
            AddNormals(ply, own);
            int with = 0;
            int against = 0;
            for (const auto& [cell, sum] : own) {
                const Vector& total = all[cell];
                const Vector others{total[0] - sum[0], total[1] - sum[1], total[2] - sum[2]};
                const double sizes = std::sqrt(Dot(sum, sum) * Dot(others, others));
                constexpr double clear = 0.5; // cosine: nearer to across than to along says nothing
                if (sizes < 1e-6)
                    continue;
                const double cosine = Dot(sum, others) / sizes;
                with += cosine > clear ? 1 : 0;
                against += cosine < -clear ? 1 : 0;
            }
            constexpr int enough = 3;
            constexpr int many = 4;
            if (against >= enough && against > many * with) {
                const CheckGroup& group = file.groups[static_cast<size_t>(ply.group)];
                Warn(group.line, group.name,
                     Check::tr("the normals go to the other side than those of other plies at the same places"), true);
            }
        }
    }

    using Cell = std::array<qint64, 3>;
    struct CellHash {
        size_t operator()(const Cell& cell) const { return qHashMulti(0, cell[0], cell[1], cell[2]); }
    };

    void AddNormals(const CheckPly& ply, std::unordered_map<Cell, Vector, CellHash>& cells) const
    {
        for (const size_t index : ply.curves) {
            const CheckCurve& curve = file.curves[index];
            if (!MayBound(curve))
                continue;
            for (const CheckPoint& point : file.GetPoints(curve)) {
                Cell cell;
                if (!CheckMeasures::HasNormal(point) || !FindCell(point.position, cell))
                    continue;
                Vector& sum = cells[cell];
                for (size_t i = 0; i < sum.size(); ++i)
                    sum[i] += point.normal[i];
            }
        }
    }

    /*! False for places that no part reaches. */
    bool FindCell(const Vector& position, Cell& cell) const
    {
        constexpr double farthest = 1e9; // mm
        for (size_t i = 0; i < cell.size(); ++i) {
            const double place = position[i] * unitLength;
            if (std::abs(place) > farthest)
                return false;
            cell[i] = static_cast<qint64>(std::floor(place / cellSize));
        }
        return true;
    }

    void CheckTargets()
    {
        std::map<std::pair<int, std::array<double, 3>>, int> places;
        std::map<std::pair<int, QString>, int> names;
        QHash<QString, const CheckTarget*> firsts;
        for (const CheckTarget& target : file.targets) {
            CheckCharacters(target.name, Check::tr("a target's name"), target.line, {});
            if (const int line = Remember(places, {target.projector, target.position}, target.line); line > 0)
                WarnOfTarget(target, Check::tr("it stands where the projector's target in line %1 does").arg(line));
            if (target.name.isEmpty())
                continue;
            if (const int line = Remember(names, {target.projector, target.name}, target.line); line > 0)
                WarnOfTarget(target, Check::tr("has the same name as the projector's target in line %1").arg(line));
            const CheckTarget*& first = firsts[target.name];
            if (!first)
                first = &target;
            else if (first->projector != target.projector && first->position != target.position)
                WarnOfTarget(target,
                             Check::tr("it stands elsewhere than the target of this name in line %1").arg(first->line));
        }
    }

    /*! The line that is known of \a key, or 0 with \a line remembered. */
    template <typename Key>
    static int Remember(std::map<Key, int>& lines, const Key& key, int line)
    {
        const auto [known, isNew] = lines.try_emplace(key, line);
        return isNew ? 0 : known->second;
    }

    void WarnOfTarget(const CheckTarget& target, const QString& text)
    {
        const QString name = target.name.isEmpty() ? QString::number(target.number) : target.name;
        Warn(target.line, {}, Check::tr("target %1: %2").arg(name, text));
    }

    const CheckFile& file;
    std::span<const CheckPly> plies;
    double unitLength;
    bool hasNormals = false;
    std::vector<bool> otherGroups; //!< those of extra geometry
    std::vector<bool> holdsPlies;
    std::vector<CheckFinding> findings;
};
} // namespace

std::vector<CheckFinding> FindFaults(const CheckFile& file, std::span<const CheckPly> plies, double unitLength)
{
    return Faults(file, plies, unitLength).Find();
}
