#pragma once

#include <QByteArray>
#include <QString>

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
    for (const QString &text : texts)
        if (text.contains(QChar(0)))
            return true;
    return false;
}
