#include "start/multigraphform.h"

#include "profile/profilecomparison.h"
#include "render/mapdescription.h"
#include "shell/caccessibility.h"
#include "start/cprofileitem.h"

#include "ui_multigraphform.h"

#include <QEvent>
#include <QHeaderView>
#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QToolTip>

#include <algorithm>
#include <iterator>

namespace {

// A profile's column is as wide as its values need, at least this wide for its name, and never
// wider than the widest; its name takes two lines there.
constexpr int kColumnMinimum = 120;
constexpr int kColumnMaximum = 220;
constexpr int kHeadingLines = 2;
// The line sample beside the name and the header's margins.
constexpr int kHeadingMargin = 36;

// Every speed that some profile uses, once each and in order; the plotter leaves out labels
// that would overlap.
std::vector<int> rpmLabels(const std::vector<PlottedMap> &maps)
{
    std::vector<int> rpms;
    for (const PlottedMap &map : maps) {
        for (int i = 0; i < kMapPointCount; ++i) {
            const MapPoint point = map.profile.map().point(i);
            if (!point.isEmpty())
                rpms.push_back(point.rpm);
        }
    }
    std::sort(rpms.begin(), rpms.end());
    rpms.erase(std::unique(rpms.begin(), rpms.end()), rpms.end());
    return rpms;
}

// The text broken into lines at blanks to fit the width; what does not fit the last line is cut
// in its middle, which keeps the number that tells a duplicate from its twin.
QString wrapped(const QString &text, const QFontMetrics &metrics, int width, int maximumLines)
{
    const QStringList words = text.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    QStringList lines;
    int next = 0;
    while (next < words.size() && lines.size() < maximumLines - 1) {
        QString line = words.at(next++);
        while (next < words.size()
            && metrics.horizontalAdvance(line + QLatin1Char(' ') + words.at(next)) <= width)
            line += QLatin1Char(' ') + words.at(next++);
        lines << line;
    }
    if (next < words.size())
        lines << metrics.elidedText(words.mid(next).join(QLatin1Char(' ')), Qt::ElideMiddle, width);
    return lines.join(QLatin1Char('\n'));
}

} // namespace

MultiGraphForm::MultiGraphForm(QWidget *parent)
    : QWidget(parent)
    , m_ui(std::make_unique<Ui::MultiGraphForm>())
{
    m_ui->setupUi(this);
    m_plotter = std::make_unique<MapPlotter>(m_ui->graphArea->width(), m_ui->graphArea->height());
    m_ui->graphArea->installEventFilter(this);
    m_ui->graphArea->setMouseTracking(true);
    m_ui->splitter->installEventFilter(this);
    m_ui->splitter->setStretchFactor(0, 1);
    m_ui->splitter->setStretchFactor(1, 0);
    QHeaderView *columns = m_ui->valueTable->horizontalHeader();
    columns->setSectionResizeMode(QHeaderView::Fixed);
    columns->setSectionsClickable(false);
    columns->setDefaultAlignment(Qt::AlignCenter);
    QHeaderView *rows = m_ui->valueTable->verticalHeader();
    rows->setSectionResizeMode(QHeaderView::Fixed);
    rows->setDefaultSectionSize(fontMetrics().height() + 4);
    connect(m_ui->limitsBox, &QCheckBox::clicked, this, [this] {
        m_limitsChosen = true;
        render();
    });
}

MultiGraphForm::~MultiGraphForm() = default;

void MultiGraphForm::setMaps(const std::vector<PlottedMap> &maps)
{
    m_maps = maps;
    m_limitsChosen = false;
    setLimitsDefault();
    render();
    fillValueTable();
}

void MultiGraphForm::setShown(int row, bool shown)
{
    if (row < 0 || row >= int(m_maps.size()) || m_maps[size_t(row)].shown == shown)
        return;
    m_maps[size_t(row)].shown = shown;
    setLimitsDefault();
    render();
    fillValueTable();
}

