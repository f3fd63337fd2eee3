#include "laser/ZETLaserThinning.h"

#include "laser/ZETLaserPoint.h"

#include <ZETMathematics/ZETMathLine.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <vector>

namespace
{
/*! A chord shorter than this is no line: whatever lies between its ends counts as straight. */
constexpr double degenerateChord = 0.005;

/*! Beyond these magnitudes squares could overflow or vanish, and nothing is taken for granted. */
constexpr double largestSquare = 1e100;
constexpr double smallestTolerance = 1e-100;

/*! What rounding can do to a distance, for each millimetre between anchor and point: several dozen roundings. */
constexpr double roundingMargin = 64.0 * std::numeric_limits<double>::epsilon();

/*! A chord that leans further than this (tangent) away from the reference is tested plainly. */
constexpr double largestLean = 1.0;
/*! A chord that leans further than this is worth a new reference. */
constexpr double uneasyLean = 0.25;

constexpr double unbounded = std::numeric_limits<double>::infinity();

/*! A place in the plane at distance 1 in front of the anchor, which stands for the direction of a line. */
struct Lean {
    double x;
    double y;
};

/*! The leans inside a convex polygon with fixed normals: for each normal the smallest bound that came in. It is kept
 *  inside all discs that came in, so that a lean in the polygon lies in every disc. */
class Polygon
{
public:
    Polygon() { bounds.fill(unbounded); }

    /*! Keeps what lies in the disc too. */
    void Cut(const Lean& centre, double radius)
    {
        for (std::size_t i = 0; i < sides; ++i) {
            const double bound = Along(centre, i) + radius * normals.apothem;
            bounds[i] = bound < bounds[i] ? bound : bounds[i];
        }
    }
    /*! Keeps nothing. */
    void Close() { bounds.fill(-unbounded); }

    /*! How far \a lean lies inside; negative outside. */
    double GetDepth(const Lean& lean) const
    {
        double depth = unbounded;
        for (std::size_t i = 0; i < sides; ++i) {
            const double inside = bounds[i] - Along(lean, i);
            depth = inside < depth ? inside : depth;
        }
        return depth;
    }

private:
    static constexpr std::size_t sides = 16;

    struct Normals {
        Normals()
        {
            constexpr double turn = 6.283185307179586 / double(sides);
            for (std::size_t i = 0; i < sides; ++i) {
                x[i] = std::cos(turn * double(i));
                y[i] = std::sin(turn * double(i));
            }
            // The polygon's corners must not leave the disc, so its sides are that much nearer to the centre.
            apothem = std::cos(turn / 2.0);
        }
        std::array<double, sides> x;
        std::array<double, sides> y;
        double apothem;
    };
    static double Along(const Lean& lean, std::size_t i) { return lean.x * normals.x[i] + lean.y * normals.y[i]; }

    static const Normals normals;
    std::array<double, sides> bounds;
};

const Polygon::Normals Polygon::normals;

/*! Answers, for the chords from one anchor to one probe after the other, whether all points between lie nearer to the
 *  chord's line than the tolerance: exactly as the distances themselves would answer.
 *
 *  Each point between, seen from the anchor, asks of the line's direction that it stay within a disc of leans: centre
 * at the point's own direction, radius tolerance over distance. Three nets of rising cost hold the common part of all
 *  discs: one disc within it, whose test is one comparison; a polygon within it; and the same polygons for blocks of
 *  points. All three are kept too small by more than rounding could matter, so what lies inside is accepted without a
 *  look at the points. For what lies outside, the points of the blocks that object are measured. */
class ChordTester
{
public:
    ChordTester(const QList<ZETLaserPoint>& list, double limit)
        : points(list.constData())
        , tolerance(limit)
        , freeSquare(limit * limit * (1.0 - 1e-12))
    {
    }

    /*! Begins anew at \a index. */
    void Start(int index)
    {
        anchor = index;
        added = index;
        plain = !(tolerance > smallestTolerance && tolerance * tolerance < largestSquare);
        outliers.clear();
        hasReference = false;
    }

