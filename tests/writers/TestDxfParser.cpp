#include "writers/ZETDxfParser.h"

#include <ZETMathematics/ZETMathSetOfPoints.h>

#include <QBuffer>
#include <QFile>
#include <QTest>
#include <QTextStream>

#include <functional>
#include <limits>

using namespace Qt::Literals::StringLiterals;

namespace
{
/*! Group pairs, written as "code value" in one line each, as the two lines of the file. */
QByteArray Pairs(const QByteArrayList& pairs)
{
    QByteArray lines;
    for (const QByteArray& pair : pairs) {
        const auto blank = pair.indexOf(' ');
        lines += "  " + pair.left(blank) + '\n' + pair.mid(blank + 1) + '\n';
    }
    return lines;
}

QByteArray Emit(const std::function<void(ZETDxfParser&)>& calls)
{
    QByteArray bytes;
    {
        QTextStream stream(&bytes);
        ZETDxfParser parser(stream);
        calls(parser);
    }
    return bytes;
}

ZETMathSetOfPoints Points(std::initializer_list<ZETMathPoint> points)
{
    ZETMathSetOfPoints set;
    set.points = points;
    return set;
}

/*! Takes a number of bytes and then fails. */
class FullDevice : public QIODevice
{
public:
    explicit FullDevice(qint64 room)
        : left(room)
    {
        open(WriteOnly | Unbuffered);
    }

    QByteArray taken;

protected:
    qint64 readData(char*, qint64) override { return -1; }
    qint64 writeData(const char* data, qint64 size) override
    {
        if (size > left)
            return -1;
        left -= size;
        taken.append(data, size);
        return size;
    }

private:
    qint64 left;
};
} // namespace

class TestDxfParser : public QObject
{
    Q_OBJECT

private slots:
    void headIsTheSameForAllDrawings_data();
    void headIsTheSameForAllDrawings();
    void polylineHasItsVertices();
    void polylineFlags_data();
    void polylineFlags();
    void emptyPolylineWritesNothing();
    void offsetsAreAddedToVerticesAndTheHeightToTheHead();
    void numbersHaveSixDecimalsWhateverTheirSize();
    void textIsOneEntity();
    void textOutsideAsciiIsInTheLocalEncoding();
    void endClosesEntitiesAndFile();
    void failedStreamGetsNothingMore();
    void streamThatFailsInBetweenTurnsSilent();
    void eachOperationIsOnTheDeviceWhenItReturns();
    void endFlushesAFile();
    void whatTheCallerWroteKeepsItsPlace();
    void otherEncodingsOfTheStreamAreKept();
    void longTextIsWhole();
    void numbersThatNeedMoreRoomAreWrittenInVertices();
    void codesOfAnyNumberAreWritten();
    void longPolylineIsTheSameAsItsPairs();
};

void TestDxfParser::headIsTheSameForAllDrawings_data()
{
    QTest::addColumn<int>("units");
    QTest::newRow("inches") << 1;
    QTest::newRow("millimetres") << 4;
}

void TestDxfParser::headIsTheSameForAllDrawings()
{
    QFETCH(int, units);
    const auto expected = Pairs({"0 SECTION",     "2 HEADER",      "9 $INSUNITS",   "70 " + QByteArray::number(units),
                                 "9 $EXTMAX",     "10 200.000000", "20 100.000000", "9 $EXTMIN",
                                 "10 0.000000",   "20 0.000000",   "9 $LIMMAX",     "10 200.000000",
                                 "20 100.000000", "9 $LIMMIN",     "10 0.000000",   "20 0.000000",
                                 "0 ENDSEC",      "0 SECTION",     "2 TABLES",      "0 TABLE",
                                 "2 LTYPE",       "70 1",          "0 LTYPE",       "2 CONTINUOUS",
                                 "70 64",         "3 Solid line",  "72 65",         "73 0",
                                 "40 0.000000",   "0 ENDTAB",      "0 TABLE",       "2 LAYER",
                                 "70 1",          "0 LAYER",       "2 0",           "70 0",
                                 "62 1",          "6 CONTINUOUS",  "0 ENDTAB",      "0 ENDSEC",
                                 "0 SECTION",     "2 ENTITIES"});
    QCOMPARE(Emit([&](ZETDxfParser& parser) { parser.WriteStartSection(units); }), expected);
}

