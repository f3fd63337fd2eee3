#include "laser/ZETLaserOutline.h"

#include "features/ZETLaser3DText.h"
#include "features/ZETLaserModelTree.h"
#include "features/ZETLaserParameter.h"
#include "features/ZETLaserParameterProvider.h"
#include "laser/ZETLaserChildren.h"
#include "laser/ZETLaserContour.h"
#include "laser/ZETLaserCurve.h"
#include "laser/ZETLaserEntityProperties.h"
#include "laser/ZETLaserParameterEntity.h"
#include "laser/ZETLaserProcesses_p.h"
#include "laser/ZETLaserTextEntity.h"

#include <ZETComposites/ZETCompPlyBase.h>
#include <ZETComposites/ZETCompRoot.h>
#include <ZETMaterial/ZETMatMaterial.h>

#include <QVariant>

using namespace ZETLaserOutline;

namespace
{
struct KindOfGroup {
    const char* property;
    Kind kind;
};
constexpr KindOfGroup kinds[] = {{ZETLaserEntityProperties::ply, Kind::Ply},
                                 {ZETLaserEntityProperties::subPly, Kind::SubPly},
                                 {ZETLaserEntityProperties::sequence, Kind::Sequence},
                                 {ZETLaserEntityProperties::layup, Kind::Layup}};

/*! Name and source of \a entity, for what has both. */
template <typename Node>
Node MakeNode(const ZETLaserEntity& entity)
{
    Node node;
    node.name = entity.GetName();
    node.source = static_cast<Source>(entity.property(ZETLaserEntityProperties::sourceType).toInt());
    return node;
}

Point MakePoint(const ZETLaserPoint& point)
{
    Point values{point.GetPosition(), {}, {}};
    if (point.HasNormal())
        values.normal = point.GetNormal();
    if (point.HasOffsetPoint())
        values.offsetPoint = point.GetOffsetPoint();
    return values;
}

Curve MakeCurve(const ZETLaserCurve& curve)
{
    auto node = MakeNode<Curve>(curve);
    node.closed = curve.IsClosed();
    node.points.reserve(curve.GetPointCount());
    for (const ZETLaserPoint& point : curve.GetPoints())
        node.points.append(MakePoint(point));
    return node;
}

Contour MakeContour(const ZETLaserContour& contour)
{
    auto node = MakeNode<Contour>(contour);
    node.curves.reserve(contour.GetCurves().size());
    for (const auto& curve : contour.GetCurves())
        node.curves.append(MakeCurve(*curve));
    return node;
}

/*! The walk over the tree. */
class OutlineMaker
{
public:
    explicit OutlineMaker(const ZETCompRoot* model)
        : provider(FindContainer(model))
    {
    }

    Group MakeGroup(const ZETLaserGroup& group) const
    {
        Group node;
        node.name = group.GetName();
        node.pointCount = group.GetPointCount();
        node.material = ObjectIn<ZETMatMaterial>(group, ZETLaserEntityProperties::material);
        for (const auto& [property, kind] : kinds) {
            if (!group.property(property).isValid())
                continue;
            node.kind = kind;
            node.feature = ObjectIn<ZETFeatObject>(group, property);
            break;
        }
        for (const ZETLaserGroup* child : ChildrenOf<ZETLaserGroup>(group))
            node.groups.append(MakeGroup(*child));
        MakeLeaves(group, node);
        return node;
    }

private:
    void MakeLeaves(const ZETLaserGroup& group, Group& node) const
    {
        const auto* ply = qobject_cast<const ZETCompPlyBase*>(node.feature);
        for (const ZETLaserContour* contour : ChildrenOf<ZETLaserContour>(group))
            node.contours.append(MakeContour(*contour));
        for (const ZETLaserTextEntity* text : ChildrenOf<ZETLaserTextEntity>(group))
            node.texts.append(MakeText(*text, ply));
        for (const ZETLaserParameterEntity* parameter : ChildrenOf<ZETLaserParameterEntity>(group))
            node.parameters.append(MakeParameter(*parameter, ply));
    }

    Text MakeText(const ZETLaserTextEntity& entity, const ZETCompPlyBase* ply) const
    {
        auto node = MakeNode<Text>(entity);
        node.feature = entity.GetText();
        if (!node.feature)
            return node;
        node.text = provider.EvaluateParameterText(ply, node.feature->GetText());
        node.basePoint = node.feature->GetBasePoint();
        node.baseDirection = node.feature->GetBaseDirection();
        node.upDirection = node.feature->GetUpDirection();
        node.size = node.feature->GetSize();
        return node;
    }

    Parameter MakeParameter(const ZETLaserParameterEntity& entity, const ZETCompPlyBase* ply) const
    {
        auto node = MakeNode<Parameter>(entity);
        node.feature = entity.GetParameter();
        if (!node.feature)
            return node;
        node.type = node.feature->GetType();
        node.text = provider.EvaluateParameterText(ply, node.feature->GetText());
        return node;
    }

    ZETLaserParameterProvider provider;
};
} // namespace

Group ZETLaserProcesses::GetOutline() const
{
    Group root = OutlineMaker(d->options->GetCompRoot()).MakeGroup(*d->root);
    root.kind = Kind::Root;
    return root;
}
