#include "profile/taggedvalues.h"

#include <QtTest>

#include <cstring>
#include <functional>
#include <limits>

namespace {

quint64 bitsOf(double value)
{
    quint64 bits = 0;
    std::memcpy(&bits, &value, sizeof(bits));
    return bits;
}

double doubleFromBits(quint64 bits)
{
    double value = 0.0;
    std::memcpy(&value, &bits, sizeof(value));
    return value;
}

QByteArray written(const std::function<void(TagWriter &)> &write)
{
    QByteArray out;
    TagWriter writer(out);
    write(writer);
    return out;
}

// Reads one value of the named kind; the string form is what the tables compare.
bool readOne(TagReader &reader, const QString &kind)
{
    if (kind == QLatin1String("int")) {
        qint32 value = 0;
        return reader.readInt(value);
    }
    if (kind == QLatin1String("bool")) {
        bool value = false;
        return reader.readBool(value);
    }
    if (kind == QLatin1String("double")) {
        double value = 0.0;
        return reader.readDouble(value);
    }
    QString value;
    return reader.readString(value);
}

} // namespace

// The tagged values every file of the program is made of.
class TestTaggedValues : public QObject
{
    Q_OBJECT

private slots:
    void intBytes_data();
    void intBytes();
    void boolBytes_data();
    void boolBytes();
    void doubleBytes_data();
    void doubleBytes();
    void stringBytes_data();
    void stringBytes();
    void oldFormString_data();
    void oldFormString();
    void readFailures_data();
    void readFailures();
    void numbersPastTheEnd_data();
    void numbersPastTheEnd();
    void stringPastTheEnd_data();
    void stringPastTheEnd();
    void stringCutAtFirstZeroByte();
    void valuesFollowEachOther();
};

void TestTaggedValues::intBytes_data()
{
    QTest::addColumn<qint32>("value");
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("zero") << 0 << QByteArray::fromHex("6900000000");
    QTest::newRow("one, lowest byte first") << 1 << QByteArray::fromHex("6901000000");
    QTest::newRow("every byte distinct, little-endian") << 0x12345678 << QByteArray::fromHex("6978563412");
    QTest::newRow("minus one") << -1 << QByteArray::fromHex("69ffffffff");
    QTest::newRow("minus two") << -2 << QByteArray::fromHex("69feffffff");
    QTest::newRow("negative rpm -1500") << -1500 << QByteArray::fromHex("6924faffff");
    QTest::newRow("largest") << std::numeric_limits<qint32>::max() << QByteArray::fromHex("69ffffff7f");
    QTest::newRow("smallest") << std::numeric_limits<qint32>::min() << QByteArray::fromHex("6900000080");
}

void TestTaggedValues::intBytes()
{
    QFETCH(qint32, value);
    QFETCH(QByteArray, bytes);

    QCOMPARE(written([&](TagWriter &w) { w.writeInt(value); }).toHex(), bytes.toHex());

    TagReader reader(bytes);
    qint32 read = 0;
    QVERIFY(reader.readInt(read));
    QCOMPARE(read, value);
    QCOMPARE(reader.position(), qint64(5));
    QVERIFY(reader.atEnd());
}

void TestTaggedValues::boolBytes_data()
{
    QTest::addColumn<bool>("value");
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("true is B") << true << QByteArray("B");
    QTest::newRow("false is b") << false << QByteArray("b");
}

void TestTaggedValues::boolBytes()
{
    QFETCH(bool, value);
    QFETCH(QByteArray, bytes);

    QCOMPARE(written([&](TagWriter &w) { w.writeBool(value); }), bytes);

    TagReader reader(bytes);
    bool read = !value;
    QVERIFY(reader.readBool(read));
    QCOMPARE(read, value);
    QVERIFY(reader.atEnd());
}

