#include "editor/chintlabel.h"

#include <QEvent>

#include <algorithm>

CHintLabel::CHintLabel(CHintLabelListener *listener, int width, QWidget *parent)
    : QLabel(parent)
    , m_listener(listener)
    , m_designedWidth(width)
{
    setFixedSize(width, 28);
    setFrameShape(QFrame::Box);
    setFrameShadow(QFrame::Plain);
    setAutoFillBackground(true);
    setAlignment(Qt::AlignCenter);
    QFont labelFont = font();
    labelFont.setPointSize(kPointSize);
    setFont(labelFont);
    setMouseTracking(true);
    installEventFilter(this);
}

void CHintLabel::setHintText(const QString &text)
{
    setText(text);
    // A longer translation first gets a smaller font, so that the label keeps to the room planned
    // for it over the table; only what still does not fit widens the label.
    const int padding = 2 * frameWidth() + 8;
    QFont labelFont = font();
    labelFont.setPointSize(kPointSize);
    while (labelFont.pointSize() > kSmallestPointSize
        && QFontMetrics(labelFont).horizontalAdvance(text) + padding > m_designedWidth)
        labelFont.setPointSize(labelFont.pointSize() - 1);
    setFont(labelFont);
    const int centre = x() + width() / 2;
    setFixedWidth(std::max(m_designedWidth, QFontMetrics(labelFont).horizontalAdvance(text) + padding));
    // It stays centred where it was placed.
    move(centre - width() / 2, y());
}

void CHintLabel::setTextColor(const QColor &color)
{
    QPalette colours = palette();
    colours.setColor(QPalette::WindowText, color);
    setPalette(colours);
}

QColor CHintLabel::textColor() const
{
    return palette().color(QPalette::WindowText);
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
