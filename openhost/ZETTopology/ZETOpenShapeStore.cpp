#include "openhost/ZETTopology/ZETOpenShapeStore.h"

#include "openhost/ZETGeometry/ZETGeoAssembledCurveOnSurface_p.h"
#include "openhost/ZETGeometry/ZETOpenComboCurve_p.h"
#include "openhost/ZETGeometry/ZETOpenCurveOnSurface_p.h"
#include "openhost/ZETGeometry/ZETOpenKernel_p.h"
#include "openhost/ZETGeometry/ZETOpenSurface_p.h"
#include "openhost/ZETTopology/ZETOpenBody_p.h"
#include "openhost/ZETTopology/ZETOpenBodyBuilder.h"

#include <ZETGeometry/ZETGeoPointOnSurface.h>

#include <BinTools.hxx>
#include <BinTools_Curve2dSet.hxx>
#include <TopoDS.hxx>

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDataStream>
#include <QHash>

#include <cmath>
#include <map>
#include <sstream>
#include <type_traits>

namespace
{
// How an object begins in the stream.
enum Mark : quint8 {
    MarkNull = 0,
    MarkNumber = 1, //!< saved before in this session: its number follows
    MarkWhole = 2
};

enum CurveKind : quint8 { CurveKernel = 1, CurveAssembled = 2 };
enum SegmentKind : quint8 { SegmentStraight = 1, SegmentCurve = 2 };
enum DomainKind : quint8 { DomainPoints = 1, DomainNet = 2, DomainSkin = 3 };
enum EdgeKind : quint8 { EdgePolyline = 1, EdgeFromImage = 2 };

constexpr int largestDepth = 16; // of chains that are parts of chains
constexpr qsizetype blockSize = 64 * 1024;
} // namespace

/*! What one session has saved or loaded. */
class ZETOpenShapeTables
{
public:
    ZETOpenShapeTables* outer = nullptr;

    QHash<const QObject*, quint32> numbers;                 //!< of what was saved
    std::vector<ZETOpenRef<const ZETGeoGeometry>> held;     //!< so that no address is used twice
    std::map<quint32, ZETOpenRef<ZETOpenSurface>> surfaces; //!< that were loaded
    std::map<quint32, ZETOpenRef<ZETGeoCurveOnSurface>> curves;
};

namespace
{
thread_local ZETOpenShapeTables* innermost = nullptr;

/*! The texts of this file, in one context. */
struct Text {
    Q_DECLARE_TR_FUNCTIONS(ZETOpenShapeStore)
};

[[noreturn]] void Fail(const QString& text)
{
    throw ZETSysException(Text::tr("the stored geometry can't be read: %1").arg(text));
}

// ---- plain values

template <typename Value>
Value Read(QDataStream& stream)
{
    Value value{};
    stream >> value;
    if (!stream.device() || stream.status() != QDataStream::Ok)
        Fail(Text::tr("it ends too early"));
    if constexpr (std::is_floating_point_v<Value>) {
        if (!std::isfinite(value))
            Fail(Text::tr("a value isn't a number"));
    }
    return value;
}

bool ReadBool(QDataStream& stream)
{
    const auto value = Read<quint8>(stream);
    if (value > 1)
        Fail(Text::tr("%1 stands where 0 or 1 is expected").arg(value));
    return value == 1;
}

void WriteBool(QDataStream& stream, bool value)
{
    stream << quint8(value ? 1 : 0);
}

Mark ReadMark(QDataStream& stream)
{
    const auto value = Read<quint8>(stream);
    if (value > MarkWhole)
        Fail(Text::tr("no object begins with %1").arg(value));
    return Mark(value);
}

void WritePlace(QDataStream& stream, const gp_Pnt2d& place)
{
    stream << place.X() << place.Y();
}

gp_Pnt2d ReadPlace(QDataStream& stream)
{
    const auto u = Read<double>(stream);
    const auto v = Read<double>(stream);
    return gp_Pnt2d(u, v);
}

void WritePoint(QDataStream& stream, const ZETMathPoint& point)
{
    stream << point.GetX() << point.GetY() << point.GetZ();
}

ZETMathPoint ReadPoint(QDataStream& stream)
{
    const auto x = Read<double>(stream);
    const auto y = Read<double>(stream);
    const auto z = Read<double>(stream);
    return ZETMathPoint(x, y, z);
}

// ---- the kernel's bytes

QByteArray GetDigest(const QByteArray& bytes)
{
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha256);
}

