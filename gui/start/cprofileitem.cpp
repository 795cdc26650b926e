#include "start/cprofileitem.h"

#include "profile/profilecomparison.h"
#include "render/mapplotter.h"

#include <QIcon>
#include <QPainter>
#include <QPixmap>

CProfileItem::CProfileItem(const Profile &profile, int paletteIndex)
    : m_profile(profile)
    , m_paletteIndex(paletteIndex)
{
    setFlags(flags() | Qt::ItemIsUserCheckable);
    setCheckState(Qt::Checked);
    setIcon(sample(paletteIndex));
    retranslate();
}

void CProfileItem::retranslate()
{
    setText(profileListText(m_profile));
    setToolTip(text());
}

QIcon CProfileItem::sample(int paletteIndex)
{
    // Drawn at twice the size, so that it stays sharp on a high-resolution screen.
    QPixmap pixmap(48, 32);
    pixmap.fill(Qt::transparent);
    {
        QPainter painter(&pixmap);
        painter.setRenderHint(QPainter::Antialiasing, true);
        QPen pen(MapPlotter::paletteColor(paletteIndex), 5, MapPlotter::paletteLineStyle(paletteIndex));
        pen.setCapStyle(Qt::FlatCap);
        painter.setPen(pen);
        painter.drawLine(QPointF(0, 16), QPointF(48, 16));
        painter.setPen(QPen(MapPlotter::paletteColor(paletteIndex).darker(160), 2));
        painter.setBrush(MapPlotter::paletteColor(paletteIndex));
        painter.drawEllipse(QPointF(24, 16), 7, 7);
    }
    return QIcon(pixmap);
}
