// The hint window: which numbers show something, the texts in the current language, and that it
// reopens where the user left it.
#include "editor/hintdialog.h"
#include "i18n/clanguageswitcher.h"
#include "profile/hintcatalog.h"
#include "tests/widgettestmain.h"

#include <QLabel>
#include <QPushButton>
#include <QTextBrowser>

namespace {

HintCatalog numberedCatalog()
{
    HintCatalog catalog;
    for (int i = 0; i < 5; ++i) {
        catalog.append(
            {HintText {QStringLiteral("Hint %1").arg(i), QStringLiteral("<p>Text <b>%1</b></p>").arg(i)},
                HintText {
                    QStringLiteral("Hinweis %1").arg(i), QStringLiteral("<p>Text <b>%1</b> de</p>").arg(i)}});
    }
    return catalog;
}

} // namespace

class TestHintDialog : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void showsNothingOutsideTheCatalog_data();
    void showsNothingOutsideTheCatalog();
    void showsTheTextsOfTheCurrentLanguage_data();
    void showsTheTextsOfTheCurrentLanguage();
    void reopensWhereItWasClosed_data();
    void reopensWhereItWasClosed();

private:
    QString title() const { return m_dialog->findChild<QLabel *>(QStringLiteral("titleLabel"))->text(); }
    QString text() const
    {
        return m_dialog->findChild<QTextBrowser *>(QStringLiteral("textBrowser"))->toPlainText();
    }

    HintCatalog m_catalog;
    std::unique_ptr<CLanguageSwitcher> m_switcher;
    std::unique_ptr<HintDialog> m_dialog;
};

void TestHintDialog::init()
{
    m_catalog = numberedCatalog();
    m_switcher = std::make_unique<CLanguageSwitcher>();
    m_dialog = std::make_unique<HintDialog>(&m_catalog, *m_switcher);
}

void TestHintDialog::cleanup()
{
    m_dialog.reset();
    m_switcher.reset();
}

void TestHintDialog::showsNothingOutsideTheCatalog_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<bool>("withCatalog");
    QTest::newRow("negative") << -1 << true;
    QTest::newRow("one past the last") << 5 << true;
    QTest::newRow("no catalog") << 0 << false;
}

void TestHintDialog::showsNothingOutsideTheCatalog()
{
    QFETCH(int, number);
    QFETCH(bool, withCatalog);
    if (!withCatalog)
        m_dialog = std::make_unique<HintDialog>(nullptr, *m_switcher);
    m_dialog->showHint(number);
    QVERIFY(!m_dialog->isVisible());
    QVERIFY(title().isEmpty());
}

void TestHintDialog::showsTheTextsOfTheCurrentLanguage_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<int>("language");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("text");
    QTest::newRow("first, English") << 0 << 0 << "Hint 0"
                                    << "Text 0";
    QTest::newRow("last, English") << 4 << 0 << "Hint 4"
                                   << "Text 4";
    QTest::newRow("last, German") << 4 << 1 << "Hinweis 4"
                                  << "Text 4 de";
}

void TestHintDialog::showsTheTextsOfTheCurrentLanguage()
{
    QFETCH(int, number);
    QFETCH(int, language);
    QFETCH(QString, title);
    QFETCH(QString, text);
    m_switcher->setLanguage(language);
    m_dialog->showHint(number);
    QVERIFY(QTest::qWaitForWindowExposed(m_dialog.get()));
    QVERIFY(!m_dialog->isModal());
    QCOMPARE(m_dialog->windowTitle(), QStringLiteral("Hint"));
    QVERIFY(!m_dialog->windowFlags().testFlag(Qt::WindowContextHelpButtonHint));
    QCOMPARE(this->title(), title);
    QCOMPARE(this->text(), text);
}

void TestHintDialog::reopensWhereItWasClosed_data()
{
    QTest::addColumn<QString>("how");
    QTest::newRow("Close button") << "button";
    QTest::newRow("Escape") << "escape";
    QTest::newRow("title bar") << "window";
}

void TestHintDialog::reopensWhereItWasClosed()
{
    QFETCH(QString, how);
    m_dialog->showHint(0);
    QVERIFY(QTest::qWaitForWindowExposed(m_dialog.get()));
    const QRect moved(310, 220, 470, 330);
    m_dialog->setGeometry(moved);
    QCoreApplication::processEvents();
    QCOMPARE(m_dialog->geometry(), moved);

    if (how == QLatin1String("button"))
        QTest::mouseClick(m_dialog->findChild<QPushButton *>(QStringLiteral("closeButton")), Qt::LeftButton);
    else if (how == QLatin1String("escape"))
        QTest::keyClick(m_dialog.get(), Qt::Key_Escape);
    else
        m_dialog->close();
    QVERIFY(!m_dialog->isVisible());

    m_dialog->showHint(3);
    QVERIFY(QTest::qWaitForWindowExposed(m_dialog.get()));
    QCOMPARE(m_dialog->geometry(), moved);
    QCOMPARE(title(), QStringLiteral("Hint 3"));
}

SPARKWRIGHT_WIDGET_TEST_MAIN(TestHintDialog)
#include "tst_hintdialog.moc"
