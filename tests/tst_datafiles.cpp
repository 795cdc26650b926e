#include "profile/defaultlibrary.h"
#include "profile/hintcatalog.h"
#include "profile/mapvalidation.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QtTest>

#include <cstring>

namespace {

quint64 bitsOf(double value)
{
    quint64 bits = 0;
    std::memcpy(&bits, &value, sizeof(bits));
    return bits;
}

// Tagged values and the container framing, written out by hand from the layout tables.
QByteArray tInt(qint32 value)
{
    QByteArray out(1, 'i');
    const quint32 bits = quint32(value);
    for (int i = 0; i < 4; ++i)
        out.append(char((bits >> (8 * i)) & 0xFF));
    return out;
}

QByteArray tBool(bool value)
{
    return QByteArray(1, value ? 'B' : 'b');
}

QByteArray tDouble(double value)
{
    QByteArray out(1, 'd');
    const quint64 bits = bitsOf(value);
    for (int i = 0; i < 8; ++i)
        out.append(char((bits >> (8 * i)) & 0xFF));
    return out;
}

QByteArray tString(const QString &value, char tag = 'Q')
{
    const QByteArray utf8 = value.toUtf8();
    return QByteArray(1, tag) + tInt(utf8.size()) + utf8;
}

QByteArray handContainer(const QList<QByteArray> &records)
{
    QByteArray out = QByteArray::fromHex("63646900");
    out.append(char(records.size() & 0xFF));
    out.append(char((records.size() >> 8) & 0xFF));
    for (const QByteArray &record : records) {
        out.append('U');
        out.append(char(record.size() & 0xFF));
        out.append(char((record.size() >> 8) & 0xFF));
        out.append(char((record.size() >> 16) & 0xFF));
        out.append(record);
    }
    return out;
}

QByteArray libraryHeader(
    const QString &magic = QStringLiteral("def"), qint32 format = 1, qint32 value = 7, char stringTag = 'Q')
{
    return tString(magic, stringTag) + tInt(format) + tInt(value);
}

// A default-profile record of format version 1: type, name and a five-point map, the rest plain.
QByteArray profileRecord(qint32 motorbikeType, const QString &name)
{
    QByteArray out = tInt(1) + tInt(motorbikeType) + tInt(motorbikeType) + tBool(false) + tBool(false);
    out += tString(name) + tString(QString()) + tInt(0x04) + tInt(190) + tBool(true) + tBool(false);
    out += tDouble(0.0) + tDouble(0.0);
    for (int i = 0; i < 10; ++i)
        out += tInt(i < 5 ? 1000 * (i + 1) : 0) + tInt(i < 5 ? 10 + i : 0);
    out += tDouble(30.0) + tDouble(0.0) + tDouble(0.0);
    out += tInt(2) + tString(QStringLiteral("info ") + name) + tString(QStringLiteral("Info ") + name);
    return out;
}

QByteArray hintsRecord(qint32 catalogValue, qint32 format, qint32 hints, qint32 languages,
    const QStringList &texts, char stringTag = 'Q')
{
    QByteArray out = tInt(catalogValue) + tInt(format) + tInt(hints) + tInt(languages);
    for (const QString &text : texts)
        out += tString(text, stringTag);
    return out;
}

std::unique_ptr<DefaultLibrary> libraryFrom(const QByteArray &bytes, bool normalStart = true)
{
    QBuffer buffer;
    buffer.setData(bytes);
    if (!buffer.open(QIODevice::ReadOnly))
        return nullptr;
    return loadDefaultLibrary(buffer, normalStart);
}

std::unique_ptr<HintCatalog> catalogFrom(const QByteArray &bytes)
{
    QBuffer buffer;
    buffer.setData(bytes);
    if (!buffer.open(QIODevice::ReadOnly))
        return nullptr;
    return loadHintCatalog(buffer);
}

// Per hint: title and text in language 0, then title and text in language 1.
QStringList flattened(const HintCatalog &catalog)
{
    QStringList texts;
    for (int h = 0; h < catalog.count(); ++h) {
        for (int language = 0; language < HintCatalog::kLanguageCount; ++language) {
            const HintText hint = catalog.hint(h, language);
            texts << hint.title << hint.text;
        }
    }
    return texts;
}

void verifySameProfile(const Profile &actual, const Profile &expected)
{
    QCOMPARE(actual.motorbikeType(), expected.motorbikeType());
    QCOMPARE(actual.templateType(), expected.templateType());
    QCOMPARE(actual.isCustom(), expected.isCustom());
    QCOMPARE(actual.auxFlag(), expected.auxFlag());
    QCOMPARE(actual.name(), expected.name());
    QCOMPARE(actual.notes(), expected.notes());
    QCOMPARE(actual.extraText(0), expected.extraText(0));
    QCOMPARE(actual.extraText(1), expected.extraText(1));
    QCOMPARE(actual.map().rpms(), expected.map().rpms());
    QCOMPARE(actual.map().angles(), expected.map().angles());
    QVERIFY(actual.flags() == expected.flags());
    QCOMPARE(actual.voltage(), expected.voltage());
    QCOMPARE(actual.pickUpEdgeSelectable(), expected.pickUpEdgeSelectable());
    QCOMPARE(bitsOf(actual.k1Rising()), bitsOf(expected.k1Rising()));
    QCOMPARE(bitsOf(actual.k1Falling()), bitsOf(expected.k1Falling()));
    QCOMPARE(bitsOf(actual.sensorCoefficients().k0), bitsOf(expected.sensorCoefficients().k0));
    QCOMPARE(bitsOf(actual.sensorCoefficients().k1), bitsOf(expected.sensorCoefficients().k1));
    QCOMPARE(bitsOf(actual.sensorCoefficients().k2), bitsOf(expected.sensorCoefficients().k2));
}

// The data files the build produced, or an empty path when there is no build to look at.
QString builtFile(const char *name)
{
    const QString dir = qEnvironmentVariable("SPARKWRIGHT_BUILD_DIR");
    if (dir.isEmpty())
        return QString();
    const QString path = QDir(dir).filePath(QLatin1String(name));
    return QFileInfo::exists(path) ? path : QString();
}

QString describe(const MapValidation &validation)
{
    QStringList messages;
    for (const PointValidation &point : validation.points) {
        if (!point.isValid())
            messages << QStringLiteral("point %1: %2 %3")
                            .arg(point.index)
                            .arg(point.rpmMessage, point.angleMessage);
    }
    if (validation.notAscending)
        messages << QStringLiteral("not ascending");
    return messages.join(QStringLiteral("; "));
}

} // namespace

