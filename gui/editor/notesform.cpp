#include "editor/notesform.h"

#include "editor/iprofileeditormain.h"

#include "ui_notesform.h"

NotesForm::NotesForm(IProfileEditorMain *editor, QWidget *parent)
    : CInPlaceForm(editor, &IProfileEditorMain::setProfileNotes, parent)
    , m_ui(std::make_unique<Ui::NotesForm>())
{
    m_ui->setupUi(this);
    // The click that starts editing also places the text cursor where it lands.
    setParts({m_ui->plainTextEditNotes, m_ui->plainTextEditNotes->viewport(), m_ui->pushButtonEdit,
        m_ui->pushButtonApply, true});

    connect(m_ui->pushButtonEdit, &QPushButton::clicked, this, [this] {
        setEditing(true);
        m_ui->plainTextEditNotes->moveCursor(QTextCursor::End);
    });
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

void NotesForm::showMode(bool editing)
{
    m_ui->plainTextEditNotes->setReadOnly(!editing);
    m_ui->plainTextEditNotes->viewport()->setCursor(editing ? Qt::IBeamCursor : Qt::PointingHandCursor);
}

QString NotesForm::fieldText() const
{
    return m_ui->plainTextEditNotes->toPlainText();
}
