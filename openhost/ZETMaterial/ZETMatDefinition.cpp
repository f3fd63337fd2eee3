#include "openhost/ZETMaterial/ZETMatDefinition_p.h"

#include <ZETFeature/ZETFeatObject.h>

ZETMatDefinition::ZETMatDefinition()
    : d(new ZETMatDefinitionPrivate)
{
}

ZETMatDefinition::ZETMatDefinition(const ZETMatDefinition& other) = default;
ZETMatDefinition& ZETMatDefinition::operator=(const ZETMatDefinition& other) = default;
ZETMatDefinition::~ZETMatDefinition() = default;

bool ZETMatDefinition::operator==(const ZETMatDefinition& other) const
{
    return d->committed == other.d->committed;
}

void ZETMatDefinition::SetKey(const QByteArray& key)
{
    d->edited.key = key;
}

void ZETMatDefinition::AddAllowedProperty(const QByteArray& group, const QByteArray& name)
{
    const auto property = std::make_pair(group, name);
    if (!d->edited.values.contains(property))
        d->edited.values.insert(property, QVariant());
}

void ZETMatDefinition::LoadFromFeature(const ZETFeatObject* feature)
{
    if (!feature)
        return;
    auto& values = d->edited.values;
    for (auto value = values.begin(); value != values.end(); ++value)
        value.value() = feature->property(value.key().second.constData());
}

void ZETMatDefinition::Commit()
{
    d->committed = d->edited;
}
