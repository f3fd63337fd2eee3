#include "openhost/ZETMaterial/ZETOpenMaterial.h"

#include <ZETFeature/ZETFeatContainer.h>
#include <ZETMaterial/ZETMatDefinition.h>
#include <ZETMaterial/ZETMatMaterial.h>
#include <ZETMaterial/ZETMatPackaging.h>

#include <QtTest>

class TestOpenMaterial : public QObject
{
    Q_OBJECT

private slots:
    void aNewMaterialIsEmpty();
    void whatIsSetIsAnswered();
    void anEmptyDefinitionEqualsAnother();
    void aDefinitionTakesItsAllowedPropertiesFromTheFeature();
    void whatIsNotCommittedDoesNotCount();
    void aCopyOfADefinitionIsItsOwn();
    void aNullFeatureIsPassedOver();
};

void TestOpenMaterial::aNewMaterialIsEmpty()
{
    const ZETMatMaterial material(nullptr);
    QCOMPARE(material.GetMaterialType(), QString());
    QCOMPARE(material.GetMaterialId(), QString());
    QCOMPARE(material.GetThickness(), 0.0);
    QCOMPARE(material.GetLabel(), QStringLiteral("Material"));
}

void TestOpenMaterial::whatIsSetIsAnswered()
{
    ZETMatMaterial material(nullptr);
    ZETOpenMaterial::SetMaterialType(material, QStringLiteral("Twill"));
    ZETOpenMaterial::SetMaterialId(material, QStringLiteral("T-300"));
    ZETOpenMaterial::SetThickness(material, 0.25);
    QCOMPARE(material.GetMaterialType(), QStringLiteral("Twill"));
    QCOMPARE(material.GetMaterialId(), QStringLiteral("T-300"));
    QCOMPARE(material.GetThickness(), 0.25);

    ZETMatPackaging packaging(&material);
    ZETOpenMaterial::SetSize(packaging, 1270.0, 50000.0);
    QCOMPARE(packaging.GetWidth(), 1270.0);
    QCOMPARE(packaging.GetLength(), 50000.0);
    QCOMPARE(packaging.GetParent(), &material);
}

void TestOpenMaterial::anEmptyDefinitionEqualsAnother()
{
    QVERIFY(ZETMatDefinition() == ZETMatDefinition());
}

void TestOpenMaterial::aDefinitionTakesItsAllowedPropertiesFromTheFeature()
{
    ZETMatMaterial material(nullptr);
    ZETOpenMaterial::SetMaterialId(material, QStringLiteral("T-300"));

    ZETMatDefinition definition;
    definition.SetKey("Twill");
    definition.AddAllowedProperty("", "materialId");
    definition.LoadFromFeature(&material);
    definition.Commit();

    QCOMPARE(ZETOpenMaterial::GetKey(definition), QByteArray("Twill"));
    QCOMPARE(ZETOpenMaterial::GetValue(definition, "", "materialId"), QVariant(QStringLiteral("T-300")));
    QVERIFY2(!ZETOpenMaterial::GetValue(definition, "", "materialType").isValid(), "that property wasn't allowed");
    QVERIFY(!ZETOpenMaterial::GetValue(definition, "group", "materialId").isValid());
}

void TestOpenMaterial::whatIsNotCommittedDoesNotCount()
{
    ZETMatDefinition definition;
    definition.SetKey("Twill");
    QVERIFY(definition == ZETMatDefinition());
    QCOMPARE(ZETOpenMaterial::GetKey(definition), QByteArray());
    definition.Commit();
    QVERIFY(!(definition == ZETMatDefinition()));
}

void TestOpenMaterial::aCopyOfADefinitionIsItsOwn()
{
    ZETMatDefinition first;
    first.SetKey("A");
    first.Commit();
    ZETMatDefinition second = first;
    QVERIFY(second == first);
    second.SetKey("B");
    second.Commit();
    QVERIFY(!(second == first));
    QCOMPARE(ZETOpenMaterial::GetKey(first), QByteArray("A"));
    first = second;
    QVERIFY(second == first);
}

void TestOpenMaterial::aNullFeatureIsPassedOver()
{
    ZETMatDefinition definition;
    definition.AddAllowedProperty("", "materialId");
    definition.LoadFromFeature(nullptr);
    definition.Commit();
    QVERIFY(!ZETOpenMaterial::GetValue(definition, "", "materialId").isValid());
}

QTEST_GUILESS_MAIN(TestOpenMaterial)
#include "TestOpenMaterial.moc"
