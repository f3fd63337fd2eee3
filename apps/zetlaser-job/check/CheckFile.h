#pragma once

#include <QCoreApplication>
#include <QString>

#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <vector>

class CheckLines;

/*! Translations of everything in this folder, under one context. */
struct Check {
    Q_DECLARE_TR_FUNCTIONS(Check)
};

enum class CheckSeverity {
    Warning, //!< the file is whole, but something in it is doubtful on the floor
    Error    //!< the file isn't what its format demands, or it can't be drawn
};

/*! One line for the user. What is merely worth knowing, such as sizes and counts, is no finding. */
struct CheckFinding {
    CheckSeverity severity = CheckSeverity::Error;
    int line = 0; //!< from 1; 0 for the file as a whole
    QString ply;  //!< empty where no ply is meant
    QString text;
    bool mayFollow = false; //!< may come from the error in CheckFile::lostLine
    bool isGuess = false;   //!< by what other plies of the file have; the model may say otherwise
};

/*! A point as the file has it: in the file's unit and axis system, normals unscaled. */
struct CheckPoint {
    std::array<double, 3> position{};
    std::array<double, 3> normal{}; //!< with hasNormal only
    bool hasNormal = false;         //!< the file has numbers for it, which may be zero
    int line = 0;                   //!< where the point begins
};

enum class CheckCurveKind {
    Unknown,  //!< the file doesn't tell
    Boundary, //!< of a ply, on the tool or flat
    Rosette,
    SeedCurve,
    Other //!< the file tells that it is none of these: extra geometry
};

/*! For formats that name curves: what the reader of the model calls them by. */
CheckCurveKind GetCurveKindByName(const QString& name);

struct CheckCurve {
    CheckCurveKind kind = CheckCurveKind::Unknown;
    QString name; //!< empty where the format has none
    int group = -1;
    /*! The ply that it is of, where somebody knows it who isn't the file: not all formats tell plies apart. */
    QString owner;
    int line = 0;
    /*! For formats that close a curve by a flag. Without a value a curve is closed by its last point being its first.
     */
    std::optional<bool> closedByFlag;
    /*! Whole numbers that the format has for it beside its points, such as layer and colour, in the order of the file.
     */
    std::vector<int> attributes;
    size_t firstPoint = 0; //!< use CheckFile::GetPoints
    size_t pointCount = 0;
};

struct CheckText {
    QString text;
    int group = -1;
    int line = 0;
    /*! All real numbers that the format has for it, in the order of the file; the first three are its place. */
    std::vector<double> numbers;
    std::vector<int> attributes; //!< as those of a curve
};

struct CheckParameter {
    enum Kind { Information, Message, Graphic, Query, Literal, Note };

    Kind kind = Literal;
    QString text; //!< without the line end behind it
    int group = -1;
    int line = 0;
};

struct CheckTarget {
    QString name;
    bool isDrift = false;
    int projector = 0; //!< from 0, in the order of the file
    int number = -1;   //!< where the format numbers them
    std::array<double, 3> position{};
    int line = 0;
};

/*! A bracket of the file: what stands between its begin and its end. A group without a parent stands at the top. */
struct CheckGroup {
    enum Kind {
        Layer, //!< layup, sequence or another node above plies
        Ply,   //!< what the operator sees as one step: a ply or a sub-ply; formats without them have their smallest
               //!< bracket
        Part   //!< a bracket within a ply, such as a contour
    };

    Kind kind = Ply;
    QString name;
    int number = -1; //!< where the format numbers plies
    int parent = -1; //!< index in CheckFile::groups
    int depth = 0;   //!< 0 at the top
    int line = 0;
    int endLine = 0; //!< 0 if the file doesn't end it
    /*! Further values that the format has for a ply, in the order of the file. */
    std::vector<std::pair<QString, QString>> values;
};

/*! What one file holds, as a reader of its format found it, and what was found wrong with it on the way.
 *
 *  Everything lies in flat lists in the order of the file and refers to its group by index, so that neither a deep nor
 *  a wide file costs more than a small multiple of its bytes. Lengths are in the file's unit.
 *
 *  Readers fill it with the functions below; a reader that meets a wrong line adds a finding and goes on where it can.
 */
