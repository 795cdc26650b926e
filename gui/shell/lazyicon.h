#pragma once

#include <QIcon>
#include <QString>

// An icon whose pictures (the file and its @2x companion) are read when it is first drawn or
// measured rather than when it is made. Most of the program's icons sit in menus that many runs
// never open; reading them all for the first window made the start measurably slower. Qt 5 reads
// them at once.
QIcon lazyIcon(const QString &fileName);
