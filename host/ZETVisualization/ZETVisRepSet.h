#pragma once

#include <ZETVisualization/ZETVisRep.h>

/*! Several representations as one. Owns them. */
class ZETHOST_EXPORT ZETVisRepSet : public ZETVisRep
{
    Q_OBJECT

public:
    explicit ZETVisRepSet(const QList<const ZETVisRep*>& reps);
    ~ZETVisRepSet() override;

    void GetPrimitives(QList<const ZETVisPrimitive*>& primitives, QList<ZETVisOptions>& options) const override;

private:
    QList<const ZETVisRep*> reps;
};
