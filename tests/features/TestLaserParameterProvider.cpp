#include "features/ZETLaserParameterProvider.h"

#include "openhost/ZETMaterial/ZETOpenMaterial.h"
#include "tests/support/TestTranslator.h"
#include "tests/support/ZETTestModel.h"

#include <ZETFeature/ZETFeatContainerProvider.h>
#include <ZETFeature/ZETFeatFolder.h>
#include <ZETGeometry/ZETGeoGeometryRef.h>
#include <ZETMaterial/ZETMatMaterial.h>

#include <QLocale>
#include <QScopeGuard>
#include <QTest>
#include <QUrl>

#include <algorithm>
#include <memory>
#include <numbers>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace
{
/*! Part, layup L1, sequence S1: P1 of two materials at 45 degrees, and P2 in sub-plies A and B. */
class Panel : public ZETTestModel
{
public:
    ZETMatMaterial* carbon = Add<ZETMatMaterial>(root, "Carbon");
    ZETMatMaterial* glass = Add<ZETMatMaterial>(root, "Glass");
    ZETCompLayup* layup = AddLayup("L1");
    ZETCompSequence* sequence = AddSequence(layup, "S1");
    ZETCompPly* ply1 = AddPly(sequence, "P1");
    ZETCompPly* ply2 = AddPly(sequence, "P2");
    ZETCompSubdivision* subdivision = AddSubdivision(ply2);
    ZETCompSubPly* subPlyA = AddSubPly(subdivision, "A");
    ZETCompSubPly* subPlyB = AddSubPly(subdivision, "B");

    Panel()
    {
        ZETOpenModel::SetProviderUrl(container, QUrl::fromLocalFile(u"/models/panel 1.zet"_s));
        ZETOpenMaterial::SetMaterialId(*carbon, u"C-100"_s);
        ZETOpenMaterial::SetMaterialId(*glass, u"G-200"_s);
        ZETOpenComposites::SetMaterials(*ply1, {carbon, glass});
        ZETOpenComposites::SetMaterials(*ply2, {glass});
        ZETOpenComposites::SetDirection(*ply1, std::numbers::pi / 4.0);
        ZETOpenComposites::SetDirection(*ply2, -std::numbers::pi / 6.0);
    }

    ZETLaserParameterProvider Provider() const { return ZETLaserParameterProvider(&container); }
    QString Evaluate(const ZETCompPlyBase* ply, const QString& text) const
    {
        return Provider().EvaluateParameterText(ply, text);
    }
};

/*! Plies with flat patterns, labelled as given, in one sequence. */
class FlatPlies : public ZETTestModel
{
public:
    explicit FlatPlies(const QList<const char*>& labels)
    {
        auto* sequence = AddSequence(AddLayup("L1"), "S1");
        for (const char* label : labels)
            AddFlatContour(AddPly(sequence, label), "Contour");
    }

    QList<QString> Problems(const QString& pattern) const
    {
        return ZETLaserParameterProvider(&container).EvaluateShapeName(configuration, pattern);
    }
};

/*! A provider that counts how often it is asked, and what for. */
class AskedProvider : public ZETFeatContainerProvider
{
public:
    QHash<QString, QString> GetTextParameters(const ZETFeatContainer* container) const override
    {
        asked.append(container);
        return {{u"ORDER"_s, u"4711"_s}};
    }
    static inline QList<const ZETFeatContainer*> asked;
};

const QList<QString> builtIn{u"%SOURCE%"_s, u"%PART%"_s, u"%SEQ%"_s,    u"%LAYUP%"_s, u"%PLY%"_s,
                             u"%SUBPLY%"_s, u"%MAT%"_s,  u"%MAT_ID%"_s, u"%ORI%"_s};
} // namespace

class TestLaserParameterProvider : public QObject
{
    Q_OBJECT

private slots:
    void macrosOfATextAreFound_data();
    void macrosOfATextAreFound();

    void valuesOfAPly_data();
    void valuesOfAPly();
    void valuesOfASubPlyAreThoseOfItsParentPly_data();
    void valuesOfASubPlyAreThoseOfItsParentPly();
    void valueForNullPlyIsTheName();
    void valueOutsideACompleteModelIsEmpty();
    void valueOfTheNearestAncestorCounts();
    void valueWithoutMaterialIsEmpty();
    void sourceIsEmptyForAModelInMemory();
    void directionIsTheSameInEveryLocale();
    void directionHasOneDecimal_data();
    void directionHasOneDecimal();
    void extraParameterOverridesTheBuiltInOne();
    void extraParameterNeedsACompleteModelToo();

