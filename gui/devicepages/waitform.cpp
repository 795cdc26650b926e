#include "devicepages/waitform.h"

#include "device/exchangewording.h"
#include "device/serialports.h"
#include "profile/fileerror.h"
#include "shell/iuserprompts.h"
#include "ui_waitform.h"

#include <QClipboard>
#include <QFontDatabase>
#include <QGuiApplication>
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
    connect(m_ui->retryButton, &QPushButton::clicked, this, &WaitForm::retryRequested);
    connect(m_ui->otherPortButton, &QPushButton::clicked, this, &WaitForm::otherPortRequested);
    connect(m_ui->detailsButton, &QToolButton::toggled, this, &WaitForm::onDetailsToggled);
    connect(m_ui->copyButton, &QPushButton::clicked, this,
        [this] { QGuiApplication::clipboard()->setText(details()); });
    // The details are for support: closed until asked for, the bytes in columns.
    m_ui->detailsEdit->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    onDetailsToggled(false);
    wordDetails();
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

void WaitForm::showActivity(DeviceExchange exchange)
{
    // A new action starts its details afresh; the exchanges that follow within it add to them.
    if (exchange != DeviceExchange::Program && exchange != DeviceExchange::ReadBack)
        m_transcripts.clear();
    const ExchangeWords words = activityWords(exchange);
    m_ui->titleLabel->setText(words.title);
    m_ui->textEdit->setHtml(words.text);
    showLook(Look::Busy);
    m_movie->start();
}

void WaitForm::showWaiting()
{
    m_ui->textEdit->setHtml(waitingWords());
}

// A failure without a title of its own keeps the activity's title.
void WaitForm::showResult(const ExchangeResult &result)
{
    const ExchangeWords words = resultWords(result, m_library);
    if (!words.title.isEmpty())
        m_ui->titleLabel->setText(words.title);
    m_ui->textEdit->setHtml(words.text);
    m_movie->stop();
    // Worded here, not in the form, so that they follow a change of language like the result does.
    m_ui->retryButton->setText(tr("&Retry"));
    m_ui->otherPortButton->setText(tr("&Choose another port"));
    showLook(result.succeeded() ? Look::Success : Look::Failure);
    if (result.succeeded()) {
        m_frame = 0;
        m_timer.start();
    }
}

void WaitForm::showCopyNotKept(const FileError &error)
{
    const QString note = tr("A copy of this profile could not be kept among the programmed profiles: %1")
                             .arg(fileErrorText(error));
    m_ui->textEdit->append(QStringLiteral("<p>") + note.toHtmlEscaped() + QStringLiteral("</p>"));
}

void WaitForm::showRefusal(const DeviceRefusal &refusal)
{
    switch (refusal.kind) {
    case DeviceRefusal::Kind::InvalidMap:
        userPrompts().warn(this, tr("Program CDI"), refusalWords(refusal), tr("OK"));
        return;
    case DeviceRefusal::Kind::Busy:
        // Deliberately untranslated, like the rest of this last guard.
        userPrompts().warn(this, QStringLiteral("Error"), refusalWords(refusal), QStringLiteral("OK"));
        return;
    case DeviceRefusal::Kind::CannotOpen:
    case DeviceRefusal::Kind::InUse:
    case DeviceRefusal::Kind::NoPermission:
        userPrompts().warn(this, tr("Connection to the CDI"), refusalWords(refusal), tr("OK"));
        return;
    }
}

// Told again as the exchange goes on; an exchange is known by when its port was opened.
void WaitForm::showTranscript(const ExchangeTranscript &transcript)
{
    if (!m_transcripts.isEmpty() && m_transcripts.constLast().opened == transcript.opened)
        m_transcripts.last() = transcript;
    else
        m_transcripts.append(transcript);
    QString port = tr("Port: %1").arg(portPath(transcript.portName));
    if (!transcript.description.isEmpty())
        port += QStringLiteral(" (%1)").arg(transcript.description);
    m_ui->portLabel->setText(port);
    QStringList texts;
    for (const ExchangeTranscript &each : std::as_const(m_transcripts))
        texts << transcriptText(each);
    m_ui->detailsEdit->setPlainText(texts.join(QLatin1Char('\n')));
}

void WaitForm::onDetailsToggled(bool open)
{
    m_ui->detailsButton->setArrowType(open ? Qt::DownArrow : Qt::RightArrow);
    m_ui->detailsEdit->setVisible(open);
    m_ui->copyButton->setVisible(open);
}

void WaitForm::wordDetails()
{
    m_ui->detailsButton->setText(tr("&Details"));
    m_ui->copyButton->setText(tr("Cop&y"));
    m_ui->detailsEdit->setAccessibleName(tr("Frames exchanged with the CDI"));
    if (!m_transcripts.isEmpty())
        showTranscript(m_transcripts.takeLast());
}

// A result already shown stays in its language; the controls follow the new one.
void WaitForm::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange)
        wordDetails();
    QWidget::changeEvent(event);
}

QString WaitForm::port() const
{
    return m_ui->portLabel->text();
}

QString WaitForm::details() const
{
    return m_ui->detailsEdit->toPlainText();
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
    // Every failure offers the same action again, here or on a port the user picks.
    m_ui->retryButton->setVisible(look == Look::Failure);
    m_ui->otherPortButton->setVisible(look == Look::Failure);
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

void WaitForm::showConfirmationPending()
{
    m_movie->stop();
    m_ui->textEdit->setHtml(confirmationPendingWords());
}
