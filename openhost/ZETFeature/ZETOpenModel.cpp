#include "openhost/ZETFeature/ZETOpenModel.h"

#include "openhost/ZETFeature/ZETFeatContainer_p.h"
#include "openhost/ZETFeature/ZETFeatObject_p.h"
#include "openhost/ZETFeature/ZETFeatProperty_p.h"
#include "openhost/ZETGeometry/ZETGeoContainer_p.h"
#include "openhost/ZETGeometry/ZETOpenTypes.h"

#include <ZETFeature/ZETFeatRoot.h>
#include <ZETSystem/ZETSysException.h>

#include <QSet>

using namespace Qt::Literals::StringLiterals;

namespace
{
class TextParameters final : public ZETFeatContainerProvider
{
public:
    explicit TextParameters(const QHash<QString, QString>& values)
        : parameters(values)
    {
    }
    QHash<QString, QString> GetTextParameters(const ZETFeatContainer* container) const override
    {
        Q_UNUSED(container)
        return parameters;
    }

private:
    QHash<QString, QString> parameters;
};

/*! The outdated features that the inputs of \a feature point to. */
QList<ZETFeatObject*> GetOutdatedInputs(const ZETFeatObject& feature)
{
    QList<ZETFeatObject*> inputs;
    for (const ZETFeatObjectPropertyBase* property : ZETFeatPropertyTable::GetReferences(&feature)) {
        ZETFeatObject* input = property->GetPointedObject();
        if (input && property->IsInputProperty() && ZETOpenModel::IsOutdated(*input))
            inputs.append(input);
    }
    return inputs;
}

/*! Updates \a feature behind what its inputs point to. What is in \a begun isn't waited for: features that point to
 *  each other are updated in the order in which they are met. */
bool UpdateBehindInputs(ZETFeatObject* feature, QSet<const ZETFeatObject*>& begun)
{
    bool isValid = true;
    QList<ZETFeatObject*> waiting{feature};
    while (!waiting.isEmpty()) {
        ZETFeatObject* next = waiting.last();
        if (ZETOpenModel::IsOutdated(*next) && !begun.contains(next)) {
            begun.insert(next);
            waiting += GetOutdatedInputs(*next);
            continue;
        }
        waiting.removeLast();
        // A feature that still waits further down is updated there, behind the rest of its inputs.
        if (ZETOpenModel::IsOutdated(*next) && !waiting.contains(next))
            isValid = ZETFeatObjectPrivate::Update(*next) && isValid;
    }
    return isValid;
}

bool UpdateAll(const QList<ZETFeatObject*>& features)
{
    bool isValid = true;
    QSet<const ZETFeatObject*> begun;
    for (ZETFeatObject* feature : features)
        isValid = UpdateBehindInputs(feature, begun) && isValid;
    return isValid;
}

const QMetaObject* GetFeatureType(const QByteArray& className)
{
    const QMetaObject* type = ZETOpenTypes::GetType(className);
    if (!type)
        throw ZETSysException(u"The class \"%1\" is not registered."_s.arg(QString::fromUtf8(className)));
    if (!ZETFeatClassInfo::Inherits(type, &ZETFeatObject::staticMetaObject))
        throw ZETSysException(u"The class \"%1\" is not a feature class."_s.arg(QString::fromUtf8(className)));
    return type;
}

void RequireAllowed(const QMetaObject* type, const ZETFeatObject& parent)
{
    if (parent.IsChildAllowed(type))
        return;
    throw ZETSysException(u"A %1 can't stand below \"%2\", which is a %3: its allowed parents are %4."_s.arg(
        QString::fromUtf8(type->className()), parent.GetLabel(), QString::fromUtf8(parent.metaObject()->className()),
        QString::fromUtf8(ZETFeatClassInfo::Get(type, "allowedParents"))));
}

ZETFeatObject* MakeFeature(const QMetaObject* type, ZETGeoContainer& container, ZETFeatObject* parent)
{
    auto* feature = static_cast<ZETFeatObject*>(ZETOpenTypes::Make(type, container, ZETGeoGeometryRef()));
    ZETFeatObjectPrivate::SetParent(*feature, parent);
    feature->Initialize();
    return feature;
}
} // namespace

ZETFeatObject* ZETOpenModel::Create(const QByteArray& className, ZETFeatObject& parent, ParentCheck check)
{
    const QMetaObject* type = GetFeatureType(className);
    if (check == ParentCheck::AllowedParents)
        RequireAllowed(type, parent);
    if (!parent.GetContainer())
        throw ZETSysException(u"\"%1\" belongs to no container."_s.arg(parent.GetLabel()));
    return MakeFeature(type, *parent.GetContainer(), &parent);
}

