#include "tests/reader/ReaderModel.h"

#include "features/ZETLaserParameter.h"
#include "laser/ZETLaserContour.h"
#include "laser/ZETLaserCurve.h"
#include "openhost/ZETGeometry/ZETOpenAssembledCurve.h"
#include "openhost/ZETGeometry/ZETOpenCurveOnSurface.h"
#include "openhost/ZETMaterial/ZETOpenMaterial.h"
#include "openhost/ZETSystem/ZETOpenMessageQueue.h"
#include "openhost/ZETWireframe/ZETOpenWireframe.h"
#include "reader/ZETLaserReaderComposites.h"

#include <ZETComposites/ZETCompRosette.h>
#include <ZETFeature/ZETFeatFolder.h>
#include <ZETMathematics/ZETMathAxis.h>
#include <ZETMathematics/ZETMathPlane.h>
#include <ZETTopology/ZETTopBody.h>
#include <ZETWireframe/ZETWFPlane.h>

#include <QRegularExpression>
#include <QSet>

#include <cmath>

using namespace Qt::Literals::StringLiterals;

namespace
{

ZETLaserExtraGeometry::ScopeType ParseScope(const QString& word)
{
    const QStringList words{u"all"_s, u"below"_s, u"until"_s, u"parent"_s};
    const qsizetype value = words.indexOf(word);
    if (value < 0)
        qFatal("\"%s\" is no scope", qPrintable(word));
    return static_cast<ZETLaserExtraGeometry::ScopeType>(value);
}

ZETFeatObject* AddExtra(ZETFeatObject* parent, const QString& word)
{
    const QStringList parts = word.split(u':');
    auto* const extra = ReaderModel::Add<ZETLaserExtraGeometry>(parent, parts.first());
    extra->SetScope(ParseScope(parts.last()));
    extra->SetFilters(ZETLaserExtraGeometry::FilterFlat | ZETLaserExtraGeometry::Filter3D |
                      ZETLaserExtraGeometry::FilterFlatNesting);
    ReaderModel::Add<ZETLaserParameter>(extra, u"parameter"_s);
    return extra;
}

ZETFeatObject* AddFeature(const QString& kind, ZETFeatObject* parent, const QString& label)
{
    if (kind == "layup"_L1)
        return ReaderModel::Add<ZETCompLayup>(parent, label);
    if (kind == "sequence"_L1)
        return ReaderModel::Add<ZETCompSequence>(parent, label);
    if (kind == "ply"_L1)
        return ReaderModel::Add<ZETCompPly>(parent, label);
    if (kind == "pieces"_L1)
        return ReaderModel::Add<ZETCompSubdivision>(parent, label);
    if (kind == "subply"_L1)
        return ReaderModel::Add<ZETCompSubPly>(parent, label);
    if (kind == "strategy"_L1)
        return ReaderModel::Add<ZETCompStrategy>(parent, label);
    if (kind == "pattern"_L1)
        return ReaderModel::Add<ZETCompFlatPattern>(parent, label);
    if (kind == "folder"_L1)
        return ReaderModel::Add<ZETFeatFolder>(parent, label);
    if (kind == "extra"_L1)
        return AddExtra(parent, label);
    qFatal("\"%s\" is no kind of feature", qPrintable(kind));
    return nullptr;
}

void AddFeatures(ZETFeatObject* root, const QString& text)
{
    const QStringList words = text.split(QRegularExpression(u"\\s+"_s), Qt::SkipEmptyParts);
    QList<ZETFeatObject*> open{root};
    ZETFeatObject* last = root;
    for (qsizetype i = 0; i < words.size(); ++i) {
        if (words.at(i) == "{"_L1)
            open.append(last);
        else if (words.at(i) == "}"_L1)
            open.removeLast();
        else {
            last = AddFeature(words.at(i), open.last(), words.value(i + 1));
            ++i;
        }
    }
    if (open.size() != 1)
        qFatal("the braces don't match: %s", qPrintable(text));
}

QString GroupText(const ZETLaserGroup& group)
{
    QStringList names;
    const auto children = group.GetChildren();
    const bool isLeafGroup = !group.HasGroups() && !children.isEmpty();
    for (const auto& child : children) {
        if (const auto* sub = qobject_cast<ZETLaserGroup*>(child.data()))
            names << GroupText(*sub);
        else if (child != children.first())
            names << child->GetName();
    }
    return group.GetName() + (isLeafGroup ? u'(' : u'[') + names.join(u' ') + (isLeafGroup ? u')' : u']');
}

QSharedPointer<ZETLaserGroup> FindGroup(const QSharedPointer<ZETLaserGroup>& group, const QString& name)
{
    if (group->GetName() == name)
        return group;
    for (const auto& child : group->GetChildren()) {
        if (const auto sub = qSharedPointerObjectCast<ZETLaserGroup>(child)) {
            if (const auto found = FindGroup(sub, name))
                return found;
        }
    }
    return {};
}

QString NumberText(double value)
{
    const double rounded = std::round(value * 1e6) / 1e6;
    return QString::number(rounded == 0.0 ? 0.0 : rounded, 'g', 12);
}

} // namespace

