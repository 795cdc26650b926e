#include "profile/container.h"
#include "profile/defaultlibrary.h"
#include "profile/deviceimage.h"
#include "profile/hintcatalog.h"
#include "profile/profilefile.h"
#include "profile/profilerecord.h"

#include <QBuffer>
#include <QRandomGenerator>
#include <QtTest>

#include <cstring>

namespace {

// A read-only stream, so that readers cannot ask how much is left.
class StreamDevice : public QIODevice
{
public:
    explicit StreamDevice(const QByteArray &data)
        : m_data(data)
    { }

    bool isSequential() const override { return true; }
    qint64 bytesAvailable() const override { return m_data.size() - m_offset + QIODevice::bytesAvailable(); }

protected:
    qint64 readData(char *data, qint64 maxSize) override
    {
        const qint64 count = qMin<qint64>(maxSize, m_data.size() - m_offset);
        if (count <= 0)
            return 0;
        std::memcpy(data, m_data.constData() + m_offset, size_t(count));
        m_offset += count;
        return count;
    }
    qint64 writeData(const char *, qint64) override { return -1; }

private:
    const QByteArray m_data;
    qint64 m_offset = 0;
};

QByteArray tInt(qint32 value)
{
    QByteArray out(1, 'i');
    const quint32 bits = quint32(value);
    for (int i = 0; i < 4; ++i)
        out.append(char((bits >> (8 * i)) & 0xFF));
    return out;
}

QByteArray tString(const QString &value, char tag = 'Q')
{
    const QByteArray utf8 = value.toUtf8();
    return QByteArray(1, tag) + tInt(utf8.size()) + utf8;
}

const QString kLastText = QStringLiteral("Größe ü – Ende");

Profile sampleProfile(int type)
{
    Profile p;
    p.setMotorbikeType(type, true);
    p.setTemplateType(type + 1);
    p.setAuxFlag(true);
    p.setName(QStringLiteral("Zündkurve %1").arg(type));
    p.setNotes(QStringLiteral("Notizen\nzweite Zeile"));
    p.setVoltage(210);
    p.setPickUpEdgeSelectable(false);
    p.setK1(-0.0003, -0.00045);
    ProfileFlags flags;
    flags.sideStandMonitoring = true;
    flags.groundEnablesIgnition = false;
    flags.pickUpRisingEdge = true;
    flags.sensorMode = 2;
    p.setFlags(flags);
    p.setSensorCoefficients({40.0, 0.0, 0.0});
    IgnitionMap map;
    for (int i = 0; i < kMapPointCount; ++i)
        map.setPoint(i, 1000 * (i + 1), 10 + 2 * i);
    p.setMap(map);
    p.setExtraText(0, QStringLiteral("English text"));
    p.setExtraText(1, kLastText);
    return p;
}

QByteArray validProfileFile()
{
    return profileFileBytes(sampleProfile(3));
}

QByteArray validLibrary()
{
    DefaultLibrary library;
    library.setLibraryValue(2);
    for (int type = 0; type < 3; ++type)
        library.append(sampleProfile(type));
    return defaultLibraryBytes(library);
}

HintCatalog sampleCatalog()
{
    HintCatalog catalog;
    catalog.setCatalogValue(1);
    for (int h = 0; h < 5; ++h) {
        catalog.append({{HintText {QStringLiteral("Hint %1").arg(h), QStringLiteral("<p>Text %1</p>").arg(h)},
            HintText {QStringLiteral("Hinweis %1").arg(h), QStringLiteral("<p>Größe %1</p>").arg(h)}}});
    }
    catalog.append({{HintText {QStringLiteral("last"), QStringLiteral("en")},
        HintText {QStringLiteral("letzter"), kLastText}}});
    return catalog;
}

QByteArray validHints()
{
    return hintCatalogBytes(sampleCatalog());
}

QByteArray validFrame()
{
    QByteArray frame = QByteArray::fromHex("4df668") + QByteArray(45, '\0') + QByteArray::fromHex("000000");
    writeDeviceImage(sampleProfile(0), true, frame);
    return frame;
}

// The records of a container, split by its own framing; empty when the framing is broken.
QByteArrayList recordsOf(const QByteArray &container)
{
    const std::optional<RecordCursor> cursor = readContainer(container);
    QByteArrayList records;
    if (!cursor)
        return records;
    RecordCursor copy = *cursor;
    while (copy.hasNext())
        records.append(copy.next());
    return records;
}

// Loads the bytes with the reader for the kind of file; the result is re-encoded so that a
// successful load can be compared, and is empty when the load failed.
std::optional<QByteArray> load(const QString &kind, const QByteArray &bytes, bool stream = false)
{
    std::unique_ptr<QIODevice> buffer;
    if (stream) {
        buffer = std::make_unique<StreamDevice>(bytes);
    } else {
        auto plain = std::make_unique<QBuffer>();
        plain->setData(bytes);
        buffer = std::move(plain);
    }
    if (!buffer->open(QIODevice::ReadOnly))
        return std::nullopt;
    if (kind == QLatin1String("profile file")) {
        const std::optional<Profile> profile = readProfileFile(*buffer);
        if (!profile)
            return std::nullopt;
        return profileFileBytes(*profile);
    }
    if (kind == QLatin1String("library")) {
        const std::unique_ptr<DefaultLibrary> library = loadDefaultLibrary(*buffer);
        if (!library)
            return std::nullopt;
        return defaultLibraryBytes(*library);
    }
    const std::unique_ptr<HintCatalog> catalog = loadHintCatalog(*buffer);
    if (!catalog)
        return std::nullopt;
    return hintCatalogBytes(*catalog);
}

QByteArray validBytes(const QString &kind)
{
    if (kind == QLatin1String("profile file"))
        return validProfileFile();
    if (kind == QLatin1String("library"))
        return validLibrary();
    if (kind == QLatin1String("hints"))
        return validHints();
    return validFrame();
}

void putLittleEndian(QByteArray &bytes, int offset, quint32 value, int size)
{
    for (int i = 0; i < size && offset + i < bytes.size(); ++i)
        bytes[offset + i] = char((value >> (8 * i)) & 0xFF);
}

// Offsets of the length bytes of every string, of every tagged int's value and of every record header.
QVector<int> stringLengthOffsets(const QByteArray &bytes)
{
    QVector<int> offsets;
    for (int i = 0; i + 1 < bytes.size(); ++i) {
        if ((bytes[i] == 'Q' || bytes[i] == 'S') && bytes[i + 1] == 'i')
            offsets.append(i + 2);
    }
    return offsets;
}

QVector<int> intOffsets(const QByteArray &bytes)
{
    QVector<int> offsets;
    for (int i = 0; i < bytes.size(); ++i) {
        if (bytes[i] == 'i')
            offsets.append(i + 1);
    }
    return offsets;
}

QVector<int> recordHeaderOffsets(const QByteArray &bytes)
{
    QVector<int> offsets;
    int at = kContainerHeaderSize;
    while (at + kRecordHeaderSize <= bytes.size() && bytes[at] == kRecordMarker) {
        offsets.append(at);
        const int length
            = quint8(bytes[at + 1]) | (quint8(bytes[at + 2]) << 8) | (quint8(bytes[at + 3]) << 16);
        at += kRecordHeaderSize + length;
    }
    return offsets;
}

quint32 hugeValue(QRandomGenerator &random)
{
    static const quint32 values[]
        = {0x7FFFFFFF, 0x80000000, 0xFFFFFFFF, 0x00010000, 0x00010001, 0x00FFFFFF, 0x7FFFFFF0, 0xFFFF0000};
    if (random.bounded(4) == 0)
        return random.generate();
    return values[random.bounded(int(sizeof(values) / sizeof(values[0])))];
}

int pick(QRandomGenerator &random, const QVector<int> &offsets)
{
    return offsets.isEmpty() ? -1 : offsets.at(random.bounded(offsets.size()));
}

QByteArray damaged(const QByteArray &valid, bool isContainer, QRandomGenerator &random)
{
    QByteArray bytes = valid;
    const int rounds = 1 + random.bounded(3);
    for (int round = 0; round < rounds; ++round) {
        const int position = bytes.isEmpty() ? 0 : random.bounded(bytes.size());
        const char value = char(random.bounded(256));
        switch (random.bounded(isContainer ? 10 : 5)) {
        case 0:
            if (!bytes.isEmpty())
                bytes[position] = char(bytes[position] ^ char(1 + random.bounded(255)));
            break;
        case 1:
            if (!bytes.isEmpty())
                bytes[position] = value;
            break;
        case 2:
            bytes.insert(bytes.isEmpty() ? 0 : random.bounded(bytes.size() + 1), value);
            break;
        case 3:
            bytes.remove(position, 1 + random.bounded(4));
            break;
        case 4:
            bytes.truncate(position);
            break;
        case 5: {
            const int at = pick(random, stringLengthOffsets(bytes));
            if (at >= 0)
                putLittleEndian(bytes, at, hugeValue(random), 4);
            break;
        }
        case 6: {
            const int at = pick(random, intOffsets(bytes));
            if (at >= 0)
                putLittleEndian(bytes, at, hugeValue(random), 4);
            break;
        }
        case 7: {
            const int at = pick(random, recordHeaderOffsets(bytes));
            if (at >= 0)
                putLittleEndian(bytes, at + 1, random.bounded(2) ? 0xFFFFFFu : random.generate(), 3);
            break;
        }
        case 8:
            putLittleEndian(bytes, 4, random.bounded(2) ? 0xFFFFu : random.generate(), 2);
            break;
        case 9: {
            // A chunk of the file copied to somewhere else, as a bad sector or a botched copy would.
            const int length = 1 + random.bounded(16);
            bytes.insert(bytes.isEmpty() ? 0 : random.bounded(bytes.size() + 1), bytes.mid(position, length));
            break;
        }
        }
    }
    return bytes;
}

bool sameDeviceFields(const Profile &a, const Profile &b)
{
    return a.map() == b.map() && a.voltage() == b.voltage() && a.flags() == b.flags()
        && std::memcmp(&a.sensorCoefficients(), &b.sensorCoefficients(), sizeof(SensorCoefficients)) == 0
        && a.isCustom() == b.isCustom() && a.isModified() == b.isModified() && a.name() == b.name();
}

Profile untouchedProfile()
{
    Profile p = sampleProfile(8);
    p.setModified(false);
    return p;
}

} // namespace