// The default profile library and the hint catalog: their loaders and the files we ship.
class TestDataFiles : public QObject
{
    Q_OBJECT

private slots:
    void loadLibrary_data();
    void loadLibrary();
    void libraryLookups_data();
    void libraryLookups();
    void libraryRoundTrip();
    void loadHints_data();
    void loadHints();
    void hintsRoundTrip();
    void shippedLibrary();
    void shippedHints();
};

void TestDataFiles::loadLibrary_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("loads");
    QTest::addColumn<qint32>("libraryValue");
    QTest::addColumn<QStringList>("names");

    const QByteArray a = profileRecord(4, QStringLiteral("A"));
    const QByteArray b = profileRecord(2, QStringLiteral("B"));
    const QStringList none;

    QTest::newRow("header only is an empty library") << handContainer({libraryHeader()}) << true << 7 << none;
    QTest::newRow("profiles in file order")
        << handContainer({libraryHeader(), a, b}) << true << 7 << QStringList {"A", "B"};
    QTest::newRow("format value is not checked")
        << handContainer({libraryHeader(QStringLiteral("def"), 99, 3), a}) << true << 3 << QStringList {"A"};
    QTest::newRow("negative library value is kept")
        << handContainer({libraryHeader(QStringLiteral("def"), 1, -5)}) << true << -5 << none;
    QTest::newRow("header in the old string form")
        << handContainer({libraryHeader(QStringLiteral("def"), 1, 2, 'S'), b}) << true << 2
        << QStringList {"B"};
    QTest::newRow("bytes after the last record are ignored")
        << handContainer({libraryHeader(), a}) + "U\xff" << true << 7 << QStringList {"A"};

    QTest::newRow("header DEF fails")
        << handContainer({libraryHeader(QStringLiteral("DEF"))}) << false << 0 << none;
    QTest::newRow("header de fails") << handContainer({libraryHeader(QStringLiteral("de"))}) << false << 0
                                     << none;
    QTest::newRow("header with a trailing space fails")
        << handContainer({libraryHeader(QStringLiteral("def "))}) << false << 0 << none;
    QTest::newRow("header without the library value fails")
        << handContainer({tString(QStringLiteral("def")) + tInt(1)}) << false << 0 << none;
    QTest::newRow("header starting with an int fails")
        << handContainer({tInt(1) + tInt(7)}) << false << 0 << none;
    QTest::newRow("container without records fails") << handContainer({}) << false << 0 << none;
    QTest::newRow("not a container") << libraryHeader() << false << 0 << none;
    QTest::newRow("a broken profile after good ones fails the whole load")
        << handContainer({libraryHeader(), a, b, QByteArray("junk")}) << false << 0 << none;
    QTest::newRow("a profile record cut short fails the whole load")
        << handContainer({libraryHeader(), a, b.left(60)}) << false << 0 << none;
    QTest::newRow("an empty profile record fails the whole load")
        << handContainer({libraryHeader(), QByteArray(), a}) << false << 0 << none;
}

