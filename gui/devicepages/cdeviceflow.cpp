#include "devicepages/cdeviceflow.h"

#include "device/ccalibrator.h"
#include "device/cimporter.h"
#include "device/cpinger.h"
#include "device/serialports.h"
#include "devicepages/devicesform.h"
#include "devicepages/waitform.h"
#include "profile/profilefile.h"
#include "profile/suggestedfilename.h"
#include "shell/iuserprompts.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

CDeviceFlow::CDeviceFlow(const DefaultLibrary *library, const IPortLister &ports, WaitForm &wait,
    DevicesForm &devices, QObject *parent)
    : QObject(parent)
    , m_library(library)
    , m_ports(ports)
    , m_wait(wait)
    , m_devices(devices)
    , m_random(QRandomGenerator::securelySeeded())
    , m_programmedFolder(defaultProgrammedFolder())
{
    m_importDelay.setSingleShot(true);
    m_importDelay.setInterval(1500);
    connect(&m_importDelay, &QTimer::timeout, this, &CDeviceFlow::handOverImport);
    connect(&m_bridge, &CBridgeComm::finished, this, &CDeviceFlow::onFinished);
    connect(&m_wait, &WaitForm::backRequested, this, [this] {
        if (!isBusy()) {
            m_importDelay.stop();
            m_imported.reset();
            emit leaveRequested();
        }
    });
    connect(&m_wait, &WaitForm::nextRequested, this, &CDeviceFlow::onWaitNext);
    connect(&m_devices, &DevicesForm::backRequested, this, [this] {
        m_pending = nullptr;
        emit leaveRequested();
    });
    connect(&m_devices, &DevicesForm::portChosen, this, &CDeviceFlow::startOn);
}

CDeviceFlow::~CDeviceFlow() = default;

QString CDeviceFlow::defaultProgrammedFolder()
{
    return QDir(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation))
        .filePath(QStringLiteral("programmed"));
}

void CDeviceFlow::testConnection()
{
    request([this] { return std::make_unique<CPinger>(m_random); });
}

void CDeviceFlow::importProfile()
{
    // The templates an imported profile is built on; without them there is nothing to build on.
    if (m_library)
        request([this] { return std::make_unique<CImporter>(*m_library, *this); });
}

void CDeviceFlow::program(const Profile &profile, bool allowReimport)
{
    const QString refusal = CCalibrator::refusal(profile);
    if (!refusal.isEmpty()) {
        userPrompts().warn(&m_wait, tr("Program CDI"), refusal, tr("OK"));
        return;
    }
    request([this, profile, allowReimport] {
        m_programming = profile;
        return std::make_unique<CCalibrator>(profile, allowReimport, m_random);
    });
}

// The port that worked last comes first; a bridge found now comes next; else the user chooses.
void CDeviceFlow::request(Factory make)
{
    if (isBusy()) {
        // Deliberately untranslated, like the rest of this last guard.
        userPrompts().warn(&m_wait, QStringLiteral("Error"), QStringLiteral("busy"), QStringLiteral("OK"));
        return;
    }
    m_pending = std::move(make);
    QString portName = m_port;
    if (portName.isEmpty())
        portName = findBridgePort(m_ports);
    if (portName.isEmpty()) {
        emit portSelectionShown();
        return;
    }
    startOn(portName);
}

void CDeviceFlow::startOn(const QString &portName)
{
    if (!m_pending)
        return;
    m_imported.reset();
    m_programming.reset();
    std::unique_ptr<CCommunicator> transaction = m_pending();
    const CBridgeComm::Start start
        = m_bridge.runTransaction(std::move(transaction), portName, m_wait, m_pacing);
    switch (start.refusal) {
    case CBridgeComm::Refusal::None:
        m_pending = nullptr;
        m_port = portName;
        emit busyChanged(true);
        emit progressShown();
        return;
    case CBridgeComm::Refusal::Busy:
        m_programming.reset();
        userPrompts().warn(&m_wait, QStringLiteral("Error"), QStringLiteral("busy"), QStringLiteral("OK"));
        return;
    case CBridgeComm::Refusal::CannotOpen:
        // The action stays pending: the user may retry or pick another port.
        m_programming.reset();
        m_port.clear();
        emit portSelectionShown();
        userPrompts().warn(&m_devices, tr("Connection to the CDI"), start.reason.toHtmlEscaped(), tr("OK"));
        return;
    }
}

void CDeviceFlow::onFinished(bool success)
{
    if (success && m_programming)
        keepProgrammedCopy();
    m_programming.reset();
    if (!success)
        m_imported.reset();
    emit busyChanged(false);
    emit finished(success);
    if (m_imported)
        m_importDelay.start();
}

void CDeviceFlow::acceptImportedProfile(const Profile &profile)
{
    m_imported = profile;
}

void CDeviceFlow::onWaitNext()
{
    if (isBusy())
        return;
    if (m_imported) {
        m_importDelay.stop();
        handOverImport();
        return;
    }
    emit leaveRequested();
}

void CDeviceFlow::handOverImport()
{
    if (!m_imported)
        return;
    const Profile imported = *m_imported;
    m_imported.reset();
    emit importedProfileReady(imported);
}

// A copy of what went into the CDI, so that it can be had back even when the CDI will not give
// it. Every programming keeps its own copy, also two in the same second under the same name.
// Failing to keep it does not spoil the programming that succeeded.
void CDeviceFlow::keepProgrammedCopy()
{
    if (m_programmedFolder.isEmpty() || !QDir().mkpath(m_programmedFolder))
        return;
    const QDir folder(m_programmedFolder);
    const QString stamp = QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd HH-mm-ss"));
    const QString base
        = stamp + QLatin1Char(' ') + suggestedFileName(m_programming->name(), QStringLiteral("profile"));
    QString path = folder.filePath(base + QStringLiteral(".cdi"));
    for (int copy = 2; QFileInfo::exists(path); ++copy)
        path = folder.filePath(QStringLiteral("%1 (%2).cdi").arg(base).arg(copy));
    (void)saveProfileFile(*m_programming, path);
}
