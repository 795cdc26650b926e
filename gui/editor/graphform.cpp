#include "editor/graphform.h"

#include "editor/chintlabel.h"
#include "editor/iprofileeditormain.h"
#include "profile/profile.h"
#include "render/mapplotter.h"

#include "ui_graphform.h"

#include <QMouseEvent>
#include <QPainter>

GraphForm::GraphForm(IProfileEditorMain *editor, QWidget *parent)
    : QWidget(parent)
    , m_ui(std::make_unique<Ui::GraphForm>())
    , m_editor(editor)
    , m_plotter(std::make_unique<MapPlotter>(0, 0))
{
    m_ui->setupUi(this);
    installEventFilter(this);
}

GraphForm::~GraphForm() = default;

void GraphForm::showProfile(Profile *profile, int selected, bool rescale, const MapValidation *validation)
{
    m_profile = profile;
    m_selected = selected;
    if (m_profile)
        m_plotter->drawSingle(*m_profile, m_selected, rescale, true, validation);
    repaint();
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
        return true;
    case QEvent::MouseMove:
        if (m_dragging && m_selected >= 0)
            dragTo(static_cast<QMouseEvent *>(event)->pos());
        return true;
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
}

void GraphForm::dragTo(const QPoint &position)
{
    if (!m_profile || m_selected >= kMapPointCount)
        return;
    const MapPoint target = m_plotter->dragTarget(position, m_profile->sensorCoefficients());
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
    redraw(true);
    repaint();
}

void GraphForm::paintEvent(QPaintEvent *event)
{
    if (m_profile && !m_plotter->image().isNull()) {
        QPainter painter(this);
        painter.drawImage(0, 0, m_plotter->image());
        return;
    }
    QWidget::paintEvent(event);
}
