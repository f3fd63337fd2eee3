#include "apps/zetlaser-job/JobInputs.h"

#include "apps/zetlaser-job/JobError.h"

#include <QDir>
#include <QFile>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace
{
void WriteFile(const QString& name, const QByteArray& content)
{
    QFile file(name);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(content);
}

JobInputs MakeInputs()
{
    WriteFile(u"a.json"_s, "abc");
    JobInputs inputs;
    inputs.Add(u"layup"_s, u"a.json"_s);
    return inputs;
}
} // namespace

class TestJobInputs : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void fileHasSizeAndSum();
    void whatIsNoFileHasNoSum();
    void changeWhileTheJobRunsIsRefused_data();
    void changeWhileTheJobRunsIsRefused();
    void touchingIsNoChange();
    void writingOverAnInputIsRefused();
};

void TestJobInputs::fileHasSizeAndSum()
{
    const JobInputs inputs = MakeInputs();
    QCOMPARE(inputs.GetFiles().size(), 1);
    QCOMPARE(inputs.GetFiles()[0].kind, u"layup"_s);
    QCOMPARE(inputs.GetFiles()[0].name, u"a.json"_s);
    QCOMPARE(inputs.GetFiles()[0].size, 3);
    // The sum that the standard itself gives for "abc".
    QCOMPARE(inputs.GetFiles()[0].sha256,
             QByteArray("ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad"));
}

void TestJobInputs::whatIsNoFileHasNoSum()
{
    JobInputs inputs;
    inputs.Add(u"settings"_s, u"/dev/null"_s);
    inputs.Add(u"shape"_s, u"missing.step"_s);
    for (const JobInputs::File& file : inputs.GetFiles())
        QVERIFY(file.sha256.isEmpty());
    inputs.CheckUnchanged();
}

void TestJobInputs::changeWhileTheJobRunsIsRefused_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("same size") << QByteArray("abd");
    QTest::newRow("shorter") << QByteArray();
}

void TestJobInputs::changeWhileTheJobRunsIsRefused()
{
    QFETCH(QByteArray, content);
    const JobInputs inputs = MakeInputs();
    WriteFile(u"a.json"_s, content);
    try {
        inputs.CheckUnchanged();
        QFAIL("no error");
    } catch (const JobError& error) {
        QCOMPARE(error.GetExit(), JobExit::WrongInput);
        QCOMPARE(error.GetText(), u"a.json was changed while the job ran; run it again"_s);
    }
}

void TestJobInputs::touchingIsNoChange()
{
    const JobInputs inputs = MakeInputs();
    WriteFile(u"a.json"_s, "abc");
    inputs.CheckUnchanged();
}

void TestJobInputs::writingOverAnInputIsRefused()
{
    const JobInputs inputs = MakeInputs();
    inputs.CheckKept({u"b.json"_s, u"missing/a.json"_s});
    QVERIFY_THROWS_EXCEPTION(JobError, inputs.CheckKept({u"b.json"_s, QDir::currentPath() + u"/a.json"_s}));
    QVERIFY(QFile::link(QDir::currentPath(), u"link"_s) || QFile::exists(u"link"_s));
    QVERIFY_THROWS_EXCEPTION(JobError, inputs.CheckKept({u"link/a.json"_s}));
}

QTEST_GUILESS_MAIN(TestJobInputs)
#include "TestJobInputs.moc"
