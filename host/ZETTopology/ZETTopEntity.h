#pragma once

#include <ZETHostGlobal.h>

#include <QObject>

/*! Base of vertices, edges and faces. Entities belong to their body and live as long as it does. */
class ZETHOST_EXPORT ZETTopEntity : public QObject
{
    Q_OBJECT

public:
    ~ZETTopEntity() override;

protected:
    ZETTopEntity();
};
