// "default.cds": the factory library the program refuses to start without. What loads must save
// to bytes that load to the same library, but for a text with a zero character, which is cut
// once (see hasZeroCharacter()).
#include "fuzz/fuzztarget.h"

#include "profile/defaultlibrary.h"

namespace {

std::unique_ptr<DefaultLibrary> reload(const QByteArray &bytes)
{
    return readBytes(bytes, [](QIODevice &device) { return loadDefaultLibrary(device); });
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    QByteArray bytes = fuzzBytes(data, size);
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    for (const bool normalStart : {true, false}) {
        buffer.seek(0);
        const std::unique_ptr<DefaultLibrary> library = loadDefaultLibrary(buffer, normalStart);
        if (!library)
            continue;
        if (library->count() > 0)
            FUZZ_CHECK(library->profileForType(library->profileAt(0)->motorbikeType()) != nullptr);
        bool cut = false;
        for (const Profile &profile : library->profiles())
            cut = cut
                || hasZeroCharacter(
                    {profile.name(), profile.notes(), profile.extraText(0), profile.extraText(1)});
        checkSavesBack(
            *library, [](const DefaultLibrary &saved) { return defaultLibraryBytes(saved); }, reload,
            [](const DefaultLibrary &a, const DefaultLibrary &b) {
                return a.count() == b.count() && a.libraryValue() == b.libraryValue();
            },
            cut);
    }
    return 0;
}
