#include "device/cimporter.h"

#include "device/deviceframe.h"
#include "device/iimportreceiver.h"
#include "device/iwaitform.h"
#include "profile/defaultlibrary.h"
#include "profile/deviceimage.h"

#include <QCoreApplication>

namespace {

// The bridge has already tested the answer; this second test keeps the decoder safe whoever
// calls it. The checksum is looked at before the header.
QString bufferProblem(const QByteArray &frame)
{
    if (frame.size() != DeviceFrame::kLength)
        return QStringLiteral("length=") + QString::number(frame.size());
    if (quint8(frame.back()) != DeviceFrame::checksum(frame))
        return QStringLiteral("wrong checksum");
    if (!DeviceFrame::hasHeader(frame))
        return QStringLiteral("invalid header");
    return {};
}

} // namespace

CImporter::CImporter(const DefaultLibrary &library, IImportReceiver &receiver)
    : CCommunicator(1000, DeviceFrame::kLength)
    , m_request(DeviceFrame::build(DeviceFrame::Read))
    , m_library(library)
    , m_receiver(receiver)
{ }

void CImporter::start(IWaitForm &wait)
{
    wait.showActivity(QCoreApplication::translate("QWidget", "Importing"),
        QCoreApplication::translate("QWidget", "Requesting data from CDI"));
}

bool CImporter::handleResponse(const QByteArray &frame, IWaitForm &wait)
{
    const QString failedTitle = QCoreApplication::translate("QWidget", "Import failed");
    const QString problem = bufferProblem(frame);
    if (!problem.isEmpty()) {
        wait.showResult(failedTitle,
            QCoreApplication::translate("QWidget", "Received an invalid response buffer")
                + QStringLiteral(" (") + problem + QStringLiteral(")."),
            false);
        return false;
    }

    const quint8 type = quint8(frame.at(DeviceFrame::kTypeOffset));
    const bool marker = type & DeviceImage::kCustomBit;
    const int index = int(type & 0x7F) - 1;
    const Profile *profileTemplate = m_library.profileForType(index);
    if (!profileTemplate) {
        wait.showResult(failedTitle,
            QCoreApplication::translate(
                "QWidget", "Imported profile data corresponds to an invalid or unknown motorbike type")
                + QStringLiteral(" (index=") + QString::number(index) + QStringLiteral(")."),
            false);
        return false;
    }

    Profile imported = *profileTemplate;
    const QString decodeError = readDeviceImage(frame, marker, imported);
    if (!decodeError.isEmpty()) {
        wait.showResult(failedTitle,
            QCoreApplication::translate("QWidget", "Received invalid profile data ") + QStringLiteral(" (")
                + decodeError + QStringLiteral(")."),
            false);
        return false;
    }

    wait.showResult(QCoreApplication::translate("QWidget", "Import OK"),
        QCoreApplication::translate("QWidget", "Imported profile data will be sent to editor shortly."),
        true);
    m_receiver.acceptImportedProfile(imported);
    return true;
}