void TestDataFiles::loadLibrary()
{
    QFETCH(QByteArray, bytes);
    QFETCH(bool, loads);
    QFETCH(qint32, libraryValue);
    QFETCH(QStringList, names);

    // The start-up flag must not change how the file is read.
    for (const bool normalStart : {true, false}) {
        const std::unique_ptr<DefaultLibrary> library = libraryFrom(bytes, normalStart);
        QCOMPARE(bool(library), loads);
        if (!library)
            continue;
        QCOMPARE(library->libraryValue(), libraryValue);
        QStringList read;
        for (const Profile &profile : library->profiles()) {
            read << profile.name();
            QVERIFY(!profile.isCustom());
            QVERIFY(!profile.isModified());
        }
        QCOMPARE(read, names);
        QCOMPARE(library->count(), names.size());
    }
}

void TestDataFiles::libraryLookups_data()
{
    QTest::addColumn<bool>("byType");
    QTest::addColumn<int>("key");
    QTest::addColumn<QString>("name");

    QTest::newRow("first position") << false << 0 << "A";
    QTest::newRow("last position") << false << 3 << "D";
    QTest::newRow("position past the end") << false << 4 << QString();
    QTest::newRow("negative position") << false << -1 << QString();
    QTest::newRow("type shared by two profiles gives the first") << true << 4 << "A";
    QTest::newRow("type of the second profile") << true << 2 << "B";
    QTest::newRow("type matching the last profile only") << true << 0 << "D";
    QTest::newRow("type equal to a position but not present") << true << 1 << QString();
    QTest::newRow("negative type") << true << -1 << QString();
}

void TestDataFiles::libraryLookups()
{
    QFETCH(bool, byType);
    QFETCH(int, key);
    QFETCH(QString, name);

    const std::unique_ptr<DefaultLibrary> library = libraryFrom(handContainer(
        {libraryHeader(), profileRecord(4, QStringLiteral("A")), profileRecord(2, QStringLiteral("B")),
            profileRecord(4, QStringLiteral("C")), profileRecord(0, QStringLiteral("D"))}));
    QVERIFY(library);
    const Profile *profile = byType ? library->profileForType(key) : library->profileAt(key);
    QCOMPARE(profile ? profile->name() : QString(), name);
}

