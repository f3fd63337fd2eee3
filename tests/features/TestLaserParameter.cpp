#include "features/ZETLaserParameter.h"
#include "features/ZETLaserParameter_p.h"
#include "tests/features/FeatureModel.h"

#include <ZETSystem/ZETSysException.h>

#include <QMetaEnum>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

using Parameter = ZETLaserParameter;

class TestLaserParameter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void describesItself();
    void hasDefaults();
    void canBeMadeUnderAParent();
    void namesTypes_data();
    void namesTypes();
    void listsTypesInOrder();
    void setterTellsOnceOfEachChange();
    void remembersTheTypeAsLastSavedAndNotTheText();

    void updateFailsForAnEmptyText();
    void updateTakesABlankAsText();

    void streamHoldsTypeAndText();
    void loadsWhatWasSavedAndTells();
    void loadKeepsUnknownTypes();
    void livesInASavedModel();
    void standsOnlyInExtraGeometry();
};

void TestLaserParameter::describesItself()
{
    const QMetaObject& type = Parameter::staticMetaObject;
    QCOMPARE(type.superClass(), &ZETFeatObject::staticMetaObject);
    QCOMPARE(GetOwnClassInfo(type), (ClassInfo{{"defaultLabel", "Laser Parameter"},
                                               {"inputProps", "type text"},
                                               {"outputProps", ""},
                                               {"visProps", ""},
                                               {"contextualActions", ""},
                                               {"editAction", "ZETLaserParameterCmd.Edit"},
                                               {"allowedParents", "ZETLaserExtraGeometry"},
                                               {"PropertyLabel_type", "Type"},
                                               {"PropertyLabel_text", "Text"}}));
    QCOMPARE(GetOwnProperties(type),
             (QList<QByteArray>{"ZETLaserParameter::ParameterType type TypeChanged(ParameterType)",
                                "QString text TextChanged(QString)"}));
    QCOMPARE(Parameter::Property_type, "type");
    QCOMPARE(Parameter::Property_text, "text");
}

void TestLaserParameter::hasDefaults()
{
    FeatureModel model;
    const auto* parameter = model.Make<Parameter>();
    QCOMPARE(parameter->GetLabel(), u"Laser Parameter"_s);
    QCOMPARE(parameter->GetType(), Parameter::Information);
    QCOMPARE(parameter->GetText(), QString());
}

void TestLaserParameter::canBeMadeUnderAParent()
{
    FeatureModel model;
    const auto* parameter = new Parameter(model.folder);
    QCOMPARE(parameter->GetParent(), model.folder);
    QCOMPARE(parameter->GetContainer(), &model.container);
}

void TestLaserParameter::namesTypes_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("key");
    QTest::newRow("-1") << -1 << QString() << QByteArray();
    QTest::newRow("0") << 0 << u"Information"_s << "Information"_ba;
    QTest::newRow("1") << 1 << u"Message"_s << "Message"_ba;
    QTest::newRow("2") << 2 << u"Graphic"_s << "Graphic"_ba;
    QTest::newRow("3") << 3 << u"Query"_s << "Query"_ba;
    QTest::newRow("4") << 4 << u"Literal"_s << "Literal"_ba;
    QTest::newRow("5") << 5 << u"Note"_s << "Note"_ba;
    QTest::newRow("6") << 6 << QString() << QByteArray();
}

void TestLaserParameter::namesTypes()
{
    QFETCH(int, type);
    QFETCH(QString, name);
    QFETCH(QByteArray, key);
    QCOMPARE(Parameter::GetParameterTypeString(static_cast<Parameter::ParameterType>(type)), name);
    QCOMPARE(QByteArray(QMetaEnum::fromType<Parameter::ParameterType>().valueToKey(type)), key);
}

void TestLaserParameter::listsTypesInOrder()
{
    const QList<Parameter::ParameterType> types = Parameter::GetAllParameterTypes();
    QCOMPARE(types.size(), 6);
    for (int i = 0; i < 6; ++i)
        QCOMPARE(int(types.at(i)), i);
}

void TestLaserParameter::setterTellsOnceOfEachChange()
{
    FeatureModel model;
    auto* parameter = model.Make<Parameter>();
    QSignalSpy types(parameter, &Parameter::TypeChanged);
    QSignalSpy texts(parameter, &Parameter::TextChanged);
    for (int i = 0; i < 2; ++i) {
        parameter->SetType(Parameter::Query);
        parameter->SetText(u"%PLY%"_s);
    }
    QCOMPARE(types.count(), 1);
    QCOMPARE(types.first().first().value<Parameter::ParameterType>(), Parameter::Query);
    QCOMPARE(texts, (QList<QVariantList>{{u"%PLY%"_s}}));
    QCOMPARE(parameter->GetType(), Parameter::Query);
    QCOMPARE(parameter->GetText(), u"%PLY%"_s);
}

