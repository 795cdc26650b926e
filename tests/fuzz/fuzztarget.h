#pragma once

#include <QByteArray>

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
