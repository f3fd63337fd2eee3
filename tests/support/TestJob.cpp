#include "tests/support/TestJob.h"

#include "features/ZETLaser3DTextByAxis.h"
#include "features/ZETLaserParameter.h"
#include "features/ZETLaserProjector.h"
#include "features/ZETLaserTarget.h"
#include "laser/ZETLaserContour.h"
#include "laser/ZETLaserCurve.h"
#include "laser/ZETLaserDXFOutputSettings.h"
#include "laser/ZETLaserEntityProperties.h"
#include "laser/ZETLaserFileTypes.h"
#include "laser/ZETLaserGroup.h"
#include "laser/ZETLaserParameterEntity.h"
#include "laser/ZETLaserPoint.h"
#include "laser/ZETLaserTextEntity.h"
#include "openhost/ZETComposites/ZETOpenComposites.h"
#include "openhost/ZETFeature/ZETOpenModel.h"
#include "openhost/ZETGeometry/ZETOpenSurface.h"
#include "openhost/ZETMaterial/ZETOpenMaterial.h"
#include "openhost/ZETTopology/ZETOpenBodyBuilder.h"
#include "openhost/ZETWireframe/ZETOpenWireframe.h"
#include "tests/support/ZETTestModel.h"
#include "writers/ZETLaserWriter.h"

#include <ZETComposites/ZETCompFlatPoint.h>
#include <ZETComposites/ZETCompLayup.h>
#include <ZETComposites/ZETCompPly.h>
#include <ZETComposites/ZETCompRoot.h>
#include <ZETComposites/ZETCompRosette.h>
#include <ZETComposites/ZETCompSequence.h>
#include <ZETComposites/ZETCompSubdivision.h>
#include <ZETComposites/ZETCompSubPly.h>
#include <ZETFeature/ZETFeatContainer.h>
#include <ZETFeature/ZETFeatGeometry.h>
#include <ZETMaterial/ZETMatMaterial.h>
#include <ZETTopology/ZETTopBody.h>

#include <QMap>
#include <QStringList>
#include <QtMath>
#include <QVariant>

using namespace Qt::Literals::StringLiterals;

namespace
{
/*! A feature of one point. */
class PointFeature final : public ZETFeatGeometry
{
public:
    PointFeature(ZETFeatObject* parent, const ZETMathPoint& point)
        : ZETFeatGeometry(parent)
        , body(ZETOpenBodyBuilder::MakePoint(point))
    {
    }
    ZETTopBody* GetBody() const override { return body.get(); }

private:
    std::unique_ptr<ZETTopBody> body;
};

struct Word {
    QString text;
    bool quoted = false;
    int line = 0;
};

QList<Word> SplitWords(const QString& text)
{
    QList<Word> words;
    int line = 1;
    qsizetype i = 0;
    const auto countLine = [&](QChar c) { line += c == u'\n'; };
    while (i < text.size()) {
        const QChar c = text[i];
        if (c.isSpace()) {
            countLine(c);
            ++i;
        } else if (c == u'#') {
            while (i < text.size() && text[i] != u'\n')
                ++i;
        } else if (c == u'"') {
            Word word{u""_s, true, line};
            for (++i; i < text.size() && text[i] != u'"'; ++i) {
                countLine(text[i]);
                word.text += text[i];
            }
            if (i == text.size())
                qFatal("line %d: no closing quote", word.line);
            ++i;
            word.text.replace(u"\\n"_s, u"\n"_s).replace(u"\\q"_s, u"\""_s);
            words.append(word);
        } else {
            Word word{QString(), false, line};
            for (; i < text.size() && !text[i].isSpace(); ++i)
                word.text += text[i];
            words.append(word);
        }
    }
    return words;
}
} // namespace

class TestJobParser
{
public:
    TestJobParser(TestJob& target, const QString& text)
        : job(target)
        , words(SplitWords(text))
    {
    }

    void ParseAll()
    {
        while (!AtEnd())
            ParseStatement();
        // The options drop nulls when they select, so there is no other way to have one in the list.
        auto& projectors = const_cast<QList<const ZETLaserProjector*>&>(job.options.GetProjectors());
        for (const qsizetype index : std::as_const(nullProjectors))
            projectors.insert(index, nullptr);
    }

private:
    using Places = QMap<QByteArray, ZETFeatObject*>; // class of the model object -> nearest one around

