// How a fuzzer changes JSON: value by value, so that most of what it makes is still JSON. Bytes are changed now and
// then, for the sake of the parser.

#include <QByteArray>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QList>
#include <QString>

#include <algorithm>
#include <cstring>
#include <iterator>
#include <random>

extern "C" std::size_t LLVMFuzzerMutate(unsigned char* data, std::size_t size, std::size_t largestSize);

namespace
{
constexpr double numbers[] = {0.0,
                              -0.0,
                              1.0,
                              -1.0,
                              0.5,
                              2.0,
                              3.0,
                              90.0,
                              180.0,
                              360.0,
                              1e-3,
                              1e-7,
                              1e-12,
                              5e-324,
                              1e6,
                              1e9,
                              1e12,
                              1e30,
                              1e150,
                              1e308,
                              2147483648.0,
                              4294967296.0,
                              9007199254740993.0};
constexpr unsigned bytesShare = 8; // one change in so many is one of bytes

/*! A value and, of an object's member, its key. */
struct Part {
    QString key;
    QJsonValue value;
};

void CollectParts(const QString& key, const QJsonValue& value, QList<Part>& parts)
{
    parts.append({key, value});
    if (value.isArray()) {
        for (const QJsonValue element : value.toArray())
            CollectParts(QString(), element, parts);
    }
    const QJsonObject object = value.toObject();
    for (auto member = object.begin(); member != object.end(); ++member)
        CollectParts(member.key(), member.value(), parts);
}

QList<Part> GetParts(const QJsonValue& root)
{
    QList<Part> parts;
    CollectParts(QString(), root, parts);
    return parts;
}

/*! Changes one value. */
class Mutation
{
public:
    /*! \a stock: what is put in. */
    Mutation(const QList<Part>& stockOfParts, unsigned seed)
        : stock(stockOfParts)
        , random(seed)
    {
    }

    QJsonValue Apply(const QJsonValue& root)
    {
        left = qsizetype(Pick(unsigned(GetParts(root).size())));
        return Rebuild(root);
    }

private:
    unsigned Pick(unsigned count) { return unsigned(random()) % count; }
    const Part& PickPart() { return stock[qsizetype(Pick(unsigned(stock.size())))]; }

    QJsonValue Rebuild(const QJsonValue& value)
    {
        if (left-- == 0)
            return Change(value);
        if (value.isArray()) {
            QJsonArray array;
            for (const QJsonValue element : value.toArray())
                array.append(Rebuild(element));
            return array;
        }
        if (!value.isObject())
            return value;
        QJsonObject object;
        const QJsonObject before = value.toObject();
        for (auto member = before.begin(); member != before.end(); ++member)
            object.insert(member.key(), Rebuild(member.value()));
        return object;
    }

    QJsonValue Change(const QJsonValue& value)
    {
        if (Pick(8) == 0)
            return PickPart().value;
        switch (value.type()) {
        case QJsonValue::Double:
            return ChangeNumber(value.toDouble());
        case QJsonValue::Bool:
            return !value.toBool();
        case QJsonValue::Array:
            return ChangeArray(value.toArray());
        case QJsonValue::Object:
            return ChangeObject(value.toObject());
        default:
            return ChangeText(value.toString());
        }
    }

    double ChangeNumber(double number)
    {
        const double other = numbers[Pick(unsigned(std::size(numbers)))];
        const double results[] = {other, -other, number + other, number * other, -number, number + 1e-6};
        return results[Pick(unsigned(std::size(results)))];
    }

    QString ChangeText(const QString& text)
    {
        for (int i = 0; i < 20; ++i) {
            const QJsonValue other = PickPart().value;
            if (other.isString())
                return other.toString();
        }
        return text + QChar(Pick(0x180));
    }

    QJsonArray ChangeArray(QJsonArray array)
    {
        const auto size = unsigned(array.size());
        const auto at = qsizetype(Pick(size + 1));
        switch (Pick(size > 0 ? 4 : 1)) {
        case 0:
            array.insert(at, PickPart().value);
            break;
        case 1:
            array.insert(at, array.at(qsizetype(Pick(size))));
            break;
        case 2:
            array.removeAt(qsizetype(Pick(size)));
            break;
        default: {
            const auto other = qsizetype(Pick(size));
            const QJsonValue moved = array.takeAt(other);
            array.insert(std::min(at, array.size()), moved);
        }
        }
        return array;
    }

    QJsonObject ChangeObject(QJsonObject object)
    {
        const QStringList keys = object.keys();
        if (!keys.isEmpty() && Pick(3) == 0) {
            object.remove(keys[qsizetype(Pick(unsigned(keys.size())))]);
            return object;
        }
        for (int i = 0; i < 20; ++i) {
            const Part& part = PickPart();
            if (!part.key.isEmpty()) {
                object.insert(part.key, part.value);
                break;
            }
        }
        return object;
    }

    const QList<Part>& stock;
    std::minstd_rand random;
    qsizetype left = 0; //!< values ahead of the one that is changed
};

QJsonValue Parse(const unsigned char* data, std::size_t size)
{
    const QJsonDocument document =
        QJsonDocument::fromJson(QByteArray::fromRawData(reinterpret_cast<const char*>(data), qsizetype(size)));
    return document.isArray() ? QJsonValue(document.array()) : document.isObject() ? document.object() : QJsonValue();
}

/*! 0 if there is no room. */
std::size_t Write(const QJsonValue& root, unsigned char* data, std::size_t largestSize)
{
    const QByteArray bytes = (root.isArray() ? QJsonDocument(root.toArray()) : QJsonDocument(root.toObject()))
                                 .toJson(QJsonDocument::Compact);
    if (std::size_t(bytes.size()) > largestSize)
        return 0;
    std::memcpy(data, bytes.constData(), std::size_t(bytes.size()));
    return std::size_t(bytes.size());
}
} // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(unsigned char* data, std::size_t size, std::size_t largestSize,
                                               unsigned seed)
{
    const QJsonValue root = Parse(data, size);
    std::size_t written = 0;
    if (!root.isNull() && seed % bytesShare != 0) {
        const QList<Part> parts = GetParts(root);
        written = Write(Mutation(parts, seed).Apply(root), data, largestSize);
    }
    return written > 0 ? written : LLVMFuzzerMutate(data, size, largestSize);
}

extern "C" std::size_t LLVMFuzzerCustomCrossOver(const unsigned char* data, std::size_t size,
                                                 const unsigned char* otherData, std::size_t otherSize,
                                                 unsigned char* out, std::size_t largestSize, unsigned seed)
{
    const QJsonValue root = Parse(data, size);
    const QJsonValue other = Parse(otherData, otherSize);
    if (root.isNull() || other.isNull())
        return 0;
    const QList<Part> parts = GetParts(other);
    return Write(Mutation(parts, seed).Apply(root), out, largestSize);
}
