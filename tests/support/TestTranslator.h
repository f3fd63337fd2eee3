#pragma once

#include <QCoreApplication>
#include <QString>
#include <QTranslator>

/*! Puts "* " ahead of the texts of one context as long as it lives, and leaves all other texts alone. */
class TestTranslator : public QTranslator
{
public:
    explicit TestTranslator(const char* markedContext)
        : context(markedContext)
    {
        QCoreApplication::installTranslator(this);
    }
    ~TestTranslator() override { QCoreApplication::removeTranslator(this); }

    bool isEmpty() const override { return false; }
    QString translate(const char* askedContext, const char* text, const char*, int) const override
    {
        return qstrcmp(askedContext, context) == 0 ? QStringLiteral("* ") + QLatin1StringView(text) : QString();
    }

private:
    const char* context;
};
