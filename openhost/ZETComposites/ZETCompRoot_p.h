#pragma once

#include <ZETComposites/ZETCompMfgConfiguration.h>
#include <ZETComposites/ZETCompRoot.h>

#include <QPointer>

class ZETCompRootPrivate
{
public:
    static ZETCompRootPrivate& Of(ZETCompRoot& root) { return *root.d; }

    QPointer<ZETCompMfgConfiguration> activeConfiguration;
};
