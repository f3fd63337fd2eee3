#include "JobPreviewPage.h"

#include "JobError.h"
#include "JobPreviewScene.h"

#include <ZETVisualization/ZETVisPointPrimitive.h>
#include <ZETVisualization/ZETVisPolylinePrimitive.h>
#include <ZETVisualization/ZETVisRep.h>
#include <ZETVisualization/ZETVisVirtualObject.h>

#include <QCoreApplication>
#include <QFile>
#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtEndian>

#include <algorithm>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace
{
QString Translate(const char* text)
{
    return QCoreApplication::translate("zetlaser-job", text);
}

// Where Debian's package libjs-three puts its licence.
constexpr auto licenceFile = "/usr/share/doc/libjs-three/copyright"_L1;

/*! In the order in which they need each other. */
const QStringList& GetLibraryScripts()
{
    static const QStringList scripts{
        u"three.min.js"_s,
        u"examples/js/controls/OrbitControls.js"_s,
        u"examples/js/lines/LineSegmentsGeometry.js"_s,
        u"examples/js/lines/LineMaterial.js"_s,
        u"examples/js/lines/LineSegments2.js"_s,
    };
    return scripts;
}

QByteArray ReadFile(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw JobError(JobExit::Failed,
                       Translate("the page needs three.js, but %1 can't be read: install Debian's package libjs-three, "
                                 "or leave html out of --formats")
                           .arg(path));
    return file.readAll();
}

/*! Numbers as the page's typed arrays read them: little-endian, as text. */
template <typename Number>
class PackedNumbers
{
public:
    void Append(Number number)
    {
        const Number ordered = qToLittleEndian(number);
        bytes.append(reinterpret_cast<const char*>(&ordered), sizeof ordered);
    }
    QString GetText() const { return QString::fromLatin1(bytes.toBase64()); }

private:
    QByteArray bytes;
};

/*! Coordinates against the middle of the part, because single precision has seven digits only. */
class PackedPoints
{
public:
    explicit PackedPoints(const ZETMathPoint& from)
        : middle(from)
    {
    }
    void Append(const ZETMathPoint& point) { Append(point - middle); }
    void Append(const ZETMathVector& vector)
    {
        numbers.Append(static_cast<float>(vector.GetX()));
        numbers.Append(static_cast<float>(vector.GetY()));
        numbers.Append(static_cast<float>(vector.GetZ()));
    }
    QString GetText() const { return numbers.GetText(); }

private:
    ZETMathPoint middle;
    PackedNumbers<float> numbers;
};

/*! A scene as the page's script reads it. */
class PageData
{
public:
    explicit PageData(JobPreviewScene& shown)
        : scene(shown)
    {
        for (const ZETOpenTriangles& surface : scene.GetSurfaces()) {
            for (const ZETMathPoint& point : surface.points)
                box.Expand({point, point});
        }
        for (const JobPreviewPly& ply : scene.GetPlies()) {
            for (const ZETVisVirtualObject* object : ply.objects)
                box.Expand(object->GetBoundingBox());
        }
        middle = box.GetLowerPoint() + (box.GetUpperPoint() - box.GetLowerPoint()) * 0.5;
    }

    QJsonObject Write() const
    {
        QJsonArray plies;
        for (const JobPreviewPly& ply : scene.GetPlies())
            plies.append(WritePly(ply));
        QJsonArray targets;
        for (const ZETVisVirtualObject* target : scene.GetTargets())
            targets.append(
                QJsonObject{{u"name"_s, target->GetLabel()}, {u"content"_s, WriteContent(target->GetRep())}});
        QJsonArray surfaces;
        for (const ZETOpenTriangles& surface : scene.GetSurfaces())
            surfaces.append(WriteSurface(surface));
        return {{u"plies"_s, plies}, {u"targets"_s, targets}, {u"surfaces"_s, surfaces}};
    }

private:
    QJsonObject WritePly(const JobPreviewPly& ply) const
    {
        QJsonObject objects;
        for (auto object = ply.objects.cbegin(); object != ply.objects.cend(); ++object)
            objects.insert(QString::number(object.key()), WriteContent(object.value()->GetRep()));
        return {{u"layup"_s, ply.layup},
                {u"sequence"_s, ply.sequence},
                {u"name"_s, ply.name},
                {u"material"_s, ply.material},
                {u"materialDetails"_s, ply.materialDetails},
                {u"direction"_s, ply.direction},
                {u"objects"_s, objects}};
    }

    /*! The primitives, those with equal options as one. */
    QJsonArray WriteContent(const ZETVisRep* rep) const
    {
        struct Batch {
            bool isLines;
            ZETVisOptions options;
            PackedPoints points;
        };
        QList<Batch> batches;
        QList<const ZETVisPrimitive*> primitives;
        QList<ZETVisOptions> options;
        if (rep)
            rep->GetPrimitives(primitives, options);
        for (qsizetype i = 0; i < primitives.size(); ++i) {
            const auto* lines = qobject_cast<const ZETVisPolylinePrimitive*>(primitives[i]);
            auto batch = std::find_if(batches.begin(), batches.end(), [&](const Batch& earlier) {
                return earlier.isLines == (lines != nullptr) && IsDrawnAlike(earlier.options, options[i]);
            });
            if (batch == batches.end())
                batch = batches.insert(batches.end(), {lines != nullptr, options[i], PackedPoints(middle)});
            AppendPoints(*primitives[i], lines, batch->points);
        }
        QJsonArray content;
        for (const Batch& batch : std::as_const(batches))
            content.append(QJsonObject{{u"kind"_s, batch.isLines ? u"lines"_s : u"markers"_s},
                                       {u"color"_s, batch.options.GetColor().name()},
                                       {u"width"_s, batch.options.GetLineThickness()},
                                       {u"depth"_s, batch.options.IsDepthEnabled()},
                                       {u"priority"_s, batch.options.GetPriority()},
                                       {u"points"_s, batch.points.GetText()}});
        return content;
    }

    static bool IsDrawnAlike(const ZETVisOptions& a, const ZETVisOptions& b)
    {
        return a.GetColor() == b.GetColor() && a.GetLineThickness() == b.GetLineThickness() &&
               a.IsDepthEnabled() == b.IsDepthEnabled() && a.GetPriority() == b.GetPriority();
    }

    /*! Lines as pairs. */
    static void AppendPoints(const ZETVisPrimitive& primitive, const ZETVisPolylinePrimitive* lines,
                             PackedPoints& packed)
    {
        const QList<ZETMathPoint>& points = primitive.GetPoints().points;
        if (!lines) {
            for (const ZETMathPoint& point : points)
                packed.Append(point);
            return;
        }
        const bool isPairs = lines->GetStructure() == ZETVisPolylinePrimitive::StructurePairs;
        for (qsizetype i = 0; i + 1 < points.size(); i += isPairs ? 2 : 1) {
            packed.Append(points[i]);
            packed.Append(points[i + 1]);
        }
    }

    QJsonObject WriteSurface(const ZETOpenTriangles& surface) const
    {
        PackedPoints points(middle);
        for (const ZETMathPoint& point : surface.points)
            points.Append(point);
        PackedPoints normals(middle);
        for (const ZETMathVector& normal : surface.normals)
            normals.Append(normal);
        PackedNumbers<quint32> indices;
        for (const int index : surface.indices)
            indices.Append(static_cast<quint32>(index));
        return {{u"points"_s, points.GetText()}, {u"normals"_s, normals.GetText()}, {u"indices"_s, indices.GetText()}};
    }

    JobPreviewScene& scene;
    ZETMathBoundingBox box;
    ZETMathPoint middle;
};

/*! What the page says, by the names that its script uses. */
QJsonObject GetTexts()
{
    QJsonObject types;
    for (int type = ZETLaserOptions::SourcePly; type <= ZETLaserOptions::SourceSeedCurve; ++type)
        types.insert(QString::number(type),
                     JobPreviewScene::GetTypeName(static_cast<ZETLaserOptions::ELaserSourceType>(type)));
    return {
        {u"allPlies"_s, Translate("All plies")},
        {u"plyOf"_s, Translate("Ply %1 of %2")},
        {u"plyCount"_s, Translate("%1 plies")},
        {u"direction"_s, Translate("%1°")},
        {u"previous"_s, Translate("Previous ply")},
        {u"next"_s, Translate("Next ply")},
        {u"show"_s, Translate("Show")},
        {u"view"_s, Translate("View")},
        {u"types"_s, types},
        {u"beneath"_s, Translate("plies beneath")},
        {u"surface"_s, Translate("tool")},
        {u"targets"_s, Translate("targets")},
        {u"hidden"_s, Translate("lines behind the tool")},
        {u"help"_s, Translate("Arrow keys: previous and next ply. Home: first, End: last, A: all plies. Drag: rotate, "
                              "wheel: zoom, right button: move. R: first view.")},
        {u"licences"_s, Translate("Licences")},
        {u"noWebGL"_s, Translate("This browser can't show 3D graphics (WebGL).")},
        {u"sides"_s, QJsonArray{Translate("top"), Translate("bottom"), Translate("front"), Translate("back"),
                                Translate("left"), Translate("right"), Translate("oblique")}},
    };
}

QJsonArray ToJson(const ZETMathVector& vector)
{
    return {vector.GetX(), vector.GetY(), vector.GetZ()};
}

/*! The directions of each side, so that the page's views are those of the pictures. */
QJsonArray GetSides()
{
    QJsonArray sides;
    for (int i = 0; i < ZETOpenView::GetSideNames().size(); ++i) {
        const ZETOpenView view(static_cast<ZETOpenView::Side>(i));
        sides.append(QJsonObject{{u"toEye"_s, ToJson(view.GetToEye())}, {u"up"_s, ToJson(view.GetUp())}});
    }
    return sides;
}

/*! JSON that can stand in a script element whatever its texts say. */
QByteArray ForScript(const QJsonObject& object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact).replace('<', "\\u003c");
}

