#include "start/continueform.h"

#include "start/icontinuemain.h"

#include "ui_continueform.h"

ContinueForm::ContinueForm(QWidget *parent)
    : QWidget(parent)
    , m_ui(std::make_unique<Ui::ContinueForm>())
{
    m_ui->setupUi(this);
    connect(m_ui->button, &QPushButton::clicked, this, &ContinueForm::onButtonClicked);
}

ContinueForm::~ContinueForm() = default;

void ContinueForm::setContinueMain(IContinueMain *main)
{
    m_main = main;
}

void ContinueForm::setTexts(const QString &richText, const QString &buttonText)
{
    m_ui->label->setText(richText);
    m_ui->button->setText(buttonText);
}

void ContinueForm::onButtonClicked()
{
    if (m_main)
        m_main->onContinueRequested(*this);
}