ReaderModel::ReaderModel(const QString& text)
    : root(new ZETCompRoot(&container))
    , tree(QSharedPointer<ZETLaserGroup>::create(nullptr))
{
    ZETOpenMessageQueue::Install();
    ZETOpenModel::SetLabel(*root, u"Part"_s);
    AddFeatures(root, text);
    configuration = Add<ZETCompMfgConfiguration>(root, u"Configuration"_s);
    ZETOpenComposites::SetActiveMfgConfiguration(*root, configuration);
    options.SetCompRoot(root);
    options.SelectAllPlies(ZETLaserOptions::Output3D);
}

ReaderModel::~ReaderModel()
{
    ZETOpenMessageQueue::Remove();
}

void ReaderModel::Select(const QStringList& labels)
{
    QSet<QString> missing(labels.cbegin(), labels.cend());
    // The selection is emptied by a pass without a configuration; there is no operation of its own for that.
    options.SetActiveConfiguration(nullptr);
    options.SelectAllPlies(ZETLaserOptions::Output3D);
    options.SetCompRoot(root);
    for (ZETFeatObject* feature : root->GetAllChildren()) {
        auto* const ply = qobject_cast<ZETCompPlyBase*>(feature);
        if (ply && missing.remove(ply->GetLabel()))
            options.AddPly(ply);
    }
    if (!missing.isEmpty() || options.GetPlies().size() != labels.size())
        qFatal("not all of these can be selected: %s", qPrintable(labels.join(u' ')));
}

ZETOpenGeometryFeature* ReaderModel::AddGeometry(const QString& label, std::unique_ptr<ZETTopBody> body)
{
    auto* const feature = Add<ZETOpenGeometryFeature>(root, label);
    feature->SetBody(std::move(body));
    return feature;
}

void ReaderModel::SetTool(const ZETOpenRef<ZETOpenSurface>& surface)
{
    tool = surface;
    auto* const feature = AddGeometry(u"Tool"_s, ZETOpenBodyBuilder::MakeFace(surface));
    for (ZETCompLayup* layup : root->GetLayups())
        ZETOpenComposites::SetWorkpiece(*layup, feature);
}

ZETOpenRef<ZETGeoAssembledCurveOnSurface> ReaderModel::MakeBoundary(const QList<ZETMathPoint>& points, bool closed)
{
    return MakeAssembledCurve(ZETOpenCurveOnSurface::MakePolyline(tool, points, closed));
}

void ReaderModel::SetBoundary(const QString& ply, const QList<ZETMathPoint>& points, bool closed)
{
    ZETOpenComposites::SetBoundaryCurves(*Get<ZETCompPlyBase>(ply), {MakeBoundary(points, closed).Get()});
}

ZETCompRosette* ReaderModel::AddRosette(const QString& layup, const ZETMathAxis& axis)
{
    auto* const rosette = Add<ZETCompRosette>(root, u"Rosette"_s);
    ZETOpenWireframe::SetAxis(*rosette, axis);
    ZETOpenComposites::SetRosette(*Layup(layup), rosette);
    return rosette;
}

