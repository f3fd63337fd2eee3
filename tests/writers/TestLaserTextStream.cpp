#include "writers/ZETLaserTextStream.h"

#include "tests/support/TestFiles.h"

#include <QBuffer>
#include <QFile>
#include <QTextStream>
#include <QtTest>

using namespace Qt::Literals::StringLiterals;

class TestLaserTextStream : public QObject
{
    Q_OBJECT

private slots:
    void textHasTheBytesOfATextStream_data();
    void textHasTheBytesOfATextStream();
    void keywordsCharactersAndIntegersArePlain();
    void numbersHaveTheirCountOfDecimals();
    void lineEndsAreThoseOfTheDevice();
    void bytesWaitForAFlush();
    void destructionHandsOverWhatIsLeft();
    void aFullBufferIsHandedOver();
    void anotherDeviceGetsOnlyWhatComesLater();
    void twoWritersTakeTurnsOnOneFile();
    void aClosedDeviceAndNoDeviceDropEverything();
};

namespace
{
QByteArray ThroughTextStream(const QString& text)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QTextStream stream(&buffer);
    stream << text << Qt::endl;
    return buffer.data();
}
} // namespace

void TestLaserTextStream::textHasTheBytesOfATextStream_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("empty") << u""_s;
    QTest::newRow("ascii") << u"Ply 1, <b> & \"quoted\" %1"_s;
    QTest::newRow("latin") << u"Fl\u00fcgel \u00e0 45\u00b0"_s;
    QTest::newRow("beyond latin") << u"\u7ffc\u20ac"_s;
    QTest::newRow("surrogate pair") << u"a\U0001F6E9b"_s;
    QTest::newRow("high surrogate alone at the end") << u"a"_s + QChar(0xd83d);
    QTest::newRow("high surrogate alone inside") << u"a"_s + QChar(0xd83d) + u"b"_s;
    QTest::newRow("low surrogate alone") << u"a"_s + QChar(0xdee9) + u"b"_s;
    QTest::newRow("lines") << u"first\nsecond\n"_s;
    QTest::newRow("null character") << u"a"_s + QChar(0) + u"b"_s;
    QTest::newRow("byte order mark as text") << u"\ufeffa"_s;
}

void TestLaserTextStream::textHasTheBytesOfATextStream()
{
    QFETCH(QString, text);
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    {
        ZETLaserTextStream stream(&buffer);
        stream.WriteLine(text);
    }
    QCOMPARE(buffer.data(), ThroughTextStream(text));
}

void TestLaserTextStream::keywordsCharactersAndIntegersArePlain()
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    ZETLaserTextStream stream(&buffer);
    stream.Write("P "_L1, 12, ' ', qsizetype(-3));
    stream.WriteLine(' ', std::numeric_limits<qint64>::min());
    stream.WriteLine();
    stream.Flush();
    QCOMPARE(buffer.data(), "P 12 -3 -9223372036854775808\n\n"_ba);
}

void TestLaserTextStream::numbersHaveTheirCountOfDecimals()
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    ZETLaserTextStream stream(&buffer);
    stream.WriteLine(ZETLaserNumber{0.5, 6}, ' ', ZETLaserNumber{-1e-9, 6}, ' ', ZETLaserNumber{-0.0, 3}, ' ',
                     ZETLaserNumber{1e21, 3}, ' ', ZETLaserNumber{0.0625, 3}, ' ', ZETLaserNumber{25000.0, 3});
    stream.Flush();
    QCOMPARE(buffer.data(), "0.500000 -0.000000 0.000 1000000000000000000000.000 0.063 25000.000\n"_ba);
}

void TestLaserTextStream::lineEndsAreThoseOfTheDevice()
{
    const auto write = [](const QString& name, auto&& writeLines) {
        QFile file(name);
        QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Text));
        writeLines(file);
    };
    write(u"ours"_s, [](QFile& file) { ZETLaserTextStream(&file).WriteLine("a\nb"_L1); });
    write(u"theirs"_s, [](QFile& file) { QTextStream(&file) << "a\nb" << Qt::endl; });
    QVERIFY(!ReadBytes(u"ours"_s).isEmpty());
    QCOMPARE(ReadBytes(u"ours"_s), ReadBytes(u"theirs"_s));
}

void TestLaserTextStream::bytesWaitForAFlush()
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    ZETLaserTextStream stream(&buffer);
    stream.WriteLine("EOD"_L1);
    QCOMPARE(buffer.data(), ""_ba);
    stream.Flush();
    QCOMPARE(buffer.data(), "EOD\n"_ba);
    stream.Flush();
    QCOMPARE(buffer.data(), "EOD\n"_ba);
}

void TestLaserTextStream::destructionHandsOverWhatIsLeft()
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    {
        ZETLaserTextStream stream(&buffer);
        stream.Write("no line end"_L1);
    }
    QCOMPARE(buffer.data(), "no line end"_ba);
}

void TestLaserTextStream::aFullBufferIsHandedOver()
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    ZETLaserTextStream stream(&buffer);
    const QString line(999, u'x');
    QByteArray expected;
    for (int i = 0; i < 1000; ++i) {
        stream.WriteLine(line);
        expected += line.toUtf8() + '\n';
    }
    QVERIFY(buffer.size() > 500000);           // of a million
    stream.Write(QString(1000000, u'\u00e4')); // longer than any buffer, and without a line end
    expected += QString(1000000, u'\u00e4').toUtf8();
    stream.Flush();
    QVERIFY(buffer.data() == expected);
}

void TestLaserTextStream::anotherDeviceGetsOnlyWhatComesLater()
{
    QBuffer first;
    QBuffer second;
    first.open(QIODevice::WriteOnly);
    second.open(QIODevice::WriteOnly);
    ZETLaserTextStream stream(&first);
    stream.WriteLine("a"_L1);
    stream.SetDevice(&second);
    stream.WriteLine("b"_L1);
    stream.SetDevice(nullptr);
    stream.WriteLine("c"_L1);
    QCOMPARE(first.data(), "a\n"_ba);
    QCOMPARE(second.data(), "b\n"_ba);
}

void TestLaserTextStream::twoWritersTakeTurnsOnOneFile()
{
    QFile file(u"shared"_s);
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Text));
    ZETLaserTextStream stream(&file);
    file.write("1\n");
    stream.WriteLine("2"_L1);
    stream.Flush();
    file.write("3\n");
    stream.WriteLine("4"_L1);
    stream.Flush();
    file.close();
    QCOMPARE(ReadBytes(u"shared"_s), "1\n2\n3\n4\n"_ba);
}

void TestLaserTextStream::aClosedDeviceAndNoDeviceDropEverything()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    QFile file(u"no such folder/file"_s);
    QVERIFY(!file.open(QIODevice::WriteOnly | QIODevice::Text));
    {
        ZETLaserTextStream stream(&file);
        stream.WriteLine("lost"_L1);
        stream.Flush();
        stream.SetDevice(nullptr);
        stream.WriteLine("lost"_L1);
    }
    QBuffer buffer;
    ZETLaserTextStream stream(&buffer);
    stream.WriteLine("lost"_L1);
    stream.Flush();
    buffer.open(QIODevice::WriteOnly);
    stream.Flush();
    QCOMPARE(buffer.data(), ""_ba); // what met a closed device doesn't come back later
}

QTEST_GUILESS_MAIN(TestLaserTextStream)
#include "TestLaserTextStream.moc"
