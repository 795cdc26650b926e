#pragma once

#include "device/cbridgecomm.h"
#include "device/iimportreceiver.h"
#include "profile/profile.h"

#include <QObject>
#include <QRandomGenerator>
#include <QTimer>

#include <functional>
#include <memory>
#include <optional>

class CCommunicator;
class DefaultLibrary;
class DevicesForm;
class IPortLister;
class WaitForm;

// What happens between a device action chosen in the program and its end: finding the port
// (the one that worked last, else the detected bridge, else the user's choice on the port page),
// running the exchange on the progress page, and what follows a success: the imported profile
// goes to the editor, a programmed one is kept as a copy. The main window only shows the pages
// this flow asks for.
class CDeviceFlow : public QObject, public IImportReceiver
{
    Q_OBJECT

public:
    CDeviceFlow(const DefaultLibrary *library, const IPortLister &ports, WaitForm &wait, DevicesForm &devices,
        QObject *parent = nullptr);
    ~CDeviceFlow() override;

    void testConnection();
    void importProfile();
    void program(const Profile &profile, bool allowReimport);

    bool isBusy() const { return m_bridge.isBusy(); }
    // The port the last exchange opened; the next one starts there.
    QString port() const { return m_port; }
    // Where the next action starts, as if an exchange had just worked there.
    void choosePort(const QString &portName) { m_port = portName; }

    void setPacing(const BridgePacing &pacing) { m_pacing = pacing; }
    // How long a successful import shows its result before the editor opens.
    void setImportDelay(int ms) { m_importDelay.setInterval(ms); }
    // Where a copy of every programmed profile is kept.
    void setProgrammedFolder(const QString &folder) { m_programmedFolder = folder; }
    QString programmedFolder() const { return m_programmedFolder; }
    static QString defaultProgrammedFolder();

    void acceptImportedProfile(const Profile &profile) override;

signals:
    void progressShown();
    void portSelectionShown();
    // The user is done with the device pages: back to where the action was chosen.
    void leaveRequested();
    void importedProfileReady(const Profile &profile);
    void busyChanged(bool busy);
    void finished(bool success);

private:
    using Factory = std::function<std::unique_ptr<CCommunicator>()>;
    void request(Factory make);
    void startOn(const QString &portName);
    void onFinished(bool success);
    void onWaitNext();
    void handOverImport();
    void keepProgrammedCopy();

    const DefaultLibrary *m_library;
    const IPortLister &m_ports;
    WaitForm &m_wait;
    DevicesForm &m_devices;
    CBridgeComm m_bridge;
    BridgePacing m_pacing;
    QRandomGenerator m_random;
    QString m_port;
    Factory m_pending;
    std::optional<Profile> m_imported;
    std::optional<Profile> m_programming;
    QTimer m_importDelay;
    QString m_programmedFolder;
};