// Damaged files and device images: every reader must fail cleanly or load, never crash or hang.
class TestDamagedInput : public QObject
{
    Q_OBJECT

private slots:
    void truncatedFile_data();
    void truncatedFile();
    void truncatedLastRecord_data();
    void truncatedLastRecord();
    void truncatedDeviceFrame();
    void hugeLengths_data();
    void hugeLengths();
    void randomDamage_data();
    void randomDamage();
};

void TestDamagedInput::truncatedFile_data()
{
    QTest::addColumn<QString>("kind");
    QTest::newRow("profile file") << "profile file";
    QTest::newRow("default library") << "library";
    QTest::newRow("hints") << "hints";
}

void TestDamagedInput::truncatedFile()
{
    QFETCH(QString, kind);
    const QByteArray bytes = validBytes(kind);
    QVERIFY(load(kind, bytes).has_value());
    QVERIFY(load(kind, bytes, true).has_value());
    // The container frames every record with its length, so no proper prefix is a whole file.
    for (int n = 0; n < bytes.size(); ++n) {
        QVERIFY2(!load(kind, bytes.left(n)).has_value(), qPrintable(QStringLiteral("prefix %1").arg(n)));
        QVERIFY2(!load(kind, bytes.left(n), true).has_value(),
            qPrintable(QStringLiteral("stream prefix %1").arg(n)));
    }
}

