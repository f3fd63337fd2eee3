#pragma once

#include <ZETHostGlobal.h>

#include <QHash>
#include <QString>

class ZETFeatContainer;

/*! What stands behind a container: the document system that it came from. */
class ZETHOST_EXPORT ZETFeatContainerProvider
{
public:
    virtual ~ZETFeatContainerProvider();

    /*! Extra text parameters of the model, by bare name without percent signs. May be empty. */
    virtual QHash<QString, QString> GetTextParameters(const ZETFeatContainer* container) const = 0;
};
