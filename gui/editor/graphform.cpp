#include "editor/graphform.h"

#include "editor/chintlabel.h"
#include "editor/iprofileeditormain.h"
#include "profile/mapvalidation.h"
#include "profile/profile.h"
#include "render/mapdescription.h"
#include "render/mapplotter.h"
#include "shell/caccessibility.h"

#include "ui_graphform.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <cstdlib>

GraphForm::GraphForm(IProfileEditorMain *editor, QWidget *parent)
    : QWidget(parent)
    , m_ui(std::make_unique<Ui::GraphForm>())
    , m_editor(editor)
    , m_plotter(std::make_unique<MapPlotter>(0, 0))
{
    m_ui->setupUi(this);
    installEventFilter(this);
    // The pointer's speed and angle show while it moves, pressed or not; the arrow keys move the
    // selected point once the graph has the focus.
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setProperty("accessibleRole", QStringLiteral("graphic"));
    setAccessibleName(tr("Graph of the ignition map"));
}

GraphForm::~GraphForm() = default;

void GraphForm::showProfile(Profile *profile, int selected, bool rescale, const MapValidation *validation)
{
    m_profile = profile;
    m_selected = selected;
    if (m_profile)
        m_plotter->drawSingle(*m_profile, m_selected, rescale, true, validation);
    // A drag tells where it ended, not every step on the way.
    if (!m_dragging)
        describe(validation);
    repaint();
}

void GraphForm::describe(const MapValidation *validation)
{
    if (!m_profile)
        return;
    CAccessibility::setDescription(this,
        validation ? MapDescription::describe(*m_profile, *validation)
                   : MapDescription::describe(*m_profile));
}

void GraphForm::redraw(bool rescale)
{
    if (m_profile)
        m_plotter->drawSingle(*m_profile, m_selected, rescale, true);
}

void GraphForm::setHintLabel(CHintLabel *label)
{
    m_hintLabel = label;
    if (!m_hintLabel)
        return;
    m_hintLabel->setParent(this);
    centreHintLabel();
}

void GraphForm::hideHintLabel()
{
    if (m_hintLabel)
        m_hintLabel->hide();
}

void GraphForm::centreHintLabel()
{
    if (m_hintLabel)
        // At the top, over the angles no map may reach, not over the curve it is about.
        m_hintLabel->move(width() / 2 - m_hintLabel->width() / 2, 8);
}

bool GraphForm::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != this)
        return QWidget::eventFilter(watched, event);

    switch (event->type()) {
    case QEvent::MouseButtonPress:
        press(static_cast<QMouseEvent *>(event)->pos());
        // After the table took the selection: the arrow keys work on the graph pressed last.
        setFocus(Qt::MouseFocusReason);
        return true;
    case QEvent::MouseMove:
        m_pointer = static_cast<QMouseEvent *>(event)->pos();
        if (m_dragging && m_selected >= 0)
            dragTo(*m_pointer);
        update();
        return true;
    case QEvent::Leave:
        m_pointer.reset();
        update();
        break;
    case QEvent::KeyPress:
        if (moveSelectedPoint(static_cast<QKeyEvent *>(event)->key()))
            return true;
        break;
    case QEvent::MouseButtonRelease:
        finishDrag();
        return true;
    case QEvent::Resize:
        m_plotter->resize(width(), height(), devicePixelRatioF());
        redraw(true);
        centreHintLabel();
        break;
    case QEvent::LanguageChange:
        // "Angle", "RPM" and "Invalid" in the new language; the axes stay.
        setAccessibleName(tr("Graph of the ignition map"));
        describe();
        redraw(false);
        update();
        break;
    default:
        break;
    }
    return QWidget::eventFilter(watched, event);
}

