#pragma once

#include "openhost/layup/ZETOpenLayupFile.h"
#include "openhost/ZETGeometry/ZETOpenCurveOnSurface.h"
#include "openhost/ZETGeometry/ZETOpenShapeFile.h"
#include "openhost/ZETGeometry/ZETOpenSurface.h"

#include <ZETComposites/ZETCompLayup.h>
#include <ZETGeometry/ZETGeoAssembledCurveOnSurface.h>
#include <ZETMathematics/ZETMathAxis.h>
#include <ZETMathematics/ZETMathPlane.h>
#include <ZETMathematics/ZETMathPoint.h>

#include <QCoreApplication>
#include <QDir>
#include <QHash>
#include <QSet>
#include <QVariant>

#include <functional>
#include <map>

class ZETCompFlatPattern;
class ZETCompMfgConfiguration;
class ZETCompPly;
class ZETCompPlyBase;
class ZETCompRosette;
class ZETCompStrategy;
class ZETCompStrategyBase;
class ZETFeatGeometry;
class ZETFeatObject;
class ZETMatMaterial;
class ZETMatPackaging;
class ZETOpenGeometryFeature;
class ZETTopBody;
class ZETWFAxisSystem;
class ZETWFPlane;

/*! Builds the model of one layup file, once. Every object of the file is read by one function, which checks its keys
 *  first. Everything that is referred to by name stands ahead of what refers to it, so one pass is enough.
 *
 *  ZETOpenLayupBuilder.cpp holds the order, the names and the lists of the top level, ZETOpenLayupGeometry.cpp
 *  surfaces, curves and points, ZETOpenLayupPlies.cpp layups down to flat patterns, ZETOpenLayupFeatures.cpp what is
 *  made by the names of its classes. */
class ZETOpenLayupBuilder
{
    Q_DECLARE_TR_FUNCTIONS(ZETOpenLayupBuilder)

public:
    /*! \a shapeListener may be empty. */
    ZETOpenLayupBuilder(const ZETOpenJsonDocument& document, const ZETOpenLayupFile::ShapeListener& shapeListener);
    ZETOpenLayupModel Build();

private:
    using Value = ZETOpenJsonValue;
    using SurfaceRef = ZETOpenRef<ZETOpenSurface>;
    using CurveRef = ZETOpenRef<ZETOpenCurveOnSurface>;
    using BoundaryRef = ZETOpenRef<ZETGeoAssembledCurveOnSurface>;

    /*! What stands under a name, with the line of its first use. */
    template <typename T>
    struct Named {
        T item;
        int line = 0;
    };
    template <typename T>
    using Names = std::map<QString, Named<T>>;

    /*! A curve: on a surface as one or more edges, or in space alone. */
    struct Curve {
        SurfaceRef surface; //!< null for a curve in space
        QList<CurveRef> edges;
        QList<bool> senses;         //!< of the same index as edges
        QList<ZETMathPoint> points; //!< of a curve in space
        bool isClosed = false;
    };
    /*! A geometry of the top level. */
    struct Geometry {
        enum Kind { Surface, CurveKind, Point } kind = Surface;
        ZETOpenGeometryFeature* feature = nullptr;
        SurfaceRef surface; //!< the surface itself, or the one that a point lies on
        Curve curve;
        ZETMathPoint point;
    };
    struct Shape {
        std::unique_ptr<ZETOpenShapeFile> file;
    };
    /*! What the objects below a layup look at. */
    struct LayupContext {
        SurfaceRef workpiece;
        QString workpieceName;
    };

    // ---- Order and names ----
    /*! The keys that an object of \a kind may have. */
    static const QStringList& KeysOf(const char* kind);
    void ReadHead(const Value& file);
    void ReadParameters(const Value& parameters);
    void UpdateModel();
    QString ReadRequiredName(const Value& object) const;
    /*! The object under the path that its name gives it below \a parentPath, once that is known. */
    static Value WithName(const Value& object, const QString& parentPath);
    /*! Takes \a name for \a object among siblings; throws if one of them has it. */
    static void ClaimName(QHash<QString, int>& taken, const Value& object, const QString& name);
    template <typename T>
    void Register(Names<T>& names, const Value& object, const QString& name, T item, const QString& what) const;
    /*! What the text \a reference names; \a what says what it must be, such as "surface". */
    template <typename T>
    const T& Resolve(const Names<T>& names, const Value& reference, const QString& what) const;
    void SetUp(ZETFeatObject& feature, const Value& object);

