#include "CheckCalibration.h"
#include "CheckPointLine.h"
#include "CheckReaders.h"

using namespace Qt::Literals::StringLiterals;

namespace
{
/*! A count for each projector, and a line for each target. */
class CalibrationReader
{
public:
    CalibrationReader(QByteArrayView bytes, const CheckKnownTexts& known, CheckFile& checkFile)
        : lines(bytes, known)
        , file(checkFile)
    {
    }

    void Read()
    {
        while (!lines.AtEnd())
            ReadLine();
        EndProjector();
        if (file.projectorCount == 0)
            file.AddEndsTooEarly(lines.GetLastLineNumber(), Check::tr("the count of a projector's targets"));
        else if (lines.IsCut()) // nothing else tells a cut number from a whole one
            file.AddEndsTooEarly(lines.GetLastLineNumber(), Check::tr("the end of the line"));
    }

private:
    void ReadLine()
    {
        const int line = lines.GetLineNumber();
        const auto isTarget = lines.Peek().startsWith("T ");
        if (isTarget) {
            ReadTarget(line);
            return;
        }
        const QByteArrayView found = lines.Take();
        const auto count = CheckNumbers::ParseInteger(found);
        if (!count) {
            file.AddExpected(line, Check::tr("a count of targets, or a target"), found);
            return;
        }
        EndProjector();
        ++file.projectorCount;
        announced = *count;
        held = 0;
        countLine = line;
    }

    void EndProjector()
    {
        if (file.projectorCount > 0)
            file.CheckCount(countLine, Check::tr("targets"), announced, held);
    }

    void ReadTarget(int line)
    {
        if (file.projectorCount == 0 && held == 0)
            file.AddExpected(line, Check::tr("the count of a projector's targets"), lines.Peek());
        ++held;
        const QByteArrayView found = lines.Take();
        std::array<QByteArrayView, 6> fields;
        const int count = CheckNumbers::Split(found, fields);
        const bool isDrift = count == 6 && fields[2] == "D";
        if (count != 5 && !isDrift) {
            file.AddExpected(line, Check::tr("\"T\", a name and three numbers"), found);
            return;
        }
        const auto position = CheckPointLine::ReadTriple(std::span(fields).subspan(isDrift ? 3 : 2, 3), line, file);
        if (!position)
            return;
        CheckTarget& target = file.targets.emplace_back();
        target.name = QString::fromUtf8(fields[1]);
        target.isDrift = isDrift;
        target.projector = std::max(file.projectorCount - 1, 0);
        target.position = *position;
        target.line = line;
    }

    CheckLines lines;
    CheckFile& file;
    int announced = 0;
    int held = 0;
    int countLine = 0;
};

void ReadCalibration(QByteArrayView bytes, const CheckKnownTexts& known, CheckFile& file)
{
    CalibrationReader(bytes, known, file).Read();
}
} // namespace

QString GetCalibrationPath(const QString& path)
{
    return path.chopped(std::min<qsizetype>(path.size(), 3)) + u"cal"_s;
}

std::vector<CheckFormat> CheckReaders::GetCalibration()
{
    return {{{calibrationType}, Check::tr("Calibration file"), {u".cal"_s}, nullptr, ReadCalibration, nullptr, {}}};
}
