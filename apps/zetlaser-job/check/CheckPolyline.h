#pragma once

#include "CheckMeasures.h"

#include <array>
#include <span>
#include <vector>

/*! A curve of a file as the line that is drawn, made for asking how far points are off it. The file must outlive it. */
class CheckPolyline
{
public:
    CheckPolyline(const CheckFile& file, const CheckCurve& curve);

    std::span<const CheckPoint> GetPoints() const { return points; }
    const CheckBox& GetBox() const { return box; }

    /*! The place of the line that is nearest to a point. */
    struct Place {
        double distance;
        std::array<double, 3> normal; //!< between those of the ends of the segment; zero where an end has none
    };
    Place GetNearest(const std::array<double, 3>& point) const;

private:
    /*! Neighbouring segments, which are passed over together where their box is too far. */
    struct Run {
        size_t first;
        size_t end;
        CheckBox box;
    };
    void AddRuns();
    const CheckPoint& GetEnd(size_t segment) const;

    std::span<const CheckPoint> points;
    size_t segmentCount = 0;
    std::vector<Run> runs;
    CheckBox box;
};
