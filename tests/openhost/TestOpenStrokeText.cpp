#include "openhost/ZETSystem/ZETOpenMessageQueue.h"
#include "openhost/ZETVisualization/ZETOpenStrokeFont.h"

#include <ZETVisualization/ZETVisVectorText.h>

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

using namespace Qt::Literals::StringLiterals;

namespace
{
QList<ZETMathSetOfPoints> Strokes(const QString& text, double size = 21.0, double spacing = 2.0,
                                  ZETVisVectorText::Decorations decorations = {})
{
    ZETVisVectorText vectorText;
    vectorText.SetFont(ZETVisVectorFont(u"simple"_s));
    vectorText.SetAnchor(ZETVisVectorText::AnchorBaseLeft);
    vectorText.SetOrientation(ZETVisVectorText::OrientationHorizontal);
    vectorText.SetJustification(ZETVisVectorText::JustificationLeft);
    vectorText.SetDecorations(decorations);
    vectorText.SetText(text);
    vectorText.SetTextSize(size);
    vectorText.SetLineSpacing(spacing);
    vectorText.SetPlane(ZETMathPlane());
    return vectorText.GetPolylines();
}

ZETMathBoundingBox GetBox(const QList<ZETMathSetOfPoints>& strokes)
{
    ZETMathBoundingBox box;
    for (const ZETMathSetOfPoints& stroke : strokes)
        box.Expand(stroke.GetBoundingBox());
    return box;
}

/*! The strokes as text, coordinates rounded to 1/1000, so that cases can be written down. */
QString Describe(const QList<ZETMathSetOfPoints>& strokes)
{
    QStringList runs;
    for (const ZETMathSetOfPoints& stroke : strokes) {
        QStringList points;
        for (const ZETMathPoint& point : stroke.points) {
            const auto number = [](double value) { return QString::number(qRound(value * 1000.0) / 1000.0); };
            points.append(number(point.GetX()) + u',' + number(point.GetY()) + u',' + number(point.GetZ()));
        }
        runs.append(points.join(u' '));
    }
    return runs.join(u" | "_s);
}
} // namespace

class TestOpenStrokeText : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void letterStandsWhereItsFontSays();
    void everyPrintableCharacterHasStrokes();
    void capitalsAreAsHighAsTheTextSize_data();
    void capitalsAreAsHighAsTheTextSize();
    void charactersStandSideBySide();
    void linesGoDownByTheSpacing();
    void planeTakesTheTextAlong();
    void directionsOfAnyLengthKeepTheSize();
    void characterOfAnotherAlphabetIsAQuestionMark();
    void emptyTextHasNoStrokes();
    void underlineRunsUnderEachLine();
    void missingFontIsToldOnce();
    void brokenFontIsTold_data();
    void brokenFontIsTold();
    void fontMayWrapItsLines();
    void unknownFontHasNoStrokes();
};

void TestOpenStrokeText::init()
{
    ZETOpenMessageQueue::Install();
    ZETOpenStrokeFont::SetFolder(u"/usr/share/hershey-fonts"_s);
}

void TestOpenStrokeText::cleanup()
{
    ZETOpenMessageQueue::Remove();
}

void TestOpenStrokeText::letterStandsWhereItsFontSays()
{
    // I is "NVRFR[": bounds 4 left and right of the middle, from 12 above it to 9 below, which is the base line. A
    // capital is 21 units of the font high, so at the size 21 a unit is a millimetre.
    QCOMPARE(Describe(Strokes(u"I"_s)), u"4,21,0 4,0,0"_s);
    // L is "HYLFL[ RL[X[": two runs.
    QCOMPARE(Describe(Strokes(u"L"_s)), u"4,21,0 4,0,0 | 4,0,0 16,0,0"_s);
}