    /*! Whether all points between anchor and \a probe lie within the tolerance of the chord. Probes rise by one. */
    bool Accepts(int probe)
    {
        const ZETMathVector chord = From(probe);
        Add(probe - 1);
        const double square = chord.GetSquaredMagnitude();
        if (degenerateChord > std::sqrt(square))
            return true;
        if (plain || !(square < largestSquare))
            return Measure(chord, anchor + 1, probe);
        for (const int outlier : outliers) {
            if (!Measure(chord, outlier, outlier + 1))
                return false;
        }
        if (!hasReference)
            return true; // no other point between is as far from the anchor as the tolerance
        const Lean lean = GetLean(chord);
        const double x = lean.x - discCentre.x;
        const double y = lean.y - discCentre.y;
        if (discRadius > 0.0 && x * x + y * y < discRadius * discRadius && IsEasy(lean))
            return true;
        return AcceptsOutsideDisc(chord, lean, probe);
    }

private:
    static constexpr int blockSize = 32;
    static constexpr int blocksOfGroup = 32;

    ZETMathVector From(int index) const { return points[index].GetPosition() - points[anchor].GetPosition(); }

    /*! The point's demand on the line. \a height is along the reference; a margin for rounding is taken off the
     *  tolerance. */
    struct Demand {
        double x;
        double y;
        double height;
        double tolerance;
    };
    Demand GetDemand(const ZETMathVector& point) const
    {
        const double x = point * across;
        const double y = point * upwards;
        const double height = point * reference;
        return {x, y, height, tolerance - roundingMargin * (std::abs(x) + std::abs(y) + std::abs(height))};
    }
    Lean GetLean(const ZETMathVector& chord) const
    {
        const double height = chord * reference;
        return {(chord * across) / height, (chord * upwards) / height};
    }
    /*! Not so steep that rounding would grow; false for what isn't a number. */
    static bool IsEasy(const Lean& lean) { return std::abs(lean.x) <= largestLean && std::abs(lean.y) <= largestLean; }

    /*! Takes point \a index in among those that chords must pass: narrows the disc. The polygons follow when they are
     *  needed. */
    void Add(int index)
    {
        added = index;
        if (plain)
            return;
        const ZETMathVector point = From(index);
        const double square = point.GetSquaredMagnitude();
        if (square < freeSquare)
            return; // nearer to the anchor than any line through it may pass
        if (!(square < largestSquare)) {
            outliers.push_back(index);
            return;
        }
        if (!hasReference)
            SetReference(point, index - 1);
        const Demand demand = GetDemand(point);
        const double x = demand.x - discCentre.x * demand.height;
        const double y = demand.y - discCentre.y * demand.height;
        const double radius = (demand.tolerance - std::sqrt(x * x + y * y)) / std::abs(demand.height);
        if (!(radius >= discRadius))
            discRadius = radius;
    }

    /*! Looks along \a direction from now on. The points up to \a until ask for nothing; the others come in anew. */
    void SetReference(const ZETMathVector& direction, int until)
    {
        reference = direction;
        reference.Normalize();
        const ZETMathVector aside =
            std::abs(reference.GetX()) < 0.5 ? ZETMathVector(1.0, 0.0, 0.0) : ZETMathVector(0.0, 1.0, 0.0);
        across = reference ^ aside;
        across.Normalize();
        upwards = reference ^ across;
        hasReference = true;
        referenceAt = added;
        discCentre = {0.0, 0.0};
        discRadius = unbounded;
        firstInBlocks = until + 1;
        inBlocks = until;
        all = Polygon();
        groups.clear();
        blocks.clear();
    }

    /*! Takes the points that only the disc knows into the polygons. */
    void FillPolygons()
    {
        while (inBlocks < added) {
            ++inBlocks;
            const int place = inBlocks - firstInBlocks;
            if (place % blockSize == 0)
                blocks.emplace_back();
            if (place % (blockSize * blocksOfGroup) == 0)
                groups.emplace_back();
            const ZETMathVector point = From(inBlocks);
            const double square = point.GetSquaredMagnitude();
            if (square < freeSquare || !(square < largestSquare))
                continue;
            const Demand demand = GetDemand(point);
            const double height = std::abs(demand.height);
            if (!(height > 1e-3 * (std::abs(demand.x) + std::abs(demand.y))) || !(demand.tolerance > 0.0)) {
                for (Polygon* polygon : {&all, &groups.back(), &blocks.back()})
                    polygon->Close();
                continue;
            }
            const Lean centre{demand.x / demand.height, demand.y / demand.height};
            for (Polygon* polygon : {&all, &groups.back(), &blocks.back()})
                polygon->Cut(centre, demand.tolerance / height);
        }
    }

