#include "features/ZETLaserProjector.h"

#include "features/ZETLaserFeature.h"
#include "features/ZETLaserModelTree.h"
#include "features/ZETLaserProjector_p.h"

const QByteArray ZETLaserProjector::Property_comment = QByteArrayLiteral("comment");
const QByteArray ZETLaserProjector::Property_targets = QByteArrayLiteral("targets");

ZETLaserProjector::ZETLaserProjector(ZETGeoContainer* container, const ZETGeoGeometryRef& reference)
    : ZETFeatObject(reference, container)
    , record(std::make_unique<ZETLaserProjectorPrivate>(this))
{
}

ZETLaserProjector::ZETLaserProjector(ZETFeatObject* parent)
    : ZETFeatObject(FindContainer(parent), parent)
    , record(std::make_unique<ZETLaserProjectorPrivate>(this))
{
}

ZETLaserProjector::~ZETLaserProjector() = default;

QString ZETLaserProjector::GetComment() const
{
    return d_func()->comment.GetValue();
}

void ZETLaserProjector::SetComment(const QString& comment)
{
    ZETLaserFeature::SetValue(d_func()->comment, comment);
}

QList<ZETLaserTarget*> ZETLaserProjector::GetTargets() const
{
    return d_func()->targets.GetObjects();
}

void ZETLaserProjector::SetTargets(const QList<ZETLaserTarget*>& targets)
{
    if (GetTargets() == targets)
        return;
    // Meant: element by element, each with its own signal for the list as it stands, and one more at the end.
    while (!d_func()->targets.IsEmpty())
        d_func()->targets.RemoveFirst(false);
    for (ZETLaserTarget* target : targets)
        d_func()->targets.AppendObject(target, false);
    Q_EMIT TargetsChanged(targets);
    UpdateProperty(Property_targets);
}

void ZETLaserProjector::Save(ZETGeoStream& stream) const
{
    ZETFeatObject::Save(stream);
    ZETLaserFeature::SaveValue(stream, d_func()->comment);
    const int count = d_func()->targets.GetCount();
    stream.GetDataStream() << count;
    for (int i = 0; i < count; ++i)
        ZETLaserFeature::SaveReference(stream, d_func()->targets.GetItem(i).GetPointedObject());
}

void ZETLaserProjector::Load(ZETGeoStream& stream)
{
    ZETFeatObject::Load(stream);
    ZETLaserFeature::LoadValue(stream, d_func()->comment);
    d_func()->targets.RemoveAll(false);
    int count = 0;
    stream.GetDataStream() >> count;
    for (int i = 0; i < count; ++i) {
        auto* target = ZETLaserFeature::LoadReference<ZETLaserTarget>(stream);
        if (stream.GetDataStream().status() != QDataStream::Ok)
            return; // the count of a damaged stream promises more than there is; the host throws for it
        d_func()->targets.AppendObject(target, false);
    }
}

bool ZETLaserProjector::UpdateResult()
{
    const bool result = ZETFeatObject::UpdateResult();
    if (!d_func()->targets.IsEmpty())
        return result;
    SetPropertyMessage(Property_targets, MessageError, tr("There is no target in the projector."));
    return false;
}
