#pragma once

#include <ZETMaterial/ZETMatDefinition.h>

#include <QByteArray>
#include <QMap>
#include <QSharedData>
#include <QVariant>

#include <utility>

class ZETMatDefinitionPrivate : public QSharedData
{
public:
    static const ZETMatDefinitionPrivate& Of(const ZETMatDefinition& definition) { return *definition.d; }

    /*! One state of the record. A property without a value is allowed, but wasn't found on a feature so far. */
    struct State {
        QByteArray key;
        QMap<std::pair<QByteArray, QByteArray>, QVariant> values; //!< by group and name

        bool operator==(const State&) const = default;
    };

    State edited;    //!< what the setters work on
    State committed; //!< what counts
};
