// The default profile library and the hint catalog: their loaders and the files we ship.
#include "profile/defaultlibrary.h"
#include "profile/hintcatalog.h"
#include "profile/mapvalidation.h"
#include "tests/layoutencoder.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QtTest>

namespace {

// A template record: motorbike type and name, the rest as a new factory profile has it.
QByteArray templateRecord(qint32 motorbikeType, const QString &name)
{
    HandRecord r;
    r.motorbikeType = motorbikeType;
    r.templateType = motorbikeType;
    r.isCustom = false;
    r.name = name;
    return r.bytes();
}

std::unique_ptr<DefaultLibrary> libraryFrom(QByteArray bytes, bool normalStart = true)
{
    QBuffer buffer(&bytes);
    return buffer.open(QIODevice::ReadOnly) ? loadDefaultLibrary(buffer, normalStart) : nullptr;
}

std::unique_ptr<HintCatalog> catalogFrom(QByteArray bytes)
{
    QBuffer buffer(&bytes);
    return buffer.open(QIODevice::ReadOnly) ? loadHintCatalog(buffer) : nullptr;
}

// Per hint and language, "T" and "X" with the hint's and the language's number for title and
// text, or nothing past the languages given.
QStringList hintTexts(int hints, int languages, int given)
{
    QStringList texts;
    for (int h = 0; h < hints; ++h) {
        for (int l = 0; l < languages; ++l) {
            texts << (l < given ? QStringLiteral("T%1%2").arg(h).arg(l) : QString())
                  << (l < given ? QStringLiteral("X%1%2").arg(h).arg(l) : QString());
        }
    }
    return texts;
}

// Per hint: title and text in language 0, then title and text in language 1.
QStringList flattened(const HintCatalog &catalog)
{
    QStringList texts;
    for (int h = 0; h < catalog.count(); ++h) {
        for (int language = 0; language < HintCatalog::kLanguageCount; ++language)
            texts << catalog.hint(h, language).title << catalog.hint(h, language).text;
    }
    return texts;
}

} // namespace

class TestDataFiles : public QObject
{
    Q_OBJECT

private slots:
    void loadLibrary_data();
    void loadLibrary();
    void libraryLookups();
    void writtenBytes();
    void loadHints_data();
    void loadHints();
    void shippedFiles();
};

void TestDataFiles::loadLibrary_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("loads");
    QTest::addColumn<qint32>("libraryValue");
    QTest::addColumn<QStringList>("names");

    const QByteArray a = templateRecord(4, QStringLiteral("A"));
    const QByteArray b = templateRecord(2, QStringLiteral("B"));
    const QStringList none;

    QTest::newRow("header only is an empty library") << handContainer({libraryHeader()}) << true << 7 << none;
    QTest::newRow("profiles in file order")
        << handContainer({libraryHeader(), a, b}) << true << 7 << QStringList {"A", "B"};
    QTest::newRow("format value is not checked, old string form")
        << handContainer({libraryHeader(QStringLiteral("def"), 99, -3, 'S'), a}) << true << -3
        << QStringList {"A"};
    QTest::newRow("header DEF fails")
        << handContainer({libraryHeader(QStringLiteral("DEF"))}) << false << 0 << none;
    QTest::newRow("header with a trailing space fails")
        << handContainer({libraryHeader(QStringLiteral("def "))}) << false << 0 << none;
    QTest::newRow("header without the library value fails")
        << handContainer({tString(QStringLiteral("def")) + tInt(1)}) << false << 0 << none;
    QTest::newRow("container without records fails") << handContainer({}) << false << 0 << none;
    QTest::newRow("a broken profile after good ones fails the whole load")
        << handContainer({libraryHeader(), a, b, QByteArray("junk")}) << false << 0 << none;
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
            QVERIFY(!profile.isCustom() && !profile.isModified());
        }
        QCOMPARE(read, names);
    }
}

void TestDataFiles::libraryLookups()
{
    const std::unique_ptr<DefaultLibrary> library = libraryFrom(handContainer(
        {libraryHeader(), templateRecord(4, QStringLiteral("A")), templateRecord(2, QStringLiteral("B")),
            templateRecord(4, QStringLiteral("C")), templateRecord(0, QStringLiteral("D"))}));
    QVERIFY(library);
    const auto name
        = [](const Profile *profile) { return profile ? profile->name() : QStringLiteral("none"); };
    QCOMPARE(name(library->profileAt(3)), QStringLiteral("D"));
    QCOMPARE(name(library->profileAt(4)), QStringLiteral("none"));
    QCOMPARE(name(library->profileAt(-1)), QStringLiteral("none"));
    QCOMPARE(name(library->profileForType(4)), QStringLiteral("A")); // the first of that type
    QCOMPARE(name(library->profileForType(0)), QStringLiteral("D"));
    QCOMPARE(name(library->profileForType(1)), QStringLiteral("none")); // a position, but no such type
}