    /*! \a number, which stands at \a where, in mm; throws if it is larger than any part. */
    double ToMillimetres(const Value& where, double number) const;
    double ToLength(const Value& number) const;
    double ToPositiveLength(const Value& number, const QString& what) const;
    ZETMathPoint ToPoint(const Value& coordinates) const;
    ZETMathPoint ToFlatPoint(const Value& coordinates) const;
    ZETMathVector ToDirection(const Value& coordinates) const;
    QList<ZETMathPoint> ToPoints(const Value& array) const;
    /*! Calls \a make; what the host's builders refuse becomes a fault of \a value. */
    template <typename Function>
    static auto Guard(const Value& value, Function make) -> decltype(make());

    void ReadShape(const Value& shape);
    void ReadAxisSystem(const Value& object);
    void ReadRosette(const Value& object);
    void ReadPlane(const Value& object);
    ZETMathAxis ToAxis(const Value& object) const;
    void ReadMaterial(const Value& object);
    void ReadConfiguration(const Value& object);
    void FinishConfigurations();

    // ---- Geometry ----
    /*! Gives \a geometry a feature with \a body, and makes it known under \a name. */
    void AddGeometry(const Value& object, const QString& name, Geometry geometry, std::unique_ptr<ZETTopBody> body);
    void ReadSurface(const Value& object);
    SurfaceRef MakeSurface(const Value& object);
    SurfaceRef MakeShapeSurface(const Value& object) const;
    SurfaceRef MakePlaneSurface(const Value& object) const;
    SurfaceRef MakeCylinderSurface(const Value& object) const;
    SurfaceRef MakeConeSurface(const Value& object) const;
    SurfaceRef MakeSphereSurface(const Value& object) const;
    SurfaceRef MakeBSplineSurface(const Value& object) const;
    /*! Third direction from "axis" (default z), first from "x" as far as it stands at a right angle to it. */
    ZETMathAxis ToTurnedAxis(const Value& object) const;
    void ReadNamedCurve(const Value& object);
    void ReadNamedPoint(const Value& object);
    Curve MakeCurve(const Value& object) const;
    Curve MakeCurveOfPoints(const Value& where, const Value& object, const QList<ZETMathPoint>& points,
                            bool isClosed) const;
    Curve MakeCurveOfEdges(const Value& object) const;
    Curve MakeCurveOfShape(const Value& object) const;
    QList<ZETMathPoint> MakeCircle(const Value& object) const;
    CurveRef MakeCurveOnSurface(const Value& points, const QList<ZETMathPoint>& coordinates, const SurfaceRef& surface,
                                bool isClosed, bool isSmooth, double limit) const;
    std::unique_ptr<ZETTopBody> MakeBody(const Value& object, const Curve& curve) const;
    std::unique_ptr<ZETTopBody> MakePointBody(const Value& object, ZETMathPoint& position, SurfaceRef& surface) const;
    SurfaceRef FindSurface(const Value& object) const;
    double GetLimit(const Value& object) const;
    void CheckDistance(const Value& place, const ZETMathPoint& point, const SurfaceRef& surface, double limit) const;
    void CheckDistances(const Value& points, const QList<ZETMathPoint>& coordinates, const SurfaceRef& surface,
                        double limit) const;
    const Geometry& ResolveGeometry(const Value& reference, Geometry::Kind kind) const;

