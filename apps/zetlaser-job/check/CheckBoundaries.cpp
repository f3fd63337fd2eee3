#include "CheckBoundaries.h"

#include "CheckPolyline.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace
{
using Curves = std::vector<size_t>; // places in CheckFile::curves

constexpr size_t none = std::numeric_limits<size_t>::max();

std::vector<CheckPolyline> GetPolylines(const CheckFile& file)
{
    std::vector<CheckPolyline> lines;
    for (const CheckCurve& curve : file.curves)
        lines.emplace_back(file, curve);
    return lines;
}

/*! The farthest that a side of one box is from the same of the other. */
double GetDifference(const CheckBox& one, const CheckBox& other)
{
    double worst = 0.0;
    for (size_t i = 0; i < one.GetLower().size(); ++i)
        worst = std::max({worst, std::abs(one.GetLower()[i] - other.GetLower()[i]),
                          std::abs(one.GetUpper()[i] - other.GetUpper()[i])});
    return worst;
}

double GetFarthest(const CheckPolyline& from, const CheckPolyline& line)
{
    double farthest = 0.0;
    for (const CheckPoint& point : from.GetPoints())
        farthest = std::max(farthest, line.GetNearest(point.position).distance);
    return farthest;
}

/*! How a curve of the file lies on one of the model. */
struct Fit {
    double off = 0.0; //!< of the point that is farthest off
    int line = 0;     //!< of that point
    size_t count = 0; //!< of the points that are farther off than they may be
    int same = 0;     //!< normals to the side that the model's go to
    int opposite = 0; //!< to the other one
};

class Comparison
{
public:
    Comparison(CheckedFile& checkedFile, const CheckedModel& checkedModel, const CheckBoundaryLimits& limits,
               const std::function<const CheckFile&()>& getDenseModel)
        : file(checkedFile)
        , model(checkedModel)
        , getDense(getDenseModel)
        , mostOff(limits.off / file.unitLength)
        , mostPassing(std::max(limits.off, limits.passing) / file.unitLength)
        , ofModel(GetPolylines(*model.file))
        , ofFile(GetPolylines(file.content))
    {
    }

    void ComparePly(const CheckPly& wantedPly, const CheckPly& heldPly)
    {
        const Curves wanted = GetCurves(*model.file, wantedPly,
                                        [](const CheckCurve& curve) { return curve.kind == CheckCurveKind::Boundary; });
        const Curves held = GetCurves(file.content, heldPly, [](const CheckCurve& curve) {
            return curve.kind == CheckCurveKind::Boundary ||
                   (curve.kind == CheckCurveKind::Unknown && curve.pointCount > 2);
        });
        heldOf.assign(wanted.size(), none);
        isHeld.assign(held.size(), false);
        for (const auto& [first, second] :
             AlignInOrder(wanted.size(), held.size(), [&](size_t i, size_t j) { return IsSame(wanted[i], held[j]); }))
            Pair(first, second);
        PairElsewhere(wanted, held);
        PairNearest(wanted, held);
        for (size_t i = 0; i < wanted.size(); ++i) {
            if (heldOf[i] == none)
                file.AddWarning(GetLine(heldPly), GetOwner(wanted[i]), Check::tr("a boundary of the ply is missing"));
            else
                CompareCurve(wanted[i], held[heldOf[i]]);
        }
        for (size_t j = 0; j < held.size(); ++j) {
            if (!isHeld[j])
                TellAdditional(wantedPly, held[j]);
        }
    }

private:
    template <typename IsMeant>
    static Curves GetCurves(const CheckFile& of, const CheckPly& ply, IsMeant isMeant)
    {
        Curves curves;
        std::copy_if(ply.curves.begin(), ply.curves.end(), std::back_inserter(curves),
                     [&](size_t curve) { return of.curves[curve].pointCount > 0 && isMeant(of.curves[curve]); });
        return curves;
    }

    CheckCurve& GetHeld(size_t held) { return file.content.curves[held]; }
    QString GetOwner(size_t wanted) const { return model.file->curves[wanted].owner; }
    int GetLine(const CheckPly& ply) const
    {
        return ply.group < 0 ? 0 : file.content.groups[static_cast<size_t>(ply.group)].line;
    }

    bool IsSame(size_t wanted, size_t held) const
    {
        return GetDifference(ofModel[wanted].GetBox(), ofFile[held].GetBox()) <= mostPassing &&
               GetFarthest(ofFile[held], ofModel[wanted]) <= mostOff &&
               GetFarthest(ofModel[wanted], ofFile[held]) <= mostPassing;
    }

    void Pair(size_t first, size_t second)
    {
        heldOf[first] = second;
        isHeld[second] = true;
    }

    void PairElsewhere(const Curves& wanted, const Curves& held)
    {
        for (size_t i = 0; i < wanted.size(); ++i) {
            for (size_t j = 0; heldOf[i] == none && j < held.size(); ++j) {
                if (isHeld[j] || !IsSame(wanted[i], held[j]))
                    continue;
                Pair(i, j);
                file.AddWarning(GetHeld(held[j]).line, GetOwner(wanted[i]),
                                Check::tr("a boundary of the ply comes at another place than in the model"));
            }
        }
    }

    /*! A curve that is open and far from the boundary is a guide. */
    bool MayBe(size_t wanted, size_t held, double difference) const
    {
        const CheckCurve& curve = file.content.curves[held];
        const std::array<double, 3> sides = ofModel[wanted].GetBox().GetSides();
        return curve.kind == CheckCurveKind::Boundary || CheckMeasures::IsClosed(file.content, curve) ||
               difference < *std::max_element(sides.begin(), sides.end()) / 10.0;
    }

    /*! What is left was moved or isn't the model's at all. */
    void PairNearest(const Curves& wanted, const Curves& held)
    {
        for (size_t i = 0; i < wanted.size(); ++i) {
            if (heldOf[i] != none)
                continue;
            double least = std::numeric_limits<double>::infinity();
            size_t nearest = none;
            for (size_t j = 0; j < held.size(); ++j) {
                const double difference = GetDifference(ofModel[wanted[i]].GetBox(), ofFile[held[j]].GetBox());
                if (isHeld[j] || difference >= least || !MayBe(wanted[i], held[j], difference))
                    continue;
                least = difference;
                nearest = j;
            }
            if (nearest != none)
                Pair(i, nearest);
        }
    }

    Fit GetFit(const CheckPolyline& wanted, const CheckPolyline& held) const
    {
        Fit fit;
        for (const CheckPoint& point : held.GetPoints()) {
            const CheckPolyline::Place place = wanted.GetNearest(point.position);
            if (fit.line == 0 || place.distance > fit.off) {
                fit.off = place.distance;
                fit.line = point.line;
            }
            fit.count += place.distance > mostOff ? 1 : 0;
            double cosine = 0.0;
            for (size_t i = 0; i < place.normal.size(); ++i)
                cosine += CheckMeasures::HasNormal(point) ? place.normal[i] * point.normal[i] : 0.0;
            fit.same += cosine > 0.0 ? 1 : 0;
            fit.opposite += cosine < 0.0 ? 1 : 0;
        }
        return fit;
    }

    void CompareCurve(size_t wanted, size_t held)
    {
        CheckCurve& curve = GetHeld(held);
        curve.kind = CheckCurveKind::Boundary;
        const QString name = GetOwner(wanted);
        Fit fit = GetFit(ofModel[wanted], ofFile[held]);
        if (fit.count > 0) {
            const CheckFile& dense = getDense();
            fit = GetFit(CheckPolyline(dense, dense.curves[wanted]), ofFile[held]);
        }
        const double passing = GetFarthest(ofModel[wanted], ofFile[held]);
        TellNormals(fit, curve.line, name);
        if (fit.count == 0 && passing <= mostPassing)
            return;
        if (const QString owner = FindOwner(held, name); !owner.isEmpty())
            file.AddWarning(curve.line, name, Check::tr("the boundary is that of the ply %1 in the model").arg(owner));
        else if (fit.count == 1)
            file.AddWarning(fit.line, name,
                            Check::tr("a point is %1 mm off the boundary in the model").arg(ToText(fit.off)));
        else if (fit.count > 1)
            file.AddWarning(fit.line, name,
                            Check::tr("%1 of %2 points are off the boundary in the model, this one by %3 mm")
                                .arg(fit.count)
                                .arg(curve.pointCount)
                                .arg(ToText(fit.off)));
        else
            file.AddWarning(
                curve.line, name,
                Check::tr("a point of the boundary in the model is left out, by %1 mm").arg(ToText(passing)));
    }

    QString ToText(double length) const { return QString::number(length * file.unitLength, 'f', 3); }

    /*! The other ply that the curve is the boundary of; empty if it is of none. */
    QString FindOwner(size_t held, const QString& name) const
    {
        for (size_t wanted = 0; wanted < ofModel.size(); ++wanted) {
            if (model.file->curves[wanted].kind == CheckCurveKind::Boundary && GetOwner(wanted) != name &&
                IsSame(wanted, held))
                return GetOwner(wanted);
        }
        return {};
    }

    void TellNormals(const Fit& fit, int line, const QString& name)
    {
        if (fit.opposite > 0 && fit.same > 0)
            file.AddWarning(line, name,
                            Check::tr("of the normals %1 go to the side that is laid on and %2 to the other")
                                .arg(fit.same)
                                .arg(fit.opposite));
        else if (fit.opposite > 0)
            file.AddWarning(line, name, Check::tr("the normals go to the side of the tool that isn't laid on"));
    }

    /*! A curve that is none of the boundaries may be a guide of the model. */
    void TellAdditional(const CheckPly& wantedPly, size_t held)
    {
        CheckCurve& curve = GetHeld(held);
        const bool isGuide = std::any_of(wantedPly.curves.begin(), wantedPly.curves.end(),
                                         [&](size_t wanted) { return IsSame(wanted, held); });
        const bool isBoundary = curve.kind == CheckCurveKind::Boundary;
        if (isBoundary)
            file.AddWarning(curve.line, file.content.GetPlyName(curve.group),
                            Check::tr("the model's ply has no such boundary"));
        else if (!isGuide && CheckMeasures::IsClosed(file.content, curve))
            file.AddWarning(curve.line, file.content.GetPlyName(curve.group),
                            Check::tr("the model's ply has no such closed curve"));
        if (!isBoundary)
            curve.kind = CheckCurveKind::Other;
    }

    CheckedFile& file;
    const CheckedModel& model;
    const std::function<const CheckFile&()>& getDense;
    const double mostOff;     //!< in the file's unit
    const double mostPassing; //!< in the file's unit
    const std::vector<CheckPolyline> ofModel;
    const std::vector<CheckPolyline> ofFile;

    // Of the ply that is being compared, by place in the lists of its boundaries.
    std::vector<size_t> heldOf;
    std::vector<bool> isHeld;
};
} // namespace

void CompareBoundaries(CheckedFile& file, const CheckedModel& model, const CheckPairs& pairs,
                       const CheckBoundaryLimits& limits, const std::function<const CheckFile&()>& getDense)
{
    Comparison comparison(file, model, limits, getDense);
    for (const auto& [wanted, held] : pairs)
        comparison.ComparePly(model.plies[wanted], file.plies[held]);
}
