// Damaged files: every reader must fail cleanly or load, never crash or hang, and what it loads
// must save to bytes that load the same. The fuzz corpora replay a few chosen inputs; here each
// file is cut at every length and damaged at random, from a fixed seed.
#include "profile/container.h"
#include "profile/defaultlibrary.h"
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

enum Kind
{
    ProfileFile,
    Library,
    Hints
};

QByteArray validBytes(int kind)
{
    if (kind == ProfileFile)
        return profileFileBytes(sampleProfile(3));
    if (kind == Library) {
        DefaultLibrary library;
        for (int type = 0; type < 3; ++type)
            library.append(sampleProfile(type));
        return defaultLibraryBytes(library);
    }
    HintCatalog catalog;
    for (int h = 0; h < 5; ++h)
        catalog.append({{HintText {QStringLiteral("Hint %1").arg(h), QStringLiteral("<p>Text</p>")},
            HintText {QStringLiteral("Hinweis %1").arg(h), kLastText}}});
    return hintCatalogBytes(catalog);
}

// Loads the bytes with the reader for the kind of file and writes what loaded again, so that
// what was read can be compared.
std::optional<QByteArray> load(int kind, QByteArray bytes)
{
    QBuffer in(&bytes);
    in.open(QIODevice::ReadOnly);
    if (kind == ProfileFile) {
        const std::optional<Profile> profile = readProfileFile(in);
        return profile ? std::optional<QByteArray>(profileFileBytes(*profile)) : std::nullopt;
    }
    if (kind == Library) {
        const std::unique_ptr<DefaultLibrary> library = loadDefaultLibrary(in);
        return library ? std::optional<QByteArray>(defaultLibraryBytes(*library)) : std::nullopt;
    }
    const std::unique_ptr<HintCatalog> catalog = loadHintCatalog(in);
    return catalog ? std::optional<QByteArray>(hintCatalogBytes(*catalog)) : std::nullopt;
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
        const int fault = random.bounded(8);
        if (fault == 0)
            bytes = patched(bytes, at, QByteArray(1, char(random.bounded(256))));
        else if (fault == 1)
            bytes.insert(at, char(random.bounded(256)));
        else if (fault == 2)
            bytes.remove(at, 1 + random.bounded(4));
        else if (fault == 3)
            bytes.truncate(at);
        else if (fault == 4)
            bytes.insert(at, bytes.mid(random.bounded(bytes.size() + 1), 1 + random.bounded(16)));
        else if (fault == 5)
            bytes = patched(bytes, bytes.indexOf('i', at) + 1, huge);
        else if (fault == 6)
            bytes = patched(bytes, bytes.indexOf(kRecordMarker, at) + 1, huge.left(3));
        else
            bytes = patched(bytes, 4, huge.left(2));
    }
    return bytes;
}

} // namespace

class TestDamagedInput : public QObject
{
    Q_OBJECT

private slots:
    void damage_data();
    void damage();
};

void TestDamagedInput::damage_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<quint32>("seed");
    QTest::newRow("profile file") << int(ProfileFile) << 20240611u;
    QTest::newRow("default library") << int(Library) << 4711u;
    QTest::newRow("hints") << int(Hints) << 1234567u;
}

void TestDamagedInput::damage()
{
    QFETCH(int, kind);
    QFETCH(quint32, seed);
    const QByteArray valid = validBytes(kind);
    QVERIFY(load(kind, valid));

    // Every prefix fails, since the container frames every record with its length.
    for (int n = 0; n < valid.size(); ++n)
        QVERIFY2(!load(kind, valid.left(n)), qPrintable(QStringLiteral("cut to %1").arg(n)));

    constexpr int kCopies = 1500;
    QRandomGenerator random(seed);
    std::optional<RecordCursor> cursor = readContainer(valid);
    QByteArrayList records;
    while (cursor && cursor->hasNext())
        records.append(cursor->next());
    int loaded = 0;
    for (int copy = 0; copy < kCopies; ++copy) {
        QByteArray bytes = damaged(valid, random);
        if (copy % 2 == 1) {
            // Damage inside one record, framed again with its new length, so that the record
            // reader rather than the container sees it.
            QByteArrayList changed = records;
            const int which = random.bounded(changed.size());
            changed[which] = damaged(changed[which], random);
            bytes = containerBytes(changed);
        }
        const std::optional<QByteArray> again = load(kind, bytes);
        if (!again)
            continue;
        ++loaded;
        QVERIFY2(load(kind, *again) == again,
            ("copy " + QByteArray::number(copy) + ": " + bytes.toHex()).constData());
    }
    // The damage must be neither so heavy that nothing ever loads nor so light that everything does.
    QVERIFY2(loaded > 0 && loaded < kCopies, qPrintable(QString::number(loaded)));
}

QTEST_APPLESS_MAIN(TestDamagedInput)
#include "tst_damagedinput.moc"
