#include <ZETFeature/ZETFeatEnvironment.h>
#include <ZETGeometry/ZETGeoContainer.h>
#include <ZETSystem/ZETSysRegisterInit.h>

#include <QLibrary>
#include <QMetaObject>
#include <QMetaType>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace
{
/*! What the library asks of the host, in order: "+" for what is registered, "-" for what is taken back. */
QList<QByteArray> events;
bool isRecording = false; // not ahead of main and behind it, when the open host does the same with its own classes

void Record(const QByteArray& event)
{
    if (isRecording)
        events.append(event);
}

/*! What ZETSysRegisterInit of this program does with the function. */
enum class Init { AtOnce, Later, Refused };
Init init = Init::AtOnce;
std::function<void()> waiting;

/*! The events that take back what \a names stand for, the last one first. */
QList<QByteArray> TakenBack(const QList<QByteArray>& names)
{
    QList<QByteArray> taken;
    for (const QByteArray& name : names)
        taken.prepend("- " + name);
    return taken;
}
} // namespace

// The host's services of these names, as the library meets them in this program: a program's own functions go before
// those of the libraries.

void ZETGeoContainer::RegisterType(const QMetaObject* type)
{
    Record("+ "_ba + type->className());
}

void ZETGeoContainer::UnregisterType(const QMetaObject* type)
{
    Record("- "_ba + type->className());
}

void ZETFeatEnvironment::RegisterGlobalVisualizationObject(const QList<QByteArray>& classNames,
                                                           const QMetaObject* visObjectClass)
{
    Record("+ "_ba + visObjectClass->className() + " for " + classNames.join(','));
}

void ZETFeatEnvironment::UnregisterGlobalVisualizationObject(const QMetaObject* visObjectClass)
{
    Record("- "_ba + visObjectClass->className());
}

bool ZETSysRegisterInit(const std::function<void()>& initFunction)
{
    Record("+ function");
    switch (init) {
    case Init::AtOnce:
        initFunction();
        return true;
    case Init::Later:
        waiting = initFunction;
        return true;
    case Init::Refused:
        return false;
    }
    return false;
}

class TestLaserRegistrationOrder : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void registersInOrderAndTakesBackInReverse_data();
    void registersInOrderAndTakesBackInReverse();
};

void TestLaserRegistrationOrder::initTestCase()
{
    // Something of the open host, so that it is in the process ahead of the library.
    const ZETFeatEnvironment environment;
    QVERIFY(!environment.parent());
}

void TestLaserRegistrationOrder::registersInOrderAndTakesBackInReverse_data()
{
    QTest::addColumn<int>("when");
    QTest::addColumn<bool>("isLoaded");
    QTest::addColumn<bool>("isKnown");
    QTest::newRow("at once") << int(Init::AtOnce) << true << true;
    QTest::newRow("later") << int(Init::Later) << true << false;
    QTest::newRow("refused") << int(Init::Refused) << false << false;
}

void TestLaserRegistrationOrder::registersInOrderAndTakesBackInReverse()
{
    QFETCH(int, when);
    QFETCH(bool, isLoaded);
    QFETCH(bool, isKnown);
    init = static_cast<Init>(when);
    waiting = nullptr;
    events.clear();
    isRecording = true;
    QLibrary library(QStringLiteral(ZET_LASER_LIBRARY));
    QVERIFY2(library.load(), qUtf8Printable(library.errorString()));
    QCOMPARE(events, (QList<QByteArray>{"+ function", "+ ZETLaser3DTextByAxis", "+ ZETLaser3DTextOnSupport",
                                        "+ ZETLaser3DTextVisObject for ZETLaser3DText", "+ ZETLaserExtraGeometry",
                                        "+ ZETLaserParameter", "+ ZETLaserProjector", "+ ZETLaserTarget",
                                        "+ ZETLaserTargetVisObject for ZETLaserTarget"}));
    QCOMPARE(*reinterpret_cast<const bool*>(library.resolve("_ZETLaserLoaded")), isLoaded);
    const QByteArray name = "ZETLaserOptions::ELaserSourceType";
    QCOMPARE(QMetaType::fromName(name).isValid(), isKnown);
    if (waiting) {
        waiting();
        QVERIFY(QMetaType::fromName(name).isValid());
        waiting = nullptr;
    }

    events.clear();
    QVERIFY2(library.unload(), qUtf8Printable(library.errorString()));
    isRecording = false;
    QCOMPARE(events, TakenBack({"ZETLaser3DTextByAxis", "ZETLaser3DTextOnSupport", "ZETLaser3DTextVisObject",
                                "ZETLaserExtraGeometry", "ZETLaserParameter", "ZETLaserProjector", "ZETLaserTarget",
                                "ZETLaserTargetVisObject"}));
    QVERIFY(!QMetaType::fromName(name).isValid());
}

QTEST_GUILESS_MAIN(TestLaserRegistrationOrder)
#include "TestLaserRegistrationOrder.moc"
