// The program's images are compiled in under :/Images/. A missing, misnamed or
// mis-sized one does not fail the build; it shows up as a blank icon, a jumping
// layout or a blurry HiDPI icon, so each is checked here.
#include <QColor>
#include <QDir>
#include <QImage>
#include <QImageReader>
#include <QMovie>
#include <QSet>
#include <QSize>
#include <QString>
#include <QStringList>
#include <QtTest>

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

struct UsedImage
{
    const char *name;
    QSize size;
    bool hasDoubleSize; // an @2x file that Qt picks on HiDPI screens
};

const std::vector<UsedImage> &usedImages()
{
    static const std::vector<UsedImage> images = {
        // Banner of the main window's image column.
        {"wizflash.png", {220, 460}, true},
        // Menu actions and small tool buttons.
        {"new.png", {16, 16}, true},
        {"load.png", {16, 16}, true},
        {"save.png", {16, 16}, true},
        {"unknown.png", {16, 16}, true},
        {"exit.png", {16, 16}, true},
        {"info.png", {16, 16}, true},
        {"usb-read.png", {16, 16}, true},
        {"usb-write.png", {16, 16}, true},
        {"print.png", {16, 16}, true},
        {"sort.png", {16, 16}, true},
        {"hint.png", {16, 16}, true},
        {"lang0.png", {16, 16}, true},
        {"lang1.png", {16, 16}, true},
        {"www-program.png", {16, 16}, true},
        {"www-tech.png", {16, 16}, true},
        {"www-bike.png", {16, 16}, true},
        {"www-contact.png", {16, 16}, true},
        {"www-faw.png", {16, 16}, true},
        {"www-facts.png", {16, 16}, true},
        // Push buttons and the graph's badge.
        {"back.png", {24, 24}, true},
        {"next.png", {24, 24}, true},
        {"continue.png", {24, 24}, true},
        {"warning.png", {24, 24}, true},
        // Dialog and progress images.
        {"question.png", {48, 48}, true},
        {"ok.png", {48, 48}, true},
        {"ok2.png", {48, 48}, true},
        {"fail.png", {48, 48}, true},
        {"work.gif", {48, 48}, false},
        // Application icon, one file per size the desktop asks for.
        {"app-16.png", {16, 16}, false},
        {"app-24.png", {24, 24}, false},
        {"app-32.png", {32, 32}, false},
        {"app-48.png", {48, 48}, false},
        {"app-64.png", {64, 64}, false},
        {"app-128.png", {128, 128}, false},
        {"app-256.png", {256, 256}, false},
    };
    return images;
}

QString resourcePath(const QString &name)
{
    return QStringLiteral(":/Images/") + name;
}

QString doubleSizeName(const QString &name)
{
    const int dot = name.lastIndexOf(QLatin1Char('.'));
    return name.left(dot) + QStringLiteral("@2x") + name.mid(dot);
}

QImage readImage(const QString &name, QString *error)
{
    QImageReader reader(resourcePath(name));
    const QImage image = reader.read();
    if (image.isNull())
        *error = name + QStringLiteral(": ") + reader.errorString();
    return image;
}

double relativeLuminance(QRgb rgb)
{
    const auto channel = [](int value) {
        const double c = value / 255.0;
        return c <= 0.03928 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * channel(qRed(rgb)) + 0.7152 * channel(qGreen(rgb)) + 0.0722 * channel(qBlue(rgb));
}

double contrastRatio(QRgb a, QRgb b)
{
    const double la = relativeLuminance(a);
    const double lb = relativeLuminance(b);
    return (std::max(la, lb) + 0.05) / (std::min(la, lb) + 0.05);
}

} // namespace

class TestImages : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void decodesAtItsSize_data();
    void decodesAtItsSize();
    void everyCompiledInImageIsChecked();
    void busyAnimationLoopsThroughDistinctFrames();
    void successAnimationAlternatesTwoDifferentImages();
    void bannerKeepsTheNameAreaReadable();
};

void TestImages::initTestCase()
{
    Q_INIT_RESOURCE(images);
}

void TestImages::decodesAtItsSize_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<bool>("hasDoubleSize");
    QTest::addColumn<bool>("transparentCorners");
    for (const UsedImage &image : usedImages()) {
        // Everything but the banner sits on widgets of any colour.
        const bool transparent = qstrcmp(image.name, "wizflash.png") != 0;
        QTest::newRow(image.name) << QString::fromLatin1(image.name) << image.size << image.hasDoubleSize
                                  << transparent;
    }
}

