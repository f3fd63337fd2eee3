#include "FuzzTarget.h"

#include <QFile>

#include <cstdio>
#include <cstdlib>

void FuzzTarget::Require(bool holds, const char* law, const QString& found)
{
    if (holds)
        return;
    std::fprintf(stderr, "broken: %s\nfound: %s\n", law, qUtf8Printable(found));
    std::abort();
}

void FuzzTarget::WriteFile(const QString& name, const unsigned char* data, std::size_t size)
{
    QFile file(name);
    Require(file.open(QIODevice::WriteOnly) && file.write(reinterpret_cast<const char*>(data), qint64(size)) >= 0 &&
                file.flush(),
            "the input is written", file.errorString());
}

void FuzzTarget::RequireOneLine(const QString& text)
{
    const bool isOneLine = !text.isEmpty() && !text.contains(u'\n') && !text.contains(u'\r');
    Require(isOneLine, "what is told is one line", text);
}
