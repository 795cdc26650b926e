#include "editor/cinplaceform.h"

#include "editor/iprofileeditormain.h"

#include <QAbstractButton>
#include <QKeyEvent>

CInPlaceForm::CInPlaceForm(IProfileEditorMain *editor, HandOver handOver, QWidget *parent)
    : QWidget(parent)
    , m_editor(editor)
    , m_handOver(handOver)
{ }

void CInPlaceForm::setParts(const Parts &parts)
{
    m_parts = parts;
    m_parts.field->installEventFilter(this);
    if (m_parts.clickTarget != m_parts.field)
        m_parts.clickTarget->installEventFilter(this);
    connect(m_parts.applyButton, &QAbstractButton::clicked, this, &CInPlaceForm::confirm);
    setEditing(false);
}

void CInPlaceForm::setEditing(bool editing)
{
    m_editing = editing;
    showMode(editing);
    m_parts.editButton->setVisible(!editing);
    m_parts.applyButton->setVisible(editing);
    if (editing)
        m_parts.field->setFocus(Qt::OtherFocusReason);
}

void CInPlaceForm::confirm()
{
    if (!m_editing)
        return;
    const QString text = fieldText();
    setEditing(false);
    (m_editor->*m_handOver)(text);
}

bool CInPlaceForm::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_parts.clickTarget && event->type() == QEvent::MouseButtonPress && !m_editing) {
        setEditing(true);
        if (!m_parts.pressPlacesCursor)
            return true;
    }
    // Escape confirms as well: users press it to leave the field and expect to keep what they
    // typed, and a text that silently reverts is the worse surprise.
    if (watched == m_parts.field && event->type() == QEvent::KeyPress && m_editing
        && static_cast<QKeyEvent *>(event)->key() == Qt::Key_Escape) {
        confirm();
        return true;
    }
    return QWidget::eventFilter(watched, event);
}
