#include "openhost/ZETVisualization/ZETOpenView.h"

#include <array>
#include <cmath>

using namespace Qt::Literals::StringLiterals;

namespace
{
struct Directions {
    ZETMathVector right;
    ZETMathVector up;
};

const Directions& GetDirections(ZETOpenView::Side side)
{
    static const double half = std::sqrt(1.0 / 2.0);
    static const double sixth = std::sqrt(1.0 / 6.0);
    static const std::array<Directions, 7> table{{
        {{1.0, 0.0, 0.0}, {0.0, 1.0, 0.0}},
        {{1.0, 0.0, 0.0}, {0.0, -1.0, 0.0}},
        {{1.0, 0.0, 0.0}, {0.0, 0.0, 1.0}},
        {{-1.0, 0.0, 0.0}, {0.0, 0.0, 1.0}},
        {{0.0, -1.0, 0.0}, {0.0, 0.0, 1.0}},
        {{0.0, 1.0, 0.0}, {0.0, 0.0, 1.0}},
        {{half, half, 0.0}, {-sixth, sixth, 2.0 * sixth}}, // the eye at 1, -1, 1
    }};
    return table[static_cast<std::size_t>(side)];
}

double Dot(const ZETMathPoint& point, const ZETMathVector& vector)
{
    return point.GetX() * vector.GetX() + point.GetY() * vector.GetY() + point.GetZ() * vector.GetZ();
}
} // namespace

ZETOpenView::ZETOpenView(Side from)
    : side(from)
    , right(GetDirections(from).right)
    , up(GetDirections(from).up)
{
}

ZETOpenView ZETOpenView::GetTurned() const
{
    ZETOpenView turned(*this);
    turned.right = up;
    turned.up = right * -1.0;
    return turned;
}

const QStringList& ZETOpenView::GetSideNames()
{
    static const QStringList names{u"top"_s, u"bottom"_s, u"front"_s, u"back"_s, u"left"_s, u"right"_s, u"oblique"_s};
    return names;
}

ZETOpenView::Side ZETOpenView::GetSideFacing(const ZETMathVector& normal)
{
    Side best = Top;
    for (const Side candidate : {Bottom, Front, Back, Left, Right}) {
        if (ZETOpenView(candidate).GetToEye() * normal > ZETOpenView(best).GetToEye() * normal)
            best = candidate;
    }
    return best;
}

QPointF ZETOpenView::Project(const ZETMathPoint& point) const
{
    return {Dot(point, right), Dot(point, up)};
}

double ZETOpenView::GetDepth(const ZETMathPoint& point) const
{
    return Dot(point, GetToEye());
}
