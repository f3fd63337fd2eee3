#include "openhost/ZETFeature/ZETOpenModel.h"
#include "openhost/ZETFeature/ZETOpenModelStream.h"
#include "OpenTestFeatures.h"
#include "tests/support/TestThrown.h"

#include <QCryptographicHash>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QtEndian>
#include <QtTest>

using namespace Qt::Literals::StringLiterals;

/*! A geometry of the container that isn't a feature. */
class TestThing : public ZETGeoGeometry
{
    Q_OBJECT
public:
    explicit TestThing(ZETGeoContainer* container)
        : ZETGeoGeometry(container)
    {
    }
    Q_INVOKABLE TestThing(ZETGeoContainer* container, const ZETGeoGeometryRef& reference)
        : ZETGeoGeometry(container, reference)
    {
    }
    void Save(ZETGeoStream& stream) const override { stream.GetDataStream() << number; }
    void Load(ZETGeoStream& stream) override { stream.GetDataStream() >> number; }

    double number = 0.0;
};

/*! Saves more than it loads. */
class TestLeavesSomeBytes : public TestNode
{
    Q_OBJECT
public:
    using TestNode::TestNode;
    Q_INVOKABLE TestLeavesSomeBytes(ZETGeoContainer* container, const ZETGeoGeometryRef& reference)
        : TestNode(container, reference)
    {
    }
    void Save(ZETGeoStream& stream) const override
    {
        TestNode::Save(stream);
        stream.GetDataStream() << 1;
    }
};

namespace
{
constexpr qsizetype headSize = 20;
constexpr qsizetype digestSize = 8;

const QList<const QMetaObject*> testTypes{&TestRoot::staticMetaObject,  &TestNode::staticMetaObject,
                                          &TestLeaf::staticMetaObject,  &TestLeafOfLeaf::staticMetaObject,
                                          &TestThing::staticMetaObject, &TestLeavesSomeBytes::staticMetaObject};

/*! A model with references forwards and backwards, labels and switches. */
std::unique_ptr<ZETFeatContainer> MakeModel()
{
    auto container = std::make_unique<ZETFeatContainer>();
    auto* thing = new TestThing(container.get());
    thing->number = 2.5;
    auto* root = new TestRoot(container.get());
    (new TestNode(root))->Remove(); // leaves a gap in the numbers
    auto* a = new TestNode(root);
    auto* b = new TestNode(root);
    auto* leaf = new TestLeaf(a);
    ZETOpenModel::SetLabel(*a, u"A"_s);
    ZETOpenModel::SetLabel(*b, u"Ä \"B\" %1"_s);
    ZETOpenModel::SetEnabled(*b, false);
    a->SetAmount(17);
    a->SetOther(b);
    b->SetOther(a);
    for (TestNode* other : {static_cast<TestNode*>(leaf), static_cast<TestNode*>(nullptr), a})
        leaf->AppendOther(other);
    leaf->SetNote(QString(70000, u'n'));
    ZETOpenModel::Update(*container);
    b->SetAmount(1);
    return container;
}

/*! What a loaded model holds, as text. */
QString Describe(const ZETFeatContainer& container)
{
    QString text;
    for (ZETFeatObject* top : ZETOpenModel::GetTopFeatures(container)) {
        for (const ZETFeatObject* feature : QList<ZETFeatObject*>{top} + top->GetAllChildren()) {
            text +=
                u"%1 '%2' below '%3'"_s.arg(QLatin1StringView(feature->metaObject()->className()), feature->GetLabel(),
                                            feature->GetParent() ? feature->GetParent()->GetLabel() : QString());
            text += ZETOpenModel::IsEnabled(*feature) ? u""_s : u" disabled"_s;
            text += ZETOpenModel::IsOutdated(*feature) ? u" outdated"_s : u""_s;
            if (const auto* node = qobject_cast<const TestNode*>(feature)) {
                text +=
                    u" %1 ->%2"_s.arg(node->GetAmount()).arg(node->GetOther() ? node->GetOther()->GetLabel() : u"0"_s);
                for (const TestNode* other : node->GetOthers())
                    text += u" [%1]"_s.arg(other ? other->GetLabel() : u"0"_s);
            }
            if (const auto* leaf = qobject_cast<const TestLeaf*>(feature))
                text += u" note %1"_s.arg(leaf->GetNote().size());
            text += u'\n';
        }
    }
    return text;
}

/*! \a file with the digest that belongs to its content, as a hostile writer would make it. */
QByteArray Sealed(const QByteArray& file)
{
    const QByteArray content = file.chopped(digestSize);
    return content + QCryptographicHash::hash(content, QCryptographicHash::Sha256).left(digestSize);
}

/*! The same with the count of bytes in the head corrected. */
QByteArray SealedWithSize(QByteArray file)
{
    qToBigEndian<quint64>(static_cast<quint64>(file.size() - headSize - digestSize), file.data() + 12);
    return Sealed(file);
}

QString LoadFailure(const QByteArray& bytes)
{
    return Thrown([&] { ZETOpenModelStream::Load(bytes); });
}

qsizetype Find(const QByteArray& bytes, const QByteArray& part)
{
    const qsizetype place = bytes.indexOf(part);
    return bytes.indexOf(part, place + 1) < 0 ? place : -1;
}
} // namespace

