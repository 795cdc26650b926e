#include "device/cdeviceflow.h"

#include "device/ccalibrator.h"
#include "device/cimagereader.h"
#include "device/cimporter.h"
#include "device/cpinger.h"
#include "device/serialports.h"
#include "profile/defaultlibrary.h"
#include "profile/profilefile.h"
#include "profile/suggestedfilename.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

CDeviceFlow::CDeviceFlow(const DefaultLibrary *library, const IPortLister &ports, QObject *parent)
    : QObject(parent)
    , m_library(library ? std::make_shared<const DefaultLibrary>(*library) : nullptr)
    , m_ports(ports.clone())
    , m_random(QRandomGenerator::securelySeeded())
    , m_programmedFolder(defaultProgrammedFolder())
{
    m_importDelay.setSingleShot(true);
    m_importDelay.setInterval(1500);
    connect(&m_importDelay, &QTimer::timeout, this, &CDeviceFlow::handOverImport);
    connect(&m_bridge, &CBridgeComm::waiting, this, &CDeviceFlow::waiting);
    connect(&m_bridge, &CBridgeComm::finished, this, &CDeviceFlow::onFinished);
    connect(&m_bridge, &CBridgeComm::recorded, this, &CDeviceFlow::recorded);
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
    if (m_library)
        request([this] { return std::make_unique<CImporter>(m_library); });
}

void CDeviceFlow::program(const Profile &profile, bool allowReimport)
{
    if (!CCalibrator::isProgrammable(profile)) {
        emit refused({DeviceRefusal::Kind::InvalidMap, {}, {}, QSerialPort::NoError});
        return;
    }
    request([this, profile, allowReimport] {
        return std::make_unique<CCalibrator>(profile, allowReimport, m_random);
    });
}

void CDeviceFlow::prepareProgramming(const Profile &profile)
{
    if (!CCalibrator::isProgrammable(profile)) {
        emit refused({DeviceRefusal::Kind::InvalidMap, {}, {}, QSerialPort::NoError});
        return;
    }
    if (isBusy()) {
        emit refused({DeviceRefusal::Kind::Busy, {}, {}, QSerialPort::NoError});
        return;
    }
    m_previewProfile = profile;
    request([] { return std::make_unique<CImageReader>(DeviceExchange::ReadHeld); });
}

// On the port the CDI was read on, even when it did not answer: one that keeps its profile to
// itself still takes a new one.
void CDeviceFlow::confirmProgramming(bool allowReimport)
{
    if (isBusy() || !m_previewProfile)
        return;
    const Profile profile = *m_previewProfile;
    m_previewProfile.reset();
    if (!CCalibrator::isProgrammable(profile))
        return;
    m_pending = [this, profile, allowReimport] {
        return std::make_unique<CCalibrator>(profile, allowReimport, m_random);
    };
    portChosen(m_previewPort);
}

void CDeviceFlow::cancelProgramming()
{
    m_previewProfile.reset();
    emit leaveRequested();
}

// The port a CDI answered on last comes first; a bridge found now comes next; else the user chooses.
void CDeviceFlow::request(Factory make)
{
    if (isBusy()) {
        emit refused({DeviceRefusal::Kind::Busy, {}, {}, QSerialPort::NoError});
        return;
    }
    m_pending = std::move(make);
    QString portName = m_port;
    if (portName.isEmpty())
        portName = findBridgePort(*m_ports);
    if (portName.isEmpty()) {
        emit portSelectionShown();
        return;
    }
    portChosen(portName);
}

void CDeviceFlow::portChosen(const QString &portName)
{
    if (!m_pending)
        return;
    m_imported.reset();
    std::unique_ptr<CCommunicator> transaction = m_pending();
    const DeviceExchange exchange = transaction->exchange();
    const tl::expected<void, DeviceRefusal> started
        = m_bridge.runTransaction(std::move(transaction), portName, m_pacing);
    if (started) {
        m_last = std::move(m_pending);
        m_pending = nullptr;
        m_lastPort = portName;
        emit busyChanged(true);
        emit exchangeStarted(exchange);
        return;
    }
    // A port that cannot be opened leaves the action pending: the user may retry or pick another.
    const DeviceRefusal::Kind kind = started.error().kind;
    if (kind != DeviceRefusal::Kind::InvalidMap && kind != DeviceRefusal::Kind::Busy) {
        m_port.clear();
        emit portSelectionShown();
    }
    emit refused(started.error());
}

void CDeviceFlow::leavePortSelection()
{
    m_pending = nullptr;
    emit leaveRequested();
}

