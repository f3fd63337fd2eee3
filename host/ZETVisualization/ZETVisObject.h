#pragma once

#include <ZETHostGlobal.h>
#include <ZETMathematics/ZETMathBoundingBox.h>
#include <ZETMathematics/ZETMathPoint.h>

#include <QObject>

/*! A thing in the scene. */
class ZETHOST_EXPORT ZETVisObject : public QObject
{
    Q_OBJECT

public:
    ~ZETVisObject() override;

    /*! Whether the object has one position; GetPosition is meaningless without. False, as here. */
    virtual bool IsPosition() const;
    /*! Position and box in model coordinates, in mm; the box is empty where there is nothing to see, as here. */
    virtual ZETMathPoint GetPosition() const;
    virtual ZETMathBoundingBox GetBoundingBox() const;

protected:
    explicit ZETVisObject(QObject* parent);
};
