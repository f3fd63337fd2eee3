#include "openhost/ZETVisualization/ZETOpenStrokeFont.h"

#include <ZETSystem/ZETSysMessageQueue.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>

#include <optional>

using namespace Qt::Literals::StringLiterals;

namespace
{
constexpr char32_t firstCharacter = U' ';
constexpr char32_t lastCharacter = U'~';
// Of the font's own grid, whose y runs down from its middle.
constexpr double baseLine = 9.0;
constexpr double capitalHeight = 21.0;

struct FontTable {
    QString folder = u"/usr/share/hershey-fonts"_s;
    QHash<QString, std::shared_ptr<const ZETOpenStrokeFont>> fonts;
    QSet<QString> told;
};

FontTable& GetTable()
{
    static FontTable table;
    return table;
}

QString GetFileName(const QString& fontName)
{
    return fontName == "simple"_L1 ? u"rowmans.jhf"_s : fontName + ".jhf"_L1;
}

void TellMissing(const QString& name, const QString& path)
{
    ZETSysMessageQueue* queue = ZETSysMessageQueue::GetMessageQueue();
    if (!queue || GetTable().told.contains(name))
        return;
    GetTable().told.insert(name);
    queue->AddMessage(QCoreApplication::translate("ZETVisVectorText",
                                                  "The stroke font \"%1\" could not be read from %2: texts are not "
                                                  "drawn. Is the package hershey-fonts-data installed?")
                          .arg(name, QDir::toNativeSeparators(path)),
                      ZETSysMessageQueue::TypeWarning);
}

/*! One glyph from its pairs of characters: left and right bound, then points; " R" lifts the pen. */
std::optional<ZETOpenStrokeFont::Glyph> ParsePairs(const QByteArray& pairs)
{
    const auto coordinate = [&pairs](qsizetype i) { return static_cast<double>(pairs[i] - 'R'); };
    if (pairs.size() < 2)
        return std::nullopt;
    const double left = coordinate(0);
    ZETOpenStrokeFont::Glyph glyph;
    glyph.advance = (coordinate(1) - left) / capitalHeight;
    QList<QPointF> run;
    for (qsizetype i = 2; i + 1 < pairs.size(); i += 2) {
        if (pairs[i] == ' ' && pairs[i + 1] == 'R') {
            glyph.polylines.append(run);
            run.clear();
        } else {
            run.append({(coordinate(i) - left) / capitalHeight, (baseLine - coordinate(i + 1)) / capitalHeight});
        }
    }
    glyph.polylines.append(run);
    glyph.polylines.removeIf([](const QList<QPointF>& polyline) { return polyline.isEmpty(); });
    return glyph;
}

/*! The next glyph of the file: five columns for its number, three for the count of pairs, the pairs, which may go on in
 *  the next line. */
std::optional<ZETOpenStrokeFont::Glyph> ParseGlyph(const QList<QByteArray>& lines, qsizetype& next)
{
    while (next < lines.size() && lines[next].trimmed().isEmpty())
        ++next;
    if (next == lines.size() || lines[next].size() < 8)
        return std::nullopt;
    bool isNumber = false;
    const int count = lines[next].mid(5, 3).trimmed().toInt(&isNumber);
    if (!isNumber || count < 1)
        return std::nullopt;
    QByteArray pairs = lines[next++].mid(8);
    while (pairs.size() < 2 * count && next < lines.size())
        pairs += lines[next++];
    return pairs.size() == 2 * count ? ParsePairs(pairs) : std::nullopt;
}
} // namespace

std::shared_ptr<const ZETOpenStrokeFont> ZETOpenStrokeFont::Get(const QString& name)
{
    const QString path = GetTable().folder + u'/' + GetFileName(name);
    std::shared_ptr<const ZETOpenStrokeFont>& font = GetTable().fonts[name];
    if (!font)
        font = std::make_shared<const ZETOpenStrokeFont>(name.contains(u'/') ? ZETOpenStrokeFont() : Read(path));
    if (font->IsEmpty())
        TellMissing(name, path);
    return font;
}

void ZETOpenStrokeFont::SetFolder(const QString& path)
{
    GetTable() = FontTable();
    GetTable().folder = path;
}

QString ZETOpenStrokeFont::GetFolder()
{
    return GetTable().folder;
}

ZETOpenStrokeFont::Glyph ZETOpenStrokeFont::GetGlyph(char32_t character) const
{
    const auto place = glyphs.find(character);
    return place == glyphs.end() ? glyphs.value(U'?') : *place;
}

ZETOpenStrokeFont ZETOpenStrokeFont::Read(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QList<QByteArray> lines = file.readAll().replace('\r', "").split('\n');
    ZETOpenStrokeFont font;
    qsizetype next = 0;
    for (char32_t character = firstCharacter; character <= lastCharacter; ++character) {
        const std::optional<Glyph> glyph = ParseGlyph(lines, next);
        if (!glyph)
            return {}; // half a font would leave letters out of a text in silence
        font.glyphs.insert(character, *glyph);
    }
    return font;
}
