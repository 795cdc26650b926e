#include "editor/cblinker.h"

#include "editor/chintlabel.h"

#include <QTimer>

CBlinker::CBlinker(QWidget *parent)
    : QWidget(parent)
    , m_timer(new QTimer(this))
{
    // It only keeps time; there is nothing to see of it.
    hide();
    m_timer->setInterval(kTickInterval);
    connect(m_timer, &QTimer::timeout, this, &CBlinker::tick);
}

void CBlinker::setLabels(const QList<CHintLabel *> &labels)
{
    m_labels.clear();
    for (CHintLabel *label : labels)
        m_labels.append(label);
}

void CBlinker::startBlinking()
{
    m_running = true;
    m_ticks = 0;
    m_blue = false;
    colourLabels(false);
    for (const QPointer<CHintLabel> &label : qAsConst(m_labels)) {
        if (label) {
            label->show();
            label->raise();
        }
    }
    m_timer->start();
}

void CBlinker::stopBlinking()
{
    m_running = false;
    m_timer->stop();
}

void CBlinker::tick()
{
    if (!m_running)
        return;
    ++m_ticks;
    if (m_ticks >= kTickCount) {
        stopBlinking();
        for (const QPointer<CHintLabel> &label : qAsConst(m_labels)) {
            if (label)
                label->hide();
        }
        return;
    }
    if (m_ticks % kTicksPerColour == 0) {
        m_blue = !m_blue;
        colourLabels(m_blue);
    }
}

// Black and blue on a light background; under a dark palette a light grey and a light blue, so
// that both keep their contrast on the label's own background.
void CBlinker::colourLabels(bool blue)
{
    for (const QPointer<CHintLabel> &label : qAsConst(m_labels)) {
        if (!label)
            continue;
        const bool dark = label->palette().color(QPalette::Window).lightness() < 128;
        if (blue)
            label->setTextColor(dark ? QColor(0x8A, 0xB4, 0xFF) : QColor(Qt::blue));
        else
            label->setTextColor(dark ? QColor(0xEE, 0xEE, 0xEE) : QColor(Qt::black));
    }
}
