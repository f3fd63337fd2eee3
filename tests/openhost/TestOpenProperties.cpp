#include "openhost/ZETFeature/ZETOpenModel.h"
#include "OpenTestFeatures.h"
#include "tests/support/TestThrown.h"

#include <QSignalSpy>
#include <QtTest>

using namespace Qt::Literals::StringLiterals;

/*! A feature with a property of each kind, and a signal of each form. */
class AnyFeature : public ZETFeatObject
{
    Q_OBJECT
    Q_CLASSINFO("inputProps", "number target list")
    Q_PROPERTY(double number READ GetNumber NOTIFY NumberChanged)
    Q_PROPERTY(int kind READ GetKindNumber NOTIFY KindChanged)
    Q_PROPERTY(QString text READ GetText NOTIFY TextChanged)
    Q_PROPERTY(QString quiet READ GetQuiet)
    Q_PROPERTY(int pair READ GetPair NOTIFY PairChanged)
    Q_PROPERTY(int other READ GetOther NOTIFY OtherChanged)
    Q_PROPERTY(AnyFeature* target READ GetTarget NOTIFY TargetChanged)
    Q_PROPERTY(QList<AnyFeature*> list READ GetList NOTIFY ListChanged)
public:
    enum Kind : int { KindNone, KindFirst, KindSecond }; // of a fixed type, so that any int is a value of it
    Q_ENUM(Kind)

    AnyFeature()
        : ZETFeatObject(ZETGeoGeometryRef(), nullptr)
    {
    }

    static int Index(const char* property) { return staticMetaObject.indexOfProperty(property); }
    static int Signal(const char* signature) { return staticMetaObject.indexOfSignal(signature); }

    double GetNumber() const { return number.GetValue(); }
    int GetKindNumber() const { return kind.GetValue(); }
    QString GetText() const { return text.GetValue(); }
    QString GetQuiet() const { return quiet.GetValue(); }
    int GetPair() const { return pair.GetValue(); }
    int GetOther() const { return other.GetValue(); }
    AnyFeature* GetTarget() const { return target.GetObject(); }
    QList<AnyFeature*> GetList() const { return list.GetObjects(); }

    ZETFeatValueProperty<double> number{this, Index("number"), 1.5};
    ZETFeatValueProperty<Kind> kind{this, Index("kind")};
    ZETFeatValueProperty<QString> text{this, Index("text"), QString()};
    ZETFeatValueProperty<QString> quiet{this, Index("quiet"), QString()};
    ZETFeatValueProperty<int> pair{this, Index("pair"), 0};
    ZETFeatValueProperty<int> other{this, Index("other"), 0};
    ZETFeatObjectProperty<AnyFeature> target{this, Index("target")};
    ZETFeatObjectListProperty<AnyFeature> list{this, Index("list")};

signals:
    void NumberChanged(double value);
    void KindChanged(const AnyFeature::Kind& value);
    void TextChanged();
    void PairChanged(int first, int second);
    void OtherChanged(const QString& value);
    void TargetChanged(AnyFeature* value);
    void ListChanged(const QList<AnyFeature*>& value);
    void Element(AnyFeature* element);
    void ConstElement(const AnyFeature* element);
    void NoElement();
    void OtherElement(int element);
};

namespace
{
const QString notEmitted = QStringLiteral("Could not emit the property changed signal.");
} // namespace

class TestOpenProperties : public QObject
{
    Q_OBJECT
private slots:
    void equalValueChangesNothing();
    void changeEmitsTheNewValue();
    void valueIsStoredWhenTheSignalGoesOut();
    void valueStoredUnderAnotherTypeIsConverted();
    void signalWithoutParametersIsEmitted();
    void propertyWithoutSignalIsSilent();
    void negativeIndexIsSilent();
    void silentChangeEmitsNothing();
    void signalThatDoesNotMatchThrows();
    void resetToLastSavedIsSilent();
    void resetConvertsTheLastSavedValue();
    void resetWithoutLastSavedValueChangesNothing();
    void defaultMakesAPropertyInitialised();
    void requestedInitializationGivesAFirstValue();
    void valuesHaveNoLimits();
    void objectIsTakenOnce();
    void objectReadsNullWhenItHasGone();
    void objectResetsToLastSaved();
    void listEmitsTheWholeListForEachChange();
    void listTakesNullAndTheSameTwice();
    void listRemovesTheFirstThatMatches();
    void listRefusesToRemoveAStranger();
    void listIsEmptiedInOneBracket();
    void elementSignalsTakeEachForm_data();
    void elementSignalsTakeEachForm();
    void elementSignalsComeBehindTheListSignal();
    void elementSignalsThatFailSayWhy();
    void inputsOutdateTheirFeature();
    void nestedBracketsOutdateOnce();
    void listItemsCountAsTheirList();
};

