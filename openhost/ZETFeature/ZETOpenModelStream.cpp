#include "openhost/ZETFeature/ZETOpenModelStream.h"

#include "openhost/ZETFeature/ZETFeatObject_p.h"
#include "openhost/ZETFeature/ZETFeatProperty_p.h"
#include "openhost/ZETGeometry/ZETGeoContainer_p.h"
#include "openhost/ZETGeometry/ZETGeoStream_p.h"
#include "openhost/ZETGeometry/ZETOpenTypes.h"
#include "openhost/ZETTopology/ZETOpenShapeStore.h"

#include <ZETFeature/ZETFeatContainer.h>
#include <ZETSystem/ZETSysException.h>

#include <QBuffer>
#include <QCryptographicHash>
#include <QScopeGuard>
#include <QtEndian>

#include <algorithm>
#include <limits>
#include <vector>

using namespace Qt::Literals::StringLiterals;

namespace
{
constexpr auto magic = "ZETMODEL"_L1;
constexpr quint32 formatVersion = 1;
constexpr qsizetype headSize = 8 + 4 + 8;
constexpr qsizetype digestSize = 8;
constexpr qsizetype smallestClassSize = 4 + 4;
constexpr qsizetype objectEntrySize = 4 + 8 + 8 + 4;

struct ClassEntry {
    QByteArray name;
    quint32 version = 1;
};

struct ObjectEntry {
    quint32 classIndex = 0;
    quint64 id = 0;
    quint64 parentId = 0;
    quint32 size = 0;
    ZETGeoGeometry* object = nullptr;
};

QByteArray GetDigest(const QByteArray& bytes)
{
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).left(digestSize);
}

QString GetName(const QByteArray& className)
{
    return QString::fromUtf8(className).left(100);
}

/*! Whether messages can name the class: the bytes of a damaged file needn't be text. */
bool IsIdentifier(const QByteArray& className)
{
    return !className.isEmpty() && std::all_of(className.cbegin(), className.cend(), [](char letter) {
        return (letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'Z') ||
               (letter >= '0' && letter <= '9') || letter == '_' || letter == ':';
    });
}

/*! Puts a model together. */
class Writer
{
public:
    explicit Writer(const ZETFeatContainer& model)
        : container(model)
    {
    }

    QByteArray Write()
    {
        CollectObjects();
        const ZETOpenShapeStore::Session session;
        for (ObjectEntry& entry : objects)
            WriteFields(entry);
        return WriteFile();
    }

private:
    void CollectObjects()
    {
        for (const auto& [id, geometry] : ZETGeoContainerPrivate::Of(container).objects) {
            if (!qobject_cast<ZETFeatObject*>(geometry) &&
                ZETOpenTypes::IsRegistered(geometry->metaObject()->className()))
                AddObject(*geometry, nullptr);
        }
        for (ZETFeatObject* top : ZETOpenModel::GetTopFeatures(container)) {
            AddObject(*top, nullptr);
            for (ZETFeatObject* feature : top->GetAllChildren())
                AddObject(*feature, feature->GetParent());
        }
    }

    void AddObject(ZETGeoGeometry& object, const ZETGeoGeometry* parent)
    {
        if (!ZETOpenTypes::IsRegistered(object.metaObject()->className())) {
            const auto* feature = qobject_cast<ZETFeatObject*>(&object);
            throw ZETSysException(u"The model can't be saved: the class %1 of \"%2\" is not registered."_s.arg(
                GetName(object.metaObject()->className()), feature ? feature->GetLabel() : QString()));
        }
        CheckReferences(object);
        ObjectEntry entry;
        entry.classIndex = AddClass(object.metaObject());
        entry.id = ZETGeoGeometryRefPrivate::GetId(&object);
        entry.parentId = ZETGeoGeometryRefPrivate::GetId(parent);
        entry.object = &object;
        objects.push_back(entry);
    }

    /*! A number means something within its own container only. */
    void CheckReferences(const ZETGeoGeometry& object) const
    {
        const auto* feature = qobject_cast<const ZETFeatObject*>(&object);
        for (ZETFeatObjectPropertyBase* property : ZETFeatPropertyTable::GetReferences(feature)) {
            ZETFeatObject* pointed = property->GetPointedObject();
            if (pointed && pointed->GetContainer() != &container && !property->CanExternalReference(pointed))
                throw ZETSysException(u"The model can't be saved: \"%1\" points to \"%2\", which belongs to another "
                                      "model or to none."_s.arg(feature->GetLabel(), pointed->GetLabel()));
        }
    }

