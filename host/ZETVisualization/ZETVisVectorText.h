#pragma once

#include <ZETHostGlobal.h>
#include <ZETMathematics/ZETMathPlane.h>
#include <ZETMathematics/ZETMathSetOfPoints.h>
#include <ZETVisualization/ZETVisVectorFont.h>

#include <QFlags>
#include <QList>
#include <QString>

#include <memory>

class ZETVisVectorTextPrivate;

/*! Turns a text into strokes. */
class ZETHOST_EXPORT ZETVisVectorText
{
public:
    /*! Which point of the text lies on the plane's origin. */
    enum Anchor : int {
        AnchorBaseLeft = 0 //!< the start of the first line's base line
    };
    /*! How the text runs against the plane's first direction. */
    enum Orientation : int {
        OrientationHorizontal = 1 //!< along it
    };
    enum Justification : int { JustificationLeft = 0 };
    enum Decoration : int { DecorationUnderline = 1 };
    Q_DECLARE_FLAGS(Decorations, Decoration)

    ZETVisVectorText();
    ~ZETVisVectorText();

    void SetFont(const ZETVisVectorFont& font);
    void SetText(const QString& text);
    /*! Height of a capital letter, in mm. */
    void SetTextSize(double size);
    /*! Distance of two base lines, in text sizes. */
    void SetLineSpacing(double spacing);
    void SetAnchor(Anchor anchor);
    void SetOrientation(Orientation orientation);
    void SetJustification(Justification justification);
    void SetDecorations(QFlags<Decoration> decorations);
    /*! The plane of the text: its origin is the anchor, its first direction the base line, its second direction up. */
    void SetPlane(const ZETMathPlane& plane);

    /*! The strokes as separate runs of points, in model coordinates. */
    QList<ZETMathSetOfPoints> GetPolylines() const;

private:
    Q_DISABLE_COPY_MOVE(ZETVisVectorText)
    std::unique_ptr<ZETVisVectorTextPrivate> d;
};
