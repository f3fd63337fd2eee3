#include "openhost/layup/ZETOpenLayupBuilder_p.h"

#include "openhost/ZETComposites/ZETOpenComposites.h"
#include "openhost/ZETComposites/ZETOpenGeometryFeature.h"
#include "openhost/ZETFeature/ZETOpenModel.h"
#include "openhost/ZETMaterial/ZETOpenMaterial.h"
#include "openhost/ZETWireframe/ZETOpenWireframe.h"

#include <ZETComposites/ZETCompMfgConfiguration.h>
#include <ZETComposites/ZETCompRoot.h>
#include <ZETComposites/ZETCompRosette.h>
#include <ZETFeature/ZETFeatContainer.h>
#include <ZETMaterial/ZETMatMaterial.h>
#include <ZETMaterial/ZETMatPackaging.h>
#include <ZETWireframe/ZETWFAxisSystem.h>
#include <ZETWireframe/ZETWFPlane.h>

#include <QFileInfo>
#include <QUrl>

#include <algorithm>
#include <cmath>

using namespace Qt::Literals::StringLiterals;

namespace
{
const QStringList unitNames{u"mm"_s, u"cm"_s, u"m"_s, u"in"_s};
constexpr double unitScales[] = {1.0, 10.0, 1000.0, 25.4};
constexpr double defaultProjectionLimit = 1.0; // mm
// No part is so large. Beyond it the kernel has no digits left for what it looks for, and looks on.
constexpr double largestLength = 1e7; // mm

/*! The name of the file without ".layup.json". */
QString GetDefaultName(const QString& file)
{
    QString name = QFileInfo(file).completeBaseName();
    if (name.endsWith(u".layup"_s, Qt::CaseInsensitive))
        name.chop(6);
    return name;
}
} // namespace

ZETOpenLayupModel::ZETOpenLayupModel() = default;
ZETOpenLayupModel::ZETOpenLayupModel(ZETOpenLayupModel&&) noexcept = default;
ZETOpenLayupModel& ZETOpenLayupModel::operator=(ZETOpenLayupModel&&) noexcept = default;
ZETOpenLayupModel::~ZETOpenLayupModel() = default;

ZETOpenLayupModel ZETOpenLayupFile::Load(const QString& file, const ShapeListener& beforeShape)
{
    const ZETOpenJsonDocument document(file);
    return ZETOpenLayupBuilder(document, beforeShape).Build();
}

ZETOpenLayupModel ZETOpenLayupFile::Load(const QString& file, const QByteArray& content)
{
    const ZETOpenJsonDocument document(file, content);
    const ShapeListener nobody;
    return ZETOpenLayupBuilder(document, nobody).Build();
}

ZETOpenLayupBuilder::ZETOpenLayupBuilder(const ZETOpenJsonDocument& layupDocument,
                                         const ZETOpenLayupFile::ShapeListener& shapeListener)
    : document(layupDocument)
    , beforeShape(shapeListener)
    , folder(QFileInfo(layupDocument.GetFile()).absoluteDir())
{
}

const QStringList& ZETOpenLayupBuilder::KeysOf(const char* kind)
{
    static const QStringList none;
    const auto& keys = ZETOpenLayupFile::GetKnownKeys();
    const auto found = keys.constFind(QString::fromLatin1(kind));
    Q_ASSERT(found != keys.constEnd());
    return found != keys.constEnd() ? *found : none;
}

ZETOpenLayupModel ZETOpenLayupBuilder::Build()
{
    const Value file = document.GetRoot();
    ReadHead(file);

    // The order of reading: what is referred to stands ahead of what refers to it.
    const auto readList = [&](const char* key, void (ZETOpenLayupBuilder::*read)(const Value&)) {
        if (const auto list = file.Find(key)) {
            for (const Value& element : list->GetElements(tr("an array of objects")))
                (this->*read)(element);
        }
    };
    readList("shapes", &ZETOpenLayupBuilder::ReadShape);
    readList("surfaces", &ZETOpenLayupBuilder::ReadSurface);
    readList("curves", &ZETOpenLayupBuilder::ReadNamedCurve);
    readList("points", &ZETOpenLayupBuilder::ReadNamedPoint);
    readList("axisSystems", &ZETOpenLayupBuilder::ReadAxisSystem);
    readList("planes", &ZETOpenLayupBuilder::ReadPlane);
    readList("rosettes", &ZETOpenLayupBuilder::ReadRosette);
    readList("materials", &ZETOpenLayupBuilder::ReadMaterial);
    readList("configurations", &ZETOpenLayupBuilder::ReadConfiguration);
    FinishConfigurations();
    readList("targets", &ZETOpenLayupBuilder::ReadTarget);
    readList("projectors", &ZETOpenLayupBuilder::ReadProjector);
    readList("layups", &ZETOpenLayupBuilder::ReadLayup);

    UpdateModel();
    return std::move(model);
}

