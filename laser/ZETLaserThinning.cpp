#include "laser/ZETLaserThinning.h"

#include "laser/ZETLaserPoint.h"

#include <ZETMathematics/ZETMathLine.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace
{
/*! A chord shorter than this is no line: whatever lies between its ends counts as straight. */
constexpr double degenerateChord = 0.005;

/*! Beyond these magnitudes squares could overflow or vanish, and nothing is taken for granted. */
constexpr double largestSquare = 1e100;
constexpr double smallestTolerance = 1e-100;

/*! What comparing squares instead of lengths can err by, with a wide margin. */
constexpr double squareMargin = 1e-12;
/*! What rounding can do to a distance, for each millimetre between anchor and point: several dozen roundings. */
constexpr double roundingMargin = 256.0 * std::numeric_limits<double>::epsilon();
/*! What rounding can do to the comparison of two leans. */
constexpr double leanMargin = 16.0 * std::numeric_limits<double>::epsilon();

/*! A chord that leans further than this (tangent) away from the reference is measured plainly. */
constexpr double largestLean = 1.0;
/*! A chord that leans further than this is worth a new reference. */
constexpr double uneasyLean = 0.25;
/*! A point that leans further than this away from the reference stays out of the nets. */
constexpr double largestNettedLean = 1e3;

/*! How much of the room for a smaller disc is used. The rest makes the disc last until points are that much farther
 *  away, so that along a straight run it seldom changes. */
constexpr double discShrinkage = 0.9;

/*! So many points between are measured for each chord before the nets are made for the rest of the run: most runs of a
 *  coarse curve end before that, and would pay for nets in vain. */
constexpr int measuredRun = 8;

constexpr double unbounded = std::numeric_limits<double>::infinity();

/*! A place in the plane at distance 1 in front of the anchor, which stands for the direction of a line. */
struct Lean {
    double x;
    double y;
};

/*! A point as seen from the anchor: its offset, and where that is in the frame of the reference direction. */
struct Sight {
    double dx;
    double dy;
    double dz;
    double square; //!< of the distance to the anchor
    double across = 0.0;
    double upwards = 0.0;
    double height = 0.0; //!< along the reference

    /*! What a margin for rounding leaves of \a tolerance. */
    double GetRoom(double tolerance) const
    {
        return tolerance - roundingMargin * (std::abs(across) + std::abs(upwards) + std::abs(height));
    }
    /*! Square of the distance to the line of \a lean, measured across the reference: never less than to the line. */
    double GetSquareTo(const Lean& lean) const
    {
        const double x = across - lean.x * height;
        const double y = upwards - lean.y * height;
        return x * x + y * y;
    }
    Lean GetLean() const { return {across / height, upwards / height}; }
};

/*! The leans inside a convex polygon with fixed normals: for each pair of opposite normals the strictest bounds that
 *  came in. It is kept inside all discs that came in, so that a lean in the polygon lies in every disc. */
class Polygon
{
public:
    Polygon()
    {
        lower.fill(-unbounded);
        upper.fill(unbounded);
    }

    /*! Keeps what lies in the disc too. */
    void Cut(const Lean& centre, double radius)
    {
        // The polygon's corners must not leave the disc, so its sides are that much nearer to the centre.
        const double reach = radius * normals.apothem;
        for (std::size_t i = 0; i < pairs; ++i) {
            const double along = Along(centre, i);
            lower[i] = lower[i] < along - reach ? along - reach : lower[i];
            upper[i] = along + reach < upper[i] ? along + reach : upper[i];
        }
    }
    /*! Keeps what lies in the other polygon too. */
    void Cut(const Polygon& other)
    {
        for (std::size_t i = 0; i < pairs; ++i) {
            lower[i] = lower[i] < other.lower[i] ? other.lower[i] : lower[i];
            upper[i] = other.upper[i] < upper[i] ? other.upper[i] : upper[i];
        }
    }
    /*! How far \a lean surely lies inside; 0 or less outside. */
    double GetDepth(const Lean& lean) const
    {
        double depth = unbounded;
        for (std::size_t i = 0; i < pairs; ++i) {
            const double along = Along(lean, i);
            const double below = along - lower[i];
            const double above = upper[i] - along;
            const double nearer = below < above ? below : above;
            depth = nearer < depth ? nearer : depth;
        }
        return depth - leanMargin;
    }

private:
    static constexpr std::size_t pairs = 8;

    struct Normals {
        Normals()
        {
            constexpr double turn = 3.141592653589793 / double(pairs);
            for (std::size_t i = 0; i < pairs; ++i) {
                x[i] = std::cos(turn * double(i));
                y[i] = std::sin(turn * double(i));
            }
            apothem = std::cos(turn / 2.0);
        }
        std::array<double, pairs> x;
        std::array<double, pairs> y;
        double apothem;
    };
    static double Along(const Lean& lean, std::size_t i) { return lean.x * normals.x[i] + lean.y * normals.y[i]; }

    static const Normals normals;
    std::array<double, pairs> lower;
    std::array<double, pairs> upper;
};

const Polygon::Normals Polygon::normals;

/*! The polygons of all runs of 16, 256, ... points, of the points that are not in a full run yet, and of all. */
class PolygonTree
{
public:
    static constexpr int fan = 16;

    void Clear()
    {
        for (std::vector<Polygon>& level : levels)
            level.clear();
        full = Polygon();
        rest = Polygon();
        count = 0;
    }
    int GetCount() const { return count; }

    /*! Takes one more point in, which asks for nothing. */
    void Skip()
    {
        if (++count % fan == 0)
            CloseRun();
    }
    /*! Takes one more point in, which asks for a lean in the disc. */
    void Cut(const Lean& centre, double radius)
    {
        rest.Cut(centre, radius);
        Skip();
    }

    double GetDepth(const Lean& lean) const { return std::min(full.GetDepth(lean), rest.GetDepth(lean)); }

    /*! Whether \a accepts, called with first and last index (the latter not included) of each run whose polygon doesn't
     *  hold \a lean, is true for all of them. */
    template <typename Function>
    bool AskObjectors(const Lean& lean, Function accepts) const
    {
        for (std::size_t level = levels.size(); level-- > 0;) {
            const std::size_t told = level + 1 < levels.size() ? levels[level + 1].size() * fan : 0;
            for (std::size_t node = told; node < levels[level].size(); ++node) {
                if (!AskNode(level, node, lean, accepts))
                    return false;
            }
        }
        return rest.GetDepth(lean) > 0.0 || accepts(count - count % fan, count);
    }

private:
    void CloseRun()
    {
        full.Cut(rest);
        Polygon polygon = rest;
        rest = Polygon();
        for (std::size_t level = 0;; ++level) {
            if (level == levels.size())
                levels.emplace_back();
            std::vector<Polygon>& nodes = levels[level];
            nodes.push_back(polygon);
            if (nodes.size() % fan != 0)
                return;
            for (std::size_t i = nodes.size() - fan; i + 1 < nodes.size(); ++i)
                polygon.Cut(nodes[i]);
        }
    }
    template <typename Function>
    bool AskNode(std::size_t level, std::size_t node, const Lean& lean, Function accepts) const
    {
        if (levels[level][node].GetDepth(lean) > 0.0)
            return true;
        if (level == 0)
            return accepts(int(node) * fan, int(node) * fan + fan);
        for (std::size_t child = node * fan; child < (node + 1) * fan; ++child) {
            if (!AskNode(level - 1, child, lean, accepts))
                return false;
        }
        return true;
    }

    std::vector<std::vector<Polygon>> levels; //!< runs of 16 points, of 256, and so on
    Polygon full;                             //!< of all runs
    Polygon rest;                             //!< of the points behind the last run
    int count = 0;
};

/*! Answers, for the chords from one anchor to one probe after the other, whether all points between lie nearer to the
 *  chord's line than the tolerance: exactly as the distances themselves would answer.
 *
 *  Each point between, seen from the anchor, asks of the line's direction that it stay within a disc of leans: centre
 *  at the point's own direction, radius tolerance over distance. Three nets of rising cost hold the common part of all
 *  discs: one disc within it, whose test is one comparison; a polygon within it; and the same polygons for runs of
 *  points. All three are kept too small by more than rounding could matter, so what lies inside is accepted without a
 *  look at the points. For what lies outside, the points of the runs that object are measured. */
class ChordTester
{
public:
    ChordTester(const QList<ZETLaserPoint>& list, double toleranceLimit, double lengthLimit)
        : points(list.constData())
        , tolerance(toleranceLimit)
        , maxLength(lengthLimit)
        , freeSquare(tolerance * tolerance * (1.0 - squareMargin))
        , shortSquare(maxLength > 0.0 ? std::min(maxLength * maxLength * (1.0 - squareMargin), largestSquare) : 0.0)
        , netless(!(tolerance > smallestTolerance && tolerance * tolerance < largestSquare))
    {
    }

    /*! Begins anew at \a index, behind which another point stands. */
    void Start(int index)
    {
        anchor = index;
        hasReference = false;
        outliers.clear();
    }

    /*! Whether all points between anchor and \a probe lie within the tolerance of the chord, and the chord within the
     *  length. Probes rise by one, from the second point behind the anchor. */
    bool Accepts(int probe)
    {
        const int between = probe - anchor - 1;
        if (between > measuredRun)
            AddPoints(between == measuredRun + 1 ? anchor + 1 : probe - 1, probe);
        previous = Look(probe);
        const double square = previous.square;
        if (!(square < shortSquare) && !(maxLength > std::sqrt(square)))
            return false;
        constexpr double surelyALine = degenerateChord * degenerateChord * (1.0 + squareMargin);
        if (!(square > surelyALine) && degenerateChord > std::sqrt(square))
            return true;
        if (between <= measuredRun || netless || !(square < largestSquare))
            return Measure(probe, anchor + 1, probe);
        return AcceptsByNets(probe);
    }

private:
    Sight Look(int index) const
    {
        const ZETMathPoint& from = points[anchor].GetPosition();
        const ZETMathPoint& to = points[index].GetPosition();
        const double dx = to.GetX() - from.GetX();
        const double dy = to.GetY() - from.GetY();
        const double dz = to.GetZ() - from.GetZ();
        Sight sight{dx, dy, dz, dx * dx + dy * dy + dz * dz};
        if (hasReference)
            PutInFrame(sight);
        return sight;
    }
    void PutInFrame(Sight& sight) const
    {
        const ZETMathVector offset(sight.dx, sight.dy, sight.dz);
        sight.across = offset * acrossDirection;
        sight.upwards = offset * upwardsDirection;
        sight.height = offset * reference;
    }

    bool IsFree(const Sight& sight) const { return sight.square < freeSquare; }
    /*! Whether the nets can hold what the point asks for. Else it is an outlier: too far away for squares, not at
     *  numbers, aside of the anchor, or so far away that rounding uses the tolerance up. */
    bool IsNetted(const Sight& sight) const
    {
        return sight.square < largestSquare &&
               std::abs(sight.height) * largestNettedLean > std::abs(sight.across) + std::abs(sight.upwards) &&
               sight.GetRoom(tolerance) > 0.0;
    }

    /*! Takes the points from \a from to \a to, the latter not included, in among those that chords must pass. */
    void AddPoints(int from, int to)
    {
        for (int index = from; index < to - 1; ++index) {
            previous = Look(index);
            AddPrevious(index);
        }
        if (from < to - 1)
            previous = Look(to - 1); // else it is that point already
        AddPrevious(to - 1);
    }
    /*! Takes \a previous, the point \a index, in: it narrows the disc. The polygons follow when they are needed. */
    void AddPrevious(int index)
    {
        added = index;
        if (netless || IsFree(previous))
            return; // a free point is nearer to the anchor than any line through it may pass
        if (!hasReference && previous.square < largestSquare) {
            SetReference();
            firstInTree = added;
        }
        if (!IsNetted(previous))
            outliers.push_back(added);
        else
            NarrowDisc();
    }

    void NarrowDisc()
    {
        const double height = std::abs(previous.height);
        const double room = previous.GetRoom(tolerance);
        const double square = previous.GetSquareTo(discCentre);
        const double spare = room - std::sqrt(discSquare) * height;
        if (spare >= 0.0 && square <= spare * spare)
            return; // the disc lies within that of the point
        const double radius = discShrinkage * (room - std::sqrt(square)) / height;
        SetDisc(discCentre, radius);
    }
    void SetDisc(const Lean& centre, double radius)
    {
        discCentre = centre;
        discSquare = radius > 0.0 ? std::min(radius * radius, largestLean * largestLean) : 0.0;
    }

    /*! Looks along \a previous from now on, with nets that know no point. */
    void SetReference()
    {
        reference = ZETMathVector(previous.dx, previous.dy, previous.dz);
        reference.Normalize();
        const ZETMathVector aside =
            std::abs(reference.GetX()) < 0.5 ? ZETMathVector(1.0, 0.0, 0.0) : ZETMathVector(0.0, 1.0, 0.0);
        acrossDirection = reference ^ aside;
        acrossDirection.Normalize();
        upwardsDirection = reference ^ acrossDirection;
        hasReference = true;
        referenceAt = added;
        PutInFrame(previous);
        SetDisc({0.0, 0.0}, largestLean);
        tree.Clear();
    }
    /*! The same while points lie between already: the tree and the outliers take them in anew, the disc holds none. */
    void RenewReference()
    {
        SetReference();
        SetDisc({0.0, 0.0}, 0.0);
        firstInTree = anchor + 1;
        outliers.clear();
        for (int index = firstInTree; index <= added; ++index) {
            const Sight sight = Look(index);
            if (!IsFree(sight) && !IsNetted(sight))
                outliers.push_back(index);
        }
    }
    /*! Takes the points that only the disc knows into the tree. */
    void FillTree()
    {
        for (int index = firstInTree + tree.GetCount(); index <= added; ++index) {
            const Sight sight = Look(index);
            if (IsFree(sight) || !IsNetted(sight))
                tree.Skip();
            else
                tree.Cut(sight.GetLean(), sight.GetRoom(tolerance) / std::abs(sight.height));
        }
    }

    bool AcceptsByNets(int probe)
    {
        for (const int outlier : outliers) {
            if (!Measure(probe, outlier, outlier + 1))
                return false;
        }
        if (!hasReference)
            return true; // no other point between is as far from the anchor as the tolerance
        // The disc has no leans above twice the largest, so rounding can't grow.
        if (previous.GetSquareTo(discCentre) < discSquare * previous.height * previous.height)
            return true;
        return AcceptsOutsideDisc(probe);
    }
    bool AcceptsOutsideDisc(int probe)
    {
        FillTree();
        const Lean lean = previous.GetLean();
        if (!(std::abs(lean.x) <= largestLean && std::abs(lean.y) <= largestLean)) {
            const bool accepted = Measure(probe, anchor + 1, probe);
            if (accepted && IsNewReferenceDue())
                RenewReference();
            return accepted;
        }
        const double depth = tree.GetDepth(lean);
        if (depth > 0.0) {
            SetDisc(lean, depth);
            return true;
        }
        const bool accepted = tree.AskObjectors(
            lean, [&](int from, int to) { return Measure(probe, firstInTree + from, firstInTree + to); });
        if (accepted && std::max(std::abs(lean.x), std::abs(lean.y)) > uneasyLean && IsNewReferenceDue())
            RenewReference();
        return accepted;
    }
    /*! At least as many points must come in as have to be taken in anew. */
    bool IsNewReferenceDue() const { return added - anchor >= 2 * (referenceAt - anchor); }

    /*! The plain test of the points from \a from to \a to, the latter not included. */
    bool Measure(int probe, int from, int to) const
    {
        ZETMathLine line;
        line.SetOrigin(points[anchor].GetPosition());
        line.SetVector(points[probe].GetPosition() - points[anchor].GetPosition());
        for (int i = from; i < to; ++i) {
            if (line.GetDistanceTo(points[i].GetPosition()) >= tolerance) // false for what isn't a number
                return false;
        }
        return true;
    }

    const ZETLaserPoint* points;
    double tolerance;
    double maxLength;
    double freeSquare;  //!< below it, a point is nearer to the anchor than the tolerance
    double shortSquare; //!< below it, a chord is shorter than the largest length
    bool netless;       //!< every chord is measured

    int anchor = 0;
    int added = 0;             //!< last point that chords must pass
    Sight previous{};          //!< the point of the last probe
    std::vector<int> outliers; //!< points that are measured for each chord

    bool hasReference = false;
    int referenceAt = 0; //!< value of added when the reference was chosen
    ZETMathVector reference;
    ZETMathVector acrossDirection;
    ZETMathVector upwardsDirection;

    Lean discCentre{0.0, 0.0};
    double discSquare = 0.0; //!< of its radius

    int firstInTree = 0;
    PolygonTree tree;
};

/*! The same test for the closing chord from point \a from to point 0, which has no largest length. */
bool AcceptsClosing(const QList<ZETLaserPoint>& points, int from, double tolerance)
{
    const ZETMathPoint& start = points[from].GetPosition();
    const ZETMathPoint& end = points[0].GetPosition();
    if (degenerateChord > end.GetDistanceTo(start))
        return true;
    ZETMathLine line;
    line.SetOrigin(start);
    line.SetVector(end - start);
    const auto isOff = [&](const ZETLaserPoint& point) { return line.GetDistanceTo(point.GetPosition()) >= tolerance; };
    return std::none_of(points.cbegin() + from + 1, points.cend(), isOff);
}

/*! Moves the points that are kept to the front, in order, and returns how many they are. */
qsizetype MoveKeptAhead(QList<ZETLaserPoint>& points, const std::vector<char>& removed)
{
    const auto first = std::find(removed.cbegin(), removed.cend(), 1);
    if (first == removed.cend())
        return points.size();
    ZETLaserPoint* list = points.data();
    qsizetype kept = first - removed.cbegin();
    for (qsizetype i = kept + 1; i < points.size(); ++i) {
        if (removed[static_cast<std::size_t>(i)] == 0)
            list[kept++] = list[i];
    }
    return kept;
}
} // namespace