    void textForNullPlyStaysAsItIs();
    void textIsEvaluated_data();
    void textIsEvaluated();
    void valueThatHoldsAMacroIsReplacedByALaterOne();
    void valueIsNotTakenForAPattern();
    void extraParametersAreEvaluated();

    void containerProviderIsAskedOnce();
    void nullContainerHasNoExtraParameters();
    void copiesKeepTheExtraParameters();
    void listHasBuiltInsThenExtras();
    void namesAreFormatted();
    void textsAreValidated_data();
    void textsAreValidated();

    void evaluatingPliesHaveFlatPatternsAndNoParents();
    void evaluatingPliesHaveTheirOwnFlatPatternAndNotTheConfigurations();
    void evaluatingPliesNeedAConfiguration();
    void duplicatesAreCounted();
    void emptyShapeNamesAreFound();
    void usableShapeNameHasNoProblems();
    void invalidShapeNameIsTheOnlyProblem();
    void duplicatedShapeNameIsAProblem();
    void duplicatedShapeNamesStandInKeyOrder();
    void duplicatesAndCharactersAreTwoProblems();
    void charactersOfThePatternCountAndNotThoseOfTheNames();
    void emptyShapeNamesAreNoProblem();
    void duplicatedNameMayHoldAPlaceMarker();
    void problemsAreTranslated();

    void flatContourNeedsBothArguments();
    void flatContourComesFromTheIncludedStrategy();
    void flatContourComesFromThePlyItselfIfNothingIsIncluded();
    void flatContourComesFromAnotherStrategy();
    void flatContourFallsBackToThePly();
    void flatContourMayStandDeep();
    void flatContoursOfTheModelStandForSubPlies();
    void flatContoursHeedNoEnabledState();
    void flatContoursNeedACompositeModel();
};

void TestLaserParameterProvider::macrosOfATextAreFound_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QList<QString>>("macros");
    const auto row = [](const char* name, const QString& text, const QList<QString>& macros) {
        QTest::newRow(name) << text << macros;
    };
    row("none", u"plain"_s, {});
    row("empty", u""_s, {});
    row("one", u"%PLY%"_s, {u"PLY"_s});
    row("two", u"a %SEQ%-%PLY% b"_s, {u"SEQ"_s, u"PLY"_s});
    row("duplicates stay", u"%A%%B%%A%"_s, {u"A"_s, u"B"_s, u"A"_s});
    row("percent sign is used up", u"%A%B%"_s, {u"A"_s});
    row("two in a row", u"%%"_s, {});
    row("three in a row", u"%%%"_s, {});
    row("between doubled ones", u"%%A%%"_s, {u"A"_s});
    row("stray", u"100 %"_s, {});
    row("stray ahead", u"100 % of %PLY%"_s, {u" of "_s});
    row("over a line end", u"%A\nB%"_s, {u"A\nB"_s});
    row("blanks and case stay", u"% ply %"_s, {u" ply "_s});
}

void TestLaserParameterProvider::macrosOfATextAreFound()
{
    QFETCH(QString, text);
    QTEST(ZETLaserParameterProvider(nullptr).GetParametersFromText(text), "macros");
}

void TestLaserParameterProvider::valuesOfAPly_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("value");
    QTest::newRow("source") << u"SOURCE"_s << u"/models/panel 1.zet"_s;
    QTest::newRow("part") << u"PART"_s << u"Part"_s;
    QTest::newRow("sequence") << u"SEQ"_s << u"S1"_s;
    QTest::newRow("layup") << u"LAYUP"_s << u"L1"_s;
    QTest::newRow("ply") << u"PLY"_s << u"P1"_s;
    QTest::newRow("sub-ply") << u"SUBPLY"_s << QString();
    QTest::newRow("first material") << u"MAT"_s << u"Carbon"_s;
    QTest::newRow("id of the first material") << u"MAT_ID"_s << u"C-100"_s;
    QTest::newRow("direction") << u"ORI"_s << u"45.0"_s;
    QTest::newRow("unknown") << u"XYZ"_s << QString();
    QTest::newRow("small letters") << u"ply"_s << QString();
    QTest::newRow("percent signs") << u"%PLY%"_s << QString();
    QTest::newRow("empty") << QString() << QString();
}

