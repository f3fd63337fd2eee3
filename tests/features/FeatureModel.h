#pragma once

#include "openhost/ZETComposites/ZETOpenGeometryFeature.h"
#include "openhost/ZETFeature/ZETOpenModel.h"
#include "openhost/ZETFeature/ZETOpenModelStream.h"

#include <ZETFeature/ZETFeatContainer.h>
#include <ZETFeature/ZETFeatFolder.h>
#include <ZETTopology/ZETTopBody.h>

#include <QByteArray>
#include <QDataStream>
#include <QIODevice>
#include <QList>
#include <QMap>
#include <QMetaClassInfo>
#include <QMetaMethod>
#include <QMetaProperty>

#include <memory>

/*! A model of one folder, and what the tests of features do with it. */
class FeatureModel
{
public:
    /*! A new feature in the folder, made by its name as the host does it. */
    template <typename Feature>
    Feature* Make()
    {
        return qobject_cast<Feature*>(
            ZETOpenModel::Create(Feature::staticMetaObject.className(), *folder, ZETOpenModel::ParentCheck::None));
    }

    /*! A new geometry feature with \a body, which may be null. */
    ZETOpenGeometryFeature* MakeGeometry(std::unique_ptr<ZETTopBody> body)
    {
        auto* feature = Make<ZETOpenGeometryFeature>();
        feature->SetBody(std::move(body));
        return feature;
    }

    ZETFeatContainer container; // owns all features
    ZETFeatFolder* folder = qobject_cast<ZETFeatFolder*>(ZETOpenModel::Create("ZETFeatFolder", container));
};

using ClassInfo = QMap<QByteArray, QByteArray>;

/*! What a class says of itself, without what its bases say. */
inline ClassInfo GetOwnClassInfo(const QMetaObject& type)
{
    ClassInfo info;
    for (int i = type.classInfoOffset(); i < type.classInfoCount(); ++i)
        info.insert(type.classInfo(i).name(), type.classInfo(i).value());
    return info;
}

/*! The properties of a class without those of its bases, in order: "type name signal", all of them readable and
 *  writable. */
inline QList<QByteArray> GetOwnProperties(const QMetaObject& type)
{
    QList<QByteArray> properties;
    for (int i = type.propertyOffset(); i < type.propertyCount(); ++i) {
        const QMetaProperty property = type.property(i);
        const QByteArray locked = property.isReadable() && property.isWritable() ? "" : " (locked)";
        properties.append(QByteArray(property.typeName()) + ' ' + property.name() + ' ' +
                          property.notifySignal().methodSignature() + locked);
    }
    return properties;
}

/*! What the Save of \a feature writes behind the fields of ZETFeatObject, in hexadecimal digits; "no base fields" if
 *  those don't come first. A new feature and a new folder write the same base fields. */
inline QByteArray GetOwnFields(const ZETFeatObject& feature)
{
    FeatureModel other;
    const QByteArray baseFields = ZETOpenModelStream::SaveFields(*other.folder);
    const QByteArray fields = ZETOpenModelStream::SaveFields(feature);
    return fields.startsWith(baseFields) ? fields.mid(baseFields.size()).toHex() : QByteArray("no base fields");
}

/*! The bytes of a feature's fields: those of ZETFeatObject as a new feature writes them, then \a hexFields. */
inline QByteArray MakeFields(const QByteArray& hexFields)
{
    FeatureModel other;
    return ZETOpenModelStream::SaveFields(*other.folder) + QByteArray::fromHex(hexFields);
}

/*! The stream form of a reference to \a geometry, which may be null, in hexadecimal digits. */
inline QByteArray GetReference(const ZETGeoGeometry* geometry)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << ZETGeoGeometryRef(geometry);
    return bytes.toHex();
}

/*! The messages of \a feature: "status property: text". */
inline QStringList GetMessages(const ZETFeatObject& feature)
{
    QStringList texts;
    for (const ZETOpenModel::Message& message : ZETOpenModel::GetMessages(feature))
        texts.append(
            QStringLiteral("%1 %2: %3").arg(message.status).arg(QLatin1StringView(message.property), message.text));
    return texts;
}