void TestDamagedInput::truncatedLastRecord_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<int>("countFromEnd");
    QTest::addColumn<int>("countAt");

    // The profile record ends with the trailing string count and the two texts.
    const int textsSize = tString(QStringLiteral("English text")).size() + tString(kLastText).size();
    QTest::newRow("profile file") << "profile file" << textsSize + 5 << -1;
    QTest::newRow("default library") << "library" << textsSize + 5 << -1;
    // The catalog record starts with four ints; the fourth is the language count.
    QTest::newRow("hints") << "hints" << -1 << 3 * 5;
}

// The record itself is cut and framed again with its new length. The last item of each record
// is a string: the record still reads once the tag of that string's length is there (the length
// bytes and the text may run past the end). A shorter cut fails, since every earlier value is
// followed by a tag that would lie past the end, with one exception: a count whose tag is there
// but none of its bytes reads as zero, and then nothing more is read.
void TestDamagedInput::truncatedLastRecord()
{
    QFETCH(QString, kind);
    QFETCH(int, countFromEnd);
    QFETCH(int, countAt);
    const QByteArrayList records = recordsOf(validBytes(kind));
    QVERIFY(!records.isEmpty());
    const QByteArray last = records.last();
    const QByteArray lastText = kLastText.toUtf8();
    const int lastStringAt = last.size() - 6 - lastText.size();
    QCOMPARE(last.mid(lastStringAt), tString(kLastText));
    if (countFromEnd >= 0)
        countAt = last.size() - countFromEnd;
    QCOMPARE(last.at(countAt), 'i');

    for (int n = 0; n <= last.size(); ++n) {
        QByteArrayList cut = records;
        cut.last() = last.left(n);
        const std::optional<QByteArray> loaded = load(kind, containerBytes(cut));
        const bool shouldLoad = n >= lastStringAt + 2 || n == countAt + 1;
        QVERIFY2(loaded.has_value() == shouldLoad,
            qPrintable(QStringLiteral("record cut to %1 of %2 bytes").arg(n).arg(last.size())));
        if (kind != QLatin1String("profile file") || !loaded)
            continue;
        const std::optional<Profile> profile = readRecord(last.left(n));
        QVERIFY(profile.has_value());
        if (n == countAt + 1) {
            QCOMPARE(profile->extraText(0), QString());
            QCOMPARE(profile->extraText(1), QString());
        } else {
            const int textBytes = qMax(0, n - (lastStringAt + 6));
            QCOMPARE(profile->extraText(0), QStringLiteral("English text"));
            QCOMPARE(profile->extraText(1), QString::fromUtf8(lastText.left(textBytes)));
        }
        QCOMPARE(profile->map(), sampleProfile(3).map());
    }
}