void TestDxfParser::polylineHasItsVertices()
{
    const auto points = Points({{1.5, -2.0, 3.25}, {10.0, 0.0, 0.0}});
    const auto bytes =
        Emit([&](ZETDxfParser& parser) { parser.WritePolyline(points, true, true, 3, 7, 2, 5, 0.0, 0.0, 0.0); });
    QCOMPARE(bytes, Pairs({"0 POLYLINE",  "8 3",          "6 2",          "62 7",        "39 5",     "10 0.000000",
                           "20 0.000000", "30 0.000000",  "66 1",         "70 9",        "0 VERTEX", "8 3",
                           "62 7",        "10 1.500000",  "20 -2.000000", "30 3.250000", "0 VERTEX", "8 3",
                           "62 7",        "10 10.000000", "20 0.000000",  "30 0.000000", "0 SEQEND"}));
}

void TestDxfParser::polylineFlags_data()
{
    QTest::addColumn<bool>("is3D");
    QTest::addColumn<bool>("closed");
    QTest::addColumn<QByteArray>("flags");
    QTest::newRow("neither") << false << false << "  70\n0\n"_ba;
    QTest::newRow("closed") << false << true << "  70\n1\n"_ba;
    QTest::newRow("3D") << true << false << "  70\n8\n"_ba;
    QTest::newRow("both") << true << true << "  70\n9\n"_ba;
}

void TestDxfParser::polylineFlags()
{
    QFETCH(bool, is3D);
    QFETCH(bool, closed);
    QFETCH(QByteArray, flags);
    const auto bytes = Emit([&](ZETDxfParser& parser) {
        parser.WritePolyline(Points({{0.0, 0.0, 0.0}}), is3D, closed, 0, 0, 0, 0, 0.0, 0.0, 0.0);
    });
    QVERIFY2(bytes.contains(flags), bytes.constData());
}

void TestDxfParser::emptyPolylineWritesNothing()
{
    QCOMPARE(Emit([](ZETDxfParser& parser) {
                 parser.WritePolyline(ZETMathSetOfPoints(), true, true, 1, 1, 1, 1, 1.0, 1.0, 1.0);
             }),
             QByteArray());
}

void TestDxfParser::offsetsAreAddedToVerticesAndTheHeightToTheHead()
{
    const auto bytes = Emit([](ZETDxfParser& parser) {
        parser.WritePolyline(Points({{1.0, 2.0, 3.0}}), false, false, 0, 0, 0, 0, 10.0, 20.0, 30.0);
    });
    QCOMPARE(bytes,
             Pairs({"0 POLYLINE", "8 0", "6 0", "62 0", "39 0", "10 0.000000", "20 0.000000", "30 30.000000", "66 1",
                    "70 0", "0 VERTEX", "8 0", "62 0", "10 11.000000", "20 22.000000", "30 33.000000", "0 SEQEND"}));
}

void TestDxfParser::numbersHaveSixDecimalsWhateverTheirSize()
{
    const auto bytes =
        Emit([](ZETDxfParser& parser) { parser.WriteText(u"x"_s, 1234567.891, 1.5, -0.0000001, 1e-7, 0, 0); });
    QCOMPARE(bytes, Pairs({"0 TEXT", "8 0", "62 0", "10 1234567.891000", "20 1.500000", "30 -0.000000", "40 0.000000",
                           "1 x"}));
}

void TestDxfParser::textIsOneEntity()
{
    const auto bytes = Emit([](ZETDxfParser& parser) { parser.WriteText(u"two words"_s, 1.0, 2.0, 3.0, 12.5, 4, 6); });
    QCOMPARE(bytes, Pairs({"0 TEXT", "8 4", "62 6", "10 1.000000", "20 2.000000", "30 3.000000", "40 12.500000",
                           "1 two words"}));
}

