#include "JobExpectedParts.h"

#include "JobExpectedTargets.h"
#include "JobExpectedTree.h"

#include "features/ZETLaserParameter.h"
#include "laser/ZETLaserDXFOutputSettings.h"

#include <ZETComposites/ZETCompPly.h>
#include <ZETMaterial/ZETMatMaterial.h>

#include <QCoreApplication>
#include <QFileInfo>

#include <cmath>

using namespace Qt::Literals::StringLiterals;

namespace
{
using Type = ZETLaserParameter;

/*! Virtek and SL: layers, and in them a bracket for each leaf. */
class LeafTree : public JobExpectedTree
{
protected:
    using JobExpectedTree::JobExpectedTree;

    void AddGroup(const Group& group) override
    {
        const bool isLayer = IsLayer(group);
        if (isLayer)
            BeginGroup(CheckGroup::Layer, group.name);
        if (group.groups.isEmpty())
            AddLeaf(group);
        else
            AddGroups(group.groups);
        if (isLayer)
            EndGroup();
    }

private:
    void AddLeaf(const Group& group)
    {
        BeginGroup(CheckGroup::Ply, group.name);
        AddContent(group);
        EndGroup();
    }
};

class VirtekTree final : public LeafTree
{
public:
    using LeafTree::LeafTree;

private:
    void AddOwnContent(const Group& ply) override
    {
        AddParameters(ply, {Type::Information}, CheckParameter::Information);
        for (const Parameter& parameter : ply.parameters) {
            constexpr std::array kinds{CheckParameter::Message, CheckParameter::Graphic, CheckParameter::Query,
                                       CheckParameter::Literal};
            if (parameter.type >= Type::Message && parameter.type <= Type::Literal)
                AddParameter(kinds[static_cast<size_t>(parameter.type - Type::Message)], parameter.text);
        }
        for (const Text& text : ply.texts) {
            CheckText& added = AddText(text.text);
            Append(added.numbers, ToFile(text.basePoint));
            Append(added.numbers, ToFile(text.basePoint + text.baseDirection * text.size));
            Append(added.numbers, ToFile(text.basePoint + text.upDirection)); // not of the text's size
        }
    }
};

class SlTree final : public LeafTree
{
public:
    using LeafTree::LeafTree;

private:
    void AddCurve(const Curve& curve) override
    {
        BeginCurve(curve.name);
        AddPoints(curve, RepeatedPoint, WhereKnown);
    }

    void AddOwnContent(const Group& ply) override
    {
        AddParameters(ply, {Type::Information, Type::Note}, CheckParameter::Note);
        for (const Parameter& parameter : ply.parameters) {
            if (parameter.type == Type::Graphic || parameter.type == Type::Literal)
                AddParameter(parameter.type == Type::Graphic ? CheckParameter::Graphic : CheckParameter::Literal,
                             parameter.text);
        }
        for (const Text& text : ply.texts)
            AddSlText(text);
    }

    static ZETMathVector Divide(const ZETMathVector& vector)
    {
        const double length = std::sqrt(vector * vector);
        return {vector.GetX() / length, vector.GetY() / length, vector.GetZ() / length};
    }

    static ZETMathVector Cross(const ZETMathVector& a, const ZETMathVector& b)
    {
        return {a.GetY() * b.GetZ() - a.GetZ() * b.GetY(), a.GetZ() * b.GetX() - a.GetX() * b.GetZ(),
                a.GetX() * b.GetY() - a.GetY() * b.GetX()};
    }

    void AddSlText(const Text& text)
    {
        const ZETMathPoint origin = axis * text.basePoint;
        const ZETMathVector along = Divide(axis * (text.basePoint + text.baseDirection) - origin);
        // Meant in this format: the up point stays in the model's coordinates.
        const ZETMathVector up = Divide(text.basePoint + text.upDirection - origin);
        const ZETMathVector normal = Cross(along, up);
        CheckText& added = AddText(text.text);
        added.numbers = {origin.GetX() * scale, origin.GetY() * scale, origin.GetZ() * scale,
                         text.size * scale,     along.GetX(),          up.GetX(),
                         normal.GetX(),         along.GetY(),          up.GetY(),
                         normal.GetY(),         along.GetZ(),          up.GetZ(),
                         normal.GetZ()};
    }
};

class LptTree final : public LeafTree
{
public:
    using LeafTree::LeafTree;

private:
    void AddHead() override
    {
        file.partName = options.GetPartName();
        file.values.emplace_back(u"TOPLAYERS"_s, QString::number(root.groups.size()));
    }

