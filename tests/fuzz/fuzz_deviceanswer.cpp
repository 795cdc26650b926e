// Answers from the CDI, handed to the transactions as the bridge collected them. The first byte
// chooses the transaction (ping, import, programming) and whether the answer gets a valid header
// and checksum, so that the fuzzer reaches the transactions' own checks, not only the frame test;
// the programming transaction also takes its scrambling value from it. Every answer must end in
// exactly one reported result, and an import that succeeds must hand over a profile.
#include "fuzz/fuzztarget.h"

#include "device/ccalibrator.h"
#include "device/cimporter.h"
#include "device/cpinger.h"
#include "device/cwaitrecord.h"
#include "device/deviceframe.h"
#include "device/iimportreceiver.h"
#include "profile/defaultlibrary.h"

namespace {

struct ImportKeeper : IImportReceiver
{
    void acceptImportedProfile(const Profile &) override { ++received; }
    int received = 0;
};

const DefaultLibrary &library()
{
    static const DefaultLibrary templates = [] {
        DefaultLibrary made;
        for (int type : {0, 1, 5, 126}) {
            Profile profile;
            profile.setMotorbikeType(type, false);
            made.append(profile);
        }
        return made;
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

    CWaitRecord wait;
    ImportKeeper keeper;
    bool success = false;
    switch (choice & 0x03) {
    case 0: {
        CPinger pinger(quint8(choice >> 3));
        success = pinger.conclude(answer, wait);
        break;
    }
    case 1: {
        CImporter importer(library(), keeper);
        success = importer.conclude(answer, wait);
        FUZZ_CHECK(keeper.received == (success ? 1 : 0));
        break;
    }
    default: {
        Profile profile;
        profile.setMotorbikeType(choice >> 4, choice & 0x08);
        CCalibrator calibrator(profile, choice & 0x80, quint8(choice));
        // The CDI's correct answer is the unscrambled request; give it a chance to be exercised.
        if ((choice & 0x01) && answer.isEmpty())
            answer = calibrator.expectedEcho();
        success = calibrator.conclude(answer, wait);
        break;
    }
    }
    FUZZ_CHECK(wait.hasResult && wait.success == success);
    return 0;
}