void TestDamagedInput::truncatedDeviceFrame()
{
    const QByteArray frame = validFrame();
    for (int n = 0; n <= frame.size(); ++n) {
        const Profile before = untouchedProfile();
        Profile profile = before;
        const QString failure = readDeviceImage(frame.left(n), true, profile);
        // Missing bytes read as zero: the first thing to fail is the voltage, which sits at byte 34.
        QCOMPARE(failure.isEmpty(), n > DeviceImage::kVoltageOffset);
        if (failure.isEmpty()) {
            QCOMPARE(profile.voltage(), 210);
        } else {
            QCOMPARE(failure, QStringLiteral("invalid voltage: 0"));
            QVERIFY(sameDeviceFields(profile, before));
        }
    }
}

void TestDamagedInput::hugeLengths_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("loads");

    const QByteArray file = validProfileFile();
    const QByteArray name = tString(sampleProfile(3).name());
    const QByteArray lastText = tString(kLastText);
    auto replaced = [](QByteArray bytes, const QByteArray &from, const QByteArray &to) {
        // The record length in the container header must follow the record.
        const int at = bytes.indexOf(from);
        bytes.replace(at, from.size(), to);
        putLittleEndian(bytes, 7, quint32(bytes.size() - 10), 3);
        return bytes;
    };

    QTest::newRow("name claiming 0x7FFFFFFF bytes")
        << "profile file" << replaced(file, name, QByteArray("Q") + tInt(0x7FFFFFFF) + name.mid(6)) << false;
    QTest::newRow("old-form name claiming 0x7FFFFFFF bytes")
        << "profile file" << replaced(file, name, QByteArray("S") + tInt(0x7FFFFFFF) + name.mid(6)) << false;
    QTest::newRow("trailing string count 0x7FFFFFFF")
        << "profile file" << replaced(file, tInt(2) + QByteArray("Q"), tInt(0x7FFFFFFF) + QByteArray("Q"))
        << false;
    QTest::newRow("last text claiming 0x7FFFFFFF bytes keeps what is there")
        << "profile file" << replaced(file, lastText, QByteArray("Q") + tInt(0x7FFFFFFF) + lastText.mid(6))
        << true;
    QTest::newRow("old-form last text claiming 0x7FFFFFFF bytes")
        << "profile file" << replaced(file, lastText, QByteArray("S") + tInt(0x7FFFFFFF) + lastText.mid(6))
        << false;
    {
        QByteArray bytes = file;
        putLittleEndian(bytes, 7, 0xFFFFFF, 3);
        QTest::newRow("record length 0xFFFFFF") << "profile file" << bytes << false;
    }
    {
        QByteArray bytes = file;
        putLittleEndian(bytes, 4, 0xFFFF, 2);
        QTest::newRow("record count 0xFFFF") << "profile file" << bytes << false;
    }

    const QByteArray hints = validHints();
    auto hintsWith = [&hints](qint32 count, qint32 languages) {
        QByteArray bytes = hints;
        const QByteArray counts = tInt(6) + tInt(2);
        bytes.replace(bytes.indexOf(counts), counts.size(), tInt(count) + tInt(languages));
        return bytes;
    };
    QTest::newRow("hint count 0x7FFFFFFF") << "hints" << hintsWith(0x7FFFFFFF, 2) << false;
    QTest::newRow("language count 0x7FFFFFFF") << "hints" << hintsWith(6, 0x7FFFFFFF) << false;
    QTest::newRow("both counts 0x7FFFFFFF") << "hints" << hintsWith(0x7FFFFFFF, 0x7FFFFFFF) << false;
    QTest::newRow("hint count 0x7FFFFFFF without languages is empty")
        << "hints" << hintsWith(0x7FFFFFFF, 0) << true;
    QTest::newRow("most negative counts are empty")
        << "hints" << hintsWith(-0x7FFFFFFF - 1, -0x7FFFFFFF - 1) << true;

    const QByteArray library = validLibrary();
    {
        QByteArray bytes = library;
        putLittleEndian(bytes, 4, 0xFFFF, 2);
        QTest::newRow("library record count 0xFFFF") << "library" << bytes << false;
    }
    {
        QByteArray bytes = library;
        const QVector<int> headers = recordHeaderOffsets(bytes);
        QCOMPARE(headers.size(), 4);
        putLittleEndian(bytes, headers.last() + 1, 0xFFFFFF, 3);
        QTest::newRow("last library record length 0xFFFFFF") << "library" << bytes << false;
    }
}