ZETFeatObject* ZETOpenModel::Create(const QByteArray& className, ZETFeatContainer& container)
{
    return MakeFeature(GetFeatureType(className), container, nullptr);
}

QList<QByteArray> ZETOpenModel::GetFeatureClasses()
{
    QList<QByteArray> names = ZETOpenTypes::GetRegisteredClasses();
    names.removeIf([](const QByteArray& name) {
        return !ZETFeatClassInfo::Inherits(ZETOpenTypes::GetType(name), &ZETFeatObject::staticMetaObject);
    });
    return names;
}

void ZETOpenModel::Move(ZETFeatObject& feature, ZETFeatObject& parent, int position)
{
    for (const ZETFeatObject* above = &parent; above; above = above->GetParent()) {
        if (above == &feature)
            throw ZETSysException(u"\"%1\" can't be moved below itself."_s.arg(feature.GetLabel()));
    }
    if (feature.GetContainer() != parent.GetContainer())
        throw ZETSysException(u"\"%1\" can't be moved into another model."_s.arg(feature.GetLabel()));
    RequireAllowed(feature.metaObject(), parent);
    ZETFeatObject* oldParent = feature.GetParent();
    const int oldPosition = oldParent ? static_cast<int>(oldParent->GetChildren().indexOf(&feature)) : -1;
    ZETFeatObjectPrivate::SetParent(feature, &parent, position);
    feature.PostMove(oldParent, oldPosition);
}

void ZETOpenModel::SetLabel(ZETFeatObject& feature, const QString& label)
{
    ZETFeatObjectPrivate::Of(feature).label = label;
}

void ZETOpenModel::SetEnabled(ZETFeatObject& feature, bool enabled)
{
    ZETFeatObjectPrivate::Of(feature).isEnabled = enabled;
}

bool ZETOpenModel::IsEnabled(const ZETFeatObject& feature)
{
    return ZETFeatObjectPrivate::Of(feature).isEnabled;
}

bool ZETOpenModel::IsVisible(const ZETFeatObject& feature)
{
    return ZETFeatObjectPrivate::Of(feature).isVisible;
}

QList<ZETOpenModel::Message> ZETOpenModel::GetMessages(const ZETFeatObject& feature)
{
    return ZETFeatObjectPrivate::Of(feature).messages;
}

bool ZETOpenModel::IsOutdated(const ZETFeatObject& feature)
{
    return ZETFeatObjectPrivate::Of(feature).isOutdated;
}

bool ZETOpenModel::IsValid(const ZETFeatObject& feature)
{
    return ZETFeatObjectPrivate::Of(feature).isValid;
}

bool ZETOpenModel::Update(ZETFeatObject& top)
{
    return UpdateAll(QList<ZETFeatObject*>{&top} + top.GetAllChildren());
}

bool ZETOpenModel::Update(ZETFeatContainer& container)
{
    QList<ZETFeatObject*> features;
    for (ZETFeatObject* top : GetTopFeatures(container))
        features << top << top->GetAllChildren();
    return UpdateAll(features);
}

ZETFeatRoot* ZETOpenModel::GetRoot(const ZETFeatContainer& container)
{
    for (ZETFeatObject* feature : GetTopFeatures(container)) {
        if (auto* root = qobject_cast<ZETFeatRoot*>(feature))
            return root;
    }
    return nullptr;
}

QList<ZETFeatObject*> ZETOpenModel::GetTopFeatures(const ZETFeatContainer& container)
{
    QList<ZETFeatObject*> features;
    for (const auto& [id, geometry] : ZETGeoContainerPrivate::Of(container).objects) {
        auto* feature = qobject_cast<ZETFeatObject*>(geometry);
        if (feature && !feature->GetParent())
            features.append(feature);
    }
    return features;
}

void ZETOpenModel::SetProviderUrl(ZETFeatContainer& container, const QUrl& url)
{
    ZETFeatContainerPrivate::Of(container).url = url;
}

void ZETOpenModel::SetTextParameters(ZETFeatContainer& container, const QHash<QString, QString>& parameters)
{
    SetProvider(container, std::make_unique<TextParameters>(parameters));
}

void ZETOpenModel::SetProvider(ZETFeatContainer& container, std::unique_ptr<ZETFeatContainerProvider> provider)
{
    ZETFeatContainerPrivate::Of(container).provider = std::move(provider);
}
