#pragma once

#include "shell/cbrowserwidget.h"
#include "shell/itranslatable.h"

#include <QTimer>
#include <QWidget>

#include <memory>

class IPortLister;
class QListWidgetItem;
namespace Ui {
class DevicesForm;
}

// The port selection: shown when no bridge was found for a device action. It lists the real
// serial ports and then the virtual CDIs, with the bridges selected, and keeps the list current
// while it shows, so that a bridge plugged in now appears without asking.
class DevicesForm : public QWidget, public CBrowserWidget, public ITranslatable
{
    Q_OBJECT

public:
    // Keeps a lister of its own, made from the one given.
    explicit DevicesForm(const IPortLister &ports, QWidget *parent = nullptr);
    ~DevicesForm() override;

    void setActive(bool active) override;
    void onBack() override;
    void onNext() override;
    void retranslate(int language) override;

    // How often the list is looked at again while the page shows.
    void setPollInterval(int ms) { m_poll.setInterval(ms); }

public slots:
    void onRefreshList();
    void onRetryAutoDetection();
    void onItemClicked(QListWidgetItem *item);

signals:
    void backRequested();
    void portChosen(const QString &portName);

private:
    void pollPorts();
    void explain();

    std::unique_ptr<Ui::DevicesForm> m_ui;
    const std::unique_ptr<const IPortLister> m_ports;
    QTimer m_poll;
    QStringList m_listed;
    // The first bridge listed, selected at the listing.
    QString m_bridge;
};