void GraphForm::press(const QPoint &position)
{
    if (!m_profile)
        return;
    const int rpm = m_plotter->xAxis().toValue(position.x());
    const int angle = m_plotter->yAxis().toValue(position.y());
    const int nearest = m_profile->map().nearestPoint(rpm, angle);
    if (nearest < 0)
        return;
    m_editor->onPointSelected(nearest, false);
    m_dragging = true;
    m_pressPixel = position;
    m_pressRpm = m_profile->map().point(nearest).rpm;
    m_sideways = false;
}

void GraphForm::dragTo(const QPoint &position)
{
    if (!m_profile || m_selected >= kMapPointCount)
        return;
    // A hand moving a point up or down wavers a few pixels; the speed follows only a clear move
    // sideways, and then for the rest of the drag.
    constexpr int kSidewaysPixels = 12;
    m_sideways = m_sideways || std::abs(position.x() - m_pressPixel.x()) > kSidewaysPixels;
    const MapPoint target = m_plotter->dragTarget(position, m_profile->sensorCoefficients(),
        m_sideways ? std::nullopt : std::optional<int>(m_pressRpm));
    if (m_profile->map().pointEquals(m_selected, target.rpm, target.angle))
        return;
    IgnitionMap map = m_profile->map();
    map.setPoint(m_selected, target.rpm, target.angle);
    m_profile->setMap(map);
    m_moved = true;
    m_editor->onMapChanged(false);
}

// A whole drag is one step, however many moves it took.
void GraphForm::finishDrag()
{
    m_dragging = false;
    if (m_moved && m_profile)
        m_editor->onEdited(IProfileEditorMain::Edit::Drag, m_selected);
    m_moved = false;
    describe();
    redraw(true);
    repaint();
}

bool GraphForm::moveSelectedPoint(int key)
{
    if (!m_profile || m_selected < 0 || m_selected >= kMapPointCount)
        return false;
    constexpr int kRpmStep = 50; // as a drag snaps
    const MapPoint point = m_profile->map().point(m_selected);
    int rpm = point.rpm;
    int angle = point.angle;
    switch (key) {
    case Qt::Key_Up:
        ++angle;
        break;
    case Qt::Key_Down:
        --angle;
        break;
    case Qt::Key_Left:
        rpm -= kRpmStep;
        break;
    case Qt::Key_Right:
        rpm += kRpmStep;
        break;
    default:
        return false;
    }
    // Held as a drag holds it: speeds within their bounds, angles under the ceiling and above 0.
    rpm = std::clamp(rpm, 0, kMaxRpm);
    angle = std::max(std::min(angle, angleCeiling(m_profile->sensorCoefficients(), rpm)), 0);
    if (rpm == point.rpm && angle == point.angle)
        return true;
    IgnitionMap map = m_profile->map();
    map.setPoint(m_selected, rpm, angle);
    m_profile->setMap(map);
    m_editor->onMapChanged(false);
    m_editor->onEdited(IProfileEditorMain::Edit::Drag, m_selected);
    return true;
}

void GraphForm::paintEvent(QPaintEvent *event)
{
    if (m_profile && !m_plotter->image().isNull()) {
        QPainter painter(this);
        painter.drawImage(0, 0, m_plotter->image());
        // The speed and angle under the pointer, in the top right corner.
        if (m_pointer && rect().contains(*m_pointer)) {
            const QString where = tr("%1 rpm, %2°")
                                      .arg(std::max(m_plotter->xAxis().toValue(m_pointer->x()), 0))
                                      .arg(std::max(m_plotter->yAxis().toValue(m_pointer->y()), 0));
            const QRect box = painter.fontMetrics().boundingRect(where).adjusted(-4, -2, 4, 2);
            const QRect placed = box.translated(width() - box.width() - 8 - box.left(), 24 - box.top());
            painter.fillRect(placed, palette().color(QPalette::ToolTipBase));
            painter.setPen(palette().color(QPalette::ToolTipText));
            painter.drawText(placed, Qt::AlignCenter, where);
        }
        return;
    }
    QWidget::paintEvent(event);
}