    bool AtEnd() const { return next >= words.size(); }
    bool IsNext(QLatin1StringView keyword) const
    {
        return !AtEnd() && !words[next].quoted && words[next].text == keyword;
    }
    bool Accept(QLatin1StringView keyword)
    {
        if (!IsNext(keyword))
            return false;
        ++next;
        return true;
    }
    [[noreturn]] void Fail(const char* expected) const
    {
        const Word found = AtEnd() ? Word{u"the end"_s, false, words.isEmpty() ? 0 : words.last().line} : words[next];
        qFatal("job text, line %d: expected %s, found %s", found.line, expected, qPrintable(found.text));
    }
    QString Take(const char* expected)
    {
        if (AtEnd())
            Fail(expected);
        return words[next++].text;
    }
    void Expect(QLatin1StringView keyword)
    {
        if (!Accept(keyword))
            Fail(keyword.data());
    }
    bool TakeSwitch()
    {
        if (Accept("on"_L1))
            return true;
        Expect("off"_L1);
        return false;
    }
    double ToNumber(const QString& text) const
    {
        bool ok = false;
        const double number = text.toDouble(&ok);
        if (!ok)
            qFatal("job text: not a number: %s", qPrintable(text));
        return number;
    }
    ZETMathVector ToVector(const QString& text) const
    {
        const QStringList parts = text.split(u',');
        if (parts.size() != 3)
            qFatal("job text: not three numbers: %s", qPrintable(text));
        return {ToNumber(parts[0]), ToNumber(parts[1]), ToNumber(parts[2])};
    }
    ZETMathPoint ToPoint(const QString& text) const { return ZETMathPoint() + ToVector(text); }
    ZETMathAxis TakeAxis()
    {
        const ZETMathPoint origin = ToPoint(Take("an origin"));
        const ZETMathVector first = ToVector(Take("a first direction"));
        const ZETMathVector second = ToVector(Take("a second direction"));
        ZETMathAxis axis;
        axis.SetOrigin(origin);
        axis.SetDirections(first, second, first ^ second);
        return axis;
    }

    void ParseStatement()
    {
        ZETLaserOptions& options = job.options;
        if (Accept("partname"_L1))
            options.SetPartName(Take("a name"));
        else if (Accept("rootname"_L1))
            job.tree->SetName(Take("a name"));
        else if (Accept("units"_L1))
            options.SetUnits(Accept("inch"_L1) ? ZETLaserOptions::UnitsInches
                                               : (Expect("mm"_L1), ZETLaserOptions::UnitsMillimeters));
        else if (Accept("type"_L1))
            options.SetOutputType(ZETLaserOptions::EOutputType(int(ToNumber(Take("a number")))));
        else if (Accept("filetype"_L1))
            options.SetFileType(ZETLaserOptions::EOutputFileType(int(ToNumber(Take("a number")))));
        else if (Accept("normals"_L1))
            options.SetIncludeNormalVectors(TakeSwitch());
        else if (Accept("rosettefirst"_L1))
            options.SetRosetteBeforePlyGeometry(TakeSwitch());
        else if (Accept("nestsequences"_L1))
            options.SetNestSequencesWithinLayup(TakeSwitch());
        else if (Accept("nestplies"_L1))
            options.SetNestPliesWithinSequence(TakeSwitch());
        else if (Accept("axis"_L1))
            ParseAxis();
        else if (Accept("target"_L1))
            ParseTarget();
        else if (Accept("projector"_L1))
            options.AddProjector(ParseProjector());
        else if (Accept("idleprojector"_L1))
            ParseProjector();
        else if (Accept("nullprojector"_L1))
            nullProjectors.append(options.GetProjectors().size() + nullProjectors.size());
        else if (Accept("usematerialid"_L1))
            options.SetUseMaterialID(TakeSwitch());
        else if (!ParseDxfStatement())
            ParseGroup(job.tree, {});
    }

