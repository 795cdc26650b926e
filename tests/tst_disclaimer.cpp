// The disclaimer dialog and its acceptance file, driven through the real dialog on the
// offscreen platform.
#include "dialogs/cdisclaimeracceptance.h"
#include "dialogs/disclaimerdialog.h"
#include "i18n/clanguagemenu.h"
#include "i18n/clanguageswitcher.h"
#include "tests/widgettestmain.h"

#include <QDir>
#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QTemporaryDir>
#include <QToolButton>

namespace {

// 0x55, a three-byte length of 5, then the tagged integer 1: 'i' and four bytes little-endian.
const QByteArray kAccepted = QByteArray::fromHex("550500006901000000");
const QByteArray kForeign = QByteArray::fromHex("550500006900000000"); // an integer 0

QByteArray readFile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void writeFile(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
}

} // namespace

class TestDisclaimer : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void acceptance_data();
    void acceptance();
    void refusal_data();
    void refusal();
    void languageButton_data();
    void languageButton();
    void textsFit_data();
    void textsFit();

private:
    // The dialog as the start-up builds it, over the case's two places for the file.
    void buildDialog(bool withTranslation);
    template<typename T> T *child(const char *name) const
    {
        return m_dialog->findChild<T *>(QLatin1String(name));
    }
    QString acceptanceFile(const QString &folder) const { return folder + QLatin1String("/disclaimer.a"); }

    QString m_originalDirectory;
    std::unique_ptr<QTemporaryDir> m_case;
    QString m_programDirectory;
    QString m_userDirectory;
    std::unique_ptr<CLanguageSwitcher> m_switcher;
    std::unique_ptr<CLanguageMenu> m_menu;
    std::unique_ptr<CDisclaimerAcceptance> m_acceptance;
    std::unique_ptr<DisclaimerDialog> m_dialog;
};

void TestDisclaimer::initTestCase()
{
    Q_INIT_RESOURCE(images);
    m_originalDirectory = QDir::currentPath();
}

void TestDisclaimer::init()
{
    m_case = std::make_unique<QTemporaryDir>();
    QVERIFY(m_case->isValid());
    m_programDirectory = m_case->filePath(QStringLiteral("program"));
    m_userDirectory = m_case->filePath(QStringLiteral("data/sparkwright.example/Sparkwright"));
    QVERIFY(QDir().mkpath(m_programDirectory));
    QVERIFY(QDir::setCurrent(m_case->path()));
}

void TestDisclaimer::cleanup()
{
    m_dialog.reset();
    m_acceptance.reset();
    m_menu.reset();
    m_switcher.reset();
    QDir::setCurrent(m_originalDirectory);
    m_case.reset();
}

void TestDisclaimer::buildDialog(bool withTranslation)
{
    if (withTranslation) {
        QVERIFY(QFile::copy(qEnvironmentVariable("SPARKWRIGHT_BUILD_DIR") + QLatin1String("/lang_de.qm"),
            m_case->filePath(QStringLiteral("lang_de.qm"))));
    }
    m_switcher = std::make_unique<CLanguageSwitcher>();
    m_switcher->addLanguage(QStringLiteral("de"));
    m_switcher->setLanguage(CLanguageSwitcher::kEnglish);
    m_menu = std::make_unique<CLanguageMenu>(*m_switcher);
    m_acceptance = std::make_unique<CDisclaimerAcceptance>(m_programDirectory, m_userDirectory);
    m_dialog = std::make_unique<DisclaimerDialog>(*m_menu, *m_acceptance);
    m_dialog->show();
}

void TestDisclaimer::acceptance_data()
{
    QTest::addColumn<bool>("ticked");
    QTest::addColumn<QString>("besideProgram"); // "writable", "foreign", "read-only", "unwritable"
    QTest::addColumn<bool>("userFolderBlocked");
    QTest::addColumn<QString>("writtenTo"); // "program", "user" or "nowhere"

    QTest::newRow("ticked") << true << "writable" << false << "program";
    QTest::newRow("ticked, over a foreign file") << true << "foreign" << false << "program";
    QTest::newRow("ticked, program directory cannot be written") << true << "unwritable" << false << "user";
    QTest::newRow("ticked, old file beside the program is read-only")
        << true << "read-only" << false << "user";
    QTest::newRow("ticked, neither place can be written") << true << "unwritable" << true << "nowhere";
    QTest::newRow("not ticked") << false << "writable" << false << "nowhere";
}

