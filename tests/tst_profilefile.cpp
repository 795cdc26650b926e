// The "cdi" container and what it carries: profile records and files, the default library and
// the hint catalog.
#include "profile/container.h"
#include "profile/defaultlibrary.h"
#include "profile/hintcatalog.h"
#include "profile/profilefile.h"
#include "profile/recentprofiles.h"
#include "tests/layoutencoder.h"

#include <QBuffer>
#include <QtTest>

#include <limits>

Q_DECLARE_METATYPE(Profile)

namespace {

// Every field differs from its default.
Profile fullProfile()
{
    Profile p;
    p.setMotorbikeType(3, true);
    p.setTemplateType(5);
    p.setAuxFlag(true);
    p.setName(QStringLiteral("Straße"));
    p.setNotes(QStringLiteral("N1"));
    p.setFlags(flagsOf(true, false, true, 0));
    p.setVoltage(180);
    p.setPickUpEdgeSelectable(false);
    p.setK1(0.5, -0.25);
    p.setMap(mapOf({1000, 2000, 3000, 4000, 5000, 6000, 7000, 8000, 9000, 10000},
        {10, 15, 20, 25, 28, 30, 30, 28, 26, 24}));
    p.setSensorCoefficients({32.0, -1.0 / 1024, -1.0 / 1048576});
    p.setExtraText(0, QStringLiteral("Info"));
    p.setExtraText(1, QStringLiteral("Öl"));
    return p;
}

Profile withTexts(const QString &name, const QString &first, const QString &second)
{
    Profile p;
    p.setName(name);
    p.setExtraText(0, first);
    p.setExtraText(1, second);
    return p;
}

// As the editor leaves it: with a sensor mode, K1 follows the edge and K2 is zero.
Profile withSensor(const ProfileFlags &flags, const SensorCoefficients &coefficients)
{
    Profile p;
    p.setK1(0.25, -0.5);
    p.setFlags(flags);
    p.setSensorCoefficients(coefficients);
    return p;
}

// Reads the bytes with one of the file readers.
template<typename Reader> auto readBytes(QByteArray bytes, Reader reader)
{
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    return reader(buffer);
}

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

} // namespace

class TestProfileFile : public QObject
{
    Q_OBJECT

private slots:
    void record_data();
    void record();
    void container_data();
    void container();
    void profileFileTakesTheFirstRecord();
    void library();
    void hintCatalog();
    void recentProfiles_data();
    void recentProfiles();
};

