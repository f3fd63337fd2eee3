#pragma once

#include <ZETHostGlobal.h>

#include <QString>

/*! A stroke font by name. A value; "simple" is the name that every host knows. */
class ZETHOST_EXPORT ZETVisVectorFont
{
public:
    explicit ZETVisVectorFont(const QString& name);
    ZETVisVectorFont(const ZETVisVectorFont&) = default;
    ZETVisVectorFont& operator=(const ZETVisVectorFont&) = default;
    virtual ~ZETVisVectorFont();

    QString GetName() const { return name; }

private:
    QString name;
};
