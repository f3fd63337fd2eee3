#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QList>
#include <QString>

#include <optional>
#include <span>

/*! What is known of a file beforehand, from the tree that it was written of. Names and texts go into line formats as
 *  they stand, so one with line ends can't be told from further lines, and a literal is any text at all: the user's own
 *  records. Where one of these stands in the file, it is taken whole. Empty for a file from elsewhere. */
struct CheckKnownTexts {
    QList<QByteArray> withLineEnds; //!< names and texts that hold LF or CR
    QList<QByteArray> literals;     //!< texts of literals, without the line end behind them

    bool HoldCr() const;
};

/*! Goes through the lines of a file. A line ends with LF or CR LF; where a known text holds CR, with LF alone. */
class CheckLines
{
public:
    CheckLines(QByteArrayView fileBytes, const CheckKnownTexts& knownTexts);

    bool AtEnd() const { return position >= bytes.size(); }
    /*! Number of the line that Peek shows, from 1. Behind the last line: one more than there are. */
    int GetLineNumber() const { return lineNumber; }
    /*! Number of the last line of the file that was taken; 1 in an empty file. */
    int GetLastLineNumber() const { return lineNumber > 1 ? lineNumber - 1 : 1; }
    /*! The current line without its end; empty at the end. */
    QByteArrayView Peek() const;
    /*! The current line, and steps over it. */
    QByteArrayView Take();
    /*! Steps over \a count bytes of the current line: what is behind them is the current line now. */
    void StepInto(qsizetype count) { position += count; }
    /*! True, and steps over it, if the current line is \a line. */
    bool TakeIf(QByteArrayView line);
    /*! What stands behind \a keyword at the begin of the current line, and steps over it: the rest of the line, or a
     *  known text with line ends that stands there. Nothing if the line begins otherwise. An empty keyword fits each
     *  line but the end of the file. */
    std::optional<QString> TakeText(QByteArrayView keyword);
    /*! The same for text between \a keyword and \a ending, such as a quote. */
    std::optional<QString> TakeText(QByteArrayView keyword, QByteArrayView ending);
    /*! A known literal that stands at the current line, and steps over it. */
    std::optional<QString> TakeLiteral();
    /*! The last line has no line end: the file was cut. */
    bool IsCut() const { return !bytes.isEmpty() && !bytes.endsWith('\n'); }

    /*! \a text on one line: what can't be shown is escaped. */
    static QString Escape(QStringView text);
    /*! \a text in quotes for a message: at most 40 characters, with bytes that can't be shown escaped. */
    static QString Show(QByteArrayView text);

private:
    qsizetype GetLineEnd() const;
    void StepOver(qsizetype count);
    QByteArrayView FindKnown(const QList<QByteArray>& texts, qsizetype at, QByteArrayView ending) const;

    QByteArrayView bytes;
    const CheckKnownTexts& known;
    bool mayEndWithCr;
    qsizetype position = 0;
    int lineNumber = 1;
};

namespace CheckNumbers
{
/*! A number in fixed notation with a point ("-12.500", "7"): nothing around it, no exponent, no plus sign. */
std::optional<double> Parse(QByteArrayView text);
/*! A count or an index: digits alone, at most nine. */
std::optional<int> ParseInteger(QByteArrayView text);
/*! The fields of \a text between blanks, one or several; at most \a fields.size(). Returns how many there are in all.
 */
int Split(QByteArrayView text, std::span<QByteArrayView> fields);
} // namespace CheckNumbers
