// What the editor page, its hint dialog and the summary show of a profile, in both languages and
// on the offscreen platform's small screen (800 x 600).
#include "editor/chintlabel.h"
#include "editor/editorform.h"
#include "editor/hintdialog.h"
#include "i18n/clanguageswitcher.h"
#include "pages/bracemarkup.h"
#include "profile/hintcatalog.h"
#include "profile/mapvalidation.h"
#include "summary/summaryform.h"
#include "tests/layoutencoder.h"
#include "tests/widgettestmain.h"

#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QSet>
#include <QTableView>
#include <QTextEdit>
#include <QToolButton>

#include <cmath>

Q_DECLARE_METATYPE(IgnitionMap)

namespace {

// The editor page on its own, shown and active, with the German translation at hand.
struct EditorPage
{
    EditorPage(const HintCatalog &catalog, const Profile &profile)
        : hints(&catalog, switcher)
        , editor(nullptr, switcher, hints)
    {
        switcher.addLanguage(QStringLiteral("de")); // from the build folder
        switcher.registerListener(&editor);
        editor.setProfile(profile);
        editor.setActive(true);
        editor.show();
        QApplication::setActiveWindow(&editor);
    }
    ~EditorPage() { switcher.setLanguage(0); }

    CLanguageSwitcher switcher;
    HintDialog hints;
    EditorForm editor;
};

double luminance(const QColor &colour)
{
    const auto channel
        = [](double c) { return c <= 0.03928 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4); };
    return 0.2126 * channel(colour.redF()) + 0.7152 * channel(colour.greenF())
        + 0.0722 * channel(colour.blueF());
}

double contrast(const QColor &a, const QColor &b)
{
    const double la = luminance(a);
    const double lb = luminance(b);
    return (std::max(la, lb) + 0.05) / (std::min(la, lb) + 0.05);
}

} // namespace

class TestProfileViews : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void sortButtonFollowsTheMap_data();
    void sortButtonFollowsTheMap();
    void hintDialogFitsTheScreen();
    void summaryListsEmptySlots();
    void editorWithoutMouseInEitherLanguage();
    void textsKeepTheirContrast_data();
    void textsKeepTheirContrast();

private:
    HintCatalog m_catalog;
};

void TestProfileViews::initTestCase()
{
    const QString longText = QStringLiteral("<p>Die Ladespannung des Zündkondensators.</p>").repeated(40);
    for (int i = 0; i < 5; ++i)
        m_catalog.append(
            {HintText {QStringLiteral("Voltage"), longText}, HintText {"Zündspannung", longText}});
}

void TestProfileViews::sortButtonFollowsTheMap_data()
{
    QTest::addColumn<IgnitionMap>("map");
    QTest::addColumn<bool>("shown");
    const std::array<qint32, 10> angles {10, 12, 14, 16, 18, 20, 22, 24, 26, 28};
    QTest::newRow("rising speeds") << mapOf({1, 2, 3, 4, 5, 6, 7, 8, 9, 10}, angles) << false;
    QTest::newRow("a speed out of order") << mapOf({2, 1, 3, 4, 5, 6, 7, 8, 9, 10}, angles) << true;
    QTest::newRow("two equal speeds stay unsorted") << mapOf({1, 2, 3, 3, 5, 6, 7, 8, 9, 10}, angles) << true;
}

// Shown exactly while the map does not rise; a click sorts the map, which hides it unless two
// speeds are equal.
void TestProfileViews::sortButtonFollowsTheMap()
{
    QFETCH(IgnitionMap, map);
    QFETCH(bool, shown);
    Profile profile;
    profile.setMap(map);
    EditorPage page(m_catalog, profile);
    auto *sort = page.editor.findChild<QToolButton *>(QStringLiteral("toolButtonSort"));
    QCOMPARE(sort->isVisible(), shown);
    if (shown) {
        QTest::mouseClick(sort, Qt::LeftButton);
        QCOMPARE(sort->isVisible(), !page.editor.profile().map().isStrictlyAscending());
        QCOMPARE(page.editor.profile().map(), sortAscending(map));
    }
}

// A long hint stays on a small screen in either language, also when shown again after closing.
void TestProfileViews::hintDialogFitsTheScreen()
{
    EditorPage page(m_catalog, Profile());
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    for (int language : {0, 1, 0}) {
        page.switcher.setLanguage(language);
        page.hints.showHint(0);
        QVERIFY(QTest::qWaitForWindowExposed(&page.hints));
        QVERIFY2(screen.contains(page.hints.frameGeometry()), qPrintable(QString::number(language)));
        QTest::mouseClick(page.hints.findChild<QPushButton *>(QStringLiteral("closeButton")), Qt::LeftButton);
        QVERIFY(!page.hints.isVisible());
    }
}

// Empty slots are listed too, as 0 and 0°, so that the table always has its ten rows.
void TestProfileViews::summaryListsEmptySlots()
{
    SummaryForm summary(0);
    Profile profile;
    profile.setMap(mapOf({0, 1500, 0, 0, 0, 0, 0, 0, 0, 0}, {0, 12, 0, 0, 0, 0, 0, 0, 0, 0}));
    summary.setProfile(profile);
    const QString table = summary.findChild<QTextEdit *>(QStringLiteral("textEdit"))->toPlainText();
    QStringList rows {"RPM", "Angle", "0", "0°", "1500", "12°"};
    for (int i = 0; i < 8; ++i)
        rows << QStringList {"0", "0°"};
    QCOMPARE(table.split(QLatin1Char('\n'), Qt::SkipEmptyParts), rows);
}

// Tab leaves the map table in both directions, each setting's input is followed by its hint
// button, and every hint button tells a screen reader which setting it explains. The speed
// heading and the information box follow the language chosen, which may have no information.
void TestProfileViews::editorWithoutMouseInEitherLanguage()
{
    Profile profile;
    profile.setExtraText(0, QStringLiteral("For road use."));
    EditorPage page(m_catalog, profile);
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
        QVERIFY2(QApplication::focusWidget()->objectName().startsWith(QLatin1String("hintButton")),
            qPrintable(QApplication::focusWidget()->objectName()));
    }
    const auto *information
        = page.editor.findChild<QPlainTextEdit *>(QStringLiteral("plainTextEditInformation"));
    for (int language : {1, 0}) {
        page.switcher.setLanguage(language);
        QSet<QString> names;
        const QList<QToolButton *> buttons
            = page.editor.findChildren<QToolButton *>(QRegularExpression("^hintButton"));
        for (const QToolButton *button : buttons)
            names.insert(button->accessibleName());
        QCOMPARE(buttons.size(), 5);
        QVERIFY2(names.size() == 5 && !names.contains(QString()),
            qPrintable(QStringList(names.values()).join("|")));
        QCOMPARE(table->model()->headerData(0, Qt::Horizontal).toString(), language ? "U/min" : "RPM");
        QCOMPARE(information->toPlainText(), language ? "Keine Informationen vorhanden" : "For road use.");
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
    EditorPage page(m_catalog, Profile());
    const QList<CHintLabel *> labels = page.editor.findChildren<CHintLabel *>();
    QVERIFY(!labels.isEmpty());
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
