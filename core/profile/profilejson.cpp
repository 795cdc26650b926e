#include "profile/profilejson.h"

#include <QJsonArray>

#include <cmath>
#include <limits>

namespace {

QJsonValue doubleToJson(double value)
{
    if (std::isnan(value))
        return QStringLiteral("NaN");
    if (std::isinf(value))
        return value > 0 ? QStringLiteral("Infinity") : QStringLiteral("-Infinity");
    return value;
}

// A value with the path that leads to it in the document ("profiles[2].map[3]"), for the message.
struct Located
{
    QJsonValue value;
    QString path;
};

// Reads typed values out of JSON and keeps the first problem with the key's path; after it, every
// read answers a default value, so a reader goes on to the end and looks at ok() once.
class JsonReader
{
public:
    bool ok() const { return m_error.isEmpty(); }
    const QString &error() const { return m_error; }

    Located member(const QJsonObject &object, const QString &prefix, const QString &key)
    {
        const QString path = prefix.isEmpty() ? key : prefix + QLatin1Char('.') + key;
        if (ok() && !object.contains(key))
            fail(path, QStringLiteral("missing"));
        return {object.value(key), path};
    }

    static Located element(const QJsonArray &array, const QString &path, int index)
    {
        return {array.at(index), path + QLatin1Char('[') + QString::number(index) + QLatin1Char(']')};
    }

    qint64 integer(const Located &at, qint64 min, qint64 max)
    {
        const double number = at.value.toDouble();
        if (!expect(at, at.value.isDouble() && std::trunc(number) == number, "expected an integer"))
            return 0;
        if (number < double(min) || number > double(max)) {
            fail(at.path,
                QStringLiteral("%1 is out of range %2..%3").arg(number, 0, 'f', 0).arg(min).arg(max));
            return 0;
        }
        return qint64(number);
    }

    qint32 int32(const Located &at)
    {
        return qint32(integer(at, std::numeric_limits<qint32>::min(), std::numeric_limits<qint32>::max()));
    }

    double real(const Located &at)
    {
        if (at.value.isDouble())
            return at.value.toDouble();
        const QString text = at.value.toString();
        if (text == QLatin1String("NaN"))
            return std::numeric_limits<double>::quiet_NaN();
        if (text == QLatin1String("Infinity"))
            return std::numeric_limits<double>::infinity();
        if (text == QLatin1String("-Infinity"))
            return -std::numeric_limits<double>::infinity();
        expect(at, false, "expected a number");
        return 0.0;
    }

    bool boolean(const Located &at)
    {
        return expect(at, at.value.isBool(), "expected true or false") && at.value.toBool();
    }

    QString string(const Located &at)
    {
        return expect(at, at.value.isString(), "expected a string") ? at.value.toString() : QString();
    }

    // With a size, an array of any other length is refused.
    QJsonArray array(const Located &at, int size = -1)
    {
        if (!expect(at, at.value.isArray(), "expected an array"))
            return {};
        const QJsonArray result = at.value.toArray();
        if (size >= 0 && result.size() != size) {
            fail(at.path, QStringLiteral("expected %1 entries, found %2").arg(size).arg(result.size()));
            return {};
        }
        return result;
    }

    QJsonObject object(const Located &at)
    {
        return expect(at, at.value.isObject(), "expected an object") ? at.value.toObject() : QJsonObject();
    }

private:
    bool expect(const Located &at, bool condition, const char *what)
    {
        if (!condition)
            fail(at.path, QLatin1String(what));
        return ok();
    }

    void fail(const QString &path, const QString &what)
    {
        if (ok())
            m_error = path + QStringLiteral(": ") + what;
    }