void ZETOpenLayupBuilder::ReadHead(const Value& file)
{
    file.CheckKeys(KeysOf("file"));
    const QString format = u"zetlaser-layup"_s;
    const Value formatValue = file.Get("format", u'"' + format + u'"');
    if (formatValue.ToText(u'"' + format + u'"') != format)
        formatValue.FailExpected(u'"' + format + u'"');
    file.Get("version", u"1"_s).ToInteger(1, 1, tr("the version 1"));
    const int unit = file.Get("units", tr("one of \"%1\"").arg(unitNames.join(u"\", \""_s))).ToChoice(unitNames);
    unitScale = unitScales[unit];

    model.unit = unitNames[unit];
    model.container = std::make_unique<ZETFeatContainer>();
    ZETOpenModel::SetProviderUrl(*model.container,
                                 QUrl::fromLocalFile(QFileInfo(document.GetFile()).absoluteFilePath()));
    model.root = new ZETCompRoot(model.container.get());
    const auto name = file.Find("name");
    ZETOpenModel::SetLabel(*model.root, name ? name->ToName() : GetDefaultName(document.GetFile()));
    if (const auto parameters = file.Find("parameters"))
        ReadParameters(*parameters);
    const auto limit = file.Find("projectionLimit");
    projectionLimit = limit ? ToPositiveLength(*limit, tr("a length above 0")) : defaultProjectionLimit;
}

void ZETOpenLayupBuilder::ReadParameters(const Value& parameters)
{
    if (!parameters.IsObject())
        parameters.FailExpected(tr("an object of texts"));
    QHash<QString, QString> texts;
    for (const QString& key : parameters.GetKeys())
        texts.insert(key, parameters.Get(key.toUtf8().constData(), tr("a text")).ToText());
    ZETOpenModel::SetTextParameters(*model.container, texts);
}

void ZETOpenLayupBuilder::UpdateModel()
{
    Guard(document.GetRoot(), [&] { return ZETOpenModel::Update(*model.root); });
    for (const ZETFeatObject* feature : model.root->GetAllChildren()) {
        const Place place = places.value(feature);
        for (const ZETOpenModel::Message& message : ZETOpenModel::GetMessages(*feature))
            model.warnings.append(ZETOpenJsonError(document.GetFile(), place.line, place.path, message.text));
    }
}

QString ZETOpenLayupBuilder::ReadRequiredName(const Value& object) const
{
    return object.Get("name", tr("a text")).ToName();
}

ZETOpenJsonValue ZETOpenLayupBuilder::WithName(const Value& object, const QString& parentPath)
{
    const auto name = object.Find("name");
    if (!name || !name->IsText() || name->ToText().isEmpty())
        return object;
    return object.WithPath(parentPath + u'.' + name->ToText());
}

void ZETOpenLayupBuilder::ClaimName(QHash<QString, int>& taken, const Value& object, const QString& name)
{
    const auto found = taken.constFind(name);
    if (found != taken.constEnd())
        object.Fail(tr("duplicate name \"%1\", first used on line %2").arg(name, QString::number(*found)));
    taken.insert(name, object.GetLine());
}

void ZETOpenLayupBuilder::SetUp(ZETFeatObject& feature, const Value& object)
{
    if (const auto name = object.Find("name"))
        ZETOpenModel::SetLabel(feature, name->ToName());
    if (const auto enabled = object.Find("enabled"))
        ZETOpenModel::SetEnabled(feature, enabled->ToBool());
    places.insert(&feature, {object.GetPath(), object.GetLine()});
}

double ZETOpenLayupBuilder::ToMillimetres(const Value& where, double number) const
{
    const double length = unitScale * number;
    if (!(std::abs(length) <= largestLength))
        where.Fail(tr("expected 10 km at most, found %1 %2").arg(number, 0, 'g', 10).arg(model.unit));
    return length;
}

double ZETOpenLayupBuilder::ToLength(const Value& number) const
{
    return ToMillimetres(number, number.ToNumber());
}

double ZETOpenLayupBuilder::ToPositiveLength(const Value& number, const QString& what) const
{
    return ToMillimetres(number, number.ToPositiveNumber(what));
}

ZETMathPoint ZETOpenLayupBuilder::ToPoint(const Value& coordinates) const
{
    double numbers[3];
    coordinates.ToNumbers(numbers, 3, tr("three coordinates"));
    return {ToMillimetres(coordinates, numbers[0]), ToMillimetres(coordinates, numbers[1]),
            ToMillimetres(coordinates, numbers[2])};
}

