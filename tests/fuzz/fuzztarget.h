#pragma once

#include "profile/fileerror.h"
#include "profile/profile.h"
#include "support/layoutencoder.h"

#include <QByteArray>
#include <QString>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

// Every fuzz target implements this one entry point. Built with clang's libFuzzer it is driven
// by the fuzzer; in the normal build a small main replays the seed corpus through it.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

inline QByteArray fuzzBytes(const uint8_t *data, size_t size)
{
    // Deep copy: the readers may keep views into what they were given.
    return QByteArray(reinterpret_cast<const char *>(data), int(size));
}

// An invariant broken by the input: abort, so the fuzzer keeps the input as a crash.
#define FUZZ_CHECK(condition)                                                                                \
    do {                                                                                                     \
        if (!(condition))                                                                                    \
            std::abort();                                                                                    \
    } while (false)

// The one thing a read and write back may change: the current string form ends its text at a
// zero character, which the older form (and its padding past the record's end) can carry. Such
// a text is cut once and then stays as it is.
inline bool hasZeroCharacter(std::initializer_list<QString> texts)
{
    return std::any_of(
        texts.begin(), texts.end(), [](const QString &text) { return text.contains(QChar(0)); });
}

inline bool hasZeroCharacter(const Profile &profile)
{
    return hasZeroCharacter({profile.name(), profile.notes(), profile.extraText(0), profile.extraText(1)});
}

// Bytes from outside never make a reader fail other than as damaged: true when they were read.
template<typename T> bool wasRead(const tl::expected<T, FileError> &result)
{
    FUZZ_CHECK(result || result.error().kind == FileError::Kind::Damaged);
    return result.has_value();
}

// What was read saves to bytes that read to the same thing (same() compares what a writer could
// drop alike on both saves) and that save again unchanged, once a text with a zero character (cut)
// has been cut.
template<typename T, typename Save, typename Read, typename Same>
void checkSavesBack(const T &loaded, Save save, Read read, Same same, bool cut)
{
    const QByteArray saved = save(loaded);
    const auto again = read(saved);
    FUZZ_CHECK(again && same(*again, loaded));
    const QByteArray resaved = save(*again);
    FUZZ_CHECK(resaved == saved || cut);
    const auto third = read(resaved);
    FUZZ_CHECK(third && save(*third) == resaved);
}
