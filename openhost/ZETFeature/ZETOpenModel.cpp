#include "openhost/ZETFeature/ZETOpenModel.h"

#include "openhost/ZETFeature/ZETFeatContainer_p.h"
#include "openhost/ZETFeature/ZETFeatObject_p.h"
#include "openhost/ZETFeature/ZETFeatProperty_p.h"
#include "openhost/ZETGeometry/ZETGeoContainer_p.h"

#include <ZETFeature/ZETFeatRoot.h>

#include <QSet>

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
} // namespace

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
    bool isValid = true;
    QSet<const ZETFeatObject*> begun; // a feature that is met again while its inputs are updated isn't waited for
    for (ZETFeatObject* next : QList<ZETFeatObject*>{&top} + top.GetAllChildren()) {
        QList<ZETFeatObject*> waiting{next};
        while (!waiting.isEmpty()) {
            ZETFeatObject* feature = waiting.last();
            if (IsOutdated(*feature) && !begun.contains(feature)) {
                begun.insert(feature);
                waiting += GetOutdatedInputs(*feature);
                continue;
            }
            waiting.removeLast();
            if (IsOutdated(*feature) && !waiting.contains(feature))
                isValid = ZETFeatObjectPrivate::Update(*feature) && isValid;
        }
    }
    return isValid;
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
