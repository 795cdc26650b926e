#include "profile/container.h"
#include "profile/profilefile.h"
#include "profile/profilerecord.h"
#include "profile/safefilewriter.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QtTest>

#include <cstring>
#include <limits>

Q_DECLARE_METATYPE(Profile)

namespace {

quint64 bitsOf(double value)
{
    quint64 bits = 0;
    std::memcpy(&bits, &value, sizeof(bits));
    return bits;
}

// Tagged values written out by hand from the value table, independent of the production writer.
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

// The profile record, item by item, as the record table lists it.
struct HandRecord
{
    qint32 version = 1;
    qint32 motorbikeType = 0;
    qint32 templateType = 0;
    bool isCustom = true;
    bool auxFlag = false;
    QString name = QStringLiteral("Unnamed");
    QString notes;
    qint32 flagByte = 0;
    qint32 voltage = 200;
    bool edgeSelectable = true;
    bool modeOne = false;
    double k1Rising = 0.0;
    double k1Falling = 0.0;
    std::array<qint32, 10> rpm {};
    std::array<qint32, 10> angle {};
    double k0 = 0.0;
    double k1 = 0.0;
    double k2 = 0.0;
    QStringList trailing {QString(), QString()};
    char stringTag = 'Q';

    QByteArray bytes() const
    {
        QByteArray out = tInt(version) + tInt(motorbikeType);
        if (version > 0)
            out += tInt(templateType);
        out += tBool(isCustom) + tBool(auxFlag) + tString(name, stringTag) + tString(notes, stringTag);
        out += tInt(flagByte) + tInt(voltage) + tBool(edgeSelectable) + tBool(modeOne);
        out += tDouble(k1Rising) + tDouble(k1Falling);
        for (int i = 0; i < 10; ++i)
            out += tInt(rpm[i]) + tInt(angle[i]);
        out += tDouble(k0) + tDouble(k1) + tDouble(k2);
        out += tInt(trailing.size());
        for (const QString &text : trailing)
            out += tString(text, stringTag);
        return out;
    }
};

// The container framing written out by hand: "cdi", a zero, the count, then "U" + 24-bit length.
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

IgnitionMap mapOf(const std::array<qint32, 10> &rpm, const std::array<qint32, 10> &angle)
{
    IgnitionMap map;
    for (int i = 0; i < 10; ++i)
        map.setPoint(i, rpm[i], angle[i]);
    return map;
}

ProfileFlags flagsOf(bool monitoring, bool groundEnables, bool rising, quint32 mode)
{
    ProfileFlags flags;
    flags.sideStandMonitoring = monitoring;
    flags.groundEnablesIgnition = groundEnables;
    flags.pickUpRisingEdge = rising;
    flags.sensorMode = mode;
    return flags;
}

const std::array<qint32, 10> kRpms {1000, 2000, 3000, 4000, 5000, 6000, 7000, 8000, 9000, 10000};
const std::array<qint32, 10> kAngles {10, 15, 20, 25, 28, 30, 30, 28, 26, 24};

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
    p.setMap(mapOf(kRpms, kAngles));
    p.setSensorCoefficients({32.0, -1.0 / 1024, -1.0 / 1048576});
    p.setExtraText(0, QStringLiteral("Info"));
    p.setExtraText(1, QStringLiteral("Öl"));
    return p;
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
    QCOMPARE(actual.sideStandMonitoring(), expected.sideStandMonitoring());
    QCOMPARE(actual.groundEnablesIgnition(), expected.groundEnablesIgnition());
    QCOMPARE(actual.pickUpRisingEdge(), expected.pickUpRisingEdge());
    QCOMPARE(actual.sensorMode(), expected.sensorMode());
    QCOMPARE(actual.voltage(), expected.voltage());
    QCOMPARE(actual.pickUpEdgeSelectable(), expected.pickUpEdgeSelectable());
    // Bits, so that -0.0 and denormals count exactly.
    QCOMPARE(bitsOf(actual.k1Rising()), bitsOf(expected.k1Rising()));
    QCOMPARE(bitsOf(actual.k1Falling()), bitsOf(expected.k1Falling()));
    QCOMPARE(bitsOf(actual.sensorCoefficients().k0), bitsOf(expected.sensorCoefficients().k0));
    QCOMPARE(bitsOf(actual.sensorCoefficients().k1), bitsOf(expected.sensorCoefficients().k1));
    QCOMPARE(bitsOf(actual.sensorCoefficients().k2), bitsOf(expected.sensorCoefficients().k2));
}