void WriteBytes(QDataStream& stream, const std::string& text)
{
    const auto bytes = QByteArray::fromStdString(text);
    stream << quint64(bytes.size());
    const QByteArray digest = GetDigest(bytes);
    stream.writeRawData(digest.constData(), int(digest.size()));
    for (qsizetype at = 0; at < bytes.size(); at += blockSize)
        stream.writeRawData(bytes.constData() + at, int(std::min(blockSize, bytes.size() - at)));
}

/*! Reads as much as is there, block by block, so that no more is allocated than that. */
QByteArray ReadRaw(QDataStream& stream, quint64 size)
{
    QByteArray bytes;
    QByteArray block(blockSize, Qt::Uninitialized);
    while (quint64(bytes.size()) < size) {
        const auto wanted = int(std::min(quint64(blockSize), size - quint64(bytes.size())));
        const int count = stream.readRawData(block.data(), wanted);
        if (count != wanted)
            Fail(Text::tr("it ends too early"));
        bytes.append(block.constData(), count);
    }
    return bytes;
}

std::string ReadBytes(QDataStream& stream)
{
    const auto size = Read<quint64>(stream);
    const QByteArray digest = ReadRaw(stream, 32);
    const QByteArray bytes = ReadRaw(stream, size);
    // The kernel's own readers trust their input, so they get nothing that was changed.
    if (GetDigest(bytes) != digest)
        Fail(Text::tr("it was changed"));
    return bytes.toStdString();
}

std::string PackFace(const TopoDS_Face& face)
{
    std::ostringstream out(std::ios::binary);
    BinTools::Write(face, out, false, false, BinTools_FormatVersion_CURRENT);
    return out.str();
}

TopoDS_Face UnpackFace(const std::string& bytes)
{
    std::istringstream in(bytes, std::ios::binary);
    TopoDS_Shape shape;
    BinTools::Read(shape, in);
    if (shape.IsNull() || shape.ShapeType() != TopAbs_FACE)
        Fail(Text::tr("a surface isn't one"));
    return TopoDS::Face(shape);
}

/*! How many curves a packed set of curves announces: the set that is made of it doesn't tell. */
int CountCurves(const std::string& bytes)
{
    std::istringstream in(bytes, std::ios::binary);
    std::string head;
    int count = 0;
    in >> head >> count;
    return count;
}

// ---- saving

class Saver
{
public:
    Saver(QDataStream& target, ZETOpenShapeTables& sessionTables)
        : stream(target)
        , tables(sessionTables)
    {
    }

    void SaveSurface(const ZETOpenSurface* surface);
    void SaveCurve(const ZETGeoCurveOnSurface* curve);
    void SaveLocation(const ZETGeoLocationOnSurface& location);
    void SaveBody(const ZETTopBody* body);

private:
    bool SaveMark(const ZETGeoGeometry* object);
    void SaveKernelCurve(const ZETOpenCurveOnSurfacePrivate& record);
    void SaveAssembledCurve(const ZETGeoAssembledCurveOnSurfacePrivate& record);
    void SaveDomain(const ZETTopDomain* domain);
    void SavePoint(const ZETOpenComboPoint& point);
    void SaveEdge(const ZETOpenComboCurve& curve);

    QDataStream& stream;
    ZETOpenShapeTables& tables;
};

