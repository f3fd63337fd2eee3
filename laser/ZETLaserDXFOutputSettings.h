#pragma once

#include "laser/ZETLaserGlobal.h"

#include <QSharedDataPointer>

class ZETLaserDXFOutputSettingsPrivate;

/*! Layers, colours and line style of the DXF output. They go into the file as they stand: no value is tested.
 *
 *  A value, implicitly shared: a copy shares its data until one of the two is set. */
class ZETLASER_EXPORT ZETLaserDXFOutputSettings
{
public:
    ZETLaserDXFOutputSettings();
    ZETLaserDXFOutputSettings(const ZETLaserDXFOutputSettings& other);
    ZETLaserDXFOutputSettings& operator=(const ZETLaserDXFOutputSettings& other);
    virtual ~ZETLaserDXFOutputSettings();

    /*! Layer of the texts. DEFAULT: 0 */
    int GetTextLayer() const;
    void SetTextLayer(int layer);
    /*! Colour number of the texts. DEFAULT: 0 */
    int GetTextColor() const;
    void SetTextColor(int color);

    /*! Layer of the curves. DEFAULT: 1 */
    int GetGeometryLayer() const;
    void SetGeometryLayer(int layer);
    /*! Colour number of the curves. DEFAULT: 0 */
    int GetGeometryColor() const;
    void SetGeometryColor(int color);
    /*! Line style number of the curves. DEFAULT: 0 */
    int GetGeometryLineStyle() const;
    void SetGeometryLineStyle(int style);

private:
    QSharedDataPointer<ZETLaserDXFOutputSettingsPrivate> d;
};
