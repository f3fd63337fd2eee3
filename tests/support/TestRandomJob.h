#pragma once

#include "tests/support/TestJob.h"

#include <ZETMathematics/ZETMathAxis.h>
#include <ZETMathematics/ZETMathPoint.h>
#include <ZETMathematics/ZETMathVector.h>

#include <QList>
#include <QString>

class QRandomGenerator;

/*! A job made at random: layers and plies, empty ones among them, curves open and closed with 0 to some points, normals
 *  and offset points here and there, parameters of all types, texts, units, axis system and switches. The same number
 *  gives the same job on every machine. For tests that read back what a writer made of it.
 *
 *  Names and texts have no line ends and no percent signs; those of Literal parameters begin with '!', by which a
 *  reader can know them. Names hold blanks and letters beyond ASCII. */
class TestRandomJob
{
public:
    explicit TestRandomJob(quint32 seed);

    struct Point {
        ZETMathPoint position;
        ZETMathVector normal;
        ZETMathPoint offset;
        bool hasOffset = false;

        bool HasNormal() const { return normal.GetSquaredMagnitude() != 0.0; }
    };
    struct Curve {
        QString name;
        bool closed = false;
        QList<Point> points;
    };
    struct Parameter {
        int type; //!< 0 to 5
        QString text;
    };
    struct Text {
        QString text;
        ZETMathPoint origin;
        ZETMathVector first;
        ZETMathVector second;
        double size;
    };
    struct Group {
        QString kind; //!< layup, sequence, ply, subply or group
        QString name;
        QList<Group> groups; //!< empty: a leaf
        QList<Curve> curves; //!< each in a contour of its own
        QList<Parameter> parameters;
        QList<Text> texts;

        bool IsPly() const { return kind == QStringLiteral("ply") || kind == QStringLiteral("subply"); }
        /*! Whether there is a point or a parameter below. */
        bool HasOutput() const;
    };

    /*! The job as TestJob reads it; numbers are told exactly. */
    QString ToText() const;

    /*! Where \a point is in the file, worked out without the frame of the writers. */
    QList<double> Place(const ZETMathPoint& point) const;
    /*! The same for a normal. */
    QList<double> Turned(const ZETMathVector& vector) const;

    /*! The numbers of the points of \a curve as formats write them: place and, if it is written, normal; the first
     *  point again where a closed curve has more than one. */
    QList<QList<double>> GetWrittenPoints(const Curve& curve) const;

    /*! Three coordinates, from tiny to tens of metres, in mm. */
    static QList<double> RandomNumbers(QRandomGenerator& random);

    bool inches = false;
    bool normals = true;
    bool rosetteFirst = false;
    bool nestSequences = true;
    bool hasAxis = false;
    ZETMathPoint axisOrigin;
    ZETMathVector axisFirst;
    ZETMathVector axisSecond;
    QList<Group> groups;
};