void TestLaserParameterProvider::valuesOfAPly()
{
    QFETCH(QString, name);
    const Panel panel;
    QTEST(panel.Provider().GetParameterValue(panel.ply1, name), "value");
}

void TestLaserParameterProvider::valuesOfASubPlyAreThoseOfItsParentPly_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("value");
    QTest::newRow("sequence") << u"SEQ"_s << u"S1"_s;
    QTest::newRow("layup") << u"LAYUP"_s << u"L1"_s;
    QTest::newRow("ply") << u"PLY"_s << u"P2"_s;
    QTest::newRow("sub-ply") << u"SUBPLY"_s << u"B"_s;
    QTest::newRow("material") << u"MAT"_s << u"Glass"_s;
    QTest::newRow("id of the material") << u"MAT_ID"_s << u"G-200"_s;
    QTest::newRow("direction") << u"ORI"_s << u"-30.0"_s;
}

void TestLaserParameterProvider::valuesOfASubPlyAreThoseOfItsParentPly()
{
    QFETCH(QString, name);
    const Panel panel;
    QTEST(panel.Provider().GetParameterValue(panel.subPlyB, name), "value");
}

void TestLaserParameterProvider::valueForNullPlyIsTheName()
{
    const Panel panel;
    QCOMPARE(panel.Provider().GetParameterValue(nullptr, u"PLY"_s), u"PLY"_s);
    QCOMPARE(panel.Provider().GetParameterValue(nullptr, u"XYZ"_s), u"XYZ"_s);
}

void TestLaserParameterProvider::valueOutsideACompleteModelIsEmpty()
{
    const Panel panel;
    auto* layupOnly = ZETTestModel::Add<ZETCompPly>(panel.layup, "No sequence");
    auto* rootOnly = ZETTestModel::Add<ZETCompPly>(panel.root, "No layup");
    auto* subPlyAlone = ZETTestModel::Add<ZETCompSubPly>(panel.sequence, "No ply");
    ZETFeatContainer otherContainer;
    auto* alone = new ZETCompPly(&otherContainer, ZETGeoGeometryRef());
    for (const ZETCompPlyBase* ply : QList<const ZETCompPlyBase*>{layupOnly, rootOnly, subPlyAlone, alone}) {
        QCOMPARE(panel.Provider().GetParameterValue(ply, u"PLY"_s), QString());
        QCOMPARE(panel.Evaluate(ply, u"[%PLY%]"_s), u"[]"_s);
    }
}

void TestLaserParameterProvider::valueOfTheNearestAncestorCounts()
{
    const Panel panel;
    auto* folder = ZETTestModel::Add<ZETFeatFolder>(panel.sequence, "Folder");
    auto* inner = ZETTestModel::Add<ZETCompSequence>(folder, "Inner");
    auto* ply = ZETTestModel::Add<ZETCompPly>(ZETTestModel::Add<ZETFeatFolder>(inner, "Folder"), "P");
    QCOMPARE(panel.Evaluate(ply, u"%SEQ% %LAYUP% %PLY%"_s), u"Inner L1 P"_s);
}

void TestLaserParameterProvider::valueWithoutMaterialIsEmpty()
{
    const Panel panel;
    ZETOpenComposites::SetMaterials(*panel.ply1, {});
    QCOMPARE(panel.Evaluate(panel.ply1, u"[%MAT%][%MAT_ID%]"_s), u"[][]"_s);
}

void TestLaserParameterProvider::sourceIsEmptyForAModelInMemory()
{
    Panel panel;
    ZETOpenModel::SetProviderUrl(panel.container, QUrl());
    QCOMPARE(panel.Evaluate(panel.ply1, u"[%SOURCE%]"_s), u"[]"_s);
}

void TestLaserParameterProvider::directionIsTheSameInEveryLocale()
{
    const auto restore = qScopeGuard([] { QLocale::setDefault(QLocale::system()); });
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    const Panel panel;
    QCOMPARE(panel.Evaluate(panel.ply1, u"%ORI%"_s), u"45.0"_s);
}

void TestLaserParameterProvider::directionHasOneDecimal_data()
{
    QTest::addColumn<double>("degrees");
    QTest::addColumn<QString>("text");
    QTest::newRow("zero") << 0.0 << u"0.0"_s;
    QTest::newRow("right angle") << 90.0 << u"90.0"_s;
    QTest::newRow("negative") << -45.0 << u"-45.0"_s;
    QTest::newRow("rounded up") << 22.57 << u"22.6"_s;
    QTest::newRow("rounded down") << 22.53 << u"22.5"_s;
}