/*! Writes how the object begins; returns whether it has to be written whole. */
bool Saver::SaveMark(const ZETGeoGeometry* object)
{
    if (!object) {
        stream << quint8(MarkNull);
        return false;
    }
    const auto known = tables.numbers.constFind(object);
    if (known != tables.numbers.constEnd()) {
        stream << quint8(MarkNumber) << *known;
        return false;
    }
    const auto number = quint32(tables.numbers.size() + 1);
    tables.numbers.insert(object, number);
    tables.held.emplace_back(object);
    stream << quint8(MarkWhole) << number;
    return true;
}

void Saver::SaveSurface(const ZETOpenSurface* surface)
{
    if (!SaveMark(surface))
        return;
    const auto& record = ZETOpenSurfacePrivate::Of(*surface);
    stream << record.name;
    WriteBytes(stream, PackFace(record.face));
}

void Saver::SaveCurve(const ZETGeoCurveOnSurface* curve)
{
    const auto* const kernel = qobject_cast<const ZETOpenCurveOnSurface*>(curve);
    const auto* const assembled = qobject_cast<const ZETGeoAssembledCurveOnSurface*>(curve);
    if (curve && !kernel && !assembled)
        throw ZETSysException(Text::tr("a curve of an unknown kind can't be stored"));
    if (!SaveMark(curve))
        return;
    if (kernel)
        SaveKernelCurve(ZETOpenCurveOnSurfacePrivate::Of(*kernel));
    else
        SaveAssembledCurve(ZETGeoAssembledCurveOnSurfacePrivate::Of(*assembled));
}

void Saver::SaveKernelCurve(const ZETOpenCurveOnSurfacePrivate& record)
{
    stream << quint8(CurveKernel);
    SaveSurface(record.surface.Get());
    stream << record.name << record.maxProjectionDistance;
    WriteBool(stream, record.chain.IsClosed());
    BinTools_Curve2dSet curves;
    for (const auto& segment : record.segments) {
        if (!segment->GetParameterCurve().IsNull())
            curves.Add(segment->GetParameterCurve());
    }
    std::ostringstream packed(std::ios::binary);
    curves.Write(packed);
    WriteBytes(stream, packed.str());
    stream << quint32(record.segments.size());
    for (const auto& segment : record.segments) {
        if (segment->GetParameterCurve().IsNull()) {
            stream << quint8(SegmentStraight);
            WritePlace(stream, segment->GetPlace(0.0));
            WritePlace(stream, segment->GetPlace(1.0));
        } else {
            stream << quint8(SegmentCurve) << qint32(curves.Index(segment->GetParameterCurve())) << segment->GetFirst()
                   << segment->GetLast();
        }
    }
}

void Saver::SaveAssembledCurve(const ZETGeoAssembledCurveOnSurfacePrivate& record)
{
    stream << quint8(CurveAssembled);
    WriteBool(stream, record.reverse);
    stream << quint32(record.ranges.size());
    for (qsizetype i = 0; i < record.ranges.size(); ++i) {
        SaveCurve(qobject_cast<const ZETGeoCurveOnSurface*>(record.ranges[i].GetCurve()));
        stream << record.ranges[i].GetStart().GetParameter() << record.ranges[i].GetEnd().GetParameter();
        WriteBool(stream, record.senses.value(i));
    }
}

void Saver::SaveLocation(const ZETGeoLocationOnSurface& location)
{
    const auto* const surface = qobject_cast<const ZETOpenSurface*>(location.GetSurface());
    if (location.GetSurface() && !surface)
        throw ZETSysException(Text::tr("a place on a surface of an unknown kind can't be stored"));
    SaveSurface(surface);
    stream << location.GetU() << location.GetV();
}

void Saver::SaveBody(const ZETTopBody* body)
{
    const auto* const own = qobject_cast<const ZETOpenBody*>(body);
    if (body && !own)
        throw ZETSysException(Text::tr("a body of an unknown kind can't be stored"));
    stream << quint8(body ? MarkWhole : MarkNull);
    if (!own)
        return;
    stream << qint32(own->dimension) << quint32(own->domains.size());
    for (const auto& domain : own->domains)
        SaveDomain(domain.get());
}