    QString m_error;
};

Profile readProfile(JsonReader &r, const QJsonObject &o, const QString &prefix)
{
    const auto field = [&](const char *key) { return r.member(o, prefix, QLatin1String(key)); };

    const qint32 motorbikeType = r.int32(field("motorbikeType"));
    const qint32 templateType = r.int32(field("templateType"));
    const bool isCustom = r.boolean(field("isCustom"));
    const bool auxFlag = r.boolean(field("auxFlag"));
    const QString name = r.string(field("name"));
    const QString notes = r.string(field("notes"));

    const Located extraField = field("extraText");
    const QJsonArray extra = r.array(extraField, 2);
    QString extraText[2];
    for (int i = 0; i < extra.size(); ++i)
        extraText[i] = r.string(JsonReader::element(extra, extraField.path, i));

    const Located mapField = field("map");
    const QJsonArray points = r.array(mapField, kMapPointCount);
    IgnitionMap map;
    for (int i = 0; i < points.size(); ++i) {
        const Located point = JsonReader::element(points, mapField.path, i);
        const QJsonArray pair = r.array(point, 2);
        if (pair.size() == 2)
            map.setPoint(i, r.int32(JsonReader::element(pair, point.path, 0)),
                r.int32(JsonReader::element(pair, point.path, 1)));
    }

    const Located kField = field("sensorCoefficients");
    const QJsonArray k = r.array(kField, 3);
    SensorCoefficients coefficients;
    if (k.size() == 3) {
        coefficients.k0 = r.real(JsonReader::element(k, kField.path, 0));
        coefficients.k1 = r.real(JsonReader::element(k, kField.path, 1));
        coefficients.k2 = r.real(JsonReader::element(k, kField.path, 2));
    }

    ProfileFlags flags;
    flags.sideStandMonitoring = r.boolean(field("sideStandMonitoring"));
    flags.groundEnablesIgnition = r.boolean(field("groundEnablesIgnition"));
    flags.pickUpRisingEdge = r.boolean(field("pickUpRisingEdge"));
    // Only modes 0, 1 and 2 survive the flag byte.
    flags.sensorMode = quint32(r.integer(field("sensorMode"), 0, 2));
    const qint32 voltage = r.int32(field("voltage"));
    const bool edgeSelectable = r.boolean(field("pickUpEdgeSelectable"));
    const double k1Rising = r.real(field("k1Rising"));
    const double k1Falling = r.real(field("k1Falling"));

    Profile p;
    p.setMotorbikeType(motorbikeType, isCustom);
    p.setTemplateType(templateType);
    p.setAuxFlag(auxFlag);
    p.setName(name);
    p.setNotes(notes);
    p.setExtraText(0, extraText[0]);
    p.setExtraText(1, extraText[1]);
    p.setMap(map);
    p.setVoltage(voltage);
    p.setPickUpEdgeSelectable(edgeSelectable);
    p.setK1(k1Rising, k1Falling);
    // Taken as written: the JSON is the exact content of a file, not an edit.
    p.setFlagsAndCoefficientsAsStored(flags, coefficients);
    p.setModified(false);
    return p;
}

// Both data files are a number and a list of objects, {"libraryValue": 3, "profiles": [...]}:
// reads the number into the collection and hands each object with its path to readEntry.
template<typename Collection, typename ReadEntry>
tl::expected<Collection, FileError> readNumberedList(const QJsonObject &object, const char *valueKey,
    void (Collection::*setValue)(qint32), const char *listKey, ReadEntry readEntry)
{
    JsonReader r;
    Collection collection;
    (collection.*setValue)(r.int32(r.member(object, QString(), QLatin1String(valueKey))));
    const Located list = r.member(object, QString(), QLatin1String(listKey));
    const QJsonArray entries = r.array(list);
    for (int i = 0; r.ok() && i < entries.size(); ++i) {
        const Located entry = JsonReader::element(entries, list.path, i);
        readEntry(r, r.object(entry), entry.path, collection);
    }
    if (!r.ok())
        return damagedFile(r.error());
    return collection;
}

const char *const kLanguageKeys[HintCatalog::kLanguageCount] = {"en", "de"};

} // namespace

