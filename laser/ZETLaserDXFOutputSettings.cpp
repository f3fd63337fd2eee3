#include "laser/ZETLaserDXFOutputSettings.h"

#include <QSharedData>

class ZETLaserDXFOutputSettingsPrivate : public QSharedData
{
public:
    int textLayer = 0;
    int textColor = 0;
    int geometryLayer = 1;
    int geometryColor = 0;
    int geometryLineStyle = 0;
};

ZETLaserDXFOutputSettings::ZETLaserDXFOutputSettings()
    : d(new ZETLaserDXFOutputSettingsPrivate)
{
}

ZETLaserDXFOutputSettings::ZETLaserDXFOutputSettings(const ZETLaserDXFOutputSettings& other) = default;

ZETLaserDXFOutputSettings& ZETLaserDXFOutputSettings::operator=(const ZETLaserDXFOutputSettings& other) = default;

ZETLaserDXFOutputSettings::~ZETLaserDXFOutputSettings() = default;

int ZETLaserDXFOutputSettings::GetTextLayer() const
{
    return d->textLayer;
}

void ZETLaserDXFOutputSettings::SetTextLayer(int layer)
{
    d->textLayer = layer;
}

int ZETLaserDXFOutputSettings::GetTextColor() const
{
    return d->textColor;
}

void ZETLaserDXFOutputSettings::SetTextColor(int color)
{
    d->textColor = color;
}

int ZETLaserDXFOutputSettings::GetGeometryLayer() const
{
    return d->geometryLayer;
}

void ZETLaserDXFOutputSettings::SetGeometryLayer(int layer)
{
    d->geometryLayer = layer;
}

int ZETLaserDXFOutputSettings::GetGeometryColor() const
{
    return d->geometryColor;
}

void ZETLaserDXFOutputSettings::SetGeometryColor(int color)
{
    d->geometryColor = color;
}

int ZETLaserDXFOutputSettings::GetGeometryLineStyle() const
{
    return d->geometryLineStyle;
}

void ZETLaserDXFOutputSettings::SetGeometryLineStyle(int style)
{
    d->geometryLineStyle = style;
}