void TestLaserParameterProvider::directionHasOneDecimal()
{
    QFETCH(double, degrees);
    const Panel panel;
    ZETOpenComposites::SetDirection(*panel.ply1, degrees * std::numbers::pi / 180.0);
    QTEST(panel.Evaluate(panel.ply1, u"%ORI%"_s), "text");
}

void TestLaserParameterProvider::extraParameterOverridesTheBuiltInOne()
{
    Panel panel;
    ZETOpenModel::SetTextParameters(panel.container, {{u"PLY"_s, u"extra"_s}, {u"SUBPLY"_s, QString()}});
    QCOMPARE(panel.Evaluate(panel.ply1, u"%PLY% %SEQ%"_s), u"extra S1"_s);
    QCOMPARE(panel.Evaluate(panel.subPlyA, u"[%SUBPLY%]"_s), u"[]"_s);
}

void TestLaserParameterProvider::extraParameterNeedsACompleteModelToo()
{
    Panel panel;
    ZETOpenModel::SetTextParameters(panel.container, {{u"ORDER"_s, u"4711"_s}});
    auto* ply = ZETTestModel::Add<ZETCompPly>(panel.layup, "No sequence");
    QCOMPARE(panel.Evaluate(ply, u"[%ORDER%]"_s), u"[]"_s);
}

void TestLaserParameterProvider::textForNullPlyStaysAsItIs()
{
    const Panel panel;
    QCOMPARE(panel.Evaluate(nullptr, u"%SEQ%-%PLY% %XYZ%"_s), u"%SEQ%-%PLY% %XYZ%"_s);
}

void TestLaserParameterProvider::textIsEvaluated_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("result");
    QTest::newRow("two macros") << u"%SEQ%-%PLY%"_s << u"S1-P1"_s;
    QTest::newRow("empty value") << u"%SUBPLY%"_s << QString();
    QTest::newRow("every occurrence") << u"%PLY% and %PLY%"_s << u"P1 and P1"_s;
    QTest::newRow("unknown disappears") << u"a%XYZ%b"_s << u"ab"_s;
    QTest::newRow("case counts") << u"%ply%%PLY%"_s << u"P1"_s;
    QTest::newRow("no macro") << u"100 %"_s << u"100 %"_s;
    QTest::newRow("empty") << QString() << QString();
    QTest::newRow("percent sign is used up") << u"%SEQ%PLY%"_s << u"S1PLY%"_s;
    // The percent sign behind SEQ is used up, so what is found next is the blank between two percent signs.
    QTest::newRow("a blank is a macro too") << u"%SEQ%PLY% %PLY%"_s << u"S1PLYPLY%"_s;
}

void TestLaserParameterProvider::textIsEvaluated()
{
    QFETCH(QString, text);
    const Panel panel;
    QTEST(panel.Evaluate(panel.ply1, text), "result");
}

void TestLaserParameterProvider::valueThatHoldsAMacroIsReplacedByALaterOne()
{
    const Panel panel;
    ZETOpenModel::SetLabel(*panel.ply1, u"%SEQ%"_s);
    QCOMPARE(panel.Evaluate(panel.ply1, u"%PLY% %SEQ%"_s), u"S1 S1"_s);
    QCOMPARE(panel.Evaluate(panel.ply1, u"%SEQ% %PLY%"_s), u"S1 %SEQ%"_s); // by a later one only
    QCOMPARE(panel.Evaluate(panel.ply1, u"%PLY%"_s), u"%SEQ%"_s);
    // And once for each macro, however often it stands in the text.
    ZETOpenModel::SetLabel(*panel.ply1, u"%PLY%a"_s);
    QCOMPARE(panel.Evaluate(panel.ply1, u"%PLY% %PLY%"_s), u"%PLY%a %PLY%a"_s);
}

void TestLaserParameterProvider::valueIsNotTakenForAPattern()
{
    const Panel panel;
    ZETOpenModel::SetLabel(*panel.ply1, u"a\\1%1.*"_s);
    QCOMPARE(panel.Evaluate(panel.ply1, u"%PLY%|%SEQ%"_s), u"a\\1%1.*|S1"_s);
}

