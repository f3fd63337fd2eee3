#include <ZETMathematics/ZETMathPlane.h>

#include <QByteArray>
#include <QDataStream>
#include <QtTest>

namespace
{
bool IsSame(const ZETMathPlane& a, const ZETMathPlane& b)
{
    return a.GetOrigin() == b.GetOrigin() && a.GetFirstDirection() == b.GetFirstDirection() &&
           a.GetSecondDirection() == b.GetSecondDirection();
}
} // namespace

class TestMathPlane : public QObject
{
    Q_OBJECT

private slots:
    void defaultIsTheXYPlane()
    {
        const ZETMathPlane plane;
        QCOMPARE(plane.GetOrigin(), ZETMathPoint());
        QCOMPARE(plane.GetFirstDirection(), ZETMathVector(1, 0, 0));
        QCOMPARE(plane.GetSecondDirection(), ZETMathVector(0, 1, 0));
        QCOMPARE(plane.GetNormal(), ZETMathVector(0, 0, 1));
    }
    void directionsAreKeptAsGiven()
    {
        ZETMathPlane plane;
        plane.SetOrigin(ZETMathPoint(1, 2, 3));
        plane.SetDirections(ZETMathVector(0, 3, 0), ZETMathVector(0, 4, 5));
        QCOMPARE(plane.GetOrigin(), ZETMathPoint(1, 2, 3));
        QCOMPARE(plane.GetFirstDirection(), ZETMathVector(0, 3, 0));
        QCOMPARE(plane.GetSecondDirection(), ZETMathVector(0, 4, 5));
    }
    void normalIsFirstCrossSecondOfUnitLength()
    {
        ZETMathPlane plane;
        plane.SetDirections(ZETMathVector(0, 3, 0), ZETMathVector(0, 4, 5));
        QCOMPARE(plane.GetNormal(), ZETMathVector(1, 0, 0));
    }
    void zeroDirectionThrowsAndChangesNothing()
    {
        ZETMathPlane plane;
        plane.SetDirections(ZETMathVector(0, 3, 0), ZETMathVector(0, 4, 5));
        const ZETMathPlane before = plane;
        QVERIFY_THROWS_EXCEPTION(ZETMathZeroMagnitudeVectorException,
                                 plane.SetDirections(ZETMathVector(), ZETMathVector(0, 1, 0)));
        QVERIFY_THROWS_EXCEPTION(ZETMathZeroMagnitudeVectorException,
                                 plane.SetDirections(ZETMathVector(1, 0, 0), ZETMathVector()));
        QVERIFY(IsSame(plane, before));
    }
    void parallelDirectionsHaveNoNormal()
    {
        ZETMathPlane plane;
        plane.SetDirections(ZETMathVector(1, 0, 0), ZETMathVector(-2, 0, 0));
        QVERIFY_THROWS_EXCEPTION(ZETMathZeroMagnitudeVectorException, plane.GetNormal());
    }
    void streamReadsBackWhatItWrote()
    {
        ZETMathPlane plane;
        plane.SetOrigin(ZETMathPoint(0.1, -2e300, 3));
        plane.SetDirections(ZETMathVector(0, 3, 1e-9), ZETMathVector(0, 4, 5));
        QByteArray bytes;
        QDataStream out(&bytes, QIODevice::WriteOnly);
        out << plane;
        QCOMPARE(bytes.size(), 9 * 8);

        ZETMathPlane read;
        QDataStream in(bytes);
        in >> read;
        QVERIFY(IsSame(read, plane));
        QVERIFY(in.atEnd());
        QCOMPARE(in.status(), QDataStream::Ok);
    }
    void truncatedStreamIsToldByItsStatus()
    {
        QByteArray bytes;
        QDataStream out(&bytes, QIODevice::WriteOnly);
        out << ZETMathPlane();
        bytes.chop(1);
        QDataStream in(bytes);
        ZETMathPlane read;
        in >> read;
        QCOMPARE(in.status(), QDataStream::ReadPastEnd);
    }
};

QTEST_GUILESS_MAIN(TestMathPlane)
#include "TestMathPlane.moc"