std::optional<Profile> readFromBytes(const QByteArray &bytes)
{
    QBuffer buffer;
    buffer.setData(bytes);
    if (!buffer.open(QIODevice::ReadOnly))
        return std::nullopt;
    return readProfileFile(buffer);
}

QByteArray fileContents(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return QByteArray("<unreadable>");
    return file.readAll();
}

bool writeFile(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

} // namespace

// Profile records, the ".cdi" container around them, and saving profile files.
class TestProfileFile : public QObject
{
    Q_OBJECT

private slots:
    void writeRecordBytes_data();
    void writeRecordBytes();
    void readRecordFields_data();
    void readRecordFields();
    void readRecordFailures_data();
    void readRecordFailures();
    void containerBytesFromRecords();
    void readContainerHeader_data();
    void readContainerHeader();
    void readProfileFileTakesFirstRecord_data();
    void readProfileFileTakesFirstRecord();
    void profileRoundTrip_data();
    void profileRoundTrip();
    void writeFileSafely_data();
    void writeFileSafely();
    void saveProfileFileReadsBack();
};

void TestProfileFile::writeRecordBytes_data()
{
    QTest::addColumn<Profile>("profile");
    QTest::addColumn<QByteArray>("record");

    QTest::newRow("custom profile with every field set")
        << fullProfile()
        << QByteArray::fromHex("6901000000" // version
                               "6903000000" // motorbike type
                               "6905000000" // template type
                               "42" // custom
                               "42" // aux flag
                               "51690700000053747261c39f65" // name
                               "5169020000004e31" // notes
                               "6907000000" // flag byte
                               "69b4000000" // voltage 180
                               "62" // edge not selectable
                               "62" // not sensor mode 1
                               "64000000000000e03f" // 0.5
                               "64000000000000d0bf" // -0.25
                               "69e8030000690a000000" // map: rpm, angle per slot
                               "69d0070000690f000000"
                               "69b80b00006914000000"
                               "69a00f00006919000000"
                               "6988130000691c000000"
                               "6970170000691e000000"
                               "69581b0000691e000000"
                               "69401f0000691c000000"
                               "6928230000691a000000"
                               "69102700006918000000"
                               "640000000000004040" // 32
                               "6400000000000050bf" // -2^-10
                               "64000000000000b0be" // -2^-20
                               "6902000000" // two texts
                               "516904000000496e666f"
                               "516903000000c3966c");

    QTest::newRow("new profile writes its defaults") << Profile() << HandRecord().bytes();

    {
        Profile p;
        p.setK1(0.25, -0.5);
        p.setFlags(flagsOf(false, true, false, 1));
        p.setSensorCoefficients({35.0, 9.0, 9.0});
        HandRecord r;
        r.flagByte = 0x08;
        r.modeOne = true;
        r.k1Rising = 0.25;
        r.k1Falling = -0.5;
        r.k0 = 35.0;
        r.k1 = -0.5;
        r.k2 = 0.0;
        QTest::newRow("sensor mode 1 sets flag 0x08 and the old mode-1 flag") << p << r.bytes();
    }
    {
        Profile p;
        p.setK1(0.25, -0.5);
        p.setFlags(flagsOf(false, true, true, 2));
        p.setSensorCoefficients({35.0, 9.0, 9.0});
        HandRecord r;
        r.flagByte = 0x14;
        r.modeOne = false;
        r.k1Rising = 0.25;
        r.k1Falling = -0.5;
        r.k0 = 35.0;
        r.k1 = 0.25;
        QTest::newRow("sensor mode 2 sets flag 0x10 and clears the old flag") << p << r.bytes();
    }
    {
        Profile p;
        p.setFlags(flagsOf(false, false, false, 0));
        QTest::newRow("ground blocking without monitoring is not written") << p << HandRecord().bytes();
    }
    {
        Profile p;
        p.setMotorbikeType(-1, false);
        p.setTemplateType(-7);
        p.setVoltage(-5);
        IgnitionMap map;
        map.setPoint(0, -1500, -3);
        p.setMap(map);
        HandRecord r;
        r.motorbikeType = -1;
        r.templateType = -7;
        r.isCustom = false;
        r.voltage = -5;
        r.rpm[0] = -1500;
        r.angle[0] = -3;
        QTest::newRow("negative numbers in two's complement") << p << r.bytes();
    }
}