void TestDxfParser::textOutsideAsciiIsInTheLocalEncoding()
{
    const QString text = u"Flügel"_s;
    const auto bytes = Emit([&](ZETDxfParser& parser) { parser.WriteText(text, 0.0, 0.0, 0.0, 1.0, 0, 0); });
    QVERIFY2(bytes.endsWith("  1\n" + text.toLocal8Bit() + '\n'), bytes.constData());
}

void TestDxfParser::endClosesEntitiesAndFile()
{
    QCOMPARE(Emit([](ZETDxfParser& parser) { parser.WriteEndSection(); }), Pairs({"0 ENDSEC", "0 EOF"}));
}

void TestDxfParser::failedStreamGetsNothingMore()
{
    QByteArray bytes;
    QTextStream stream(&bytes);
    stream.setStatus(QTextStream::WriteFailed);
    ZETDxfParser parser(stream);
    parser.WriteStartSection(4);
    parser.WritePolyline(Points({{0.0, 0.0, 0.0}}), true, true, 1, 1, 1, 1, 0.0, 0.0, 0.0);
    parser.WriteText(u"x"_s, 0.0, 0.0, 0.0, 1.0, 0, 0);
    parser.WriteEndSection();
    stream.flush();
    QCOMPARE(bytes, QByteArray());
}

void TestDxfParser::streamThatFailsInBetweenTurnsSilent()
{
    FullDevice device(200000);
    QTextStream stream(&device);
    ZETDxfParser parser(stream);
    ZETMathSetOfPoints points;
    points.points.fill(ZETMathPoint(1.0, 2.0, 3.0), 10000); // more than the device takes
    parser.WritePolyline(points, true, false, 1, 1, 1, 1, 0.0, 0.0, 0.0);
    QCOMPARE(stream.status(), QTextStream::WriteFailed);
    const QByteArray taken = device.taken;
    QVERIFY(taken.startsWith("  0\nPOLYLINE\n"));
    parser.WriteText(u"x"_s, 0.0, 0.0, 0.0, 1.0, 0, 0);
    parser.WriteEndSection();
    QCOMPARE(device.taken, taken);
}

void TestDxfParser::eachOperationIsOnTheDeviceWhenItReturns()
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QTextStream stream(&buffer);
    ZETDxfParser parser(stream);
    parser.WriteStartSection(4);
    QVERIFY(buffer.data().endsWith(Pairs({"2 ENTITIES"})));
    parser.WritePolyline(Points({{0.0, 0.0, 0.0}}), false, false, 0, 0, 0, 0, 0.0, 0.0, 0.0);
    QVERIFY(buffer.data().endsWith(Pairs({"0 SEQEND"})));
    parser.WriteText(u"x"_s, 0.0, 0.0, 0.0, 1.0, 0, 0);
    QVERIFY(buffer.data().endsWith(Pairs({"1 x"})));
    parser.WriteEndSection();
    QVERIFY(buffer.data().endsWith(Pairs({"0 ENDSEC", "0 EOF"})));
}

void TestDxfParser::endFlushesAFile()
{
    QFile file(u"drawing.DXF"_s);
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Text));
    QTextStream stream(&file);
    ZETDxfParser parser(stream);
    parser.WriteText(u"x"_s, 0.0, 0.0, 0.0, 1.0, 0, 0);
    parser.WriteEndSection();
    QFile reader(u"drawing.DXF"_s);
    QVERIFY(reader.open(QIODevice::ReadOnly));
    QCOMPARE(reader.readAll(), Pairs({"0 TEXT", "8 0", "62 0", "10 0.000000", "20 0.000000", "30 0.000000",
                                      "40 1.000000", "1 x", "0 ENDSEC", "0 EOF"}));
}

void TestDxfParser::whatTheCallerWroteKeepsItsPlace()
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QTextStream stream(&buffer);
    ZETDxfParser parser(stream);
    stream << "999\nahead\n";
    parser.WriteEndSection();
    stream << "behind\n";
    stream.flush();
    QCOMPARE(buffer.data(), "999\nahead\n" + Pairs({"0 ENDSEC", "0 EOF"}) + "behind\n");
}

