// The program's images are compiled in under :/Images/. A missing, misnamed or mis-sized one
// does not fail the build; it shows up as a blank icon, a jumping layout or a blurry HiDPI icon,
// so each is checked here.
#include <QDir>
#include <QImageReader>
#include <QSet>
#include <QtTest>

namespace {

struct UsedImage
{
    QString name;
    QSize size;
    bool hasDoubleSize; // an @2x file that Qt picks on HiDPI screens
};

const QVector<UsedImage> &usedImages()
{
    static const QVector<UsedImage> images = [] {
        QVector<UsedImage> list {{"wizflash.png", {220, 460}, true}, {"work.gif", {48, 48}, false}};
        // Menu actions and small tool buttons; push buttons and the graph's badge; dialogs.
        for (const char *name : {"new", "load", "save", "unknown", "exit", "info", "usb-read", "usb-write",
                 "print", "sort", "hint", "lang0", "lang1", "www-program", "www-tech", "www-bike",
                 "www-contact", "www-faw", "www-facts"})
            list.append({QLatin1String(name) + QLatin1String(".png"), {16, 16}, true});
        for (const char *name : {"back", "next", "continue", "warning"})
            list.append({QLatin1String(name) + QLatin1String(".png"), {24, 24}, true});
        for (const char *name : {"question", "ok", "ok2", "fail"})
            list.append({QLatin1String(name) + QLatin1String(".png"), {48, 48}, true});
        // The application icon, one file per size the desktop asks for.
        for (int size : {16, 24, 32, 48, 64, 128, 256})
            list.append({QStringLiteral("app-%1.png").arg(size), {size, size}, false});
        return list;
    }();
    return images;
}

QString doubleSizeName(const QString &name)
{
    return QString(name).insert(name.lastIndexOf(QLatin1Char('.')), QLatin1String("@2x"));
}

QImage readImage(const QString &name)
{
    QImageReader reader(QStringLiteral(":/Images/") + name);
    const QImage image = reader.read();
    if (image.isNull())
        qWarning() << name << reader.errorString();
    return image;
}

} // namespace

class TestImages : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { Q_INIT_RESOURCE(images); }
    void decodesAtItsSize_data();
    void decodesAtItsSize();
    void everyCompiledInImageIsChecked();
};

void TestImages::decodesAtItsSize_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<bool>("hasDoubleSize");
    for (const UsedImage &image : usedImages())
        QTest::newRow(qPrintable(image.name)) << image.name << image.size << image.hasDoubleSize;
}

void TestImages::decodesAtItsSize()
{
    QFETCH(QString, name);
    QFETCH(QSize, size);
    QFETCH(bool, hasDoubleSize);

    const QImage image = readImage(name);
    QCOMPARE(image.size(), size);
    // Everything but the banner sits on widgets of any colour.
    if (name != QLatin1String("wizflash.png")) {
        QVERIFY2(image.hasAlphaChannel(), "drawn on an opaque background");
        const QImage argb = image.convertToFormat(QImage::Format_ARGB32);
        for (const QPoint corner : {QPoint(0, 0), QPoint(argb.width() - 1, 0), QPoint(0, argb.height() - 1),
                 QPoint(argb.width() - 1, argb.height() - 1)})
            QVERIFY2(qAlpha(argb.pixel(corner)) < 128, "a corner is not transparent");
    }
    QCOMPARE(QFile::exists(QStringLiteral(":/Images/") + doubleSizeName(name)), hasDoubleSize);
    if (hasDoubleSize) {
        const QImage doubled = readImage(doubleSizeName(name));
        QCOMPARE(doubled.size(), size * 2);
        QCOMPARE(doubled.hasAlphaChannel(), image.hasAlphaChannel());
    }
}

void TestImages::everyCompiledInImageIsChecked()
{
    QSet<QString> expected;
    for (const UsedImage &image : usedImages()) {
        expected.insert(image.name);
        if (image.hasDoubleSize)
            expected.insert(doubleSizeName(image.name));
    }
    const QStringList present = QDir(QStringLiteral(":/Images")).entryList(QDir::Files);
    QStringList unchecked = (QSet<QString>(present.cbegin(), present.cend()) - expected).values();
    unchecked.sort();
    QVERIFY2(unchecked.isEmpty(),
        qPrintable(QStringLiteral("not checked: ") + unchecked.join(QStringLiteral(", "))));
}

QTEST_MAIN(TestImages)
#include "tst_images.moc"