// Rows that write compare the writer's bytes with the record; every row reads the record back,
// into the profile or, for a broken record, into nothing.
void TestProfileFile::record_data()
{
    QTest::addColumn<bool>("writes");
    QTest::addColumn<QByteArray>("record");
    QTest::addColumn<bool>("reads");
    QTest::addColumn<Profile>("profile");

    QTest::newRow("every field set") << true
                                     << QByteArray::fromHex("6901000000" // version
                                                            "6903000000" // motorbike type
                                                            "6905000000" // template type
                                                            "4242" // custom, aux flag
                                                            "51690700000053747261c39f65" // name
                                                            "5169020000004e31" // notes
                                                            "6907000000" // flag byte
                                                            "69b4000000" // voltage 180
                                                            "6262" // edge not selectable, not sensor mode 1
                                                            "64000000000000e03f" // 0.5
                                                            "64000000000000d0bf" // -0.25
                                                            // map, rpm and angle by turns
                                                            "69e8030000690a00000069d0070000690f000000"
                                                            "69b80b0000691400000069a00f00006919000000"
                                                            "6988130000691c0000006970170000691e000000"
                                                            "69581b0000691e00000069401f0000691c000000"
                                                            "6928230000691a00000069102700006918000000"
                                                            "640000000000004040" // 32
                                                            "6400000000000050bf" // -2^-10
                                                            "64000000000000b0be" // -2^-20
                                                            "6902000000" // two texts
                                                            "516904000000496e666f"
                                                            "516903000000c3966c")
                                     << true << fullProfile();
    QTest::newRow("new profile") << true << HandRecord().bytes() << true << Profile();
    HandRecord r;
    r.k1Rising = 0.25;
    r.k1Falling = -0.5;
    r.k0 = 35.0;
    r.k1 = -0.5;
    r.flagByte = 0x08;
    r.modeOne = true;
    QTest::newRow("sensor mode 1: flag 0x08, the old mode-1 flag, K1 falling")
        << true << r.bytes() << true << withSensor(flagsOf(false, true, false, 1), {35.0, 9.0, 9.0});
    r.flagByte = 0x14;
    r.modeOne = false;
    r.k1 = 0.25;
    QTest::newRow("sensor mode 2: flag 0x10 alone, K1 rising")
        << true << r.bytes() << true << withSensor(flagsOf(false, true, true, 2), {35.0, 0.25, 0.0});
    r.k0 = 30.0;
    r.k1 = 7.0;
    r.k2 = 7.0;
    r.flagByte = 0x10;
    r.modeOne = true;
    QTest::newRow("the old mode-1 flag wins over flag byte 0x10, K1 and K2 derived")
        << false << r.bytes() << true << withSensor(flagsOf(false, true, false, 1), {30.0, -0.5, 0.0});
    r.flagByte = 0;
    r.modeOne = false;
    QTest::newRow("mode 0 keeps the stored K1 and K2")
        << false << r.bytes() << true << withSensor(flagsOf(false, true, false, 0), {30.0, 7.0, 7.0});

    r = HandRecord();
    r.name = QStringLiteral("点火 ⚡ 🏍");
    r.trailing = QStringList {QString(), QStringLiteral("𝄞")};
    r.k1Rising = std::numeric_limits<double>::lowest();
    r.k1Falling = -std::numeric_limits<double>::min();
    r.k0 = -0.0;
    r.k1 = std::numeric_limits<double>::denorm_min();
    r.k2 = qInf();
    Profile extreme = withTexts(r.name, QString(), r.trailing[1]);
    extreme.setK1(r.k1Rising, r.k1Falling);
    extreme.setSensorCoefficients({r.k0, r.k1, r.k2});
    QTest::newRow("surrogate pairs, extreme doubles bit for bit") << true << r.bytes() << true << extreme;

    r = HandRecord();
    r.stringTag = 'S';
    r.name = QStringLiteral("Straße");
    r.trailing = QStringList {QStringLiteral("Info"), QStringLiteral("Öl")};
    QTest::newRow("strings in the old form") << false << r.bytes() << true << withTexts(r.name, "Info", "Öl");
    r.trailing.append(QStringLiteral("drei"));
    QTest::newRow("three texts keep the first two")
        << false << r.bytes() << true << withTexts(r.name, "Info", "Öl");

    r = HandRecord();
    r.version = 0;
    r.motorbikeType = 4;
    Profile typed;
    typed.setMotorbikeType(4, true);
    typed.setTemplateType(4);
    QTest::newRow("version 0 has no template type and takes the motorbike type")
        << false << r.bytes() << true << typed;
    QTest::newRow("version 1 without the template type fails")
        << false << tInt(1) + r.bytes().mid(5) << false << Profile();
    r.version = 7;
    r.templateType = 2;
    typed.setTemplateType(2);
    QTest::newRow("a higher version reads with the current layout") << false << r.bytes() << true << typed;

    // Offsets in a new profile's record: aux flag 16, name 17, the count of texts 193,
    // the second text 204.
    const auto broken = [](const char *name, int offset, const QByteArray &bytes) {
        QTest::newRow(name) << false << HandRecord().bytes().replace(offset, bytes.size(), bytes) << false
                            << Profile();
    };
    QTest::newRow("empty record fails") << false << QByteArray() << false << Profile();
    broken("aux flag not a bool fails", 16, "X");
    broken("name with a negative length fails", 17, QByteArray::fromHex("5169ffffffff"));
    broken("more texts promised than present fails", 193, tInt(3));
    broken("last text with an int tag fails", 204, "i");
}