void Saver::SaveDomain(const ZETTopDomain* domain)
{
    if (const auto* const points = qobject_cast<const ZETOpenPointDomain*>(domain)) {
        stream << quint8(DomainPoints) << quint32(points->vertices.size());
        for (const ZETOpenVertex* vertex : points->vertices)
            SavePoint(*vertex->point);
    } else if (const auto* const net = qobject_cast<const ZETOpenNet*>(domain)) {
        stream << quint8(DomainNet) << quint32(net->sides.size());
        for (const auto& side : net->sides) {
            WriteBool(stream, side.reversed);
            SaveEdge(*side.edge->curve);
        }
    } else if (const auto* const skin = qobject_cast<const ZETOpenSkin*>(domain)) {
        stream << quint8(DomainSkin) << quint32(skin->faces.size());
        for (const ZETOpenFace* face : skin->faces)
            SaveSurface(face->surface.Get());
    }
}

void Saver::SavePoint(const ZETOpenComboPoint& point)
{
    WritePoint(stream, point.GetPosition());
    const auto surfaces = point.GetSurfaces();
    stream << quint32(surfaces.size());
    for (const auto& surface : surfaces)
        SaveLocation(point.GetPoint(surface.Get())->GetLocationOnSurface());
}

void Saver::SaveEdge(const ZETOpenComboCurve& curve)
{
    const auto& record = ZETOpenComboCurvePrivate::Of(curve);
    stream << quint8(record.vertices.isEmpty() ? EdgeFromImage : EdgePolyline);
    if (!record.vertices.isEmpty()) {
        stream << quint32(record.vertices.size());
        for (const ZETMathPoint& vertex : record.vertices)
            WritePoint(stream, vertex);
    }
    stream << quint32(record.images.size());
    for (const auto& image : record.images) {
        SaveCurve(image.curve.Get());
        WriteBool(stream, image.reversed);
        stream << image.range.GetStart().GetParameter() << image.range.GetEnd().GetParameter();
    }
}

// ---- loading

class Loader
{
public:
    Loader(QDataStream& source, ZETOpenShapeTables& sessionTables)
        : stream(source)
        , tables(sessionTables)
    {
    }

    ZETOpenRef<ZETOpenSurface> LoadSurface();
    ZETOpenRef<ZETGeoCurveOnSurface> LoadCurve();
    ZETGeoLocationOnSurface LoadLocation(ZETOpenRef<ZETOpenSurface>& surface);
    std::unique_ptr<ZETTopBody> LoadBody();

private:
    quint32 LoadNewNumber();
    ZETOpenRef<ZETOpenCurveOnSurface> LoadKernelCurve();
    ZETOpenCurveOnSurfacePrivate::Segments LoadSegments(const ZETOpenSurface& surface);
    ZETOpenRef<ZETGeoCurveOnSurface> LoadAssembledCurve();
    ZETGeoRangeOfCurve LoadRange(const ZETGeoCurve& curve);
    void LoadDomain(ZETOpenBodyBuilder& builder);
    ZETOpenRef<ZETOpenComboPoint> LoadPoint();
    ZETOpenRef<ZETOpenComboCurve> LoadEdge();
    ZETOpenComboCurvePrivate::Image LoadImage();

    QDataStream& stream;
    ZETOpenShapeTables& tables;
    int depth = 0;
};

quint32 Loader::LoadNewNumber()
{
    const auto number = Read<quint32>(stream);
    if (tables.surfaces.count(number) || tables.curves.count(number))
        Fail(Text::tr("object %1 stands twice").arg(number));
    return number;
}