class TestOpenModelStream : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void cleanupTestCase();
    void modelComesBack();
    void emptyModelComesBack();
    void savedModelIsTheSameBytesAgain();
    void headAndTablesStandAsDocumented();
    void referencesAreRenumbered();
    void loadingEmitsSignals();
    void geometryThatIsNoFeatureComesBack();
    void featureWithMessagesIsOutdatedAfterLoading();
    void versionsAreThoseOfTheStream();
    void versionBelowIsToldToTheClass();
    void newerVersionIsRefused();
    void unknownClassIsRefused();
    void unregisteredClassIsNotSaved();
    void referenceToAnotherModelIsNotSaved();
    void danglingReferenceIsRefused();
    void wrongBytesAreRefused_data();
    void wrongBytesAreRefused();
    void damagedTablesAreRefused_data();
    void damagedTablesAreRefused();
    void hugeCountInFieldsEndsWithTheBytes();
    void bytesLeftOverAreRefused();
    void everyTruncationThrows();
    void truncationsUnderAValidSealThrow();
    void bitFlipsAreFound();
    void bitFlipsUnderAValidSealThrowOrLoad();
    void failedLoadLeavesNothing();
    void fieldsOfOneObject();
};

void TestOpenModelStream::initTestCase()
{
    for (const QMetaObject* type : testTypes)
        ZETGeoContainer::RegisterType(type);
}

void TestOpenModelStream::cleanupTestCase()
{
    for (const QMetaObject* type : testTypes)
        ZETGeoContainer::UnregisterType(type);
}

void TestOpenModelStream::modelComesBack()
{
    const std::unique_ptr<ZETFeatContainer> model = MakeModel();
    const QString expected = u"TestRoot 'Test root' below ''\n"
                             "TestNode 'A' below 'Test root' outdated 17 ->Ä \"B\" %1\n"
                             "TestLeaf 'Test leaf' below 'A' 0 ->0 [Test leaf] [0] [A] note 70000\n"
                             "TestNode 'Ä \"B\" %1' below 'Test root' disabled outdated 1 ->A\n"_s;
    QCOMPARE(Describe(*model), expected);
    const std::unique_ptr<ZETFeatContainer> loaded = ZETOpenModelStream::Load(ZETOpenModelStream::Save(*model));
    QCOMPARE(Describe(*loaded), expected);
    QVERIFY(ZETOpenModel::GetRoot(*loaded));
    QCOMPARE(ZETOpenModel::GetRoot(*loaded)->GetChildren().first()->GetRoot(), ZETOpenModel::GetRoot(*loaded));
}

void TestOpenModelStream::emptyModelComesBack()
{
    const ZETFeatContainer empty;
    const QByteArray bytes = ZETOpenModelStream::Save(empty);
    QCOMPARE(bytes.size(), headSize + 4 + 4 + digestSize);
    QVERIFY(ZETOpenModel::GetTopFeatures(*ZETOpenModelStream::Load(bytes)).isEmpty());
}

void TestOpenModelStream::savedModelIsTheSameBytesAgain()
{
    const std::unique_ptr<ZETFeatContainer> once = ZETOpenModelStream::Load(ZETOpenModelStream::Save(*MakeModel()));
    const QByteArray bytes = ZETOpenModelStream::Save(*once);
    QCOMPARE(ZETOpenModelStream::Save(*once), bytes);
    QCOMPARE(ZETOpenModelStream::Save(*ZETOpenModelStream::Load(bytes)), bytes);
}

