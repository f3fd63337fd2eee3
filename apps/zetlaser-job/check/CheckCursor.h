#pragma once

#include <QByteArrayView>
#include <QString>

#include <array>

class CheckFile;

/*! Takes one line apart, from its left. From the first place on that isn't as expected it takes nothing more, leaves
 *  the values that it should fill as they are, and knows what was expected there and what stands there. */
class CheckCursor
{
public:
    /*! \a numberDecimals: decimals that each number of the line has, exactly. */
    explicit CheckCursor(QByteArrayView line, int numberDecimals = 6)
        : rest(line)
        , decimals(numberDecimals)
    {
    }

    bool StartsWith(QByteArrayView text) const { return isGood && rest.startsWith(text); }

    /*! This very text. */
    CheckCursor& Text(QByteArrayView text);
    /*! All up to \a mark, which is stepped over. */
    CheckCursor& TextUntil(char mark, QByteArrayView& text);
    /*! A number in fixed notation. */
    CheckCursor& Number(double& value);
    /*! The same, or one of the words for what is none. */
    CheckCursor& NumberOrNan(double& value);
    /*! Three numbers with \a separator between them. */
    CheckCursor& Numbers(std::array<double, 3>& values, QByteArrayView separator);
    /*! A count or an index: digits alone, at least \a width of them, and zeros ahead only to make up the width. */
    CheckCursor& Integer(int& value, int width = 1);
    /*! Nothing more. */
    CheckCursor& End();
    /*! Not as it has to be for another reason: \a what was expected here. */
    CheckCursor& Fail(const QString& what);

    bool IsGood() const { return isGood; }
    QByteArrayView GetRest() const { return rest; }
    /*! IsGood(); otherwise an error of \a file at \a line. */
    bool Report(int line, CheckFile& file) const;

private:
    qsizetype GetNumberLength() const;

    QByteArrayView rest;
    int decimals;
    bool isGood = true;
    QString expected;
};