void TestTaggedValues::doubleBytes_data()
{
    QTest::addColumn<quint64>("bits");
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("zero") << Q_UINT64_C(0x0000000000000000) << QByteArray::fromHex("640000000000000000");
    QTest::newRow("negative zero keeps its sign")
        << Q_UINT64_C(0x8000000000000000) << QByteArray::fromHex("640000000000000080");
    QTest::newRow("one") << Q_UINT64_C(0x3ff0000000000000) << QByteArray::fromHex("64000000000000f03f");
    QTest::newRow("minus 2.5") << Q_UINT64_C(0xc004000000000000) << QByteArray::fromHex("6400000000000004c0");
    QTest::newRow("0.1, every byte in order")
        << Q_UINT64_C(0x3fb999999999999a) << QByteArray::fromHex("649a9999999999b93f");
    QTest::newRow("smallest denormal")
        << Q_UINT64_C(0x0000000000000001) << QByteArray::fromHex("640100000000000000");
    QTest::newRow("largest denormal")
        << Q_UINT64_C(0x000fffffffffffff) << QByteArray::fromHex("64ffffffffffff0f00");
    QTest::newRow("infinity") << Q_UINT64_C(0x7ff0000000000000) << QByteArray::fromHex("64000000000000f07f");
}

void TestTaggedValues::doubleBytes()
{
    QFETCH(quint64, bits);
    QFETCH(QByteArray, bytes);
    const double value = doubleFromBits(bits);

    QCOMPARE(written([&](TagWriter &w) { w.writeDouble(value); }).toHex(), bytes.toHex());

    TagReader reader(bytes);
    double read = 42.0;
    QVERIFY(reader.readDouble(read));
    // Bits, not values: -0.0 equals 0.0 as a number.
    QCOMPARE(bitsOf(read), bits);
    QCOMPARE(reader.position(), qint64(9));
}

void TestTaggedValues::stringBytes_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("empty") << QString() << QByteArray::fromHex("516900000000");
    QTest::newRow("ascii") << QStringLiteral("Mofa") << QByteArray::fromHex("5169040000004d6f6661");
    QTest::newRow("umlauts counted in UTF-8 bytes, not characters")
        << QStringLiteral("Grüße") << QByteArray::fromHex("5169070000004772c3bcc39f65");
    QTest::newRow("capital umlauts") << QStringLiteral("ÄÖÜ")
                                     << QByteArray::fromHex("516906000000c384c396c39c");
    QTest::newRow("leading zero-width no-break space is text, not a byte-order mark")
        << QStringLiteral("\uFEFFA") << QByteArray::fromHex("516904000000efbbbf41");
    QTest::newRow("three-byte sequence")
        << QStringLiteral("20 €") << QByteArray::fromHex("516906000000323020e282ac");
    QTest::newRow("length above 255 uses the second length byte")
        << QString(300, QLatin1Char('a')) << QByteArray::fromHex("51692c010000") + QByteArray(300, 'a');
}

void TestTaggedValues::stringBytes()
{
    QFETCH(QString, value);
    QFETCH(QByteArray, bytes);

    QCOMPARE(written([&](TagWriter &w) { w.writeString(value); }).toHex(), bytes.toHex());

    TagReader reader(bytes);
    QString read = QStringLiteral("previous");
    QVERIFY(reader.readString(read));
    QCOMPARE(read, value);
    QCOMPARE(reader.position(), qint64(bytes.size()));
}

void TestTaggedValues::oldFormString_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("value");
    QTest::newRow("ascii") << QByteArray::fromHex("53690500000048616c6c6f") << QStringLiteral("Hallo");
    QTest::newRow("decoded as UTF-8")
        << QByteArray::fromHex("53690b0000005ac3bc6e64756e6720c3a4") << QStringLiteral("Zündung ä");
    QTest::newRow("empty") << QByteArray::fromHex("536900000000") << QString();
    QTest::newRow("leading zero-width no-break space kept")
        << QByteArray::fromHex("536904000000efbbbf41") << QStringLiteral("\uFEFFA");
}

void TestTaggedValues::oldFormString()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, value);

    TagReader reader(bytes);
    QString read;
    QVERIFY(reader.readString(read));
    QCOMPARE(read, value);
    QCOMPARE(reader.position(), qint64(bytes.size()));
}