namespace {

// A well-formed answer, whatever it says, came from a CDI; silence, noise or a lost port did not.
bool cdiAnswered(ExchangeResult::Kind kind)
{
    switch (kind) {
    case ExchangeResult::Kind::Succeeded:
    case ExchangeResult::Kind::WrongNonce:
    case ExchangeResult::Kind::WrongEcho:
    case ExchangeResult::Kind::UnknownType:
    case ExchangeResult::Kind::BadValue:
    case ExchangeResult::Kind::ReadBackDiffers:
    case ExchangeResult::Kind::ReadBackFailed:
        return true;
    case ExchangeResult::Kind::NoResponse:
    case ExchangeResult::Kind::WrongLength:
    case ExchangeResult::Kind::BadHeader:
    case ExchangeResult::Kind::BadChecksum:
    case ExchangeResult::Kind::PortLost:
        break;
    }
    return false;
}

} // namespace

void CDeviceFlow::onFinished(const ExchangeResult &ended)
{
    // A read back ends the programming it followed: its result is the programming's.
    ExchangeResult result = ended;
    tl::expected<void, FileError> kept;
    if (ended.exchange == DeviceExchange::ReadBack && m_programmed) {
        result = readBackVerdict(*m_programmed, ended);
        kept = m_programmedKept;
        m_programmed.reset();
    }
    // A port nothing answered on is not where the next action should go, even if it worked once.
    if (cdiAnswered(result.kind))
        m_port = m_lastPort;
    else if (m_port == m_lastPort)
        m_port.clear();
    if (result.exchange == DeviceExchange::ReadHeld) {
        finishPreview(result);
        return;
    }
    if (result.succeeded() && ended.exchange == DeviceExchange::Program && result.profile)
        kept = keepProgrammedCopy(*result.profile);
    if (result.exchange == DeviceExchange::Program && result.succeeded()
        && result.readBack == ExchangeResult::ReadBack::NotTried) {
        if (!mayReadBack(result)) {
            result.readBack = ExchangeResult::ReadBack::NotAllowed;
        } else if (m_readBack) {
            m_programmedKept = kept;
            if (startReadBack(result))
                return;
            result.kind = ExchangeResult::Kind::ReadBackFailed;
            result.readBackFailure = ExchangeResult::Kind::PortLost;
        }
    }
    if (result.succeeded() && result.exchange == DeviceExchange::Import)
        m_imported = result.profile;
    emit busyChanged(false);
    emit finished(result);
    if (!kept)
        emit copyNotKept(kept.error());
    if (m_imported)
        m_importDelay.start();
}

void CDeviceFlow::back()
{
    if (isBusy())
        return;
    m_importDelay.stop();
    m_imported.reset();
    emit leaveRequested();
}

void CDeviceFlow::next()
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

void CDeviceFlow::retry()
{
    if (isBusy() || !m_last)
        return;
    m_pending = m_last;
    portChosen(m_lastPort);
}

void CDeviceFlow::chooseAnotherPort()
{
    if (isBusy() || !m_last)
        return;
    m_pending = m_last;
    emit portSelectionShown();
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
// Failing to keep it does not spoil the programming that succeeded, but the user is told.
tl::expected<void, FileError> CDeviceFlow::keepProgrammedCopy(const Profile &programmed) const
{
    if (m_programmedFolder.isEmpty())
        return {};
    if (!QDir().mkpath(m_programmedFolder))
        return tl::make_unexpected(FileError {FileError::Kind::Refused, m_programmedFolder});
    const QDir folder(m_programmedFolder);
    const QString stamp = QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd HH-mm-ss"));
    const QString base
        = stamp + QLatin1Char(' ') + suggestedFileName(programmed.name(), QStringLiteral("profile"));
    QString path = folder.filePath(base + QStringLiteral(".cdi"));
    for (int copy = 2; QFileInfo::exists(path); ++copy)
        path = folder.filePath(QStringLiteral("%1 (%2).cdi").arg(base).arg(copy));
    return saveProfileFile(programmed, path);
}

// Right after the echo, on the same port, before the user is told anything: the exchange goes on.
bool CDeviceFlow::startReadBack(const ExchangeResult &programmed)
{
    m_programmed = programmed;
    if (!m_bridge.runTransaction(
            std::make_unique<CImageReader>(DeviceExchange::ReadBack), m_lastPort, m_pacing)) {
        m_programmed.reset();
        return false;
    }
    emit exchangeStarted(DeviceExchange::ReadBack);
    return true;
}

void CDeviceFlow::finishPreview(const ExchangeResult &read)
{
    if (!m_previewProfile) {
        emit busyChanged(false);
        return;
    }
    ProgrammingPreview preview;
    preview.profile = *m_previewProfile;
    preview.read = read.succeeded();
    preview.readKind = read.kind;
    if (preview.read) {
        // As it would be sent with the choice the question starts with: reimport allowed.
        QByteArray written;
        writeDeviceImage(preview.profile, true, written);
        preview.differences = imageDifferences(read.image, written);
    }
    m_previewPort = m_lastPort;
    emit busyChanged(false);
    QMetaObject::invokeMethod(
        this, [this, preview] { emit programmingPreviewReady(preview); }, Qt::QueuedConnection);
}