void TestOpenStrokeText::everyPrintableCharacterHasStrokes()
{
    QVERIFY(Strokes(u" "_s).isEmpty());
    for (char16_t character = u'!'; character <= u'~'; ++character) {
        const QList<ZETMathSetOfPoints> strokes = Strokes(QString(QChar(character)));
        QVERIFY2(!strokes.isEmpty(), QByteArray(1, static_cast<char>(character)).constData());
        for (const ZETMathSetOfPoints& stroke : strokes)
            QVERIFY2(stroke.points.size() > 1, QByteArray(1, static_cast<char>(character)).constData());
        if (character != u'?')
            QVERIFY(Describe(strokes) != Describe(Strokes(u"?"_s)));
    }
    QVERIFY(ZETOpenMessageQueue::GetMessages().isEmpty());
}

void TestOpenStrokeText::capitalsAreAsHighAsTheTextSize_data()
{
    QTest::addColumn<double>("size");
    QTest::newRow("10") << 10.0;
    QTest::newRow("0.5") << 0.5;
    QTest::newRow("250") << 250.0;
}

void TestOpenStrokeText::capitalsAreAsHighAsTheTextSize()
{
    QFETCH(double, size);
    for (const QChar character : u"ABDEFHIKLMNPRTXZ"_s) {
        const ZETMathBoundingBox box = GetBox(Strokes(QString(character), size));
        QCOMPARE(box.GetLowerPoint().GetY() + size, size); // the sum, because zero is compared exactly
        QCOMPARE(box.GetUpperPoint().GetY(), size);
        QVERIFY(box.GetLowerPoint().GetX() >= 0.0);
    }
    QVERIFY(GetBox(Strokes(u"g"_s, size)).GetLowerPoint().GetY() < -0.1 * size);
}

void TestOpenStrokeText::charactersStandSideBySide()
{
    QCOMPARE(Describe(Strokes(u"II"_s)), u"4,21,0 4,0,0 | 12,21,0 12,0,0"_s);
    // A blank is 16 wide.
    QCOMPARE(Describe(Strokes(u"I I"_s)), u"4,21,0 4,0,0 | 28,21,0 28,0,0"_s);
}

void TestOpenStrokeText::linesGoDownByTheSpacing()
{
    QCOMPARE(Describe(Strokes(u"I\n\nI"_s, 21.0, 2.0)), u"4,21,0 4,0,0 | 4,-63,0 4,-84,0"_s);
}

void TestOpenStrokeText::planeTakesTheTextAlong()
{
    ZETMathPlane plane;
    plane.SetOrigin(ZETMathPoint(100.0, 200.0, 300.0));
    plane.SetDirections(ZETMathVector(0.0, 1.0, 0.0), ZETMathVector(0.0, 0.0, 1.0));
    ZETVisVectorText text;
    text.SetText(u"L"_s);
    text.SetTextSize(21.0);
    text.SetPlane(plane);
    QCOMPARE(Describe(text.GetPolylines()), u"100,204,321 100,204,300 | 100,204,300 100,216,300"_s);
}

void TestOpenStrokeText::directionsOfAnyLengthKeepTheSize()
{
    ZETMathPlane plane;
    plane.SetDirections(ZETMathVector(5.0, 0.0, 0.0), ZETMathVector(0.0, 0.25, 0.0));
    ZETVisVectorText text;
    text.SetText(u"L"_s);
    text.SetTextSize(21.0);
    text.SetPlane(plane);
    QCOMPARE(Describe(text.GetPolylines()), Describe(Strokes(u"L"_s)));
}

void TestOpenStrokeText::characterOfAnotherAlphabetIsAQuestionMark()
{
    QCOMPARE(Describe(Strokes(u"I\u00e4\U0001f600\tI"_s)), Describe(Strokes(u"I???I"_s)));
}

void TestOpenStrokeText::emptyTextHasNoStrokes()
{
    QVERIFY(Strokes(QString()).isEmpty());
    QVERIFY(Strokes(u"  \n "_s).isEmpty());
}