    quint32 AddClass(const QMetaObject* type)
    {
        const auto known = classIndices.constFind(type->className());
        if (known != classIndices.constEnd())
            return *known;
        const auto index = static_cast<quint32>(classes.size());
        classIndices.insert(type->className(), index);
        classes.append({type->className(), ZETGeoStreamPrivate::GetPresentVersion(type)});
        if (type->superClass() != &QObject::staticMetaObject)
            AddClass(type->superClass());
        return index;
    }

    void WriteFields(ObjectEntry& entry)
    {
        const qint64 start = fields.size();
        fields += ZETOpenModelStream::SaveFields(*entry.object);
        if (fields.size() - start > std::numeric_limits<quint32>::max())
            throw ZETSysException(u"The model can't be saved: object %1 has more than 4 GiB."_s.arg(entry.id));
        entry.size = static_cast<quint32>(fields.size() - start);
    }

    QByteArray WriteFile() const
    {
        QByteArray tables;
        QDataStream table(&tables, QIODevice::WriteOnly);
        table.setVersion(ZETGeoStreamPrivate::fieldVersion);
        table << static_cast<quint32>(classes.size());
        for (const ClassEntry& entry : classes)
            table << entry.name << entry.version;
        table << static_cast<quint32>(objects.size());
        for (const ObjectEntry& entry : objects)
            table << entry.classIndex << entry.id << entry.parentId << entry.size;

        QByteArray file(magic.data(), magic.size());
        QDataStream head(&file, QIODevice::Append);
        head << formatVersion << static_cast<quint64>(tables.size() + fields.size());
        file += tables;
        file += fields;
        return file + GetDigest(file);
    }

    const ZETFeatContainer& container;
    QList<ClassEntry> classes;
    QHash<QByteArray, quint32> classIndices;
    std::vector<ObjectEntry> objects;
    QByteArray fields;
};

/*! Takes a model apart. Each step checks what the next relies on. */
class Reader
{
public:
    explicit Reader(const QByteArray& file)
        : bytes(file)
        , stream(ZETGeoStreamPrivate::Make(&*model))
    {
    }

    std::unique_ptr<ZETFeatContainer> Read()
    {
        ReadHead();
        ReadClasses();
        ReadObjects();
        CheckVersions();
        MakeObjects();
        LinkObjects();
        LoadObjects();
        return std::move(model);
    }

private:
    [[noreturn]] static void Fail(const QString& what)
    {
        throw ZETSysException(u"The model can't be loaded: %1."_s.arg(what));
    }

    [[noreturn]] void FailHere(const QString& what) const { Fail(u"%1 (byte %2)"_s.arg(what).arg(position)); }

    [[noreturn]] void FailAt(size_t index, const QString& what) const
    {
        Fail(u"object %1, a %2: %3"_s.arg(index + 1).arg(GetName(GetClass(objects[index]).name), what));
    }

    const ClassEntry& GetClass(const ObjectEntry& entry) const { return classes.at(entry.classIndex); }

    qsizetype GetRest() const { return bytes.size() - digestSize - position; }

    template <typename T>
    T ReadNumber(const QString& what)
    {
        if (GetRest() < static_cast<qsizetype>(sizeof(T)))
            FailHere(u"it ends within %1"_s.arg(what));
        const T number = qFromBigEndian<T>(bytes.constData() + position);
        position += sizeof(T);
        return number;
    }

    /*! A count whose elements are of at least \a size bytes each, so that it can't promise more than there is. */
    quint32 ReadCount(qsizetype size, const QString& what)
    {
        const auto count = ReadNumber<quint32>(what);
        if (count > GetRest() / size)
            FailHere(u"%1 is %2, and only %3 bytes follow"_s.arg(what).arg(count).arg(GetRest()));
        return count;
    }

