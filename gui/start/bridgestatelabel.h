#pragma once

#include "device/cbridgewatch.h"

#include <QLabel>

// The start page's line on the CDI's bridge: where it is plugged in and, once a connection test
// succeeded there, what the CDI reported. It is kept current while it shows, and the ports are
// left alone while it is hidden or an exchange runs.
class BridgeStateLabel : public QLabel
{
    Q_OBJECT
public:
    explicit BridgeStateLabel(QWidget *parent = nullptr);
    ~BridgeStateLabel() override;

    CBridgeWatch &watch() { return m_watch; }

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void showState();

    CBridgeWatch m_watch;
};