    bool ParseDxfStatement()
    {
        ZETLaserOptions& options = job.options;
        if (Accept("filemode"_L1))
            options.SetDXFFileMode(Accept("single"_L1)     ? ZETLaserOptions::DXFSingleFile
                                   : Accept("material"_L1) ? ZETLaserOptions::DXFFilePerMaterial
                                                           : (Expect("ply"_L1), ZETLaserOptions::DXFFilePerPly));
        else if (Accept("shapename"_L1))
            options.SetShapeName(Take("a text"));
        else if (Accept("labelsize"_L1))
            options.SetRosetteSizeQuilmon(ToNumber(Take("a number")));
        else if (Accept("dxf"_L1))
            ParseDxfSettings();
        else if (Accept("material"_L1))
            ParseJobMaterial();
        else
            return false;
        return true;
    }

    void ParseDxfSettings()
    {
        const auto take = [&] { return int(ToNumber(Take("a number"))); };
        ZETLaserDXFOutputSettings settings;
        settings.SetTextLayer(take());
        settings.SetTextColor(take());
        settings.SetGeometryLayer(take());
        settings.SetGeometryColor(take());
        settings.SetGeometryLineStyle(take());
        job.options.SetDXFOutputSettings(settings);
    }

    void ParseJobMaterial()
    {
        auto* material = new ZETMatMaterial(job.model);
        ZETOpenModel::SetLabel(*material, Take("a name"));
        ZETOpenMaterial::SetMaterialType(*material, Take("a type"));
        ZETOpenMaterial::SetMaterialId(*material, Take("a number"));
        job.materials.append(material);
    }

    void ParseAxis()
    {
        auto* rosette = new ZETCompRosette(job.model);
        ZETOpenModel::SetLabel(*rosette, u"Cell"_s);
        ZETOpenWireframe::SetAxis(*rosette, TakeAxis());
        job.options.SetAxisSystem(rosette);
    }

    /*! Makes a feature that can't be made from a parent directly, but by the name of its class. */
    template <typename Feature>
    Feature* Make() const
    {
        return qobject_cast<Feature*>(ZETOpenModel::Create(Feature::staticMetaObject.className(), *job.model));
    }

    void ParseTarget()
    {
        auto* target = Make<ZETLaserTarget>();
        ZETOpenModel::SetLabel(*target, Take("a name"));
        target->SetPoint(new PointFeature(job.model, ToPoint(Take("a point"))));
        target->SetDrift(Accept("drift"_L1));
        job.targets.append(target);
    }

    ZETLaserProjector* ParseProjector()
    {
        auto* projector = Make<ZETLaserProjector>();
        ZETOpenModel::SetLabel(*projector, Take("a name"));
        QList<ZETLaserTarget*> targets;
        Expect("{"_L1);
        while (!Accept("}"_L1))
            targets.append(Accept("null"_L1) ? nullptr : job.targets.at(int(ToNumber(Take("a number"))) - 1));
        projector->SetTargets(targets);
        return projector;
    }

    /*! The model object of that class that is nearest around, made if there is none. */
    template <typename Feature>
    ZETFeatObject* Around(const Places& places, ZETFeatObject* (TestJobParser::*parent)(const Places&))
    {
        if (auto* feature = places.value(Feature::staticMetaObject.className()))
            return feature;
        return new Feature((this->*parent)(places));
    }
    ZETFeatObject* LayupAround(const Places& places) { return Around<ZETCompLayup>(places, &TestJobParser::Model); }
    ZETFeatObject* SequenceAround(const Places& places)
    {
        return Around<ZETCompSequence>(places, &TestJobParser::LayupAround);
    }
    ZETFeatObject* PlyAround(const Places& places)
    {
        return Around<ZETCompPly>(places, &TestJobParser::SequenceAround);
    }
    ZETFeatObject* SubdivisionAround(const Places& places)
    {
        return Around<ZETCompSubdivision>(places, &TestJobParser::PlyAround);
    }
    ZETFeatObject* Model(const Places&) { return job.model; }