void TestTaggedValues::readFailures_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("kind");
    QTest::addColumn<bool>("accepted");

    QTest::newRow("int: nothing left") << QByteArray() << "int" << false;
    QTest::newRow("int: double tag") << QByteArray::fromHex("640000000000000000") << "int" << false;
    QTest::newRow("int: upper-case I") << QByteArray::fromHex("4901000000") << "int" << false;
    QTest::newRow("int: bool tag") << QByteArray("B") << "int" << false;
    QTest::newRow("bool: nothing left") << QByteArray() << "bool" << false;
    QTest::newRow("bool: int tag") << QByteArray::fromHex("6901000000") << "bool" << false;
    QTest::newRow("bool: other letter") << QByteArray("T") << "bool" << false;
    QTest::newRow("bool: zero byte") << QByteArray::fromHex("00") << "bool" << false;
    QTest::newRow("double: nothing left") << QByteArray() << "double" << false;
    QTest::newRow("double: int tag") << QByteArray::fromHex("6900000000") << "double" << false;
    QTest::newRow("double: upper-case D") << QByteArray::fromHex("440000000000000000") << "double" << false;
    QTest::newRow("string: nothing left") << QByteArray() << "string" << false;
    QTest::newRow("string: int tag") << QByteArray::fromHex("6900000000") << "string" << false;
    QTest::newRow("string: lower-case q") << QByteArray::fromHex("716900000000") << "string" << false;
    QTest::newRow("string: length tag past the end") << QByteArray("Q") << "string" << false;
    QTest::newRow("string: length not tagged as int")
        << QByteArray::fromHex("516400000000000000") << "string" << false;
    QTest::newRow("string: negative length") << QByteArray::fromHex("5169ffffffff41") << "string" << false;
    QTest::newRow("string: most negative length") << QByteArray::fromHex("516900000080") << "string" << false;
    QTest::newRow("old string: negative length")
        << QByteArray::fromHex("5369feffffff4142") << "string" << false;
    QTest::newRow("old string: length tag past the end") << QByteArray("S") << "string" << false;

    QTest::newRow("int: tag alone reads") << QByteArray("i") << "int" << true;
    QTest::newRow("bool: B") << QByteArray("B") << "bool" << true;
    QTest::newRow("bool: b") << QByteArray("b") << "bool" << true;
    QTest::newRow("double: tag alone reads") << QByteArray("d") << "double" << true;
    QTest::newRow("string: length bytes cut short read") << QByteArray::fromHex("516900") << "string" << true;
}

void TestTaggedValues::readFailures()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, kind);
    QFETCH(bool, accepted);

    TagReader reader(bytes);
    QCOMPARE(readOne(reader, kind), accepted);
}

void TestTaggedValues::numbersPastTheEnd_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("isDouble");
    QTest::addColumn<quint64>("bits");

    QTest::newRow("int tag only reads 0") << QByteArray("i") << false << Q_UINT64_C(0);
    QTest::newRow("int with one byte") << QByteArray::fromHex("6907") << false << Q_UINT64_C(7);
    QTest::newRow("int with three bytes, missing high byte is 0")
        << QByteArray::fromHex("69ffffff") << false << Q_UINT64_C(0x00ffffff);
    QTest::newRow("double tag only reads +0") << QByteArray("d") << true << Q_UINT64_C(0);
    QTest::newRow("double missing its top byte")
        << QByteArray::fromHex("64000000000000f0") << true << Q_UINT64_C(0x00f0000000000000);
    QTest::newRow("double with two bytes") << QByteArray::fromHex("643412") << true << Q_UINT64_C(0x1234);
}

void TestTaggedValues::numbersPastTheEnd()
{
    QFETCH(QByteArray, bytes);
    QFETCH(bool, isDouble);
    QFETCH(quint64, bits);

    TagReader reader(bytes);
    if (isDouble) {
        double value = 1.0;
        QVERIFY(reader.readDouble(value));
        QCOMPARE(bitsOf(value), bits);
    } else {
        qint32 value = -1;
        QVERIFY(reader.readInt(value));
        QCOMPARE(quint64(quint32(value)), bits);
    }
    QVERIFY(reader.atEnd());
    // Whatever kind comes next, its tag lies past the end.
    qint32 next = 0;
    QVERIFY(!reader.readInt(next));
}

