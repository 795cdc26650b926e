#include "device/cimporter.h"

#include "device/deviceframe.h"
#include "device/exchangewording.h"
#include "profile/defaultlibrary.h"
#include "profile/deviceimage.h"

CImporter::CImporter(std::shared_ptr<const DefaultLibrary> library)
    : CCommunicator(DeviceExchange::Import, DeviceFrame::kLength)
    , m_request(DeviceFrame::build(DeviceFrame::Read))
    , m_library(std::move(library))
{ }

ExchangeResult CImporter::handleResponse(const QByteArray &frame) const
{
    const quint8 type = quint8(frame.at(DeviceFrame::kTypeOffset));
    const int index = int(type & 0x7F) - 1;
    const Profile *profileTemplate = m_library ? m_library->profileForType(index) : nullptr;
    if (!profileTemplate) {
        ExchangeResult unknown = result(ExchangeResult::Kind::UnknownType);
        unknown.typeIndex = index;
        return unknown;
    }

    Profile imported = *profileTemplate;
    const QString decodeError = readDeviceImage(frame, type & DeviceImage::kCustomBit, imported);
    if (!decodeError.isEmpty()) {
        ExchangeResult bad = result(ExchangeResult::Kind::BadValue);
        bad.detail = decodeError;
        return bad;
    }
    // The template's name would pass it off as the factory profile it was built on.
    imported.setName(importedProfileName(QDate::currentDate()));
    ExchangeResult read = result(ExchangeResult::Kind::Succeeded);
    read.profile = imported;
    return read;
}