// Limit lines of several profiles crowd the top of the graph; one profile's shaded region does not.
void MultiGraphForm::setLimitsDefault()
{
    if (!m_limitsChosen)
        m_ui->limitsBox->setChecked(shownMaps().size() == 1);
}

std::vector<PlottedMap> MultiGraphForm::shownMaps() const
{
    std::vector<PlottedMap> shown;
    std::copy_if(m_maps.begin(), m_maps.end(), std::back_inserter(shown),
        [](const PlottedMap &map) { return map.shown; });
    return shown;
}

const QImage &MultiGraphForm::image() const
{
    return m_plotter->image();
}

QSize MultiGraphForm::graphSize() const
{
    return m_ui->graphArea->size();
}

PlotDrawing MultiGraphForm::drawing() const
{
    const std::vector<PlottedMap> shown = shownMaps();
    const bool limits = m_ui->limitsBox->isChecked();
    return [shown, limits](MapPlotter &plotter, QPainter &painter) {
        plotter.paintSeveral(painter, shown, rpmLabels(shown), limits);
    };
}

QByteArray MultiGraphForm::valuesCsv() const
{
    std::vector<Profile> profiles;
    for (const PlottedMap &map : shownMaps())
        profiles.push_back(map.profile);
    return comparisonCsv(profiles);
}

void MultiGraphForm::retranslate()
{
    m_ui->retranslateUi(this);
    // The legend takes the list's texts in the new language; the axis titles are translated.
    std::vector<Profile> profiles;
    for (const PlottedMap &map : m_maps)
        profiles.push_back(map.profile);
    const QStringList labels = comparisonLabels(profiles);
    for (size_t i = 0; i < m_maps.size(); ++i)
        m_maps[i].label = labels.value(int(i));
    render();
    fillValueTable();
}

void MultiGraphForm::render()
{
    const QSize size = m_ui->graphArea->size();
    if (size != QSize(m_plotter->width(), m_plotter->height()))
        m_plotter->resize(size.width(), size.height(), devicePixelRatioF());
    m_plotter->drawSeveral(m_maps, rpmLabels(shownMaps()), m_ui->limitsBox->isChecked());
    m_ui->graphArea->update();
    // In words for screen readers: each shown profile's map as its own graph would describe it.
    QStringList described;
    for (const PlottedMap &map : shownMaps())
        described << map.label + QLatin1String(": ") + MapDescription::describe(map.profile);
    CAccessibility::setDescription(m_ui->graphArea, described.join(QLatin1Char('\n')));
}

// One row per point and one column per shown profile, its speed and angle; every profile after
// the first shown gives in brackets its difference to the first shown at the same point.
void MultiGraphForm::fillValueTable()
{
    const std::vector<PlottedMap> shown = shownMaps();
    QTableWidget *table = m_ui->valueTable;
    table->clear();
    table->setRowCount(kMapPointCount);
    table->setColumnCount(int(shown.size()));
    for (int i = 0; i < kMapPointCount; ++i) {
        auto *heading = new QTableWidgetItem(QString::number(i + 1)); // owned by the table
        heading->setToolTip(tr("Point %1").arg(i + 1));
        table->setVerticalHeaderItem(i, heading);
    }
    m_ui->valueHeading->setText(shown.empty()
            ? tr("No profile is shown: tick one in the legend or in the list.")
            : tr("Engine speed (rpm) and advance angle of each point; in brackets the difference to "
                 "the same point of %1.")
                  .arg(shown.front().label));
    m_ui->valueHeading->setToolTip(shown.empty() ? QString() : shown.front().label);

    const QString degree(QChar(0x00B0));
    const QFontMetrics headingMetrics(table->horizontalHeader()->font());
    for (int p = 0; p < int(shown.size()); ++p) {
        const IgnitionMap &map = shown[size_t(p)].profile.map();
        const IgnitionMap &first = shown.front().profile.map();
        int width = 0;
        for (int i = 0; i < kMapPointCount; ++i) {
            const MapPoint point = map.point(i);
            const MapPoint reference = first.point(i);
            const QString text = comparedValueText(point.rpm, reference.rpm, QString()) + QLatin1String(", ")
                + comparedValueText(point.angle, reference.angle, degree);
            auto *cell = new QTableWidgetItem(text); // owned by the table
            cell->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
            table->setItem(i, p, cell);
            width = std::max(width, table->fontMetrics().horizontalAdvance(text));
        }
        // The narrowest column from the values' width on whose two lines the name fits whole.
        const QString &label = shown[size_t(p)].label;
        width = std::clamp(width + 16, kColumnMinimum, kColumnMaximum);
        while (width < kColumnMaximum
            && wrapped(label, headingMetrics, width - kHeadingMargin, kHeadingLines).contains(QChar(0x2026)))
            width += 10;
        table->setColumnWidth(p, width);
        auto *heading = new QTableWidgetItem(CProfileItem::sample(shown[size_t(p)].paletteIndex),
            wrapped(label, headingMetrics, width - kHeadingMargin, kHeadingLines)); // owned by the table
        heading->setToolTip(label);
        table->setHorizontalHeaderItem(p, heading);
    }
    fitSplitter();
}

