#include "editor/nameform.h"

#include "editor/iprofileeditormain.h"

#include "ui_nameform.h"

#include <QKeyEvent>

NameForm::NameForm(IProfileEditorMain *editor, QWidget *parent)
    : QWidget(parent)
    , m_ui(std::make_unique<Ui::NameForm>())
    , m_editor(editor)
{
    m_ui->setupUi(this);
    QFont nameFont = m_ui->lineEditName->font();
    nameFont.setBold(true);
    m_ui->lineEditName->setFont(nameFont);
    m_ui->lineEditName->installEventFilter(this);
    setEditing(false);

    connect(m_ui->pushButtonRename, &QPushButton::clicked, this, &NameForm::onRenameClicked);
    connect(m_ui->pushButtonApply, &QPushButton::clicked, this, &NameForm::onApplyClicked);
    connect(m_ui->lineEditName, &QLineEdit::returnPressed, this, &NameForm::onReturnPressed);
}

NameForm::~NameForm() = default;

void NameForm::showName(const QString &name)
{
    setEditing(false);
    m_ui->lineEditName->setText(name);
    m_ui->lineEditName->setCursorPosition(0);
}

void NameForm::setEditing(bool editing)
{
    m_editing = editing;
    QLineEdit *edit = m_ui->lineEditName;
    edit->setReadOnly(!editing);
    // Read-only, the name reads like a heading; editable, it looks like the field it is.
    edit->setFrame(editing);
    QPalette colours = palette();
    if (!editing)
        colours.setColor(QPalette::Base, colours.color(QPalette::Window));
    edit->setPalette(colours);
    edit->setCursor(editing ? Qt::IBeamCursor : Qt::PointingHandCursor);
    m_ui->pushButtonRename->setVisible(!editing);
    m_ui->pushButtonApply->setVisible(editing);
    if (editing) {
        edit->setFocus(Qt::OtherFocusReason);
        edit->selectAll();
    } else {
        edit->deselect();
    }
}

void NameForm::confirm()
{
    if (!m_editing)
        return;
    const QString name = m_ui->lineEditName->text();
    setEditing(false);
    m_editor->setProfileName(name);
}

void NameForm::onRenameClicked()
{
    setEditing(true);
}

void NameForm::onApplyClicked()
{
    confirm();
}

void NameForm::onReturnPressed()
{
    confirm();
}

bool NameForm::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_ui->lineEditName) {
        if (event->type() == QEvent::MouseButtonPress && !m_editing) {
            setEditing(true);
            return true;
        }
        // Escape confirms as well: users press it to leave the field and expect to keep what
        // they typed, and a name that silently reverts is the worse surprise.
        if (event->type() == QEvent::KeyPress && m_editing
            && static_cast<QKeyEvent *>(event)->key() == Qt::Key_Escape) {
            confirm();
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void NameForm::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange)
        m_ui->retranslateUi(this);
    QWidget::changeEvent(event);
}