void TestProfileFile::writeRecordBytes()
{
    QFETCH(Profile, profile);
    QFETCH(QByteArray, record);

    QByteArray out = QByteArrayLiteral("keep");
    writeRecord(profile, out);
    QVERIFY2(out.startsWith("keep"), "the record is appended, not written over the buffer");
    QCOMPARE(out.mid(4).toHex(), record.toHex());
}

void TestProfileFile::readRecordFields_data()
{
    QTest::addColumn<QByteArray>("record");
    QTest::addColumn<Profile>("expected");

    {
        HandRecord r;
        r.motorbikeType = 3;
        r.templateType = 5;
        r.isCustom = true;
        r.auxFlag = true;
        r.name = QStringLiteral("Straße");
        r.notes = QStringLiteral("N1");
        r.flagByte = 0x07;
        r.voltage = 180;
        r.edgeSelectable = false;
        r.k1Rising = 0.5;
        r.k1Falling = -0.25;
        r.rpm = kRpms;
        r.angle = kAngles;
        r.k0 = 32.0;
        r.k1 = -1.0 / 1024;
        r.k2 = -1.0 / 1048576;
        r.trailing = QStringList {QStringLiteral("Info"), QStringLiteral("Öl")};
        QTest::newRow("version 1 with every field set") << r.bytes() << fullProfile();
        r.stringTag = 'S';
        QTest::newRow("strings in the old form") << r.bytes() << fullProfile();
    }
    {
        HandRecord r;
        r.version = 0;
        r.motorbikeType = 4;
        r.templateType = 99; // not written
        r.name = QStringLiteral("alt");
        Profile expected;
        expected.setMotorbikeType(4, true);
        expected.setTemplateType(4);
        expected.setName(QStringLiteral("alt"));
        QTest::newRow("version 0 has no template type and takes the motorbike type") << r.bytes() << expected;
        r.version = -1;
        QTest::newRow("negative version has no template type either") << r.bytes() << expected;
    }
    {
        HandRecord r;
        r.version = 7;
        r.motorbikeType = 4;
        r.templateType = 2;
        Profile expected;
        expected.setMotorbikeType(4, true);
        expected.setTemplateType(2);
        QTest::newRow("higher version reads with the current layout") << r.bytes() << expected;
    }
    {
        HandRecord r;
        r.flagByte = 0x10;
        r.modeOne = true;
        r.k1Rising = 0.25;
        r.k1Falling = -0.5;
        r.k0 = 30.0;
        r.k1 = 7.0;
        r.k2 = 7.0;
        Profile expected;
        expected.setK1(0.25, -0.5);
        expected.setFlagsAndCoefficientsAsStored(flagsOf(false, true, false, 1), {30.0, -0.5, 0.0});
        QTest::newRow("old mode-1 flag wins over flag byte 0x10") << r.bytes() << expected;

        r.flagByte = 0x14;
        expected.setFlagsAndCoefficientsAsStored(flagsOf(false, true, true, 1), {30.0, 0.25, 0.0});
        QTest::newRow("old mode-1 flag with the rising edge takes K1 rising") << r.bytes() << expected;

        r.flagByte = 0x10;
        r.modeOne = false;
        expected.setFlagsAndCoefficientsAsStored(flagsOf(false, true, false, 2), {30.0, -0.5, 0.0});
        QTest::newRow("flag byte 0x10 alone gives mode 2 with K1 and K2 derived") << r.bytes() << expected;

        r.flagByte = 0x00;
        expected.setFlagsAndCoefficientsAsStored(flagsOf(false, true, false, 0), {30.0, 7.0, 7.0});
        QTest::newRow("mode 0 keeps the stored K1 and K2") << r.bytes() << expected;

        r.flagByte = 0x03;
        expected.setFlagsAndCoefficientsAsStored(flagsOf(true, false, false, 0), {30.0, 7.0, 7.0});
        QTest::newRow("flag byte 0x03 is monitoring with ground blocking") << r.bytes() << expected;
    }
    {
        HandRecord r;
        r.trailing = QStringList {QStringLiteral("eins"), QStringLiteral("zwei"), QStringLiteral("drei")};
        Profile expected;
        expected.setExtraText(0, QStringLiteral("eins"));
        expected.setExtraText(1, QStringLiteral("zwei"));
        QTest::newRow("three trailing strings keep the first two") << r.bytes() << expected;

        r.trailing = QStringList {QStringLiteral("eins")};
        expected.setExtraText(1, QString());
        QTest::newRow("one trailing string leaves the second text empty") << r.bytes() << expected;

        r.trailing = QStringList();
        expected.setExtraText(0, QString());
        QTest::newRow("no trailing strings leave both texts empty") << r.bytes() << expected;
    }
}

