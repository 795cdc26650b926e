// "default.cds": the factory library the program refuses to start without. What loads must save
// to bytes that load to the same library.
#include "tests/fuzz/fuzztarget.h"

#include "profile/defaultlibrary.h"

#include <QBuffer>

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
        QByteArray saved = defaultLibraryBytes(*library);
        QBuffer savedBuffer(&saved);
        savedBuffer.open(QIODevice::ReadOnly);
        const std::unique_ptr<DefaultLibrary> again = loadDefaultLibrary(savedBuffer);
        FUZZ_CHECK(again && again->count() == library->count()
            && again->libraryValue() == library->libraryValue() && defaultLibraryBytes(*again) == saved);
    }
    return 0;
}
