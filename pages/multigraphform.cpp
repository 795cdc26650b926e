#include "pages/multigraphform.h"

#include "editor/mapplotter.h"

#include "ui_multigraphform.h"

#include <QPainter>

#include <algorithm>

namespace {

// Width of the axis strips, as in the editor's graph; it keeps the legend clear of the speed labels.
constexpr int kMargin = 16;

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

} // namespace

MultiGraphForm::MultiGraphForm(QWidget *parent)
    : QWidget(parent)
    , m_ui(std::make_unique<Ui::MultiGraphForm>())
{
    m_ui->setupUi(this);
    m_plotter = std::make_unique<MapPlotter>(width(), height(), kMargin);
}

MultiGraphForm::~MultiGraphForm() = default;

void MultiGraphForm::setProfiles(const std::vector<Profile> &profiles)
{
    m_profiles = profiles;
    render();
}

const QImage &MultiGraphForm::image() const
{
    return m_plotter->image();
}

void MultiGraphForm::retranslate()
{
    m_ui->retranslateUi(this);
    render(); // the axis titles are translated
}

void MultiGraphForm::render()
{
    if (size() != QSize(m_plotter->width(), m_plotter->height()))
        m_plotter->resize(width(), height());
    m_plotter->drawSeveral(m_profiles, rpmLabels(m_profiles));
    update();
}

void MultiGraphForm::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    render();
}

void MultiGraphForm::paintEvent(QPaintEvent *event)
{
    Q_UNUSED(event)
    QPainter painter(this);
    painter.drawImage(QPoint(0, 0), m_plotter->image());
}