void TestOpenModelStream::headAndTablesStandAsDocumented()
{
    ZETFeatContainer container;
    new TestRoot(&container);
    // Label (null), enabled, visible, outdated.
    const QByteArray fields = QByteArray::fromHex("ffffffff 01 01 01");
    QByteArray content = "ZETMODEL" + QByteArray::fromHex("00000001 0000000000000087");
    content += QByteArray::fromHex("00000004");
    for (const char* name : {"TestRoot", "ZETFeatRoot", "ZETFeatObject", "ZETGeoGeometry"}) {
        content += QByteArray::fromHex("000000") + static_cast<char>(qstrlen(name)) + name;
        content += QByteArray::fromHex("00000001");
    }
    content += QByteArray::fromHex("00000001 00000000 0000000000000001 0000000000000000 00000007") + fields;
    qToBigEndian<quint64>(static_cast<quint64>(content.size() - headSize), content.data() + 12);
    QCOMPARE(ZETOpenModelStream::Save(container), Sealed(content + QByteArray(digestSize, '\0')));
}

void TestOpenModelStream::referencesAreRenumbered()
{
    const std::unique_ptr<ZETFeatContainer> model = MakeModel();
    const std::unique_ptr<ZETFeatContainer> loaded = ZETOpenModelStream::Load(ZETOpenModelStream::Save(*model));
    const ZETFeatObject* before = ZETOpenModel::GetRoot(*model)->GetChildren().first();
    const ZETFeatObject* after = ZETOpenModel::GetRoot(*loaded)->GetChildren().first();
    QCOMPARE(before->GetLabel(), after->GetLabel());
    QVERIFY(ZETGeoGeometryRef(before) != ZETGeoGeometryRef(after)); // so the test is one
    const ZETFeatObject* b = ZETOpenModel::GetRoot(*loaded)->GetChildren().last();
    QCOMPARE(qobject_cast<const TestNode*>(after)->GetOther(), b);
    QCOMPARE(qobject_cast<const TestNode*>(b)->GetOther(), after);
}

void TestOpenModelStream::loadingEmitsSignals()
{
    ZETFeatContainer container;
    auto* node = new TestNode(new TestRoot(&container));
    node->SetAmount(9);
    const QByteArray fields = ZETOpenModelStream::SaveFields(*node);
    node->SetAmount(1);
    const QSignalSpy spy(node, &TestNode::AmountChanged);
    ZETOpenModelStream::LoadFields(*node, fields);
    QCOMPARE(spy.count(), 1);
    QCOMPARE(node->GetAmount(), 9);
}

void TestOpenModelStream::geometryThatIsNoFeatureComesBack()
{
    const std::unique_ptr<ZETFeatContainer> model = MakeModel();
    const std::unique_ptr<ZETFeatContainer> loaded = ZETOpenModelStream::Load(ZETOpenModelStream::Save(*model));
    // It is saved first, so it is the first of the new numbers, which are those of a fresh container.
    ZETFeatContainer fresh;
    const auto* thing = qobject_cast<TestThing*>(loaded->GetGeometryByRef(new TestThing(&fresh)));
    QVERIFY(thing);
    QCOMPARE(thing->number, 2.5);
}

void TestOpenModelStream::featureWithMessagesIsOutdatedAfterLoading()
{
    ZETFeatContainer container;
    auto* node = new TestNode(new TestRoot(&container));
    node->SetAmount(-5);
    ZETOpenModel::Update(container);
    QVERIFY(!ZETOpenModel::IsOutdated(*node));
    const std::unique_ptr<ZETFeatContainer> loaded = ZETOpenModelStream::Load(ZETOpenModelStream::Save(container));
    const ZETFeatObject* after = ZETOpenModel::GetRoot(*loaded)->GetChildren().first();
    QVERIFY(ZETOpenModel::IsOutdated(*after));
    QVERIFY(!ZETOpenModel::IsOutdated(*ZETOpenModel::GetRoot(*loaded)));
    QVERIFY(!ZETOpenModel::Update(*loaded));
    QCOMPARE(ZETOpenModel::GetMessages(*after), ZETOpenModel::GetMessages(*node));
}