void TestTaggedValues::stringPastTheEnd_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("accepted");
    QTest::addColumn<QString>("text");

    QTest::newRow("current form keeps the bytes that are there")
        << QByteArray::fromHex("51690a000000616263") << true << QStringLiteral("abc");
    QTest::newRow("current form with a huge length keeps the bytes that are there")
        << QByteArray::fromHex("5169ffffff7f616263") << true << QStringLiteral("abc");
    QTest::newRow("current form with no bytes at all is empty")
        << QByteArray::fromHex("516905000000") << true << QString();
    QTest::newRow("old form pads the missing bytes with zeros")
        << QByteArray::fromHex("5369050000004142") << true << QStringLiteral("AB");
    QTest::newRow("old form 65536 bytes short still reads") << QByteArray::fromHex("536901000100"
                                                                                   "41")
                                                            << true << QStringLiteral("A");
    QTest::newRow("old form more than 65536 bytes short fails") << QByteArray::fromHex("536902000100"
                                                                                       "41")
                                                                << false << QString();
    QTest::newRow("old form with a huge length fails")
        << QByteArray::fromHex("5369ffffff7f41") << false << QString();
}

void TestTaggedValues::stringPastTheEnd()
{
    QFETCH(QByteArray, bytes);
    QFETCH(bool, accepted);
    QFETCH(QString, text);

    TagReader reader(bytes);
    QString value;
    QCOMPARE(reader.readString(value), accepted);
    if (!accepted)
        return;
    // The padding adds nothing but zero characters, if it shows at all.
    QVERIFY2(value.startsWith(text), qPrintable(value));
    for (int i = text.size(); i < value.size(); ++i)
        QCOMPARE(value.at(i), QChar(0));
    QVERIFY(reader.atEnd());
    bool next = false;
    QVERIFY(!reader.readBool(next));
}

void TestTaggedValues::stringCutAtFirstZeroByte()
{
    // "ab", a zero byte, "cd", then an int: the text stops at the zero, the cursor does not.
    const QByteArray bytes = QByteArray::fromHex("516905000000"
                                                 "6162006364"
                                                 "692a000000");
    TagReader reader(bytes);
    QString text;
    QVERIFY(reader.readString(text));
    QCOMPARE(text, QStringLiteral("ab"));
    qint32 next = 0;
    QVERIFY(reader.readInt(next));
    QCOMPARE(next, 42);
    QVERIFY(reader.atEnd());
}

void TestTaggedValues::valuesFollowEachOther()
{
    const QByteArray expected = QByteArray::fromHex("6907000000"
                                                    "42"
                                                    "516902000000c3a4"
                                                    "64000000000000e03f"
                                                    "62"
                                                    "69f6ffffff");
    const QByteArray bytes = written([](TagWriter &w) {
        w.writeInt(7);
        w.writeBool(true);
        w.writeString(QStringLiteral("ä"));
        w.writeDouble(0.5);
        w.writeBool(false);
        w.writeInt(-10);
    });
    QCOMPARE(bytes.toHex(), expected.toHex());

    TagReader reader(expected);
    qint32 first = 0;
    bool second = false;
    QString third;
    double fourth = 0.0;
    bool fifth = true;
    qint32 sixth = 0;
    QVERIFY(reader.readInt(first));
    QVERIFY(reader.readBool(second));
    QVERIFY(reader.readString(third));
    QVERIFY(reader.readDouble(fourth));
    QVERIFY(reader.readBool(fifth));
    QVERIFY(reader.readInt(sixth));
    QCOMPARE(first, 7);
    QCOMPARE(second, true);
    QCOMPARE(third, QStringLiteral("ä"));
    QCOMPARE(fourth, 0.5);
    QCOMPARE(fifth, false);
    QCOMPARE(sixth, -10);
    QVERIFY(reader.atEnd());
}

QTEST_APPLESS_MAIN(TestTaggedValues)
#include "tst_taggedvalues.moc"