void TestLaserParameterProvider::extraParametersAreEvaluated()
{
    Panel panel;
    ZETOpenModel::SetTextParameters(panel.container, {{u"ORDER"_s, u"4711"_s}, {u"Cut no."_s, u"8"_s}});
    QCOMPARE(panel.Evaluate(panel.ply1, u"%ORDER%/%Cut no.%"_s), u"4711/8"_s);
}

void TestLaserParameterProvider::containerProviderIsAskedOnce()
{
    Panel panel;
    ZETOpenModel::SetProvider(panel.container, std::make_unique<AskedProvider>());
    AskedProvider::asked.clear();
    const ZETLaserParameterProvider provider = panel.Provider();
    QCOMPARE(provider.GetParameterValue(panel.ply1, u"ORDER"_s), u"4711"_s);
    QCOMPARE(AskedProvider::asked, (QList<const ZETFeatContainer*>{&panel.container}));
}

void TestLaserParameterProvider::nullContainerHasNoExtraParameters()
{
    QCOMPARE(ZETLaserParameterProvider(nullptr).GetParameterList(), builtIn);
}

void TestLaserParameterProvider::copiesKeepTheExtraParameters()
{
    Panel panel;
    ZETOpenModel::SetTextParameters(panel.container, {{u"ORDER"_s, u"4711"_s}});
    const ZETLaserParameterProvider original = panel.Provider();
    ZETLaserParameterProvider copy = original;
    ZETLaserParameterProvider assigned(nullptr);
    assigned = copy;
    const ZETLaserParameterProvider moved = std::move(copy);
    const ZETLaserParameterProvider* const all[] = {&original, &assigned, &moved};
    for (const ZETLaserParameterProvider* provider : all)
        QCOMPARE(provider->GetParameterValue(panel.ply1, u"ORDER"_s), u"4711"_s);
}

void TestLaserParameterProvider::listHasBuiltInsThenExtras()
{
    Panel panel;
    const QHash<QString, QString> extras{{u"B"_s, u"1"_s}, {u"A"_s, u"2"_s}, {u"C"_s, u"3"_s}};
    ZETOpenModel::SetTextParameters(panel.container, extras);
    const QList<QString> list = panel.Provider().GetParameterList();
    QCOMPARE(list.mid(0, builtIn.size()), builtIn);
    QList<QString> rest = list.mid(builtIn.size());
    std::sort(rest.begin(), rest.end());
    QCOMPARE(rest, (QList<QString>{u"A"_s, u"B"_s, u"C"_s}));
}

void TestLaserParameterProvider::namesAreFormatted()
{
    const ZETLaserParameterProvider provider(nullptr);
    for (const QString& name : builtIn)
        QCOMPARE(provider.GetFormatedParameterName(name), name);
    QCOMPARE(provider.GetFormatedParameterName(u"PLY"_s), u"%PLY%"_s);
    QCOMPARE(provider.GetFormatedParameterName(u"ORDER"_s), u"%ORDER%"_s);
    QCOMPARE(provider.GetFormatedParameterName(u"%ORDER%"_s), u"%%ORDER%%"_s);
    QCOMPARE(provider.GetFormatedParameterName(u"%1"_s), u"%%1%"_s);
    QCOMPARE(provider.GetFormatedParameterName(QString()), u"%%"_s);
}

void TestLaserParameterProvider::textsAreValidated_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("valid");
    QTest::newRow("no macro") << u"plain"_s << true;
    QTest::newRow("empty") << QString() << true;
    for (const QString& macro : builtIn)
        QTest::newRow(qPrintable(macro)) << macro << true;
    QTest::newRow("extra") << u"%ORDER%"_s << true;
    QTest::newRow("unknown") << u"%XYZ%"_s << false;
    QTest::newRow("unknown behind known") << u"%PLY%%XYZ%"_s << false;
    QTest::newRow("small letters") << u"%ply%"_s << false;
    QTest::newRow("blanks") << u"% PLY %"_s << false;
    QTest::newRow("duplicates") << u"%PLY%%PLY%"_s << true;
    QTest::newRow("stray percent sign") << u"%PLY% 100 %"_s << true;
    QTest::newRow("doubled percent signs") << u"%%"_s << true;
}

void TestLaserParameterProvider::textsAreValidated()
{
    QFETCH(QString, text);
    Panel panel;
    ZETOpenModel::SetTextParameters(panel.container, {{u"ORDER"_s, u"4711"_s}});
    QTEST(panel.Provider().ValidateLaserParameterText(text), "valid");
}

