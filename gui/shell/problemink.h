#pragma once

#include <QColor>
#include <QLabel>
#include <QPalette>

// A problem is told in red, a lighter red on a dark palette, so that it reads on either.
inline void setProblemInk(QLabel *label)
{
    QPalette palette = label->palette();
    const bool dark = palette.color(QPalette::Window).lightness() < 128;
    palette.setColor(QPalette::WindowText, dark ? QColor(255, 130, 130) : QColor(170, 20, 20));
    label->setPalette(palette);
}