ZETOpenRef<ZETOpenSurface> Loader::LoadSurface()
{
    const Mark mark = ReadMark(stream);
    if (mark == MarkNull)
        return nullptr;
    if (mark == MarkNumber) {
        const auto known = tables.surfaces.find(Read<quint32>(stream));
        if (known == tables.surfaces.end())
            Fail(Text::tr("a surface is used that doesn't stand ahead of its use"));
        return known->second;
    }
    const quint32 number = LoadNewNumber();
    const auto name = Read<QString>(stream);
    const auto surface = ZETOpenSurfacePrivate::Make(UnpackFace(ReadBytes(stream)), name);
    tables.surfaces.emplace(number, surface);
    return surface;
}

ZETOpenRef<ZETGeoCurveOnSurface> Loader::LoadCurve()
{
    const Mark mark = ReadMark(stream);
    if (mark == MarkNull)
        return nullptr;
    if (mark == MarkNumber) {
        const auto known = tables.curves.find(Read<quint32>(stream));
        if (known == tables.curves.end())
            Fail(Text::tr("a curve is used that doesn't stand ahead of its use"));
        return known->second;
    }
    const quint32 number = LoadNewNumber();
    const auto kind = Read<quint8>(stream);
    if (kind != CurveKernel && kind != CurveAssembled)
        Fail(Text::tr("%1 isn't a kind of curves").arg(kind));
    if (++depth > largestDepth)
        Fail(Text::tr("chains stand too deep within chains"));
    const ZETOpenRef<ZETGeoCurveOnSurface> curve =
        kind == CurveKernel ? ZETOpenRef<ZETGeoCurveOnSurface>(LoadKernelCurve()) : LoadAssembledCurve();
    --depth;
    tables.curves.emplace(number, curve);
    return curve;
}

ZETOpenRef<ZETOpenCurveOnSurface> Loader::LoadKernelCurve()
{
    const auto surface = LoadSurface();
    if (!surface)
        Fail(Text::tr("a curve has no surface"));
    const auto name = Read<QString>(stream);
    const auto maxDistance = Read<double>(stream);
    const bool closed = ReadBool(stream);
    const auto curve = ZETOpenCurveOnSurfacePrivate::Make(surface, LoadSegments(*surface), closed);
    auto& record = ZETOpenCurveOnSurfacePrivate::Of(*curve);
    record.name = name;
    record.maxProjectionDistance = maxDistance;
    return curve;
}

ZETOpenCurveOnSurfacePrivate::Segments Loader::LoadSegments(const ZETOpenSurface& surface)
{
    const std::string bytes = ReadBytes(stream);
    std::istringstream packed(bytes, std::ios::binary);
    BinTools_Curve2dSet curves;
    curves.Read(packed);
    const int curveCount = CountCurves(bytes);
    ZETOpenCurveOnSurfacePrivate::Segments segments;
    const auto count = Read<quint32>(stream);
    if (count == 0)
        Fail(Text::tr("a curve has no segments"));
    for (quint32 i = 0; i < count; ++i) {
        const auto kind = Read<quint8>(stream);
        if (kind == SegmentStraight) {
            const gp_Pnt2d start = ReadPlace(stream);
            const gp_Pnt2d end = ReadPlace(stream);
            segments.push_back(std::make_shared<ZETOpenSurfaceSegment>(surface, start, end));
        } else if (kind == SegmentCurve) {
            const auto index = Read<qint32>(stream);
            const auto first = Read<double>(stream);
            const auto last = Read<double>(stream);
            if (index < 1 || index > curveCount)
                Fail(Text::tr("a segment has no curve"));
            segments.push_back(std::make_shared<ZETOpenSurfaceSegment>(surface, curves.Curve2d(index), first, last));
        } else {
            Fail(Text::tr("%1 isn't a kind of segments").arg(kind));
        }
    }
    return segments;
}

