#include <ZETVisualization/ZETVisVectorText.h>

#include "openhost/ZETVisualization/ZETOpenStrokeFont.h"

using namespace Qt::Literals::StringLiterals;

namespace
{
// Below the base line, in text sizes: clear of the letters, within the descenders.
constexpr double underlineDepth = 0.2;
} // namespace

/*! Record of ZETVisVectorText. The one anchor, orientation and justification that there are need no place in it. */
class ZETVisVectorTextPrivate
{
public:
    /*! Adds the strokes of one line whose base line lies \a height above the plane's origin. */
    void AddLine(const ZETOpenStrokeFont& strokes, const QString& line, double height,
                 QList<ZETMathSetOfPoints>& polylines) const;
    ZETMathSetOfPoints Place(const QList<QPointF>& stroke, double start, double height) const;

    QString fontName = u"simple"_s;
    QString text;
    double size = 1.0;
    double spacing = 1.0;
    ZETVisVectorText::Decorations decorations;
    ZETMathPlane plane;
    ZETMathVector base{1.0, 0.0, 0.0}; //!< the plane's directions, of unit length
    ZETMathVector up{0.0, 1.0, 0.0};
};

void ZETVisVectorTextPrivate::AddLine(const ZETOpenStrokeFont& strokes, const QString& line, double height,
                                      QList<ZETMathSetOfPoints>& polylines) const
{
    double pen = 0.0;
    for (const char32_t character : line.toUcs4()) {
        const ZETOpenStrokeFont::Glyph glyph = strokes.GetGlyph(character);
        for (const QList<QPointF>& stroke : glyph.polylines)
            polylines.append(Place(stroke, pen, height));
        pen += glyph.advance;
    }
    if (decorations.testFlag(ZETVisVectorText::DecorationUnderline) && pen > 0.0)
        polylines.append(Place({{0.0, -underlineDepth}, {pen, -underlineDepth}}, 0.0, height));
}

ZETMathSetOfPoints ZETVisVectorTextPrivate::Place(const QList<QPointF>& stroke, double start, double height) const
{
    ZETMathSetOfPoints set;
    set.points.reserve(stroke.size());
    for (const QPointF& point : stroke) {
        const ZETMathVector offset = base * ((start + point.x()) * size) + up * ((height + point.y()) * size);
        set.points.append(plane.GetOrigin() + offset);
    }
    return set;
}

ZETVisVectorFont::ZETVisVectorFont(const QString& fontName)
    : name(fontName)
{
}

ZETVisVectorFont::~ZETVisVectorFont() = default;

ZETVisVectorText::ZETVisVectorText()
    : d(std::make_unique<ZETVisVectorTextPrivate>())
{
}

ZETVisVectorText::~ZETVisVectorText() = default;

void ZETVisVectorText::SetFont(const ZETVisVectorFont& font)
{
    d->fontName = font.GetName();
}

void ZETVisVectorText::SetText(const QString& text)
{
    d->text = text;
}

void ZETVisVectorText::SetTextSize(double size)
{
    d->size = size;
}

void ZETVisVectorText::SetLineSpacing(double spacing)
{
    d->spacing = spacing;
}

void ZETVisVectorText::SetAnchor(Anchor anchor)
{
    Q_UNUSED(anchor)
}

void ZETVisVectorText::SetOrientation(Orientation orientation)
{
    Q_UNUSED(orientation)
}

void ZETVisVectorText::SetJustification(Justification justification)
{
    Q_UNUSED(justification)
}

void ZETVisVectorText::SetDecorations(QFlags<Decoration> decorations)
{
    d->decorations = decorations;
}

void ZETVisVectorText::SetPlane(const ZETMathPlane& plane)
{
    d->plane = plane;
    d->base = plane.GetFirstDirection();
    d->base.Normalize();
    d->up = plane.GetSecondDirection();
    d->up.Normalize();
}

QList<ZETMathSetOfPoints> ZETVisVectorText::GetPolylines() const
{
    QList<ZETMathSetOfPoints> polylines;
    if (d->text.isEmpty())
        return polylines;
    const std::shared_ptr<const ZETOpenStrokeFont> strokes = ZETOpenStrokeFont::Get(d->fontName);
    if (strokes->IsEmpty())
        return polylines;
    double height = 0.0;
    for (const QString& line : d->text.split(u'\n')) {
        d->AddLine(*strokes, line, height, polylines);
        height -= d->spacing;
    }
    return polylines;
}