void TestOpenProperties::equalValueChangesNothing()
{
    AnyFeature feature;
    const QSignalSpy spy(&feature, &AnyFeature::NumberChanged);
    QVERIFY(!feature.number.SetValue(1.5, false));
    QCOMPARE(spy.count(), 0);
    QVERIFY(feature.number.SetValue(2.0, false));
    QVERIFY(!feature.number.SetValue(2.0, false));
    QCOMPARE(spy.count(), 1);
}

void TestOpenProperties::changeEmitsTheNewValue()
{
    AnyFeature feature;
    const QSignalSpy spy(&feature, &AnyFeature::NumberChanged);
    QVERIFY(feature.number.SetValue(0.1, false));
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.first().first().toDouble(), 0.1);
}

void TestOpenProperties::valueIsStoredWhenTheSignalGoesOut()
{
    AnyFeature feature;
    double seen = 0.0;
    connect(&feature, &AnyFeature::NumberChanged, [&] { seen = feature.GetNumber(); });
    feature.number.SetValue(7.0, false);
    QCOMPARE(seen, 7.0);
}

void TestOpenProperties::valueStoredUnderAnotherTypeIsConverted()
{
    AnyFeature feature;
    QList<AnyFeature::Kind> seen;
    connect(&feature, &AnyFeature::KindChanged, [&](const AnyFeature::Kind& kind) { seen.append(kind); });
    QVERIFY(feature.kind.SetValue(AnyFeature::KindSecond, false));
    QVERIFY(feature.kind.SetValue(static_cast<AnyFeature::Kind>(77), false)); // outside the enumeration
    QCOMPARE(seen, (QList<AnyFeature::Kind>{AnyFeature::KindSecond, static_cast<AnyFeature::Kind>(77)}));
}

void TestOpenProperties::signalWithoutParametersIsEmitted()
{
    AnyFeature feature;
    const QSignalSpy spy(&feature, &AnyFeature::TextChanged);
    QVERIFY(feature.text.SetValue(u"x"_s, false));
    QCOMPARE(spy.count(), 1);
}

void TestOpenProperties::propertyWithoutSignalIsSilent()
{
    AnyFeature feature;
    QVERIFY(feature.quiet.SetValue(u"x"_s, false));
    QCOMPARE(feature.GetQuiet(), u"x"_s);
}

void TestOpenProperties::negativeIndexIsSilent()
{
    AnyFeature feature;
    ZETFeatValueProperty<double> loose(&feature, -1, 0.0);
    const QSignalSpy spy(&feature, &AnyFeature::NumberChanged);
    QVERIFY(loose.SetValue(3.0, false));
    QCOMPARE(loose.GetValue(), 3.0);
    QVERIFY(!loose.IsInputProperty());
    QCOMPARE(spy.count(), 0);
}

void TestOpenProperties::silentChangeEmitsNothing()
{
    AnyFeature feature;
    QVERIFY(feature.UpdateResult());
    const QSignalSpy spy(&feature, &AnyFeature::NumberChanged);
    QVERIFY(feature.number.SetValue(2.0, true));
    QVERIFY(feature.pair.SetValue(2, true)); // so its signal can't fail
    QCOMPARE(spy.count(), 0);
    QCOMPARE(feature.GetNumber(), 2.0);
}

void TestOpenProperties::signalThatDoesNotMatchThrows()
{
    AnyFeature feature;
    QCOMPARE(Thrown([&] { feature.pair.SetValue(2, false); }), notEmitted);
    QCOMPARE(feature.GetPair(), 2); // stored all the same
    const QSignalSpy spy(&feature, &AnyFeature::OtherChanged);
    QCOMPARE(Thrown([&] { feature.other.SetValue(2, false); }), notEmitted);
    QCOMPARE(spy.count(), 0);
}

