#include "features/ZETLaser3DTextVisObject.h"

#include "features/ZETLaser3DText.h"

#include <ZETMathematics/ZETMathPlane.h>
#include <ZETMathematics/ZETMathZeroMagnitudeVectorException.h>
#include <ZETSystem/ZETSysException.h>
#include <ZETVisualization/ZETVisPolylinePrimitive.h>
#include <ZETVisualization/ZETVisRepGraphics.h>
#include <ZETVisualization/ZETVisVectorText.h>

#include <optional>

using namespace Qt::Literals::StringLiterals;

namespace
{
ZETVisOptions GetOptions()
{
    ZETVisOptions options;
    options.SetColor(QColor(255, 128, 64, 255));
    options.SetPointSymbol(ZETVisOptions::SymbolNone);
    options.SetDepthEnabled(false);
    options.SetPriority(10);
    return options;
}

void SetContent(ZETVisVectorText& strokes, const ZETLaser3DText& text)
{
    strokes.SetFont(ZETVisVectorFont(u"simple"_s));
    strokes.SetAnchor(ZETVisVectorText::AnchorBaseLeft);
    strokes.SetOrientation(ZETVisVectorText::OrientationHorizontal);
    strokes.SetJustification(ZETVisVectorText::JustificationLeft);
    strokes.SetDecorations({});
    strokes.SetText(text.GetText());
    strokes.SetTextSize(text.GetSize());
    strokes.SetLineSpacing(2.0);
}

/*! The plane in which \a text stands; none if it has no valid place. */
std::optional<ZETMathPlane> GetPlane(const ZETLaser3DText& text)
{
    ZETMathPlane plane;
    plane.SetOrigin(text.GetBasePoint());
    try {
        plane.SetDirections(text.GetBaseDirection(), text.GetUpDirection());
    } catch (const ZETMathZeroMagnitudeVectorException&) {
        return std::nullopt;
    }
    return plane;
}
} // namespace

ZETLaser3DTextVisObject::ZETLaser3DTextVisObject(const ZETFeatEnvironment* environment, ZETFeatObject* feature)
    : ZETFeatVisObject(environment, feature)
{
    if (!qobject_cast<ZETLaser3DText*>(feature))
        throw ZETSysException(u"not a laser 3D text"_s);
}

ZETLaser3DTextVisObject::~ZETLaser3DTextVisObject() = default;

ZETVisRepGraphics* ZETLaser3DTextVisObject::CreateRepresentation()
{
    const auto* text = qobject_cast<ZETLaser3DText*>(GetFeature());
    if (!text)
        return nullptr;
    const std::optional<ZETMathPlane> plane = GetPlane(*text);
    if (!plane)
        return nullptr;

    ZETVisVectorText strokes;
    SetContent(strokes, *text);
    strokes.SetPlane(*plane);
    const ZETVisOptions textOptions = GetOptions();
    QList<const ZETVisPrimitive*> primitives;
    QList<ZETVisOptions> options;
    for (const ZETMathSetOfPoints& polyline : strokes.GetPolylines()) {
        primitives.append(new ZETVisPolylinePrimitive(polyline, ZETVisPolylinePrimitive::StructureRun));
        options.append(textOptions);
    }
    return new ZETVisRepGraphics(primitives, options);
}
