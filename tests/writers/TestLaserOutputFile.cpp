#include "writers/ZETLaserOutputFile.h"

#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>

#include <sys/resource.h>

using namespace Qt::Literals::StringLiterals;

namespace
{
/*! No file can be made larger while one lives. */
class SizeLimit
{
public:
    explicit SizeLimit(rlim_t size)
    {
        std::signal(SIGXFSZ, SIG_IGN); // a write beyond the limit fails instead
        getrlimit(RLIMIT_FSIZE, &before);
        const rlimit limit{size, before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~SizeLimit()
    {
        setrlimit(RLIMIT_FSIZE, &before);
        std::signal(SIGXFSZ, SIG_DFL);
    }
    Q_DISABLE_COPY_MOVE(SizeLimit)

private:
    rlimit before{};
};
} // namespace

class TestLaserOutputFile : public QObject
{
    Q_OBJECT

private slots:
    void aWholeFileHasNoFault();
    void aFileThatCannotBeOpenedIsTold();
    void aFileWrittenInPartIsToldWithItsReason_data();
    void aFileWrittenInPartIsToldWithItsReason();
    void theFirstFaultOfAFileIsKept();

private:
    QString GetPath(const QString& name) const { return folder.filePath(name); }

    QTemporaryDir folder;
};

void TestLaserOutputFile::aWholeFileHasNoFault()
{
    ZETLaserOutputFile::Faults faults;
    {
        ZETLaserOutputFile file(faults, GetPath(u"whole"_s));
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(QByteArray(1000, 'x')), 1000);
    }
    QVERIFY(faults.isEmpty());
    QCOMPARE(QFileInfo(GetPath(u"whole"_s)).size(), 1000);
}

void TestLaserOutputFile::aFileThatCannotBeOpenedIsTold()
{
    ZETLaserOutputFile::Faults faults;
    ZETLaserOutputFile file(faults, GetPath(u"no such folder/file"_s));
    QVERIFY(!file.open(QIODevice::WriteOnly));
    QCOMPARE(faults, (ZETLaserOutputFile::Faults{{file.fileName(), u"No such file or directory"_s}}));
}

void TestLaserOutputFile::aFileWrittenInPartIsToldWithItsReason_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<int>("limit");
    QTest::newRow("when the file is closed") << 2000 << 1000;
    QTest::newRow("at once") << 200000 << 1000;
    QTest::newRow("nothing fits") << 2000 << 0;
}

void TestLaserOutputFile::aFileWrittenInPartIsToldWithItsReason()
{
    QFETCH(const int, size);
    QFETCH(const int, limit);
    const QString path = GetPath(QString::fromLatin1(QTest::currentDataTag()));
    ZETLaserOutputFile::Faults faults;
    {
        const SizeLimit sizeLimit(static_cast<rlim_t>(limit));
        ZETLaserOutputFile file(faults, path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(QByteArray(size, 'x'));
    }
    QCOMPARE(faults, (ZETLaserOutputFile::Faults{{path, u"File too large"_s}}));
    QCOMPARE(QFileInfo(path).size(), limit);
}

void TestLaserOutputFile::theFirstFaultOfAFileIsKept()
{
    const QString path = GetPath(u"twice"_s);
    ZETLaserOutputFile::Faults faults{{path, u"the first"_s}, {u"another"_s, u"another's"_s}};
    ZETLaserOutputFile file(faults, path);
    {
        const SizeLimit limit(10);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(QByteArray(20, 'x'));
        file.close();
    }
    QCOMPARE(faults, (ZETLaserOutputFile::Faults{{path, u"the first"_s}, {u"another"_s, u"another's"_s}}));
}

QTEST_APPLESS_MAIN(TestLaserOutputFile)
#include "TestLaserOutputFile.moc"