void TestDamagedInput::hugeLengths()
{
    QFETCH(QString, kind);
    QFETCH(QByteArray, bytes);
    QFETCH(bool, loads);

    QCOMPARE(load(kind, bytes).has_value(), loads);
    QCOMPARE(load(kind, bytes, true).has_value(), loads);
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
    const QByteArrayList validRecords = isFrame ? QByteArrayList() : recordsOf(valid);
    int loaded = 0;

    for (int copy = 0; copy < kCopies; ++copy) {
        QByteArray bytes;
        if (!isFrame && copy % 2 == 1) {
            // Damage inside one record, framed again with its new length, so that the record
            // reader rather than the container sees it.
            QByteArrayList records = validRecords;
            const int which = random.bounded(records.size());
            records[which] = damaged(records[which], true, random);
            bytes = containerBytes(records);
        } else {
            bytes = damaged(valid, !isFrame, random);
        }
        const QString where = QStringLiteral("copy %1: %2").arg(copy).arg(QString::fromLatin1(bytes.toHex()));

        if (isFrame) {
            const Profile before = untouchedProfile();
            Profile profile = before;
            const QString failure = readDeviceImage(bytes, copy % 2 == 0, profile);
            if (!failure.isEmpty()) {
                QVERIFY2(sameDeviceFields(profile, before), qPrintable(where));
                continue;
            }
            ++loaded;
            QVERIFY2(profile.map().maxRpm() <= kMaxRpm && profile.map().maxAngle() <= kMaxAngle,
                qPrintable(where));
            QVERIFY2(profile.voltage() >= kMinVoltage && profile.voltage() <= kMaxVoltage, qPrintable(where));
            QCOMPARE(profile.isCustom(), copy % 2 == 0);
            continue;
        }

        const std::optional<QByteArray> again = load(kind, bytes, copy % 3 == 0);
        if (!again)
            continue;
        ++loaded;
        // What a reader accepts, the writer writes back so that it reads the same once more.
        const std::optional<QByteArray> thirdTime = load(kind, *again);
        QVERIFY2(thirdTime.has_value(), qPrintable(where));
        QVERIFY2(*thirdTime == *again, qPrintable(where));
    }
    // The damage must not be so heavy that nothing ever loads, nor so light that everything does.
    QVERIFY2(loaded > 0 && loaded < kCopies, qPrintable(QString::number(loaded)));
}

QTEST_APPLESS_MAIN(TestDamagedInput)
#include "tst_damagedinput.moc"
