// "hints.cdh": the editor's help texts. What loads must save to bytes that load the same.
#include "tests/fuzz/fuzztarget.h"

#include "profile/hintcatalog.h"

#include <QBuffer>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    QByteArray bytes = fuzzBytes(data, size);
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    const std::unique_ptr<HintCatalog> catalog = loadHintCatalog(buffer);
    if (!catalog)
        return 0;
    for (int index : {-1, 0, catalog->count() - 1, catalog->count()})
        for (int language : {-1, 0, 1, 2})
            catalog->hint(index, language);
    QByteArray saved = hintCatalogBytes(*catalog);
    QBuffer savedBuffer(&saved);
    savedBuffer.open(QIODevice::ReadOnly);
    const std::unique_ptr<HintCatalog> again = loadHintCatalog(savedBuffer);
    FUZZ_CHECK(again && again->count() == catalog->count() && hintCatalogBytes(*again) == saved);
    return 0;
}
