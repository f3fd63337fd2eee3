#pragma once

#include "openhost/ZETGeometry/ZETOpenSegment_p.h"

#include <memory>
#include <vector>

class ZETGeoCurve;

/*! Segments walked one after the other: what all curves of the kernel are made of. A parameter is the number of the
 *  link plus the fraction of it that lies behind. */
class ZETOpenChain
{
public:
    /*! A segment, or a part of it, as the chain runs through it: backwards where \a from is above \a to. */
    struct Link {
        std::shared_ptr<const ZETOpenSegment> segment;
        double from = 0.0;
        double to = 1.0;
    };

    ZETOpenChain() = default;
    ZETOpenChain(std::vector<Link> linksInOrder, bool isClosed);

    /*! The chain that \a curve is; null for curves that the kernel didn't make. */
    static const ZETOpenChain* Of(const ZETGeoCurve* curve);

    int GetCount() const { return int(links.size()); }
    bool IsClosed() const { return closed; }
    const Link& GetLink(int index) const { return links[std::size_t(index)]; }

    /*! The same chain walked from its end. */
    ZETOpenChain GetReversed() const;
    /*! The links from \a start forward to \a end. On a closed chain a part that would have no length, or a negative
     *  one, goes on behind the end of the chain. */
    std::vector<Link> GetPart(double start, double end) const;

    gp_Pnt GetPoint(double parameter) const;
    gp_Vec GetTangent(double parameter) const;
    gp_Pnt2d GetPlace(double parameter) const;
    double GetLength() const;
    double GetLength(int index) const;
    /*! Arc length from \a start forward to \a end, which isn't ahead of it. */
    double GetLength(double start, double end) const;
    double Locate(double distance, double from) const;
    double Project(const gp_Pnt& point, double* distance = nullptr) const;
    /*! From the start to the end; a closed chain's last point is its first. */
    const std::vector<gp_Pnt>& GetPolyline() const;
    std::vector<gp_Pnt> GetPolyline(double deflection, double angle) const;
    /*! Whether \a index is a vertex's: 0 to the count, and for a closed chain the count less 1. */
    bool IsVertex(int index) const;

    /*! \a parameter within the chain: a closed one wraps, an open one stops at its ends. */
    double Normalize(double parameter) const;

private:
    struct Position {
        int link = 0;
        double fraction = 0.0; //!< of the link, 0 to 1
    };
    Position GetPosition(double parameter) const;
    double GetSegmentFraction(const Position& position) const;
    double GetLinkLength(const Link& link, double from, double to) const;
    double LocateForward(double distance, Position position) const;
    double LocateBackward(double distance, Position position) const;

    std::vector<Link> links;
    bool closed = false;
    mutable std::vector<gp_Pnt> polyline;
};
