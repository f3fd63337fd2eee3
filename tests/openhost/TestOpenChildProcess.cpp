#include "openhost/ZETGeometry/ZETOpenChildProcess_p.h"

#include <ZETSystem/ZETSysException.h>

#include <QTest>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <new>

#include <sys/wait.h>
#include <unistd.h>

using Result = ZETOpenChildProcess::Result;

namespace
{
constexpr std::chrono::seconds muchTime(60);
}

class TestOpenChildProcess : public QObject
{
    Q_OBJECT

private slots:
    void bytesComeBack_data();
    void bytesComeBack();
    void workSeesTheMemoryOfItsParentAndDoesNotChangeIt();
    void whatIsThrownComesBack();
    void crashIsTold_data();
    void crashIsTold();
    void answerThatIsCutOffIsACrash();
    void workWithoutEndIsEnded();
    void workThatWaitsWithoutEndIsEnded();
    void outputIsLost();
    void noProcessIsLeftBehind();
};

void TestOpenChildProcess::bytesComeBack_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("none") << QByteArray();
    QTest::newRow("a few") << QByteArray("a\0b", 3);
    QTest::newRow("more than a pipe holds") << QByteArray(5000000, 'x');
}

void TestOpenChildProcess::bytesComeBack()
{
    QFETCH(QByteArray, bytes);
    const Result result = ZETOpenChildProcess::Run([&] { return bytes; }, muchTime);
    QCOMPARE(result.end, Result::Finished);
    QCOMPARE(result.bytes, bytes);
}

void TestOpenChildProcess::workSeesTheMemoryOfItsParentAndDoesNotChangeIt()
{
    QByteArray text = "before";
    const Result result = ZETOpenChildProcess::Run(
        [&] {
            text += ", and in the child";
            return text;
        },
        muchTime);
    QCOMPARE(result.bytes, "before, and in the child");
    QCOMPARE(text, "before");
}

void TestOpenChildProcess::whatIsThrownComesBack()
{
    const Result own = ZETOpenChildProcess::Run(
        []() -> QByteArray { throw ZETSysException(QString::fromUtf8("k\xc3\xb6nnte sein")); }, muchTime);
    QCOMPARE(own.end, Result::Threw);
    QCOMPARE(own.error, QString::fromUtf8("k\xc3\xb6nnte sein"));
    const Result memory = ZETOpenChildProcess::Run([]() -> QByteArray { throw std::bad_alloc(); }, muchTime);
    QCOMPARE(memory.end, Result::Threw);
    QCOMPARE(memory.error, "not enough memory");
}

void TestOpenChildProcess::crashIsTold_data()
{
    QTest::addColumn<int>("number");
    QTest::newRow("segmentation fault") << SIGSEGV;
    QTest::newRow("abort") << SIGABRT;
    QTest::newRow("killed") << SIGKILL;
}

void TestOpenChildProcess::crashIsTold()
{
    QFETCH(int, number);
    const Result result = ZETOpenChildProcess::Run(
        [number] {
            std::raise(number);
            return QByteArray("went on");
        },
        muchTime);
    QCOMPARE(result.end, Result::Crashed);
    QCOMPARE(result.bytes, QByteArray());
}

void TestOpenChildProcess::answerThatIsCutOffIsACrash()
{
    const Result result = ZETOpenChildProcess::Run([]() -> QByteArray { _exit(0); }, muchTime);
    QCOMPARE(result.end, Result::Crashed);
    const Result unknown = ZETOpenChildProcess::Run([]() -> QByteArray { throw 7; }, muchTime);
    QCOMPARE(unknown.end, Result::Crashed);
}

void TestOpenChildProcess::workWithoutEndIsEnded()
{
    const Result result = ZETOpenChildProcess::Run(
        [] {
            while (getpid() > 0) {
            }
            return QByteArray();
        },
        std::chrono::seconds(1));
    QCOMPARE(result.end, Result::TookTooLong);
}

void TestOpenChildProcess::workThatWaitsWithoutEndIsEnded()
{
    const Result result = ZETOpenChildProcess::Run(
        [] {
            while (pause() != 0) {
            }
            return QByteArray();
        },
        std::chrono::seconds(1));
    QCOMPARE(result.end, Result::TookTooLong);
}

void TestOpenChildProcess::outputIsLost()
{
    int ends[2];
    QCOMPARE(pipe(ends), 0);
    const int output = dup(STDOUT_FILENO);
    QVERIFY(dup2(ends[1], STDOUT_FILENO) >= 0);
    std::fputs("waiting in a buffer;", stdout);
    ZETOpenChildProcess::Run(
        [] {
            std::fputs("from the child", stdout);
            std::fflush(stdout);
            return QByteArray();
        },
        muchTime);
    std::fflush(stdout);
    dup2(output, STDOUT_FILENO);
    close(output);
    close(ends[1]);
    char text[100];
    const ssize_t count = read(ends[0], text, sizeof text);
    close(ends[0]);
    QCOMPARE(QByteArray(text, std::max(ssize_t(0), count)), "waiting in a buffer;");
}

void TestOpenChildProcess::noProcessIsLeftBehind()
{
    ZETOpenChildProcess::Run([] { return QByteArray("done"); }, muchTime);
    QCOMPARE(waitpid(-1, nullptr, WNOHANG), -1);
    QCOMPARE(errno, ECHILD);
}

QTEST_GUILESS_MAIN(TestOpenChildProcess)
#include "TestOpenChildProcess.moc"
