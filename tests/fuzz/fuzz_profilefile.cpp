// A ".cdi" file as mailed from one rider to another: the container and every record in it.
// A record that reads must write back to bytes that read to the same profile, but for a text
// with a zero character, which is cut once (see hasZeroCharacter()).
#include "tests/fuzz/fuzztarget.h"

#include "profile/container.h"
#include "profile/profilefile.h"
#include "profile/profilerecord.h"

#include <QBuffer>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    QByteArray bytes = fuzzBytes(data, size);
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    const std::optional<Profile> file = readProfileFile(buffer);

    std::optional<RecordCursor> records = readContainer(bytes);
    FUZZ_CHECK(file.has_value() <= (records.has_value() && records->count() > 0));
    while (records && records->hasNext()) {
        const std::optional<Profile> profile = readRecord(records->next());
        if (!profile)
            continue;
        QByteArray written;
        writeRecord(*profile, written);
        const std::optional<Profile> again = readRecord(written);
        FUZZ_CHECK(again.has_value());
        QByteArray rewritten;
        writeRecord(*again, rewritten);
        FUZZ_CHECK(rewritten == written
            || hasZeroCharacter(
                {profile->name(), profile->notes(), profile->extraText(0), profile->extraText(1)}));
        const std::optional<Profile> third = readRecord(rewritten);
        FUZZ_CHECK(third.has_value());
        QByteArray settled;
        writeRecord(*third, settled);
        FUZZ_CHECK(settled == rewritten);
    }
    return 0;
}