void TestProfileFile::readRecordFields()
{
    QFETCH(QByteArray, record);
    QFETCH(Profile, expected);

    const std::optional<Profile> profile = readRecord(record);
    QVERIFY(profile.has_value());
    verifySameProfile(*profile, expected);
    QVERIFY(!profile->isModified());
}

void TestProfileFile::readRecordFailures_data()
{
    QTest::addColumn<QByteArray>("record");

    const QByteArray good = HandRecord().bytes();
    // Offsets in the default record: version 0, type 5, template 10, custom 15, aux 16, name 17,
    // notes 30, flag byte 36, voltage 41, the two bools 46, K1 rising and falling 48, map 66,
    // coefficients 166, trailing count 193, the two empty texts 198 and 204; 210 bytes in all.
    constexpr int mapAt = 66;
    constexpr int coefficientsAt = 166;
    constexpr int trailingCountAt = 193;
    QCOMPARE(good.size(), 210);
    auto patched = [&good](int offset, char byte) {
        QByteArray bytes = good;
        bytes[offset] = byte;
        return bytes;
    };

    QTest::newRow("empty record") << QByteArray();
    QTest::newRow("version not an int") << patched(0, 'd');
    QTest::newRow("custom flag stored as an int tag") << patched(15, 'i');
    QTest::newRow("aux flag not a bool") << patched(16, 'X');
    QTest::newRow("name not a string") << patched(17, 'i');
    {
        HandRecord r;
        r.version = 0;
        QByteArray bytes = r.bytes();
        bytes[1] = 1; // claims version 1 but has no template type
        QTest::newRow("version 1 without the template type") << bytes;
    }
    {
        QByteArray bytes = good;
        const QByteArray name = tString(QStringLiteral("Unnamed"));
        const int at = bytes.indexOf(name);
        bytes.replace(at, name.size(), QByteArray::fromHex("5169ffffffff"));
        QTest::newRow("name with a negative length") << bytes;
    }
    QTest::newRow("record ends between two map values") << good.left(mapAt + 5 * 10);
    QTest::newRow("record ends inside a map value") << good.left(mapAt + 5 * 10 + 2);
    {
        QByteArray bytes = good;
        bytes[mapAt + 5 * 3] = 'd';
        QTest::newRow("map value with a double tag") << bytes;
    }
    QTest::newRow("record ends before the coefficients") << good.left(coefficientsAt);
    QTest::newRow("record ends inside the last coefficient") << good.left(coefficientsAt + 20);
    QTest::newRow("record ends before the trailing count") << good.left(trailingCountAt);
    QTest::newRow("record ends before the last text") << good.left(good.size() - 6);
    {
        QByteArray bytes = good;
        bytes.replace(trailingCountAt, 5, tInt(3));
        QTest::newRow("more trailing strings promised than present") << bytes;
    }
    {
        QByteArray bytes = good;
        bytes[good.size() - 6] = 'i';
        QTest::newRow("last text with an int tag") << bytes;
    }
}

void TestProfileFile::readRecordFailures()
{
    QFETCH(QByteArray, record);
    QVERIFY(!readRecord(record).has_value());
}