    void AddCurve(const Curve& curve) override
    {
        BeginCurve(curve.name);
        AddPoints(curve, RepeatedPoint, WhereKnown);
    }

    void AddOwnContent(const Group& ply) override
    {
        AddParameters(ply, {Type::Information}, CheckParameter::Information);
        AddParameters(ply, {Type::Note}, CheckParameter::Note);
        AddParameters(ply, {Type::Literal}, CheckParameter::Literal);
        for (const Text& text : ply.texts) {
            CheckText& added = AddText(text.text);
            Append(added.numbers, ToFile(text.basePoint));
            Append(added.numbers, ToFile(text.basePoint + text.baseDirection * text.size));
            // Meant in this format: neither axis system nor unit reach the third point.
            Append(added.numbers, ToNumbers(text.basePoint + text.upDirection, 1.0));
        }
    }
};

/*! Layers, and in them a group for each contour; plies leave no mark. */
class LapTree final : public JobExpectedTree
{
public:
    using JobExpectedTree::JobExpectedTree;

private:
    void AddHead() override
    {
        file.unit = options.GetUnits() == ZETLaserOptions::UnitsInches ? CheckFile::Inches : CheckFile::Millimetres;
        file.partName = options.GetPartName();
    }

    void AddGroup(const Group& group) override
    {
        const bool isLayer = IsLayer(group);
        if (isLayer)
            BeginGroup(CheckGroup::Layer, group.name);
        AddGroups(group.groups);
        AddContent(group);
        if (isLayer)
            EndGroup();
    }

    void AddContours(const Group& group) override { AddBrackets(group, CheckGroup::Ply); }

    void AddOwnContent(const Group& ply) override { AddParameters(ply, {Type::Literal}, CheckParameter::Literal); }

    void AddCurve(const Curve& curve) override
    {
        BeginCurve(curve.name);
        AddPoints(curve, RepeatedPoint, WhereKnown);
    }
};

/*! Lines for layups, sequences, plies and sub-plies, each of which ends what stands on its level or below. */
class AssemblyGuidanceTree final : public JobExpectedTree
{
public:
    using JobExpectedTree::JobExpectedTree;

private:
    void AddHead() override
    {
        file.unit = options.GetUnits() == ZETLaserOptions::UnitsInches ? CheckFile::Inches : CheckFile::Millimetres;
        file.partName = WithoutBlanks(root.name);
        file.values.emplace_back(u"file"_s, WithoutBlanks(QFileInfo(options.GetFileName()).fileName()));
        JobExpectedTargets(options).AddAssemblyGuidance(file);
    }

    void AddGroup(const Group& group) override
    {
        if (group.kind != Kind::Other)
            BeginLevel(IsPly(group) ? 2 : group.kind == Kind::Sequence ? 1 : 0, WithoutBlanks(group.name));
        AddGroups(group.groups);
        AddContent(group);
    }

    void BeginLevel(int level, const QString& name)
    {
        while (!levels.isEmpty() && levels.last() >= level) {
            EndGroup();
            levels.removeLast();
        }
        BeginGroup(level == 2 ? CheckGroup::Ply : CheckGroup::Layer, name);
        levels.append(level);
    }

    void AddOwnContent(const Group& ply) override
    {
        for (const Parameter& parameter : ply.parameters) {
            const QString text = WithoutBlanks(parameter.text);
            if (parameter.type == Type::Information || parameter.type == Type::Message)
                AddParameter(CheckParameter::Message, text);
            else if (parameter.type == Type::Graphic)
                AddParameter(CheckParameter::Graphic, text);
            else if (parameter.type == Type::Literal)
                AddParameter(CheckParameter::Literal, text);
        }
        for (const Text& text : ply.texts) {
            CheckText& added = AddText(WithoutBlanks(text.text));
            Append(added.numbers, ToFile(text.basePoint));
            added.numbers.push_back(text.size * scale);
        }
    }

    QList<int> levels; //!< of the open groups
};

/*! What General Scanning and Quilmon have in common: curves are labelled with the names that were passed last. */
class NLineTree : public JobExpectedTree
{
protected:
    using JobExpectedTree::JobExpectedTree;

