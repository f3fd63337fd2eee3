#include "CheckCursor.h"
#include "CheckReaders.h"

using namespace Qt::Literals::StringLiterals;

namespace
{
constexpr QByteArrayView firstLine = "LAYER START myData";
constexpr QByteArrayView lastLine = "LAYER END myData";

constexpr char apt[] = "... this will become APT ply data ...";
constexpr char apt2[] = "... this will become APT_2 ply data ...";
constexpr char aptSl[] = "... this will become APT_SL ply data ...";

class AptReader
{
public:
    AptReader(QByteArrayView bytes, const CheckKnownTexts& known, CheckFile& checkFile)
        : lines(bytes, known)
        , file(checkFile)
    {
    }

    /*! Four lines, of which \a secondLine tells the format. */
    void Read(QByteArrayView secondLine)
    {
        file.BeginGroup(CheckGroup::Layer, u"myData"_s, 1);
        const bool isWhole = ReadLine(firstLine) && ReadLine(secondLine) && ReadName() && ReadLine(lastLine);
        file.EndGroup(lines.GetLastLineNumber());
        if (isWhole)
            file.CheckEnd(lines, CheckLines::Show(lastLine));
    }

private:
    /*! False at the end of the file. */
    bool ReadLine(QByteArrayView expected)
    {
        const int line = lines.GetLineNumber();
        if (lines.AtEnd()) {
            file.AddEndsTooEarly(lines.GetLastLineNumber(), CheckLines::Show(expected));
            return false;
        }
        if (!lines.TakeIf(expected))
            file.AddExpected(line, CheckLines::Show(expected), lines.Take());
        return true;
    }

    bool ReadName()
    {
        constexpr QByteArrayView keyword = "Baser laser Group Name ";
        const auto name = lines.TakeText(keyword);
        file.partName = name.value_or(QString());
        return name || ReadLine(keyword);
    }

    CheckLines lines;
    CheckFile& file;
};

template <const char* secondLine>
void ReadApt(QByteArrayView bytes, const CheckKnownTexts& known, CheckFile& file)
{
    AptReader(bytes, known, file).Read(secondLine);
}

template <const char* secondLine>
bool IsApt(QByteArrayView bytes)
{
    const qsizetype first = bytes.indexOf('\n');
    return bytes.startsWith(firstLine) && first >= 0 && bytes.sliced(first + 1).startsWith(secondLine);
}
} // namespace

std::vector<CheckFormat> CheckReaders::GetApt()
{
    const QString extension = u".apt"_s;
    return {{{u"apt"_s}, u"APT"_s, {extension}, IsApt<apt>, ReadApt<apt>, nullptr, {}},
            {{u"apt-2"_s}, u"APT_2"_s, {extension}, IsApt<apt2>, ReadApt<apt2>, nullptr, {}},
            {{u"apt-sl"_s}, u"SL APT"_s, {extension}, IsApt<aptSl>, ReadApt<aptSl>, nullptr, {}}};
}
