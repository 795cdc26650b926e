// What the editor page and its hint dialog show of a profile, in both languages and on the
// offscreen platform's small screen (800 x 600).
#include "editor/chintlabel.h"
#include "editor/editorform.h"
#include "editor/hintdialog.h"
#include "profile/hintcatalog.h"
#include "profile/mapvalidation.h"
#include "render/bracemarkup.h"
#include "shell/clanguageswitcher.h"
#include "support/layoutencoder.h"
#include "support/widgettestmain.h"

#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QSet>
#include <QTableView>
#include <QToolButton>

#include <cmath>

namespace {

// The editor page on its own, shown and active, with the German translation at hand and five
// long hints.
struct EditorPage
{
    explicit EditorPage(const Profile &profile)
        : hints(&catalog, switcher)
        , editor(nullptr, switcher, hints)
    {
        const QString longText = QStringLiteral("<p>Die Ladespannung des Zündkondensators.</p>").repeated(40);
        for (int i = 0; i < 5; ++i)
            catalog.append({HintText {"Voltage", longText}, HintText {"Zündspannung", longText}});
        switcher.addLanguage(QStringLiteral("de")); // from the build folder
        switcher.registerListener(&editor);
        editor.setProfile(profile);
        editor.setActive(true);
        editor.show();
        QApplication::setActiveWindow(&editor);
    }

    HintCatalog catalog;
    CLanguageSwitcher switcher;
    HintDialog hints;
    EditorForm editor;
};

// The contrast ratio of two colours by their relative luminance, from 1 to 21.
double contrast(const QColor &a, const QColor &b)
{
    const auto luminance = [](const QColor &c) {
        const auto channel
            = [](double v) { return v <= 0.03928 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4); };
        return 0.2126 * channel(c.redF()) + 0.7152 * channel(c.greenF()) + 0.0722 * channel(c.blueF());
    };
    const auto [dark, light] = std::minmax({luminance(a), luminance(b)}); // by value
    return (light + 0.05) / (dark + 0.05);
}

} // namespace

class TestProfileViews : public QObject
{
    Q_OBJECT

private slots:
    void sortButtonFollowsTheMap();
    void editorWithoutMouseInEitherLanguage();
    void textsKeepTheirContrast_data();
    void textsKeepTheirContrast();
};

// Shown exactly while the map does not rise; a click sorts the map, which hides it unless two
// speeds are equal.
void TestProfileViews::sortButtonFollowsTheMap()
{
    EditorPage page {Profile()};
    auto *sort = page.editor.findChild<QToolButton *>(QStringLiteral("toolButtonSort"));
    for (const bool equalSpeeds : {false, true}) {
        Profile profile;
        profile.setMap(mapOf(
            {2, 1, 3, equalSpeeds ? 3 : 4, 5, 6, 7, 8, 9, 10}, {10, 12, 14, 16, 18, 20, 22, 24, 26, 28}));
        page.editor.setProfile(profile);
        QVERIFY(sort->isVisible());
        QTest::mouseClick(sort, Qt::LeftButton);
        QCOMPARE(page.editor.profile().map(), sortAscending(profile.map()));
        QCOMPARE(sort->isVisible(), equalSpeeds);
    }
}

// Tab leaves the map table in both directions, and each setting's input is followed by its hint
// button. In either language every hint button tells a screen reader which setting it explains,
// the speed heading and the information box follow the language, which may have no information,
// and a long hint stays on a small screen, also when shown again after closing.
void TestProfileViews::editorWithoutMouseInEitherLanguage()
{
    Profile profile;
    profile.setExtraText(0, QStringLiteral("For road use."));
    EditorPage page(profile);
    QVERIFY(QTest::qWaitForWindowActive(&page.editor));
    auto *table = page.editor.findChild<QTableView *>(QStringLiteral("tableView"));
    for (const Qt::KeyboardModifiers modifiers : {Qt::NoModifier, Qt::ShiftModifier}) {
        table->setFocus();
        table->setCurrentIndex(table->model()->index(modifiers ? 0 : 9, 1));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab, modifiers);
        QVERIFY2(QApplication::focusWidget() != table, modifiers ? "Shift+Tab" : "Tab");
    }
    for (const char *input : {"spinBoxIgnitionVoltage", "doubleSpinBoxHall"}) {
        page.editor.findChild<QWidget *>(QLatin1String(input))->setFocus();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QVERIFY2(QApplication::focusWidget()->objectName().startsWith(QLatin1String("hintButton")), input);
    }
    const auto *information
        = page.editor.findChild<QPlainTextEdit *>(QStringLiteral("plainTextEditInformation"));
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    for (int language : {1, 0, 1}) {
        page.switcher.setLanguage(language);
        QSet<QString> names;
        for (const QToolButton *button :
            page.editor.findChildren<QToolButton *>(QRegularExpression("^hintButton")))
            names.insert(button->accessibleName());
        QVERIFY2(names.size() == 5 && !names.contains(QString()),
            qPrintable(QStringList(names.values()).join("|")));
        QCOMPARE(table->model()->headerData(0, Qt::Horizontal).toString(), language ? "U/min" : "RPM");
        QCOMPARE(information->toPlainText(), language ? "Keine Informationen vorhanden" : "For road use.");
        page.hints.showHint(0);
        QVERIFY(QTest::qWaitForWindowExposed(&page.hints));
        QVERIFY2(screen.contains(page.hints.frameGeometry()), qPrintable(QString::number(language)));
        QCOMPARE(page.hints.findChild<QLabel *>(QStringLiteral("titleLabel"))->text(),
            language ? "Zündspannung" : "Voltage");
        QTest::mouseClick(page.hints.findChild<QPushButton *>(QStringLiteral("closeButton")), Qt::LeftButton);
        QVERIFY(!page.hints.isVisible());
    }
}

void TestProfileViews::textsKeepTheirContrast_data()
{
    QTest::addColumn<QColor>("window");
    QTest::addColumn<QColor>("text");
    QTest::newRow("light") << QColor(0xEF, 0xEF, 0xEF) << QColor(Qt::black);
    QTest::newRow("dark") << QColor(0x35, 0x35, 0x35) << QColor(0xEE, 0xEE, 0xEE);
}

// The stressed words of descriptive texts and both colours of the blinking editor hints stay
// readable (4.5:1) on the background of the palette in use.
void TestProfileViews::textsKeepTheirContrast()
{
    QFETCH(QColor, window);
    QFETCH(QColor, text);
    const QPalette original = QApplication::palette();
    QPalette palette(text, window);
    palette.setColor(QPalette::Window, window);
    palette.setColor(QPalette::WindowText, text);
    QApplication::setPalette(palette);

    QVERIFY2(contrast(QColor(highlightColour()), window) >= 4.5, qPrintable(highlightColour()));
    EditorPage page {Profile()};
    const QList<CHintLabel *> labels = page.editor.findChildren<CHintLabel *>();
    QSet<QRgb> seen;
    QStringList faint;
    const auto look = [&] {
        for (const CHintLabel *label : labels) {
            if (contrast(label->textColor(), label->palette().color(QPalette::Window)) < 4.5)
                faint << label->textColor().name();
            seen.insert(label->textColor().rgb());
        }
        return seen.size() >= 2; // both colours of the blink were looked at
    };
    QTRY_VERIFY_WITH_TIMEOUT(look(), 5000);
    QVERIFY2(faint.isEmpty(), qPrintable(faint.join(QLatin1Char(' '))));
    QApplication::setPalette(original);
}

SPARKWRIGHT_WIDGET_TEST_MAIN(TestProfileViews)
#include "tst_profileviews.moc"
