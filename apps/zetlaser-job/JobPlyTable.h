#pragma once

#include <QList>
#include <QString>

class JobFaults;

/*! A ply of a ply list. */
struct JobPlyRow {
    int line; //!< of the file
    QString layup;
    QString sequence;
    QString ply;
    QString material;
    double direction; //!< in degrees
    QString boundary; //!< name of an edge or wire
};

/*! A ply list: a CSV file with a header row and a row for each ply, in the order of laying. */
namespace JobPlyTable
{
/*! Reads the list, warns of columns that it doesn't know, and adds its faults to \a faults. What stays empty or is no
 *  number in a faulty row is so in the result. Throws JobError where the rows can't be told at all. */
QList<JobPlyRow> Read(const QString& file, JobFaults& faults);
} // namespace JobPlyTable
