#include "openhost/ZETGeometry/ZETOpenComboCurve.h"

#include "openhost/ZETGeometry/ZETOpenComboCurve_p.h"
#include "openhost/ZETGeometry/ZETOpenCurveOnSurface_p.h"
#include "openhost/ZETGeometry/ZETOpenKernel_p.h"

#include <algorithm>

ZETOpenComboCurve::ZETOpenComboCurve(std::unique_ptr<ZETOpenComboCurvePrivate> record)
    : d(std::move(record))
{
}

ZETOpenComboCurve::~ZETOpenComboCurve() = default;

ZETOpenRef<ZETOpenComboCurve> ZETOpenComboCurve::MakePolyline(const QList<ZETMathPoint>& points)
{
    if (points.size() < 2)
        throw ZETSysException(tr("a curve needs two points at least"));
    if (!std::all_of(points.begin(), points.end(), IsFinite))
        throw ZETSysException(tr("a point of a curve has a coordinate that isn't a number"));
    std::vector<ZETOpenChain::Link> links;
    links.reserve(std::size_t(points.size()) - 1);
    for (qsizetype i = 1; i < points.size(); ++i)
        links.push_back({std::make_shared<ZETOpenSpaceLine>(ToKernel(points[i - 1]), ToKernel(points[i]))});
    auto record = std::make_unique<ZETOpenComboCurvePrivate>();
    record->vertices = points;
    record->chain = ZETOpenChain(std::move(links), points.size() > 2 && points.first() == points.last());
    return ZETOpenRef<ZETOpenComboCurve>(new ZETOpenComboCurve(std::move(record)));
}

ZETOpenRef<ZETOpenComboCurve> ZETOpenComboCurve::MakeFromImage(const ZETOpenRef<ZETOpenCurveOnSurface>& image,
                                                               bool reversed)
{
    if (!image)
        throw ZETSysException(tr("the curve of an edge can't be made without a curve"));
    const ZETOpenChain& chain = ZETOpenCurveOnSurfacePrivate::Of(*image).chain;
    auto record = std::make_unique<ZETOpenComboCurvePrivate>();
    record->chain = reversed ? chain.GetReversed() : chain;
    record->images.push_back({image, reversed, image->GetWholeRange()});
    return ZETOpenRef<ZETOpenComboCurve>(new ZETOpenComboCurve(std::move(record)));
}

void ZETOpenComboCurve::AddImage(const ZETOpenRef<ZETOpenCurveOnSurface>& image, bool reversed,
                                 const ZETGeoRangeOfCurve& range)
{
    if (!image || range.GetCurve() != image.Get())
        throw ZETSysException(tr("the range of an image must be a part of it"));
    d->images.push_back({image, reversed, range});
}

QList<ZETOpenRef<ZETOpenCurveOnSurface>> ZETOpenComboCurve::GetImages() const
{
    QList<ZETOpenRef<ZETOpenCurveOnSurface>> curves;
    for (const auto& image : d->images)
        curves.append(image.curve);
    return curves;
}

ZETGeoLocationOnCurve ZETOpenComboCurve::Project(const ZETMathPoint& point) const
{
    return ZETGeoLocationOnCurve(this, d->chain.Project(ToKernel(point)));
}

const ZETGeoCurveOnSurface* ZETOpenComboCurve::GetCurve(const ZETGeoSurface* surface, bool* reversed,
                                                        ZETGeoRangeOfCurve* range) const
{
    for (const auto& image : d->images) {
        if (image.curve->GetSurface() != surface)
            continue;
        if (reversed)
            *reversed = image.reversed;
        if (range)
            *range = image.range;
        return image.curve.Get();
    }
    return nullptr;
}

ZETGeoLocationOnCurve ZETOpenComboCurve::GetLocation(double distance, const ZETGeoLocationOnCurve* from) const
{
    return ZETGeoLocationOnCurve(this, d->chain.Locate(distance, from ? from->GetParameter() : 0.0));
}

ZETMathVector ZETOpenComboCurve::GetTangent(const ZETGeoLocationOnCurve& location) const
{
    return FromKernel(d->chain.GetTangent(location.GetParameter()));
}

int ZETOpenComboCurve::GetNumPoints() const
{
    return d->vertices.isEmpty() ? int(d->chain.GetPolyline().size()) : int(d->vertices.size());
}

ZETMathPoint ZETOpenComboCurve::GetPoint(int index) const
{
    if (index < 0 || index >= GetNumPoints())
        return ZETMathPoint();
    return d->vertices.isEmpty() ? FromKernel(d->chain.GetPolyline()[std::size_t(index)]) : d->vertices[index];
}

int ZETOpenComboCurve::GetNumSegments() const
{
    return d->chain.GetCount();
}

bool ZETOpenComboCurve::IsClosed() const
{
    return d->chain.IsClosed();
}

double ZETOpenComboCurve::GetLength() const
{
    return d->chain.GetLength();
}

ZETGeoLocationOnCurve ZETOpenComboCurve::GetLocation(int index) const
{
    return ZETGeoLocationOnCurve(this, d->chain.Normalize(index));
}

double ZETOpenComboCurve::GetSegmentLength(int index) const
{
    return d->chain.GetLength(index);
}

ZETMathPoint ZETOpenComboCurve::EvaluatePoint(double parameter) const
{
    return FromKernel(d->chain.GetPoint(parameter));
}