void ReaderModel::AddTable(const QString& layup)
{
    ZETMathPlane plane;
    plane.SetOrigin(ZETMathPoint(100.0, 200.0, 300.0));
    plane.SetDirections(ZETMathVector(0.0, 1.0, 0.0), ZETMathVector(0.0, 0.0, 1.0));
    auto* const table = Add<ZETWFPlane>(root, u"Table"_s);
    ZETOpenWireframe::SetPlane(*table, plane);
    ZETOpenComposites::SetFlatteningPlane(*Layup(layup), table);
}

ZETMatMaterial* ReaderModel::AddMaterial(const QString& label, double thickness)
{
    auto* const material = Add<ZETMatMaterial>(root, label);
    ZETOpenMaterial::SetThickness(*material, thickness);
    return material;
}

bool ReaderModel::Read()
{
    reader = std::make_unique<ZETLaserReaderComposites>(&options, tree, &materials);
    return ReadAgain();
}

bool ReaderModel::ReadAgain()
{
    tree->Clear();
    return reader->Read();
}

QString ReaderModel::Tree() const
{
    return GroupText(*tree);
}

QSharedPointer<ZETLaserGroup> ReaderModel::Group(const QString& name) const
{
    const auto group = FindGroup(tree, name);
    if (!group)
        qFatal("no group is called %s", qPrintable(name));
    return group;
}

QSharedPointer<ZETLaserContour> ReaderModel::Contour(const QString& ply) const
{
    const auto contour = qSharedPointerObjectCast<ZETLaserContour>(Group(ply)->GetChildren().value(0));
    if (!contour)
        qFatal("%s has no contour", qPrintable(ply));
    return contour;
}

QSharedPointer<ZETLaserCurve> ReaderModel::Curve(const QString& ply, const QString& name) const
{
    for (const auto& curve : Contour(ply)->GetCurves()) {
        if (curve->GetName() == name)
            return curve;
    }
    qFatal("no curve of %s is called %s, there is %s", qPrintable(ply), qPrintable(name), qPrintable(CurveNames(ply)));
    return {};
}

QSharedPointer<ZETLaserCurve> ReaderModel::Curve(const QString& ply, qsizetype index) const
{
    if (index >= Contour(ply)->GetCurves().size())
        qFatal("%s has fewer curves: %s", qPrintable(ply), qPrintable(CurveNames(ply)));
    return Contour(ply)->GetCurves().at(index);
}

QString ReaderModel::CurveNames(const QString& ply) const
{
    QStringList names;
    for (const auto& curve : Contour(ply)->GetCurves())
        names << curve->GetName();
    return names.join(u", "_s);
}

QString ReaderModel::Messages()
{
    QStringList lines;
    for (const ZETOpenMessage& message : ZETOpenMessageQueue::GetMessages())
        lines << u"%1: %2"_s.arg(static_cast<int>(message.type)).arg(message.text);
    return lines.join(u'\n');
}

void ReaderModel::ListenToMessages(const std::function<void(const QString&)>& listener)
{
    ZETOpenMessageQueue::Install([listener](const ZETOpenMessage& message) { listener(message.text); });
}

ZETOpenRef<ZETOpenSurface> MakeFlatTool()
{
    return ZETOpenSurface::MakePlane(ZETMathAxis(), -1000.0, 1000.0, -1000.0, 1000.0);
}

QString PointsText(const ZETLaserCurve& curve)
{
    QStringList points;
    for (const ZETLaserPoint& point : curve.GetPoints()) {
        const ZETMathPoint& p = point.GetPosition();
        QString text = NumberText(p.GetX()) + u',' + NumberText(p.GetY()) + u',' + NumberText(p.GetZ());
        if (point.HasNormal()) {
            const ZETMathVector& n = point.GetNormal();
            text += u'/' + NumberText(n.GetX()) + u',' + NumberText(n.GetY()) + u',' + NumberText(n.GetZ());
        }
        points << text;
    }
    return points.join(u' ');
}
