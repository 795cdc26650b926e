#include "start/bridgestatelabel.h"

#include <QEvent>

BridgeStateLabel::BridgeStateLabel(QWidget *parent)
    : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
    connect(&m_watch, &CBridgeWatch::changed, this, &BridgeStateLabel::showState);
    showState();
}

BridgeStateLabel::~BridgeStateLabel() = default;

void BridgeStateLabel::showEvent(QShowEvent *event)
{
    QLabel::showEvent(event);
    m_watch.startWatching();
}

void BridgeStateLabel::hideEvent(QHideEvent *event)
{
    QLabel::hideEvent(event);
    m_watch.stopWatching();
}

void BridgeStateLabel::changeEvent(QEvent *event)
{
    QLabel::changeEvent(event);
    if (event->type() == QEvent::LanguageChange)
        showState();
}

void BridgeStateLabel::showState()
{
    setText(m_watch.words());
}
