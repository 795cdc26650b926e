#include "summary/summaryform.h"

#include "profile/mapvalidation.h"
#include "render/mapdescription.h"
#include "render/mapplotter.h"
#include "render/profilesummary.h"
#include "shell/caccessibility.h"

#include "ui_summaryform.h"

#include <QEvent>
#include <QHeaderView>
#include <QPixmap>
#include <QStyle>
#include <QTableWidgetItem>

#include <algorithm>

SummaryForm::SummaryForm(int mode, QWidget *parent)
    : QWidget(parent)
    , m_ui(std::make_unique<Ui::Summary>())
    , m_mode(mode)
{
    m_ui->setupUi(this);
    m_plotter = std::make_unique<MapPlotter>(m_ui->graphLabel->width(), m_ui->graphLabel->height());
    m_ui->notesEdit->viewport()->setCursor(Qt::ArrowCursor);
    m_ui->mapTable->horizontalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    m_ui->graphLabel->setProperty("accessibleRole", QStringLiteral("graphic"));
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
    const MapValidation validation = validate(m_profile);
    showMap(validation);
    // Empty notes are no box to meet on the way.
    m_ui->notesEdit->setPlainText(m_profile.notes());
    m_ui->notesEdit->setVisible(m_mode != kMapOnly && !m_profile.notes().isEmpty());
    m_ui->statusLabel->setText(summaryStatusLine(m_profile));
    m_ui->graphLabel->setAccessibleName(MapDescription::graphName(m_profile.name()));
    CAccessibility::setDescription(m_ui->graphLabel, MapDescription::describe(m_profile, validation));
    drawGraph();
}

// The ten slots, empty ones included; a value the checker finds fault with stands out in bold
// red with the checker's message, as in the editor's table.
void SummaryForm::showMap(const MapValidation &validation)
{
    QTableWidget *table = m_ui->mapTable;
    table->setHorizontalHeaderLabels({tr("RPM"), tr("Angle")});
    const IgnitionMap &map = m_profile.map();
    for (int row = 0; row < kMapPointCount; ++row) {
        const MapPoint point = map.point(row);
        const QString texts[] = {QString::number(point.rpm), QString::number(point.angle) + QChar(0x00B0)};
        for (int column = 0; column < 2; ++column) {
            auto *item = new QTableWidgetItem(texts[column]);
            item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
            item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
            const QString message = validation.cellMessage(row, column, map);
            if (!message.isEmpty()) {
                QFont bold = table->font();
                bold.setBold(true);
                item->setFont(bold);
                item->setForeground(QColor(0xe0, 0x3c, 0x3c));
                item->setToolTip(message);
            }
            table->setItem(row, column, item);
        }
    }
    // As wide as the widest value a point may hold or its heading, without a horizontal scroll bar.
    QFont bold = table->font();
    bold.setBold(true);
    const QFontMetrics cells(bold);
    const QFontMetrics headings(table->horizontalHeader()->font());
    const QString widest[] = {QString::number(kMaxRpm), QString::number(kMaxAngle) + QChar(0x00B0)};
    int width = 2 * table->frameWidth() + table->verticalHeader()->sizeHint().width()
        + table->style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, table);
    for (int column = 0; column < 2; ++column) {
        const int columnWidth = std::max(cells.horizontalAdvance(widest[column]),
                                    headings.horizontalAdvance(table->horizontalHeaderItem(column)->text()))
            + 16;
        table->setColumnWidth(column, columnWidth);
        width += columnWidth;
    }
    table->setFixedWidth(width);
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
