// Damaged files and device images: every reader must fail cleanly or load, never crash or hang.
#include "profile/container.h"
#include "profile/defaultlibrary.h"
#include "profile/deviceimage.h"
#include "profile/hintcatalog.h"
#include "profile/profilefile.h"
#include "tests/layoutencoder.h"

#include <QBuffer>
#include <QRandomGenerator>
#include <QtTest>

namespace {

// Characters of two to three bytes, so that damage also falls inside a character.
const QString kLastText = QStringLiteral("Größe ü – Ende");

Profile sampleProfile(int type)
{
    Profile p;
    p.setMotorbikeType(type, true);
    p.setName(QStringLiteral("Zündkurve %1").arg(type));
    p.setK1(-0.0003, -0.00045);
    p.setFlags(flagsOf(true, false, true, 2));
    p.setSensorCoefficients({40.0, 0.0, 0.0});
    p.setVoltage(210);
    p.setMap(mapOf({1000, 2000, 3000, 4000, 5000, 6000, 7000, 8000, 9000, 10000},
        {10, 12, 14, 16, 18, 20, 22, 24, 26, 28}));
    p.setExtraText(0, QStringLiteral("English text"));
    p.setExtraText(1, kLastText);
    return p;
}

QByteArray validBytes(const QString &kind)
{
    if (kind == QLatin1String("profile file"))
        return profileFileBytes(sampleProfile(3));
    if (kind == QLatin1String("library")) {
        DefaultLibrary library;
        for (int type = 0; type < 3; ++type)
            library.append(sampleProfile(type));
        return defaultLibraryBytes(library);
    }
    if (kind == QLatin1String("hints")) {
        HintCatalog catalog;
        for (int h = 0; h < 5; ++h)
            catalog.append({{HintText {QStringLiteral("Hint %1").arg(h), QStringLiteral("<p>Text</p>")},
                HintText {QStringLiteral("Hinweis %1").arg(h), kLastText}}});
        return hintCatalogBytes(catalog);
    }
    QByteArray frame(51, '\0');
    writeDeviceImage(sampleProfile(0), true, frame);
    return frame;
}

// Loads the bytes with the reader for the kind of file; a loaded file is written again, so that
// what was read can be compared.
std::optional<QByteArray> load(const QString &kind, const QByteArray &bytes)
{
    QBuffer in;
    in.setData(bytes);
    if (!in.open(QIODevice::ReadOnly))
        return std::nullopt;
    if (kind == QLatin1String("profile file")) {
        const std::optional<Profile> profile = readProfileFile(in);
        return profile ? std::optional<QByteArray>(profileFileBytes(*profile)) : std::nullopt;
    }
    if (kind == QLatin1String("library")) {
        const std::unique_ptr<DefaultLibrary> library = loadDefaultLibrary(in);
        return library ? std::optional<QByteArray>(defaultLibraryBytes(*library)) : std::nullopt;
    }
    const std::unique_ptr<HintCatalog> catalog = loadHintCatalog(in);
    return catalog ? std::optional<QByteArray>(hintCatalogBytes(*catalog)) : std::nullopt;
}

QByteArrayList recordsOf(const QByteArray &container)
{
    std::optional<RecordCursor> cursor = readContainer(container);
    QByteArrayList records;
    while (cursor && cursor->hasNext())
        records.append(cursor->next());
    return records;
}

// Overwrites bytes from the offset on, as far as the bytes go.
QByteArray patched(QByteArray bytes, int offset, const QByteArray &patch)
{
    const int length = qBound(0, bytes.size() - offset, patch.size());
    return length > 0 ? bytes.replace(offset, length, patch.left(length)) : bytes;
}

// One to three faults: a byte changed, inserted or removed, the rest cut off, a chunk copied to
// somewhere else, or a huge value in a tagged int (a length or a count), a record length or the
// record count.
QByteArray damaged(QByteArray bytes, QRandomGenerator &random)
{
    static const quint32 kHuge[] = {0x7FFFFFFF, 0x80000000, 0xFFFFFFFF, 0x00010001, 0x00FFFFFF};
    for (int round = 1 + random.bounded(3); round > 0; --round) {
        const int at = random.bounded(bytes.size() + 1);
        const QByteArray huge = littleEndian(kHuge[random.bounded(5)], 4);
        switch (random.bounded(8)) {
        case 0:
            bytes = patched(bytes, at, QByteArray(1, char(random.bounded(256))));
            break;
        case 1:
            bytes.insert(at, char(random.bounded(256)));
            break;
        case 2:
            bytes.remove(at, 1 + random.bounded(4));
            break;
        case 3:
            bytes.truncate(at);
            break;
        case 4:
            bytes.insert(at, bytes.mid(random.bounded(bytes.size() + 1), 1 + random.bounded(16)));
            break;
        case 5:
            bytes = patched(bytes, bytes.indexOf('i', at) + 1, huge);
            break;
        case 6:
            bytes = patched(bytes, bytes.indexOf(kRecordMarker, at) + 1, huge.left(3));
            break;
        case 7:
            bytes = patched(bytes, 4, huge.left(2));
            break;
        }
    }
    return bytes;
}

} // namespace