ZETGeoRangeOfCurve Loader::LoadRange(const ZETGeoCurve& curve)
{
    const auto start = Read<double>(stream);
    const auto end = Read<double>(stream);
    const double limit = 2.0 * curve.GetNumSegments();
    if (start < 0.0 || end < 0.0 || start > limit || end > limit)
        Fail(Text::tr("a range lies outside of its curve"));
    return ZETGeoRangeOfCurve(ZETGeoLocationOnCurve(&curve, start), ZETGeoLocationOnCurve(&curve, end));
}

ZETOpenRef<ZETGeoCurveOnSurface> Loader::LoadAssembledCurve()
{
    const bool reverse = ReadBool(stream);
    const auto count = Read<quint32>(stream);
    QList<ZETGeoRangeOfCurve> ranges;
    QList<bool> senses;
    std::vector<ZETOpenRef<ZETGeoCurveOnSurface>> held;
    for (quint32 i = 0; i < count; ++i) {
        held.push_back(LoadCurve());
        if (!held.back())
            Fail(Text::tr("a part of a chain has no curve"));
        ranges.append(LoadRange(*held.back()));
        senses.append(ReadBool(stream));
    }
    const ZETOpenRef<ZETGeoAssembledCurveOnSurface> chain(new ZETGeoAssembledCurveOnSurface(ranges, senses, reverse));
    chain->Initialize();
    return chain;
}

ZETGeoLocationOnSurface Loader::LoadLocation(ZETOpenRef<ZETOpenSurface>& surface)
{
    surface = LoadSurface();
    const gp_Pnt2d place = ReadPlace(stream);
    return surface ? ZETGeoLocationOnSurface(surface.Get(), place.X(), place.Y()) : ZETGeoLocationOnSurface();
}

std::unique_ptr<ZETTopBody> Loader::LoadBody()
{
    const Mark mark = ReadMark(stream);
    if (mark == MarkNull)
        return nullptr;
    if (mark != MarkWhole)
        Fail(Text::tr("a body isn't one"));
    const auto dimension = Read<qint32>(stream);
    const auto count = Read<quint32>(stream);
    ZETOpenBodyBuilder builder;
    for (quint32 i = 0; i < count; ++i)
        LoadDomain(builder);
    builder.SetDimension(dimension);
    return builder.Build();
}

void Loader::LoadDomain(ZETOpenBodyBuilder& builder)
{
    const auto kind = Read<quint8>(stream);
    const auto count = Read<quint32>(stream);
    if (kind == DomainPoints) {
        QList<ZETOpenRef<ZETOpenComboPoint>> points;
        for (quint32 i = 0; i < count; ++i)
            points.append(LoadPoint());
        builder.AddPoints(points);
    } else if (kind == DomainNet) {
        QList<ZETOpenBodyBuilder::Side> sides;
        for (quint32 i = 0; i < count; ++i) {
            const bool reversed = ReadBool(stream);
            sides.append({LoadEdge(), reversed});
        }
        builder.AddNet(sides);
    } else if (kind == DomainSkin) {
        QList<ZETOpenRef<ZETOpenSurface>> surfaces;
        for (quint32 i = 0; i < count; ++i)
            surfaces.append(LoadSurface());
        builder.AddSkin(surfaces);
    } else {
        Fail(Text::tr("%1 isn't a kind of domains").arg(kind));
    }
}

ZETOpenRef<ZETOpenComboPoint> Loader::LoadPoint()
{
    const auto point = ZETOpenComboPoint::Make(ReadPoint(stream), {});
    const auto count = Read<quint32>(stream);
    for (quint32 i = 0; i < count; ++i) {
        ZETOpenRef<ZETOpenSurface> surface;
        const ZETGeoLocationOnSurface location = LoadLocation(surface);
        point->AddImage(surface, location);
    }
    return point;
}

ZETOpenComboCurvePrivate::Image Loader::LoadImage()
{
    const auto loaded = LoadCurve();
    const ZETOpenRef<ZETOpenCurveOnSurface> curve(qobject_cast<ZETOpenCurveOnSurface*>(loaded.Get()));
    if (!curve)
        Fail(Text::tr("the image of an edge isn't a curve of the kernel"));
    const bool reversed = ReadBool(stream);
    return {curve, reversed, LoadRange(*curve)};
}

