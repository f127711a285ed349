#pragma once

#include <QString>

#include <cstdint>
#include <cstdio>
#include <cstdlib>

// Ends the program where a property does not hold; both the fuzzing engine and the replay take that
// as a find.
inline void require(bool holds, const char* property)
{
    if (holds)
        return;
    std::fprintf(stderr, "does not hold: %s\n", property);
    std::abort();
}

// The input as text, and its part up to the first line break apart from the rest.
struct FuzzInput
{
    FuzzInput(const uint8_t* data, size_t size)
        : whole(
              QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size))),
          head(whole.section(u'\n', 0, 0)), rest(whole.section(u'\n', 1))
    {
    }

    QString whole;
    QString head;
    QString rest;
};
