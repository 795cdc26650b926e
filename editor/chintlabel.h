#pragma once

#include <QLabel>

// Told when the mouse touches one of the editor's floating hint labels.
class CHintLabelListener
{
public:
    virtual ~CHintLabelListener() = default;
    virtual void onHintLabelTouched() = 0;
};

// A small framed label floating over a table or graph ("Click to edit"). It vanishes as soon as
// the mouse passes over it: every press, release or move is reported to the listener and consumed.
class CHintLabel : public QLabel
{
    Q_OBJECT

public:
    CHintLabel(CHintLabelListener *listener, int width, QWidget *parent = nullptr);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    CHintLabelListener *m_listener;
};