void TestOpenModelStream::versionsAreThoseOfTheStream()
{
    ZETFeatContainer container;
    auto* node = new TestNode(new TestRoot(&container));
    new TestLeaf(node);
    new TestLeafOfLeaf(node);
    const std::unique_ptr<ZETFeatContainer> loaded = ZETOpenModelStream::Load(ZETOpenModelStream::Save(container));
    for (ZETFeatObject* leaf : ZETOpenModel::GetRoot(*loaded)->GetChildren().first()->GetChildren())
        QCOMPARE(qobject_cast<TestLeaf*>(leaf)->loadedVersions, (QList<unsigned int>{3, 1}));
}

void TestOpenModelStream::versionBelowIsToldToTheClass()
{
    ZETFeatContainer container;
    auto* leaf = new TestLeaf(new TestNode(new TestRoot(&container)));
    ZETOpenModel::Update(container);
    QByteArray bytes = ZETOpenModelStream::Save(container);
    // The leaf without its note, and its class with the version 2 in place of 3.
    const QByteArray fields = ZETOpenModelStream::SaveFields(*leaf);
    const qsizetype place = bytes.size() - digestSize - fields.size();
    QCOMPARE(bytes.mid(place, fields.size()), fields);
    bytes.remove(place + fields.size() - 4, 4);
    const qsizetype version = Find(bytes, "TestLeaf"_ba) + 8;
    QCOMPARE(bytes.mid(version, 4), QByteArray::fromHex("00000003"));
    bytes[version + 3] = 2;
    const QByteArray size = QByteArray::fromHex("000000") + static_cast<char>(fields.size());
    const qsizetype sizePlace = bytes.lastIndexOf(size);
    bytes[sizePlace + 3] = static_cast<char>(fields.size() - 4);

    const std::unique_ptr<ZETFeatContainer> loaded = ZETOpenModelStream::Load(SealedWithSize(bytes));
    auto* after = qobject_cast<TestLeaf*>(ZETOpenModel::GetRoot(*loaded)->GetAllChildren().last());
    QVERIFY(after);
    QCOMPARE(after->loadedVersions, (QList<unsigned int>{2, 1}));
    QVERIFY(ZETOpenModel::IsOutdated(*after)); // as its Load asked for
}

void TestOpenModelStream::newerVersionIsRefused()
{
    ZETFeatContainer container;
    new TestLeafOfLeaf(new TestNode(new TestRoot(&container)));
    QByteArray bytes = ZETOpenModelStream::Save(container);
    const qsizetype version = Find(bytes, QByteArray::fromHex("00000008") + "TestLeaf") + 4 + 8;
    QVERIFY(version > 12);
    bytes[version + 3] = 4;
    QCOMPARE(LoadFailure(Sealed(bytes)), u"The model can't be loaded: object 3, a TestLeafOfLeaf: it was saved with "
                                         "version 4 of TestLeaf, and only version 3 is known."_s);
}

void TestOpenModelStream::unknownClassIsRefused()
{
    const QByteArray bytes = ZETOpenModelStream::Save(*MakeModel());
    ZETGeoContainer::UnregisterType(&TestLeaf::staticMetaObject);
    const QString failure = LoadFailure(bytes);
    ZETGeoContainer::RegisterType(&TestLeaf::staticMetaObject);
    QCOMPARE(failure, u"The model can't be loaded: object 4, a TestLeaf: this class is not known."_s);
}

void TestOpenModelStream::unregisteredClassIsNotSaved()
{
    const std::unique_ptr<ZETFeatContainer> model = MakeModel();
    ZETGeoContainer::UnregisterType(&TestLeaf::staticMetaObject);
    const QString failure = Thrown([&] { ZETOpenModelStream::Save(*model); });
    ZETGeoContainer::RegisterType(&TestLeaf::staticMetaObject);
    QCOMPARE(failure, u"The model can't be saved: the class TestLeaf of \"Test leaf\" is not registered."_s);
}

void TestOpenModelStream::referenceToAnotherModelIsNotSaved()
{
    ZETFeatContainer container;
    ZETFeatContainer otherContainer;
    auto* node = new TestNode(new TestRoot(&container));
    auto* stranger = new TestNode(new TestRoot(&otherContainer));
    ZETOpenModel::SetLabel(*node, u"N"_s);
    ZETOpenModel::SetLabel(*stranger, u"S"_s);
    const QString failure =
        u"The model can't be saved: \"N\" points to \"S\", which belongs to another model or to none."_s;
    node->SetOther(stranger);
    QCOMPARE(Thrown([&] { ZETOpenModelStream::Save(container); }), failure);
    node->SetOther(nullptr);
    QVERIFY(Thrown([&] { ZETOpenModelStream::Save(container); }).isNull());
    node->AppendOther(stranger);
    QCOMPARE(Thrown([&] { ZETOpenModelStream::Save(container); }), failure);
}

