#pragma once

class QGroupBox;
class QWidget;

// A group box's Alt+letter puts the focus into the input the group's title names. Left to
// itself, the box gives the focus to the first control of the focus chain inside it, which may
// be the hint button beside the input: the digits typed next would then be lost.
void sendGroupShortcutTo(QGroupBox *box, QWidget *input);
