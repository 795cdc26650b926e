// Answers from the CDI, handed to the transactions as the bridge collected them. The first byte
// chooses the transaction (ping, import, programming) and whether the answer gets a valid header
// and checksum, so that the fuzzer reaches the transactions' own checks, not only the frame test;
// the programming transaction also takes its scrambling value from it. Every answer must end in
// a result of the transaction asked, and one that succeeds carries what the transaction reports.
#include "fuzz/fuzztarget.h"

#include "device/ccalibrator.h"
#include "device/cimporter.h"
#include "device/cpinger.h"
#include "device/deviceframe.h"
#include "profile/defaultlibrary.h"

namespace {

std::shared_ptr<const DefaultLibrary> library()
{
    static const auto templates = [] {
        auto made = std::make_shared<DefaultLibrary>();
        for (int type : {0, 1, 5, 126}) {
            Profile profile;
            profile.setMotorbikeType(type, false);
            made->append(profile);
        }
        return std::shared_ptr<const DefaultLibrary>(made);
    }();
    return templates;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    if (size < 1)
        return 0;
    const quint8 choice = data[0];
    QByteArray answer = fuzzBytes(data + 1, size - 1);
    if ((choice & 0x04) && answer.size() > 3) {
        answer[0] = char(0x4D);
        answer[1] = char(0xF6);
        answer[2] = char(0x68);
        DeviceFrame::sealChecksum(answer);
    }

    ExchangeResult result;
    DeviceExchange asked = DeviceExchange::Program;
    switch (choice & 0x03) {
    case 0: {
        CPinger pinger(quint8(choice >> 3));
        asked = DeviceExchange::Ping;
        result = pinger.conclude(answer);
        break;
    }
    case 1: {
        CImporter importer(library());
        asked = DeviceExchange::Import;
        result = importer.conclude(answer);
        break;
    }
    default: {
        Profile profile;
        profile.setMotorbikeType(choice >> 4, choice & 0x08);
        CCalibrator calibrator(profile, choice & 0x80, quint8(choice));
        // The CDI's correct answer is the unscrambled request; give it a chance to be exercised.
        if ((choice & 0x01) && answer.isEmpty())
            answer = calibrator.expectedEcho();
        result = calibrator.conclude(answer);
        break;
    }
    }
    FUZZ_CHECK(result.exchange == asked);
    FUZZ_CHECK(result.profile.has_value() == (result.succeeded() && asked != DeviceExchange::Ping));
    return 0;
}
