// "hints.cdh": the editor's help texts. What loads must save to bytes that load the same, but
// for a text with a zero character, which is cut once (see hasZeroCharacter()).
#include "fuzz/fuzztarget.h"

#include "profile/hintcatalog.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const auto reload = [](const QByteArray &bytes) { return readBytes(bytes, loadHintCatalog); };
    const tl::expected<HintCatalog, FileError> catalog = reload(fuzzBytes(data, size));
    if (!wasRead(catalog))
        return 0;
    bool cut = false;
    for (int index = -1; index <= catalog->count(); ++index) {
        for (int language = -1; language <= HintCatalog::kLanguageCount; ++language) {
            const HintText hint = catalog->hint(index, language);
            cut = cut || hasZeroCharacter({hint.title, hint.text});
        }
    }
    const auto same = [](const HintCatalog &a, const HintCatalog &b) { return a.count() == b.count(); };
    checkSavesBack(*catalog, hintCatalogBytes, reload, same, cut);
    return 0;
}
