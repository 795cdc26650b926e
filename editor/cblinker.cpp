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

void CBlinker::start()
{
    m_running = true;
    m_ticks = 0;
    m_blue = false;
    colourLabels(Qt::black);
    for (const QPointer<CHintLabel> &label : qAsConst(m_labels)) {
        if (label) {
            label->show();
            label->raise();
        }
    }
    m_timer->start();
}

void CBlinker::stop()
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
        stop();
        for (const QPointer<CHintLabel> &label : qAsConst(m_labels)) {
            if (label)
                label->hide();
        }
        return;
    }
    if (m_ticks % kTicksPerColour == 0) {
        m_blue = !m_blue;
        colourLabels(m_blue ? QColor(Qt::blue) : QColor(Qt::black));
    }
}

void CBlinker::colourLabels(const QColor &colour)
{
    for (const QPointer<CHintLabel> &label : qAsConst(m_labels)) {
        if (label)
            label->setTextColor(colour);
    }
}
