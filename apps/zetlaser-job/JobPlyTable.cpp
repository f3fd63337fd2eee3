#include "JobPlyTable.h"

#include "JobConsole.h"
#include "JobCsv.h"
#include "JobFaults.h"

#include "openhost/layup/ZETOpenJson.h"

#include <QCoreApplication>
#include <QHash>
#include <QStringList>

#include <algorithm>
#include <array>
#include <cmath>

using namespace Qt::Literals::StringLiterals;

namespace
{
enum Column { Layup, Sequence, Ply, Material, Direction, Boundary, ColumnCount };

const QStringList& GetColumns()
{
    static const QStringList names{u"layup"_s, u"sequence"_s, u"ply"_s, u"material"_s, u"direction"_s, u"boundary"_s};
    return names;
}

QString Translate(const char* text)
{
    return QCoreApplication::translate("zetlaser-job", text);
}

/*! Reads one list. */
class Reader
{
public:
    Reader(const QString& fileOfList, JobFaults& foundFaults)
        : file(fileOfList)
        , csv(JobCsvFile::Read(file))
        , faults(foundFaults)
    {
    }

    QList<JobPlyRow> Read()
    {
        ReadHeader();
        faults.Throw(); // without the columns the rows say nothing
        for (const JobCsvRecord& record : csv.records.mid(1))
            ReadRow(record);
        if (!hasRows)
            faults.Add(Translate("%1: expected a row for each ply behind the header, found none").arg(file));
        CheckOrder();
        return rows;
    }

private:
    void ReadHeader()
    {
        const JobCsvRecord header = csv.records.value(0, {1, {}});
        if (IsBlank(header)) {
            faults.Add(
                header.line, QString(),
                Translate("expected a header row with %1, found none").arg(GetColumns().join(QChar(csv.separator))));
            return;
        }
        QStringList unknown;
        for (qsizetype at = 0; at < header.values.size(); ++at) {
            const QString name = header.values[at].toLower();
            const auto column = GetColumns().indexOf(name);
            if (column < 0)
                unknown.append(header.values[at]);
            else if (places[column] >= 0)
                faults.Add(header.line, name, Translate("expected this column once, found it twice"));
            else
                places[column] = at;
        }
        for (int column = 0; column < ColumnCount; ++column) {
            const QString name = GetColumns()[column];
            if (places[column] < 0)
                faults.Add(header.line, name,
                           Translate("expected a column of this name, found %1").arg(DescribeNearest(name, unknown)));
        }
        for (const QString& name : std::as_const(unknown))
            JobConsole::WriteMessage(Translate("warning"),
                                     faults.Format(header.line, name, Translate("the column is unknown and left out")));
        width = header.values.size();
    }

    static bool IsBlank(const JobCsvRecord& record)
    {
        return std::all_of(record.values.begin(), record.values.end(),
                           [](const QString& value) { return value.isEmpty(); });
    }

    static QString DescribeNearest(const QString& name, const QStringList& unknown)
    {
        const QString nearest = ZETOpenJsonDocument::GetNearest(name, unknown);
        return nearest.isEmpty() ? Translate("none") : u'"' + nearest + u'"';
    }

    void ReadRow(JobCsvRecord record)
    {
        QStringList& values = record.values;
        while (values.size() > width && values.last().isEmpty()) // some programs fill up what has no columns
            values.removeLast();
        if (IsBlank(record))
            return;
        hasRows = true;
        if (values.size() != width) {
            faults.Add(record.line, QString(),
                       Translate("expected %1 values as in the header, found %2").arg(width).arg(values.size()));
            return;
        }
        const auto get = [&](Column column) { return GetName(record, column); };
        rows.append(
            {record.line, get(Layup), get(Sequence), get(Ply), get(Material), GetDirection(record), get(Boundary)});
    }

    QString GetName(const JobCsvRecord& record, Column column)
    {
        const QString value = record.values[places[column]];
        const bool isPlain = std::none_of(value.begin(), value.end(),
                                          [](QChar letter) { return letter.category() == QChar::Other_Control; });
        if (value.isEmpty())
            faults.Add(record.line, GetColumns()[column], Translate("expected a name, found nothing"));
        else if (!isPlain)
            faults.Add(record.line, GetColumns()[column],
                       Translate("expected a name on one line, found a line end, a tab or the like"));
        return value;
    }

    /*! Not a number if it is none. */
    double GetDirection(const JobCsvRecord& record)
    {
        constexpr double most = 360.0;
        const QString value = record.values[places[Direction]];
        QString text = value;
        if (csv.separator == u';' && !text.contains(u'.')) // a comma for the decimals, as in many countries
            text.replace(u',', u'.');
        bool isNumber = false;
        const double number = text.toDouble(&isNumber);
        if (isNumber && std::abs(number) <= most)
            return number;
        faults.Add(record.line, GetColumns()[Direction],
                   Translate("expected an angle from -360 to 360 degrees, found \"%1\"").arg(value));
        return std::nan("");
    }

    /*! Plies are laid in the order of the rows, so what belongs together has to stand together. */
    void CheckOrder()
    {
        QHash<QString, int> seen; // what has begun, by its path, with its last line
        QString layup;
        QString sequence;
        for (const JobPlyRow& row : std::as_const(rows)) {
            const QString layupPath = row.layup;
            const QString sequencePath = layupPath + u'\n' + row.sequence;
            const QString plyPath = sequencePath + u'\n' + row.ply;
            CheckBlock(seen, row.line, Layup, layupPath, layup, row.layup);
            CheckBlock(seen, row.line, Sequence, sequencePath, sequence, row.sequence);
            if (seen.contains(plyPath) && !row.ply.isEmpty())
                faults.Add(row.line, GetColumns()[Ply],
                           Translate("expected a name that the sequence hasn't yet, found \"%1\" as on line %2")
                               .arg(row.ply, QString::number(seen[plyPath])));
            else
                seen.insert(plyPath, row.line);
        }
    }

    void CheckBlock(QHash<QString, int>& seen, int line, Column column, const QString& path, QString& current,
                    const QString& name)
    {
        if (path != current && seen.contains(path) && !name.isEmpty())
            faults.Add(line, GetColumns()[column],
                       Translate("expected the plies of \"%1\" in one block, found one behind another %2; the last is "
                                 "on line %3")
                           .arg(name, GetColumns()[column], QString::number(seen[path])));
        seen.insert(path, line);
        current = path;
    }

    const QString& file;
    const JobCsvFile csv;
    JobFaults& faults;
    std::array<qsizetype, ColumnCount> places{-1, -1, -1, -1, -1, -1}; //!< of the columns in a record
    qsizetype width = 0;
    bool hasRows = false; //!< also such as are wrong
    QList<JobPlyRow> rows;
};
} // namespace

QList<JobPlyRow> JobPlyTable::Read(const QString& file, JobFaults& faults)
{
    return Reader(file, faults).Read();
}
