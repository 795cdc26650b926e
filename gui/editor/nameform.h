#pragma once

#include "editor/cinplaceform.h"

#include <memory>

namespace Ui {
class NameForm;
}

// The profile's name above the editor. It shows the name read-only with a "Rename" button; a
// click on "Rename" or into the name makes it editable with all of it selected, and Apply, Enter
// or Escape hand the new name to the editor.
class NameForm : public CInPlaceForm
{
    Q_OBJECT

public:
    explicit NameForm(IProfileEditorMain *editor, QWidget *parent = nullptr);
    ~NameForm() override;

    // Shows the name and returns to display mode; an unconfirmed edit is dropped.
    void showName(const QString &name);

protected:
    void changeEvent(QEvent *event) override;
    void showMode(bool editing) override;
    QString fieldText() const override;

private:
    std::unique_ptr<Ui::NameForm> m_ui;
};