void TestLaserParameter::remembersTheTypeAsLastSavedAndNotTheText()
{
    FeatureModel model;
    auto* parameter = model.Make<Parameter>();
    parameter->SetType(Parameter::Note);
    parameter->SetText(u"x"_s);
    const auto& record = ZETLaserParameterPrivate::Of(*parameter);
    QCOMPARE(record.type.GetLastSavedValue().value<Parameter::ParameterType>(), Parameter::Note);
    QVERIFY(!record.text.GetLastSavedValue().isValid()); // built with a default
}

void TestLaserParameter::updateFailsForAnEmptyText()
{
    FeatureModel model;
    auto* parameter = model.Make<Parameter>();
    QCOMPARE(parameter->UpdateResult(), false);
    QCOMPARE(GetMessages(*parameter), QStringList{u"3 text: The text should not be empty."_s});
}

void TestLaserParameter::updateTakesABlankAsText()
{
    FeatureModel model;
    auto* parameter = model.Make<Parameter>();
    parameter->SetText(u" "_s);
    QCOMPARE(parameter->UpdateResult(), true);
    QCOMPARE(GetMessages(*parameter), QStringList());
}

void TestLaserParameter::streamHoldsTypeAndText()
{
    FeatureModel model;
    auto* parameter = model.Make<Parameter>();
    parameter->SetType(Parameter::Literal);
    parameter->SetText(u"Aé"_s);
    QCOMPARE(GetOwnFields(*parameter), "00000004"
                                       "00000004"
                                       "004100e9");
}

void TestLaserParameter::loadsWhatWasSavedAndTells()
{
    FeatureModel model;
    auto* parameter = model.Make<Parameter>();
    QSignalSpy types(parameter, &Parameter::TypeChanged);
    QSignalSpy texts(parameter, &Parameter::TextChanged);
    for (int i = 0; i < 2; ++i) // the second time nothing changes
        ZETOpenModelStream::LoadFields(*parameter, MakeFields("00000002"
                                                              "00000002"
                                                              "0041"));
    QCOMPARE(parameter->GetType(), Parameter::Graphic);
    QCOMPARE(parameter->GetText(), u"A"_s);
    QCOMPARE(types.count(), 1);
    QCOMPARE(texts.count(), 1);
    QCOMPARE(ZETLaserParameterPrivate::Of(*parameter).type.GetLastSavedValue().value<Parameter::ParameterType>(),
             Parameter::Graphic);
}

void TestLaserParameter::loadKeepsUnknownTypes()
{
    FeatureModel model;
    auto* parameter = model.Make<Parameter>();
    ZETOpenModelStream::LoadFields(*parameter, MakeFields("fffffffe"
                                                          "ffffffff"));
    QCOMPARE(int(parameter->GetType()), -2);
    QCOMPARE(GetOwnFields(*parameter), "fffffffe"
                                       "ffffffff");
}

void TestLaserParameter::livesInASavedModel()
{
    FeatureModel model;
    auto* parameter = model.Make<Parameter>();
    parameter->SetType(Parameter::Note);
    parameter->SetText(u"keep dry"_s);
    const auto loaded = ZETOpenModelStream::Load(ZETOpenModelStream::Save(model.container));
    const auto* copy = qobject_cast<Parameter*>(ZETOpenModel::GetTopFeatures(*loaded).first()->GetChildren().first());
    QVERIFY(copy);
    QCOMPARE(copy->GetType(), Parameter::Note);
    QCOMPARE(copy->GetText(), u"keep dry"_s);
}

void TestLaserParameter::standsOnlyInExtraGeometry()
{
    ZETFeatContainer container;
    ZETFeatObject* ply = ZETOpenModel::Create("ZETCompPly", container);
    QVERIFY_THROWS_EXCEPTION(ZETSysException, ZETOpenModel::Create("ZETLaserParameter", *ply));
    ZETFeatObject* extra = ZETOpenModel::Create("ZETLaserExtraGeometry", *ply);
    QVERIFY(qobject_cast<Parameter*>(ZETOpenModel::Create("ZETLaserParameter", *extra)));
}

QTEST_GUILESS_MAIN(TestLaserParameter)
#include "TestLaserParameter.moc"
