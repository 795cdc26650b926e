#include "start/continueform.h"

#include "ui_continueform.h"

ContinueForm::ContinueForm(QWidget *parent)
    : QWidget(parent)
    , m_ui(std::make_unique<Ui::ContinueForm>())
{
    m_ui->setupUi(this);
    connect(m_ui->button, &QPushButton::clicked, this, &ContinueForm::continueRequested);
}

ContinueForm::~ContinueForm() = default;

void ContinueForm::setTexts(const QString &richText, const QString &buttonText)
{
    m_ui->label->setText(richText);
    m_ui->button->setText(buttonText);
}
