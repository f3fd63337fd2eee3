#pragma once

#include "CheckFile.h"

#include <array>
#include <vector>

/*! Bounds in the file's unit; empty until a point is in it. */
class CheckBox
{
public:
    void Add(const std::array<double, 3>& point);
    void Add(const CheckBox& box);
    bool IsEmpty() const { return isEmpty; }
    /*! Sides along X, Y and Z; zero for an empty box. */
    std::array<double, 3> GetSides() const;
    const std::array<double, 3>& GetLower() const { return lower; }
    const std::array<double, 3>& GetUpper() const { return upper; }

private:
    std::array<double, 3> lower{};
    std::array<double, 3> upper{};
    bool isEmpty = true;
};

/*! What stands in a ply, itself or within its brackets. Lengths are in the file's unit. */
struct CheckPly {
    int group = -1; //!< -1: what stands in no ply
    std::vector<size_t> curves;
    size_t points = 0;
    size_t pointsWithNormal = 0;
    size_t texts = 0;
    size_t parameters = 0;
    double length = 0.0; //!< of what is drawn, closing spans too
    CheckBox box;        //!< of the points of its curves
};

namespace CheckMeasures
{
bool IsClosed(const CheckFile& file, const CheckCurve& curve);
double GetDistance(const std::array<double, 3>& from, const std::array<double, 3>& to);
double GetLength(const CheckFile& file, const CheckCurve& curve);
/*! What a closed curve encloses, seen from where that is most. */
double GetArea(const CheckFile& file, const CheckCurve& curve);
/*! A normal of zero length is none: some formats have no other way to say so. */
bool HasNormal(const CheckPoint& point);

/*! All plies in the order of the file; what stands in none comes last, if there is something. */
std::vector<CheckPly> GetPlies(const CheckFile& file);
} // namespace CheckMeasures
