#include "editor/nameform.h"

#include "editor/iprofileeditormain.h"

#include "ui_nameform.h"

#include <QEvent>

NameForm::NameForm(IProfileEditorMain *editor, QWidget *parent)
    : CInPlaceForm(editor, &IProfileEditorMain::setProfileName, parent)
    , m_ui(std::make_unique<Ui::NameForm>())
{
    m_ui->setupUi(this);
    QFont nameFont = m_ui->lineEditName->font();
    nameFont.setBold(true);
    m_ui->lineEditName->setFont(nameFont);
    setParts({m_ui->lineEditName, m_ui->lineEditName, m_ui->pushButtonRename, m_ui->pushButtonApply, false});

    connect(m_ui->pushButtonRename, &QPushButton::clicked, this, [this] { setEditing(true); });
    connect(m_ui->lineEditName, &QLineEdit::returnPressed, this, &NameForm::confirm);
}

NameForm::~NameForm() = default;

void NameForm::showName(const QString &name)
{
    setEditing(false);
    m_ui->lineEditName->setText(name);
    m_ui->lineEditName->setCursorPosition(0);
}

void NameForm::showMode(bool editing)
{
    QLineEdit *edit = m_ui->lineEditName;
    edit->setReadOnly(!editing);
    // Read-only, the name reads like a heading; editable, it looks like the field it is.
    edit->setFrame(editing);
    QPalette colours = palette();
    if (!editing)
        colours.setColor(QPalette::Base, colours.color(QPalette::Window));
    edit->setPalette(colours);
    edit->setCursor(editing ? Qt::IBeamCursor : Qt::PointingHandCursor);
    if (editing)
        edit->selectAll();
    else
        edit->deselect();
}

QString NameForm::fieldText() const
{
    return m_ui->lineEditName->text();
}

void NameForm::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange)
        m_ui->retranslateUi(this);
    QWidget::changeEvent(event);
}