void TestProfileFile::containerBytesFromRecords()
{
    const QByteArray big(0x010203, 'x');
    const QList<QByteArray> records {QByteArrayLiteral("abc"), QByteArray(), big};
    const QByteArray expected = QByteArray::fromHex("636469000300"
                                                    "55030000616263"
                                                    "55000000"
                                                    "55030201")
        + big;
    QCOMPARE(containerBytes(records).left(32).toHex(), expected.left(32).toHex());
    QCOMPARE(containerBytes(records), expected);

    QBuffer buffer;
    QVERIFY(buffer.open(QIODevice::WriteOnly));
    QVERIFY(writeContainer(records, buffer));
    QCOMPARE(buffer.data(), expected);

    QCOMPARE(containerBytes({}).toHex(), QByteArray("636469000000"));
}

void TestProfileFile::readContainerHeader_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("accepted");
    QTest::addColumn<QByteArrayList>("records");

    QTest::newRow("cdi 00 00 00 is an empty list")
        << QByteArray::fromHex("636469000000") << true << QByteArrayList();
    QTest::newRow("fourth byte 0x07 is ignored")
        << QByteArray::fromHex("63646907010055030000616263") << true << QByteArrayList {"abc"};
    QTest::newRow("two records in file order")
        << QByteArray::fromHex("6364690002005502000061625501000063") << true << QByteArrayList {"ab", "c"};
    QTest::newRow("zero-length record")
        << QByteArray::fromHex("63646900010055000000") << true << QByteArrayList {QByteArray()};
    QTest::newRow("bytes after the last record are ignored")
        << QByteArray::fromHex("636469000100550100004155ffffff") << true << QByteArrayList {"A"};
    {
        QByteArray bytes = QByteArray::fromHex("63646900010055010100") + QByteArray(257, 'r');
        QTest::newRow("record length lowest byte first")
            << bytes << true << QByteArrayList {QByteArray(257, 'r')};
    }
    {
        const QByteArray record(0x010002, 's');
        QByteArray bytes = QByteArray::fromHex("63646900010055020001") + record;
        QTest::newRow("record length uses all three bytes") << bytes << true << QByteArrayList {record};
    }
    {
        QByteArray bytes = QByteArray::fromHex("636469000001");
        QByteArrayList records;
        for (int i = 0; i < 256; ++i) {
            bytes += QByteArray::fromHex("55000000");
            records.append(QByteArray());
        }
        QTest::newRow("record count lowest byte first") << bytes << true << records;
    }

    QTest::newRow("empty file") << QByteArray() << false << QByteArrayList();
    QTest::newRow("header cut short") << QByteArray::fromHex("6364690000") << false << QByteArrayList();
    QTest::newRow("magic in capitals") << QByteArray::fromHex("434449000000") << false << QByteArrayList();
    QTest::newRow("magic cdx") << QByteArray::fromHex("636478000000") << false << QByteArrayList();
    QTest::newRow("record marker not U")
        << QByteArray::fromHex("63646900010056030000616263") << false << QByteArrayList();
    QTest::newRow("record marker in lower case")
        << QByteArray::fromHex("63646900010075030000616263") << false << QByteArrayList();
    QTest::newRow("record header cut short")
        << QByteArray::fromHex("636469000100550300") << false << QByteArrayList();
    QTest::newRow("record shorter than its length")
        << QByteArray::fromHex("63646900010055040000616263") << false << QByteArrayList();
    QTest::newRow("huge record length with few bytes")
        << QByteArray::fromHex("63646900010055ffffff616263") << false << QByteArrayList();
    QTest::newRow("fewer records than counted")
        << QByteArray::fromHex("63646900020055030000616263") << false << QByteArrayList();
}

void TestProfileFile::readContainerHeader()
{
    QFETCH(QByteArray, bytes);
    QFETCH(bool, accepted);
    QFETCH(QByteArrayList, records);

    QBuffer buffer;
    buffer.setData(bytes);
    QVERIFY(buffer.open(QIODevice::ReadOnly));
    std::optional<RecordCursor> cursor = readContainer(buffer);
    QCOMPARE(cursor.has_value(), accepted);
    if (!accepted)
        return;
    QCOMPARE(cursor->count(), records.size());
    QByteArrayList read;
    while (cursor->hasNext())
        read.append(cursor->next());
    QCOMPARE(read, records);
}

