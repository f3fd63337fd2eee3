#pragma once

#include <ZETHostGlobal.h>

#include <QList>
#include <QObject>

class ZETTopEntity;

/*! A connected part of a body. Domains belong to their body and live as long as it does. */
class ZETHOST_EXPORT ZETTopDomain : public QObject
{
    Q_OBJECT

public:
    ~ZETTopDomain() override;

    /*! The entities of one dimension, in a stable order: 0 vertices, 1 edges, 2 faces. Those of dimension 0 of a net
     *  are the end points of its edges. */
    virtual QList<const ZETTopEntity*> GetEntities(int dimension) const = 0;

protected:
    ZETTopDomain();
};