std::vector<char> ZETLaserThinning::FindRemovals(const QList<ZETLaserPoint>& points, bool closed, double tolerance,
                                                 double maxLength)
{
    const int count = static_cast<int>(points.size());
    std::vector<char> removed(static_cast<std::size_t>(count), 0);
    // No deviation is below 0, so without a positive tolerance nothing can go.
    if (count < 2 || !(tolerance > 0.0))
        return removed;
    ChordTester tester(points, tolerance, maxLength);
    for (int anchor = 0; anchor < count - 2;) {
        tester.Start(anchor);
        int probe = anchor + 2;
        while (probe < count && tester.Accepts(probe)) {
            removed[static_cast<std::size_t>(probe - 1)] = 1;
            ++probe;
        }
        anchor = probe - 1;
    }
    if (closed) {
        int last = count - 2;
        while (removed[static_cast<std::size_t>(last)] != 0)
            --last;
        // Meant: the length of the closing chord isn't limited.
        if (AcceptsClosing(points, last, tolerance))
            removed[static_cast<std::size_t>(count - 1)] = 1;
    }
    return removed;
}

void ZETLaserThinning::Thin(QList<ZETLaserPoint>& points, bool closed, double tolerance, double maxLength)
{
    const qsizetype kept = MoveKeptAhead(points, FindRemovals(std::as_const(points), closed, tolerance, maxLength));
    // The flags are gone by now: freeing a block as large makes the allocator tidy up all small ones freed before it,
    // and the points that are destroyed here are better left as they are for the next curve.
    if (kept < points.size()) // else a list that is shared stays so
        points.resize(kept);
}
