#include "summary/customform.h"

#include "profile/mapvalidation.h"
#include "shell/problemink.h"
#include "summary/summaryform.h"

#include "ui_customform.h"

#include <QEvent>
#include <QLocale>

// The summary takes its texts from the installed translation; the language index is not needed.
CustomForm::CustomForm(CLanguageSwitcher &, QWidget *parent)
    : QWidget(parent)
    , m_ui(std::make_unique<Ui::CustomForm>())
{
    m_ui->setupUi(this);
    setProblemInk(m_ui->problemLabel);
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

// A map the CDI would refuse is named with its problems before anything is asked.
void CustomForm::showProfile()
{
    m_ui->labelName->setText(m_profile.name());
    m_summary->setProfile(m_profile);
    const MapValidation validation = validate(m_profile);
    QStringList rows;
    for (const PointValidation &point : validation.points) {
        if (!point.isValid())
            rows << QString::number(point.index + 1);
    }
    QString text;
    if (rows.size() == 1)
        text = tr("The CDI cannot be programmed with this profile: the values marked in row %1 break "
                  "their limits.")
                   .arg(rows.constFirst());
    else if (!rows.isEmpty())
        text = tr("The CDI cannot be programmed with this profile: the values marked in rows %1 break "
                  "their limits.")
                   .arg(QLocale().createSeparatedList(rows));
    if (validation.notAscending)
        text += (text.isEmpty() ? tr("The CDI cannot be programmed with this profile.") : QString())
            + QLatin1Char(' ') + validation.problems().constLast() + QLatin1Char('.');
    m_ui->problemLabel->setText(text);
    m_ui->problemLabel->setVisible(!text.isEmpty());
    // The rest of each problem, in the checker's words.
    m_ui->problemLabel->setToolTip(validation.problems().join(QLatin1Char('\n')));
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
    showProfile();
}

bool CustomForm::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == this && event->type() == QEvent::LanguageChange) {
        m_ui->retranslateUi(this);
        showProfile();
    }
    return QWidget::eventFilter(watched, event);
}