void TestLaserParameterProvider::evaluatingPliesHaveFlatPatternsAndNoParents()
{
    const Panel panel;
    ZETTestModel::AddFlatContour(panel.subPlyB, "CB");
    ZETTestModel::AddFlatContour(panel.ply1, "C1");
    auto* ply3 = ZETTestModel::AddPly(panel.sequence, "P3");
    ZETTestModel::AddFlatContour(ply3, "C3");
    QCOMPARE(ZETTestModel::Labels(panel.Provider().GetEvaluatingPlies(panel.configuration)), u"P1 B P3"_s);
    ZETTestModel::Disable(panel.ply1);
    QCOMPARE(ZETTestModel::Labels(panel.Provider().GetEvaluatingPlies(panel.configuration)), u"B P3"_s);
}

void TestLaserParameterProvider::evaluatingPliesHaveTheirOwnFlatPatternAndNotTheConfigurations()
{
    // The pattern is asked for without a configuration, so what this one includes doesn't matter.
    const FlatPlies model({"A", "B"});
    const ZETLaserParameterProvider provider(&model.container);
    auto* ply = provider.GetEvaluatingPlies(model.configuration).first();
    ZETOpenComposites::SetIncluded(*model.configuration, *ply, ZETTestModel::AddStrategy(ply)); // has no pattern
    QVERIFY(!ply->GetFlatPattern(model.configuration));
    QCOMPARE(ZETTestModel::Labels(provider.GetEvaluatingPlies(model.configuration)), u"A B"_s);
}

void TestLaserParameterProvider::evaluatingPliesNeedAConfiguration()
{
    const FlatPlies model({"A"});
    const ZETLaserParameterProvider provider(&model.container);
    QVERIFY(provider.GetEvaluatingPlies(nullptr).isEmpty());
    QVERIFY(provider.EvaluateShapeName(nullptr, u"%PLY%"_s).isEmpty());
}

void TestLaserParameterProvider::duplicatesAreCounted()
{
    const FlatPlies model({"B", "A", "B", ""});
    const ZETLaserParameterProvider provider(&model.container);
    QCOMPARE(provider.EvaluateDuplicateShapeName(model.configuration, u"%PLY%"_s),
             (QMap<QString, int>{{u"A"_s, 1}, {u"B"_s, 2}})); // the empty name isn't counted
}

void TestLaserParameterProvider::emptyShapeNamesAreFound()
{
    const FlatPlies model({"B", "", "A", ""});
    const ZETLaserParameterProvider provider(&model.container);
    QCOMPARE(provider.EvaluateEmptyShapeNamePlies(model.configuration, u"%PLY%"_s).size(), 2);
    QCOMPARE(provider.EvaluateEmptyShapeNamePlies(model.configuration, u"x%PLY%"_s).size(), 0);
    const auto plies = provider.GetEvaluatingPlies(model.configuration);
    QCOMPARE(provider.EvaluateEmptyShapeNamePlies(model.configuration, u"%PLY%"_s),
             (QList<ZETCompPlyBase*>{plies.at(1), plies.at(3)}));
}

void TestLaserParameterProvider::usableShapeNameHasNoProblems()
{
    QVERIFY(FlatPlies({"A", "B"}).Problems(u"%PLY%"_s).isEmpty());
    QVERIFY(FlatPlies({}).Problems(u"%PLY%"_s).isEmpty());
}

void TestLaserParameterProvider::invalidShapeNameIsTheOnlyProblem()
{
    // Characters and duplicates aren't looked at any more.
    QCOMPARE(FlatPlies({"A", "A"}).Problems(u"\u00e4%XYZ%"_s), (QList<QString>{u"The text is invalid"_s}));
}

void TestLaserParameterProvider::duplicatedShapeNameIsAProblem()
{
    QCOMPARE(FlatPlies({"A", "A"}).Problems(u"%PLY%"_s), (QList<QString>{u"Duplicated shape name : A (2)."_s}));
    QCOMPARE(FlatPlies({"A", "B", "C"}).Problems(u"shape"_s),
             (QList<QString>{u"Duplicated shape name : shape (3)."_s}));
}

void TestLaserParameterProvider::duplicatedShapeNamesStandInKeyOrder()
{
    QCOMPARE(FlatPlies({"C", "A", "D", "B", "A", "C", "B", "A"}).Problems(u"%PLY%"_s),
             (QList<QString>{u"Duplicated shape name : A (3); B (2); C (2)."_s}));
}

