#include "openhost/layup/ZETOpenJson.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QStringDecoder>

#include <json/json.h>

#include <algorithm>
#include <cmath>
#include <numeric>

using namespace Qt::Literals::StringLiterals;

namespace
{
constexpr qint64 largestFile = 1LL << 30;
constexpr qint64 blockSize = 1 << 20;
constexpr qsizetype lineBlockSize = 1 << 12;
constexpr int longestQuote = 60;

/*! The texts of this file, in one context. */
struct Text {
    Q_DECLARE_TR_FUNCTIONS(ZETOpenJson)
};

QString ToQt(const Json::Value& text)
{
    const char* begin = nullptr;
    const char* end = nullptr;
    text.getString(&begin, &end);
    return QString::fromUtf8(begin, end - begin);
}

/*! Names and texts of a file come with line ends, and stand in messages. */
QString OnOneLine(QString text)
{
    return text.replace(u'\n', u"\\n"_s).replace(u'\r', u"\\r"_s).replace(u'\t', u"\\t"_s);
}

/*! \a text on one line, cut where it is long. */
QString Quote(QString text)
{
    text = OnOneLine(text);
    if (text.size() > longestQuote)
        text = text.left(longestQuote) + u"..."_s;
    return u'"' + text + u'"';
}

/*! Number of insertions, removals, replacements and swaps of neighbours that make \a a of \a b. */
int GetEditDistance(const QString& a, const QString& b)
{
    QList<int> beforeLast(b.size() + 1), last(b.size() + 1), current(b.size() + 1);
    std::iota(last.begin(), last.end(), 0);
    for (int i = 1; i <= a.size(); ++i) {
        current[0] = i;
        for (int j = 1; j <= b.size(); ++j) {
            const int cost = a[i - 1] == b[j - 1] ? 0 : 1;
            current[j] = std::min({last[j] + 1, current[j - 1] + 1, last[j - 1] + cost});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1])
                current[j] = std::min(current[j], beforeLast[j - 2] + 1);
        }
        std::swap(beforeLast, last);
        std::swap(last, current);
    }
    return last[b.size()];
}

QString FormatError(const QString& file, int line, const QString& path, const QString& text)
{
    QString place = file;
    if (line > 0)
        place += u':' + QString::number(line);
    if (!path.isEmpty())
        place += u": "_s + path;
    return OnOneLine(place + u": "_s + text);
}

Json::CharReaderBuilder MakeStrictBuilder()
{
    Json::CharReaderBuilder builder;
    Json::CharReaderBuilder::strictMode(&builder.settings_);
    builder["strictRoot"] = false; // what the root must be is told by whoever reads it, in words about the file
    builder["stackLimit"] = 200;
    return builder;
}

/*! The first error of jsoncpp's report, which has the form "* Line 3, Column 5\n  Text\nSee Line ...". */
struct SyntaxError {
    int line = 0;
    QString text;
};

SyntaxError TakeFirstError(const std::string& report)
{
    static const QRegularExpression form(u"^\\* Line (\\d+), Column (\\d+)\\n  ([^\\n]*)"_s);
    const auto match = form.match(QString::fromStdString(report));
    if (!match.hasMatch())
        return {0, QString::fromStdString(report).simplified()};
    QString text = match.captured(3);
    if (text.endsWith(u'.'))
        text.chop(1);
    return {match.captured(1).toInt(), Text::tr("no valid JSON: %1 (column %2)").arg(text, match.captured(2))};
}
} // namespace

ZETOpenJsonError::ZETOpenJsonError(const QString& inFile, int atLine, const QString& atPath, const QString& what)
    : ZETSysException(FormatError(inFile, atLine, atPath, what))
    , file(inFile)
    , line(atLine)
    , path(atPath)
    , text(OnOneLine(what))
{
}

ZETOpenJsonError::~ZETOpenJsonError() = default;

