#include "CheckFormat.h"

#include "CheckReaders.h"

#include <algorithm>
#include <vector>

namespace
{
constexpr QByteArrayView byteOrderMark = "\xEF\xBB\xBF";

using GetFormats = std::vector<CheckFormat> (*)();

/*! In the order in which they are asked whether a file is of their kind. APT begins as Virtek may. */
const std::vector<GetFormats> families{
    CheckReaders::GetApt,        CheckReaders::GetVirtek, CheckReaders::GetLap,    CheckReaders::GetAssemblyGuidance,
    CheckReaders::GetLpt,        CheckReaders::GetSl,     CheckReaders::GetNLines, CheckReaders::GetDxf,
    CheckReaders::GetCalibration};

const std::vector<CheckFormat>& GetRows()
{
    static const std::vector<CheckFormat> rows = [] {
        std::vector<CheckFormat> all;
        for (const auto getFormats : families) {
            for (CheckFormat& format : getFormats())
                all.push_back(std::move(format));
        }
        return all;
    }();
    return rows;
}
} // namespace

std::span<const CheckFormat> CheckFormats::GetAll()
{
    return GetRows();
}

const CheckFormat* CheckFormats::Find(const QString& type)
{
    for (const CheckFormat& format : GetAll()) {
        if (format.types.contains(type))
            return &format;
    }
    return nullptr;
}

bool CheckFormats::IsCompanion(const CheckFormat& format)
{
    const std::span<const CheckFormat> all = GetAll();
    return std::any_of(all.begin(), all.end(),
                       [&](const CheckFormat& part) { return format.types.contains(part.companionType); });
}

const CheckFormat* CheckFormats::Recognise(const QString& fileName, QByteArrayView bytes)
{
    for (const CheckFormat& format : GetAll()) {
        if (format.isAlike && format.isAlike(SkipByteOrderMark(bytes)))
            return &format;
    }
    for (const CheckFormat& format : GetAll()) {
        for (const QString& extension : format.extensions) {
            if (fileName.endsWith(extension, Qt::CaseInsensitive))
                return &format;
        }
    }
    return nullptr;
}

bool CheckFormats::HasByteOrderMark(QByteArrayView bytes)
{
    return bytes.startsWith(byteOrderMark);
}

QByteArrayView CheckFormats::SkipByteOrderMark(QByteArrayView bytes)
{
    return HasByteOrderMark(bytes) ? bytes.sliced(byteOrderMark.size()) : bytes;
}
