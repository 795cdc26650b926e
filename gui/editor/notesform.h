#pragma once

#include <QWidget>

#include <memory>

class IProfileEditorMain;

namespace Ui {
class NotesForm;
}

// The user's own notes on the profile. They are shown read-only; "Edit" or a click into the
// text makes them editable, and "Apply [Esc]" or Escape hand the text to the editor.
class NotesForm : public QWidget
{
    Q_OBJECT

public:
    explicit NotesForm(IProfileEditorMain *editor, QWidget *parent = nullptr);
    ~NotesForm() override;

    // Shows the notes and returns to display mode; an unconfirmed edit is dropped.
    void showNotes(const QString &notes);
    bool isEditing() const { return m_editing; }
    void retranslate();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private slots:
    void onEditClicked();
    void onApplyClicked();

private:
    void setEditing(bool editing);
    void confirm();

    std::unique_ptr<Ui::NotesForm> m_ui;
    IProfileEditorMain *m_editor;
    bool m_editing = false;
};