void TestOpenModelStream::danglingReferenceIsRefused()
{
    ZETFeatContainer container;
    auto* root = new TestRoot(&container);
    auto* a = new TestNode(root);
    a->SetOther(a);
    QByteArray fields = ZETOpenModelStream::SaveFields(*a);
    const qsizetype reference = fields.size() - 12;
    QByteArray bytes = ZETOpenModelStream::Save(container);
    bytes[bytes.size() - digestSize - fields.size() + reference + 7] = 99;
    const QString failure = LoadFailure(Sealed(bytes));
    QVERIFY2(failure.startsWith("The model can't be loaded: object 2, a TestNode: A reference leads to no object"_L1),
             qPrintable(failure));
    // To an object of another class.
    bytes[bytes.size() - digestSize - fields.size() + reference + 7] = 1;
    QVERIFY(!LoadFailure(Sealed(bytes)).isNull());

    fields[reference + 7] = 99;
    QVERIFY_THROWS_EXCEPTION(ZETGeoGeometryNotFoundException, ZETOpenModelStream::LoadFields(*a, fields));
}

void TestOpenModelStream::wrongBytesAreRefused_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("failure");
    const QByteArray good = ZETOpenModelStream::Save(*MakeModel());
    QTest::newRow("nothing") << QByteArray() << u"it does not begin with \"ZETMODEL\""_s;
    QTest::newRow("something else") << QByteArray("ISO-10303-21;\nHEADER;") << u"it does not begin with \"ZETMODEL\""_s;
    QTest::newRow("the head only") << good.left(headSize) << u"it is cut off after 20 bytes, within its head"_s;
    QByteArray newer = good;
    newer[11] = 2;
    QTest::newRow("newer format") << Sealed(newer) << u"its format version is 2, expected 1"_s;
    QTest::newRow("cut off") << good.chopped(100)
                             << u"it should hold %1 bytes behind its head, and holds %2: it is cut off or damaged"_s
                                    .arg(good.size() - headSize - digestSize)
                                    .arg(good.size() - headSize - digestSize - 100);
    QByteArray damaged = good;
    damaged[good.size() / 2] = static_cast<char>(~damaged[good.size() / 2]);
    QTest::newRow("damaged") << damaged << u"it is damaged: its content does not match its digest"_s;
}

void TestOpenModelStream::wrongBytesAreRefused()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, failure);
    QCOMPARE(LoadFailure(bytes), u"The model can't be loaded: %1."_s.arg(failure));
}