void TestLaserParameterProvider::duplicatesAndCharactersAreTwoProblems()
{
    QCOMPARE(FlatPlies({"A", "A"}).Problems(u"%PLY%\u00e4\u00f6"_s),
             (QList<QString>{u"Unicode characters are not supported for 3D Text."_s,
                             u"Duplicated shape name : A\u00e4\u00f6 (2)."_s}));
}

void TestLaserParameterProvider::charactersOfThePatternCountAndNotThoseOfTheNames()
{
    QVERIFY(FlatPlies({"\u00e4"}).Problems(u"%PLY%"_s).isEmpty());
    QVERIFY(FlatPlies({"A"}).Problems(u"%PLY%\u007f"_s).isEmpty());
    QCOMPARE(FlatPlies({"A"}).Problems(u"%PLY%\u0080"_s),
             (QList<QString>{u"Unicode characters are not supported for 3D Text."_s}));
}

void TestLaserParameterProvider::emptyShapeNamesAreNoProblem()
{
    QVERIFY(FlatPlies({"A", "B"}).Problems(u"%SUBPLY%"_s).isEmpty());
}

void TestLaserParameterProvider::duplicatedNameMayHoldAPlaceMarker()
{
    // Meant: the count takes the place of the lowest marker that is left, which is the one in the name.
    QCOMPARE(FlatPlies({"%1", "%1"}).Problems(u"%PLY%"_s), (QList<QString>{u"Duplicated shape name : 2 (%2)."_s}));
}

void TestLaserParameterProvider::problemsAreTranslated()
{
    const TestTranslator translator("ZETLaserParameterProvider");
    const FlatPlies model({"A", "A", "B", "B"});
    QCOMPARE(model.Problems(u"%XYZ%"_s), (QList<QString>{u"* The text is invalid"_s}));
    QCOMPARE(model.Problems(u"\u00e4%PLY%"_s),
             (QList<QString>{u"* Unicode characters are not supported for 3D Text."_s,
                             u"* Duplicated shape name : * \u00e4A (2); * \u00e4B (2)."_s}));
}

void TestLaserParameterProvider::flatContourNeedsBothArguments()
{
    const Panel panel;
    ZETTestModel::AddFlatContour(panel.ply1, "C1");
    QCOMPARE(panel.Provider().GetEvaluatingFlatContourFromPly(nullptr, panel.ply1), nullptr);
    QCOMPARE(panel.Provider().GetEvaluatingFlatContourFromPly(panel.configuration, nullptr), nullptr);
}

void TestLaserParameterProvider::flatContourComesFromTheIncludedStrategy()
{
    const Panel panel;
    ZETTestModel::AddFlatContour(panel.ply1, "First");
    auto* second = ZETTestModel::AddStrategy(panel.ply1);
    auto* pattern = ZETTestModel::Add<ZETCompFlatPattern>(second, "Pattern");
    auto* contour = ZETTestModel::Add<ZETCompFlatContour>(pattern, "Second");
    ZETTestModel::Add<ZETCompFlatContour>(pattern, "Hole");
    ZETOpenComposites::SetIncluded(*panel.configuration, *panel.ply1, second);
    QCOMPARE(panel.Provider().GetEvaluatingFlatContourFromPly(panel.configuration, panel.ply1), contour);
}

void TestLaserParameterProvider::flatContourComesFromThePlyItselfIfNothingIsIncluded()
{
    const Panel panel;
    QCOMPARE(panel.Provider().GetEvaluatingFlatContourFromPly(panel.configuration, panel.ply1), nullptr);
    auto* contour =
        ZETTestModel::Add<ZETCompFlatContour>(ZETTestModel::Add<ZETCompFlatPattern>(panel.ply1, "First"), "Own");
    ZETTestModel::Add<ZETCompFlatContour>(ZETTestModel::Add<ZETCompFlatPattern>(panel.ply1, "Second"), "Other");
    ZETTestModel::AddFlatContour(panel.ply1, "Strategy's"); // not asked, because nothing is included
    ZETOpenComposites::SetIncluded(*panel.configuration, *panel.ply1, nullptr);
    QCOMPARE(panel.Provider().GetEvaluatingFlatContourFromPly(panel.configuration, panel.ply1), contour);
}

