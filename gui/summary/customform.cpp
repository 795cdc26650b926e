#include "summary/customform.h"

#include "summary/summaryform.h"

#include "ui_customform.h"

#include <QEvent>

// The summary takes its texts from the installed translation; the language index is not needed.
CustomForm::CustomForm(CLanguageSwitcher &, QWidget *parent)
    : QWidget(parent)
    , m_ui(std::make_unique<Ui::CustomForm>())
{
    m_ui->setupUi(this);
    m_summary = new SummaryForm(SummaryForm::kWithNotes, this);
    m_ui->summaryLayout->addWidget(m_summary);
    installEventFilter(this);
    showProfile();
}

CustomForm::~CustomForm() = default;

void CustomForm::setProfile(const Profile &profile)
{
    m_profile = profile;
    showProfile();
}

void CustomForm::showProfile()
{
    m_ui->labelName->setText(m_profile.name());
    m_summary->setProfile(m_profile);
}

void CustomForm::setActive(bool active)
{
    setVisible(active);
}

void CustomForm::onBack()
{
    emit backRequested();
}

void CustomForm::onNext()
{
    emit nextRequested();
}

void CustomForm::retranslate(int)
{
    m_ui->retranslateUi(this);
}

bool CustomForm::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == this && event->type() == QEvent::LanguageChange)
        m_ui->retranslateUi(this);
    return QWidget::eventFilter(watched, event);
}
