#include "openhost/layup/ZETOpenLayupBuilder_p.h"

#include "openhost/ZETComposites/ZETOpenGeometryFeature.h"
#include "openhost/ZETFeature/ZETOpenModel.h"

#include <ZETComposites/ZETCompRoot.h>
#include <ZETFeature/ZETFeatFolder.h>
#include <ZETTopology/ZETTopBody.h>
#include <ZETWireframe/ZETWFAxisSystem.h>

#include <QMetaProperty>
#include <QSequentialIterable>

using namespace Qt::Literals::StringLiterals;

// The features of the laser library are known here by their class and property names only: a host serves any library
// that registers its classes.

namespace
{
const QStringList scopes{u"all-plies"_s, u"plies-below"_s, u"until-next"_s, u"parent-only"_s};
const QStringList outputs{u"flat"_s, u"3d"_s, u"nesting"_s}; // in the order of their bits, 1, 2, 4
const QStringList parameterTypes{u"information"_s, u"message"_s, u"graphic"_s, u"query"_s, u"literal"_s, u"note"_s};
} // namespace

ZETFeatObject* ZETOpenLayupBuilder::MakeFeature(const QByteArray& className, ZETFeatObject& parent, const Value& object)
{
    // Extra geometry right below the root is for all layups, although its class lists layups and deeper only.
    const auto check =
        &parent == model.root ? ZETOpenModel::ParentCheck::None : ZETOpenModel::ParentCheck::AllowedParents;
    ZETFeatObject* feature = Guard(object, [&] { return ZETOpenModel::Create(className, parent, check); });
    SetUp(*feature, object);
    return feature;
}

void ZETOpenLayupBuilder::SetProperty(ZETFeatObject& feature, const QByteArray& name, const QVariant& value,
                                      const Value& object) const
{
    const QMetaObject* type = feature.metaObject();
    const int index = type->indexOfProperty(name.constData());
    if (index < 0 || !type->property(index).write(&feature, value))
        object.Fail(tr("the class %1 takes no property %2")
                        .arg(QString::fromLatin1(type->className()), QString::fromLatin1(name)));
}

void ZETOpenLayupBuilder::SetNumberProperty(ZETFeatObject& feature, const QByteArray& name, int number,
                                            const Value& object) const
{
    // Enumerations and flags are stored as one int, and not all of them can be converted from one.
    const QMetaObject* type = feature.metaObject();
    const QMetaType valueType = type->property(type->indexOfProperty(name.constData())).metaType();
    const bool isNumber = valueType.isValid() && valueType.sizeOf() == static_cast<qsizetype>(sizeof number);
    SetProperty(feature, name, isNumber ? QVariant(valueType, &number) : QVariant(), object);
}

void ZETOpenLayupBuilder::ReadTarget(const Value& object)
{
    object.CheckKeys(KeysOf("target"));
    const QString name = ReadRequiredName(object);
    const auto reference = object.Find("point");
    const auto at = object.Find("at");
    if (reference && at)
        at->Fail(tr("expected either \"point\" or \"at\", found both"));
    ZETFeatGeometry* point = nullptr;
    if (reference) {
        point = ResolveGeometry(*reference, Geometry::Point).feature;
    } else {
        object.Get("at", tr("three coordinates"));
        Geometry geometry;
        auto body = MakePointBody(object, geometry.point, geometry.surface);
        auto* feature = new ZETOpenGeometryFeature(model.root);
        ZETOpenModel::SetLabel(*feature, name);
        feature->SetBody(std::move(body));
        point = feature;
    }
    ZETFeatObject* target = MakeFeature("ZETLaserTarget", *model.root, object);
    SetProperty(*target, "point", QVariant::fromValue(point), object);
    if (const auto drift = object.Find("drift"))
        SetProperty(*target, "isDrift", drift->ToBool(), object);
    if (const auto comment = object.Find("comment"))
        SetProperty(*target, "comment", comment->ToText(), object);
    Register(targets, object, name, target, tr("target"));
}

void ZETOpenLayupBuilder::ReadProjector(const Value& object)
{
    object.CheckKeys(KeysOf("projector"));
    const QString name = ReadRequiredName(object);
    ZETFeatObject* projector = MakeFeature("ZETLaserProjector", *model.root, object);
    if (const auto comment = object.Find("comment"))
        SetProperty(*projector, "comment", comment->ToText(), object);

    const Value list = object.Get("targets", tr("an array of names of targets"));
    QVariant values = projector->property("targets");
    if (!values.canView<QSequentialIterable>())
        list.Fail(tr("the class %1 takes no property %2").arg(u"ZETLaserProjector"_s, u"targets"_s));
    auto view = values.view<QSequentialIterable>();
    for (const Value& reference : list.GetElements(tr("an array of names of targets"))) {
        QObject* target = Resolve(targets, reference, tr("target"));
        view.addValue(QVariant::fromValue(target));
    }
    SetProperty(*projector, "targets", values, list);
    Register(projectors, object, name, projector, tr("projector"));
}

