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

#include <algorithm>

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

    // 0 ping, 1 import, 2 and 3 programming.
    const int kind = std::min(choice & 0x03, 2);
    Profile profile;
    profile.setMotorbikeType(choice >> 4, choice & 0x08);
    const CCalibrator calibrator(profile, choice & 0x80, quint8(choice));
    // The CDI's correct answer is the unscrambled request; give it a chance to be exercised.
    if (kind == 2 && (choice & 0x01) && answer.isEmpty())
        answer = calibrator.expectedEcho();
    const ExchangeResult result = kind == 0 ? CPinger(quint8(choice >> 3)).conclude(answer)
        : kind == 1                         ? CImporter(library()).conclude(answer)
                                            : calibrator.conclude(answer);
    const DeviceExchange asked = kind == 0 ? DeviceExchange::Ping
        : kind == 1                        ? DeviceExchange::Import
                                           : DeviceExchange::Program;
    FUZZ_CHECK(result.exchange == asked);
    FUZZ_CHECK(result.profile.has_value() == (result.succeeded() && asked != DeviceExchange::Ping));
    return 0;
}
