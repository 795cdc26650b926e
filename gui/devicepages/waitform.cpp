#include "devicepages/waitform.h"

#include "ui_waitform.h"

#include <QMovie>

namespace {
// After a success the tick mark blinks between its two drawings this many times, then stays.
constexpr int kBlinks = 6;
} // namespace

WaitForm::WaitForm(QWidget *parent)
    : QWidget(parent)
    , m_ui(std::make_unique<Ui::WaitForm>())
    , m_movie(new QMovie(QStringLiteral(":/Images/work.gif"), QByteArray(), this))
{
    m_ui->setupUi(this);
    m_ui->imageLabel->setMovie(m_movie);
    m_timer.setInterval(300);
    connect(&m_timer, &QTimer::timeout, this, &WaitForm::onTimer);
    showLook(Look::Busy);
    m_movie->stop();
}

WaitForm::~WaitForm() = default;

void WaitForm::setActive(bool active)
{
    setVisible(active);
}

void WaitForm::onBack()
{
    emit backRequested();
}

void WaitForm::onNext()
{
    emit nextRequested();
}

void WaitForm::showActivity(const QString &title, const QString &text)
{
    m_ui->titleLabel->setText(title);
    m_ui->textEdit->setHtml(text);
    showLook(Look::Busy);
    m_movie->start();
}

void WaitForm::showStatus(const QString &text)
{
    m_ui->textEdit->setHtml(text);
}

// A failure without a title of its own keeps the activity's title.
void WaitForm::showResult(const QString &title, const QString &text, bool success)
{
    if (!title.isEmpty())
        m_ui->titleLabel->setText(title);
    m_ui->textEdit->setHtml(text);
    m_movie->stop();
    showLook(success ? Look::Success : Look::Failure);
    if (success) {
        m_frame = 0;
        m_timer.start();
    }
}

QString WaitForm::title() const
{
    return m_ui->titleLabel->text();
}

QString WaitForm::text() const
{
    return m_ui->textEdit->toPlainText();
}

void WaitForm::showLook(Look look)
{
    m_look = look;
    m_timer.stop();
    m_ui->imageLabel->setVisible(look == Look::Busy);
    m_ui->okLabel->setVisible(look == Look::Success);
    m_ui->okLabel2->setVisible(false);
    m_ui->failLabel->setVisible(look == Look::Failure);
}

void WaitForm::onTimer()
{
    ++m_frame;
    const bool second = m_frame % 2 == 1 && m_frame < 2 * kBlinks;
    m_ui->okLabel->setVisible(!second);
    m_ui->okLabel2->setVisible(second);
    if (m_frame >= 2 * kBlinks)
        m_timer.stop();
}
