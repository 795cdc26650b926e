#pragma once

#include <QWidget>

class IProfileEditorMain;
class QAbstractButton;

// A text of the profile beside the editor, shown read-only until the user asks to change it: its
// edit button or a click into the text makes it editable, and Apply or Escape hand the text to
// the editor, which records it. The name and the notes are kept this way.
class CInPlaceForm : public QWidget
{
    Q_OBJECT

public:
    bool isEditing() const { return m_editing; }

protected:
    // Where the editor takes the confirmed text.
    using HandOver = void (IProfileEditorMain::*)(const QString &text);

    // The widgets the form is made of. A press on clickTarget starts editing; where it places the
    // text cursor it goes on to the field as well, else it only starts editing.
    struct Parts
    {
        QWidget *field;
        QWidget *clickTarget;
        QAbstractButton *editButton;
        QAbstractButton *applyButton;
        bool pressPlacesCursor;
    };

    CInPlaceForm(IProfileEditorMain *editor, HandOver handOver, QWidget *parent);
    // Once the form's widgets exist; the form then shows its text read-only.
    void setParts(const Parts &parts);

    // Either mode leaves the text in the field as it is.
    void setEditing(bool editing);
    // Hands the text to the editor when it is being edited, and returns to display mode.
    void confirm();

    // The field's own look and selection in either mode.
    virtual void showMode(bool editing) = 0;
    virtual QString fieldText() const = 0;

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    IProfileEditorMain *m_editor;
    const HandOver m_handOver;
    Parts m_parts {};
    bool m_editing = false;
};