    void ReadHead()
    {
        if (!bytes.startsWith(QByteArrayView(magic.data(), magic.size())))
            Fail(u"it does not begin with \"%1\""_s.arg(magic));
        if (bytes.size() < headSize + digestSize)
            Fail(u"it is cut off after %1 bytes, within its head"_s.arg(bytes.size()));
        position = magic.size();
        const auto version = ReadNumber<quint32>(u"its format version"_s);
        if (version != formatVersion)
            Fail(u"its format version is %1, expected %2"_s.arg(version).arg(formatVersion));
        const auto size = ReadNumber<quint64>(u"its size"_s);
        if (size != static_cast<quint64>(GetRest()))
            Fail(u"it should hold %1 bytes behind its head, and holds %2: it is cut off or damaged"_s.arg(size).arg(
                GetRest()));
        const QByteArray content = QByteArray::fromRawData(bytes.constData(), bytes.size() - digestSize);
        if (GetDigest(content) != bytes.last(digestSize))
            Fail(u"it is damaged: its content does not match its digest"_s);
    }

    void ReadClasses()
    {
        const quint32 count = ReadCount(smallestClassSize, u"the count of its classes"_s);
        for (quint32 i = 0; i < count; ++i) {
            ClassEntry entry;
            const quint32 size = ReadCount(1, u"the length of the name of class %1"_s.arg(i + 1));
            entry.name = bytes.sliced(position, size);
            position += size;
            entry.version = ReadNumber<quint32>(u"the version of class %1"_s.arg(i + 1));
            if (!IsIdentifier(entry.name))
                FailHere(u"class %1 has no name that a class can have"_s.arg(i + 1));
            if (versions.contains(entry.name))
                FailHere(u"class %1 has no name of its own"_s.arg(i + 1));
            versions.insert(entry.name, entry.version);
            classes.append(entry);
        }
    }

    void ReadObjects()
    {
        const quint32 count = ReadCount(objectEntrySize, u"the count of its objects"_s);
        quint64 size = 0;
        for (quint32 i = 0; i < count; ++i) {
            ObjectEntry entry;
            const QString what = u"the entry of object %1"_s.arg(i + 1);
            entry.classIndex = ReadNumber<quint32>(what);
            entry.id = ReadNumber<quint64>(what);
            entry.parentId = ReadNumber<quint64>(what);
            entry.size = ReadNumber<quint32>(what);
            if (entry.classIndex >= classes.size())
                FailHere(u"object %1 is of class %2 of %3"_s.arg(i + 1).arg(entry.classIndex).arg(classes.size()));
            if (entry.parentId != 0 && !places.contains(entry.parentId))
                FailHere(u"object %1 stands below %2, which isn't ahead of it"_s.arg(i + 1).arg(entry.parentId));
            if (entry.id == 0 || places.contains(entry.id))
                FailHere(u"object %1 has no number of its own"_s.arg(i + 1));
            places.insert(entry.id, objects.size());
            size += entry.size;
            objects.push_back(entry);
        }
        if (size != static_cast<quint64>(GetRest()))
            FailHere(u"its objects should have %1 bytes together, and %2 follow"_s.arg(size).arg(GetRest()));
    }

    /*! Refuses what was written by a newer class, and what is of no class. */
    void CheckVersions()
    {
        for (size_t i = 0; i < objects.size(); ++i) {
            const QMetaObject* type = ZETOpenTypes::GetType(GetClass(objects[i]).name);
            if (!type)
                FailAt(i, u"this class is not known"_s);
            for (; type; type = type->superClass()) {
                const quint32 present = ZETGeoStreamPrivate::GetPresentVersion(type);
                const quint32 stored = versions.value(type->className(), 1);
                if (stored > present)
                    FailAt(i, u"it was saved with version %1 of %2, and only version %3 is known"_s.arg(stored)
                                  .arg(GetName(type->className()))
                                  .arg(present));
            }
        }
    }

    void MakeObjects()
    {
        for (size_t i = 0; i < objects.size(); ++i) {
            try {
                const QMetaObject* type = ZETOpenTypes::GetType(GetClass(objects[i]).name);
                objects[i].object = ZETOpenTypes::Make(type, *model, ZETGeoGeometryRefPrivate::Make(i + 1));
            } catch (const std::exception& fault) {
                FailAt(i, QString::fromUtf8(fault.what()));
            }
        }
    }