void TestProfileFile::record()
{
    QFETCH(bool, writes);
    QFETCH(QByteArray, record);
    QFETCH(bool, reads);
    QFETCH(Profile, profile);

    if (writes) {
        QByteArray out = QByteArrayLiteral("keep");
        writeRecord(profile, out);
        QVERIFY2(out.startsWith("keep"), "the record is appended, not written over the buffer");
        QCOMPARE(out.mid(4).toHex(), record.toHex());
    }
    const std::optional<Profile> read = readRecord(record);
    QCOMPARE(read.has_value(), reads);
    if (read) {
        QCOMPARE(fieldsOf(*read), fieldsOf(profile));
        QVERIFY(!read->isModified());
    }
}

void TestProfileFile::container_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("accepted");
    QTest::addColumn<bool>("asWritten"); // the writer gives exactly these bytes for the records
    QTest::addColumn<QByteArrayList>("records");
    const QByteArrayList none;
    QByteArrayList empties;
    for (int i = 0; i < 256; ++i)
        empties.append(QByteArray());
    const QByteArray big(0x010002, 's');

    QTest::newRow("no records") << QByteArray::fromHex("636469000000") << true << true << none;
    QTest::newRow("records in file order, an empty one among them") << QByteArray::fromHex(
        "636469000300"
        "55030000616263"
        "55000000"
        "5501000063") << true << true << QByteArrayList {"abc", "", "c"};
    QTest::newRow("record length in three bytes, lowest first")
        << QByteArray::fromHex("63646900010055020001") + big << true << true << QByteArrayList {big};
    QTest::newRow("record count lowest byte first")
        << QByteArray::fromHex("636469000001") + QByteArray::fromHex("55000000").repeated(256) << true << true
        << empties;
    QTest::newRow("fourth byte 0x07 is ignored")
        << QByteArray::fromHex("63646907010055030000616263") << true << false << QByteArrayList {"abc"};
    QTest::newRow("bytes after the last record are ignored")
        << QByteArray::fromHex("636469000100550100004155ffffff") << true << false << QByteArrayList {"A"};
    QTest::newRow("magic in capitals") << QByteArray::fromHex("434449000000") << false << false << none;
    QTest::newRow("record shorter than its length")
        << QByteArray::fromHex("63646900010055040000616263") << false << false << none;
    QTest::newRow("fewer records than counted")
        << QByteArray::fromHex("63646900020055030000616263") << false << false << none;
}

void TestProfileFile::container()
{
    QFETCH(QByteArray, bytes);
    QFETCH(bool, accepted);
    QFETCH(bool, asWritten);
    QFETCH(QByteArrayList, records);

    std::optional<RecordCursor> cursor = readBytes(bytes, [](QIODevice &in) { return readContainer(in); });
    QCOMPARE(cursor.has_value(), accepted);
    QByteArrayList read;
    while (cursor && cursor->hasNext())
        read.append(cursor->next());
    QCOMPARE(read, records);
    if (asWritten) {
        QCOMPARE(containerBytes(records).toHex(), bytes.toHex());
        QBuffer out;
        QVERIFY(out.open(QIODevice::WriteOnly) && writeContainer(records, out));
        QCOMPARE(out.data(), bytes);
    }
}

void TestProfileFile::profileFileTakesTheFirstRecord()
{
    HandRecord first;
    first.name = QStringLiteral("erstes");
    const auto read = [](const QByteArray &bytes) {
        return readBytes(bytes, [](QIODevice &in) { return readProfileFile(in); });
    };
    QCOMPARE(
        read(handContainer({first.bytes(), HandRecord().bytes()})).value_or(Profile()).name(), first.name);
    QCOMPARE(read(handContainer({first.bytes(), "junk"})).value_or(Profile()).name(), first.name);
    QVERIFY(!read(handContainer({"junk", first.bytes()})));
    QVERIFY(!read(handContainer({})));
    QVERIFY(!read(first.bytes())); // a bare record is not a file
}