/*! A script that can stand in a script element: its end tag may only occur in strings, where the bar means nothing. */
QByteArray ForScript(const QString& path)
{
    return ReadFile(path).replace("</script", "<\\/script");
}

/*! The frame of the page with each "<!--name-->" replaced. */
QByteArray Fill(const QHash<QByteArray, QByteArray>& parts)
{
    const QByteArray frame = ReadFile(u":/preview/preview.html"_s);
    QByteArray page;
    qsizetype next = 0;
    while (true) {
        const auto start = frame.indexOf("<!--", next);
        const auto end = frame.indexOf("-->", start);
        if (start < 0 || end < 0)
            return page + frame.mid(next);
        page += frame.mid(next, start - next) + parts.value(frame.mid(start + 4, end - start - 4));
        next = end + 3;
    }
}
} // namespace

JobPreviewPage::Library::Library(const QString& folder)
{
    for (const QString& script : GetLibraryScripts())
        scripts += "<script>\n" + ForScript(folder + u'/' + script) + "\n</script>\n";
    licence = QString::fromUtf8(ReadFile(licenceFile)).toHtmlEscaped().toUtf8();
}

QString JobPreviewPage::Library::GetDefaultFolder()
{
    return u"/usr/share/javascript/three"_s;
}

QByteArray JobPreviewPage::Write(JobPreviewScene& scene, const QString& partName, ZETOpenView::Side side,
                                 const Library& library)
{
    QJsonObject data = PageData(scene).Write();
    data.insert(u"name"_s, partName);
    data.insert(u"side"_s, side);
    data.insert(u"layingSide"_s, scene.GetLayingSide());
    data.insert(u"sides"_s, GetSides());
    data.insert(u"texts"_s, GetTexts());
    return Fill({{"title", partName.toHtmlEscaped().toUtf8()},
                 {"style", ReadFile(u":/preview/preview.css"_s)},
                 {"licences", library.licence},
                 {"library", library.scripts},
                 {"data", ForScript(data)},
                 {"script", ForScript(u":/preview/preview.js"_s)}});
}
