#include <ZETVisualization/ZETVisRep.h>

#include <ZETVisualization/ZETVisPointPrimitive.h>
#include <ZETVisualization/ZETVisPolylinePrimitive.h>
#include <ZETVisualization/ZETVisRepGraphics.h>
#include <ZETVisualization/ZETVisRepSet.h>

#include <QSet>

#include <memory>

namespace
{
/*! The given objects without nulls. */
template <typename T>
QList<const T*> WithoutNulls(QList<const T*> objects)
{
    objects.removeAll(nullptr);
    return objects;
}

/*! Deletes each object once, also if it stands in the list twice. */
template <typename T>
void DeleteEach(const QList<const T*>& objects)
{
    const QSet<const T*> distinct(objects.begin(), objects.end());
    qDeleteAll(distinct);
}

ZETMathSetOfPoints TakePoints(double* coordinates, int count)
{
    const std::unique_ptr<double[]> owned(coordinates);
    ZETMathSetOfPoints set;
    set.points.reserve(count);
    for (int i = 0; i < count; ++i)
        set.points.emplaceBack(owned[3 * i], owned[3 * i + 1], owned[3 * i + 2]);
    return set;
}
} // namespace

ZETVisOptions::~ZETVisOptions() = default;

ZETVisPrimitive::ZETVisPrimitive(const ZETMathSetOfPoints& set)
    : points(set)
{
}

ZETVisPrimitive::~ZETVisPrimitive() = default;

ZETVisPolylinePrimitive::ZETVisPolylinePrimitive(const ZETMathSetOfPoints& set, Structure runOrPairs)
    : ZETVisPrimitive(set)
    , structure(runOrPairs)
{
}

ZETVisPolylinePrimitive::~ZETVisPolylinePrimitive() = default;

ZETVisPointPrimitive::ZETVisPointPrimitive(const ZETMathSetOfPoints& set)
    : ZETVisPrimitive(set)
{
}

ZETVisPointPrimitive::ZETVisPointPrimitive(double* coordinates, int count)
    : ZETVisPrimitive(TakePoints(coordinates, count))
{
}

ZETVisPointPrimitive::~ZETVisPointPrimitive() = default;

ZETVisRep::ZETVisRep() = default;

ZETVisRep::~ZETVisRep() = default;

ZETMathBoundingBox ZETVisRep::GetBoundingBox() const
{
    QList<const ZETVisPrimitive*> primitives;
    QList<ZETVisOptions> options;
    GetPrimitives(primitives, options);
    ZETMathBoundingBox box;
    for (const ZETVisPrimitive* primitive : std::as_const(primitives))
        box.Expand(primitive->GetPoints().GetBoundingBox());
    return box;
}

ZETVisRepGraphics::ZETVisRepGraphics(const QList<const ZETVisPrimitive*>& primitives, const ZETVisOptions& options)
    : ownPrimitives(WithoutNulls(primitives))
    , ownOptions(ownPrimitives.size(), options)
{
}

ZETVisRepGraphics::ZETVisRepGraphics(const QList<const ZETVisPrimitive*>& primitives,
                                     const QList<ZETVisOptions>& options)
{
    for (qsizetype i = 0; i < primitives.size(); ++i) {
        if (!primitives[i])
            continue;
        ownPrimitives.append(primitives[i]);
        ownOptions.append(options.value(i));
    }
}

ZETVisRepGraphics::~ZETVisRepGraphics()
{
    DeleteEach(ownPrimitives);
}

void ZETVisRepGraphics::GetPrimitives(QList<const ZETVisPrimitive*>& primitives, QList<ZETVisOptions>& options) const
{
    primitives += ownPrimitives;
    options += ownOptions;
}

ZETVisRepSet::ZETVisRepSet(const QList<const ZETVisRep*>& members)
    : reps(WithoutNulls(members))
{
}

ZETVisRepSet::~ZETVisRepSet()
{
    DeleteEach(reps);
}

void ZETVisRepSet::GetPrimitives(QList<const ZETVisPrimitive*>& primitives, QList<ZETVisOptions>& options) const
{
    for (const ZETVisRep* rep : reps)
        rep->GetPrimitives(primitives, options);
}
