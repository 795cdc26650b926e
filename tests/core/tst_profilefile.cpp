// The "cdi" container and what it carries: profile records and files, the default library and
// the hint catalog; the recent files, safe writing, and the file names suggested for profiles.
#include "profile/container.h"
#include "profile/defaultlibrary.h"
#include "profile/hintcatalog.h"
#include "profile/recentprofiles.h"
#include "profile/suggestedfilename.h"
#include "support/layoutencoder.h"

#include "profile/safefilewriter.h"

#include <QtTest>

#include <csignal>
#include <sys/resource.h>

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
    p.setFlags(ProfileFlags {true, false, true, 0});
    p.setVoltage(180);
    p.setPickUpEdgeSelectable(false);
    p.setK1(0.1, -0.25);
    p.setMap(mapOf({1000, 2000, 3000, 4000, 5000, 6000, 7000, 8000, 9000, 10000},
        {10, 15, 20, 25, 28, 30, 30, 28, 26, 24}));
    p.setSensorCoefficients({32.0, -1.0 / 1024, -1.0 / 1048576});
    p.setExtraText(0, QStringLiteral("Info"));
    p.setExtraText(1, QStringLiteral("Öl"));
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

} // namespace

class TestProfileFile : public QObject
{
    Q_OBJECT

private slots:
    void record_data();
    void record();
    void container_data();
    void container();
    void library();
    void hintCatalog();
    void recentProfiles();
    void writeKeepsTheOldFile_data();
    void writeKeepsTheOldFile();
    void suggestedFileNames_data();
    void suggestedFileNames();
};

// Rows that write compare the writer's bytes with the record; every row reads the record back,
// into the profile or, for a broken record, into an error.
void TestProfileFile::record_data()
{
    QTest::addColumn<bool>("writes");
    QTest::addColumn<QByteArray>("record");
    QTest::addColumn<bool>("reads");
    QTest::addColumn<Profile>("profile");

    const QByteArray everyField = QByteArray::fromHex(
        "690100000069030000006905000000" // version 1, motorbike type 3, template type 5
        "4242" // custom, aux flag
        "51690700000053747261c39f65" // name
        "5169020000004e31" // notes
        "690700000069b4000000" // flag byte, voltage 180
        "6262" // edge not selectable, not sensor mode 1
        "649a9999999999b93f64000000000000d0bf" // K1 rising 0.1, falling -0.25
        // map, rpm and angle by turns
        "69e8030000690a00000069d0070000690f00000069b80b0000691400000069a00f00006919000000"
        "6988130000691c0000006970170000691e00000069581b0000691e00000069401f0000691c000000"
        "6928230000691a00000069102700006918000000"
        "6400000000000040406400000000000050bf64000000000000b0be" // 32, -2^-10, -2^-20
        "6902000000516904000000496e666f516903000000c3966c"); // texts "Info", "Öl"
    QTest::newRow("every field set") << true << everyField << true << fullProfile();
    QTest::newRow("new profile") << true << HandRecord().bytes() << true << Profile();
    HandRecord r;
    r.k1Rising = 0.25;
    r.k1Falling = -0.5;
    r.k0 = 35.0;
    r.k1 = -0.5;
    r.flagByte = 0x08;
    r.modeOne = true;
    QTest::newRow("sensor mode 1: flag 0x08, the old mode-1 flag, K1 falling")
        << true << r.bytes() << true << withSensor(ProfileFlags {false, true, false, 1}, {35.0, 9.0, 9.0});
    r.flagByte = 0x14;
    r.modeOne = false;
    r.k1 = 0.25;
    QTest::newRow("sensor mode 2: flag 0x10 alone, K1 rising")
        << true << r.bytes() << true << withSensor(ProfileFlags {false, true, true, 2}, {35.0, 0.25, 0.0});
    r.k0 = 30.0;
    r.k1 = 7.0;
    r.k2 = 7.0;
    r.flagByte = 0x10;
    r.modeOne = true;
    QTest::newRow("the old mode-1 flag wins over flag byte 0x10, K1 and K2 derived")
        << false << r.bytes() << true << withSensor(ProfileFlags {false, true, false, 1}, {30.0, -0.5, 0.0});

    // Each string tag "Q" (followed by the "i" of its length) in the old form "S".
    QTest::newRow("strings in the old form")
        << false << QByteArray(everyField).replace("Qi", "Si") << true << fullProfile();
    // U+FEFF at the start is text, not a byte-order mark; a sequence cut off is one replacement.
    const QByteArray name = QByteArray::fromHex("51690700000053747261c39f65");
    Profile marked = fullProfile();
    marked.setName(QString(2, QChar(0xFEFF)) + QStringLiteral("Straße"));
    QTest::newRow("a name that starts with two U+FEFF keeps both") << true
        << QByteArray(everyField).replace(name, QByteArray::fromHex("51690d000000efbbbfefbbbf53747261c39f65"))
        << true << marked;
    Profile cut = fullProfile();
    cut.setName(QStringLiteral("Stra\uFFFD"));
    QTest::newRow("a name cut off inside a character") << false
        << QByteArray(everyField).replace(name, QByteArray::fromHex("51690500000053747261c3")) << true << cut;
    Profile typed = fullProfile();
    typed.setTemplateType(3);
    const QByteArray withoutTemplate = tInt(3) + everyField.mid(15);
    QTest::newRow("version 0 has no template type and takes the motorbike type")
        << false << tInt(0) + withoutTemplate << true << typed;
    QTest::newRow("version 1 without the template type fails")
        << false << tInt(1) + withoutTemplate << false << Profile();

    // Offsets in a new profile's record: aux flag 16, name 17, the second text 204.
    const auto broken = [](const char *name, int offset, const QByteArray &bytes) {
        QTest::newRow(name) << false << HandRecord().bytes().replace(offset, bytes.size(), bytes) << false
                            << Profile();
    };
    QTest::newRow("empty record fails") << false << QByteArray() << false << Profile();
    broken("aux flag not a bool fails", 16, "X");
    broken("name with a negative length fails", 17, QByteArray::fromHex("5169ffffffff"));
    broken("last text with an int tag fails", 204, "i");
}

