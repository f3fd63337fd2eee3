#include "JobCsv.h"

#include "JobError.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>

#include <csv.h>

using namespace Qt::Literals::StringLiterals;

namespace
{
constexpr qint64 largestFile = 1 << 28;

QString Translate(const char* text)
{
    return QCoreApplication::translate("zetlaser-job", text);
}

[[noreturn]] void Fail(const QString& file, const QString& text)
{
    throw JobError(JobExit::WrongInput, u"%1: %2"_s.arg(file, text));
}

QByteArray ReadBytes(const QString& path)
{
    const QFileInfo information(path);
    if (!information.exists())
        Fail(path, Translate("there is no such file"));
    if (!information.isFile())
        Fail(path,
             information.isDir() ? Translate("expected a file, found a folder") : Translate("expected a regular file"));
    if (information.size() > largestFile)
        Fail(
            path,
            Translate("expected a file of at most %1 bytes, found one of %2").arg(largestFile).arg(information.size()));
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        Fail(path, Translate("can't be read: %1").arg(file.errorString()));
    QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError)
        Fail(path, Translate("can't be read: %1").arg(file.errorString()));
    constexpr QByteArrayView mark = "\xEF\xBB\xBF";
    return bytes.startsWith(mark) ? bytes.mid(mark.size()) : bytes;
}

/*! The lines with their ends, which are those of Unix, Windows or old Macintoshes. */
QList<QByteArray> SplitLines(const QByteArray& bytes)
{
    QList<QByteArray> lines;
    for (qsizetype begin = 0, end = 0; begin < bytes.size(); begin = end) {
        while (end < bytes.size() && bytes[end] != '\n' && bytes[end] != '\r')
            ++end;
        const bool isWindows = bytes.mid(end, 2) == "\r\n";
        end = std::min(end + (isWindows ? 2 : 1), bytes.size());
        lines.append(bytes.mid(begin, end - begin));
    }
    return lines;
}

char FindSeparator(const QByteArray& firstLine)
{
    bool isQuoted = false;
    for (const char letter : firstLine) {
        if (letter == '"')
            isQuoted = !isQuoted;
        else if (!isQuoted && (letter == ',' || letter == ';'))
            return letter;
    }
    return ',';
}

/*! The parser of libcsv, which is fed one line after the other, so that each record knows where it begins. */
class Parser
{
public:
    Parser(const QString& path, char separator)
        : file(path)
    {
        if (csv_init(&parser, CSV_STRICT | CSV_STRICT_FINI) != 0)
            throw std::bad_alloc();
        csv_set_delim(&parser, static_cast<unsigned char>(separator));
    }
    ~Parser() { csv_free(&parser); }
    Q_DISABLE_COPY_MOVE(Parser)

    void Feed(const QByteArray& bytes)
    {
        ++line;
        if (!isInside)
            record.line = line;
        isInside = isInside || !bytes.trimmed().isEmpty(); // until the end of the record says otherwise
        const auto size = static_cast<std::size_t>(bytes.size());
        if (csv_parse(&parser, bytes.constData(), size, TakeValue, TakeRecord, this) != size)
            Fail(file + u':' + QString::number(line),
                 Translate("expected quotes around a whole value, and \"\" for a quote in it"));
    }

    QList<JobCsvRecord> Finish()
    {
        if (csv_fini(&parser, TakeValue, TakeRecord, this) != 0)
            Fail(file + u':' + QString::number(record.line),
                 Translate("expected a quote at the end of a value that begins with one, found the end of the file"));
        return records;
    }

private:
    static void TakeValue(void* bytes, std::size_t size, void* self)
    {
        static_cast<Parser*>(self)->record.values.append(
            QString::fromUtf8(static_cast<const char*>(bytes), static_cast<qsizetype>(size)));
    }

    static void TakeRecord(int, void* self)
    {
        auto& that = *static_cast<Parser*>(self);
        that.records.append(that.record);
        that.record.values.clear();
        that.isInside = false;
    }

    const QString& file;
    csv_parser parser{};
    int line = 0;
    bool isInside = false; //!< a record has begun and not ended
    JobCsvRecord record{};
    QList<JobCsvRecord> records;
};
} // namespace

JobCsvFile JobCsvFile::Read(const QString& file)
{
    const QList<QByteArray> lines = SplitLines(ReadBytes(file));
    for (qsizetype i = 0; i < lines.size(); ++i) {
        QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
        const QString decoded = decoder(lines[i]);
        if (decoder.hasError())
            Fail(file + u':' + QString::number(i + 1),
                 Translate("expected UTF-8, found other bytes; spreadsheets call it \"CSV UTF-8\""));
    }
    const char separator = FindSeparator(lines.value(0));
    Parser parser(file, separator);
    for (const QByteArray& line : lines)
        parser.Feed(line);
    return {QLatin1Char(separator), parser.Finish()};
}