ZETOpenJsonValue::ZETOpenJsonValue(const ZETOpenJsonDocument* owner, const Json::Value* jsonValue,
                                   const QString& jsonPath)
    : document(owner)
    , value(jsonValue)
    , path(jsonPath)
{
}

bool ZETOpenJsonValue::IsObject() const
{
    return value->isObject();
}

bool ZETOpenJsonValue::IsArray() const
{
    return value->isArray();
}

bool ZETOpenJsonValue::IsText() const
{
    return value->isString();
}

bool ZETOpenJsonValue::IsNumber() const
{
    return value->isNumeric();
}

int ZETOpenJsonValue::GetLine() const
{
    return document->GetLineOfOffset(value->getOffsetStart());
}

ZETOpenJsonValue ZETOpenJsonValue::WithPath(const QString& newPath) const
{
    return {document, value, newPath};
}

void ZETOpenJsonValue::Fail(const QString& text) const
{
    throw ZETOpenJsonError(document->file, GetLine(), path, text);
}

void ZETOpenJsonValue::FailExpected(const QString& expected) const
{
    Fail(Text::tr("expected %1, found %2").arg(expected, Describe()));
}

QString ZETOpenJsonValue::Describe() const
{
    switch (value->type()) {
    case Json::nullValue:
        return Text::tr("null");
    case Json::booleanValue:
        return value->asBool() ? u"true"_s : u"false"_s;
    case Json::stringValue:
        return Text::tr("the text %1").arg(Quote(ToQt(*value)));
    case Json::arrayValue:
        return Text::tr("an array of %1").arg(value->size());
    case Json::objectValue:
        return Text::tr("an object");
    default: {
        // The number as it stands in the file: 1.0 and 1 are told apart, and nothing is rounded.
        const QByteArray source =
            document->bytes.mid(value->getOffsetStart(), value->getOffsetLimit() - value->getOffsetStart());
        return Text::tr("the number %1").arg(QString::fromUtf8(source));
    }
    }
}

void ZETOpenJsonValue::CheckKeys(const QStringList& known) const
{
    if (!IsObject())
        FailExpected(Text::tr("an object"));
    // The first one in the file is told, not the first one of the alphabet.
    const Json::Value* first = nullptr;
    QString firstKey;
    for (auto it = value->begin(); it != value->end(); ++it) {
        const QString key = ToQt(it.key());
        if (!known.contains(key) && (!first || it->getOffsetStart() < first->getOffsetStart())) {
            first = &*it;
            firstKey = key;
        }
    }
    if (!first)
        return;
    const QString nearest = ZETOpenJsonDocument::GetNearest(firstKey, known);
    QString text = Text::tr("unknown key %1").arg(Quote(firstKey));
    if (!nearest.isEmpty())
        text += Text::tr(", did you mean \"%1\"?").arg(nearest);
    else
        text += Text::tr(", expected one of: %1").arg(known.join(u", "_s));
    throw ZETOpenJsonError(document->file, document->GetLineOfOffset(first->getOffsetStart()), path, text);
}

bool ZETOpenJsonValue::Has(const char* key) const
{
    return IsObject() && value->isMember(key);
}

std::optional<ZETOpenJsonValue> ZETOpenJsonValue::Find(const char* key) const
{
    if (!Has(key))
        return std::nullopt;
    const QString name = QString::fromUtf8(key);
    return ZETOpenJsonValue(document, &(*value)[key], path.isEmpty() ? name : path + u'.' + name);
}

ZETOpenJsonValue ZETOpenJsonValue::Get(const char* key, const QString& expected) const
{
    if (!IsObject())
        FailExpected(Text::tr("an object"));
    if (const auto found = Find(key))
        return *found;
    Fail(Text::tr("expected the key \"%1\" with %2, found none").arg(QString::fromUtf8(key), expected));
}

QStringList ZETOpenJsonValue::GetKeys() const
{
    QStringList keys;
    for (auto it = value->begin(); it != value->end(); ++it)
        keys.append(ToQt(it.key()));
    return keys;
}

