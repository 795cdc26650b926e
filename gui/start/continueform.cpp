#include "start/continueform.h"

#include "ui_continueform.h"

ContinueForm::ContinueForm(QWidget *parent)
    : QWidget(parent)
{ }

ContinueForm::~ContinueForm() = default;

void ContinueForm::setTexts(const QString &richText, const QString &buttonText)
{
    // The panel is hidden until there is a profile to name, which most starts do not have:
    // its form is built then.
    if (!m_ui) {
        m_ui = std::make_unique<Ui::ContinueForm>();
        m_ui->setupUi(this);
        connect(m_ui->button, &QPushButton::clicked, this, &ContinueForm::continueRequested);
    }
    m_ui->label->setText(richText);
    m_ui->button->setText(buttonText);
}
