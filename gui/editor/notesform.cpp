#include "editor/notesform.h"

#include "editor/iprofileeditormain.h"

#include "ui_notesform.h"

#include <QKeyEvent>

NotesForm::NotesForm(IProfileEditorMain *editor, QWidget *parent)
    : QWidget(parent)
    , m_ui(std::make_unique<Ui::NotesForm>())
    , m_editor(editor)
{
    m_ui->setupUi(this);
    m_ui->plainTextEditNotes->installEventFilter(this);
    m_ui->plainTextEditNotes->viewport()->installEventFilter(this);
    setEditing(false);

    connect(m_ui->pushButtonEdit, &QPushButton::clicked, this, &NotesForm::onEditClicked);
    connect(m_ui->pushButtonApply, &QPushButton::clicked, this, &NotesForm::onApplyClicked);
}

NotesForm::~NotesForm() = default;

void NotesForm::showNotes(const QString &notes)
{
    setEditing(false);
    m_ui->plainTextEditNotes->setPlainText(notes);
}

void NotesForm::retranslate()
{
    m_ui->retranslateUi(this);
}

void NotesForm::setEditing(bool editing)
{
    m_editing = editing;
    QPlainTextEdit *text = m_ui->plainTextEditNotes;
    text->setReadOnly(!editing);
    text->viewport()->setCursor(editing ? Qt::IBeamCursor : Qt::PointingHandCursor);
    m_ui->pushButtonEdit->setVisible(!editing);
    m_ui->pushButtonApply->setVisible(editing);
    if (editing)
        text->setFocus(Qt::OtherFocusReason);
}

void NotesForm::confirm()
{
    if (!m_editing)
        return;
    setEditing(false);
    m_editor->setProfileNotes(m_ui->plainTextEditNotes->toPlainText());
}

void NotesForm::onEditClicked()
{
    setEditing(true);
    m_ui->plainTextEditNotes->moveCursor(QTextCursor::End);
}

void NotesForm::onApplyClicked()
{
    confirm();
}

bool NotesForm::eventFilter(QObject *watched, QEvent *event)
{
    // The click that starts editing also places the text cursor where it lands.
    if (watched == m_ui->plainTextEditNotes->viewport() && event->type() == QEvent::MouseButtonPress
        && !m_editing)
        setEditing(true);
    if (watched == m_ui->plainTextEditNotes && event->type() == QEvent::KeyPress && m_editing
        && static_cast<QKeyEvent *>(event)->key() == Qt::Key_Escape) {
        confirm();
        return true;
    }
    return QWidget::eventFilter(watched, event);
}