QList<ZETOpenJsonValue> ZETOpenJsonValue::GetElements(const QString& expected) const
{
    if (!IsArray())
        FailExpected(expected);
    QList<ZETOpenJsonValue> elements;
    elements.reserve(value->size());
    for (Json::ArrayIndex i = 0; i < value->size(); ++i)
        elements.append({document, &(*value)[i], path + u'[' + QString::number(i) + u']'});
    return elements;
}

QString ZETOpenJsonValue::ToText(const QString& expected) const
{
    if (!IsText())
        FailExpected(expected.isEmpty() ? Text::tr("a text") : expected);
    return ToQt(*value);
}

QString ZETOpenJsonValue::ToName(const QString& expected) const
{
    const QString name = ToText(expected);
    if (name.isEmpty())
        FailExpected(expected.isEmpty() ? Text::tr("a text that isn't empty") : expected);
    return name;
}

double ZETOpenJsonValue::ToNumber(const QString& expected) const
{
    // The reader refuses what isn't a number; what is too large for a double is left to look at here.
    if (!IsNumber() || !std::isfinite(value->asDouble()))
        FailExpected(expected.isEmpty() ? Text::tr("a number") : expected);
    return value->asDouble();
}

double ZETOpenJsonValue::ToPositiveNumber(const QString& expected) const
{
    const double number = ToNumber(expected);
    if (!(number > 0.0))
        FailExpected(expected);
    return number;
}

int ZETOpenJsonValue::ToInteger(int minimum, int maximum, const QString& expected) const
{
    const double number = ToNumber(expected);
    if (number != std::floor(number) || number < minimum || number > maximum)
        FailExpected(expected);
    return static_cast<int>(number);
}

bool ZETOpenJsonValue::ToBool() const
{
    if (!value->isBool())
        FailExpected(Text::tr("true or false"));
    return value->asBool();
}

int ZETOpenJsonValue::ToChoice(const QStringList& choices) const
{
    const QString expected = Text::tr("one of \"%1\"").arg(choices.join(u"\", \""_s));
    const auto index = choices.indexOf(ToText(expected));
    if (index < 0)
        FailExpected(expected);
    return static_cast<int>(index);
}

void ZETOpenJsonValue::ToNumbers(double* numbers, int count, const QString& expected) const
{
    if (!IsArray() || value->size() != static_cast<Json::ArrayIndex>(count))
        FailExpected(expected);
    for (int i = 0; i < count; ++i) {
        const Json::Value& element = (*value)[i];
        if (!element.isNumeric() || !std::isfinite(element.asDouble()))
            GetElements(expected)[i].FailExpected(Text::tr("a number"));
        numbers[i] = element.asDouble();
    }
}

ZETOpenJsonDocument::ZETOpenJsonDocument(const QString& fromFile)
    : file(fromFile)
{
    const QFileInfo info(file);
    if (!info.exists())
        throw ZETOpenJsonError(file, 0, QString(), Text::tr("there is no such file"));
    if (info.isDir())
        throw ZETOpenJsonError(file, 0, QString(), Text::tr("expected a file, found a folder"));
    QFile source(file);
    if (!source.open(QIODevice::ReadOnly))
        throw ZETOpenJsonError(file, 0, QString(), Text::tr("can't be read: %1").arg(source.errorString()));
    // Block by block, because a read of so many bytes at once would make room for all of them.
    for (QByteArray block; bytes.size() <= largestFile && !(block = source.read(blockSize)).isEmpty();)
        bytes += block;
    if (source.error() != QFileDevice::NoError)
        throw ZETOpenJsonError(file, 0, QString(), Text::tr("can't be read: %1").arg(source.errorString()));
    if (bytes.size() > largestFile)
        throw ZETOpenJsonError(file, 0, QString(), Text::tr("is larger than 1 GiB"));
    Parse();
}

