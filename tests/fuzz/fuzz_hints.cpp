// "hints.cdh": the editor's help texts. What loads must save to bytes that load the same, but
// for a text with a zero character, which is cut once (see hasZeroCharacter()).
#include "tests/fuzz/fuzztarget.h"

#include "profile/hintcatalog.h"

#include <QBuffer>

namespace {

std::unique_ptr<HintCatalog> reload(QByteArray bytes)
{
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    return loadHintCatalog(buffer);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const std::unique_ptr<HintCatalog> catalog = reload(fuzzBytes(data, size));
    if (!catalog)
        return 0;
    bool cut = false;
    for (int index = -1; index <= catalog->count(); ++index) {
        for (int language = -1; language <= HintCatalog::kLanguageCount; ++language) {
            const HintText hint = catalog->hint(index, language);
            cut = cut || hasZeroCharacter({hint.title, hint.text});
        }
    }
    const QByteArray saved = hintCatalogBytes(*catalog);
    const std::unique_ptr<HintCatalog> again = reload(saved);
    FUZZ_CHECK(again && again->count() == catalog->count());
    const QByteArray resaved = hintCatalogBytes(*again);
    FUZZ_CHECK(resaved == saved || cut);
    const std::unique_ptr<HintCatalog> third = reload(resaved);
    FUZZ_CHECK(third && hintCatalogBytes(*third) == resaved);
    return 0;
}
