#pragma once

#include <ZETHostGlobal.h>

#include <QByteArray>
#include <QString>

#include <exception>

/*! The one exception class of the system, for structural faults. Thrown by value; its text is not translated. */
class ZETHOST_EXPORT ZETSysException : public std::exception
{
public:
    explicit ZETSysException(const QString& text)
        : message(text)
        , bytes(text.toUtf8())
    {
    }
    ZETSysException(const ZETSysException&) = default;
    ZETSysException& operator=(const ZETSysException&) = default;
    ~ZETSysException() override = default;

    QString GetMessage() const { return message; }
    /*! The message as UTF-8. */
    const char* what() const noexcept override { return bytes.constData(); }

private:
    QString message;
    QByteArray bytes;
};