void TestDxfParser::otherEncodingsOfTheStreamAreKept()
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QTextStream stream(&buffer);
    stream.setEncoding(QStringConverter::Latin1);
    ZETDxfParser parser(stream);
    parser.WriteText(u"Fl\u00fcgel"_s, 0.0, 0.0, 0.0, 1.0, 0, 0);
    stream.flush();
    QVERIFY2(bytes.endsWith("  1\nFl\xfcgel\n"), bytes.constData());
}

void TestDxfParser::longTextIsWhole()
{
    // Longer than any block, so that blocks end within a letter, on a stream with a device and on one without.
    const QString text = QString(200001, u'\u00fc');
    const auto write = [&](ZETDxfParser& parser) { parser.WriteText(text, 0.0, 0.0, 0.0, 1.0, 0, 0); };
    const QByteArray tail = "  1\n" + text.toUtf8() + '\n';
    QVERIFY(Emit(write).endsWith(tail));
    QString string;
    QTextStream stream(&string);
    ZETDxfParser parser(stream);
    write(parser);
    QVERIFY(string.toUtf8().endsWith(tail));
}

void TestDxfParser::numbersThatNeedMoreRoomAreWrittenInVertices()
{
    const QByteArray big = QByteArray::number(1e300, 'f', 6);
    const auto infinity = std::numeric_limits<double>::infinity();
    const auto bytes = Emit([&](ZETDxfParser& parser) {
        parser.WritePolyline(
            Points({{1e300, 1.0, 2.0}, {1.0, 123456789.5, 2.0}, {1.0, 2.0, -infinity}, {3.0, 4.0, 5.0}}), true, false,
            12, 34, 0, 0, 0.0, 0.0, 0.0);
    });
    const auto vertex = [](const QByteArray& x, const QByteArray& y, const QByteArray& z) {
        return Pairs({"0 VERTEX", "8 12", "62 34", "10 " + x, "20 " + y, "30 " + z});
    };
    QVERIFY(big.size() > 300);
    QVERIFY2(bytes.endsWith(vertex(big, "1.000000", "2.000000") + vertex("1.000000", "123456789.500000", "2.000000") +
                            vertex("1.000000", "2.000000", "-inf") + vertex("3.000000", "4.000000", "5.000000") +
                            Pairs({"0 SEQEND"})),
             bytes.constData());
}

void TestDxfParser::codesOfAnyNumberAreWritten()
{
    const auto bytes = Emit([](ZETDxfParser& parser) {
        parser.WritePolyline(Points({{0.0, 0.0, 0.0}}), false, false, std::numeric_limits<int>::min(),
                             std::numeric_limits<int>::max(), -1, 256, 0.0, 0.0, 0.0);
    });
    QCOMPARE(bytes, Pairs({"0 POLYLINE", "8 -2147483648", "6 -1", "62 2147483647", "39 256", "10 0.000000",
                           "20 0.000000", "30 0.000000", "66 1", "70 0", "0 VERTEX", "8 -2147483648", "62 2147483647",
                           "10 0.000000", "20 0.000000", "30 0.000000", "0 SEQEND"}));
}

void TestDxfParser::longPolylineIsTheSameAsItsPairs()
{
    ZETMathSetOfPoints points;
    QByteArray expected = Pairs(
        {"0 POLYLINE", "8 1", "6 0", "62 0", "39 0", "10 0.000000", "20 0.000000", "30 0.000000", "66 1", "70 8"});
    for (int i = 0; i < 5000; ++i) {
        const double x = i * 0.37 - 900.0;
        points.points.append(ZETMathPoint(x, -x / 3.0, x * x));
        const auto number = [](double value) { return QString::number(value, 'f', 6).toLatin1(); };
        expected +=
            Pairs({"0 VERTEX", "8 1", "62 0", "10 " + number(x), "20 " + number(-x / 3.0), "30 " + number(x * x)});
    }
    expected += Pairs({"0 SEQEND"});
    QCOMPARE(Emit([&](ZETDxfParser& parser) { parser.WritePolyline(points, true, false, 1, 0, 0, 0, 0.0, 0.0, 0.0); }),
             expected);
}

QTEST_GUILESS_MAIN(TestDxfParser)
#include "TestDxfParser.moc"
