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

// Reads typed values out of JSON and remembers the first problem with the key's path.
class JsonReader
{
public:
    explicit JsonReader(QString &error)
        : m_error(error)
    { }

    bool ok() const { return m_error.isEmpty(); }

    QJsonValue member(const QJsonObject &object, const QString &key, const QString &path)
    {
        if (!ok())
            return {};
        if (!object.contains(key)) {
            fail(path, QStringLiteral("missing"));
            return {};
        }
        return object.value(key);
    }

    qint64 integer(const QJsonValue &value, const QString &path, qint64 min, qint64 max)
    {
        if (!ok())
            return 0;
        if (!value.isDouble() || std::trunc(value.toDouble()) != value.toDouble()) {
            fail(path, QStringLiteral("expected an integer"));
            return 0;
        }
        const double number = value.toDouble();
        if (number < double(min) || number > double(max)) {
            fail(path, QStringLiteral("%1 is out of range %2..%3").arg(number, 0, 'f', 0).arg(min).arg(max));
            return 0;
        }
        return qint64(number);
    }

    qint32 int32(const QJsonValue &value, const QString &path)
    {
        return qint32(
            integer(value, path, std::numeric_limits<qint32>::min(), std::numeric_limits<qint32>::max()));
    }

    double real(const QJsonValue &value, const QString &path)
    {
        if (!ok())
            return 0.0;
        if (value.isDouble())
            return value.toDouble();
        const QString text = value.toString();
        if (value.isString() && text == QLatin1String("NaN"))
            return std::numeric_limits<double>::quiet_NaN();
        if (value.isString() && text == QLatin1String("Infinity"))
            return std::numeric_limits<double>::infinity();
        if (value.isString() && text == QLatin1String("-Infinity"))
            return -std::numeric_limits<double>::infinity();
        fail(path, QStringLiteral("expected a number"));
        return 0.0;
    }

    bool boolean(const QJsonValue &value, const QString &path)
    {
        if (!ok())
            return false;
        if (!value.isBool()) {
            fail(path, QStringLiteral("expected true or false"));
            return false;
        }
        return value.toBool();
    }

    QString string(const QJsonValue &value, const QString &path)
    {
        if (!ok())
            return {};
        if (!value.isString()) {
            fail(path, QStringLiteral("expected a string"));
            return {};
        }
        return value.toString();
    }

    QJsonArray array(const QJsonValue &value, const QString &path, int size = -1)
    {
        if (!ok())
            return {};
        if (!value.isArray()) {
            fail(path, QStringLiteral("expected an array"));
            return {};
        }
        const QJsonArray result = value.toArray();
        if (size >= 0 && result.size() != size) {
            fail(path, QStringLiteral("expected %1 entries, found %2").arg(size).arg(result.size()));
            return {};
        }
        return result;
    }

    QJsonObject object(const QJsonValue &value, const QString &path)
    {
        if (!ok())
            return {};
        if (!value.isObject()) {
            fail(path, QStringLiteral("expected an object"));
            return {};
        }
        return value.toObject();
    }

private:
    void fail(const QString &path, const QString &what)
    {
        if (ok())
            m_error = path + QStringLiteral(": ") + what;
    }

    QString &m_error;
};

QString join(const QString &prefix, const QString &key)
{
    return prefix.isEmpty() ? key : prefix + QLatin1Char('.') + key;
}

QString indexed(const QString &path, int index)
{
    return path + QLatin1Char('[') + QString::number(index) + QLatin1Char(']');
}

