#include "device/cimagereader.h"

#include "device/deviceframe.h"

CImageReader::CImageReader(DeviceExchange exchange)
    : CCommunicator(exchange, DeviceFrame::kLength)
    , m_request(DeviceFrame::build(DeviceFrame::Read))
{ }

ExchangeResult CImageReader::handleResponse(const QByteArray &frame) const
{
    ExchangeResult read = result(ExchangeResult::Kind::Succeeded);
    read.image = frame;
    return read;
}

bool mayReadBack(const ExchangeResult &programmed)
{
    return programmed.succeeded() && programmed.exchange == DeviceExchange::Program
        && programmed.image.size() > DeviceImage::kFlagsOffset
        && (quint8(programmed.image.at(DeviceImage::kFlagsOffset)) & DeviceFrame::kReimportBit);
}

ExchangeResult readBackVerdict(const ExchangeResult &programmed, const ExchangeResult &readBack)
{
    ExchangeResult verdict = programmed;
    if (!readBack.succeeded()) {
        verdict.kind = ExchangeResult::Kind::ReadBackFailed;
        verdict.readBackFailure = readBack.kind;
        return verdict;
    }
    verdict.differences = imageDifferences(programmed.image, readBack.image);
    if (verdict.differences.empty())
        verdict.readBack = ExchangeResult::ReadBack::Verified;
    else
        verdict.kind = ExchangeResult::Kind::ReadBackDiffers;
    return verdict;
}
