#pragma once

#include <ZETComposites/ZETCompPly.h>
#include <ZETComposites/ZETCompSurfaceUpdate.h>
#include <ZETMaterial/ZETMatMaterial.h>

#include <QList>
#include <QPointer>

class ZETCompPlyPrivate
{
public:
    static ZETCompPlyPrivate& Of(ZETCompPly& ply) { return *ply.d; }

    double direction = 0.0;                    //!< in radians
    QList<QPointer<ZETMatMaterial>> materials; //!< the ones that have gone are passed over
    QPointer<ZETCompSurfaceUpdate> surfaceUpdate;
};