void TestImages::decodesAtItsSize()
{
    QFETCH(QString, name);
    QFETCH(QSize, size);
    QFETCH(bool, hasDoubleSize);
    QFETCH(bool, transparentCorners);

    QString error;
    const QImage image = readImage(name, &error);
    QVERIFY2(!image.isNull(), qPrintable(error));
    QCOMPARE(image.size(), size);

    if (transparentCorners) {
        QVERIFY2(image.hasAlphaChannel(), "drawn on an opaque background");
        const QImage argb = image.convertToFormat(QImage::Format_ARGB32);
        const int right = argb.width() - 1;
        const int bottom = argb.height() - 1;
        for (const QPoint corner : {QPoint(0, 0), QPoint(right, 0), QPoint(0, bottom), QPoint(right, bottom)})
            QVERIFY2(qAlpha(argb.pixel(corner)) < 128, "a corner is not transparent");
    }

    const QString doubleName = doubleSizeName(name);
    QCOMPARE(QFile::exists(resourcePath(doubleName)), hasDoubleSize);
    if (hasDoubleSize) {
        const QImage doubled = readImage(doubleName, &error);
        QVERIFY2(!doubled.isNull(), qPrintable(error));
        QCOMPARE(doubled.size(), size * 2);
        QCOMPARE(doubled.hasAlphaChannel(), image.hasAlphaChannel());
    }
}

void TestImages::everyCompiledInImageIsChecked()
{
    QSet<QString> expected;
    for (const UsedImage &image : usedImages()) {
        const QString name = QString::fromLatin1(image.name);
        expected.insert(name);
        if (image.hasDoubleSize)
            expected.insert(doubleSizeName(name));
    }
    const QStringList present = QDir(QStringLiteral(":/Images")).entryList(QDir::Files);
    const QSet<QString> found(present.cbegin(), present.cend());

    QStringList unchecked = (found - expected).values();
    unchecked.sort();
    QVERIFY2(unchecked.isEmpty(),
        qPrintable(QStringLiteral("not checked: ") + unchecked.join(QStringLiteral(", "))));
}

void TestImages::busyAnimationLoopsThroughDistinctFrames()
{
    QMovie movie(resourcePath(QStringLiteral("work.gif")));
    QVERIFY(movie.isValid());
    QVERIFY(movie.frameCount() > 1);

    QImageReader reader(resourcePath(QStringLiteral("work.gif")));
    QVERIFY(reader.supportsAnimation());
    QCOMPARE(reader.loopCount(), -1); // loops for as long as the page shows it

    QImage previous;
    int frames = 0;
    while (reader.canRead()) {
        const QImage frame = reader.read();
        QVERIFY2(!frame.isNull(), qPrintable(reader.errorString()));
        QCOMPARE(frame.size(), QSize(48, 48));
        QVERIFY2(qAlpha(frame.pixel(0, 0)) == 0, "frame background is not transparent");
        const int delay = reader.nextImageDelay();
        QVERIFY2(delay >= 30 && delay <= 200, qPrintable(QStringLiteral("frame delay %1 ms").arg(delay)));
        if (!previous.isNull())
            QVERIFY2(frame != previous, "two frames in a row are the same");
        previous = frame;
        ++frames;
    }
    QCOMPARE(frames, movie.frameCount());
}

void TestImages::successAnimationAlternatesTwoDifferentImages()
{
    QString error;
    const QImage first = readImage(QStringLiteral("ok.png"), &error);
    const QImage second = readImage(QStringLiteral("ok2.png"), &error);
    QVERIFY2(!first.isNull() && !second.isNull(), qPrintable(error));
    QCOMPARE(first.size(), second.size()); // the label must not jump between frames
    QVERIFY(first.convertToFormat(QImage::Format_ARGB32) != second.convertToFormat(QImage::Format_ARGB32));
}

// The program paints its version, name and organisation onto the banner's top
// left in RGB(115, 115, 140) and a blue gradient; that area must stay light and
// even for the text to read.
void TestImages::bannerKeepsTheNameAreaReadable()
{
    QString error;
    const QImage banner
        = readImage(QStringLiteral("wizflash.png"), &error).convertToFormat(QImage::Format_RGB32);
    QVERIFY2(!banner.isNull(), qPrintable(error));

    const QRect textArea = QRect(15, 15, 216, 76).intersected(banner.rect());
    QVERIFY(textArea.width() >= 200);
    const QRgb textColour = qRgb(115, 115, 140);
    double lowestContrast = 100.0;
    int lightest = 0;
    int darkest = 255;
    for (int y = textArea.top(); y <= textArea.bottom(); ++y) {
        for (int x = textArea.left(); x <= textArea.right(); ++x) {
            const QRgb pixel = banner.pixel(x, y);
            lowestContrast = std::min(lowestContrast, contrastRatio(pixel, textColour));
            const int lightness = QColor(pixel).lightness();
            lightest = std::max(lightest, lightness);
            darkest = std::min(darkest, lightness);
        }
    }
    QVERIFY2(lowestContrast >= 4.0, qPrintable(QStringLiteral("contrast %1").arg(lowestContrast)));
    QVERIFY2(
        lightest - darkest <= 12, qPrintable(QStringLiteral("lightness spread %1").arg(lightest - darkest)));
}

QTEST_MAIN(TestImages)
#include "tst_images.moc"