ZETOpenJsonDocument::ZETOpenJsonDocument(const QString& named, const QByteArray& content)
    : file(named)
    , bytes(content)
{
    Parse();
}

ZETOpenJsonDocument::~ZETOpenJsonDocument() = default;

ZETOpenJsonValue ZETOpenJsonDocument::GetRoot() const
{
    return {this, root.get(), QString()};
}

void ZETOpenJsonDocument::Parse()
{
    if (bytes.startsWith("\xEF\xBB\xBF"))
        bytes.remove(0, 3); // so that the offsets of values are those of our bytes
    CheckEncoding();
    CountLines();
    root = std::make_unique<Json::Value>();
    const std::unique_ptr<Json::CharReader> reader(MakeStrictBuilder().newCharReader());
    std::string report;
    bool isValid = false;
    try {
        isValid = reader->parse(bytes.constData(), bytes.constData() + bytes.size(), root.get(), &report);
    } catch (const Json::Exception&) {
        // The only one that a reader of texts throws: values inside values, deeper than the limit.
        throw ZETOpenJsonError(file, 0, QString(), Text::tr("no valid JSON: nested too deeply"));
    }
    if (isValid)
        return;
    CheckBegin();
    const SyntaxError error = TakeFirstError(report);
    throw ZETOpenJsonError(file, error.line, QString(), error.text);
}

// What isn't JSON at all is most often another file of the part, which is known by its first line.
void ZETOpenJsonDocument::CheckBegin() const
{
    constexpr qsizetype shownLength = 40;
    const QByteArray text = bytes.trimmed();
    if (text.isEmpty())
        throw ZETOpenJsonError(file, 1, QString(), Text::tr("no valid JSON: the file is empty"));
    if (text.startsWith('{') || text.startsWith('['))
        return;
    const qsizetype line = bytes.first(bytes.indexOf(text.front())).count('\n') + 1;
    const QString found = QString::fromUtf8(text.mid(0, text.indexOf('\n'))).simplified().left(shownLength);
    throw ZETOpenJsonError(file, static_cast<int>(line), QString(),
                           Text::tr("no valid JSON: expected \"{\", found \"%1\"").arg(found));
}

void ZETOpenJsonDocument::CheckEncoding() const
{
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    qsizetype begin = 0;
    for (int line = 1; begin < bytes.size(); ++line) {
        qsizetype end = bytes.indexOf('\n', begin);
        if (end < 0)
            end = bytes.size();
        const QString decoded = decoder.decode(QByteArrayView(bytes).sliced(begin, end - begin));
        if (decoder.hasError())
            throw ZETOpenJsonError(file, line, QString(), Text::tr("no valid UTF-8"));
        begin = end + 1;
    }
}

// Each feature of a layup asks for its line, so counting from the begin of the file each time would take hours for a
// large one.
void ZETOpenJsonDocument::CountLines()
{
    linesAhead = {0};
    for (auto begin = bytes.begin(); bytes.end() - begin >= lineBlockSize; begin += lineBlockSize)
        linesAhead.append(linesAhead.last() + static_cast<int>(std::count(begin, begin + lineBlockSize, '\n')));
}

int ZETOpenJsonDocument::GetLineOfOffset(qsizetype offset) const
{
    const qsizetype end = std::clamp<qsizetype>(offset, 0, bytes.size());
    const qsizetype block = end / lineBlockSize;
    const auto begin = bytes.begin() + block * lineBlockSize;
    return 1 + linesAhead[block] + static_cast<int>(std::count(begin, bytes.begin() + end, '\n'));
}

QString ZETOpenJsonDocument::GetNearest(const QString& word, const QStringList& known)
{
    QString nearest;
    int smallest = std::max<int>(2, static_cast<int>(word.size()) / 3) + 1;
    for (const QString& candidate : known) {
        const int distance = GetEditDistance(word.toLower(), candidate.toLower());
        if (distance < smallest && distance < candidate.size()) {
            smallest = distance;
            nearest = candidate;
        }
    }
    return nearest;
}
