// Damaged files: every reader must fail cleanly, as damaged, or load; never crash, hang or try to
// allocate what a length promises. The fuzz corpora replay chosen inputs (and check that what
// loads saves to bytes that load the same); here each kind of file is cut at every length, and
// every length and count in it is made huge. A file that is missing or cannot be read is
// reported as such by tst_cli, in the words the user reads.
#include "profile/defaultlibrary.h"
#include "profile/hintcatalog.h"
#include "profile/profilefile.h"
#include "support/layoutencoder.h"

#include <QBuffer>
#include <QtTest>

namespace {

constexpr int kProfileFile = 0, kLibrary = 1, kHints = 2;
constexpr int kLoads = -1, kDamaged = int(FileError::Kind::Damaged);

// The kind of failure, or kLoads.
int load(int reader, QByteArray bytes)
{
    QBuffer in(&bytes);
    in.open(QIODevice::ReadOnly);
    const auto kindOf = [](const auto &read) { return read ? kLoads : int(read.error().kind); };
    if (reader == kProfileFile)
        return kindOf(readProfileFile(in));
    return reader == kLibrary ? kindOf(loadDefaultLibrary(in)) : kindOf(loadHintCatalog(in));
}

} // namespace

class TestDamagedInput : public QObject
{
    Q_OBJECT

private slots:
    void read_data();
    void read();
};

void TestDamagedInput::read_data()
{
    QTest::addColumn<int>("reader");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("kind");
    // Characters of two and three bytes, so that a cut also falls inside a character.
    HandRecord r;
    r.name = QStringLiteral("Zündkurve");
    r.trailing = QStringList {QString(), QStringLiteral("Größe ü – Ende")};
    const QStringList texts {"Hint", "<p>Text</p>", "Hinweis", r.trailing[1]};
    QTest::newRow("profile file") << kProfileFile << handContainer({r.bytes()}) << kLoads;
    QTest::newRow("library") << kLibrary << handContainer({libraryHeader(), r.bytes(), r.bytes()}) << kLoads;
    QTest::newRow("hints") << kHints << handContainer({hintsRecord(1, 1, 2, 2, texts + texts)}) << kLoads;
    QTest::newRow("library header as a profile")
        << kProfileFile << handContainer({libraryHeader()}) << kDamaged;
    QTest::newRow("library of another kind") << kLibrary << handContainer({libraryHeader("abc")}) << kDamaged;
    QTest::newRow("hints with a text missing")
        << kHints << handContainer({hintsRecord(1, 1, 1, 1, {"T"})}) << kDamaged;
}

// What loads is then damaged: every prefix fails, since the container frames every record with
// its length; a huge value after every int tag (string lengths and counts among them), in every
// record length and in the record count at offset 4 loads or fails as damaged.
void TestDamagedInput::read()
{
    QFETCH(int, reader);
    QFETCH(QByteArray, bytes);
    QFETCH(int, kind);
    QCOMPARE(load(reader, bytes), kind);
    for (int n = 0; kind == kLoads && n < bytes.size(); ++n)
        QVERIFY2(load(reader, bytes.left(n)) == kDamaged, qPrintable(QStringLiteral("cut to %1").arg(n)));
    for (const quint32 huge : {0x7FFFFFFFu, 0x80000000u, 0xFFFFFFFFu, 0x00010001u, 0x00FFFFFFu}) {
        for (int at = 4; kind == kLoads && at < bytes.size(); ++at) {
            const int width = at == 4 ? 2 : bytes[at] == 'i' ? 4 : bytes[at] == 'U' ? 3 : 0;
            const int from = at == 4 ? at : at + 1;
            if (width > 0 && from + width <= bytes.size())
                QVERIFY(QList<int>({kLoads, kDamaged})
                            .contains(load(
                                reader, QByteArray(bytes).replace(from, width, littleEndian(huge, width)))));
        }
    }
}

QTEST_APPLESS_MAIN(TestDamagedInput)
#include "tst_damagedinput.moc"