void TestDataFiles::libraryRoundTrip()
{
    DefaultLibrary library;
    library.setLibraryValue(3);
    Profile first;
    first.setMotorbikeType(0, false);
    first.setName(QStringLiteral("Zweitakt 50 cm³"));
    first.setExtraText(0, QStringLiteral("English"));
    first.setExtraText(1, QStringLiteral("Deutsch: Vorzündung"));
    IgnitionMap map;
    for (int i = 0; i < kMapPointCount; ++i)
        map.setPoint(i, 1000 * (i + 1), 10 + i);
    first.setMap(map);
    first.setSensorCoefficients({28.0, -0.0004, -1e-08});
    Profile second;
    second.setMotorbikeType(1, false);
    second.setTemplateType(1);
    second.setK1(-0.00025, -0.0004);
    ProfileFlags flags;
    flags.sensorMode = 2;
    flags.pickUpRisingEdge = true;
    second.setFlags(flags);
    second.setSensorCoefficients({40.0, 0.0, 0.0});
    second.setPickUpEdgeSelectable(false);
    second.setVoltage(240);
    library.append(first);
    library.append(second);

    const QByteArray bytes = defaultLibraryBytes(library);
    // Container header with three records, then the header record: "def", format 1, value 3.
    QCOMPARE(bytes.left(29).toHex(),
        QByteArray::fromHex("636469000300"
                            "55130000"
                            "516903000000646566"
                            "6901000000"
                            "6903000000")
            .toHex());

    const std::unique_ptr<DefaultLibrary> loaded = libraryFrom(bytes);
    QVERIFY(loaded);
    QCOMPARE(loaded->libraryValue(), 3);
    QCOMPARE(loaded->count(), 2);
    verifySameProfile(loaded->profiles()[0], first);
    verifySameProfile(loaded->profiles()[1], second);

    QVERIFY(libraryFrom(defaultLibraryBytes(DefaultLibrary())));
}

void TestDataFiles::loadHints_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("loads");
    QTest::addColumn<qint32>("catalogValue");
    QTest::addColumn<QStringList>("texts");

    const QStringList twoByTwo {"T1 en", "X1 en", "T1 de", "X1 de", "T2 en", "X2 en", "T2 de", "X2 de"};
    const QStringList none;

    QTest::newRow("two hints in two languages")
        << handContainer({hintsRecord(5, 1, 2, 2, twoByTwo)}) << true << 5 << twoByTwo;
    QTest::newRow("format value is not checked")
        << handContainer({hintsRecord(5, 42, 2, 2, twoByTwo)}) << true << 5 << twoByTwo;
    QTest::newRow("strings in the old form")
        << handContainer({hintsRecord(5, 1, 2, 2, twoByTwo, 'S')}) << true << 5 << twoByTwo;
    QTest::newRow("L = 3 keeps the first two languages") << handContainer({hintsRecord(2, 1, 2, 3,
        {"T1 en", "X1 en", "T1 de", "X1 de", "T1 fr", "X1 fr", "T2 en", "X2 en", "T2 de", "X2 de", "T2 fr",
            "X2 fr"})}) << true << 2 << twoByTwo;
    QTest::newRow("L = 1 leaves language 1 empty")
        << handContainer({hintsRecord(2, 1, 2, 1, {"T1 en", "X1 en", "T2 en", "X2 en"})}) << true << 2
        << QStringList {"T1 en", "X1 en", "", "", "T2 en", "X2 en", "", ""};
    QTest::newRow("H = 0 is an empty catalog")
        << handContainer({hintsRecord(9, 1, 0, 2, {})}) << true << 9 << none;
    QTest::newRow("H = 0 ignores whatever follows")
        << handContainer({hintsRecord(9, 1, 0, 2, {}) + "junk"}) << true << 9 << none;
    QTest::newRow("negative H is an empty catalog")
        << handContainer({hintsRecord(9, 1, -3, 2, {})}) << true << 9 << none;
    QTest::newRow("L = 0 is an empty catalog")
        << handContainer({hintsRecord(9, 1, 3, 0, {})}) << true << 9 << none;
    QTest::newRow("negative L is an empty catalog")
        << handContainer({hintsRecord(9, 1, 3, -1, {})}) << true << 9 << none;
    QTest::newRow("rich text with umlauts")
        << handContainer({hintsRecord(
               1, 1, 1, 2, {"Zündung", "<p>Die <b>Vorzündung</b> …</p>", "Ignition", "<p>x</p>"})})
        << true << 1 << QStringList {"Zündung", "<p>Die <b>Vorzündung</b> …</p>", "Ignition", "<p>x</p>"};
    QTest::newRow("further records are ignored")
        << handContainer({hintsRecord(5, 1, 2, 2, twoByTwo), QByteArray("junk")}) << true << 5 << twoByTwo;

    QTest::newRow("a string with an int tag fails")
        << handContainer({hintsRecord(5, 1, 1, 2, {"a", "b", "c"}) + tInt(4)}) << false << 0 << none;
    QTest::newRow("texts running out fail")
        << handContainer({hintsRecord(5, 1, 3, 2, twoByTwo)}) << false << 0 << none;
    QTest::newRow("a negative string length fails")
        << handContainer({hintsRecord(5, 1, 1, 1, {"a"}) + QByteArray::fromHex("5169ffffffff")}) << false << 0
        << none;
    QTest::newRow("missing language count fails")
        << handContainer({tInt(5) + tInt(1) + tInt(0)}) << false << 0 << none;
    QTest::newRow("catalog value not an int fails")
        << handContainer({tBool(true) + tInt(1) + tInt(0) + tInt(2)}) << false << 0 << none;
    QTest::newRow("container without records fails") << handContainer({}) << false << 0 << none;
    QTest::newRow("not a container") << hintsRecord(5, 1, 2, 2, twoByTwo) << false << 0 << none;
}

