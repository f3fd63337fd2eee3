#pragma once

#include <QEnableSharedFromThis>
#include <QObject>
#include <QSharedPointer>
#include <QString>

class ZETMathAxis;

/*! Base of everything that stands in a laser tree. Its class is found by a meta-object cast, never by a type field.
 *
 *  An entity is created on the heap and wrapped at once with `QSharedPointer<T>::create`. Lists of shared pointers own
 *  the children; the tree is at the same time a QObject tree, whose parenthood deletes what no shared pointer has. So
 *  whoever holds an entity may keep it beyond the tree: it loses its parent then. */
class ZETLaserEntity : public QObject, public QEnableSharedFromThis<ZETLaserEntity>
{
    Q_OBJECT

public:
    /*! \a parent is the entity's place in the QObject tree; null for the root alone. */
    explicit ZETLaserEntity(QSharedPointer<QObject> parent);
    ~ZETLaserEntity() override;

    /*! Display name: of the ply, contour or layer in files and report. */
    QString GetName() const { return name; }
    void SetName(const QString& value) { name = value; }

    /*! Reduces the points of everything below this entity. \a tolerance and \a maxLength are mm: see
     *  ZETLaserCurve::MinimizePoints. */
    virtual void MinimizePoints(double tolerance, double maxLength) = 0;
    /*! Transforms everything below this entity: see ZETLaserCurve::Transform. */
    virtual void Transform(const ZETMathAxis& axis) = 0;

private:
    QString name;
};