void TestOpenProperties::resetToLastSavedIsSilent()
{
    AnyFeature feature;
    feature.number.SetLastSavedValue(4.0);
    feature.number.SetValue(9.0, false);
    const QSignalSpy spy(&feature, &AnyFeature::NumberChanged);
    feature.number.ResetToLastSaved();
    QCOMPARE(feature.GetNumber(), 4.0);
    QCOMPARE(spy.count(), 0);
}

void TestOpenProperties::resetConvertsTheLastSavedValue()
{
    AnyFeature feature;
    feature.number.SetLastSavedValue(u"2.5"_s);
    feature.number.ResetToLastSaved();
    QCOMPARE(feature.GetNumber(), 2.5);
    feature.kind.SetLastSavedValue(2);
    feature.kind.ResetToLastSaved();
    QCOMPARE(feature.kind.GetValue(), AnyFeature::KindSecond);
}

void TestOpenProperties::resetWithoutLastSavedValueChangesNothing()
{
    AnyFeature feature;
    QVERIFY(!feature.number.GetLastSavedValue().isValid());
    feature.number.SetValue(9.0, false);
    feature.number.ResetToLastSaved();
    QCOMPARE(feature.GetNumber(), 9.0);
}

void TestOpenProperties::defaultMakesAPropertyInitialised()
{
    AnyFeature feature;
    QVERIFY(feature.number.IsInitialised());
    QVERIFY(!feature.kind.IsInitialised());
    QCOMPARE(feature.kind.GetValue(), AnyFeature::KindNone);
    // The flag says how the property was built, so a value doesn't set it.
    feature.kind.SetValue(AnyFeature::KindFirst, false);
    QVERIFY(!feature.kind.IsInitialised());
}

void TestOpenProperties::requestedInitializationGivesAFirstValue()
{
    AnyFeature feature;
    QVERIFY(!feature.kind.GetLastSavedValue().isValid());
    feature.Initialize();
    QCOMPARE(feature.kind.GetLastSavedValue(), QVariant(0));
    QVERIFY(!feature.number.GetLastSavedValue().isValid()); // it has its default, and asked for nothing

    AnyFeature saved;
    saved.kind.SetLastSavedValue(2);
    saved.Initialize();
    QCOMPARE(saved.kind.GetLastSavedValue(), QVariant(2));
}

void TestOpenProperties::valuesHaveNoLimits()
{
    AnyFeature feature;
    QVERIFY(!feature.number.HasLimits());
    QVERIFY(feature.number.TestLimits());
    QVERIFY(!feature.number.GetMinLimit().isValid());
    QVERIFY(!feature.number.GetMaxLimit().isValid());
}

void TestOpenProperties::objectIsTakenOnce()
{
    AnyFeature feature;
    AnyFeature target;
    const QSignalSpy spy(&feature, &AnyFeature::TargetChanged);
    QVERIFY(!feature.target.SetObject(nullptr, false));
    QVERIFY(feature.target.SetObject(&target, false));
    QVERIFY(!feature.target.SetObject(&target, false));
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.first().first().value<AnyFeature*>(), &target);
    QVERIFY(feature.target.SetObject(nullptr, true));
    QCOMPARE(spy.count(), 1);
    QCOMPARE(feature.GetTarget(), nullptr);
    QVERIFY(!feature.target.CanExternalReference(&target));
}

void TestOpenProperties::objectReadsNullWhenItHasGone()
{
    AnyFeature feature;
    auto target = std::make_unique<AnyFeature>();
    feature.target.SetObject(target.get(), false);
    feature.list.AppendObject(target.get(), false);
    target.reset();
    QCOMPARE(feature.GetTarget(), nullptr);
    QCOMPARE(feature.GetList(), QList<AnyFeature*>{nullptr});

    // And the other way round: the property goes first.
    AnyFeature remaining;
    {
        AnyFeature passing;
        passing.target.SetObject(&remaining, false);
        passing.list.AppendObject(&remaining, false);
    }
    remaining.SetOutdated();
}

void TestOpenProperties::objectResetsToLastSaved()
{
    ZETFeatContainer container;
    auto* root = new TestRoot(&container);
    TestNode* a = new TestNode(root);
    TestNode* b = new TestNode(root);
    ZETFeatObjectProperty<TestNode> property(a, TestNode::staticMetaObject.indexOfProperty("other"));
    property.SetObject(b, false);
    property.ResetToLastSaved();
    QCOMPARE(property.GetObject(), b); // never saved
    a->BeginStateLoad();
    a->EndStateLoad();
    property.SetObject(a, false);
    const QSignalSpy spy(a, &TestNode::OtherChanged);
    property.ResetToLastSaved();
    QCOMPARE(property.GetObject(), b);
    QCOMPARE(spy.count(), 0);
}

