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

    /*! Whether the object has one position; GetPosition is meaningless without. */
    virtual bool IsPosition() const;
    virtual ZETMathPoint GetPosition() const;
    virtual ZETMathBoundingBox GetBoundingBox() const;

protected:
    explicit ZETVisObject(QObject* parent);
};
