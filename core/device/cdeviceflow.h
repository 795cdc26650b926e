#pragma once

#include "device/cbridgecomm.h"
#include "device/exchangeresult.h"
#include "profile/fileerror.h"
#include "profile/profile.h"

#include <QObject>
#include <QRandomGenerator>
#include <QTimer>

#include <functional>
#include <memory>
#include <optional>

class CCommunicator;
class DefaultLibrary;
class IPortLister;

// What happens between a device action chosen in the program and its end: finding the port
// (the last one a CDI answered on, else the detected bridge, else the user's choice on the port page),
// running the exchange, and what follows a success: the imported profile goes to the editor, a
// programmed one is kept as a copy. It knows nothing of widgets: it tells the pages by its signals
// what to show, and the pages tell it by back(), next(), portChosen() and leavePortSelection()
// what the user did.
class CDeviceFlow : public QObject
{
    Q_OBJECT

public:
    // Keeps copies of the templates (imports build on them; without them there is no import) and
    // a lister of its own, so that nothing given has to outlive the flow.
    CDeviceFlow(const DefaultLibrary *library, const IPortLister &ports, QObject *parent = nullptr);
    ~CDeviceFlow() override;

    void testConnection();
    void importProfile();
    void program(const Profile &profile, bool allowReimport);
    // Reads what the CDI holds and offers what programming would change (programmingPreviewReady);
    // the user's answer comes by confirmProgramming() or cancelProgramming().
    void prepareProgramming(const Profile &profile);
    void confirmProgramming(bool allowReimport);
    void cancelProgramming();

    // From the progress page, once the exchange has ended.
    void back();
    void next();
    // After a failure: the same action again on the same port, or on one the user picks.
    void retry();
    void chooseAnotherPort();
    // From the port page.
    void portChosen(const QString &portName);
    void leavePortSelection();

    bool isBusy() const { return m_bridge.isBusy(); }
    // The last port a CDI answered on; the next action starts there. A port that merely opened is
    // not kept: a wrong choice would otherwise take every later action there too.
    QString port() const { return m_port; }
    // Where the next action starts, as if a CDI had just answered there.
    void choosePort(const QString &portName) { m_port = portName; }

    void setPacing(const BridgePacing &pacing) { m_pacing = pacing; }
    // How long a successful import shows its result before the editor opens.
    void setImportDelay(int ms) { m_importDelay.setInterval(ms); }
    // Where a copy of every programmed profile is kept.
    void setProgrammedFolder(const QString &folder) { m_programmedFolder = folder; }
    QString programmedFolder() const { return m_programmedFolder; }
    static QString defaultProgrammedFolder();
    // A programming that allows reimporting is read back at once and compared with what was sent.
    void setReadBack(bool readBack) { m_readBack = readBack; }

signals:
    void portSelectionShown();
    // The exchange has started: the progress page shows it.
    void exchangeStarted(DeviceExchange exchange);
    void waiting();
    void finished(const ExchangeResult &result);
    // After the result of a programming: its copy could not be kept.
    void copyNotKept(const FileError &error);
    // The action did not start; a refused port also shows the port page again.
    void refused(const DeviceRefusal &refusal);
    // The user is done with the device pages: back to where the action was chosen.
    void leaveRequested();
    void importedProfileReady(const Profile &profile);
    void busyChanged(bool busy);
    // What went over the line so far, from the opening of the port on.
    void recorded(const ExchangeTranscript &transcript);
    // The CDI was read before programming: the user decides now. Never from within the exchange's
    // end, so that a modal question may be asked here.
    void programmingPreviewReady(const ProgrammingPreview &preview);

private:
    using Factory = std::function<std::unique_ptr<CCommunicator>()>;
    void request(Factory make);
    void onFinished(const ExchangeResult &result);
    void handOverImport();
    tl::expected<void, FileError> keepProgrammedCopy(const Profile &programmed) const;
    bool startReadBack(const ExchangeResult &programmed);
    void finishPreview(const ExchangeResult &read);

    const std::shared_ptr<const DefaultLibrary> m_library;
    const std::unique_ptr<const IPortLister> m_ports;
    CBridgeComm m_bridge;
    BridgePacing m_pacing;
    QRandomGenerator m_random;
    QString m_port;
    Factory m_pending;
    // The action that ran last and its port, for Retry and for choosing another port.
    Factory m_last;
    QString m_lastPort;
    std::optional<Profile> m_imported;
    QTimer m_importDelay;
    QString m_programmedFolder;
    bool m_readBack = true;
    // Read before programming: the profile the user is asked about, and the port it was read on.
    std::optional<Profile> m_previewProfile;
    QString m_previewPort;
    // A programming whose read back runs, and whether its copy was kept.
    std::optional<ExchangeResult> m_programmed;
    tl::expected<void, FileError> m_programmedKept;
};
