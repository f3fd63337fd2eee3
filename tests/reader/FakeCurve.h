#pragma once

#include <ZETGeometry/ZETGeoCurveOnSurface.h>
#include <ZETGeometry/ZETGeoSurface.h>
#include <ZETMathematics/ZETMathBoundingBox.h>
#include <ZETMathematics/ZETMathPoint.h>
#include <ZETMathematics/ZETMathVector.h>

#include <QList>

/*! The XY plane, with normals of a length that nobody wants. */
class FakeSurface final : public ZETGeoSurface
{
public:
    FakeSurface()
        : ZETGeoSurface(nullptr)
    {
    }
    ZETMathVector GetNormal(const ZETGeoLocationOnSurface&) const override { return {0.0, 0.0, 4.0}; }
    ZETGeoLocationOnSurface Project(const ZETMathPoint& point) const override
    {
        return {this, point.GetX(), point.GetY()};
    }
    ZETMathBoundingBox GetBoundingBox() const override { return {}; }

private:
    ZETMathPoint EvaluatePoint(double u, double v) const override { return {u, v, 0.0}; }
};

/*! A run of straight segments on the fake surface; it may do what a kernel refuses, such as standing still. */
class FakeCurve final : public ZETGeoCurveOnSurface
{
public:
    FakeCurve(const ZETGeoSurface* support, const QList<ZETMathPoint>& through, bool isClosed)
        : ZETGeoCurveOnSurface(nullptr)
        , surface(support)
        , points(through)
        , closed(isClosed)
    {
    }

    ZETGeoLocationOnCurve GetLocation(double distance, const ZETGeoLocationOnCurve* from) const override
    {
        const double start = from->GetParameter();
        return {this, start + distance / GetSegmentLength(static_cast<int>(start))};
    }
    ZETMathVector GetTangent(const ZETGeoLocationOnCurve&) const override { return {1.0, 0.0, 0.0}; }
    int GetNumPoints() const override { return static_cast<int>(points.size()); }
    ZETMathPoint GetPoint(int index) const override { return points.at(index); }
    int GetNumSegments() const override { return GetNumPoints() - (closed ? 0 : 1); }
    bool IsClosed() const override { return closed; }
    double GetLength() const override { return 0.0; }
    ZETGeoLocationOnCurve GetLocation(int index) const override { return {this, static_cast<double>(index)}; }
    double GetSegmentLength(int index) const override
    {
        return points.at(index).GetDistanceTo(points.at((index + 1) % points.size()));
    }
    const ZETGeoSurface* GetSurface() const override { return surface; }
    ZETGeoLocationOnSurface GetLocationOnSurface(const ZETGeoLocationOnCurve& location) const override
    {
        const ZETMathPoint point = EvaluatePoint(location.GetParameter());
        return {surface, point.GetX(), point.GetY()};
    }

private:
    ZETMathPoint EvaluatePoint(double parameter) const override
    {
        const int index = static_cast<int>(parameter);
        const ZETMathPoint& start = points.at(index % points.size());
        return start + (parameter - index) * (points.at((index + 1) % points.size()) - start);
    }

    const ZETGeoSurface* surface;
    QList<ZETMathPoint> points;
    bool closed;
};
