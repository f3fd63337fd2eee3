// Any bytes as what stands between head and digest of a saved model: it is refused with one line, or it is a model that
// can be updated, and that is the same when it is saved and loaded again.

#include "FuzzTarget.h"

#include "openhost/ZETFeature/ZETOpenModel.h"
#include "openhost/ZETFeature/ZETOpenModelStream.h"

#include <ZETFeature/ZETFeatContainer.h>
#include <ZETSystem/ZETSysException.h>

#include <QCryptographicHash>
#include <QtEndian>

namespace
{
/*! Head and digest tell bytes that were changed; a fuzzer that had to find them would never come any further. */
QByteArray GetSealed(const QByteArray& content)
{
    QByteArray file = "ZETMODEL" + QByteArray::fromHex("00000001") + QByteArray(8, '\0') + content;
    qToBigEndian<quint64>(static_cast<quint64>(content.size()), file.data() + 12);
    return file + QCryptographicHash::hash(file, QCryptographicHash::Sha256).left(8);
}

std::unique_ptr<ZETFeatContainer> Load(const QByteArray& file)
{
    try {
        return ZETOpenModelStream::Load(file);
    } catch (const ZETSysException& error) {
        FuzzTarget::RequireOneLine(error.GetMessage());
        return nullptr;
    }
}
} // namespace

int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    const auto model = Load(GetSealed(QByteArray(reinterpret_cast<const char*>(data), qsizetype(size))));
    if (!model)
        return 0;
    // Objects are numbered as they stand in a file, which may have any order; the model's own comes with the first
    // round.
    const auto ordered = Load(ZETOpenModelStream::Save(*model));
    FuzzTarget::Require(ordered != nullptr, "a model that was loaded can be saved and loaded again");
    const QByteArray saved = ZETOpenModelStream::Save(*ordered);
    const auto again = Load(saved);
    FuzzTarget::Require(again && ZETOpenModelStream::Save(*again) == saved,
                        "a model is the same when it is loaded again");
    ZETOpenModel::Update(*model);
    return 0;
}
