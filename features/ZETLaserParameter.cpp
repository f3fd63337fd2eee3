#include "features/ZETLaserParameter.h"

#include "features/ZETLaserFeature.h"
#include "features/ZETLaserModelTree.h"
#include "features/ZETLaserParameter_p.h"

const QByteArray ZETLaserParameter::Property_type = QByteArrayLiteral("type");
const QByteArray ZETLaserParameter::Property_text = QByteArrayLiteral("text");

ZETLaserParameter::ZETLaserParameter(ZETFeatObject* parent)
    : ZETFeatObject(FindContainer(parent), parent)
    , record(std::make_unique<ZETLaserParameterPrivate>(this))
{
}

ZETLaserParameter::ZETLaserParameter(ZETGeoContainer* container, const ZETGeoGeometryRef& reference)
    : ZETFeatObject(reference, container)
    , record(std::make_unique<ZETLaserParameterPrivate>(this))
{
}

ZETLaserParameter::~ZETLaserParameter() = default;

ZETLaserParameter::ParameterType ZETLaserParameter::GetType() const
{
    return d_func()->type.GetValue();
}

void ZETLaserParameter::SetType(const ParameterType& type)
{
    ZETLaserFeature::SetValue(d_func()->type, type);
}

QString ZETLaserParameter::GetText() const
{
    return d_func()->text.GetValue();
}

void ZETLaserParameter::SetText(const QString& text)
{
    ZETLaserFeature::SetValue(d_func()->text, text);
}

QString ZETLaserParameter::GetParameterTypeString(ParameterType type)
{
    switch (type) {
    case Information:
        return tr("Information");
    case Message:
        return tr("Message");
    case Graphic:
        return tr("Graphic");
    case Query:
        return tr("Query");
    case Literal:
        return tr("Literal");
    case Note:
        return tr("Note");
    }
    return {};
}

QList<ZETLaserParameter::ParameterType> ZETLaserParameter::GetAllParameterTypes()
{
    static const QList<ParameterType> all{Information, Message, Graphic, Query, Literal, Note};
    return all;
}

void ZETLaserParameter::Save(ZETGeoStream& stream) const
{
    ZETFeatObject::Save(stream);
    ZETLaserFeature::SaveValue(stream, d_func()->type);
    ZETLaserFeature::SaveValue(stream, d_func()->text);
}

void ZETLaserParameter::Load(ZETGeoStream& stream)
{
    ZETFeatObject::Load(stream);
    ZETLaserFeature::LoadValue(stream, d_func()->type);
    ZETLaserFeature::LoadValue(stream, d_func()->text);
}

bool ZETLaserParameter::UpdateResult()
{
    const bool result = ZETFeatObject::UpdateResult();
    if (!GetText().isEmpty())
        return result;
    SetPropertyMessage(Property_text, MessageError, tr("The text should not be empty."));
    return false;
}
