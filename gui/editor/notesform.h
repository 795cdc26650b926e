#pragma once

#include "editor/cinplaceform.h"

#include <memory>

namespace Ui {
class NotesForm;
}

// The user's own notes on the profile. They are shown read-only; "Edit" or a click into the
// text makes them editable, and "Apply [Esc]" or Escape hand the text to the editor. Return is a
// line break here.
class NotesForm : public CInPlaceForm
{
    Q_OBJECT

public:
    explicit NotesForm(IProfileEditorMain *editor, QWidget *parent = nullptr);
    ~NotesForm() override;

    // Shows the notes and returns to display mode; an unconfirmed edit is dropped.
    void showNotes(const QString &notes);
    void retranslate();

protected:
    void showMode(bool editing) override;
    QString fieldText() const override;

private:
    std::unique_ptr<Ui::NotesForm> m_ui;
};
