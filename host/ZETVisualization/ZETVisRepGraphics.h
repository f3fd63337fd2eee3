#pragma once

#include <ZETVisualization/ZETVisRep.h>

/*! Primitives with the options by which they are drawn. Owns the primitives. */
class ZETHOST_EXPORT ZETVisRepGraphics : public ZETVisRep
{
    Q_OBJECT

public:
    /*! All primitives with one options record. */
    ZETVisRepGraphics(const QList<const ZETVisPrimitive*>& primitives, const ZETVisOptions& options);
    /*! Primitive i with options i; the lists are of the same length. */
    ZETVisRepGraphics(const QList<const ZETVisPrimitive*>& primitives, const QList<ZETVisOptions>& options);
    ~ZETVisRepGraphics() override;

    void GetPrimitives(QList<const ZETVisPrimitive*>& primitives, QList<ZETVisOptions>& options) const override;

private:
    QList<const ZETVisPrimitive*> ownPrimitives;
    QList<ZETVisOptions> ownOptions;
};
