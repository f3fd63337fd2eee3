#pragma once

#include <ZETHostGlobal.h>

#include <QColor>

/*! How something is drawn. A value. */
class ZETHOST_EXPORT ZETVisOptions
{
public:
    /*! The marker of points. */
    enum PointSymbol : int { SymbolDot = 0, SymbolTarget = 3, SymbolNone = 6 };

    ZETVisOptions() = default;
    ZETVisOptions(const ZETVisOptions&) = default;
    ZETVisOptions& operator=(const ZETVisOptions&) = default;
    virtual ~ZETVisOptions();

    /*! Drawing colour. DEFAULT: black */
    QColor GetColor() const { return color; }
    void SetColor(const QColor& value) { color = value; }
    /*! Line width, in pixels. DEFAULT: 1.0 */
    double GetLineThickness() const { return lineThickness; }
    void SetLineThickness(double value) { lineThickness = value; }
    /*! DEFAULT: SymbolDot */
    PointSymbol GetPointSymbol() const { return pointSymbol; }
    void SetPointSymbol(PointSymbol value) { pointSymbol = value; }
    /*! Whether what lies in front hides the drawing. DEFAULT: true */
    bool IsDepthEnabled() const { return depthEnabled; }
    void SetDepthEnabled(bool value) { depthEnabled = value; }
    /*! What has the higher priority is drawn later. DEFAULT: 0 */
    int GetPriority() const { return priority; }
    void SetPriority(int value) { priority = value; }
    /*! Whether markers keep their size on the screen. DEFAULT: false */
    bool IsFixedPerspective() const { return fixedPerspective; }
    void SetFixedPerspective(bool value) { fixedPerspective = value; }

private:
    QColor color = QColor(0, 0, 0, 255);
    double lineThickness = 1.0;
    PointSymbol pointSymbol = SymbolDot;
    bool depthEnabled = true;
    int priority = 0;
    bool fixedPerspective = false;
};
