#pragma once

#include <ZETHostGlobal.h>
#include <ZETSystem/ZETSysException.h>

#include <QList>
#include <QString>
#include <QStringList>

#include <memory>
#include <optional>

namespace Json
{
class Value;
}
class ZETOpenJsonDocument;

/*! A fault of a JSON file. The message tells it in one line: `FILE:LINE: PATH: what is wrong`. */
class ZETHOST_EXPORT ZETOpenJsonError : public ZETSysException
{
public:
    /*! \a line 0: the file as a whole; \a path empty: no value in particular. */
    ZETOpenJsonError(const QString& file, int line, const QString& path, const QString& text);
    ~ZETOpenJsonError() override;

    QString GetFile() const { return file; }
    /*! Counted from 1. */
    int GetLine() const { return line; }
    /*! Where in the file, by names: `layups[0].S1.P3.boundary`. */
    QString GetPath() const { return path; }
    /*! What is wrong, without the place. */
    QString GetText() const { return text; }

private:
    QString file;
    int line;
    QString path;
    QString text;
};

/*! One value of a document, which must outlive it. It knows its line and its path, and refuses, with a
 *  ZETOpenJsonError, what isn't as the caller expects: each conversion names what it expected and what it found.
 *  Cheap to copy. */
class ZETHOST_EXPORT ZETOpenJsonValue
{
public:
    bool IsObject() const;
    bool IsArray() const;
    bool IsText() const;
    bool IsNumber() const;

    int GetLine() const;
    QString GetPath() const { return path; }
    /*! The same value under another path: where a name says more than a key and an index. */
    ZETOpenJsonValue WithPath(const QString& newPath) const;

    /*! Throws with \a text as it stands. */
    [[noreturn]] void Fail(const QString& text) const;
    /*! Throws "expected \a expected, found ..." with what this value is. */
    [[noreturn]] void FailExpected(const QString& expected) const;
    /*! What this value is, for a message: `the text "abc"`, `the number 3`, `an array of 4`. */
    QString Describe() const;

    // ---- Objects ----
    /*! Throws unless this is an object whose keys all stand in \a known; tells the nearest known key. */
    void CheckKeys(const QStringList& known) const;
    bool Has(const char* key) const;
    /*! Throws if there is no such key. \a expected says what should be there. */
    ZETOpenJsonValue Get(const char* key, const QString& expected) const;
    std::optional<ZETOpenJsonValue> Find(const char* key) const;
    /*! Sorted by code point, whatever their order in the file. */
    QStringList GetKeys() const;

    // ---- Arrays ----
    /*! Throws unless this is an array; \a expected says of what. */
    QList<ZETOpenJsonValue> GetElements(const QString& expected) const;

    // ---- Plain values ----
    /*! \a expected replaces the general word for the type in the message. */
    QString ToText(const QString& expected = QString()) const;
    /*! A text that isn't empty. */
    QString ToName(const QString& expected = QString()) const;
    /*! A finite number. */
    double ToNumber(const QString& expected = QString()) const;
    double ToPositiveNumber(const QString& expected) const;
    int ToInteger(int minimum, int maximum, const QString& expected) const;
    bool ToBool() const;
    /*! One of \a choices, as its index; an unknown one is told with the nearest. */
    int ToChoice(const QStringList& choices) const;
    /*! Array of exactly \a count finite numbers, without a ZETOpenJsonValue for each. */
    void ToNumbers(double* numbers, int count, const QString& expected) const;

private:
    friend class ZETOpenJsonDocument;
    ZETOpenJsonValue(const ZETOpenJsonDocument* owner, const Json::Value* jsonValue, const QString& jsonPath);

    const ZETOpenJsonDocument* document;
    const Json::Value* value;
    QString path;
};

/*! A JSON file, read strictly: no duplicate keys, no comments, no trailing commas, nothing behind the end, no values
 *  that aren't numbers or that are too large for one, valid UTF-8 only. */
class ZETHOST_EXPORT ZETOpenJsonDocument
{
public:
    /*! Throws ZETOpenJsonError if the file can't be read or is no JSON. */
    explicit ZETOpenJsonDocument(const QString& file);
    /*! The same from \a content; \a file is named in messages only. */
    ZETOpenJsonDocument(const QString& file, const QByteArray& content);
    ~ZETOpenJsonDocument();

    QString GetFile() const { return file; }
    ZETOpenJsonValue GetRoot() const;

    /*! The element of \a known that \a word is most likely meant to be; empty if none is near. */
    static QString GetNearest(const QString& word, const QStringList& known);

private:
    Q_DISABLE_COPY_MOVE(ZETOpenJsonDocument)
    friend class ZETOpenJsonValue;
    void Parse();
    void CheckEncoding() const;
    void CheckBegin() const;
    void CountLines();
    int GetLineOfOffset(qsizetype offset) const;

    QString file;
    QByteArray bytes;
    QList<int> linesAhead; //!< of each block of the bytes: how many lines end ahead of it
    std::unique_ptr<Json::Value> root;
};
