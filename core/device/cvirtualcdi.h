#pragma once

#include "device/deviceframe.h"
#include "profile/profile.h"

#include <QByteArray>
#include <QObject>
#include <QStringList>

#include <memory>
#include <optional>

class QSocketNotifier;

// A CDI served on the master side of a pseudo-terminal, for trying the device functions and
// for the tests: it answers ping, read and programming requests as a CDI does, or breaks one
// of its answers in a chosen way. The line is the platform's part (cvirtualcdi_posix.cpp);
// Windows has no pseudo-terminals, so there open() says that it cannot serve.
class CVirtualCdi : public QObject
{
    Q_OBJECT
public:
    enum class Fault
    {
        None,
        Silent,
        Short,
        Long,
        BadHeader,
        BadChecksum,
        WrongNonce,
        WrongEcho,
        Slow,
        TooSlow,
        Hangup,
        UnknownType,
        BadValue,
        KeepsOld, // echoes a programming right but keeps the profile it held
        ReadSilent // answers everything but a read
    };
    static std::optional<Fault> faultFromName(const QString &name);
    static QStringList faultNames();

    explicit CVirtualCdi(QObject *parent = nullptr);
    ~CVirtualCdi() override;

    // Opens the pseudo-terminal and announces it to the port list; an error text on failure.
    QString open();
    // The path a serial port opens, such as /dev/pts/4.
    QString portName() const { return m_portName; }

    void setFirmware(const QByteArray &firmware) { m_firmware = firmware.left(DeviceFrame::kFirmwareLength); }
    void setSerialNumber(quint32 serial) { m_serial = serial & 0xFFFFFF; }
    void setProfile(const Profile &profile, bool allowReimport = true);
    void setFault(Fault fault) { m_fault = fault; }
    // How late the "slow" and "too-slow" answers come.
    void setDelays(int slowMs, int tooSlowMs);

    // The line goes dead at once, as when the bridge is pulled out; the CDI comes back on a new
    // pseudo-terminal.
    void hangUp();

    // Bytes 3 to 47 of the last programmed (or given) profile, as a read answer carries them.
    QByteArray storedImage() const { return m_image; }
    bool reimportAllowed() const;

signals:
    // One line per request: what was asked and what was done.
    void requestHandled(const QString &line);
    // After a hang-up the CDI comes back on a fresh pseudo-terminal.
    void portChanged(const QString &portName);

private:
    void onReadable();
    // The requests' bytes as they come off the line, in any pieces.
    void receive(const QByteArray &bytes);
    // False when the line is closed or refuses the bytes.
    bool writeToLine(const QByteArray &bytes);
    void handleFrame(const QByteArray &frame);
    void send(QByteArray answer, const QString &line);
    void closePty();

    QByteArray m_firmware = "1.00";
    quint32 m_serial = 123456;
    QByteArray m_image;
    Fault m_fault = Fault::None;
    int m_slowMs = 2500;
    int m_tooSlowMs = 4500;
    int m_master = -1;
    // Counts the terminals opened. An answer belongs to the terminal its request came on; the
    // master's descriptor cannot tell, since a new terminal may get the number of the last.
    quint64 m_terminal = 0;
    // Held open so the master never sees a hang-up between exchanges.
    int m_slave = -1;
    std::unique_ptr<QSocketNotifier> m_notifier;
    QByteArray m_input;
    QString m_portName;
    QString m_announcement;
};
