#pragma once

#include "check/CheckFile.h"
#include "laser/ZETLaserOptions.h"
#include "laser/ZETLaserOutline.h"

#include <ZETMathematics/ZETMathAxis.h>

/*! Fills a file with what the tree gives it: the base of a class for each format, which says what becomes of a group.
 */
class JobExpectedTree
{
public:
    JobExpectedTree(const ZETLaserOptions& jobOptions, const ZETLaserOutline::Group& treeRoot);
    virtual ~JobExpectedTree() = default;
    Q_DISABLE_COPY_MOVE(JobExpectedTree)

    /*! Walks the tree; to be called once. */
    CheckFile Make();

protected:
    using Group = ZETLaserOutline::Group;
    using Contour = ZETLaserOutline::Contour;
    using Curve = ZETLaserOutline::Curve;
    using Parameter = ZETLaserOutline::Parameter;
    using Text = ZETLaserOutline::Text;
    using Kind = ZETLaserOutline::Kind;

    enum Closing {
        RepeatedPoint, //!< from two points on, the first one stands once more behind the last
        AlwaysRepeated,
        Flag
    };
    enum Normals { WhereKnown, Always, Never };

    virtual void AddHead() {}
    /*! A group that has something to write. */
    virtual void AddGroup(const Group& group) = 0;
    virtual void AddTail() {}

    void AddGroups(const QList<Group>& groups);
    /*! Of a layup if layups are nested, of a sequence, and of a group that stands for nothing. */
    bool IsLayer(const Group& group) const;
    /*! Texts and parameters of other groups aren't written. */
    static bool HasModelObject(const Group& group);
    static bool IsPly(const Group& group) { return group.kind == Kind::Ply || group.kind == Kind::SubPly; }
    static bool HasPoints(const Contour& contour);

    void BeginGroup(CheckGroup::Kind kind, const QString& name) { file.BeginGroup(kind, name, ++line); }
    void EndGroup() { file.EndGroup(line); }
    /*! The contours and the own content of a leaf, in the order that the job asks for. */
    void AddContent(const Group& group);
    virtual void AddContours(const Group& group);
    /*! The contours that have points, each with a group of its own. */
    void AddBrackets(const Group& group, CheckGroup::Kind kind);
    /*! Texts and parameters of a ply or sub-ply. */
    virtual void AddOwnContent(const Group& ply) = 0;
    /*! The curves of a contour that have points. */
    virtual void AddCurves(const Contour& contour);
    virtual void AddCurve(const Curve& curve);
    CheckCurve& BeginCurve(const QString& name) { return file.BeginCurve(CheckCurveKind::Unknown, name, ++line); }
    void AddPoints(const Curve& curve, Closing closing, Normals normals);
    /*! All parameters of one type as parameters of \a kind, in their order. */
    void AddParameters(const Group& group, std::initializer_list<int> types, CheckParameter::Kind kind);
    void AddParameter(CheckParameter::Kind kind, const QString& text) { file.AddParameter(kind, text, ++line); }
    CheckText& AddText(const QString& text) { return file.AddText(text, ++line); }

    /*! A place of the model as numbers of the file. */
    std::array<double, 3> ToFile(const ZETMathPoint& point) const;
    static void Append(std::vector<double>& numbers, const std::array<double, 3>& more);

    const ZETLaserOptions& options;
    const ZETLaserOutline::Group& root;
    ZETMathAxis axis;
    double scale = 1.0;
    CheckFile file;

private:
    int line = 0;  //!< runs on, so that what is added later comes later in the file
    QString owner; //!< name of the group that was begun last: a leaf is the owner of its curves
};

/*! The axis system of the written coordinates. */
ZETMathAxis GetOutputAxis(const ZETLaserOptions& options);
/*! Flat output for nesting, which some formats tell from flat output for lasers. */
bool IsNesting(const ZETLaserOptions& options);
/*! Units of the file in a millimetre. */
double GetUnitScale(const ZETLaserOptions& options);
std::array<double, 3> ToNumbers(const ZETMathPoint& point, double scale);
std::array<double, 3> ToNumbers(const ZETMathVector& vector);
/*! Blanks as underscores, as in names that stand between other words. */
QString WithoutBlanks(const QString& name);
