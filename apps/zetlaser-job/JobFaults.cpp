#include "JobFaults.h"

#include "JobConsole.h"
#include "JobError.h"

#include <QCoreApplication>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace
{
constexpr qsizetype mostTold = 100;
constexpr qsizetype longestTold = 400;

QString Translate(const char* text)
{
    return QCoreApplication::translate("zetlaser-job", text);
}

/*! Names and values of a file come with line ends, and of any length. */
QString OnOneLine(QString text)
{
    text.replace(u'\r', u"\\r"_s).replace(u'\n', u"\\n"_s);
    return text.size() > longestTold ? text.left(longestTold) + u"..."_s : text;
}
} // namespace

QString JobFaults::Format(int line, const QString& column, const QString& text) const
{
    const QString place = file + u':' + QString::number(line) + u": "_s;
    return place + OnOneLine(column.isEmpty() ? text : column + u": "_s + text);
}

void JobFaults::Add(int line, const QString& column, const QString& text)
{
    faults.insert(line, Format(line, column, text));
}

void JobFaults::Throw() const
{
    if (faults.isEmpty())
        return;
    // A multi map gives those of one line latest first.
    QStringList lines;
    for (const int line : faults.uniqueKeys()) {
        const QStringList ofLine = faults.values(line);
        std::copy(ofLine.rbegin(), ofLine.rend(), std::back_inserter(lines));
    }
    if (lines.size() == 1)
        throw JobError(JobExit::WrongInput, lines.first());
    for (const QString& line : lines.first(std::min(mostTold, lines.size())))
        JobConsole::WriteMessage(Translate("error"), line);
    throw JobError(JobExit::WrongInput,
                   Translate("%1: %2 faults, nothing is written").arg(file, QString::number(lines.size())));
}
