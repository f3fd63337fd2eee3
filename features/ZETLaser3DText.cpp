#include "features/ZETLaser3DText.h"

#include "features/ZETLaser3DText_p.h"
#include "features/ZETLaserFeature.h"
#include "features/ZETLaserModelTree.h"

#include <algorithm>

namespace
{
constexpr double smallestSize = 0.001;
constexpr char16_t lastCharacterOfFont = 127;
} // namespace

const QByteArray ZETLaser3DText::Property_text = QByteArrayLiteral("text");
const QByteArray ZETLaser3DText::Property_size = QByteArrayLiteral("size");

ZETLaser3DText::ZETLaser3DText(std::unique_ptr<ZETLaser3DTextPrivate> newRecord, ZETFeatObject* parent)
    : ZETFeatObject(FindContainer(parent), parent)
    , record(std::move(newRecord))
{
    record->MakeProperties(this);
}

ZETLaser3DText::ZETLaser3DText(std::unique_ptr<ZETLaser3DTextPrivate> newRecord, ZETGeoContainer* container,
                               const ZETGeoGeometryRef& reference)
    : ZETFeatObject(reference, container)
    , record(std::move(newRecord))
{
    record->MakeProperties(this);
}

ZETLaser3DText::~ZETLaser3DText() = default;

QString ZETLaser3DText::GetText() const
{
    return d_func()->text->GetValue();
}

void ZETLaser3DText::SetText(const QString& text)
{
    ZETLaserFeature::SetValue(*d_func()->text, text);
}

double ZETLaser3DText::GetSize() const
{
    return d_func()->size->GetValue();
}

void ZETLaser3DText::SetSize(double size)
{
    ZETLaserFeature::SetValue(*d_func()->size, size);
}

void ZETLaser3DText::Save(ZETGeoStream& stream) const
{
    ZETFeatObject::Save(stream);
    ZETLaserFeature::SaveValue(stream, *d_func()->text);
    ZETLaserFeature::SaveValue(stream, *d_func()->size);
}

void ZETLaser3DText::Load(ZETGeoStream& stream)
{
    ZETFeatObject::Load(stream);
    ZETLaserFeature::LoadValue(stream, *d_func()->text);
    ZETLaserFeature::LoadValue(stream, *d_func()->size);
}

bool ZETLaser3DText::UpdateResult()
{
    bool result = ZETFeatObject::UpdateResult();
    if (smallestSize > GetSize()) {
        SetPropertyMessage(Property_size, MessageError, tr("The size must be greater than zero."));
        result = false;
    }
    const QString text = GetText();
    if (text.isEmpty()) {
        SetPropertyMessage(Property_text, MessageError, tr("The text should not be empty."));
        return false;
    }
    if (std::any_of(text.begin(), text.end(), [](QChar character) { return character > lastCharacterOfFont; })) {
        // Meant: a warning by its status, although the text fails.
        SetPropertyMessage(Property_text, MessageWarning, tr("Unicode characters are not supported for 3D Text."));
        result = false;
    }
    return result;
}
