#pragma once

#include "laser/ZETLaserGlobal.h"

#include <ZETFeature/ZETFeatObject.h>
#include <ZETGeometry/ZETGeoGeometryRef.h>

#include <QByteArray>
#include <QList>
#include <QString>

#include <memory>

class ZETLaserParameterPrivate;

/*! A typed text that a writer passes to the projector with the plies of the extra geometry that it stands in. The text
 *  may hold macros such as "%PLY%". It draws nothing. */
class ZETLASER_EXPORT ZETLaserParameter : public ZETFeatObject
{
    Q_OBJECT
    Q_CLASSINFO("defaultLabel", "Laser Parameter")
    Q_CLASSINFO("inputProps", "type text")
    Q_CLASSINFO("outputProps", "")
    Q_CLASSINFO("visProps", "")
    Q_CLASSINFO("contextualActions", "")
    Q_CLASSINFO("editAction", "ZETLaserParameterCmd.Edit")
    Q_CLASSINFO("allowedParents", "ZETLaserExtraGeometry")
    Q_CLASSINFO("PropertyLabel_type", "Type")
    Q_CLASSINFO("PropertyLabel_text", "Text")

    Q_PROPERTY(ParameterType type READ GetType WRITE SetType NOTIFY TypeChanged)
    Q_PROPERTY(QString text READ GetText WRITE SetText NOTIFY TextChanged)

public:
    /*! How the projector takes the text; what that means is told by each format. A stream may bring other values. */
    enum ParameterType : int { Information = 0, Message = 1, Graphic = 2, Query = 3, Literal = 4, Note = 5 };
    Q_ENUM(ParameterType)

    static const QByteArray Property_type;
    static const QByteArray Property_text;

    /*! Creates the parameter as the last child of \a parent, which must not be null. */
    Q_INVOKABLE explicit ZETLaserParameter(ZETFeatObject* parent);
    /*! For loading: no parent yet. Both arguments may be null or invalid. */
    Q_INVOKABLE ZETLaserParameter(ZETGeoContainer* container, const ZETGeoGeometryRef& reference);
    ~ZETLaserParameter() override;

    /*! DEFAULT: Information */
    ParameterType GetType() const;
    void SetType(const ParameterType& type);

    /*! As the user typed it, macros unexpanded. DEFAULT: empty, which isn't valid */
    QString GetText() const;
    void SetText(const QString& text);

    /*! The name of a type for people, translated; empty for a value that is none of the enumeration. */
    static QString GetParameterTypeString(ParameterType type);
    /*! The six types, in the order of their values. */
    static QList<ParameterType> GetAllParameterTypes();

    /*! type, text, behind the base's fields. */
    void Save(ZETGeoStream& stream) const override;
    void Load(ZETGeoStream& stream) override;
    /*! Fails for an empty text; a blank is a text. */
    bool UpdateResult() override;

Q_SIGNALS:
    void TypeChanged(const ParameterType& type);
    void TextChanged(const QString& text);

private:
    /*! Never called: a feature class without its loading constructor shall not build. */
    void _constructor_checker() { ZETLaserParameter(nullptr, ZETGeoGeometryRef()); }

    Q_DECLARE_PRIVATE_D(record, ZETLaserParameter)
    std::unique_ptr<ZETLaserParameterPrivate> record;
};
