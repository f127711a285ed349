#include "ByteSearch.h"

#include <cstring>

std::size_t findBytes(std::string_view text, std::string_view part, std::size_t from)
{
#ifdef __GLIBC__
    // The C library's own search outruns std::search and std::string::find several times.
    if (from > text.size() || part.size() > text.size() - from)
        return std::string_view::npos;
    if (part.empty())
        return from;
    const void* found = memmem(text.data() + from, text.size() - from, part.data(), part.size());
    return found ? static_cast<std::size_t>(static_cast<const char*>(found) - text.data())
                 : std::string_view::npos;
#else
    return text.find(part, from);
#endif
}
