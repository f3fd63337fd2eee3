#include "features/ZETLaserExtraGeometry.h"

#include "features/ZETLaserExtraGeometry_p.h"
#include "features/ZETLaserFeature.h"

const QByteArray ZETLaserExtraGeometry::Property_scope = QByteArrayLiteral("scope");
const QByteArray ZETLaserExtraGeometry::Property_filters = QByteArrayLiteral("filters");

ZETLaserExtraGeometry::ZETLaserExtraGeometry(ZETFeatObject* parent)
    : ZETFeatFolder(parent)
    , record(std::make_unique<ZETLaserExtraGeometryPrivate>(this))
{
}

ZETLaserExtraGeometry::ZETLaserExtraGeometry(ZETGeoContainer* container, const ZETGeoGeometryRef& reference)
    : ZETFeatFolder(container, reference)
    , record(std::make_unique<ZETLaserExtraGeometryPrivate>(this))
{
}

ZETLaserExtraGeometry::~ZETLaserExtraGeometry() = default;

ZETLaserExtraGeometry::ScopeType ZETLaserExtraGeometry::GetScope() const
{
    return d_func()->scope.GetValue();
}

void ZETLaserExtraGeometry::SetScope(const ScopeType& scope)
{
    ZETLaserFeature::SetValue(d_func()->scope, scope);
}

ZETLaserExtraGeometry::OutputFilters ZETLaserExtraGeometry::GetFilters() const
{
    return d_func()->filters.GetValue();
}

void ZETLaserExtraGeometry::SetFilters(const OutputFilters& filters)
{
    ZETLaserFeature::SetValue(d_func()->filters, filters);
}

QString ZETLaserExtraGeometry::GetScopeTypeString(ScopeType scope)
{
    switch (scope) {
    case AllPlies:
        return tr("All plies");
    case PliesBelow:
        return tr("Plies below");
    case UntilNext:
        return tr("Until next");
    case ParentOnly:
        return tr("Parent only");
    }
    return {};
}

QList<ZETLaserExtraGeometry::ScopeType> ZETLaserExtraGeometry::GetAllScopeTypes()
{
    static const QList<ScopeType> all{AllPlies, PliesBelow, UntilNext, ParentOnly};
    return all;
}

void ZETLaserExtraGeometry::Save(ZETGeoStream& stream) const
{
    ZETFeatFolder::Save(stream);
    ZETLaserFeature::SaveValue(stream, d_func()->scope);
    ZETLaserFeature::SaveValue(stream, d_func()->filters);
}

void ZETLaserExtraGeometry::Load(ZETGeoStream& stream)
{
    ZETFeatFolder::Load(stream);
    ZETLaserFeature::LoadValue(stream, d_func()->scope);
    ZETLaserFeature::LoadValue(stream, d_func()->filters);
}