// The library reads in file order, whatever the format value and the start-up flag; its
// templates are found by position and by the first of a type; it is written back as it was read.
void TestProfileFile::library()
{
    QByteArray bytes = handContainer({libraryHeader(QStringLiteral("def"), 1, 3),
        templateRecord(4, QStringLiteral("A")), templateRecord(2, QStringLiteral("Zweitakt 50 cm³")),
        templateRecord(4, QStringLiteral("C")), templateRecord(0, QStringLiteral("D"))});
    for (const bool normalStart : {true, false}) {
        const std::unique_ptr<DefaultLibrary> library
            = readBytes(bytes, [normalStart](QIODevice &in) { return loadDefaultLibrary(in, normalStart); });
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
    const std::unique_ptr<DefaultLibrary> old
        = readBytes(handContainer({libraryHeader(QStringLiteral("def"), 99, -3, 'S')}),
            [](QIODevice &in) { return loadDefaultLibrary(in); });
    QVERIFY(old && old->libraryValue() == -3);
}

// Per hint, a title and a text in each of two languages; a third language is skipped on reading
// and not written.
void TestProfileFile::hintCatalog()
{
    const QStringList two {"Spannung", "<p>Volt</p>", "Zündspannung", "", "B", "b", "ß", "ü"};
    const QStringList three = two.mid(0, 4) + QStringList {"x", "y"} + two.mid(4) + QStringList {"p", "q"};
    const std::unique_ptr<HintCatalog> catalog
        = readBytes(handContainer({hintsRecord(5, 42, 2, 3, three)}), loadHintCatalog);
    QVERIFY(catalog && catalog->catalogValue() == 5 && catalog->count() == 2);
    QStringList texts; // per hint: title and text in language 0, then in language 1
    for (int h = 0; h < 2; ++h) {
        for (int language = 0; language < 2; ++language)
            texts << catalog->hint(h, language).title << catalog->hint(h, language).text;
    }
    QCOMPARE(texts, two);
    QVERIFY(catalog->hint(2, 0) == HintText() && catalog->hint(0, 2) == HintText());
    QCOMPARE(hintCatalogBytes(*catalog).toHex(), handContainer({hintsRecord(5, 1, 2, 2, two)}).toHex());
}

void TestProfileFile::recentProfiles_data()
{
    QTest::addColumn<QString>("added"); // one letter per file, oldest first
    QTest::addColumn<QString>("removed"); // files deleted afterwards
    QTest::addColumn<QString>("listed"); // newest first
    const QString none;
    QTest::newRow("newest first") << "abc" << none << "cba";
    QTest::newRow("eight at most") << "abcdefghij" << none << "jihgfedc";
    QTest::newRow("opened again moves to the front") << "abcb" << none << "bca";
    QTest::newRow("missing files are dropped") << "abcd" << QString("bd") << "ca";
    QTest::newRow("nothing yet") << none << none << none;
}

// The list lives in a settings file of its own here, so the user's is never touched.
void TestProfileFile::recentProfiles()
{
    QFETCH(QString, added);
    QFETCH(QString, removed);
    QFETCH(QString, listed);
    QTemporaryDir dir;
    const QString settings = dir.filePath(QStringLiteral("settings.ini"));
    const auto pathOf
        = [&dir](QChar letter) { return dir.filePath(QString(letter) + QLatin1String(".cdi")); };
    const QDateTime start(QDate(2026, 5, 1), QTime(8, 0));
    for (int i = 0; i < added.size(); ++i) {
        QFile file(pathOf(added[i]));
        QVERIFY(file.open(QIODevice::WriteOnly));
        CRecentProfiles(settings).add(file.fileName(), added[i].toUpper(), start.addSecs(60 * i));
    }
    for (const QChar letter : removed)
        QVERIFY(QFile::remove(pathOf(letter)));

    for (int pass = 0; pass < 2; ++pass) { // the second reads what the first left behind
        QString names;
        for (const RecentProfile &entry : CRecentProfiles(settings).entries()) {
            names += entry.name.toLower();
            QCOMPARE(entry.path, pathOf(names.back()));
            QCOMPARE(entry.when, start.addSecs(60 * added.lastIndexOf(names.back())));
        }
        QCOMPARE(names, listed);
    }
}

QTEST_APPLESS_MAIN(TestProfileFile)
#include "tst_profilefile.moc"