class TestDamagedInput : public QObject
{
    Q_OBJECT

private slots:
    void truncatedFile();
    void randomDamage_data();
    void randomDamage();
};

// Every prefix of a file fails, since the container frames every record with its length.
void TestDamagedInput::truncatedFile()
{
    for (const char *kind : {"profile file", "library", "hints"}) {
        const QByteArray bytes = validBytes(QLatin1String(kind));
        QVERIFY(load(QLatin1String(kind), bytes));
        for (int n = 0; n < bytes.size(); ++n)
            QVERIFY2(!load(QLatin1String(kind), bytes.left(n)),
                qPrintable(QStringLiteral("%1 cut to %2").arg(kind).arg(n)));
    }
}

void TestDamagedInput::randomDamage_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<quint32>("seed");
    QTest::newRow("profile file") << "profile file" << 20240611u;
    QTest::newRow("default library") << "library" << 4711u;
    QTest::newRow("hints") << "hints" << 1234567u;
    QTest::newRow("device frame") << "frame" << 99u;
}

void TestDamagedInput::randomDamage()
{
    QFETCH(QString, kind);
    QFETCH(quint32, seed);

    constexpr int kCopies = 1500;
    QRandomGenerator random(seed);
    const QByteArray valid = validBytes(kind);
    const bool isFrame = kind == QLatin1String("frame");
    int loaded = 0;
    for (int copy = 0; copy < kCopies; ++copy) {
        QByteArray bytes = damaged(valid, random);
        if (!isFrame && copy % 2 == 1) {
            // Damage inside one record, framed again with its new length, so that the record
            // reader rather than the container sees it.
            QByteArrayList records = recordsOf(valid);
            const int which = random.bounded(records.size());
            records[which] = damaged(records[which], random);
            bytes = containerBytes(records);
        }
        const QByteArray where = "copy " + QByteArray::number(copy) + ": " + bytes.toHex();

        if (isFrame) {
            Profile profile = sampleProfile(8);
            profile.setModified(false);
            const bool read = readDeviceImage(bytes, copy % 2 == 0, profile).isEmpty();
            loaded += read ? 1 : 0;
            // A refused image leaves the profile as it was; an accepted one holds a valid map.
            QVERIFY2(read ? profile.map().maxRpm() <= kMaxRpm && profile.map().maxAngle() <= kMaxAngle
                        && profile.voltage() >= kMinVoltage && profile.voltage() <= kMaxVoltage
                        && profile.isCustom() == (copy % 2 == 0)
                          : !profile.isModified() && fieldsOf(profile) == fieldsOf(sampleProfile(8)),
                where.constData());
            continue;
        }
        const std::optional<QByteArray> again = load(kind, bytes);
        if (!again)
            continue;
        ++loaded;
        // What a reader accepts, the writer writes back so that it reads the same once more.
        QVERIFY2(load(kind, *again) == again, where.constData());
    }
    // The damage must be neither so heavy that nothing ever loads nor so light that everything does.
    QVERIFY2(loaded > 0 && loaded < kCopies, qPrintable(QString::number(loaded)));
}

QTEST_APPLESS_MAIN(TestDamagedInput)
#include "tst_damagedinput.moc"
