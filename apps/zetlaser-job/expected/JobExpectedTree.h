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

    void BeginGroup(CheckGroup::Kind kind, const QString& name) { file.BeginGroup(kind, name, 0); }
    void EndGroup() { file.EndGroup(0); }
    /*! The curves of a contour that have points. */
    void AddCurves(const Contour& contour);
    virtual void AddCurve(const Curve& curve);
    void AddPoints(const Curve& curve, Closing closing, Normals normals);
    /*! All parameters of one type as parameters of \a kind, in their order. */
    void AddParameters(const Group& group, std::initializer_list<int> types, CheckParameter::Kind kind);
    void AddParameter(CheckParameter::Kind kind, const QString& text) { file.AddParameter(kind, text, 0); }
    CheckText& AddText(const QString& text) { return file.AddText(text, 0); }

    /*! A place of the model as numbers of the file. */
    std::array<double, 3> ToFile(const ZETMathPoint& point) const;
    static void Append(std::vector<double>& numbers, const std::array<double, 3>& more);

    const ZETLaserOptions& options;
    const ZETLaserOutline::Group& root;
    ZETMathAxis axis;
    double scale = 1.0;
    CheckFile file;
};

/*! The axis system of the written coordinates. */
ZETMathAxis GetOutputAxis(const ZETLaserOptions& options);
/*! Units of the file in a millimetre. */
double GetUnitScale(const ZETLaserOptions& options);
std::array<double, 3> ToNumbers(const ZETMathPoint& point, double scale);
std::array<double, 3> ToNumbers(const ZETMathVector& vector);
/*! Blanks as underscores, as in names that stand between other words. */
QString WithoutBlanks(const QString& name);