// The table keeps room for all ten points as long as the graph keeps some room of its own; the
// graph takes what is left.
void MultiGraphForm::fitSplitter()
{
    QTableWidget *table = m_ui->valueTable;
    table->horizontalHeader()->setMinimumHeight(0);
    const int tableHeight = table->horizontalHeader()->sizeHint().height()
        + kMapPointCount * table->verticalHeader()->defaultSectionSize()
        + table->horizontalScrollBar()->sizeHint().height() + 2 * table->frameWidth();
    const QWidget *header = m_ui->valueHeader;
    const int headerHeight = header->hasHeightForWidth() ? header->heightForWidth(m_ui->values->width())
                                                         : header->sizeHint().height();
    const int needed = headerHeight + m_ui->valuesLayout->spacing()
        + m_ui->valuesLayout->contentsMargins().top() + tableHeight;
    const int total = m_ui->splitter->height() - m_ui->splitter->handleWidth();
    const int graphMinimum = m_ui->graphArea->minimumHeight();
    const int values = std::min(needed, std::max(total - graphMinimum, m_ui->values->minimumHeight()));
    m_ui->splitter->setSizes({std::max(total - values, graphMinimum), values});
}

bool MultiGraphForm::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_ui->splitter && event->type() == QEvent::Resize) {
        fitSplitter();
    } else if (watched == m_ui->graphArea) {
        switch (event->type()) {
        case QEvent::Resize:
            render();
            break;
        case QEvent::Paint: {
            QPainter painter(m_ui->graphArea);
            painter.drawImage(QPoint(0, 0), m_plotter->image());
            return true;
        }
        case QEvent::MouseButtonPress: {
            const auto *mouse = static_cast<QMouseEvent *>(event);
            const int row = mouse->button() == Qt::LeftButton ? m_plotter->legendEntryAt(mouse->pos()) : -1;
            if (row >= 0) {
                const bool shown = !m_maps[size_t(row)].shown;
                setShown(row, shown);
                emit shownChanged(row, shown);
                return true;
            }
            break;
        }
        case QEvent::MouseMove: {
            const bool overEntry = m_plotter->legendEntryAt(static_cast<QMouseEvent *>(event)->pos()) >= 0;
            m_ui->graphArea->setCursor(overEntry ? Qt::PointingHandCursor : Qt::ArrowCursor);
            break;
        }
        case QEvent::ToolTip: {
            const auto *help = static_cast<QHelpEvent *>(event);
            const int row = m_plotter->legendEntryAt(help->pos());
            if (row >= 0) {
                const PlottedMap &map = m_maps[size_t(row)];
                QToolTip::showText(help->globalPos(),
                    map.label + QLatin1Char('\n')
                        + (map.shown ? tr("Click to hide this profile.") : tr("Click to show this profile.")),
                    m_ui->graphArea);
            } else {
                QToolTip::hideText();
                event->ignore();
            }
            return true;
        }
        default:
            break;
        }
    }
    return QWidget::eventFilter(watched, event);
}
