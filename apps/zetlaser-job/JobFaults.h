#pragma once

#include <QMultiMap>
#include <QString>

/*! The faults of a file of lines, so that all of them can be told at once. */
class JobFaults
{
public:
    explicit JobFaults(const QString& ofFile)
        : file(ofFile)
    {
    }

    /*! What is wrong with \a column on \a line; an empty column: with the line as a whole. */
    void Add(int line, const QString& column, const QString& text);
    /*! A fault that belongs to no line, with the file that it is about. */
    void Add(const QString& text) { faults.insert(0, text); }
    /*! Tells all of them in the order of their lines, and throws JobError; does nothing if there is none. */
    void Throw() const;

    /*! "plies.csv:3: direction: text" */
    QString Format(int line, const QString& column, const QString& text) const;

private:
    QString file;
    QMultiMap<int, QString> faults; //!< by line
};
