#include "features/ZETLaser3DText_p.h"
#include "features/ZETLaser3DTextByAxis.h"
#include "openhost/ZETWireframe/ZETOpenWireframe.h"
#include "tests/features/FeatureModel.h"

#include <ZETGeometry/ZETGeoGeometryNotFoundException.h>
#include <ZETMathematics/ZETMathAxis.h>

#include <QSignalSpy>
#include <QTest>

#include <limits>

using namespace Qt::Literals::StringLiterals;

using Text = ZETLaser3DTextByAxis;

namespace
{
static_assert(std::is_abstract_v<ZETLaser3DText>);

/*! An axis system at (1, 2, 3) that runs along Z and stands in X. */
ZETWFAxisSystem* MakeAxis(FeatureModel& model)
{
    ZETMathAxis axis;
    axis.SetOrigin(ZETMathPoint(1, 2, 3));
    axis.SetDirections(ZETMathVector(0, 0, 1), ZETMathVector(1, 0, 0), ZETMathVector(0, 1, 0));
    auto* system = model.Make<ZETWFAxisSystem>();
    ZETOpenWireframe::SetAxis(*system, axis);
    return system;
}

/*! A text that is valid but for what a test changes. */
Text* MakeText(FeatureModel& model)
{
    auto* text = model.Make<Text>();
    text->SetText(u"Ply 1"_s);
    text->SetAxis(MakeAxis(model));
    return text;
}
} // namespace

/*! The text by axis, and with it what all 3D texts have. */
class TestLaser3DTextByAxis : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void describesTheBase();
    void describesItself();
    void hasDefaults();
    void canBeMadeByTheMetaObject();
    void setterTellsOnceOfEachChange();
    void propertiesHaveDefaults();

    void takesItsPlaceFromTheAxis();
    void hasNoPlaceWithoutAxis();

    void updateHasNothingToSayOfAGoodText();
    void updateTestsSizeAndText_data();
    void updateTestsSizeAndText();
    void updateFailsWithoutAxis();
    void updateTellsOfAllThatIsWrong();

    void streamHoldsTextSizeAndAxis();
    void loadsWhatWasSavedAndTells();
    void loadTakesANullReferenceAsNoAxis();
    void loadThrowsForAReferenceWithoutItsAxis_data();
    void loadThrowsForAReferenceWithoutItsAxis();
    void livesInASavedModel();
};

void TestLaser3DTextByAxis::describesTheBase()
{
    const QMetaObject& type = ZETLaser3DText::staticMetaObject;
    QCOMPARE(type.superClass(), &ZETFeatObject::staticMetaObject);
    QCOMPARE(GetOwnClassInfo(type), (ClassInfo{{"defaultLabel", "3D Text"},
                                               {"inputProps", "text size"},
                                               {"outputProps", ""},
                                               {"visProps", "text size"},
                                               {"contextualActions", ""},
                                               {"editAction", ""},
                                               {"allowedParents", "ZETLaserExtraGeometry"},
                                               {"PropertyLabel_text", "Text"},
                                               {"PropertyLabel_size", "Size"}}));
    QCOMPARE(GetOwnProperties(type),
             (QList<QByteArray>{"QString text TextChanged(QString)", "double size SizeChanged(double)"}));
    QCOMPARE(ZETLaser3DText::Property_text, "text");
    QCOMPARE(ZETLaser3DText::Property_size, "size");
}

void TestLaser3DTextByAxis::describesItself()
{
    const QMetaObject& type = Text::staticMetaObject;
    QCOMPARE(type.superClass(), &ZETLaser3DText::staticMetaObject);
    QCOMPARE(GetOwnClassInfo(type), (ClassInfo{{"defaultLabel", "3D Text By Axis"},
                                               {"inputProps", "axis"},
                                               {"outputProps", ""},
                                               {"visProps", "axis"},
                                               {"contextualActions", ""},
                                               {"editAction", "ZETLaser3DTextCmd.Edit"},
                                               {"allowedParents", ""},
                                               {"PropertyLabel_axis", "Axis"}}));
    QCOMPARE(GetOwnProperties(type), (QList<QByteArray>{"ZETWFAxisSystem* axis AxisChanged(ZETWFAxisSystem*)"}));
    QCOMPARE(Text::Property_axis, "axis");
}

void TestLaser3DTextByAxis::hasDefaults()
{
    FeatureModel model;
    const auto* text = model.Make<Text>();
    QCOMPARE(text->GetLabel(), u"3D Text By Axis"_s);
    QCOMPARE(text->GetText(), QString());
    QCOMPARE(text->GetSize(), 10.0);
    QCOMPARE(text->GetAxis(), nullptr);
}