void TestDisclaimer::acceptance()
{
    QFETCH(bool, ticked);
    QFETCH(QString, besideProgram);
    QFETCH(bool, userFolderBlocked);
    QFETCH(QString, writtenTo);

    QByteArray oldFile;
    if (besideProgram == QLatin1String("unwritable")) {
        // A directory that does not exist cannot be written into, not even by a superuser, and
        // the program never creates its own directory.
        m_programDirectory = m_case->filePath(QStringLiteral("not-installed"));
    } else if (besideProgram != QLatin1String("writable")) {
        oldFile = kForeign;
        writeFile(acceptanceFile(m_programDirectory), oldFile);
        if (besideProgram == QLatin1String("read-only"))
            QVERIFY(QFile::setPermissions(acceptanceFile(m_programDirectory), QFile::ReadOwner));
    }
    if (userFolderBlocked) // a file where the folder's parent should be
        writeFile(m_case->filePath(QStringLiteral("data")), "in the way");

    buildDialog(false);
    if (ticked)
        WidgetTest::clickCheckBox(child<QCheckBox>("checkBox"));
    QCOMPARE(child<QCheckBox>("checkBox")->isChecked(), ticked);
    QTest::mouseClick(child<QPushButton>("acceptButton"), Qt::LeftButton);

    // The dialog is accepted whether or not the acceptance could be written.
    QVERIFY(!m_dialog->isVisible());
    QCOMPARE(m_dialog->result(), int(QDialog::Accepted));
    QCOMPARE(readFile(acceptanceFile(m_programDirectory)),
        writtenTo == QLatin1String("program") ? kAccepted : oldFile);
    QCOMPARE(readFile(acceptanceFile(m_userDirectory)),
        writtenTo == QLatin1String("user") ? kAccepted : QByteArray());
    QCOMPARE(CDisclaimerAcceptance(m_programDirectory, m_userDirectory).isAccepted(),
        writtenTo != QLatin1String("nowhere"));
}

void TestDisclaimer::refusal_data()
{
    QTest::addColumn<QString>("how");
    QTest::newRow("Decline button") << "decline";
    QTest::newRow("Escape key") << "escape";
    QTest::newRow("window closed") << "close";
}

void TestDisclaimer::refusal()
{
    QFETCH(QString, how);
    buildDialog(false);
    WidgetTest::clickCheckBox(child<QCheckBox>("checkBox"));
    if (how == QLatin1String("decline"))
        QTest::mouseClick(child<QPushButton>("declineButton"), Qt::LeftButton);
    else if (how == QLatin1String("escape"))
        QTest::keyClick(m_dialog.get(), Qt::Key_Escape);
    else
        m_dialog->close();

    QVERIFY(!m_dialog->isVisible());
    QCOMPARE(m_dialog->result(), int(QDialog::Rejected));
    QVERIFY(!QFile::exists(acceptanceFile(m_programDirectory))
        && !QFile::exists(acceptanceFile(m_userDirectory)));
}

void TestDisclaimer::languageButton_data()
{
    QTest::addColumn<QList<int>>("choices");
    QTest::addColumn<QString>("buttonText");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("acceptText");

    QTest::newRow("German") << QList<int> {1} << "Deutsch"
                            << "Haftungsausschluss"
                            << "Zustimmen";
    QTest::newRow("German and back") << QList<int> {1, 0} << "English"
                                     << "Disclaimer"
                                     << "Accept";
}

void TestDisclaimer::languageButton()
{
    QFETCH(QList<int>, choices);
    QFETCH(QString, buttonText);
    QFETCH(QString, title);
    QFETCH(QString, acceptText);

    buildDialog(true);
    QToolButton *button = child<QToolButton>("languageButton");
    QCOMPARE(button->text(), QStringLiteral("English"));
    for (int language : choices) {
        button->menu()->actions().at(language)->trigger();
        // The language change reaches the open dialog as an event.
        QCoreApplication::processEvents();
    }
    QCOMPARE(button->text(), buttonText);
    const QIcon flag(QStringLiteral(":/Images/lang%1.png").arg(choices.last()));
    QCOMPARE(button->icon().pixmap(16).toImage(), flag.pixmap(16).toImage());
    QCOMPARE(m_dialog->windowTitle(), title);
    QCOMPARE(child<QPushButton>("acceptButton")->text(), acceptText);
    QVERIFY(m_dialog->isVisible());
}

void TestDisclaimer::textsFit_data()
{
    QTest::addColumn<int>("language");
    QTest::newRow("English") << int(CLanguageSwitcher::kEnglish);
    QTest::newRow("German") << int(CLanguageSwitcher::kGerman);
}

// Longer German texts must neither be cut off nor run out of the fixed-size dialog.
void TestDisclaimer::textsFit()
{
    QFETCH(int, language);
    buildDialog(true);
    m_menu->selectLanguage(language);
    // The language change, then the layout request it causes.
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();

    for (QWidget *widget : m_dialog->findChildren<QWidget *>()) {
        if (!widget->isVisible() || widget->parentWidget() != m_dialog.get())
            continue;
        QVERIFY2(m_dialog->rect().contains(widget->geometry()), qPrintable(widget->objectName()));
        const auto *label = qobject_cast<QLabel *>(widget);
        if (label && label->wordWrap()) {
            QVERIFY2(label->heightForWidth(label->width()) <= label->height(), qPrintable(label->text()));
        } else if (qobject_cast<QAbstractButton *>(widget) || label) {
            QVERIFY2(widget->width() >= widget->sizeHint().width(), qPrintable(widget->objectName()));
            QVERIFY2(
                widget->height() >= widget->minimumSizeHint().height(), qPrintable(widget->objectName()));
        }
    }
}

SPARKWRIGHT_WIDGET_TEST_MAIN(TestDisclaimer)
#include "tst_disclaimer.moc"
