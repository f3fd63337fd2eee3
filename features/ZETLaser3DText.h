#pragma once

#include "laser/ZETLaserGlobal.h"

#include <ZETFeature/ZETFeatObject.h>
#include <ZETGeometry/ZETGeoGeometryRef.h>
#include <ZETMathematics/ZETMathPoint.h>
#include <ZETMathematics/ZETMathVector.h>

#include <QByteArray>
#include <QString>

#include <memory>

class ZETLaser3DTextPrivate;

/*! A line of stroke text in space, projected with the plies of the extra geometry that it stands in. This class has the
 *  text and its size; where the text stands is told by the three operations that its subclasses answer, and that
 *  writers, reader and display read. Places and directions are in model coordinates, lengths in mm. */
class ZETLASER_EXPORT ZETLaser3DText : public ZETFeatObject
{
    Q_OBJECT
    Q_CLASSINFO("defaultLabel", "3D Text")
    Q_CLASSINFO("inputProps", "text size")
    Q_CLASSINFO("outputProps", "")
    Q_CLASSINFO("visProps", "text size")
    Q_CLASSINFO("contextualActions", "")
    Q_CLASSINFO("editAction", "")
    Q_CLASSINFO("allowedParents", "ZETLaserExtraGeometry")
    Q_CLASSINFO("PropertyLabel_text", "Text")
    Q_CLASSINFO("PropertyLabel_size", "Size")

    Q_PROPERTY(QString text READ GetText WRITE SetText NOTIFY TextChanged)
    Q_PROPERTY(double size READ GetSize WRITE SetSize NOTIFY SizeChanged)

public:
    static const QByteArray Property_text;
    static const QByteArray Property_size;

    ~ZETLaser3DText() override;

    /*! As the user typed it, macros unexpanded. DEFAULT: empty, which isn't valid */
    QString GetText() const;
    void SetText(const QString& text);

    /*! Height of a capital letter, in mm. DEFAULT: 10.0 */
    double GetSize() const;
    void SetSize(double size);

    /*! text, size, behind the base's fields. */
    void Save(ZETGeoStream& stream) const override;
    void Load(ZETGeoStream& stream) override;
    /*! Fails for a size below 0.001, an empty text, and characters that aren't ASCII. */
    bool UpdateResult() override;

    /*! The point where the text starts. */
    virtual ZETMathPoint GetBasePoint() const = 0;
    /*! The direction in which the text runs, of any length; zero if the text has no place. */
    virtual ZETMathVector GetBaseDirection() const = 0;
    /*! The direction from the foot of the letters to their top, of any length; zero if the text has no place. */
    virtual ZETMathVector GetUpDirection() const = 0;

Q_SIGNALS:
    void TextChanged(const QString& text);
    void SizeChanged(double size);

protected:
    /*! \a newRecord is the concrete class's own; the text owns it from now on. \a parent must not be null. */
    ZETLaser3DText(std::unique_ptr<ZETLaser3DTextPrivate> newRecord, ZETFeatObject* parent);
    /*! For loading: \a container may be null and \a reference invalid. */
    ZETLaser3DText(std::unique_ptr<ZETLaser3DTextPrivate> newRecord, ZETGeoContainer* container,
                   const ZETGeoGeometryRef& reference);

    std::unique_ptr<ZETLaser3DTextPrivate> record;

private:
    Q_DECLARE_PRIVATE_D(record, ZETLaser3DText)
};