void TestLaser3DTextByAxis::canBeMadeByTheMetaObject()
{
    FeatureModel model;
    ZETFeatObject* parent = model.folder;
    const auto* text = qobject_cast<Text*>(Text::staticMetaObject.newInstance(Q_ARG(ZETFeatObject*, parent)));
    QVERIFY(text);
    QCOMPARE(text->GetParent(), parent);
    QCOMPARE(text->GetContainer(), &model.container);
}

void TestLaser3DTextByAxis::setterTellsOnceOfEachChange()
{
    FeatureModel model;
    auto* text = model.Make<Text>();
    auto* axis = MakeAxis(model);
    QSignalSpy texts(text, &Text::TextChanged);
    QSignalSpy sizes(text, &Text::SizeChanged);
    QSignalSpy axes(text, &Text::AxisChanged);
    for (int i = 0; i < 2; ++i) {
        text->SetText(u"A"_s);
        text->SetSize(2.5);
        text->SetAxis(axis);
    }
    QCOMPARE(texts, (QList<QVariantList>{{u"A"_s}}));
    QCOMPARE(sizes, (QList<QVariantList>{{2.5}}));
    QCOMPARE(axes.count(), 1);
    QCOMPARE(axes.first().first().value<ZETWFAxisSystem*>(), axis);
    QCOMPARE(text->GetText(), u"A"_s);
    QCOMPARE(text->GetSize(), 2.5);
    QCOMPARE(text->GetAxis(), axis);
}

void TestLaser3DTextByAxis::propertiesHaveDefaults()
{
    FeatureModel model;
    auto* text = model.Make<Text>();
    const auto& record = ZETLaser3DTextPrivate::Of(*text);
    QVERIFY(record.text->IsInitialised());
    QVERIFY(record.size->IsInitialised());
    text->SetSize(3.0);
    QVERIFY(!record.size->GetLastSavedValue().isValid());
}

void TestLaser3DTextByAxis::takesItsPlaceFromTheAxis()
{
    FeatureModel model;
    const auto* text = MakeText(model);
    QCOMPARE(text->GetBasePoint(), ZETMathPoint(1, 2, 3));
    QCOMPARE(text->GetBaseDirection(), ZETMathVector(0, 0, 1));
    QCOMPARE(text->GetUpDirection(), ZETMathVector(1, 0, 0));
}

void TestLaser3DTextByAxis::hasNoPlaceWithoutAxis()
{
    FeatureModel model;
    const auto* text = model.Make<Text>();
    QCOMPARE(text->GetBasePoint(), ZETMathPoint());
    QCOMPARE(text->GetBaseDirection(), ZETMathVector());
    QCOMPARE(text->GetUpDirection(), ZETMathVector());
}

void TestLaser3DTextByAxis::updateHasNothingToSayOfAGoodText()
{
    FeatureModel model;
    auto* text = MakeText(model);
    QCOMPARE(text->UpdateResult(), true);
    QCOMPARE(GetMessages(*text), QStringList());
}

void TestLaser3DTextByAxis::updateTestsSizeAndText_data()
{
    const QString badSize = u"3 size: The size must be greater than zero."_s;
    const QString noText = u"3 text: The text should not be empty."_s;
    const QString notAscii = u"2 text: Unicode characters are not supported for 3D Text."_s;
    QTest::addColumn<double>("size");
    QTest::addColumn<QString>("content");
    QTest::addColumn<bool>("result");
    QTest::addColumn<QStringList>("messages");
    QTest::newRow("smallest size") << 0.001 << u"A"_s << true << QStringList();
    QTest::newRow("size below") << 0.0005 << u"A"_s << false << QStringList{badSize};
    QTest::newRow("no size") << 0.0 << u"A"_s << false << QStringList{badSize};
    QTest::newRow("negative size") << -10.0 << u"A"_s << false << QStringList{badSize};
    QTest::newRow("a blank is a text") << 10.0 << u" "_s << true << QStringList();
    QTest::newRow("empty text") << 10.0 << QString() << false << QStringList{noText};
    QTest::newRow("empty text and no size") << 0.0 << QString() << false << QStringList{badSize, noText};
    QTest::newRow("last character of ASCII") << 10.0 << u"A\u007f"_s << true << QStringList();
    QTest::newRow("first behind it") << 10.0 << u"A\u0080"_s << false << QStringList{notAscii};
    QTest::newRow("two of them, one message") << 10.0 << u"äö"_s << false << QStringList{notAscii};
    QTest::newRow("surrogates") << 10.0 << u"\U0001F600"_s << false << QStringList{notAscii};
    QTest::newRow("not ASCII and no size") << 0.0 << u"Öl"_s << false << QStringList{badSize, notAscii};
    QTest::newRow("macros aren't expanded") << 10.0 << u"%NOSUCH%"_s << true << QStringList();
}

void TestLaser3DTextByAxis::updateTestsSizeAndText()
{
    QFETCH(double, size);
    QFETCH(QString, content);
    FeatureModel model;
    auto* text = MakeText(model);
    text->SetSize(size);
    text->SetText(content);
    QTEST(text->UpdateResult(), "result");
    QTEST(GetMessages(*text), "messages");
}