void TestProfileFile::record()
{
    QFETCH(bool, writes);
    QFETCH(QByteArray, record);
    QFETCH(bool, reads);
    QFETCH(Profile, profile);

    if (writes)
        QCOMPARE(fieldsOf(profile), record.toHex());
    const tl::expected<Profile, FileError> read = readRecord(record);
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
    const QByteArray big(0x010002, 's');

    QTest::newRow("no records") << QByteArray::fromHex("636469000000") << false << true << QByteArrayList();
    QTest::newRow("records in file order, an empty one among them") << QByteArray::fromHex(
        "636469000300"
        "55030000616263"
        "55000000"
        "5501000063") << true << true << QByteArrayList {"abc", "", "c"};
    QTest::newRow("record length in three bytes, lowest first")
        << QByteArray::fromHex("63646900010055020001") + big << true << true << QByteArrayList {big};
    QTest::newRow("fourth byte 0x07 is ignored")
        << QByteArray::fromHex("63646907010055030000616263") << true << false << QByteArrayList {"abc"};
    QTest::newRow("bytes after the last record are ignored")
        << QByteArray::fromHex("636469000100550100004155ffffff") << true << false << QByteArrayList {"A"};
    QTest::newRow("magic in capitals")
        << QByteArray::fromHex("434449000000") << false << false << QByteArrayList();
}

void TestProfileFile::container()
{
    QFETCH(QByteArray, bytes);
    QFETCH(bool, accepted);
    QFETCH(bool, asWritten);
    QFETCH(QByteArrayList, records);

    tl::expected<RecordCursor, FileError> cursor = readContainer(bytes);
    QCOMPARE(cursor.has_value(), accepted);
    QByteArrayList read;
    while (cursor && cursor->hasNext())
        read.append(cursor->next());
    QCOMPARE(read, records);
    if (asWritten)
        QCOMPARE(containerBytes(records).toHex(), bytes.toHex());
}

// The library reads in file order and is written back as it was read.
// Finding the first template of a type shows in tst_deviceframe's import.
void TestProfileFile::library()
{
    const auto templateRecord = [](qint32 type, const QString &name) {
        HandRecord r;
        r.motorbikeType = r.templateType = type;
        r.isCustom = false;
        r.name = name;
        return r.bytes();
    };
    const QByteArray bytes = handContainer({libraryHeader(QStringLiteral("def"), 3),
        templateRecord(4, QStringLiteral("A")), templateRecord(2, QStringLiteral("Zweitakt 50 cm³"))});
    const tl::expected<DefaultLibrary, FileError> library
        = readBytes(bytes, [](QIODevice &in) { return loadDefaultLibrary(in); });
    QVERIFY(library && library->libraryValue() == 3 && library->count() == 2);
    QCOMPARE(defaultLibraryBytes(*library).toHex(), bytes.toHex());
    QCOMPARE(library->profileAt(1)->name(), QStringLiteral("Zweitakt 50 cm³"));
    QVERIFY(!library->profileAt(2) && !library->profileAt(-1) && !library->profileAt(0)->isModified());
}

// Per hint, a title and a text in each of two languages; a third language is skipped on reading
// and not written.
void TestProfileFile::hintCatalog()
{
    // Per hint: title and text in language 0, then in language 1.
    const QStringList two {"Spannung", "<p>Volt</p>", "Zündspannung", "", "B", "b", "ß", "ü"};
    const QStringList three = two.mid(0, 4) + QStringList {"x", "y"} + two.mid(4) + QStringList {"p", "q"};
    const tl::expected<HintCatalog, FileError> catalog
        = readBytes(handContainer({hintsRecord(5, 42, 2, 3, three)}), loadHintCatalog);
    QVERIFY(catalog && catalog->catalogValue() == 5 && catalog->count() == 2);
    QVERIFY(catalog->hint(1, 1).title == two[6] && catalog->hint(1, 1).text == two[7]);
    QCOMPARE(hintCatalogBytes(*catalog).toHex(), handContainer({hintsRecord(5, 1, 2, 2, two)}).toHex());
}