class CheckFile
{
public:
    enum Unit { UnknownUnit, Millimetres, Inches };

    Unit unit = UnknownUnit; //!< unknown where the format doesn't tell
    QString partName;
    std::vector<CheckGroup> groups;
    std::vector<CheckCurve> curves;
    std::vector<CheckPoint> points;
    std::vector<CheckText> texts;
    std::vector<CheckParameter> parameters;
    std::vector<CheckTarget> targets;
    int projectorCount = 0; //!< those that the file has a place for, also without targets
    /*! Values of the file as a whole, in its order: what its head says. */
    std::vector<std::pair<QString, QString>> values;
    /*! Wrong syntax and broken announcements; at most maxFindings, the rest is counted. */
    std::vector<CheckFinding> findings;
    size_t suppressedFindings = 0;
    /*! The first line that can't stand where it stands; 0 if there is none. What the reader takes the lines behind it
     *  for, and finds wrong with them, may come from that. */
    int lostLine = 0;

    static constexpr size_t maxFindings = 1000;
    static constexpr int maxDepth = 64; //!< deeper groups are a finding, and are laid into the last one

    std::span<const CheckPoint> GetPoints(const CheckCurve& curve) const
    {
        return std::span(points).subspan(curve.firstPoint, curve.pointCount);
    }
    /*! The ply that \a group is or lies in; -1 if there is none. */
    int GetPly(int group) const;
    /*! Its name; empty if there is none. */
    QString GetPlyName(int group) const;

    // For readers, at their place in the file.

    /*! The innermost group that is open; -1 at the top. */
    int GetOpenGroup() const { return openGroup; }
    void BeginGroup(CheckGroup::Kind kind, const QString& name, int line);
    /*! Ends the innermost group; false if none is open. */
    bool EndGroup(int line);
    /*! Ends the innermost group of \a kind, which must be called \a name if the format names it at its end. Groups
     *  within it that are open still, and an end without a begin, are errors; \a found is the line for the message. */
    void EndGroup(int line, CheckGroup::Kind kind, const std::optional<QString>& name, QByteArrayView found);
    /*! Ends, each with an error, the groups that are open within \a last: at the end of the data, or where something
     *  begins that can't stand within them. */
    void EndUnended(int line, int last, QByteArrayView found);
    /*! Begins a curve of the open group; AddPoint adds to the last one that was begun. */
    CheckCurve& BeginCurve(CheckCurveKind kind, const QString& name, int line);
    CheckPoint& AddPoint(const std::array<double, 3>& position, int line);
    CheckText& AddText(const QString& text, int line);
    void AddParameter(CheckParameter::Kind kind, const QString& text, int line);

    /*! An error at \a line, of the ply that is open. */
    void AddError(int line, const QString& text) { AddFinding(CheckSeverity::Error, line, text, lostLine > 0); }
    void AddWarning(int line, const QString& text) { AddFinding(CheckSeverity::Warning, line, text, false); }
    /*! "expected ..., found ...", of a line that can't stand where it stands: long findings are cut, and bytes that
     *  can't be shown are escaped. */
    void AddExpected(int line, const QString& expected, QByteArrayView found);
    /*! The same of a value in a line that may well stand there. */
    void AddWrongValue(int line, const QString& expected, QByteArrayView found);
    /*! The file ends before its last record: \a expected. That is so wherever a reader has lost its way. */
    void AddEndsTooEarly(int line, const QString& expected);
    /*! Behind the file's last record, \a end: nothing may stand there, and its line must have a line end. */
    void CheckEnd(const CheckLines& lines, const QString& end);
    /*! An error if \a announced, which \a line says, isn't \a held. \a what: "points". */
    void CheckCount(int line, const QString& what, int announced, int held);

private:
    void AddFinding(CheckSeverity severity, int line, const QString& text, bool mayFollow);
    QString GetExpectedEnd() const;

    int openGroup = -1;
    int ignoredDepth = 0; //!< groups beyond maxDepth that are open
};
