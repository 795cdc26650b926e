#include "start/multigraphform.h"

#include "profile/profilecomparison.h"
#include "render/mapplotter.h"

#include "ui_multigraphform.h"

#include <QEvent>
#include <QHeaderView>
#include <QPainter>

#include <algorithm>

namespace {

constexpr int kLabelColumn = 0;
constexpr int kQuantityColumn = 1;
constexpr int kFirstSlotColumn = 2;
constexpr int kRowsPerProfile = 2;
// A long profile name is elided in the middle, keeping the number of a duplicate, rather than
// pushing the slots out of sight.
constexpr int kLabelColumnMaximum = 200;

// Every speed that some profile uses, once each and in order; the plotter leaves out labels
// that would overlap.
std::vector<int> rpmLabels(const std::vector<Profile> &profiles)
{
    std::vector<int> rpms;
    for (const Profile &profile : profiles) {
        for (int i = 0; i < kMapPointCount; ++i) {
            const MapPoint point = profile.map().point(i);
            if (!point.isEmpty())
                rpms.push_back(point.rpm);
        }
    }
    std::sort(rpms.begin(), rpms.end());
    rpms.erase(std::unique(rpms.begin(), rpms.end()), rpms.end());
    return rpms;
}

QTableWidgetItem *cell(const QString &text, Qt::Alignment alignment)
{
    auto *item = new QTableWidgetItem(text); // owned by the table it is put into
    item->setTextAlignment(alignment | Qt::AlignVCenter);
    return item;
}

} // namespace

MultiGraphForm::MultiGraphForm(QWidget *parent)
    : QWidget(parent)
    , m_ui(std::make_unique<Ui::MultiGraphForm>())
{
    m_ui->setupUi(this);
    m_plotter = std::make_unique<MapPlotter>(m_ui->graphArea->width(), m_ui->graphArea->height());
    m_ui->graphArea->installEventFilter(this);
    m_ui->valueTable->verticalHeader()->setVisible(false);
    m_ui->valueTable->setTextElideMode(Qt::ElideMiddle);
    m_ui->valueTable->horizontalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    m_ui->valueTable->horizontalHeader()->setSectionsClickable(false);
}

MultiGraphForm::~MultiGraphForm() = default;

void MultiGraphForm::setProfiles(const std::vector<Profile> &profiles)
{
    m_profiles = profiles;
    render();
    fillValueTable();
}

const QImage &MultiGraphForm::image() const
{
    return m_plotter->image();
}

QSize MultiGraphForm::graphSize() const
{
    return m_ui->graphArea->size();
}

void MultiGraphForm::retranslate()
{
    m_ui->retranslateUi(this);
    render(); // the axis titles and the legend's kinds are translated
    fillValueTable();
}

void MultiGraphForm::render()
{
    const QSize size = m_ui->graphArea->size();
    if (size != QSize(m_plotter->width(), m_plotter->height()))
        m_plotter->resize(size.width(), size.height(), devicePixelRatioF());
    m_plotter->drawSeveral(m_profiles, rpmLabels(m_profiles), comparisonLabels(m_profiles));
    m_ui->graphArea->update();
}

// Two rows per profile, engine speeds and angles, the ten slots side by side; every profile
// after the first shows its differences to the first.
void MultiGraphForm::fillValueTable()
{
    QTableWidget *table = m_ui->valueTable;
    table->clear();
    table->clearSpans();
    QStringList headers {tr("Profile"), QString()};
    for (int slot = 1; slot <= kMapPointCount; ++slot)
        headers << QString::number(slot);
    table->setColumnCount(headers.size());
    table->setHorizontalHeaderLabels(headers);
    table->setRowCount(int(m_profiles.size()) * kRowsPerProfile);

    const QStringList labels = comparisonLabels(m_profiles);
    const QString degree(QChar(0x00B0));
    for (int p = 0; p < int(m_profiles.size()); ++p) {
        const int row = p * kRowsPerProfile;
        const IgnitionMap &map = m_profiles[size_t(p)].map();
        const IgnitionMap &first = m_profiles.front().map();
        QTableWidgetItem *label = cell(labels.at(p), Qt::AlignLeft);
        label->setForeground(MapPlotter::paletteColor(p));
        label->setToolTip(labels.at(p));
        table->setItem(row, kLabelColumn, label);
        table->setSpan(row, kLabelColumn, kRowsPerProfile, 1);
        table->setItem(row, kQuantityColumn, cell(tr("RPM"), Qt::AlignLeft));
        table->setItem(row + 1, kQuantityColumn, cell(tr("Angle"), Qt::AlignLeft));
        for (int i = 0; i < kMapPointCount; ++i) {
            const MapPoint point = map.point(i);
            const MapPoint reference = p == 0 ? point : first.point(i);
            table->setItem(row, kFirstSlotColumn + i,
                cell(comparedValueText(point.rpm, reference.rpm, QString()), Qt::AlignRight));
            table->setItem(row + 1, kFirstSlotColumn + i,
                cell(comparedValueText(point.angle, reference.angle, degree), Qt::AlignRight));
        }
    }
    table->resizeColumnsToContents();
    table->setColumnWidth(kLabelColumn, std::min(table->columnWidth(kLabelColumn), kLabelColumnMaximum));
    table->resizeRowsToContents();
}

bool MultiGraphForm::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_ui->graphArea) {
        if (event->type() == QEvent::Resize) {
            render();
        } else if (event->type() == QEvent::Paint) {
            QPainter painter(m_ui->graphArea);
            painter.drawImage(QPoint(0, 0), m_plotter->image());
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}