void TestLaser3DTextByAxis::updateFailsWithoutAxis()
{
    FeatureModel model;
    auto* text = MakeText(model);
    text->SetAxis(nullptr);
    QCOMPARE(text->UpdateResult(), false);
    QCOMPARE(GetMessages(*text), QStringList{u"3 axis: The text by axis must have an axis."_s});
}

void TestLaser3DTextByAxis::updateTellsOfAllThatIsWrong()
{
    FeatureModel model;
    auto* text = model.Make<Text>();
    text->SetSize(0.0);
    QCOMPARE(text->UpdateResult(), false);
    QCOMPARE(GetMessages(*text),
             (QStringList{u"3 size: The size must be greater than zero."_s, u"3 text: The text should not be empty."_s,
                          u"3 axis: The text by axis must have an axis."_s}));
}

void TestLaser3DTextByAxis::streamHoldsTextSizeAndAxis()
{
    FeatureModel model;
    auto* text = model.Make<Text>();
    QCOMPARE(GetOwnFields(*text), "ffffffff"
                                  "4024000000000000" +
                                      GetReference(nullptr));
    text->SetText(u"A"_s);
    text->SetSize(-1.5);
    text->SetAxis(MakeAxis(model));
    QCOMPARE(GetOwnFields(*text), "00000002"
                                  "0041"
                                  "bff8000000000000" +
                                      GetReference(text->GetAxis()));
}

void TestLaser3DTextByAxis::loadsWhatWasSavedAndTells()
{
    FeatureModel model;
    auto* text = model.Make<Text>();
    auto* axis = MakeAxis(model);
    QSignalSpy texts(text, &Text::TextChanged);
    QSignalSpy sizes(text, &Text::SizeChanged);
    QSignalSpy axes(text, &Text::AxisChanged);
    for (int i = 0; i < 2; ++i) // the second time nothing changes
        ZETOpenModelStream::LoadFields(*text, MakeFields("00000002"
                                                         "0041"
                                                         "3ff8000000000000" +
                                                         GetReference(axis)));
    QCOMPARE(text->GetText(), u"A"_s);
    QCOMPARE(text->GetSize(), 1.5);
    QCOMPARE(text->GetAxis(), axis);
    QCOMPARE(texts.count(), 1);
    QCOMPARE(sizes.count(), 1);
    QCOMPARE(axes.count(), 1);
}

void TestLaser3DTextByAxis::loadTakesANullReferenceAsNoAxis()
{
    FeatureModel model;
    auto* text = MakeText(model);
    ZETOpenModelStream::LoadFields(*text, MakeFields("ffffffff"
                                                     "3ff8000000000000" +
                                                     GetReference(nullptr)));
    QCOMPARE(text->GetAxis(), nullptr);
}

void TestLaser3DTextByAxis::loadThrowsForAReferenceWithoutItsAxis_data()
{
    QTest::addColumn<bool>("isOtherClass");
    QTest::newRow("deleted") << false;
    QTest::newRow("other class") << true;
}

void TestLaser3DTextByAxis::loadThrowsForAReferenceWithoutItsAxis()
{
    QFETCH(bool, isOtherClass);
    FeatureModel model;
    auto* text = model.Make<Text>();
    auto* axis = MakeAxis(model);
    const QByteArray fields = MakeFields("ffffffff"
                                         "3ff8000000000000" +
                                         GetReference(isOtherClass ? static_cast<ZETFeatObject*>(text) : axis));
    delete axis;
    QVERIFY_THROWS_EXCEPTION(ZETGeoGeometryNotFoundException, ZETOpenModelStream::LoadFields(*text, fields));
    QCOMPARE(text->GetAxis(), nullptr);
}

void TestLaser3DTextByAxis::livesInASavedModel()
{
    FeatureModel model;
    auto* text = model.Make<Text>(); // ahead of its axis
    text->SetText(u"Ply %PLY%"_s);
    text->SetSize(0.1);
    text->SetAxis(MakeAxis(model));
    const auto loaded = ZETOpenModelStream::Load(ZETOpenModelStream::Save(model.container));
    const auto* copy = qobject_cast<Text*>(ZETOpenModel::GetTopFeatures(*loaded).first()->GetChildren().first());
    QVERIFY(copy);
    QCOMPARE(copy->GetText(), u"Ply %PLY%"_s);
    QCOMPARE(copy->GetSize(), 0.1);
    QCOMPARE(copy->GetBasePoint(), ZETMathPoint(1, 2, 3));
    QCOMPARE(copy->GetBaseDirection(), ZETMathVector(0, 0, 1));
}

QTEST_GUILESS_MAIN(TestLaser3DTextByAxis)
#include "TestLaser3DTextByAxis.moc"
