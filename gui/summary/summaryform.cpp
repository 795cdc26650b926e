#include "summary/summaryform.h"

#include "render/mapplotter.h"
#include "render/profilesummary.h"

#include "ui_summaryform.h"

#include <QEvent>
#include <QPixmap>

SummaryForm::SummaryForm(int mode, QWidget *parent)
    : QWidget(parent)
    , m_ui(std::make_unique<Ui::Summary>())
    , m_mode(mode)
{
    m_ui->setupUi(this);
    m_plotter = std::make_unique<MapPlotter>(m_ui->graphLabel->width(), m_ui->graphLabel->height());
    m_ui->textEdit->viewport()->setCursor(Qt::ArrowCursor);
    m_ui->notesEdit->viewport()->setCursor(Qt::ArrowCursor);
    m_ui->notesEdit->setVisible(m_mode != kMapOnly);
    installEventFilter(this);
    m_ui->graphLabel->installEventFilter(this);
    refresh();
}

SummaryForm::~SummaryForm() = default;

void SummaryForm::setProfile(const Profile &profile)
{
    m_profile = profile;
    refresh();
}

void SummaryForm::refresh()
{
    m_ui->textEdit->setHtml(summaryMapTableHtml(m_profile));
    m_ui->notesEdit->setPlainText(m_profile.notes());
    m_ui->statusLabel->setText(summaryStatusLine(m_profile));
    drawGraph();
}

// The graph is drawn only while it can be seen: the confirmation page is built at start-up, long
// before it is shown, and its showing draws the graph then.
void SummaryForm::drawGraph()
{
    if (!m_ui->graphLabel->isVisible())
        return;
    const QSize size = m_ui->graphLabel->size();
    if (size != QSize(m_plotter->width(), m_plotter->height()))
        m_plotter->resize(size.width(), size.height(), devicePixelRatioF());
    m_plotter->drawSingle(m_profile, -1, true, true);
    m_ui->graphLabel->setPixmap(
        m_plotter->image().isNull() ? QPixmap() : QPixmap::fromImage(m_plotter->image()));
}

bool SummaryForm::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == this && event->type() == QEvent::LanguageChange)
        refresh();
    else if (watched == m_ui->graphLabel
        && (event->type() == QEvent::Resize || event->type() == QEvent::Show))
        drawGraph();
    return QWidget::eventFilter(watched, event);
}