    // ---- Layups ----
    void ReadLayup(const Value& object);
    void ReadSequence(const Value& object, ZETFeatObject& parent, const LayupContext& context);
    void ReadPly(const Value& object, ZETFeatObject& parent, const LayupContext& context);
    void ReadSubPly(const Value& object, ZETFeatObject& parent, const LayupContext& context);
    void ReadBoundaries(const Value& object, ZETCompPlyBase& ply, const LayupContext& context);
    QList<BoundaryRef> MakeBoundaries(const Value& array, const LayupContext& context) const;
    BoundaryRef MakeBoundary(const Value& value, const LayupContext& context) const;
    BoundaryRef MakeNamedBoundary(const Value& reference, const LayupContext& context) const;
    void CheckArea(const Value& value, const ZETGeoAssembledCurveOnSurface& boundary) const;
    void ReadStrategies(const Value& object, ZETCompPlyBase& ply, const LayupContext& context, bool isSubPly);
    ZETCompStrategy* ReadStrategy(const Value& object, ZETCompPlyBase& ply);
    ZETCompStrategyBase* ReadSubdivision(const Value& object, ZETCompPlyBase& ply, const LayupContext& context);
    void ReadFlatPattern(const Value& object, ZETFeatObject& parent);
    void ReadFlatGeometry(const Value& object, ZETFeatObject& parent);
    template <typename FlatCurve>
    void ReadFlatCurve(const Value& object, ZETFeatObject& parent);
    void ReadFlatPoint(const Value& object, ZETFeatObject& parent);
    void ReadChildren(const Value& object, const QStringList& kinds, const QString& defaultKind,
                      const std::function<void(const Value&, int kind)>& read);

    // ---- Features by name ----
    /*! A new feature of a registered class, below \a parent. */
    ZETFeatObject* MakeFeature(const QByteArray& className, ZETFeatObject& parent, const Value& object);
    void SetProperty(ZETFeatObject& feature, const QByteArray& name, const QVariant& value, const Value& object) const;
    void SetNumberProperty(ZETFeatObject& feature, const QByteArray& name, int number, const Value& object) const;
    void ReadTarget(const Value& object);
    void ReadProjector(const Value& object);
    void ReadExtraGeometry(const Value& object, ZETFeatObject& parent);
    void ReadExtraChildren(const Value& object, ZETFeatObject& parent);
    void ReadParameter(const Value& object, ZETFeatObject& parent);
    void ReadText(const Value& object, ZETFeatObject& parent);

    const ZETOpenJsonDocument& document;
    const ZETOpenLayupFile::ShapeListener& beforeShape;
    QDir folder;
    ZETOpenLayupModel model;
    double unitScale = 1.0;       //!< mm a unit of the file
    double projectionLimit = 1.0; //!< mm
    Names<Shape> shapes;
    Names<Geometry> geometries;
    Names<ZETWFAxisSystem*> axisSystems; //!< rosettes included
    Names<ZETCompRosette*> rosettes;
    Names<ZETWFPlane*> planes;
    Names<ZETMatMaterial*> materials;
    Names<ZETMatPackaging*> packagings;
    Names<ZETCompMfgConfiguration*> configurations;
    QList<ZETCompMfgConfiguration*> configurationOrder;
    ZETCompMfgConfiguration* activeConfiguration = nullptr;
    Names<ZETFeatObject*> targets;
    Names<ZETFeatObject*> projectors;
    QHash<QString, int> layupNames;
    struct Place {
        QString path;
        int line;
    };
    QHash<const ZETFeatObject*, Place> places;
};

template <typename T>
void ZETOpenLayupBuilder::Register(Names<T>& names, const Value& object, const QString& name, T item,
                                   const QString& what) const
{
    const auto found = names.find(name);
    if (found != names.end())
        object.Fail(tr("duplicate name \"%1\" of a %2, first used on line %3")
                        .arg(name, what, QString::number(found->second.line)));
    Named<T> named{std::move(item), object.GetLine()};
    names.emplace(name, std::move(named));
}

template <typename T>
const T& ZETOpenLayupBuilder::Resolve(const Names<T>& names, const Value& reference, const QString& what) const
{
    const QString name = reference.ToText(tr("the name of a %1").arg(what));
    const auto found = names.find(name);
    if (found != names.end())
        return found->second.item;
    QStringList known;
    for (const auto& [key, item] : names)
        known.append(key);
    const QString nearest = ZETOpenJsonDocument::GetNearest(name, known);
    if (!nearest.isEmpty())
        reference.Fail(tr("unknown %1 \"%2\", did you mean \"%3\"?").arg(what, name, nearest));
    reference.Fail(tr("unknown %1 \"%2\"").arg(what, name));
}

template <typename Function>
auto ZETOpenLayupBuilder::Guard(const Value& value, Function make) -> decltype(make())
{
    try {
        return make();
    } catch (const ZETOpenJsonError&) {
        throw;
    } catch (const ZETSysException& exception) {
        value.Fail(exception.GetMessage());
    }
}