void TestDataFiles::loadHints()
{
    QFETCH(QByteArray, bytes);
    QFETCH(bool, loads);
    QFETCH(qint32, catalogValue);
    QFETCH(QStringList, texts);

    const std::unique_ptr<HintCatalog> catalog = catalogFrom(bytes);
    QCOMPARE(bool(catalog), loads);
    if (!catalog)
        return;
    QCOMPARE(catalog->catalogValue(), catalogValue);
    QCOMPARE(catalog->count(), texts.size() / 4);
    QCOMPARE(flattened(*catalog), texts);
    QVERIFY(catalog->hint(catalog->count(), 0) == HintText());
    QVERIFY(catalog->hint(-1, 0) == HintText());
    QVERIFY(catalog->hint(0, 2) == HintText());
}

void TestDataFiles::hintsRoundTrip()
{
    HintCatalog catalog;
    catalog.setCatalogValue(4);
    catalog.append(
        {{HintText {QStringLiteral("A"), QStringLiteral("ä")}, HintText {QStringLiteral("B"), QString()}}});

    const QByteArray bytes = hintCatalogBytes(catalog);
    const QByteArray record = tInt(4) + tInt(1) + tInt(1) + tInt(2)
        + QByteArray::fromHex("51690100000041"
                              "516902000000c3a4"
                              "51690100000042"
                              "516900000000");
    QCOMPARE(bytes.toHex(), handContainer({record}).toHex());

    const std::unique_ptr<HintCatalog> loaded = catalogFrom(bytes);
    QVERIFY(loaded);
    QCOMPARE(loaded->catalogValue(), 4);
    QCOMPARE(flattened(*loaded), flattened(catalog));

    HintCatalog five;
    five.setCatalogValue(2);
    for (int h = 0; h < 5; ++h) {
        five.append({{HintText {QStringLiteral("Title %1").arg(h), QStringLiteral("<p>Text %1</p>").arg(h)},
            HintText {QStringLiteral("Titel %1").arg(h), QStringLiteral("<p>Größe %1</p>").arg(h)}}});
    }
    const std::unique_ptr<HintCatalog> loadedFive = catalogFrom(hintCatalogBytes(five));
    QVERIFY(loadedFive);
    QCOMPARE(loadedFive->catalogValue(), 2);
    QCOMPARE(flattened(*loadedFive), flattened(five));
}

