// The default profile library and the hint catalog: their layouts, their loaders and the files we
// ship.
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
    void library();
    void hintCatalog();
    void shippedFiles();
};

// The library reads in file order, whatever the format value and the start-up flag; its
// templates are found by position and by the first of a type; it is written back as it was read.
void TestDataFiles::library()
{
    QByteArray bytes = handContainer({libraryHeader(QStringLiteral("def"), 1, 3),
        templateRecord(4, QStringLiteral("A")), templateRecord(2, QStringLiteral("Zweitakt 50 cm³")),
        templateRecord(4, QStringLiteral("C")), templateRecord(0, QStringLiteral("D"))});
    for (const bool normalStart : {true, false}) {
        QBuffer buffer(&bytes);
        QVERIFY(buffer.open(QIODevice::ReadOnly));
        const std::unique_ptr<DefaultLibrary> library = loadDefaultLibrary(buffer, normalStart);
        QVERIFY(library);
        QCOMPARE(library->libraryValue(), 3);
        QCOMPARE(defaultLibraryBytes(*library).toHex(), bytes.toHex());
        const auto name
            = [](const Profile *profile) { return profile ? profile->name() : QStringLiteral("-"); };
        QStringList found;
        for (int i : {0, 1, 2, 3, 4, -1})
            found << name(library->profileAt(i));
        for (int type : {4, 0, 1})
            found << name(library->profileForType(type));
        QCOMPARE(found, (QStringList {"A", "Zweitakt 50 cm³", "C", "D", "-", "-", "A", "D", "-"}));
        for (const Profile &profile : library->profiles())
            QVERIFY(!profile.isCustom() && !profile.isModified());
    }
    // Strings in the old form; the format value is not checked.
    QBuffer oldForm;
    oldForm.setData(handContainer({libraryHeader(QStringLiteral("def"), 99, -3, 'S')}));
    QVERIFY(oldForm.open(QIODevice::ReadOnly));
    const std::unique_ptr<DefaultLibrary> old = loadDefaultLibrary(oldForm, true);
    QVERIFY(old && old->libraryValue() == -3);
}

// Per hint, a title and a text in each of two languages; a third language is skipped on reading
// and not written.
void TestDataFiles::hintCatalog()
{
    const QStringList two {"Spannung", "<p>Volt</p>", "Zündspannung", "", "B", "b", "ß", "ü"};
    const QStringList three = two.mid(0, 4) + QStringList {"x", "y"} + two.mid(4) + QStringList {"p", "q"};
    QBuffer buffer;
    buffer.setData(handContainer({hintsRecord(5, 42, 2, 3, three)}));
    QVERIFY(buffer.open(QIODevice::ReadOnly));
    const std::unique_ptr<HintCatalog> catalog = loadHintCatalog(buffer);
    QVERIFY(catalog && catalog->catalogValue() == 5);
    QCOMPARE(flattened(*catalog), two);
    QVERIFY(catalog->hint(2, 0) == HintText() && catalog->hint(0, 2) == HintText());
    QCOMPARE(hintCatalogBytes(*catalog).toHex(), handContainer({hintsRecord(5, 1, 2, 2, two)}).toHex());
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
        QVERIFY2(!validate(p).hasErrors() && p.voltage() >= kMinVoltage && p.voltage() <= kMaxVoltage,
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
