#pragma once

#include "CheckFile.h"

#include <QByteArray>
#include <QStringList>

/*! Reads \a bytes as a file of \a type. Ends the test program if there is no such type. */
CheckFile ReadChecked(const QString& type, const QByteArray& bytes);

/*! What a file holds, as lines in the order of the file, each with the number of its line:
 *      2 layer S1                     3 ply P1                      40 end S1
 *      4 curve boundary P1 boundary 1: 3 points, closed
 *      5 point 0 0 0 / 0 0 1          the normal behind the slash
 *      9 text Hello 10 20 0           with all of its numbers, and "#3" for each attribute, as behind a curve
 *      12 literal # raw               and the other kinds of parameters
 *      2 target TE1 drift projector 0 number 3 at 1 2 3
 *  and without a number the unit, the name of the part and further values. Findings are not in it. */
QStringList Dump(const CheckFile& file);

/*! "4: error: P1: announces ...", the ply where there is one. */
QStringList DumpFindings(const CheckFile& file);

/*! Cuts \a bytes behind each line, leaves each line out and puts a "%" ahead of each line, one at a time, and tells
 *  what has no finding: "cut behind 3", "without 5: note", "wrong 5: note". Only texts that may be anything should be
 *  told. */
QStringList FindSilentDamage(const QString& type, const QByteArray& bytes);

/*! \a bytes with the first \a before replaced. Ends the test program if there is none. */
QByteArray Replaced(QByteArray bytes, const QByteArray& before, const QByteArray& after);