std::optional<Profile> readProfile(const QJsonObject &o, const QString &prefix, QString &error)
{
    JsonReader r(error);
    auto field
        = [&](const char *key) { return r.member(o, QLatin1String(key), join(prefix, QLatin1String(key))); };
    auto path = [&](const char *key) { return join(prefix, QLatin1String(key)); };

    Profile p;
    const qint32 motorbikeType = r.int32(field("motorbikeType"), path("motorbikeType"));
    const qint32 templateType = r.int32(field("templateType"), path("templateType"));
    const bool isCustom = r.boolean(field("isCustom"), path("isCustom"));
    const bool auxFlag = r.boolean(field("auxFlag"), path("auxFlag"));
    const QString name = r.string(field("name"), path("name"));
    const QString notes = r.string(field("notes"), path("notes"));

    const QJsonArray extra = r.array(field("extraText"), path("extraText"), 2);
    QString extraText[2];
    for (int i = 0; i < extra.size(); ++i)
        extraText[i] = r.string(extra.at(i), indexed(path("extraText"), i));

    const QJsonArray points = r.array(field("map"), path("map"), kMapPointCount);
    IgnitionMap map;
    for (int i = 0; i < points.size(); ++i) {
        const QString pointPath = indexed(path("map"), i);
        const QJsonArray pair = r.array(points.at(i), pointPath, 2);
        if (pair.size() == 2)
            map.setPoint(
                i, r.int32(pair.at(0), indexed(pointPath, 0)), r.int32(pair.at(1), indexed(pointPath, 1)));
    }

    const QJsonArray k = r.array(field("sensorCoefficients"), path("sensorCoefficients"), 3);
    SensorCoefficients coefficients;
    if (k.size() == 3) {
        coefficients.k0 = r.real(k.at(0), indexed(path("sensorCoefficients"), 0));
        coefficients.k1 = r.real(k.at(1), indexed(path("sensorCoefficients"), 1));
        coefficients.k2 = r.real(k.at(2), indexed(path("sensorCoefficients"), 2));
    }

    ProfileFlags flags;
    flags.sideStandMonitoring = r.boolean(field("sideStandMonitoring"), path("sideStandMonitoring"));
    flags.groundEnablesIgnition = r.boolean(field("groundEnablesIgnition"), path("groundEnablesIgnition"));
    flags.pickUpRisingEdge = r.boolean(field("pickUpRisingEdge"), path("pickUpRisingEdge"));
    // Only modes 0, 1 and 2 survive the flag byte.
    flags.sensorMode = quint32(r.integer(field("sensorMode"), path("sensorMode"), 0, 2));
    const qint32 voltage = r.int32(field("voltage"), path("voltage"));
    const bool edgeSelectable = r.boolean(field("pickUpEdgeSelectable"), path("pickUpEdgeSelectable"));
    const double k1Rising = r.real(field("k1Rising"), path("k1Rising"));
    const double k1Falling = r.real(field("k1Falling"), path("k1Falling"));
    if (!r.ok())
        return std::nullopt;

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
    static const char *const kLanguageKeys[HintCatalog::kLanguageCount] = {"en", "de"};
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

std::optional<Profile> profileFromJson(const QJsonObject &object, QString &error)
{
    error.clear();
    return readProfile(object, QString(), error);
}

std::unique_ptr<DefaultLibrary> libraryFromJson(const QJsonObject &object, QString &error)
{
    error.clear();
    JsonReader r(error);
    auto library = std::make_unique<DefaultLibrary>();
    library->setLibraryValue(
        r.int32(r.member(object, QStringLiteral("libraryValue"), QStringLiteral("libraryValue")),
            QStringLiteral("libraryValue")));
    const QJsonArray profiles = r.array(
        r.member(object, QStringLiteral("profiles"), QStringLiteral("profiles")), QStringLiteral("profiles"));
    for (int i = 0; r.ok() && i < profiles.size(); ++i) {
        const QString path = indexed(QStringLiteral("profiles"), i);
        const QJsonObject entry = r.object(profiles.at(i), path);
        if (!r.ok())
            break;
        std::optional<Profile> profile = readProfile(entry, path, error);
        if (profile)
            library->append(*profile);
    }
    if (!r.ok())
        return nullptr;
    return library;
}

std::unique_ptr<HintCatalog> hintCatalogFromJson(const QJsonObject &object, QString &error)
{
    static const char *const kLanguageKeys[HintCatalog::kLanguageCount] = {"en", "de"};
    error.clear();
    JsonReader r(error);
    auto catalog = std::make_unique<HintCatalog>();
    catalog->setCatalogValue(
        r.int32(r.member(object, QStringLiteral("catalogValue"), QStringLiteral("catalogValue")),
            QStringLiteral("catalogValue")));
    const QJsonArray hints = r.array(
        r.member(object, QStringLiteral("hints"), QStringLiteral("hints")), QStringLiteral("hints"));
    for (int h = 0; r.ok() && h < hints.size(); ++h) {
        const QString hintPath = indexed(QStringLiteral("hints"), h);
        const QJsonObject entry = r.object(hints.at(h), hintPath);
        HintCatalog::Hint hint;
        for (int language = 0; r.ok() && language < HintCatalog::kLanguageCount; ++language) {
            const QString key = QLatin1String(kLanguageKeys[language]);
            const QString languagePath = join(hintPath, key);
            const QJsonObject texts = r.object(r.member(entry, key, languagePath), languagePath);
            hint.at(size_t(language)).title = r.string(
                r.member(texts, QStringLiteral("title"), join(languagePath, QStringLiteral("title"))),
                join(languagePath, QStringLiteral("title")));
            hint.at(size_t(language)).text = r.string(
                r.member(texts, QStringLiteral("text"), join(languagePath, QStringLiteral("text"))),
                join(languagePath, QStringLiteral("text")));
        }
        catalog->append(hint);
    }
    if (!r.ok())
        return nullptr;
    return catalog;
}
