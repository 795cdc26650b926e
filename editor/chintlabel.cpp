#include "editor/chintlabel.h"

#include <QEvent>

CHintLabel::CHintLabel(CHintLabelListener *listener, int width, QWidget *parent)
    : QLabel(parent)
    , m_listener(listener)
{
    setFixedSize(width, 28);
    setFrameShape(QFrame::Box);
    setFrameShadow(QFrame::Plain);
    setAutoFillBackground(true);
    setAlignment(Qt::AlignCenter);
    QFont labelFont = font();
    labelFont.setPointSize(12);
    setFont(labelFont);
    setMouseTracking(true);
    installEventFilter(this);
}

bool CHintLabel::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == this) {
        switch (event->type()) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseMove:
            if (m_listener)
                m_listener->onHintLabelTouched();
            return true;
        default:
            break;
        }
    }
    return QLabel::eventFilter(watched, event);
}