ZETMathPoint ZETOpenLayupBuilder::ToFlatPoint(const Value& coordinates) const
{
    double numbers[2];
    coordinates.ToNumbers(numbers, 2, tr("two coordinates"));
    return {ToMillimetres(coordinates, numbers[0]), ToMillimetres(coordinates, numbers[1]), 0.0};
}

ZETMathVector ZETOpenLayupBuilder::ToDirection(const Value& coordinates) const
{
    double numbers[3];
    coordinates.ToNumbers(numbers, 3, tr("a direction of three numbers"));
    const double largest = std::max({std::abs(numbers[0]), std::abs(numbers[1]), std::abs(numbers[2])});
    if (!(largest > 0.0))
        coordinates.Fail(tr("expected a direction, found one of length 0"));
    // Scaled by a power of two, which changes no digit, because the square of a large or a small number is none.
    for (double& number : numbers)
        number = std::scalbn(number, -std::ilogb(largest));
    ZETMathVector direction(numbers[0], numbers[1], numbers[2]);
    direction.Normalize();
    return direction;
}

QList<ZETMathPoint> ZETOpenLayupBuilder::ToPoints(const Value& array) const
{
    QList<ZETMathPoint> points;
    for (const Value& point : array.GetElements(tr("an array of points")))
        points.append(ToPoint(point));
    return points;
}

ZETMathAxis ZETOpenLayupBuilder::ToAxis(const Value& object) const
{
    const auto origin = object.Find("origin");
    const Value x = object.Get("x", tr("a direction"));
    const Value y = object.Get("y", tr("a direction"));
    const ZETMathVector first = ToDirection(x);
    ZETMathVector third = first ^ ToDirection(y);
    constexpr double parallel = 1e-9;
    if (third.GetSquaredMagnitude() < parallel * parallel)
        y.Fail(tr("expected a direction that isn't parallel to \"x\""));
    third.Normalize();
    ZETMathAxis axis;
    axis.SetOrigin(origin ? ToPoint(*origin) : ZETMathPoint());
    axis.SetDirections(first, third ^ first, third);
    return axis;
}

void ZETOpenLayupBuilder::ReadShape(const Value& object)
{
    object.CheckKeys(KeysOf("shape"));
    const QString name = ReadRequiredName(object);
    const Value file = object.Get("file", tr("the path of a shape file"));
    const QString path = folder.absoluteFilePath(file.ToName());
    if (beforeShape)
        beforeShape(path);
    if (!QFileInfo::exists(path))
        file.Fail(tr("expected a shape file, found no file %1").arg(QDir::toNativeSeparators(path)));
    std::optional<double> scale;
    if (const auto value = object.Find("scale"))
        scale = value->ToPositiveNumber(tr("a number above 0 (mm a unit of the shape file)"));
    Shape shape;
    shape.file = Guard(file, [&] { return std::make_unique<ZETOpenShapeFile>(path, scale); });
    Register(shapes, object, name, std::move(shape), tr("shape"));
}

void ZETOpenLayupBuilder::ReadAxisSystem(const Value& object)
{
    object.CheckKeys(KeysOf("axisSystem"));
    const QString name = ReadRequiredName(object);
    auto* feature = new ZETWFAxisSystem(model.root);
    SetUp(*feature, object);
    ZETOpenWireframe::SetAxis(*feature, ToAxis(object));
    Register(axisSystems, object, name, feature, tr("axis system"));
}

void ZETOpenLayupBuilder::ReadRosette(const Value& object)
{
    object.CheckKeys(KeysOf("axisSystem"));
    const QString name = ReadRequiredName(object);
    auto* feature = new ZETCompRosette(model.root);
    SetUp(*feature, object);
    ZETOpenWireframe::SetAxis(*feature, ToAxis(object));
    Register(axisSystems, object, name, static_cast<ZETWFAxisSystem*>(feature), tr("axis system"));
    Register(rosettes, object, name, feature, tr("rosette"));
}

void ZETOpenLayupBuilder::ReadPlane(const Value& object)
{
    object.CheckKeys(KeysOf("axisSystem"));
    const QString name = ReadRequiredName(object);
    auto* feature = new ZETWFPlane(model.root);
    SetUp(*feature, object);
    const ZETMathAxis axis = ToAxis(object);
    ZETMathPlane plane;
    plane.SetOrigin(axis.GetOrigin());
    plane.SetDirections(axis.GetFirstDirection(), axis.GetSecondDirection());
    ZETOpenWireframe::SetPlane(*feature, plane);
    Register(planes, object, name, feature, tr("plane"));
}

