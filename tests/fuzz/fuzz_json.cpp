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

namespace {

// What a reader accepts prints back to JSON that it accepts again, unchanged; what it refuses,
// it refuses as damaged, naming where ("map[3][1]: expected an integer").
template<typename Read, typename Print>
void checkPrintsBack(const QJsonObject &object, Read read, Print print)
{
    const auto accepted = read(object);
    FUZZ_CHECK(wasRead(accepted) || !accepted.error().detail.isEmpty());
    if (!accepted)
        return;
    const QJsonObject printed = print(*accepted);
    const auto again = read(printed);
    FUZZ_CHECK(again && print(*again) == printed);
}

} // namespace

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
    checkPrintsBack(document.object(), profileFromJson, profileToJson);
    checkPrintsBack(document.object(), libraryFromJson, libraryToJson);
    checkPrintsBack(document.object(), hintCatalogFromJson, hintCatalogToJson);
    return 0;
}