void TestOpenProperties::listEmitsTheWholeListForEachChange()
{
    AnyFeature feature;
    AnyFeature a;
    AnyFeature b;
    QList<QList<AnyFeature*>> seen;
    connect(&feature, &AnyFeature::ListChanged, [&](const QList<AnyFeature*>& list) { seen.append(list); });
    feature.list.AppendObject(&a, false);
    feature.list.AppendObject(&b, false);
    feature.list.RemoveFirst(false);
    feature.list.RemoveFirst(true);
    QCOMPARE(seen, (QList<QList<AnyFeature*>>{{&a}, {&a, &b}, {&b}}));
    QVERIFY(feature.list.IsEmpty());
}

void TestOpenProperties::listTakesNullAndTheSameTwice()
{
    AnyFeature feature;
    AnyFeature a;
    for (AnyFeature* object : {&a, static_cast<AnyFeature*>(nullptr), &a})
        feature.list.AppendObject(object, false);
    QCOMPARE(feature.GetList(), (QList<AnyFeature*>{&a, nullptr, &a}));
    QCOMPARE(feature.list.GetCount(), 3);
    QCOMPARE(feature.list.GetItem(2).GetObject(), &a);
}

void TestOpenProperties::listRemovesTheFirstThatMatches()
{
    AnyFeature feature;
    AnyFeature a;
    AnyFeature b;
    for (AnyFeature* object : {&a, &b, &a})
        feature.list.AppendObject(object, true);
    const QSignalSpy spy(&feature, &AnyFeature::ListChanged);
    feature.list.RemoveObject(&a, false);
    QCOMPARE(feature.GetList(), (QList<AnyFeature*>{&b, &a}));
    QCOMPARE(spy.count(), 1);
}

void TestOpenProperties::listRefusesToRemoveAStranger()
{
    AnyFeature feature;
    AnyFeature a;
    feature.list.AppendObject(&a, false);
    QCOMPARE(Thrown([&] { feature.list.RemoveObject(&feature, false); }),
             u"Cannot remove an item that is not contained in the list."_s);
    QCOMPARE(feature.list.GetCount(), 1);
}

void TestOpenProperties::listIsEmptiedInOneBracket()
{
    AnyFeature feature;
    AnyFeature a;
    feature.list.AppendObject(&a, true);
    feature.list.AppendObject(&a, true);
    const QSignalSpy spy(&feature, &AnyFeature::ListChanged);
    feature.list.RemoveAll(false);
    feature.list.RemoveAll(false);
    QCOMPARE(spy.count(), 1);
    QVERIFY(feature.list.IsEmpty());
}

void TestOpenProperties::elementSignalsTakeEachForm_data()
{
    QTest::addColumn<QByteArray>("signature");
    QTest::addColumn<int>("arguments");
    QTest::newRow("pointer") << QByteArray("Element(AnyFeature*)") << 1;
    QTest::newRow("pointer to constant") << QByteArray("ConstElement(const AnyFeature*)") << 1;
    QTest::newRow("nothing") << QByteArray("NoElement()") << 0;
}

void TestOpenProperties::elementSignalsTakeEachForm()
{
    QFETCH(QByteArray, signature);
    QFETCH(int, arguments);
    AnyFeature feature;
    AnyFeature a;
    const int index = AnyFeature::Signal(signature);
    QVERIFY(index >= 0);
    const QSignalSpy spy(&feature, ("2" + signature).constData());
    ZETFeatObjectListProperty<AnyFeature> list(&feature, -1, index, index);
    list.AppendObject(&a, false);
    QCOMPARE(spy.count(), 1);
    list.RemoveFirst(false);
    QCOMPARE(spy.count(), 2);
    for (const QList<QVariant>& values : spy) {
        QCOMPARE(values.size(), arguments);
        if (arguments > 0)
            QCOMPARE(*static_cast<AnyFeature* const*>(values.first().constData()), &a);
    }
}

