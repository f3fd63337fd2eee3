#include "JobPreviewCommandLine.h"

#include "JobError.h"
#include "JobPreviewPage.h"

#include <QCoreApplication>
#include <QRegularExpression>

using namespace Qt::Literals::StringLiterals;

namespace
{
QString Translate(const char* text)
{
    return QCoreApplication::translate("zetlaser-job", text);
}

[[noreturn]] void FailValue(const QString& flag, const QString& expected, const QString& found)
{
    throw JobError(
        JobExit::WrongCall,
        Translate("%1: expected %2, found \"%3\" (zetlaser-job preview --help tells more)").arg(flag, expected, found));
}

std::optional<ZETOpenView::Side> ParseSide(const QString& text)
{
    if (text == u"auto"_s)
        return std::nullopt;
    const auto side = ZETOpenView::GetSideNames().indexOf(text);
    if (side < 0)
        FailValue(u"--side"_s, Translate("one of %1").arg(u"auto, "_s + ZETOpenView::GetSideNames().join(u", "_s)),
                  text);
    return static_cast<ZETOpenView::Side>(side);
}

QSize ParseSize(const QString& text)
{
    static const QRegularExpression form(u"^([0-9]{3,5})x([0-9]{3,5})$"_s);
    const QRegularExpressionMatch match = form.match(text);
    const QSize size(match.captured(1).toInt(), match.captured(2).toInt());
    const QSize least(200, 200);
    const QSize most(10000, 10000);
    if (size.expandedTo(least) != size || size.boundedTo(most) != size)
        FailValue(u"--size"_s, Translate("a size such as 1600x1000, from 200 to 10000 pixels"), text);
    return size;
}

QStringList ParseFormats(const QString& text)
{
    const QStringList formats = text.split(u',', Qt::SkipEmptyParts);
    for (const QString& format : formats) {
        if (!JobPreviewCommandLine::GetFormats().contains(format))
            FailValue(u"--formats"_s, Translate("some of %1").arg(JobPreviewCommandLine::GetFormats().join(u", "_s)),
                      text);
    }
    if (formats.isEmpty())
        FailValue(u"--formats"_s, Translate("some of %1").arg(JobPreviewCommandLine::GetFormats().join(u", "_s)), text);
    return formats;
}

/*! Takes the options that only a preview has out of the arguments. */
class Parser
{
public:
    explicit Parser(const QStringList& given)
        : arguments(given)
    {
    }

    JobPreviewCommandLine Parse()
    {
        result.formats = JobPreviewCommandLine::GetFormats();
        result.libraryFolder = JobPreviewPage::Library::GetDefaultFolder();
        QStringList shared;
        while (next < arguments.size()) {
            const QString argument = arguments[next++];
            if (argument == u"--"_s) {
                shared += arguments.mid(next - 1);
                break;
            }
            if (!TakeOwn(argument))
                shared.append(argument);
        }
        result.job = ParseCommandLine(shared);
        return result;
    }

private:
    bool TakeOwn(const QString& argument)
    {
        const QString name = argument.section(u'=', 0, 0);
        if (argument == u"-h"_s || argument == u"--help"_s)
            result.isHelp = true;
        else if (argument == u"--ply-pictures"_s || argument == u"--no-ply-pictures"_s)
            result.plyPictures = !argument.startsWith(u"--no-"_s);
        else if (name == u"--side"_s)
            result.side = ParseSide(TakeValue(argument));
        else if (name == u"--size"_s)
            result.size = ParseSize(TakeValue(argument));
        else if (name == u"--formats"_s)
            result.formats = ParseFormats(TakeValue(argument));
        else if (name == u"--three-js"_s)
            result.libraryFolder = TakeValue(argument);
        else
            return false;
        return true;
    }

    QString TakeValue(const QString& argument)
    {
        if (argument.contains(u'='))
            return argument.section(u'=', 1);
        if (next >= arguments.size())
            throw JobError(JobExit::WrongCall, Translate("expected a value behind %1, found none").arg(argument));
        return arguments[next++];
    }

    const QStringList& arguments;
    qsizetype next = 0;
    JobPreviewCommandLine result;
};
} // namespace

const QStringList& JobPreviewCommandLine::GetFormats()
{
    static const QStringList formats{u"html"_s, u"png"_s, u"svg"_s};
    return formats;
}

JobPreviewCommandLine ParsePreviewCommandLine(const QStringList& arguments)
{
    return Parser(arguments).Parse();
}

QString GetPreviewHelpText()
{
    return Translate(
        "Usage: zetlaser-job preview LAYUP --output BASE [options]\n"
        "\n"
        "Shows what a projector will show: a page for the browser (BASE.html), which needs no network,\n"
        "and pictures of the whole part (BASE.png, BASE.svg).\n"
        "\n"
        "  --formats FORMAT[,FORMAT...]\n"
        "      What to write: html, png, svg. Default: all of them.\n"
        "  --[no-]ply-pictures\n"
        "      Also write a picture of each ply: BASE-001-NAME.png and so on. Default: off.\n"
        "  --side auto|top|bottom|front|back|left|right|oblique\n"
        "      The side that the part is seen from. Default: auto, the side that the plies are laid from.\n"
        "  --size WIDTHxHEIGHT\n"
        "      Size of the pictures in pixels. Default: 1600x1000.\n"
        "  --three-js FOLDER\n"
        "      Where three.js stands, laid out as in Debian's package libjs-three, which the page is made\n"
        "      with. Default: /usr/share/javascript/three.\n"
        "\n"
        "Which plies are shown, and what of them, is told by the same options as for a job that writes,\n"
        "for example --plies, --configuration, --output-type, --output-rosette: zetlaser-job --help.\n");
}
