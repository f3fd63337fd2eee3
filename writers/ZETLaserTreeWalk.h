#pragma once

#include "laser/ZETLaserChildren.h"
#include "laser/ZETLaserContour.h"
#include "laser/ZETLaserCurve.h"
#include "laser/ZETLaserGroup.h"
#include "laser/ZETLaserPoint.h"

/*! The walk over the laser tree that most formats share; a format brings its words as a handler.
 *
 *  A handler of Root() and Group() has
 *  - bool OpensLayer(const ZETLaserGroup&): whether the group has a record around what it holds. It comes first for
 *    each group with output, so it is also the place to count plies, or to write what begins a group without an end.
 *  - void BeginLayer(const ZETLaserGroup&), EndLayer(const ZETLaserGroup&): around a group that opens a layer,
 *  - void BeginLeaf(const ZETLaserGroup&), EndLeaf(const ZETLaserGroup&): around what a leaf holds,
 *  - all that Leaf() needs.
 *
 *  A handler of Leaf() has
 *  - bool WritesTextsFirst(): whether parameters and texts go ahead of the contours,
 *  - void WriteParameters(const ZETLaserGroup&), WriteTexts(const ZETLaserGroup&),
 *  - void WriteContour(const ZETLaserContour&): for a contour with points; Curves() goes on from there.
 *
 *  A handler of Curves() has
 *  - void WriteCurve(const ZETLaserCurve&): for a curve with points; Points() goes on from there.
 *
 *  A handler of Points() has
 *  - void WritePoint(const ZETLaserPoint&).
 *
 *  The walk is a struct, so that a writer can keep its operations private and make the walk its friend. Nothing is
 *  copied on the way, and no list detaches. */
struct ZETLaserTreeWalk {
    /*! The groups below \a root, which itself is no ply. */
    template <typename Handler>
    static void Root(const ZETLaserGroup& root, Handler& handler)
    {
        for (const ZETLaserGroup* group : ChildrenOf<ZETLaserGroup>(root))
            Group(*group, handler);
    }

    template <typename Handler>
    static void Group(const ZETLaserGroup& group, Handler& handler)
    {
        if (group.GetPointCount() < 1)
            return; // nothing written, nothing counted
        const bool layer = handler.OpensLayer(group);
        if (layer)
            handler.BeginLayer(group);
        if (group.HasGroups()) {
            Root(group, handler);
        } else {
            handler.BeginLeaf(group);
            Leaf(group, handler);
            handler.EndLeaf(group);
        }
        if (layer)
            handler.EndLayer(group);
    }

    template <typename Handler>
    static void Leaf(const ZETLaserGroup& group, Handler& handler)
    {
        const bool textsFirst = handler.WritesTextsFirst();
        if (textsFirst) {
            handler.WriteParameters(group);
            handler.WriteTexts(group);
        }
        for (const ZETLaserContour* contour : ChildrenOf<ZETLaserContour>(group)) {
            if (contour->GetPointCount() >= 1)
                handler.WriteContour(*contour);
        }
        if (!textsFirst) {
            handler.WriteParameters(group);
            handler.WriteTexts(group);
        }
    }

    template <typename Handler>
    static void Curves(const ZETLaserContour& contour, Handler& handler)
    {
        for (const auto& curve : contour.GetCurves()) {
            if (curve->GetPointCount() >= 1)
                handler.WriteCurve(*curve);
        }
    }

    /*! The points of \a curve, and the first one again if the curve closes. */
    template <typename Handler>
    static void Points(const ZETLaserCurve& curve, Handler& handler)
    {
        const auto& points = curve.GetPoints();
        for (const auto& point : points)
            handler.WritePoint(point);
        if (RepeatsFirstPoint(curve))
            handler.WritePoint(points.first());
    }

    /*! Whether the first point of \a curve is written again behind its last one. */
    static bool RepeatsFirstPoint(const ZETLaserCurve& curve) { return curve.IsClosed() && curve.GetPointCount() >= 2; }

    /*! How many points Points() goes through. */
    static int CountPoints(const ZETLaserCurve& curve)
    {
        return curve.GetPointCount() + (RepeatsFirstPoint(curve) ? 1 : 0);
    }
};