void ZETOpenLayupBuilder::ReadMaterial(const Value& object)
{
    object.CheckKeys(KeysOf("material"));
    const QString name = ReadRequiredName(object);
    auto* feature = new ZETMatMaterial(model.root);
    SetUp(*feature, object);
    if (const auto type = object.Find("type"))
        ZETOpenMaterial::SetMaterialType(*feature, type->ToText());
    if (const auto id = object.Find("id"))
        ZETOpenMaterial::SetMaterialId(*feature, id->ToText());
    if (const auto thickness = object.Find("thickness"))
        ZETOpenMaterial::SetThickness(*feature, ToPositiveLength(*thickness, tr("a thickness above 0")));
    Register(materials, object, name, feature, tr("material"));

    const auto list = object.Find("packagings");
    if (!list)
        return;
    for (const Value& element : list->GetElements(tr("an array of packagings"))) {
        element.CheckKeys(KeysOf("packaging"));
        const QString packagingName = ReadRequiredName(element);
        auto* packaging = new ZETMatPackaging(feature);
        SetUp(*packaging, element);
        const auto width = element.Find("width");
        const auto length = element.Find("length");
        ZETOpenMaterial::SetSize(*packaging, width ? ToPositiveLength(*width, tr("a width above 0")) : 0.0,
                                 length ? ToPositiveLength(*length, tr("a length above 0")) : 0.0);
        Register(packagings, element, packagingName, packaging, tr("packaging"));
    }
}

void ZETOpenLayupBuilder::ReadConfiguration(const Value& object)
{
    object.CheckKeys(KeysOf("configuration"));
    const QString name = ReadRequiredName(object);
    auto* feature = new ZETCompMfgConfiguration(model.root);
    SetUp(*feature, object);
    ZETOpenComposites::MfgConfigurationSettings settings;
    const auto readFlag = [&](const char* key, bool& flag) {
        if (const auto value = object.Find(key))
            flag = value->ToBool();
    };
    readFlag("use3D", settings.use3D);
    readFlag("includeNormals", settings.includeNormalVectors);
    readFlag("skipParentPly", settings.skipParentPlyWithSubPlies);
    readFlag("seedPoint", settings.seedPoint);
    readFlag("seedCurve", settings.seedCurve);
    readFlag("laserExtraGeometry", settings.laserDataExtraGeometry);
    readFlag("nestingExtraGeometry", settings.nestingDataExtraGeometry);
    readFlag("nestingRosette", settings.nestingDataRosette);
    if (const auto size = object.Find("laserRosetteSize"))
        settings.laserDataRosetteSize = ToPositiveLength(*size, tr("a length above 0"));
    if (const auto size = object.Find("nestingRosetteSize"))
        settings.nestingDataRosetteSize = ToPositiveLength(*size, tr("a length above 0"));
    ZETOpenComposites::SetSettings(*feature, settings);
    Register(configurations, object, name, feature, tr("configuration"));
    configurationOrder.append(feature);

    bool isActive = false;
    readFlag("active", isActive);
    if (isActive && activeConfiguration)
        object.Get("active", QString())
            .Fail(tr("expected one active configuration, found a second beside \"%1\"")
                      .arg(activeConfiguration->GetLabel()));
    if (isActive)
        activeConfiguration = feature;
}

void ZETOpenLayupBuilder::FinishConfigurations()
{
    if (configurationOrder.isEmpty()) {
        // Without a configuration no ply can be selected.
        auto* feature = new ZETCompMfgConfiguration(model.root);
        ZETOpenModel::SetLabel(*feature, tr("Default"));
        configurationOrder.append(feature);
    }
    if (!activeConfiguration)
        activeConfiguration = configurationOrder.first();
    ZETOpenComposites::SetActiveMfgConfiguration(*model.root, activeConfiguration);
}

void ZETOpenLayupBuilder::ReadChildren(const Value& object, const QStringList& kinds, const QString& defaultKind,
                                       const std::function<void(const Value&, int)>& read)
{
    const auto list = object.Find("children");
    if (!list)
        return;
    QHash<QString, int> taken;
    for (const Value& element : list->GetElements(tr("an array of objects"))) {
        if (!element.IsObject())
            element.FailExpected(tr("an object"));
        const Value child = WithName(element, object.GetPath());
        if (const auto name = child.Find("name"))
            ClaimName(taken, child, name->ToName());
        const auto kind = child.Find("kind");
        if (!kind && defaultKind.isEmpty())
            child.Get("kind", tr("one of \"%1\"").arg(kinds.join(u"\", \""_s)));
        read(child, static_cast<int>(kind ? kind->ToChoice(kinds) : kinds.indexOf(defaultKind)));
    }
}
