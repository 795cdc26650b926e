// The profile name above the editor: display and edit mode, and the three ways to confirm,
// Escape among them.
#include "editor/iprofileeditormain.h"
#include "editor/nameform.h"
#include "tests/widgettestmain.h"

#include <QLineEdit>
#include <QPushButton>

namespace {

// Takes the name as the editor page does and shows it again.
class FakeEditor : public IProfileEditorMain
{
public:
    void updateGraph() override { }
    void setProfileName(const QString &name) override
    {
        names << name;
        form->showName(name);
    }
    void setProfileNotes(const QString &) override { }
    void onMapChanged(bool) override { }
    void onPointSelected(int, bool) override { }

    NameForm *form = nullptr;
    QStringList names;
};

} // namespace

class TestNameForm : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void switchesToEditMode_data();
    void switchesToEditMode();
    void confirms_data();
    void confirms();
    void keysDoNothingWhileDisplayed_data();
    void keysDoNothingWhileDisplayed();

private:
    QLineEdit *nameEdit() const { return m_form->findChild<QLineEdit *>(QStringLiteral("lineEditName")); }
    QPushButton *button(const char *name) const
    {
        return m_form->findChild<QPushButton *>(QLatin1String(name));
    }
    void verifyDisplayMode(const QString &name);

    std::unique_ptr<FakeEditor> m_editor;
    std::unique_ptr<NameForm> m_form;
};

void TestNameForm::init()
{
    m_editor = std::make_unique<FakeEditor>();
    m_form = std::make_unique<NameForm>(m_editor.get());
    m_editor->form = m_form.get();
    m_form->resize(500, m_form->sizeHint().height());
    m_form->show();
    QApplication::setActiveWindow(m_form.get());
    QVERIFY(QTest::qWaitForWindowActive(m_form.get()));
    m_form->showName(QStringLiteral("Two-stroke single 125 cc road"));
}

void TestNameForm::cleanup()
{
    m_form.reset();
    m_editor.reset();
}

void TestNameForm::verifyDisplayMode(const QString &name)
{
    QVERIFY(!m_form->isEditing());
    QVERIFY(nameEdit()->isReadOnly());
    QCOMPARE(nameEdit()->text(), name);
    QVERIFY(button("pushButtonRename")->isVisible());
    QVERIFY(!button("pushButtonApply")->isVisible());
}

void TestNameForm::switchesToEditMode_data()
{
    QTest::addColumn<bool>("clickName");
    QTest::newRow("Rename button") << false;
    QTest::newRow("click into the name") << true;
}

void TestNameForm::switchesToEditMode()
{
    QFETCH(bool, clickName);
    verifyDisplayMode(QStringLiteral("Two-stroke single 125 cc road"));

    if (clickName)
        QTest::mouseClick(nameEdit(), Qt::LeftButton);
    else
        QTest::mouseClick(button("pushButtonRename"), Qt::LeftButton);

    QVERIFY(m_form->isEditing());
    QVERIFY(!nameEdit()->isReadOnly());
    QCOMPARE(QApplication::focusWidget(), nameEdit());
    QCOMPARE(nameEdit()->selectedText(), QStringLiteral("Two-stroke single 125 cc road"));
    QVERIFY(!button("pushButtonRename")->isVisible());
    QVERIFY(button("pushButtonApply")->isVisible());
    QVERIFY(m_editor->names.isEmpty());
}

void TestNameForm::confirms_data()
{
    QTest::addColumn<int>("key"); // 0: the Apply button
    QTest::newRow("Apply button") << 0;
    QTest::newRow("Enter") << int(Qt::Key_Return);
    QTest::newRow("Escape confirms too") << int(Qt::Key_Escape);
}

void TestNameForm::confirms()
{
    QFETCH(int, key);
    QTest::mouseClick(button("pushButtonRename"), Qt::LeftButton);
    // The whole name is selected, so typing replaces it.
    QTest::keyClicks(nameEdit(), QStringLiteral("Track day"));
    if (key == 0)
        QTest::mouseClick(button("pushButtonApply"), Qt::LeftButton);
    else
        QTest::keyClick(nameEdit(), Qt::Key(key));

    QCOMPARE(m_editor->names, QStringList {QStringLiteral("Track day")});
    verifyDisplayMode(QStringLiteral("Track day"));
}

void TestNameForm::keysDoNothingWhileDisplayed_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("Enter") << int(Qt::Key_Return);
    QTest::newRow("Escape") << int(Qt::Key_Escape);
}

void TestNameForm::keysDoNothingWhileDisplayed()
{
    QFETCH(int, key);
    nameEdit()->setFocus();
    QTest::keyClicks(nameEdit(), QStringLiteral("xyz"));
    QTest::keyClick(nameEdit(), Qt::Key(key));
    QVERIFY(m_editor->names.isEmpty());
    verifyDisplayMode(QStringLiteral("Two-stroke single 125 cc road"));
}

SPARKWRIGHT_WIDGET_TEST_MAIN(TestNameForm)
#include "tst_nameform.moc"
