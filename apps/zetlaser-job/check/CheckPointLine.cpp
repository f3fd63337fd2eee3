#include "CheckPointLine.h"

#include "CheckLines.h"

bool CheckPointLine::IsAlike(QByteArrayView line)
{
    QByteArrayView text = line.trimmed();
    if (text.startsWith('-'))
        text = text.sliced(1);
    return !text.isEmpty() && ((text.front() >= '0' && text.front() <= '9') || text.front() == '.' ||
                               text.startsWith("nan") || text.startsWith("inf"));
}

std::optional<std::array<double, 3>> CheckPointLine::ReadTriple(std::span<const QByteArrayView> fields, int lineNumber,
                                                                CheckFile& file)
{
    std::array<double, 3> numbers{};
    for (size_t i = 0; i < numbers.size(); ++i) {
        const std::optional<double> number = CheckNumbers::Parse(fields[i]);
        if (!number) {
            file.AddWrongValue(lineNumber, Check::tr("a number"), fields[i]);
            return {};
        }
        numbers[i] = *number;
    }
    return numbers;
}

bool CheckPointLine::Read(QByteArrayView line, int lineNumber, CheckFile& file)
{
    std::array<QByteArrayView, 6> fields;
    const int count = CheckNumbers::Split(line, fields);
    if (count != 3 && count != 6) {
        file.AddWrongValue(lineNumber, Check::tr("three numbers of a point, or six with its normal"), line);
        return false;
    }
    const auto position = ReadTriple(std::span(fields).first(3), lineNumber, file);
    if (!position)
        return false;
    std::optional<std::array<double, 3>> normal;
    if (count == 6) {
        normal = ReadTriple(std::span(fields).last(3), lineNumber, file);
        if (!normal)
            return false;
    }
    CheckPoint& point = file.AddPoint(*position, lineNumber);
    if (normal) {
        point.normal = *normal;
        point.hasNormal = true;
    }
    return true;
}