void ZETOpenLayupBuilder::ReadExtraGeometry(const Value& object, ZETFeatObject& parent)
{
    object.CheckKeys(KeysOf("extraGeometry"));
    ReadRequiredName(object);
    ZETFeatObject* feature = MakeFeature("ZETLaserExtraGeometry", parent, object);
    const auto scope = object.Find("scope");
    SetNumberProperty(*feature, "scope", scope ? scope->ToChoice(scopes) : 0, object);
    int filters = 0;
    const Value list = object.Get("outputs", tr("an array of \"%1\"").arg(outputs.join(u"\", \""_s)));
    for (const Value& output : list.GetElements(tr("an array of \"%1\"").arg(outputs.join(u"\", \""_s))))
        filters |= 1 << output.ToChoice(outputs);
    SetNumberProperty(*feature, "filters", filters, object);
    ReadExtraChildren(object, *feature);
}

void ZETOpenLayupBuilder::ReadExtraChildren(const Value& object, ZETFeatObject& parent)
{
    const QStringList kinds{u"folder"_s, u"curve"_s, u"point"_s, u"parameter"_s, u"text"_s};
    ReadChildren(object, kinds, QString(), [&](const Value& child, int which) {
        if (which == 0) {
            child.CheckKeys(KeysOf("folder"));
            auto* inner = new ZETFeatFolder(&parent);
            SetUp(*inner, child);
            ReadExtraChildren(child, *inner);
        } else if (which == 1) {
            child.CheckKeys(KeysOf("curve"));
            auto body = MakeBody(child, MakeCurve(child));
            auto* feature = new ZETOpenGeometryFeature(&parent);
            SetUp(*feature, child);
            feature->SetBody(std::move(body));
        } else if (which == 2) {
            child.CheckKeys(KeysOf("point"));
            Geometry geometry;
            auto body = MakePointBody(child, geometry.point, geometry.surface);
            auto* feature = new ZETOpenGeometryFeature(&parent);
            SetUp(*feature, child);
            feature->SetBody(std::move(body));
        } else if (which == 3) {
            ReadParameter(child, parent);
        } else {
            ReadText(child, parent);
        }
    });
}

void ZETOpenLayupBuilder::ReadParameter(const Value& object, ZETFeatObject& parent)
{
    object.CheckKeys(KeysOf("parameter"));
    ZETFeatObject* feature = MakeFeature("ZETLaserParameter", parent, object);
    const Value type = object.Get("type", tr("one of \"%1\"").arg(parameterTypes.join(u"\", \""_s)));
    SetNumberProperty(*feature, "type", type.ToChoice(parameterTypes), object);
    SetProperty(*feature, "text", object.Get("text", tr("a text")).ToName(), object);
}

void ZETOpenLayupBuilder::ReadText(const Value& object, ZETFeatObject& parent)
{
    object.CheckKeys(KeysOf("text"));
    const auto axis = object.Find("axis");
    for (const char* key : {"anchor", "support", "along", "verticalMirror", "horizontalMirror"}) {
        if (axis && object.Has(key))
            object.Get(key, QString()).Fail(tr("expected a text either by \"axis\" or on a \"support\", found both"));
    }
    ZETFeatObject* feature = nullptr;
    if (axis) {
        feature = MakeFeature("ZETLaser3DTextByAxis", parent, object);
        SetProperty(*feature, "axis", QVariant::fromValue(Resolve(axisSystems, *axis, tr("axis system"))), object);
    } else {
        const Value anchor = object.Get("anchor", tr("the name of a point (or \"axis\" with that of an axis system)"));
        const Value support = object.Get("support", tr("the name of a surface"));
        const Value along = object.Get("along", tr("the name of a curve"));
        feature = MakeFeature("ZETLaser3DTextOnSupport", parent, object);
        const auto setGeometry = [&](const char* name, const Value& reference, Geometry::Kind kind) {
            ZETFeatGeometry* geometry = ResolveGeometry(reference, kind).feature;
            SetProperty(*feature, name, QVariant::fromValue(geometry), object);
        };
        setGeometry("anchorpoint", anchor, Geometry::Point);
        setGeometry("support", support, Geometry::Surface);
        setGeometry("direction", along, Geometry::CurveKind);
        for (const char* mirror : {"verticalMirror", "horizontalMirror"}) {
            if (const auto value = object.Find(mirror))
                SetProperty(*feature, mirror, value->ToBool(), object);
        }
    }
    SetProperty(*feature, "text", object.Get("text", tr("a text")).ToName(), object);
    if (const auto size = object.Find("size"))
        SetProperty(*feature, "size", ToPositiveLength(*size, tr("a size above 0")), object);
}