void TestOpenModelStream::damagedTablesAreRefused_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("failure");
    ZETFeatContainer container;
    new TestNode(new TestRoot(&container));
    const QByteArray good = ZETOpenModelStream::Save(container);
    // The entries of the two objects, 24 bytes each, stand ahead of their fields of 7 and of 23 bytes.
    const qsizetype objects = good.size() - digestSize - 7 - 23 - 2 * 24;
    const auto with = [&good](qsizetype place, const char* hex) {
        QByteArray bytes = good;
        const QByteArray part = QByteArray::fromHex(hex);
        return Sealed(bytes.replace(place, part.size(), part));
    };
    const auto at = [](qsizetype place) { return u" (byte %1)"_s.arg(place); };
    QTest::newRow("classes") << with(headSize, "7fffffff")
                             << u"the count of its classes is 2147483647, and only %1 bytes follow"_s.arg(
                                    good.size() - headSize - digestSize - 4) +
                                    at(headSize + 4);
    QTest::newRow("name") << with(headSize + 4, "ffffffff")
                          << u"the length of the name of class 1 is 4294967295, and only %1 bytes follow"_s.arg(
                                 good.size() - headSize - digestSize - 8) +
                                 at(headSize + 8);
    QTest::newRow("no name") << with(headSize + 4, "00000000") << QString();
    QTest::newRow("name of two lines") << with(headSize + 8, "0a")
                                       << u"class 1 has no name that a class can have"_s + at(headSize + 8 + 8 + 4);
    QTest::newRow("objects") << with(objects - 4, "ffffffff")
                             << u"the count of its objects is 4294967295, and only 78 bytes follow"_s + at(objects);
    QTest::newRow("one object more") << with(objects - 4, "00000003") << QString();
    QTest::newRow("one object fewer") << with(objects - 4, "00000001") << QString();
    QTest::newRow("class") << with(objects, "00000009") << u"object 1 is of class 9 of 5"_s + at(objects + 24);
    QTest::newRow("number 0") << with(objects + 4, "0000000000000000")
                              << u"object 1 has no number of its own"_s + at(objects + 24);
    QTest::newRow("number of another") << with(objects + 24 + 4, "0000000000000001")
                                       << u"object 2 has no number of its own"_s + at(objects + 48);
    QTest::newRow("below itself") << with(objects + 24 + 12, "0000000000000002")
                                  << u"object 2 stands below 2, which isn't ahead of it"_s + at(objects + 48);
    QTest::newRow("below nothing") << with(objects + 24 + 12, "ffffffffffffffff")
                                   << u"object 2 stands below 18446744073709551615, which isn't ahead of it"_s +
                                          at(objects + 48);
    QTest::newRow("size") << with(objects + 20, "ffffffff")
                          << u"its objects should have 4294967318 bytes together, and 30 follow"_s + at(objects + 48);
    QTest::newRow("sizes that don't fit the fields")
        << with(objects + 20, "00000008").replace(objects + 44, 4, QByteArray::fromHex("00000016")) << QString();
    // A class that can't be made: the base of the root has no loading constructor that can be invoked.
    QTest::newRow("base class") << with(objects, "00000001") << u"object 1, a ZETFeatRoot: this class is not known"_s;
}

void TestOpenModelStream::damagedTablesAreRefused()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, failure);
    const QString thrown = LoadFailure(Sealed(bytes));
    QVERIFY(!thrown.isNull());
    if (!failure.isNull())
        QCOMPARE(thrown, u"The model can't be loaded: %1."_s.arg(failure));
}

void TestOpenModelStream::hugeCountInFieldsEndsWithTheBytes()
{
    ZETFeatContainer container;
    auto* node = new TestNode(new TestRoot(&container));
    QByteArray fields = ZETOpenModelStream::SaveFields(*node);
    fields.replace(fields.size() - 4, 4, QByteArray::fromHex("7fffffff")); // the count of "others"
    QCOMPARE(Thrown([&] { ZETOpenModelStream::LoadFields(*node, fields); }), u"its fields go on behind its 23 bytes"_s);
    QVERIFY(node->GetOthers().isEmpty());

    QByteArray bytes = ZETOpenModelStream::Save(container);
    bytes.replace(bytes.size() - digestSize - 4, 4, QByteArray::fromHex("7fffffff"));
    const QString failure = LoadFailure(Sealed(bytes));
    QVERIFY2(failure.startsWith("The model can't be loaded: object 2, a TestNode: its fields go on behind its"_L1),
             qPrintable(failure));
    // The length of a text that claims 4 GB.
    QByteArray label = ZETOpenModelStream::SaveFields(*node);
    label.replace(0, 4, QByteArray::fromHex("fffffffe"));
    QVERIFY(!Thrown([&] { ZETOpenModelStream::LoadFields(*node, label); }).isNull());
}

void TestOpenModelStream::bytesLeftOverAreRefused()
{
    ZETFeatContainer container;
    new TestLeavesSomeBytes(new TestRoot(&container));
    const QString failure = LoadFailure(ZETOpenModelStream::Save(container));
    QVERIFY2(
        failure.startsWith("The model can't be loaded: object 2, a TestLeavesSomeBytes: its fields end after 23 of "
                           "its 27 bytes (byte "_L1),
        qPrintable(failure));
}

void TestOpenModelStream::everyTruncationThrows()
{
    ZETFeatContainer container;
    auto* node = new TestNode(new TestRoot(&container));
    (new TestLeaf(node))->SetOther(node);
    const QByteArray good = ZETOpenModelStream::Save(container);
    QVERIFY(LoadFailure(good).isNull());
    for (qsizetype size = 0; size < good.size(); ++size)
        QVERIFY2(!LoadFailure(good.left(size)).isNull(), QByteArray::number(size).constData());
}