    /*! Makes the model object that \a group stands for. */
    template <typename Feature>
    void Represent(ZETLaserGroup& group, ZETFeatObject* parent, Places& places)
    {
        auto* feature = new Feature(parent);
        ZETOpenModel::SetLabel(*feature, group.GetName());
        group.setProperty(Feature::staticMetaObject.className(), QVariant::fromValue(feature));
        places.insert(Feature::staticMetaObject.className(), feature);
    }

    void ParseGroup(const QSharedPointer<ZETLaserGroup>& parent, Places places)
    {
        if (AtEnd() || words[next].quoted)
            Fail("a statement");
        const QString kind = Take("a statement");
        auto group = QSharedPointer<ZETLaserGroup>::create(parent);
        const auto named = [&]() -> ZETLaserGroup& {
            group->SetName(Take("a name"));
            return *group;
        };
        if (kind == "layup"_L1)
            Represent<ZETCompLayup>(named(), job.model, places);
        else if (kind == "sequence"_L1)
            Represent<ZETCompSequence>(named(), LayupAround(places), places);
        else if (kind == "ply"_L1)
            Represent<ZETCompPly>(named(), SequenceAround(places), places);
        else if (kind == "subply"_L1)
            Represent<ZETCompSubPly>(named(), SubdivisionAround(places), places);
        else if (kind == "nullply"_L1)
            named().setProperty("ZETCompPly", QVariant::fromValue<ZETCompPly*>(nullptr));
        else if (kind == "nullsubply"_L1)
            named().setProperty("ZETCompSubPly", QVariant::fromValue<ZETCompSubPly*>(nullptr));
        else if (kind == "group"_L1)
            named();
        else
            --next, Fail("a statement");

        parent->AddGroup(group);
        Expect("{"_L1);
        while (!Accept("}"_L1)) {
            if (Accept("contour"_L1))
                ParseContour(group);
            else if (Accept("parameter"_L1))
                ParseParameter(group);
            else if (Accept("text"_L1))
                ParseText(group);
            else if (Accept("material"_L1))
                ParseMaterial(*group);
            else if (Accept("direction"_L1))
                ParseDirection(*group);
            else if (Accept("of"_L1))
                ParseMaterialOf(*group, places);
            else if (Accept("seed"_L1))
                ParseSeed(places);
            else
                ParseGroup(group, places);
        }
    }

    void ParseMaterialOf(ZETLaserGroup& group, const Places& places)
    {
        const QString name = Take("a material");
        for (auto* material : std::as_const(job.materials)) {
            if (material->GetLabel() != name)
                continue;
            group.setProperty(ZETLaserEntityProperties::material, QVariant::fromValue(material));
            if (auto* ply = qobject_cast<ZETCompPly*>(places.value("ZETCompPly")))
                ZETOpenComposites::SetMaterials(*ply, ply->GetMaterials() << material);
            return;
        }
        qFatal("job text: no such material: %s", qPrintable(name));
    }

    void ParseSeed(const Places& places)
    {
        auto* ply = places.value("ZETCompSubPly", places.value("ZETCompPly"));
        auto* strategy = ZETTestModel::Add<ZETCompStrategy>(ply, "Strategy");
        auto* pattern = ZETTestModel::Add<ZETCompFlatPattern>(strategy, "Pattern");
        auto* image = ZETTestModel::Add<ZETCompFlatPoint>(pattern, "Seed");
        const ZETMathPoint point = ToPoint(Take("a point"));
        auto* seed = new PointFeature(job.model, point);
        ZETOpenComposites::SetSeedPoint(*strategy, seed);
        ZETOpenComposites::SetSource(*image, seed);
        ZETOpenComposites::SetBody(*image, ZETOpenBodyBuilder::MakePoint(point));
    }

    bool IsPointNext() const { return !AtEnd() && !words[next].quoted && words[next].text.count(u',') >= 2; }

    void ParseContour(const QSharedPointer<ZETLaserGroup>& group)
    {
        auto contour = QSharedPointer<ZETLaserContour>::create(group);
        if (!IsNext("{"_L1))
            contour->SetName(Take("a name"));
        Expect("{"_L1);
        while (!Accept("}"_L1))
            ParseCurve(contour);
        group->AddContour(contour);
    }

