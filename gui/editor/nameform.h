#pragma once

#include <QWidget>

#include <memory>

class IProfileEditorMain;

namespace Ui {
class NameForm;
}

// The profile's name above the editor. It shows the name read-only with a "Rename" button; a
// click on "Rename" or into the name makes it editable, and Apply, Enter or Escape hand the new
// name to the editor.
class NameForm : public QWidget
{
    Q_OBJECT

public:
    explicit NameForm(IProfileEditorMain *editor, QWidget *parent = nullptr);
    ~NameForm() override;

    // Shows the name and returns to display mode; an unconfirmed edit is dropped.
    void showName(const QString &name);
    bool isEditing() const { return m_editing; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void changeEvent(QEvent *event) override;

private slots:
    void onRenameClicked();
    void onApplyClicked();
    void onReturnPressed();

private:
    void setEditing(bool editing);
    void confirm();

    std::unique_ptr<Ui::NameForm> m_ui;
    IProfileEditorMain *m_editor;
    bool m_editing = false;
};
