#pragma once

#include <ZETHostGlobal.h>

#include <QList>
#include <QObject>

class ZETTopDomain;
class ZETTopEntity;

/*! A topological body. It owns its domains, its entities and their geometry. */
class ZETHOST_EXPORT ZETTopBody : public QObject
{
    Q_OBJECT

public:
    ~ZETTopBody() override;

    /*! What kind of body this is: 0 for a single point, 1 for curves, 2 for surfaces. */
    virtual int GetDimension() const = 0;
    /*! The domains, in a stable order. */
    virtual QList<const ZETTopDomain*> GetDomains() const = 0;
    /*! The entities of one dimension over all domains, in a stable order: 0 vertices, 1 edges, 2 faces. */
    virtual QList<const ZETTopEntity*> GetEntities(int dimension) const = 0;

protected:
    ZETTopBody();
};