void TestLaserParameterProvider::flatContourComesFromAnotherStrategy()
{
    const Panel panel;
    auto* own = ZETTestModel::Add<ZETCompFlatPattern>(panel.ply1, "Own");
    ZETTestModel::Add<ZETCompFlatContour>(own, "Fallback");
    auto* bare = ZETTestModel::AddStrategy(panel.ply1);
    auto* contour = ZETTestModel::AddFlatContour(panel.ply1, "Second");
    ZETTestModel::AddFlatContour(panel.ply1, "Third");
    ZETOpenComposites::SetIncluded(*panel.configuration, *panel.ply1, bare);
    QCOMPARE(panel.Provider().GetEvaluatingFlatContourFromPly(panel.configuration, panel.ply1), contour);

    // A pattern without a contour doesn't count either.
    ZETTestModel::Add<ZETCompFlatPattern>(bare, "Empty");
    QCOMPARE(panel.Provider().GetEvaluatingFlatContourFromPly(panel.configuration, panel.ply1), contour);
}

void TestLaserParameterProvider::flatContourFallsBackToThePly()
{
    const Panel panel;
    auto* own = ZETTestModel::Add<ZETCompFlatPattern>(panel.ply1, "Own");
    auto* second = ZETTestModel::Add<ZETCompFlatPattern>(panel.ply1, "Second"); // only the first counts
    ZETTestModel::Add<ZETCompFlatContour>(second, "Other");
    ZETTestModel::AddStrategy(panel.ply1);
    QCOMPARE(panel.Provider().GetEvaluatingFlatContourFromPly(panel.configuration, panel.ply1), nullptr);
    auto* contour = ZETTestModel::Add<ZETCompFlatContour>(own, "Fallback");
    QCOMPARE(panel.Provider().GetEvaluatingFlatContourFromPly(panel.configuration, panel.ply1), contour);
}

void TestLaserParameterProvider::flatContourMayStandDeep()
{
    const Panel panel;
    auto* pattern = ZETTestModel::Add<ZETCompFlatPattern>(ZETTestModel::AddStrategy(panel.ply1), "Pattern");
    auto* folder = ZETTestModel::Add<ZETFeatFolder>(pattern, "Folder");
    auto* contour = ZETTestModel::Add<ZETCompFlatContour>(folder, "Deep");
    ZETTestModel::Add<ZETCompFlatContour>(pattern, "Behind");
    QCOMPARE(panel.Provider().GetEvaluatingFlatContourFromPly(panel.configuration, panel.ply1), contour);
}

void TestLaserParameterProvider::flatContoursOfTheModelStandForSubPlies()
{
    const Panel panel;
    ZETTestModel::AddFlatContour(panel.ply1, "C1");
    ZETTestModel::AddFlatContour(panel.ply2, "C2"); // behind the subdivision, which is what is included
    const ZETLaserParameterProvider provider = panel.Provider();
    QCOMPARE(ZETTestModel::Labels(provider.GetEvaluatingFlatContours(panel.configuration)), u"C1 C2"_s);
    ZETTestModel::AddFlatContour(panel.subPlyA, "CA");
    QCOMPARE(ZETTestModel::Labels(provider.GetEvaluatingFlatContours(panel.configuration)), u"C1 CA"_s);
    ZETTestModel::AddFlatContour(panel.subPlyB, "CB");
    QCOMPARE(ZETTestModel::Labels(provider.GetEvaluatingFlatContours(panel.configuration)), u"C1 CA CB"_s);
}

void TestLaserParameterProvider::flatContoursHeedNoEnabledState()
{
    const Panel panel;
    ZETTestModel::AddFlatContour(panel.ply1, "C1");
    ZETTestModel::AddFlatContour(panel.subPlyA, "CA");
    ZETTestModel::Disable(panel.layup);
    QVERIFY(panel.Provider().GetEvaluatingPlies(panel.configuration).isEmpty());
    QCOMPARE(ZETTestModel::Labels(panel.Provider().GetEvaluatingFlatContours(panel.configuration)), u"C1 CA"_s);
}

void TestLaserParameterProvider::flatContoursNeedACompositeModel()
{
    const Panel panel;
    ZETTestModel::AddFlatContour(panel.ply1, "C1");
    QVERIFY(panel.Provider().GetEvaluatingFlatContours(nullptr).isEmpty());
    ZETFeatContainer otherContainer;
    auto* alone = new ZETCompMfgConfiguration(&otherContainer, ZETGeoGeometryRef());
    QVERIFY(panel.Provider().GetEvaluatingFlatContours(alone).isEmpty());
}

QTEST_GUILESS_MAIN(TestLaserParameterProvider)
#include "TestLaserParameterProvider.moc"
