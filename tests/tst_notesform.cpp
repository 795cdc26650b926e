// The user's notes on the profile: read-only until "Edit" or a click, confirmed with
// "Apply [Esc]" or Escape, while Return is a line break.
#include "editor/iprofileeditormain.h"
#include "editor/notesform.h"
#include "tests/widgettestmain.h"

#include <QPlainTextEdit>
#include <QPushButton>

namespace {

// Takes the notes as the editor page does and shows them again.
class FakeEditor : public IProfileEditorMain
{
public:
    void updateGraph() override { }
    void setProfileName(const QString &) override { }
    void setProfileNotes(const QString &text) override
    {
        notes << text;
        form->showNotes(text);
    }
    void onMapChanged(bool) override { }
    void onPointSelected(int, bool) override { }

    NotesForm *form = nullptr;
    QStringList notes;
};

} // namespace

class TestNotesForm : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void editAndConfirm_data();
    void editAndConfirm();
    void typingWhileDisplayedChangesNothing();

private:
    QPlainTextEdit *text() const
    {
        return m_form->findChild<QPlainTextEdit *>(QStringLiteral("plainTextEditNotes"));
    }
    QPushButton *button(const char *name) const
    {
        return m_form->findChild<QPushButton *>(QLatin1String(name));
    }
    void verifyDisplayMode(const QString &notes);

    std::unique_ptr<FakeEditor> m_editor;
    std::unique_ptr<NotesForm> m_form;
};

void TestNotesForm::init()
{
    m_editor = std::make_unique<FakeEditor>();
    m_form = std::make_unique<NotesForm>(m_editor.get());
    m_editor->form = m_form.get();
    m_form->resize(500, 200);
    m_form->show();
    QApplication::setActiveWindow(m_form.get());
    QVERIFY(QTest::qWaitForWindowActive(m_form.get()));
    m_form->showNotes(QStringLiteral("Plug B9ES"));
}

void TestNotesForm::cleanup()
{
    m_form.reset();
    m_editor.reset();
}

void TestNotesForm::verifyDisplayMode(const QString &notes)
{
    QVERIFY(!m_form->isEditing());
    QVERIFY(text()->isReadOnly());
    QCOMPARE(text()->toPlainText(), notes);
    QVERIFY(button("pushButtonEdit")->isVisible());
    QVERIFY(!button("pushButtonApply")->isVisible());
}

void TestNotesForm::editAndConfirm_data()
{
    QTest::addColumn<bool>("clickText");
    QTest::addColumn<bool>("escape");
    QTest::newRow("Edit, then Apply") << false << false;
    QTest::newRow("Edit, then Escape") << false << true;
    QTest::newRow("click into the text, then Escape") << true << true;
}

void TestNotesForm::editAndConfirm()
{
    QFETCH(bool, clickText);
    QFETCH(bool, escape);
    verifyDisplayMode(QStringLiteral("Plug B9ES"));

    if (clickText) {
        // Below the only line: the text cursor lands at its end.
        QTest::mouseClick(text()->viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(150, 60));
    } else {
        QTest::mouseClick(button("pushButtonEdit"), Qt::LeftButton);
    }
    QVERIFY(m_form->isEditing());
    QVERIFY(!text()->isReadOnly());
    QCOMPARE(QApplication::focusWidget(), text());
    QVERIFY(!button("pushButtonEdit")->isVisible());
    QVERIFY(button("pushButtonApply")->isVisible());

    QTest::keyClick(text(), Qt::Key_Return);
    QTest::keyClicks(text(), QStringLiteral("Gap 0.6 mm"));
    QVERIFY(m_editor->notes.isEmpty());
    if (escape)
        QTest::keyClick(text(), Qt::Key_Escape);
    else
        QTest::mouseClick(button("pushButtonApply"), Qt::LeftButton);

    QCOMPARE(m_editor->notes, QStringList {QStringLiteral("Plug B9ES\nGap 0.6 mm")});
    verifyDisplayMode(QStringLiteral("Plug B9ES\nGap 0.6 mm"));
}

void TestNotesForm::typingWhileDisplayedChangesNothing()
{
    text()->setFocus();
    QTest::keyClicks(text(), QStringLiteral("xyz"));
    QTest::keyClick(text(), Qt::Key_Escape);
    QVERIFY(m_editor->notes.isEmpty());
    verifyDisplayMode(QStringLiteral("Plug B9ES"));
}

SPARKWRIGHT_WIDGET_TEST_MAIN(TestNotesForm)
#include "tst_notesform.moc"