void TestProfileFile::readProfileFileTakesFirstRecord_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("name");

    HandRecord first;
    first.name = QStringLiteral("erstes");
    first.motorbikeType = 1;
    HandRecord second;
    second.name = QStringLiteral("zweites");
    second.motorbikeType = 2;

    QTest::newRow("single record") << handContainer({first.bytes()}) << "erstes";
    QTest::newRow("two records: the first is the profile")
        << handContainer({first.bytes(), second.bytes()}) << "erstes";
    QTest::newRow("broken second record is ignored")
        << handContainer({first.bytes(), QByteArray("junk")}) << "erstes";
    QTest::newRow("bytes after the record are ignored") << handContainer({first.bytes()}) + "trailing"
                                                        << "erstes";
    QTest::newRow("broken first record fails")
        << handContainer({QByteArray("junk"), second.bytes()}) << QString();
    QTest::newRow("container without records fails") << handContainer({}) << QString();
    QTest::newRow("a bare record is not a file") << first.bytes() << QString();
}

void TestProfileFile::readProfileFileTakesFirstRecord()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, name);

    const std::optional<Profile> profile = readFromBytes(bytes);
    QCOMPARE(profile.has_value(), !name.isEmpty());
    if (profile) {
        QCOMPARE(profile->name(), name);
        QCOMPARE(profile->motorbikeType(), 1);
    }
}

void TestProfileFile::profileRoundTrip_data()
{
    QTest::addColumn<Profile>("written");
    QTest::addColumn<Profile>("expected");

    QTest::newRow("every field set") << fullProfile() << fullProfile();
    QTest::newRow("new profile") << Profile() << Profile();
    {
        Profile p = fullProfile();
        p.setMotorbikeType(7, false);
        p.setTemplateType(3);
        p.setAuxFlag(false);
        p.setName(QStringLiteral("Zündkurve für Bergstraße – Öl, Äther, Übermut"));
        p.setNotes(QStringLiteral("Zeile 1\nZeile 2\tmit Tab\r\nß"));
        p.setExtraText(0, QStringLiteral("Vorzündung 32° bei 6000 U/min"));
        p.setExtraText(1, QStringLiteral("ÄÖÜäöüß"));
        QTest::newRow("default profile with German texts") << p << p;
    }
    {
        Profile p = fullProfile();
        p.setName(QStringLiteral("点火 ⚡ 🏍"));
        p.setNotes(QStringLiteral("Ω ≤ 49° · ±"));
        p.setExtraText(0, QString());
        p.setExtraText(1, QStringLiteral("𝄞"));
        QTest::newRow("texts outside Latin-1, surrogate pairs") << p << p;
    }
    {
        Profile p;
        p.setMotorbikeType(-3, true);
        p.setTemplateType(std::numeric_limits<qint32>::min());
        p.setVoltage(0);
        p.setMap(mapOf({-1500, -1, 0, 1, 20000, 20001, std::numeric_limits<qint32>::max(), 3, 2, 1},
            {-1, -49, 0, 1, 49, 50, std::numeric_limits<qint32>::min(), 0, 0, 0}));
        QTest::newRow("negative and out-of-range numbers") << p << p;
    }
    {
        Profile p;
        p.setK1(-0.0004, -0.00025);
        p.setFlags(flagsOf(true, true, false, 1));
        p.setSensorCoefficients({30.0, 0.0, 0.0});
        QTest::newRow("sensor mode 1, falling edge") << p << p;
    }
    {
        Profile p;
        p.setK1(-0.0003, -0.00045);
        p.setFlags(flagsOf(false, true, true, 2));
        p.setSensorCoefficients({43.0, 0.0, 0.0});
        QTest::newRow("sensor mode 2, rising edge") << p << p;
    }
    {
        Profile p;
        p.setK1(-0.0003, -0.00045);
        p.setFlagsAndCoefficientsAsStored(flagsOf(false, true, true, 2), {43.0, 5.0, 7.0});
        Profile expected = p;
        expected.setFlagsAndCoefficientsAsStored(flagsOf(false, true, true, 2), {43.0, -0.0003, 0.0});
        QTest::newRow("mode 2 with stored K1 and K2 is derived after loading") << p << expected;
    }
    {
        Profile p;
        p.setSensorCoefficients(
            {-0.0, std::numeric_limits<double>::denorm_min(), std::numeric_limits<double>::infinity()});
        p.setK1(std::numeric_limits<double>::lowest(), -std::numeric_limits<double>::min());
        QTest::newRow("extreme doubles keep their bits") << p << p;
    }
}

