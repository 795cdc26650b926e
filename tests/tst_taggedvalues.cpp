// The tagged values every file of the program is made of.
#include "profile/taggedvalues.h"
#include "tests/layoutencoder.h"

#include <QtTest>

#include <limits>

namespace {

double doubleFromBits(quint64 bits)
{
    double value = 0.0;
    std::memcpy(&value, &bits, sizeof(value));
    return value;
}

// Reads one value of the kind the expected value has; doubles are given as their bits.
bool readLike(TagReader &reader, const QVariant &expected, QVariant &read)
{
    bool ok = false;
    if (expected.userType() == QMetaType::Int) {
        qint32 value = 0;
        ok = reader.readInt(value);
        read = value;
    } else if (expected.userType() == QMetaType::Bool) {
        bool value = false;
        ok = reader.readBool(value);
        read = value;
    } else if (expected.userType() == QMetaType::ULongLong) {
        double value = 42.0;
        ok = reader.readDouble(value);
        read = bitsOf(value);
    } else {
        QString value = QStringLiteral("previous");
        ok = reader.readString(value);
        read = value;
    }
    return ok;
}

QByteArray hex(const char *text)
{
    return QByteArray::fromHex(text);
}

} // namespace

class TestTaggedValues : public QObject
{
    Q_OBJECT

private slots:
    void writtenAndReadBack_data();
    void writtenAndReadBack();
    void readOnly_data();
    void readOnly();
};

void TestTaggedValues::writtenAndReadBack_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("int, every byte distinct, lowest first") << QVariant(0x12345678) << hex("6978563412");
    QTest::newRow("int -1500 in two's complement") << QVariant(-1500) << hex("6924faffff");
    QTest::newRow("largest int") << QVariant(std::numeric_limits<qint32>::max()) << hex("69ffffff7f");
    QTest::newRow("smallest int") << QVariant(std::numeric_limits<qint32>::min()) << hex("6900000080");
    QTest::newRow("true is B") << QVariant(true) << QByteArray("B");
    QTest::newRow("false is b") << QVariant(false) << QByteArray("b");
    QTest::newRow("0.1, every byte in order")
        << QVariant(Q_UINT64_C(0x3fb999999999999a)) << hex("649a9999999999b93f");
    QTest::newRow("negative zero keeps its sign")
        << QVariant(Q_UINT64_C(0x8000000000000000)) << hex("640000000000000080");
    QTest::newRow("smallest denormal") << QVariant(Q_UINT64_C(1)) << hex("640100000000000000");
    QTest::newRow("infinity") << QVariant(Q_UINT64_C(0x7ff0000000000000)) << hex("64000000000000f07f");
    QTest::newRow("empty string") << QVariant(QString()) << hex("516900000000");
    QTest::newRow("umlauts counted in UTF-8 bytes")
        << QVariant(QStringLiteral("Grüße")) << hex("5169070000004772c3bcc39f65");
    QTest::newRow("leading zero-width no-break space is text, not a byte-order mark")
        << QVariant(QStringLiteral("\uFEFFA")) << hex("516904000000efbbbf41");
    QTest::newRow("length above 255 uses the second length byte")
        << QVariant(QString(300, QLatin1Char('a'))) << hex("51692c010000") + QByteArray(300, 'a');
}

void TestTaggedValues::writtenAndReadBack()
{
    QFETCH(QVariant, value);
    QFETCH(QByteArray, bytes);

    QByteArray out;
    TagWriter writer(out);
    if (value.userType() == QMetaType::Int)
        writer.writeInt(value.toInt());
    else if (value.userType() == QMetaType::Bool)
        writer.writeBool(value.toBool());
    else if (value.userType() == QMetaType::ULongLong)
        writer.writeDouble(doubleFromBits(value.toULongLong()));
    else
        writer.writeString(value.toString());
    QCOMPARE(out.toHex(), bytes.toHex());

    TagReader reader(bytes);
    QVariant read;
    QVERIFY(readLike(reader, value, read));
    QCOMPARE(read, value);
    QVERIFY(reader.atEnd());
}

// Older string forms, wrong tags and values that run past the end. Numbers past the end read
// their missing bytes as zero; a current-form string keeps what is there and stops at a zero
// byte; an old-form string is padded with zeros, but not by more than 65536 bytes.
void TestTaggedValues::readOnly_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("accepted");
    QTest::addColumn<QVariant>("value");
    const QVariant anInt(0);
    const QString anyString;

    QTest::newRow("old form decoded as UTF-8")
        << hex("53690b0000005ac3bc6e64756e6720c3a4") << true << QVariant(QStringLiteral("Zündung ä"));
    QTest::newRow("old form keeps a leading zero-width no-break space")
        << hex("536904000000efbbbf41") << true << QVariant(QStringLiteral("\uFEFFA"));
    QTest::newRow("int: nothing left") << QByteArray() << false << anInt;
    QTest::newRow("int: upper-case I") << hex("4901000000") << false << anInt;
    QTest::newRow("bool: another letter") << QByteArray("T") << false << QVariant(false);
    QTest::newRow("double: int tag") << hex("6900000000") << false << QVariant(quint64(0));
    QTest::newRow("string: lower-case q") << hex("716900000000") << false << QVariant(anyString);
    QTest::newRow("string: length tag past the end") << QByteArray("Q") << false << QVariant(anyString);
    QTest::newRow("string: length tagged as a double")
        << hex("516400000000000000") << false << QVariant(anyString);
    QTest::newRow("string: negative length") << hex("5169ffffffff41") << false << QVariant(anyString);
    QTest::newRow("old string: negative length") << hex("5369feffffff4142") << false << QVariant(anyString);
    QTest::newRow("int tag alone reads 0") << QByteArray("i") << true << anInt;
    QTest::newRow("int missing its high byte") << hex("69ffffff") << true << QVariant(0x00ffffff);
    QTest::newRow("double missing its top byte")
        << hex("64000000000000f0") << true << QVariant(Q_UINT64_C(0x00f0000000000000));
    QTest::newRow("string whose length bytes are cut short is empty")
        << hex("516900") << true << QVariant(anyString);
    QTest::newRow("string keeps the bytes that are there")
        << hex("5169ffffff7f616263") << true << QVariant(QStringLiteral("abc"));
    QTest::newRow("string stops at a zero byte, the cursor does not")
        << hex("5169050000006162006364") << true << QVariant(QStringLiteral("ab"));
    QTest::newRow("old form padded with zeros")
        << hex("5369050000004142") << true << QVariant(QStringLiteral("AB") + QString(3, QChar(0)));
    QTest::newRow("old form 65536 bytes short still reads")
        << hex("53690100010041") << true << QVariant(QStringLiteral("A") + QString(65536, QChar(0)));
    QTest::newRow("old form 65537 bytes short fails")
        << hex("53690200010041") << false << QVariant(anyString);
}

void TestTaggedValues::readOnly()
{
    QFETCH(QByteArray, bytes);
    QFETCH(bool, accepted);
    QFETCH(QVariant, value);

    TagReader reader(bytes);
    QVariant read;
    QCOMPARE(readLike(reader, value, read), accepted);
    if (accepted) {
        QCOMPARE(read, value);
        QVERIFY(reader.atEnd());
    }
}

QTEST_APPLESS_MAIN(TestTaggedValues)
#include "tst_taggedvalues.moc"