    bool AcceptsOutsideDisc(const ZETMathVector& chord, const Lean& lean, int probe)
    {
        FillPolygons();
        const bool easy = IsEasy(lean);
        const double depth = easy ? all.GetDepth(lean) - leanMargin : -1.0;
        if (depth > 0.0) {
            discCentre = lean;
            discRadius = depth;
            return true;
        }
        if (!(easy ? MeasureObjectors(chord, lean, probe) : Measure(chord, anchor + 1, probe)))
            return false;
        const bool uneasy = !(std::abs(lean.x) <= uneasyLean && std::abs(lean.y) <= uneasyLean);
        if (uneasy && added - anchor >= 2 * (referenceAt - anchor)) {
            SetReference(chord, anchor);
            discRadius = -unbounded; // the polygons know all points, the disc none
        }
        return true;
    }

    /*! Measures the points of those blocks whose polygon doesn't hold \a lean. */
    bool MeasureObjectors(const ZETMathVector& chord, const Lean& lean, int probe) const
    {
        for (std::size_t group = 0; group < groups.size(); ++group) {
            if (groups[group].GetDepth(lean) > leanMargin)
                continue;
            const std::size_t first = group * blocksOfGroup;
            const std::size_t last = std::min(first + blocksOfGroup, blocks.size());
            for (std::size_t block = first; block < last; ++block) {
                if (blocks[block].GetDepth(lean) > leanMargin)
                    continue;
                const int from = firstInBlocks + static_cast<int>(block) * blockSize;
                if (!Measure(chord, from, std::min(from + blockSize, probe)))
                    return false;
            }
        }
        return true;
    }

    /*! The plain test of the points from \a from to \a to, the latter not included. */
    bool Measure(const ZETMathVector& chord, int from, int to) const
    {
        ZETMathLine line;
        line.SetOrigin(points[anchor].GetPosition());
        line.SetVector(chord);
        for (int i = from; i < to; ++i) {
            if (line.GetDistanceTo(points[i].GetPosition()) >= tolerance) // false for what isn't a number
                return false;
        }
        return true;
    }

    static constexpr double leanMargin = 4.0 * std::numeric_limits<double>::epsilon();

    const ZETLaserPoint* points;
    double tolerance;
    double freeSquare;

    int anchor = 0;
    int added = 0;             //!< last point that chords must pass
    bool plain = false;        //!< every chord of this anchor is measured
    std::vector<int> outliers; //!< points too far away, or not at numbers, for the nets: measured for each chord

    bool hasReference = false;
    int referenceAt = 0; //!< value of added when the reference was chosen
    ZETMathVector reference;
    ZETMathVector across;
    ZETMathVector upwards;

    Lean discCentre{0.0, 0.0};
    double discRadius = 0.0;

    int firstInBlocks = 0;
    int inBlocks = 0; //!< last point that the polygons know
    Polygon all;
    std::vector<Polygon> groups;
    std::vector<Polygon> blocks;
};

/*! The same test for the closing chord from point \a from to point 0. */
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

std::vector<char> FindRemovals(const QList<ZETLaserPoint>& points, bool closed, double tolerance, double maxLength)
{
    const int count = static_cast<int>(points.size());
    std::vector<char> removed(static_cast<std::size_t>(count), 0);
    ChordTester tester(points, tolerance);
    for (int anchor = 0; anchor < count - 2;) {
        const ZETMathPoint& start = points[anchor].GetPosition();
        tester.Start(anchor);
        int probe = anchor + 2;
        while (probe < count && maxLength > points[probe].GetDistanceTo(start) && tester.Accepts(probe)) {
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
} // namespace

void ZETLaserThinning::Thin(QList<ZETLaserPoint>& points, bool closed, double tolerance, double maxLength)
{
    // No deviation is below 0, so without a positive tolerance nothing can go.
    if (points.size() < 2 || !(tolerance > 0.0))
        return;
    const std::vector<char> removed = FindRemovals(std::as_const(points), closed, tolerance, maxLength);
    const auto first = std::find(removed.cbegin(), removed.cend(), 1);
    if (first == removed.cend())
        return; // a list that is shared stays so
    std::size_t index = 0;
    points.removeIf([&](const ZETLaserPoint&) { return removed[index++] != 0; });
}