    void ParseCurve(const QSharedPointer<ZETLaserContour>& contour)
    {
        auto curve = QSharedPointer<ZETLaserCurve>::create(contour);
        if (Accept("rosettecurve"_L1))
            curve->setProperty(ZETLaserEntityProperties::sourceType, int(ZETLaserOptions::SourceRosette));
        curve->SetClosed(Accept("closed"_L1));
        if (!curve->IsClosed())
            Expect("open"_L1);
        const bool another = IsNext("open"_L1) || IsNext("closed"_L1) || IsNext("rosettecurve"_L1) || IsNext("}"_L1);
        if (!another && !IsPointNext())
            curve->SetName(Take("a name"));
        while (IsPointNext())
            curve->GetPoints().append(ToLaserPoint(Take("a point")));
        contour->AddCurve(curve);
    }

    ZETLaserPoint ToLaserPoint(const QString& text) const
    {
        const QString place = text.section(u'@', 0, 0);
        const QString normal = place.section(u'/', 1, 1);
        ZETLaserPoint point(ToPoint(place.section(u'/', 0, 0)), normal.isEmpty() ? ZETMathVector() : ToVector(normal));
        if (text.contains(u'@'))
            point.SetOffsetPoint(ToPoint(text.section(u'@', 1, 1)));
        return point;
    }

    void ParseParameter(const QSharedPointer<ZETLaserGroup>& group)
    {
        static const QStringList types{u"information"_s, u"message"_s, u"graphic"_s,
                                       u"query"_s,       u"literal"_s, u"note"_s};
        const QString type = Take("a parameter type");
        auto* parameter = new ZETLaserParameter(job.model);
        parameter->SetType(
            ZETLaserParameter::ParameterType(types.contains(type) ? types.indexOf(type) : int(ToNumber(type))));
        parameter->SetText(Take("a text"));
        group->AddParameterEntity(QSharedPointer<ZETLaserParameterEntity>::create(group, parameter));
    }

    void ParseText(const QSharedPointer<ZETLaserGroup>& group)
    {
        auto* text = new ZETLaser3DTextByAxis(job.model);
        text->SetText(Take("a text"));
        auto* axis = new ZETWFAxisSystem(job.model);
        ZETOpenWireframe::SetAxis(*axis, TakeAxis());
        text->SetAxis(axis);
        text->SetSize(ToNumber(Take("a size")));
        group->AddTextEntity(QSharedPointer<ZETLaserTextEntity>::create(group, text));
    }

    void ParseMaterial(ZETLaserGroup& group)
    {
        auto* material = new ZETMatMaterial(job.model);
        ZETOpenMaterial::SetMaterialType(*material, Take("a type"));
        ZETOpenMaterial::SetMaterialId(*material, Take("an id"));
        group.setProperty(ZETLaserEntityProperties::material, QVariant::fromValue(material));
    }

    void ParseDirection(const ZETLaserGroup& group)
    {
        auto* ply = ObjectIn<ZETCompPly>(group, ZETLaserEntityProperties::ply);
        if (!ply)
            Fail("no direction in a group that is no ply");
        ZETOpenComposites::SetDirection(*ply, qDegreesToRadians(ToNumber(Take("an angle"))));
    }

    TestJob& job;
    QList<Word> words;
    qsizetype next = 0;
    QList<qsizetype> nullProjectors; // indices in the selection
};

TestJob::TestJob(const QString& text)
    : container(std::make_unique<ZETFeatContainer>())
    , model(new ZETCompRoot(container.get()))
    , tree(QSharedPointer<ZETLaserGroup>::create(QSharedPointer<QObject>()))
{
    options.SetCompRoot(model);
    options.SetFileType(ZETLaserOptions::FileVirtek);
    TestJobParser(*this, text).ParseAll();
}

TestJob::~TestJob() = default;

bool TestJob::WriteFileType(const QString& fileName)
{
    options.SetFileName(fileName);
    return ZETLaserFileType::Of(options.GetFileType()).makeWriter(&options, tree, &materials)->Write();
}

void TestJob::RemoveModel()
{
    options.SetCompRoot(nullptr);
}

QSharedPointer<ZETLaserGroup> ParseTree(const QString& text)
{
    return TestJob(text).GetTree();
}
