// Makes an input of FuzzModelStream of a layup file: save-model LAYUP FILE

#include "openhost/layup/ZETOpenLayupFile.h"
#include "openhost/ZETFeature/ZETOpenModelStream.h"

#include <ZETFeature/ZETFeatContainer.h>

#include <QFile>

#include <cstdio>

int main(int argc, char** argv)
{
    if (argc != 3)
        return std::puts("usage: save-model LAYUP FILE"), 2;
    const ZETOpenLayupModel model = ZETOpenLayupFile::Load(QString::fromLocal8Bit(argv[1]));
    constexpr int headSize = 20;
    constexpr int digestSize = 8;
    QFile file(QString::fromLocal8Bit(argv[2]));
    const QByteArray content = ZETOpenModelStream::Save(*model.container).mid(headSize).chopped(digestSize);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size() ? 0 : 1;
}