    void LinkObjects()
    {
        for (size_t i = 0; i < objects.size(); ++i) {
            if (objects[i].parentId == 0)
                continue;
            const size_t place = places.value(objects[i].parentId);
            auto* feature = qobject_cast<ZETFeatObject*>(objects[i].object);
            auto* parent = qobject_cast<ZETFeatObject*>(objects[place].object);
            if (!feature || !parent)
                FailAt(i, u"it can't stand below object %1"_s.arg(place + 1));
            ZETFeatObjectPrivate::SetParent(*feature, parent);
        }
    }

    void LoadObjects()
    {
        ZETGeoStreamPrivate& record = ZETGeoStreamPrivate::Of(stream);
        record.hasVersions = true;
        record.versions = versions;
        record.isMapping = true;
        for (const ObjectEntry& entry : objects)
            record.ids.insert(entry.id, ZETGeoGeometryRefPrivate::GetId(entry.object));

        for (const ObjectEntry& entry : objects)
            entry.object->BeginStateLoad();
        const ZETOpenShapeStore::Session session;
        for (size_t i = 0; i < objects.size(); ++i)
            LoadObject(i);
        for (const ObjectEntry& entry : objects)
            entry.object->EndStateLoad();
    }

    void LoadObject(size_t index)
    {
        const quint32 size = objects[index].size;
        ZETOpenBlockDevice device(QByteArray::fromRawData(bytes.constData() + position, size));
        stream.GetDataStream().setDevice(&device);
        try {
            objects[index].object->Load(stream);
        } catch (const std::exception& fault) {
            FailAt(index, u"%1 (byte %2)"_s.arg(QString::fromUtf8(fault.what())).arg(position + device.GetOffset()));
        }
        const QString place = u" (byte %1)"_s.arg(position + device.GetOffset());
        if (stream.GetDataStream().status() != QDataStream::Ok)
            FailAt(index, u"its fields are damaged"_s + place);
        if (device.GetOffset() != size)
            FailAt(index, u"its fields end after %1 of its %2 bytes"_s.arg(device.GetOffset()).arg(size) + place);
        stream.GetDataStream().setDevice(nullptr);
        position += size;
    }

    const QByteArray& bytes;
    qsizetype position = 0;
    std::unique_ptr<ZETFeatContainer> model = std::make_unique<ZETFeatContainer>();
    ZETGeoStream stream;
    QList<ClassEntry> classes;
    QHash<QByteArray, unsigned int> versions;
    std::vector<ObjectEntry> objects;
    QHash<quint64, size_t> places; //!< index in objects, by number
};
} // namespace

QByteArray ZETOpenModelStream::Save(const ZETFeatContainer& container)
{
    return Writer(container).Write();
}

std::unique_ptr<ZETFeatContainer> ZETOpenModelStream::Load(const QByteArray& bytes)
{
    return Reader(bytes).Read();
}

QByteArray ZETOpenModelStream::SaveFields(const ZETGeoGeometry& object)
{
    ZETGeoStream stream = ZETGeoStreamPrivate::Make(object.GetContainer());
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    stream.GetDataStream().setDevice(&buffer);
    object.Save(stream);
    stream.GetDataStream().setDevice(nullptr);
    return buffer.data();
}

void ZETOpenModelStream::LoadFields(ZETGeoGeometry& object, const QByteArray& fields,
                                    const QHash<QByteArray, unsigned int>& versions)
{
    ZETOpenBlockDevice device(fields);
    ZETGeoStream stream = ZETGeoStreamPrivate::Make(object.GetContainer());
    ZETGeoStreamPrivate& record = ZETGeoStreamPrivate::Of(stream);
    record.hasVersions = true;
    for (const QMetaObject* type = object.metaObject(); type; type = type->superClass())
        record.versions.insert(type->className(), ZETGeoStreamPrivate::GetPresentVersion(type));
    record.versions.insert(versions);
    record.stream.setDevice(&device);

    object.BeginStateLoad();
    const auto endLoad = qScopeGuard([&object] { object.EndStateLoad(); });
    object.Load(stream);
    record.stream.setDevice(nullptr);
    if (device.GetOffset() != fields.size())
        throw ZETSysException(u"The fields end after %1 of %2 bytes."_s.arg(device.GetOffset()).arg(fields.size()));
}