void TestProfileFile::profileRoundTrip()
{
    QFETCH(Profile, written);
    QFETCH(Profile, expected);

    const std::optional<Profile> profile = readFromBytes(profileFileBytes(written));
    QVERIFY(profile.has_value());
    verifySameProfile(*profile, expected);
    QVERIFY(!profile->isModified());
}

void TestProfileFile::writeFileSafely_data()
{
    QTest::addColumn<QString>("situation");
    QTest::addColumn<int>("error");
    QTest::addColumn<bool>("replaced");

    QTest::newRow("new file in an existing folder") << "new" << int(FileWriteError::None) << true;
    QTest::newRow("existing file is overwritten") << "existing" << int(FileWriteError::None) << true;
    QTest::newRow("read-only file is refused and kept")
        << "read-only" << int(FileWriteError::CannotOverwrite) << false;
    QTest::newRow("target that is a folder is refused")
        << "folder" << int(FileWriteError::CannotOverwrite) << false;
    QTest::newRow("missing folder cannot be written")
        << "missing folder" << int(FileWriteError::CannotWrite) << false;
}

void TestProfileFile::writeFileSafely()
{
    QFETCH(QString, situation);
    QFETCH(int, error);
    QFETCH(bool, replaced);

    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    QString path = dir.filePath(QStringLiteral("bike.cdi"));
    const QByteArray before = QByteArrayLiteral("the profile that was there before");
    const QByteArray after = QByteArray::fromHex("6364690000000102ff");

    if (situation == QLatin1String("existing") || situation == QLatin1String("read-only"))
        QVERIFY(writeFile(path, before));
    if (situation == QLatin1String("read-only"))
        QVERIFY(QFile::setPermissions(path, QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther));
    if (situation == QLatin1String("folder"))
        QVERIFY(QDir(dir.path()).mkdir(QStringLiteral("bike.cdi")));
    if (situation == QLatin1String("missing folder"))
        path = dir.filePath(QStringLiteral("no such folder/bike.cdi"));
    const QStringList entriesBefore = QDir(dir.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot);

    QCOMPARE(int(::writeFileSafely(path, after)), error);

    if (replaced) {
        QCOMPARE(fileContents(path), after);
    } else if (situation == QLatin1String("read-only")) {
        QCOMPARE(fileContents(path), before);
        const QFile::Permissions writeBits = QFile::WriteOwner | QFile::WriteGroup | QFile::WriteOther;
        QCOMPARE(int(QFileInfo(path).permissions() & writeBits), 0);
    } else if (situation == QLatin1String("folder")) {
        QVERIFY(QFileInfo(path).isDir());
    } else {
        QVERIFY(!QFileInfo::exists(path));
    }
    // No temporary file is left behind, whatever happened.
    QStringList expectedEntries = entriesBefore;
    if (situation == QLatin1String("new"))
        expectedEntries = QStringList {QStringLiteral("bike.cdi")};
    QCOMPARE(QDir(dir.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), expectedEntries);
}

void TestProfileFile::saveProfileFileReadsBack()
{
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    const QString path = dir.filePath(QStringLiteral("bike.cdi"));

    QCOMPARE(int(saveProfileFile(fullProfile(), path)), int(FileWriteError::None));
    std::optional<Profile> profile = readProfileFile(path);
    QVERIFY(profile.has_value());
    verifySameProfile(*profile, fullProfile());

    Profile other;
    other.setName(QStringLiteral("zweiter Stand"));
    QCOMPARE(int(saveProfileFile(other, path)), int(FileWriteError::None));
    profile = readProfileFile(path);
    QVERIFY(profile.has_value());
    verifySameProfile(*profile, other);

    QVERIFY(QFile::setPermissions(path, QFile::ReadOwner));
    const QByteArray kept = fileContents(path);
    QCOMPARE(int(saveProfileFile(fullProfile(), path)), int(FileWriteError::CannotOverwrite));
    QCOMPARE(fileContents(path), kept);

    QVERIFY(!readProfileFile(dir.filePath(QStringLiteral("missing.cdi"))).has_value());
}

QTEST_APPLESS_MAIN(TestProfileFile)
#include "tst_profilefile.moc"