    void AddHead() override
    {
        file.partName = options.GetPartName();
        if (options.GetFileType() == ZETLaserOptions::FileGeneralScanning)
            JobExpectedTargets(options).AddGeneralScanning(file);
    }

    /*! The ply of a group; null if nobody knows it. */
    static const ZETCompPly* FindPly(const Group& group)
    {
        for (const ZETFeatObject* at = IsPly(group) ? group.feature : nullptr; at; at = at->GetParent()) {
            if (const auto* const ply = qobject_cast<const ZETCompPly*>(at))
                return ply;
        }
        return nullptr;
    }

    void NoteNames(const Group& group)
    {
        const ZETCompPly* const ply = FindPly(group);
        const QString label = group.feature ? group.feature->GetLabel() : group.name;
        if (group.kind == Kind::Sequence)
            sequenceName = group.name;
        else if (group.kind == Kind::Layup)
            layupName = group.name;
        else if (group.kind == Kind::Ply)
            plyName = label;
        else if (group.kind == Kind::SubPly && ply)
            plyName = ply->GetLabel() + u';' + label;
        else if (group.kind == Kind::SubPly && !group.feature)
            plyName += u';' + label;
    }

    /*! Always ahead of the curves, whatever the job asks for. */
    void AddOwnContent(const Group& ply) override
    {
        if (!HasModelObject(ply))
            return;
        AddParameters(ply, {Type::Information}, CheckParameter::Information);
        AddParameters(ply, {Type::Literal}, CheckParameter::Literal);
    }

    /*! Curves are numbered within their contour. */
    void AddCurves(const Contour& contour) override
    {
        curveNumber = 0;
        JobExpectedTree::AddCurves(contour);
    }

    /*! A rosette, which its name tells, has no number. */
    void AddCurve(const Curve& curve) override
    {
        const bool isRosette = curve.name.endsWith(QCoreApplication::translate("ZETLaserWriterGS", "Rosette"));
        BeginCurve(IsNesting(options) ? QString() : curve.name).attributes = {isRosette ? 0 : ++curveNumber};
        AddPoints(curve, AlwaysRepeated, Always);
    }

    /*! The curves of \a group are written while it is the last that was begun of its kind. */
    void AddLabel(const Group& group, int index)
    {
        if (std::any_of(group.contours.begin(), group.contours.end(), HasPoints))
            file.groups[static_cast<size_t>(index)].values.emplace_back(u"LABEL"_s, sequenceName + u';' + plyName);
    }

    int plyNumber = 0;
    int curveNumber = 0;
    QString sequenceName;
    QString layupName;
    QString plyName;
};

/*! Brackets for groups, contours and curves. */
class PlainNLineTree final : public NLineTree
{
public:
    using NLineTree::NLineTree;

private:
    void AddGroup(const Group& group) override
    {
        BeginGroup(group.groups.isEmpty() ? CheckGroup::Ply : CheckGroup::Layer, group.name);
        const int index = file.GetOpenGroup();
        NoteNames(group);
        if (IsPly(group))
            file.groups[static_cast<size_t>(index)].number = ++plyNumber;
        AddOwnContent(group);
        AddLabel(group, index);
        AddGroups(group.groups);
        AddBrackets(group, CheckGroup::Part);
        EndGroup();
    }
};

/*! A head for each ply and sub-ply; other groups leave no mark. */
class NestingNLineTree final : public NLineTree
{
public:
    using NLineTree::NLineTree;

private:
    void AddHead() override
    {
        NLineTree::AddHead();
        file.unit = options.GetUnits() == ZETLaserOptions::UnitsInches ? CheckFile::Inches : CheckFile::Millimetres;
    }

    void AddGroup(const Group& group) override
    {
        NoteNames(group);
        if (IsPly(group)) {
            BeginGroup(group.groups.isEmpty() ? CheckGroup::Ply : CheckGroup::Layer, group.name);
            DescribePly(group, file.groups.back());
            AddLabel(group, file.GetOpenGroup());
        }
        AddOwnContent(group);
        AddGroups(group.groups);
        AddContours(group);
        if (IsPly(group))
            EndGroup();
    }

    void DescribePly(const Group& group, CheckGroup& added)
    {
        added.number = ++plyNumber;
        added.values = {{u"NESTSUBA"_s, sequenceName},
                        {u"NESTPART"_s, group.name},
                        {u"LAYUP"_s, layupName},
                        {u"MATERIAL"_s, GetMaterial(group)}};
        constexpr double degrees = 57.29577951308232;
        if (const ZETCompPly* const ply = FindPly(group))
            added.values.emplace_back(u"DIRECTION"_s, QString::number(ply->GetDirection() * degrees, 'g', 6));
    }