void TestOpenProperties::elementSignalsComeBehindTheListSignal()
{
    AnyFeature feature;
    AnyFeature a;
    QStringList seen;
    connect(&feature, &AnyFeature::ListChanged, [&] { seen.append(u"list"_s); });
    connect(&feature, &AnyFeature::Element, [&] { seen.append(u"element"_s); });
    const int index = AnyFeature::Signal("Element(AnyFeature*)");
    ZETFeatObjectListProperty<AnyFeature> list(&feature, AnyFeature::Index("list"), index, index);
    list.AppendObject(&a, false);
    list.RemoveObject(&a, false);
    QCOMPARE(seen, (QStringList{u"list"_s, u"element"_s, u"list"_s, u"element"_s}));
}

void TestOpenProperties::elementSignalsThatFailSayWhy()
{
    AnyFeature feature;
    AnyFeature a;
    ZETFeatObjectListProperty<AnyFeature> invalid(&feature, -1, 9999, 9999);
    QCOMPARE(Thrown([&] { invalid.AppendObject(&a, false); }), u"The added signal is invalid."_s);
    QCOMPARE(Thrown([&] { invalid.RemoveFirst(false); }), u"The removed signal is invalid."_s);
    QVERIFY(invalid.IsEmpty());

    const int index = AnyFeature::Signal("OtherElement(int)");
    ZETFeatObjectListProperty<AnyFeature> wrong(&feature, -1, index, index);
    QCOMPARE(Thrown([&] { wrong.AppendObject(&a, false); }),
             u"Could not emit the added signal because the signature could not be deduced."_s);
    QCOMPARE(Thrown([&] { wrong.RemoveObject(&a, false); }),
             u"Could not emit the removed signal because the signature could not be deduced."_s);

    ZETFeatObjectListProperty<AnyFeature> none(&feature, -1);
    none.AppendObject(&a, false);
    none.RemoveFirst(false);
    QVERIFY(none.IsEmpty());
}

void TestOpenProperties::inputsOutdateTheirFeature()
{
    ZETFeatContainer container;
    auto* root = new TestRoot(&container);
    auto* leaf = new TestLeaf(new TestNode(root));
    const auto isOutdatedBy = [&](const auto& change) {
        ZETOpenModel::Update(container);
        change();
        return ZETOpenModel::IsOutdated(*leaf);
    };
    QVERIFY(isOutdatedBy([&] { leaf->SetNote(u"x"_s); }));
    QVERIFY(isOutdatedBy([&] { leaf->SetAmount(4); })); // the input of its base
    QVERIFY(!isOutdatedBy([&] { leaf->SetAmount(4); }));
    QVERIFY(isOutdatedBy([&] { leaf->SetOther(leaf); }));
    QVERIFY(!isOutdatedBy([&] { leaf->AppendOther(leaf); })); // no input
    QVERIFY(!isOutdatedBy([&] { // a feature that is being loaded has its state in the stream
        leaf->BeginStateLoad();
        leaf->SetAmount(5);
        leaf->EndStateLoad();
    }));
    QVERIFY(isOutdatedBy([&] { leaf->SetAmount(6); }));
}

void TestOpenProperties::nestedBracketsOutdateOnce()
{
    ZETFeatContainer container;
    auto* node = new TestNode(new TestRoot(&container));
    ZETFeatValueProperty<int> property(node, TestNode::staticMetaObject.indexOfProperty("amount"), 0);
    ZETOpenModel::Update(container);
    property.BeginModify();
    property.SetValue(3, true);
    QVERIFY(!ZETOpenModel::IsOutdated(*node));
    property.EndModify(true);
    QVERIFY(ZETOpenModel::IsOutdated(*node));
}

void TestOpenProperties::listItemsCountAsTheirList()
{
    AnyFeature feature;
    AnyFeature a;
    feature.list.AppendObject(&a, false);
    QVERIFY(feature.list.IsInputProperty());
    QVERIFY(feature.list.GetItem(0).IsInputProperty());
    QCOMPARE(feature.list.GetItem(0).GetFeature(), &feature);
    QVERIFY(feature.list.GetItem(0).GetPropertyIndex() < 0);
    ZETFeatObjectListProperty<AnyFeature> loose(&feature, -1);
    loose.AppendObject(&a, false);
    QVERIFY(!loose.GetItem(0).IsInputProperty());
}

QTEST_GUILESS_MAIN(TestOpenProperties)
#include "TestOpenProperties.moc"
