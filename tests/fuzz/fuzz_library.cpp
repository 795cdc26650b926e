// "default.cds": the factory library the program refuses to start without. What loads must save
// to bytes that load to the same library, but for a text with a zero character, which is cut
// once (see hasZeroCharacter()).
#include "fuzz/fuzztarget.h"

#include "profile/defaultlibrary.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray bytes = fuzzBytes(data, size);
    for (const bool normalStart : {true, false}) {
        const auto reload = [normalStart](const QByteArray &saved) {
            return readBytes(
                saved, [normalStart](QIODevice &device) { return loadDefaultLibrary(device, normalStart); });
        };
        const tl::expected<DefaultLibrary, FileError> library = reload(bytes);
        if (!wasRead(library))
            continue;
        if (library->count() > 0)
            FUZZ_CHECK(library->profileForType(library->profileAt(0)->motorbikeType()) != nullptr);
        const auto &profiles = library->profiles();
        const auto same = [](const DefaultLibrary &a, const DefaultLibrary &b) {
            return a.count() == b.count() && a.libraryValue() == b.libraryValue();
        };
        checkSavesBack(*library, defaultLibraryBytes, reload, same,
            std::any_of(
                profiles.begin(), profiles.end(), [](const Profile &p) { return hasZeroCharacter(p); }));
    }
    return 0;
}
