#pragma once

#include <ZETHostGlobal.h>

#include <QHash>
#include <QList>
#include <QPointF>
#include <QString>

#include <memory>

/*! A stroke font, read at run time from the Hershey fonts of the system (package hershey-fonts-data). The base line is
 *  y = 0, up is positive, and a capital letter is 1 high. */
class ZETHOST_EXPORT ZETOpenStrokeFont
{
public:
    struct Glyph {
        double advance = 0.0;            //!< from the pen's place to the next character's
        QList<QList<QPointF>> polylines; //!< from the pen's place on the base line
    };

    /*! The font \a name; "simple" is the plain one with single strokes. Without its file, or with a file that can't be
     *  read, the font has no glyph, which is told once in the message queue. */
    static std::shared_ptr<const ZETOpenStrokeFont> Get(const QString& name);

    /*! Where the font files lie. DEFAULT: /usr/share/hershey-fonts. Fonts that were read before are forgotten, and so
     *  is what was told of them. */
    static void SetFolder(const QString& path);
    static QString GetFolder();

    bool IsEmpty() const { return glyphs.isEmpty(); }
    /*! The glyph of a printable ASCII character; that of the question mark for any other. */
    Glyph GetGlyph(char32_t character) const;

private:
    static ZETOpenStrokeFont Read(const QString& path);

    QHash<char32_t, Glyph> glyphs;
};
