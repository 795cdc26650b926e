// The JSON the command-line tool builds profiles, libraries and hints from. Whatever it accepts
// must print back to JSON that it accepts again, unchanged.
#include "fuzz/fuzztarget.h"

#include "profile/defaultlibrary.h"
#include "profile/hintcatalog.h"
#include "profile/profilejson.h"

#include <QJsonDocument>
#include <QJsonObject>

#if defined(__SANITIZE_ADDRESS__)
#define FUZZ_LEAK_CHECKED 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define FUZZ_LEAK_CHECKED 1
#endif
#endif
#if defined(FUZZ_LEAK_CHECKED)
#include <sanitizer/lsan_interface.h>
#endif

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    QJsonDocument document;
    {
#if defined(FUZZ_LEAK_CHECKED)
        // Qt 5.15's JSON parser leaks the first value of a key that appears twice in an object
        // when that value is an object or an array. The leak is Qt's own; what our readers do
        // with the document is still checked.
        const __lsan::ScopedDisabler qtParser;
#endif
        document = QJsonDocument::fromJson(fuzzBytes(data, size));
    }
    if (!document.isObject())
        return 0;
    const QJsonObject object = document.object();
    QString error;
    if (const std::optional<Profile> profile = profileFromJson(object, error)) {
        const QJsonObject printed = profileToJson(*profile);
        const std::optional<Profile> again = profileFromJson(printed, error);
        FUZZ_CHECK(again && profileToJson(*again) == printed);
    }
    if (const std::unique_ptr<DefaultLibrary> library = libraryFromJson(object, error)) {
        const QJsonObject printed = libraryToJson(*library);
        const std::unique_ptr<DefaultLibrary> again = libraryFromJson(printed, error);
        FUZZ_CHECK(again && libraryToJson(*again) == printed);
    }
    if (const std::unique_ptr<HintCatalog> catalog = hintCatalogFromJson(object, error)) {
        const QJsonObject printed = hintCatalogToJson(*catalog);
        const std::unique_ptr<HintCatalog> again = hintCatalogFromJson(printed, error);
        FUZZ_CHECK(again && hintCatalogToJson(*again) == printed);
    }
    return 0;
}