QJsonObject profileToJson(const Profile &p)
{
    QJsonArray map;
    for (int i = 0; i < kMapPointCount; ++i)
        map.append(QJsonArray {p.map().rpms()[i], p.map().angles()[i]});
    const SensorCoefficients &k = p.sensorCoefficients();

    QJsonObject o;
    o.insert(QStringLiteral("motorbikeType"), p.motorbikeType());
    o.insert(QStringLiteral("templateType"), p.templateType());
    o.insert(QStringLiteral("isCustom"), p.isCustom());
    o.insert(QStringLiteral("auxFlag"), p.auxFlag());
    o.insert(QStringLiteral("name"), p.name());
    o.insert(QStringLiteral("notes"), p.notes());
    o.insert(QStringLiteral("extraText"), QJsonArray {p.extraText(0), p.extraText(1)});
    o.insert(QStringLiteral("map"), map);
    o.insert(QStringLiteral("sensorCoefficients"),
        QJsonArray {doubleToJson(k.k0), doubleToJson(k.k1), doubleToJson(k.k2)});
    o.insert(QStringLiteral("sideStandMonitoring"), p.sideStandMonitoring());
    o.insert(QStringLiteral("groundEnablesIgnition"), p.groundEnablesIgnition());
    o.insert(QStringLiteral("pickUpRisingEdge"), p.pickUpRisingEdge());
    o.insert(QStringLiteral("sensorMode"), qint64(p.sensorMode()));
    o.insert(QStringLiteral("voltage"), p.voltage());
    o.insert(QStringLiteral("pickUpEdgeSelectable"), p.pickUpEdgeSelectable());
    o.insert(QStringLiteral("k1Rising"), doubleToJson(p.k1Rising()));
    o.insert(QStringLiteral("k1Falling"), doubleToJson(p.k1Falling()));
    return o;
}

QJsonObject libraryToJson(const DefaultLibrary &library)
{
    QJsonArray profiles;
    for (const Profile &profile : library.profiles())
        profiles.append(profileToJson(profile));
    QJsonObject o;
    o.insert(QStringLiteral("libraryValue"), library.libraryValue());
    o.insert(QStringLiteral("profiles"), profiles);
    return o;
}

QJsonObject hintCatalogToJson(const HintCatalog &catalog)
{
    QJsonArray hints;
    for (int h = 0; h < catalog.count(); ++h) {
        QJsonObject hint;
        for (int language = 0; language < HintCatalog::kLanguageCount; ++language) {
            const HintText text = catalog.hint(h, language);
            hint.insert(QLatin1String(kLanguageKeys[language]),
                QJsonObject {{QStringLiteral("title"), text.title}, {QStringLiteral("text"), text.text}});
        }
        hints.append(hint);
    }
    QJsonObject o;
    o.insert(QStringLiteral("catalogValue"), catalog.catalogValue());
    o.insert(QStringLiteral("hints"), hints);
    return o;
}

tl::expected<Profile, FileError> profileFromJson(const QJsonObject &object)
{
    JsonReader r;
    const Profile profile = readProfile(r, object, QString());
    if (!r.ok())
        return damagedFile(r.error());
    return profile;
}

tl::expected<DefaultLibrary, FileError> libraryFromJson(const QJsonObject &object)
{
    return readNumberedList(object, "libraryValue", &DefaultLibrary::setLibraryValue, "profiles",
        [](JsonReader &r, const QJsonObject &entry, const QString &path, DefaultLibrary &library) {
            library.append(readProfile(r, entry, path));
        });
}

tl::expected<HintCatalog, FileError> hintCatalogFromJson(const QJsonObject &object)
{
    return readNumberedList(object, "catalogValue", &HintCatalog::setCatalogValue, "hints",
        [](JsonReader &r, const QJsonObject &entry, const QString &path, HintCatalog &catalog) {
            HintCatalog::Hint hint;
            for (int language = 0; language < HintCatalog::kLanguageCount; ++language) {
                const Located texts = r.member(entry, path, QLatin1String(kLanguageKeys[language]));
                const QJsonObject textObject = r.object(texts);
                hint.at(size_t(language)).title
                    = r.string(r.member(textObject, texts.path, QStringLiteral("title")));
                hint.at(size_t(language)).text
                    = r.string(r.member(textObject, texts.path, QStringLiteral("text")));
            }
            catalog.append(hint);
        });
}
