#pragma once

#include <ZETHostGlobal.h>
#include <ZETMathematics/ZETMathBoundingBox.h>
#include <ZETVisualization/ZETVisOptions.h>

#include <QList>
#include <QObject>

class ZETVisPrimitive;

/*! Something that can be drawn. Whoever hands a representation to a set or an object gives it away. */
class ZETHOST_EXPORT ZETVisRep : public QObject
{
    Q_OBJECT

public:
    ~ZETVisRep() override;

    /*! Appends the content: two lists that grow by the same number, options by index. */
    virtual void GetPrimitives(QList<const ZETVisPrimitive*>& primitives, QList<ZETVisOptions>& options) const = 0;
    /*! The box of all points of the content. */
    virtual ZETMathBoundingBox GetBoundingBox() const;

protected:
    ZETVisRep();
};