void TestDataFiles::shippedLibrary()
{
    const QString path = builtFile("default.cds");
    if (path.isEmpty())
        QSKIP("no built default.cds (SPARKWRIGHT_BUILD_DIR unset or the data files not built)");

    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const std::unique_ptr<DefaultLibrary> library = loadDefaultLibrary(file);
    QVERIFY2(library, "every template must load");
    QVERIFY(library->libraryValue() >= 1);
    QVERIFY2(library->count() >= 8, qPrintable(QString::number(library->count())));

    bool someEdgeFixed = false;
    bool someModeOne = false;
    bool someModeTwo = false;
    for (int i = 0; i < library->count(); ++i) {
        const Profile &p = library->profiles()[size_t(i)];
        const QString where = QStringLiteral("template %1 \"%2\"").arg(i).arg(p.name());
        QVERIFY2(!p.isCustom(), qPrintable(where));
        QVERIFY2(p.motorbikeType() == i, qPrintable(where));
        QVERIFY2(!p.name().isEmpty(), qPrintable(where));
        QVERIFY2(p.map().isStrictlyAscending(), qPrintable(where));
        int used = 0;
        for (int j = 0; j < kMapPointCount; ++j)
            used += p.map().point(j).isEmpty() ? 0 : 1;
        QVERIFY2(used >= 5, qPrintable(where));

        Profile derived = p;
        derived.applySensorMode();
        const MapValidation validation = validate(derived);
        QVERIFY2(!validation.hasErrors(), qPrintable(where + QStringLiteral(": ") + describe(validation)));

        QVERIFY2(p.voltage() >= 100 && p.voltage() <= 250, qPrintable(where));
        QVERIFY2(p.sensorCoefficients().k0 >= 10.0 && p.sensorCoefficients().k0 <= 45.0, qPrintable(where));
        QVERIFY2(!p.extraText(0).trimmed().isEmpty(), qPrintable(where + QStringLiteral(": English text")));
        QVERIFY2(!p.extraText(1).trimmed().isEmpty(), qPrintable(where + QStringLiteral(": German text")));

        someEdgeFixed = someEdgeFixed || !p.pickUpEdgeSelectable();
        someModeOne = someModeOne || p.sensorMode() == 1;
        someModeTwo = someModeTwo || p.sensorMode() == 2;
    }
    QVERIFY2(someEdgeFixed, "some template must fix the pick-up edge");
    QVERIFY2(someModeOne, "some template must use sensor mode 1");
    QVERIFY2(someModeTwo, "some template must use sensor mode 2");
}

void TestDataFiles::shippedHints()
{
    const QString path = builtFile("hints.cdh");
    if (path.isEmpty())
        QSKIP("no built hints.cdh (SPARKWRIGHT_BUILD_DIR unset or the data files not built)");

    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const std::unique_ptr<HintCatalog> catalog = loadHintCatalog(file);
    QVERIFY(catalog);
    QVERIFY(catalog->catalogValue() >= 1);
    // One hint each for voltage, side stand, pick-up edge, sensor advance and ignition map.
    QCOMPARE(catalog->count(), 5);
    for (int h = 0; h < catalog->count(); ++h) {
        for (int language = 0; language < HintCatalog::kLanguageCount; ++language) {
            const HintText hint = catalog->hint(h, language);
            const QString where = QStringLiteral("hint %1, language %2").arg(h).arg(language);
            QVERIFY2(!hint.title.trimmed().isEmpty(), qPrintable(where + QStringLiteral(": title")));
            QVERIFY2(!hint.text.trimmed().isEmpty(), qPrintable(where + QStringLiteral(": text")));
        }
    }
}

QTEST_APPLESS_MAIN(TestDataFiles)
#include "tst_datafiles.moc"