void TestOpenModelStream::truncationsUnderAValidSealThrow()
{
    ZETFeatContainer container;
    auto* node = new TestNode(new TestRoot(&container));
    (new TestLeaf(node))->SetOther(node);
    const QByteArray good = ZETOpenModelStream::Save(container);
    const int alive = TestNode::alive;
    for (qsizetype size = headSize; size < good.size() - digestSize; ++size) {
        const QByteArray bytes = SealedWithSize(good.left(size) + QByteArray(digestSize, '\0'));
        QVERIFY2(!LoadFailure(bytes).isNull(), QByteArray::number(size).constData());
    }
    QCOMPARE(TestNode::alive, alive);
}

void TestOpenModelStream::bitFlipsAreFound()
{
    const QByteArray good = ZETOpenModelStream::Save(*MakeModel());
    QRandomGenerator random(20251);
    for (int i = 0; i < 300; ++i) {
        QByteArray bytes = good;
        const auto place = random.bounded(bytes.size());
        bytes[place] = static_cast<char>(bytes[place] ^ (1 << random.bounded(8)));
        QVERIFY2(!LoadFailure(bytes).isNull(), QByteArray::number(place).constData());
    }
}

void TestOpenModelStream::bitFlipsUnderAValidSealThrowOrLoad()
{
    ZETFeatContainer container;
    auto* root = new TestRoot(&container);
    for (int i = 0; i < 5; ++i) {
        auto* node = new TestNode(root);
        auto* leaf = new TestLeaf(node);
        leaf->SetNote(u"note %1"_s.arg(i));
        leaf->SetOther(node);
        node->AppendOther(leaf);
    }
    const QByteArray good = ZETOpenModelStream::Save(container);
    QRandomGenerator random(20252);
    const int alive = TestNode::alive;
    int loaded = 0;
    int refused = 0;
    for (int i = 0; i < 3000; ++i) {
        QByteArray bytes = good;
        for (int flips = 1 + random.bounded(3); flips > 0; --flips) {
            const auto place = random.bounded(bytes.size());
            bytes[place] = static_cast<char>(bytes[place] ^ (1 << random.bounded(8)));
        }
        (LoadFailure(Sealed(bytes)).isNull() ? loaded : refused) += 1;
        QCOMPARE(TestNode::alive, alive); // what was loaded is gone again, and what was refused left nothing
    }
    QVERIFY(loaded > 0);
    QVERIFY(refused > 0);
}

void TestOpenModelStream::failedLoadLeavesNothing()
{
    const std::unique_ptr<ZETFeatContainer> model = MakeModel();
    QByteArray bytes = ZETOpenModelStream::Save(*model);
    const int alive = TestNode::alive;
    bytes.replace(bytes.size() - digestSize - 4, 4, QByteArray::fromHex("7fffffff")); // in the last object's fields
    QVERIFY(!LoadFailure(Sealed(bytes)).isNull());
    QCOMPARE(TestNode::alive, alive);
}

void TestOpenModelStream::fieldsOfOneObject()
{
    ZETFeatContainer container;
    auto* leaf = new TestLeaf(new TestNode(new TestRoot(&container)));
    leaf->SetAmount(258);
    leaf->SetOther(leaf);
    leaf->SetNote(u"no"_s);
    ZETOpenModel::SetLabel(*leaf, u"L"_s);
    const QByteArray expected = QByteArray::fromHex("00000002 004c 01 01 01 00000102 0000000000000003 00000000"
                                                    "00000004 006e006f");
    QCOMPARE(ZETOpenModelStream::SaveFields(*leaf), expected);

    leaf->SetAmount(0);
    leaf->SetNote(QString());
    ZETOpenModelStream::LoadFields(*leaf, expected.chopped(8), {{"TestLeaf", 2}});
    QCOMPARE(leaf->GetAmount(), 258);
    QCOMPARE(leaf->GetOther(), leaf);
    QCOMPARE(leaf->loadedVersions, (QList<unsigned int>{2, 1}));
    QCOMPARE(Thrown([&] { ZETOpenModelStream::LoadFields(*leaf, expected + "x"); }),
             u"The fields end after 33 of 34 bytes."_s);
}

QTEST_GUILESS_MAIN(TestOpenModelStream)
#include "TestOpenModelStream.moc"