ZETOpenRef<ZETOpenComboCurve> Loader::LoadEdge()
{
    const auto kind = Read<quint8>(stream);
    ZETOpenRef<ZETOpenComboCurve> edge;
    if (kind == EdgePolyline) {
        QList<ZETMathPoint> vertices;
        const auto vertexCount = Read<quint32>(stream);
        for (quint32 i = 0; i < vertexCount; ++i)
            vertices.append(ReadPoint(stream));
        edge = ZETOpenComboCurve::MakePolyline(vertices);
    } else if (kind != EdgeFromImage) {
        Fail(Text::tr("%1 isn't a kind of edges").arg(kind));
    }
    const auto count = Read<quint32>(stream);
    for (quint32 i = 0; i < count; ++i) {
        const auto image = LoadImage();
        if (edge)
            edge->AddImage(image.curve, image.reversed, image.range);
        else
            edge = ZETOpenComboCurve::MakeFromImage(image.curve, image.reversed);
    }
    if (!edge)
        Fail(Text::tr("an edge has no curve"));
    return edge;
}

/*! Runs \a work with a saver that has the tables of the innermost session, or else its own. */
template <typename Work>
void Save(QDataStream& stream, Work&& work)
{
    ZETOpenShapeTables own;
    Saver saver(stream, innermost ? *innermost : own);
    CallKernel(Text::tr("the geometry can't be stored"), [&] { work(saver); });
}

/*! Runs \a work with a loader that has the tables of the innermost session, or else its own. */
template <typename Work>
auto Load(QDataStream& stream, Work&& work)
{
    ZETOpenShapeTables own;
    Loader loader(stream, innermost ? *innermost : own);
    return CallKernel(Text::tr("the stored geometry can't be read"), [&] { return work(loader); });
}
} // namespace

ZETOpenShapeStore::Session::Session()
    : d(std::make_unique<ZETOpenShapeTables>())
{
    d->outer = innermost;
    innermost = d.get();
}

ZETOpenShapeStore::Session::~Session()
{
    innermost = d->outer;
}

void ZETOpenShapeStore::SaveSurface(QDataStream& stream, const ZETOpenSurface* surface)
{
    Save(stream, [&](Saver& saver) { saver.SaveSurface(surface); });
}

ZETOpenRef<ZETOpenSurface> ZETOpenShapeStore::LoadSurface(QDataStream& stream)
{
    return Load(stream, [&](Loader& loader) { return loader.LoadSurface(); });
}

void ZETOpenShapeStore::SaveCurve(QDataStream& stream, const ZETGeoCurveOnSurface* curve)
{
    Save(stream, [&](Saver& saver) { saver.SaveCurve(curve); });
}

ZETOpenRef<ZETGeoCurveOnSurface> ZETOpenShapeStore::LoadCurve(QDataStream& stream)
{
    return Load(stream, [&](Loader& loader) { return loader.LoadCurve(); });
}

void ZETOpenShapeStore::SaveLocation(QDataStream& stream, const ZETGeoLocationOnSurface& location)
{
    Save(stream, [&](Saver& saver) { saver.SaveLocation(location); });
}

ZETGeoLocationOnSurface ZETOpenShapeStore::LoadLocation(QDataStream& stream, ZETOpenRef<ZETOpenSurface>& surface)
{
    return Load(stream, [&](Loader& loader) { return loader.LoadLocation(surface); });
}

void ZETOpenShapeStore::SaveBody(QDataStream& stream, const ZETTopBody* body)
{
    Save(stream, [&](Saver& saver) { saver.SaveBody(body); });
}

std::unique_ptr<ZETTopBody> ZETOpenShapeStore::LoadBody(QDataStream& stream)
{
    return Load(stream, [&](Loader& loader) { return loader.LoadBody(); });
}
