#pragma once

#include "CheckFile.h"
#include "CheckLines.h"

#include <QByteArrayView>
#include <QString>
#include <QStringList>

#include <span>

/*! A kind of file that can be read back: a row that type, name, recognition and reader are looked up in.
 *
 *  The readers share nothing with the writers, so that one misunderstanding can't stand on both sides. They take bytes
 *  from anywhere: whatever these are, a reader returns, and takes no more memory than a small multiple of their number.
 */
struct CheckFormat {
    /*! As "--type" of the tool names it: "virtek". Several for makes whose files are the same to the byte. A file that
     *  stands beside a part file has a name of its own, such as "virtek-calibration". */
    QStringList types;
    QString name; //!< for people: "Virtek"
    /*! Extensions, in small letters with the dot. */
    QStringList extensions;
    /*! The content is of this kind, however broken; \a bytes are the whole file. Only for what can be told apart from
     *  all others by its first lines: the name of the file decides otherwise. */
    bool (*isAlike)(QByteArrayView bytes) = nullptr;
    void (*read)(QByteArrayView bytes, const CheckKnownTexts& known, CheckFile& file) = nullptr;
    /*! Path of the file that goes with the part file at \a path (calibration, targets, tool); null if there is none. */
    QString (*getCompanion)(const QString& path) = nullptr;
    /*! Type of that file. */
    QString companionType;
};

namespace CheckFormats
{
/*! All rows, part files first. */
std::span<const CheckFormat> GetAll();
/*! By one of its types; null if there is none. */
const CheckFormat* Find(const QString& type);
/*! The format stands beside part files, and has no plies. */
bool IsCompanion(const CheckFormat& format);
/*! By content, and where that doesn't tell, by the name of the file; null if neither does. */
const CheckFormat* Recognise(const QString& fileName, QByteArrayView bytes);
/*! What an editor may put ahead of a file: no format has it. */
bool HasByteOrderMark(QByteArrayView bytes);
QByteArrayView SkipByteOrderMark(QByteArrayView bytes);
} // namespace CheckFormats
