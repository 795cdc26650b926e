// The program's images are compiled in under :/Images/. A missing, misnamed or mis-sized one
// does not fail the build; it shows up as a blank icon, a jumping layout or a blurry HiDPI icon,
// so each is checked here.
#include <QDir>
#include <QImageReader>
#include <QSet>
#include <QtTest>

class TestImages : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { Q_INIT_RESOURCE(images); }
    void images();
};

// Every image decodes at the size its place needs, with a transparent background (all but the
// banner), and, where HiDPI screens pick one, with an @2x twin of twice the size; no image is
// compiled in that is not checked here.
void TestImages::images()
{
    QHash<QString, int> sizes {{"wizflash.png", 0}, {"work.gif", 48}};
    for (const char *name :
        {"new", "load", "save", "unknown", "exit", "info", "usb-read", "usb-write", "print", "sort", "hint",
            "lang0", "lang1", "www-program", "www-tech", "www-bike", "www-contact", "www-faw", "www-facts"})
        sizes.insert(QLatin1String(name) + QLatin1String(".png"), 16); // menus and small tool buttons
    for (const char *name : {"back", "next", "continue", "warning"})
        sizes.insert(QLatin1String(name) + QLatin1String(".png"), 24); // push buttons, the graph's badge
    for (const char *name : {"question", "ok", "ok2", "fail"})
        sizes.insert(QLatin1String(name) + QLatin1String(".png"), 48); // dialogs
    QSet<QString> single {"work.gif"}; // the application icon comes in one file per size instead
    for (int size : {16, 24, 32, 48, 64, 128, 256}) {
        sizes.insert(QStringLiteral("app-%1.png").arg(size), size);
        single.insert(QStringLiteral("app-%1.png").arg(size));
    }

    QStringList present = QDir(QStringLiteral(":/Images")).entryList(QDir::Files);
    for (auto it = sizes.cbegin(); it != sizes.cend(); ++it) {
        const QString name = it.key();
        const QString doubled = QString(name).replace(QLatin1Char('.'), QLatin1String("@2x."));
        QImageReader reader(QStringLiteral(":/Images/") + name);
        const QImage image = reader.read();
        const QSize size = it.value() ? QSize(it.value(), it.value()) : QSize(220, 460);
        QVERIFY2(image.size() == size, qPrintable(name + QLatin1Char(' ') + reader.errorString()));
        QVERIFY2(present.removeOne(name), qPrintable(name));
        const QRect r = image.rect();
        for (const QPoint corner : {r.topLeft(), r.topRight(), r.bottomLeft(), r.bottomRight()})
            QVERIFY2(!it.value() || (image.hasAlphaChannel() && image.pixelColor(corner).alpha() < 128),
                qPrintable(name + QLatin1String(": a corner is not transparent")));
        QCOMPARE(present.removeOne(doubled), !single.contains(name));
        const QImage twin(QStringLiteral(":/Images/") + doubled);
        QVERIFY2(single.contains(name)
                || (twin.size() == size * 2 && twin.hasAlphaChannel() == image.hasAlphaChannel()),
            qPrintable(doubled));
    }
    QVERIFY2(
        present.isEmpty(), qPrintable(QStringLiteral("not checked: ") + present.join(QStringLiteral(", "))));
}

QTEST_MAIN(TestImages)
#include "tst_images.moc"