    QString GetMaterial(const Group& group) const
    {
        if (!group.material)
            return {};
        return options.GetUseMaterialID() ? group.material->GetMaterialId() : group.material->GetMaterialType();
    }
};

/*! Curves and texts without any groups. */
class DxfTree final : public JobExpectedTree
{
public:
    DxfTree(const ZETLaserOptions& jobOptions, const ZETLaserOutline::Group& treeRoot,
            const JobExpectedParts::DxfContent& dxfContent)
        : JobExpectedTree(jobOptions, treeRoot)
        , content(dxfContent)
        , settings(jobOptions.GetDXFOutputSettings())
    {
    }

private:
    void AddHead() override
    {
        file.unit = options.GetUnits() == ZETLaserOptions::UnitsInches ? CheckFile::Inches : CheckFile::Millimetres;
        for (const QString& label : content.labels)
            AddTextOnLayer(label);
    }

    void AddGroup(const Group& group) override
    {
        const bool isOther =
            (content.material && content.material != group.material) || (content.ply && content.ply != group.feature);
        if (IsPly(group) && isOther)
            return;
        AddGroups(group.groups);
        AddContent(group);
    }

    void AddOwnContent(const Group& ply) override
    {
        for (const Text& text : ply.texts) {
            // Meant in this format: a 3D text keeps its millimetres.
            const std::array<double, 3> place = ToNumbers(axis * text.basePoint, 1.0);
            AddTextOnLayer(text.text).numbers = {place[0], place[1], place[2], text.size};
        }
    }

    CheckText& AddTextOnLayer(const QString& text)
    {
        CheckText& added = AddText(text);
        added.attributes = {settings.GetTextLayer(), settings.GetTextColor()};
        return added;
    }

    void AddCurve(const Curve& curve) override
    {
        constexpr int rosetteLayer = 4; // whatever the settings say
        const bool isRosette = curve.source == ZETLaserOptions::SourceRosette;
        const int flags = (IsNesting(options) ? 0 : 8) + (curve.closed ? 1 : 0);
        BeginCurve({}).attributes = {isRosette ? rosetteLayer : settings.GetGeometryLayer(),
                                     settings.GetGeometryLineStyle(), settings.GetGeometryColor(), flags};
        AddPoints(curve, Flag, Never);
    }

    const JobExpectedParts::DxfContent& content;
    const ZETLaserDXFOutputSettings settings;
};
} // namespace

CheckFile JobExpectedParts::MakeVirtek(const ZETLaserOptions& options, const ZETLaserOutline::Group& root)
{
    return VirtekTree(options, root).Make();
}

CheckFile JobExpectedParts::MakeLap(const ZETLaserOptions& options, const ZETLaserOutline::Group& root)
{
    return LapTree(options, root).Make();
}

CheckFile JobExpectedParts::MakeSl(const ZETLaserOptions& options, const ZETLaserOutline::Group& root)
{
    return SlTree(options, root).Make();
}

CheckFile JobExpectedParts::MakeLpt(const ZETLaserOptions& options, const ZETLaserOutline::Group& root)
{
    return LptTree(options, root).Make();
}

CheckFile JobExpectedParts::MakeAssemblyGuidance(const ZETLaserOptions& options, const ZETLaserOutline::Group& root)
{
    return AssemblyGuidanceTree(options, root).Make();
}

CheckFile JobExpectedParts::MakeNLines(const ZETLaserOptions& options, const ZETLaserOutline::Group& root)
{
    return IsNesting(options) ? NestingNLineTree(options, root).Make() : PlainNLineTree(options, root).Make();
}

CheckFile JobExpectedParts::MakeApt(const ZETLaserOptions&, const ZETLaserOutline::Group& root)
{
    CheckFile file;
    file.partName = root.name;
    file.BeginGroup(CheckGroup::Layer, u"myData"_s, 0);
    file.EndGroup(0);
    return file;
}

CheckFile JobExpectedParts::MakeDxf(const ZETLaserOptions& options, const ZETLaserOutline::Group& root,
                                    const DxfContent& content)
{
    return DxfTree(options, root, content).Make();
}
