#pragma once

#include "laser/ZETLaserGlobal.h"

#include <ZETFeature/ZETFeatFolder.h>
#include <ZETGeometry/ZETGeoGeometryRef.h>

#include <QByteArray>
#include <QDataStream>
#include <QFlags>
#include <QList>
#include <QString>

#include <memory>

class ZETLaserExtraGeometryPrivate;

/*! A folder of what is to be projected together with some plies: model geometry, laser parameters and 3D texts. Its
 *  scope says with which plies, its filters in which output modes. It draws nothing and is always valid; the reader
 *  works out where it applies. */
class ZETLASER_EXPORT ZETLaserExtraGeometry : public ZETFeatFolder
{
    Q_OBJECT
    Q_CLASSINFO("defaultLabel", "Extra Geometry")
    Q_CLASSINFO("inputProps", "")
    Q_CLASSINFO("outputProps", "")
    Q_CLASSINFO("visProps", "")
    Q_CLASSINFO("contextualActions", "")
    Q_CLASSINFO("editAction", "ZETLaserExtraGeometryCmd.Edit")
    Q_CLASSINFO("allowedParents", "ZETCompLayup ZETCompSequence ZETCompPly ZETCompSubdivision ZETCompSubPly")
    Q_CLASSINFO("PropertyLabel_scope", "Scope")
    Q_CLASSINFO("PropertyLabel_filters", "Filters")

    Q_PROPERTY(ScopeType scope READ GetScope WRITE SetScope NOTIFY ScopeChanged)
    Q_PROPERTY(OutputFilters filters READ GetFilters WRITE SetFilters NOTIFY FiltersChanged)

public:
    /*! With which plies the content is projected, seen from where the folder stands. A stream may bring other values,
     *  which are for no ply. */
    enum ScopeType : int {
        AllPlies = 0,   //!< every ply of the model, wherever the folder stands
        PliesBelow = 1, //!< those that come behind it within its parent; below a ply, the sub-plies of that
        UntilNext = 2,  //!< those that come behind it within its parent, up to the next folder of this scope there
        ParentOnly = 3  //!< its parent if that is a ply, and all plies below its parent; none directly below the root
    };
    Q_ENUM(ScopeType)

    /*! The output modes in which the content is projected, as bits. */
    enum OutputFilter : int {
        FilterFlat = 1,
        Filter3D = 2,
        FilterFlatNesting = 4 //!< both forms of flat output for nesting
    };
    Q_DECLARE_FLAGS(OutputFilters, OutputFilter)

    static const QByteArray Property_scope;
    static const QByteArray Property_filters;

    /*! Creates the folder as the last child of \a parent, which must not be null. */
    Q_INVOKABLE explicit ZETLaserExtraGeometry(ZETFeatObject* parent);
    /*! For loading: no parent yet. Both arguments may be null or invalid. */
    Q_INVOKABLE ZETLaserExtraGeometry(ZETGeoContainer* container, const ZETGeoGeometryRef& reference);
    ~ZETLaserExtraGeometry() override;

    /*! DEFAULT: AllPlies */
    ScopeType GetScope() const;
    void SetScope(const ScopeType& scope);

    /*! DEFAULT: no bits, so a new folder is in no output until some are set. */
    OutputFilters GetFilters() const;
    void SetFilters(const OutputFilters& filters);

    /*! The name of a scope for people, translated; empty for a value that is none of the enumeration. */
    static QString GetScopeTypeString(ScopeType scope);
    /*! The four scopes, in the order of their values. */
    static QList<ScopeType> GetAllScopeTypes();

    /*! scope, filters, behind the base's fields. */
    void Save(ZETGeoStream& stream) const override;
    void Load(ZETGeoStream& stream) override;

Q_SIGNALS:
    void ScopeChanged(const ScopeType& scope);
    void FiltersChanged(const OutputFilters& filters);

private:
    /*! Never called: a feature class without its loading constructor shall not build. */
    void _constructor_checker() { ZETLaserExtraGeometry(nullptr, ZETGeoGeometryRef()); }

    Q_DECLARE_PRIVATE_D(record, ZETLaserExtraGeometry)
    std::unique_ptr<ZETLaserExtraGeometryPrivate> record;
};

Q_DECLARE_OPERATORS_FOR_FLAGS(ZETLaserExtraGeometry::OutputFilters)

/*! The bits as one 32-bit integer. */
inline QDataStream& operator<<(QDataStream& stream, const ZETLaserExtraGeometry::OutputFilters& filters)
{
    return stream << static_cast<int>(filters.toInt());
}

/*! Replaces the whole value; unknown bits are kept. */
inline QDataStream& operator>>(QDataStream& stream, ZETLaserExtraGeometry::OutputFilters& filters)
{
    int bits = 0;
    stream >> bits;
    filters = ZETLaserExtraGeometry::OutputFilters::fromInt(bits);
    return stream;
}
