// Calls a fuzz target with each file of some folders, in the order of their names: replay FOLDER...

#include "FuzzTarget.h"

#include <QDir>
#include <QFile>

#include <cstdio>

int main(int argc, char** argv)
{
    int count = 0;
    for (int i = 1; i < argc; ++i) {
        const QDir folder(QString::fromLocal8Bit(argv[i]));
        for (const QFileInfo& info : folder.entryInfoList(QDir::Files, QDir::Name)) {
            std::printf("%s\n", qUtf8Printable(info.filePath())); // told first, because the input may end the program
            std::fflush(stdout);
            QFile file(info.filePath());
            if (!file.open(QIODevice::ReadOnly))
                return std::puts("can't be read"), 1;
            const QByteArray bytes = file.readAll();
            LLVMFuzzerTestOneInput(reinterpret_cast<const unsigned char*>(bytes.constData()),
                                   std::size_t(bytes.size()));
            ++count;
        }
    }
    std::printf("%d inputs\n", count);
    return count > 0 ? 0 : 1;
}
