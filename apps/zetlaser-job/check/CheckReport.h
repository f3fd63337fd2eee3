#pragma once

#include "CheckFindings.h"
#include "CheckFormat.h"
#include "CheckMeasures.h"

#include <QByteArrayView>
#include <QJsonObject>
#include <QString>
#include <QStringList>

#include <array>
#include <optional>
#include <vector>

/*! A file that was read back, what it amounts to, and all that was found. */
struct CheckedFile {
    QString path; //!< as the user gave it
    const CheckFormat* format = nullptr;
    CheckFile content;
    double unitLength = 1.0; //!< in mm; 1 where nobody tells the unit
    std::vector<CheckPly> plies;
    std::vector<CheckFinding> findings; //!< of the reader and of the findings, in the order of the file
    /*! The point that lies farthest from the tool, where somebody knows the tool. */
    struct Farthest {
        double distance = 0.0; //!< in mm
        int line = 0;
        QString ply;
    };
    std::optional<Farthest> farthest;
    /*! What was compared with a model, where somebody knows one. */
    enum Compared {
        Nothing,
        Boundaries, //!< plies, their boundaries and the targets, which the options of a job don't change
        Everything  //!< and all is the same
    };
    Compared compared = Nothing;
    /*! With Boundaries: the first thing that is other than what a job with known options writes. */
    std::optional<CheckFinding> difference;

    CheckBox GetBox() const;
    /*! Puts a finding to its place in the order of the file. */
    void AddWarning(int line, const QString& ply, const QString& text);
    /*! Where nothing of it was understood, so that it is no file of its format: the first error. Otherwise null. */
    const CheckFinding* GetUnreadable() const;
};

/*! Reads \a bytes as \a format and looks for faults. \a unit counts for a file that doesn't tell its own. */
CheckedFile CheckBytes(const QString& path, const CheckFormat& format, QByteArrayView bytes,
                       CheckFile::Unit unit = CheckFile::UnknownUnit, const CheckKnownTexts& known = {});

namespace CheckReport
{
/*! "11.7 m x 5.0 m x 0.9 m": in metres from one metre on, in mm below. \a sides are in mm. */
QString DescribeSize(const std::array<double, 3>& sides);
/*! What the file holds, a line each, and a table of its plies. */
QStringList GetSummary(const CheckedFile& file);
/*! "FILE:LINE: severity: ply NAME: text", on one line. */
QString GetLine(const QString& path, const CheckFinding& finding);
/*! All of it, for scripts. */
QJsonObject GetJson(const CheckedFile& file);
} // namespace CheckReport
