// Damaged files: every reader must fail cleanly or load, never crash, hang or try to allocate what
// a length promises. The fuzz corpora replay chosen inputs (and check that what loads saves to
// bytes that load the same); here each kind of file is cut at every length, and every length and
// count in it is made huge.
#include "profile/container.h"
#include "profile/defaultlibrary.h"
#include "profile/hintcatalog.h"
#include "profile/profilefile.h"
#include "support/layoutencoder.h"

#include <QBuffer>
#include <QtTest>

namespace {

constexpr int kProfileFile = 0, kLibrary = 1, kHints = 2;

// Characters of two to three bytes, so that a cut also falls inside a character.
const QString kLastText = QStringLiteral("Größe ü – Ende");

Profile sampleProfile(int type)
{
    Profile p;
    p.setMotorbikeType(type, true);
    p.setName(QStringLiteral("Zündkurve %1").arg(type));
    p.setExtraText(1, kLastText);
    return p;
}

bool loads(int kind, QByteArray bytes)
{
    QBuffer in(&bytes);
    in.open(QIODevice::ReadOnly);
    if (kind == kProfileFile)
        return readProfileFile(in).has_value();
    return kind == kLibrary ? loadDefaultLibrary(in) != nullptr : loadHintCatalog(in) != nullptr;
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
    QTest::addColumn<QByteArray>("valid");
    DefaultLibrary library;
    HintCatalog catalog;
    for (int type = 0; type < 3; ++type) {
        library.append(sampleProfile(type));
        catalog.append({{HintText {QStringLiteral("Hint %1").arg(type), QStringLiteral("<p>Text</p>")},
            HintText {QStringLiteral("Hinweis %1").arg(type), kLastText}}});
    }
    QTest::newRow("profile file") << kProfileFile << profileFileBytes(sampleProfile(3));
    QTest::newRow("default library") << kLibrary << defaultLibraryBytes(library);
    QTest::newRow("hints") << kHints << hintCatalogBytes(catalog);
}

void TestDamagedInput::damage()
{
    QFETCH(int, kind);
    QFETCH(QByteArray, valid);
    QVERIFY(loads(kind, valid));

    // Every prefix fails, since the container frames every record with its length.
    for (int n = 0; n < valid.size(); ++n)
        QVERIFY2(!loads(kind, valid.left(n)), qPrintable(QStringLiteral("cut to %1").arg(n)));

    // A huge value after every int tag (string lengths and counts among them), in every record
    // length and in the record count, which sits at offset 4: the readers must merely return.
    for (const quint32 huge : {0x7FFFFFFFu, 0x80000000u, 0xFFFFFFFFu, 0x00010001u, 0x00FFFFFFu}) {
        for (int at = 4; at < valid.size(); ++at) {
            const int width = at == 4 ? 2 : valid[at] == 'i' ? 4 : valid[at] == kRecordMarker ? 3 : 0;
            const int from = at == 4 ? at : at + 1;
            if (width == 0 || from + width > valid.size())
                continue;
            loads(kind, QByteArray(valid).replace(from, width, littleEndian(huge, width)));
        }
    }
}

QTEST_APPLESS_MAIN(TestDamagedInput)
#include "tst_damagedinput.moc"
