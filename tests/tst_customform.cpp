// The page that shows a profile before it is programmed: its own copy, through the summary.
#include "editor/customform.h"
#include "i18n/clanguageswitcher.h"
#include "profile/profile.h"
#include "tests/widgettestmain.h"

#include <QLabel>
#include <QTextEdit>

class TestCustomForm : public QObject
{
    Q_OBJECT

private slots:
    void showsItsOwnCopy();
};

void TestCustomForm::showsItsOwnCopy()
{
    CLanguageSwitcher switcher;
    CustomForm form(switcher);
    Profile profile;
    profile.setName(QStringLiteral("Track day"));
    profile.setNotes(QStringLiteral("Plug B9ES"));
    profile.setVoltage(230);
    form.setProfile(profile);
    form.resize(800, 480);
    form.setActive(true);
    QVERIFY(QTest::qWaitForWindowExposed(&form));

    profile.setName(QStringLiteral("Changed afterwards"));
    QCOMPARE(form.profile().name(), QStringLiteral("Track day"));
    QCOMPARE(form.findChild<QLabel *>(QStringLiteral("labelName"))->text(), QStringLiteral("Track day"));
    QVERIFY(
        form.findChild<QLabel *>(QStringLiteral("statusLabel"))->text().contains(QStringLiteral("230 V")));
    QCOMPARE(
        form.findChild<QTextEdit *>(QStringLiteral("notesEdit"))->toPlainText(), QStringLiteral("Plug B9ES"));

    form.setActive(false);
    QVERIFY(!form.isVisible());
}

SPARKWRIGHT_WIDGET_TEST_MAIN(TestCustomForm)
#include "tst_customform.moc"