void TestDataFiles::writtenBytes()
{
    DefaultLibrary library;
    library.setLibraryValue(3);
    Profile first;
    first.setMotorbikeType(1, false);
    first.setTemplateType(1);
    first.setName(QStringLiteral("Zweitakt 50 cm³"));
    library.append(first);
    library.append(Profile());

    const QByteArray expected = handContainer({libraryHeader(QStringLiteral("def"), 1, 3),
        templateRecord(1, QStringLiteral("Zweitakt 50 cm³")), HandRecord().bytes()});
    QCOMPARE(defaultLibraryBytes(library).toHex(), expected.toHex());
    QCOMPARE(defaultLibraryBytes(DefaultLibrary()).toHex(),
        handContainer({libraryHeader(QStringLiteral("def"), 1, 0)}).toHex());

    HintCatalog catalog;
    catalog.setCatalogValue(4);
    catalog.append(
        {{HintText {QStringLiteral("A"), QStringLiteral("ä")}, HintText {QStringLiteral("B"), QString()}}});
    const QByteArray record = QByteArray::fromHex("6904000000"
                                                  "6901000000"
                                                  "6901000000"
                                                  "6902000000"
                                                  "51690100000041"
                                                  "516902000000c3a4"
                                                  "51690100000042"
                                                  "516900000000");
    QCOMPARE(hintCatalogBytes(catalog).toHex(), handContainer({record}).toHex());
}

void TestDataFiles::loadHints_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("loads");
    QTest::addColumn<QStringList>("texts");

    const QStringList two = hintTexts(2, 2, 2);
    QTest::newRow("two hints in two languages, format not checked")
        << handContainer({hintsRecord(5, 42, 2, 2, two)}) << true << two;
    QTest::newRow("strings in the old form")
        << handContainer({hintsRecord(5, 1, 2, 2, two, 'S')}) << true << two;
    QTest::newRow("three languages keep the first two")
        << handContainer({hintsRecord(5, 1, 2, 3, hintTexts(2, 3, 3))}) << true << two;
    QTest::newRow("one language leaves the second empty")
        << handContainer({hintsRecord(5, 1, 2, 1, hintTexts(2, 1, 1))}) << true << hintTexts(2, 2, 1);
    QTest::newRow("no hints, whatever follows")
        << handContainer({hintsRecord(5, 1, 0, 2, {}) + "junk"}) << true << QStringList();
    QTest::newRow("negative hint count is empty")
        << handContainer({hintsRecord(5, 1, -3, 2, {})}) << true << QStringList();
    QTest::newRow("no languages is empty")
        << handContainer({hintsRecord(5, 1, 3, 0, {})}) << true << QStringList();
    QTest::newRow("a string with an int tag fails")
        << handContainer({hintsRecord(5, 1, 1, 2, {"a", "b", "c"}) + tInt(4)}) << false << QStringList();
    QTest::newRow("texts running out fail")
        << handContainer({hintsRecord(5, 1, 3, 2, two)}) << false << QStringList();
    QTest::newRow("missing language count fails")
        << handContainer({tInt(5) + tInt(1) + tInt(0)}) << false << QStringList();
}

void TestDataFiles::loadHints()
{
    QFETCH(QByteArray, bytes);
    QFETCH(bool, loads);
    QFETCH(QStringList, texts);

    const std::unique_ptr<HintCatalog> catalog = catalogFrom(bytes);
    QCOMPARE(bool(catalog), loads);
    if (!catalog)
        return;
    QCOMPARE(catalog->catalogValue(), 5);
    QCOMPARE(flattened(*catalog), texts);
    QVERIFY(catalog->hint(catalog->count(), 0) == HintText() && catalog->hint(0, 2) == HintText());
}

// The files the build produced from data/: what the program meets at every start.
void TestDataFiles::shippedFiles()
{
    const QDir build(qEnvironmentVariable("SPARKWRIGHT_BUILD_DIR"));
    QFile libraryFile(build.filePath(QStringLiteral("default.cds")));
    QFile hintsFile(build.filePath(QStringLiteral("hints.cdh")));
    QVERIFY2(
        libraryFile.open(QIODevice::ReadOnly) && hintsFile.open(QIODevice::ReadOnly), "data files not built");

    const std::unique_ptr<DefaultLibrary> library = loadDefaultLibrary(libraryFile);
    QVERIFY2(library, "every template must load");
    QVERIFY(library->count() >= 8);
    for (int i = 0; i < library->count(); ++i) {
        Profile p = library->profiles()[size_t(i)];
        const QString where = QStringLiteral("template %1 \"%2\"").arg(i).arg(p.name());
        QVERIFY2(!p.isCustom() && p.motorbikeType() == i, qPrintable(where));
        QVERIFY2(
            !p.extraText(0).trimmed().isEmpty() && !p.extraText(1).trimmed().isEmpty(), qPrintable(where));
        p.applySensorMode();
        const MapValidation validation = validate(p);
        QVERIFY2(!validation.hasErrors() && p.voltage() >= kMinVoltage && p.voltage() <= kMaxVoltage,
            qPrintable(where));
    }

    const std::unique_ptr<HintCatalog> catalog = loadHintCatalog(hintsFile);
    QVERIFY(catalog);
    // One hint each for voltage, side stand, pick-up edge, sensor advance and ignition map.
    QCOMPARE(catalog->count(), 5);
    for (const QString &text : flattened(*catalog))
        QVERIFY2(!text.trimmed().isEmpty(), "every hint has a title and a text in both languages");
}

QTEST_APPLESS_MAIN(TestDataFiles)
#include "tst_datafiles.moc"