void TestOpenStrokeText::underlineRunsUnderEachLine()
{
    QCOMPARE(Describe(Strokes(u"I\nI"_s, 21.0, 2.0, ZETVisVectorText::DecorationUnderline)),
             u"4,21,0 4,0,0 | 0,-4.2,0 8,-4.2,0 | 4,-21,0 4,-42,0 | 0,-46.2,0 8,-46.2,0"_s);
}

void TestOpenStrokeText::missingFontIsToldOnce()
{
    const QTemporaryDir folder;
    ZETOpenStrokeFont::SetFolder(folder.path());
    QVERIFY(Strokes(u"A"_s).isEmpty());
    QVERIFY(Strokes(u"B"_s).isEmpty());
    const QList<ZETOpenMessage> messages = ZETOpenMessageQueue::GetMessages();
    QCOMPARE(messages.size(), 1);
    QCOMPARE(messages.first().type, ZETSysMessageQueue::TypeWarning);
    QCOMPARE(messages.first().text,
             u"The stroke font \"simple\" could not be read from %1/rowmans.jhf: texts are not drawn. Is the package "
             "hershey-fonts-data installed?"_s.arg(folder.path()));

    ZETOpenMessageQueue::Remove(); // without a queue nobody is told, and nothing fails
    ZETOpenStrokeFont::SetFolder(folder.path());
    QVERIFY(Strokes(u"A"_s).isEmpty());
}

void TestOpenStrokeText::brokenFontIsTold_data()
{
    QTest::addColumn<QByteArray>("content");
    QFile font(u"/usr/share/hershey-fonts/rowmans.jhf"_s);
    QVERIFY(font.open(QIODevice::ReadOnly));
    const QByteArray good = font.readAll();
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("cut off") << good.left(good.size() / 2);
    QTest::newRow("no count") << QByteArray(good).replace("  699  1JZ", "  699  xJZ");
    QTest::newRow("count of nothing") << QByteArray(good).replace("  699  1JZ", "  699  0JZ");
    QTest::newRow("count too high") << QByteArray(good).replace("  699  1JZ", "  699999JZ");
    QTest::newRow("binary") << QByteArray(1000, '\0');
}

void TestOpenStrokeText::brokenFontIsTold()
{
    QFETCH(QByteArray, content);
    const QTemporaryDir folder;
    QFile file(folder.filePath(u"rowmans.jhf"_s));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(content);
    file.close();
    ZETOpenStrokeFont::SetFolder(folder.path());
    QVERIFY(Strokes(u"A"_s).isEmpty());
    QCOMPARE(ZETOpenMessageQueue::GetMessages().size(), 1);
}

void TestOpenStrokeText::fontMayWrapItsLines()
{
    QFile font(u"/usr/share/hershey-fonts/rowmans.jhf"_s);
    QVERIFY(font.open(QIODevice::ReadOnly));
    QByteArray content;
    for (const QByteArray& line : font.readAll().split('\n'))
        content += line.size() > 30 ? line.left(30) + "\r\n" + line.mid(30) + "\r\n" : line + "\r\n";
    const QTemporaryDir folder;
    QFile file(folder.filePath(u"rowmans.jhf"_s));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(content);
    file.close();
    const QString expected = Describe(Strokes(u"The quick brown @ & $8"_s));
    ZETOpenStrokeFont::SetFolder(folder.path());
    QCOMPARE(Describe(Strokes(u"The quick brown @ & $8"_s)), expected);
}

void TestOpenStrokeText::unknownFontHasNoStrokes()
{
    ZETVisVectorText text;
    text.SetText(u"A"_s);
    for (const QString& name : {u"no such font"_s, u"../hershey-fonts/rowmans"_s}) {
        text.SetFont(ZETVisVectorFont(name));
        QVERIFY(text.GetPolylines().isEmpty());
    }
    QCOMPARE(ZETOpenMessageQueue::GetMessages().size(), 2);
    text.SetFont(ZETVisVectorFont(u"rowmans"_s)); // by the name of its file
    QVERIFY(!text.GetPolylines().isEmpty());
}

QTEST_GUILESS_MAIN(TestOpenStrokeText)
#include "TestOpenStrokeText.moc"
