// A ".cdi" file as mailed from one rider to another: the container and every record in it.
// A record that reads must write back to bytes that read to the same profile, but for a text
// with a zero character, which is cut once (see hasZeroCharacter()).
#include "fuzz/fuzztarget.h"

#include "profile/container.h"
#include "profile/profilefile.h"
#include "profile/profilerecord.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray bytes = fuzzBytes(data, size);
    const bool fileRead
        = wasRead(readBytes(bytes, [](QIODevice &device) { return readProfileFile(device); }));

    tl::expected<RecordCursor, FileError> records = readContainer(bytes);
    FUZZ_CHECK(wasRead(records) >= fileRead);
    while (records && records->hasNext()) {
        const tl::expected<Profile, FileError> profile = readRecord(records->next());
        if (!wasRead(profile))
            continue;
        const auto save = [](const Profile &record) {
            QByteArray written;
            writeRecord(record, written);
            return written;
        };
        checkSavesBack(
            *profile, save, readRecord, [](const Profile &, const Profile &) { return true; },
            hasZeroCharacter(*profile));
    }
    return 0;
}
