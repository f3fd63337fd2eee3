#pragma once

#include "openhost/ZETComposites/ZETOpenComposites.h"

#include <ZETComposites/ZETCompMfgConfiguration.h>
#include <ZETComposites/ZETCompPlyBase.h>
#include <ZETComposites/ZETCompStrategyBase.h>

#include <QHash>
#include <QList>
#include <QPointer>

class ZETCompMfgConfigurationPrivate
{
public:
    static ZETCompMfgConfigurationPrivate& Of(ZETCompMfgConfiguration& configuration) { return *configuration.d; }
    static const ZETCompMfgConfigurationPrivate& Of(const ZETCompMfgConfiguration& configuration)
    {
        return *configuration.d;
    }

    /*! What the configuration makes of one ply. */
    struct Choice {
        QPointer<ZETCompPlyBase> ply;
        bool isNone = false; //!< the ply isn't made at all
        QPointer<ZETCompStrategyBase> included;

        /*! A choice whose ply or strategy has gone says nothing any more. */
        bool IsLive() const { return ply && (isNone || included); }
    };

    /*! The choice for \a ply; null if there is none. */
    const Choice* Find(const ZETCompPlyBase& ply) const;
    void Choose(ZETCompPlyBase& ply, ZETCompStrategyBase* included);

    ZETOpenComposites::MfgConfigurationSettings settings;
    QList<Choice> choices; //!< in the order in which they were made

private:
    QHash<const ZETCompPlyBase*, qsizetype> positions; //!< of the choices, by ply
};