// Ten files opened, the fourth again, then two deleted: the list keeps the eight newest, moves a
// file opened again to the front and drops missing files. It lives in a settings file of its own
// here, so the user's is never touched.
void TestProfileFile::recentProfiles()
{
    const QString added = QStringLiteral("abcdefghijd"); // one letter per file, oldest first
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
    QVERIFY(QFile::remove(pathOf('e')) && QFile::remove(pathOf('g')));

    QString names;
    for (const RecentProfile &entry : CRecentProfiles(settings).entries()) {
        names += entry.name.toLower();
        QCOMPARE(entry.path, pathOf(names.back()));
        QCOMPARE(entry.when, start.addSecs(60 * added.lastIndexOf(names.back())));
    }
    QCOMPARE(names, QStringLiteral("djihfc"));
}

// Every write goes to a file beside the target that takes its place only when complete and on
// the disk. A disk that fills up (here: a file size limit, which fails each write past it as a
// full disk does) leaves the old file as it was, also for a file small enough to sit in Qt's
// write buffer until it is committed.
void TestProfileFile::writeKeepsTheOldFile_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<qint64>("limit"); // bytes a file may grow to; 0: no limit
    QTest::addColumn<QString>("old"); // the old file, "read-only", or "" in a folder that is missing
    QTest::addColumn<QString>("failure"); // empty: written
    const QString full
        = "the file could not be written: File too large. A file that was there before is unchanged.";
    QTest::newRow("written") << 1349 << qint64(0) << "old" << "";
    QTest::newRow("small file, disk full") << 1349 << qint64(100) << "old" << full;
    QTest::newRow("large file, disk full") << 40000 << qint64(20000) << "old" << full;
    QTest::newRow("read-only old file") << 10 << qint64(0) << "read-only"
                                        << "the file may not be written there.";
    QTest::newRow("missing folder") << 10 << qint64(0) << ""
                                    << "the file may not be written there: No such file or directory.";
}

void TestProfileFile::writeKeepsTheOldFile()
{
    QFETCH(int, size);
    QFETCH(qint64, limit);
    QFETCH(QString, old);
    QFETCH(QString, failure);
    const QTemporaryDir folder;
    const QString path = folder.filePath(old.isEmpty() ? "gone/old.cdi" : "old.cdi");
    const QByteArray before(old.isEmpty() ? 0 : 700, 'o');
    QVERIFY(old.isEmpty() || writeFile(path, before));
    if (old == QLatin1String("read-only"))
        QVERIFY(QFile::setPermissions(path, QFile::ReadOwner));

    rlimit saved {};
    QVERIFY(::getrlimit(RLIMIT_FSIZE, &saved) == 0);
    const auto savedSignal = std::signal(SIGXFSZ, SIG_IGN);
    if (limit) {
        const rlimit lowered {rlim_t(limit), saved.rlim_max};
        QVERIFY(::setrlimit(RLIMIT_FSIZE, &lowered) == 0);
    }
    const tl::expected<void, FileError> written = writeFileSafely(path, QByteArray(size, 'n'));
    ::setrlimit(RLIMIT_FSIZE, &saved);
    std::signal(SIGXFSZ, savedSignal);

    QCOMPARE(written ? QString() : fileErrorText(written.error()), failure);
    QCOMPARE(readFile(path), failure.isEmpty() ? QByteArray(size, 'n') : before);
    // Nothing half written stays behind.
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden),
        old.isEmpty() ? QStringList() : QStringList {"old.cdi"});
}

// The name the save dialogs suggest for a profile, from its name.
void TestProfileFile::suggestedFileNames_data()
{
    QTest::addColumn<QStringList>("names"); // the profile's, then the file's

    QTest::newRow("separators, characters Windows refuses, control characters")
        << QStringList {"road/track\\a<b>c:d\"e|f?g*h\ti", "road_track_a_b_c_d_e_f_g_h_i"};
    QTest::newRow("blanks and dots at the ends") << QStringList {"  . tuned. . ", "tuned"};
    QTest::newRow("nothing but dots") << QStringList {"...", "profile"};
    QTest::newRow("device name with extension") << QStringList {"LPT1.old", "LPT1_.old"};
    QTest::newRow("device name inside a word") << QStringList {"CONSOLE", "CONSOLE"};
    QTest::newRow("long names are cut, never inside a character")
        << QStringList {QString(79, 'x') + QString::fromUtf8("\xF0\x9F\x94\xA5") + "tail", QString(79, 'x')};
}

void TestProfileFile::suggestedFileNames()
{
    QFETCH(QStringList, names);
    QCOMPARE(suggestedFileName(names[0], QStringLiteral("profile")), names[1]);
}

QTEST_APPLESS_MAIN(TestProfileFile)
#include "tst_profilefile.moc"
