#pragma once

#include <cstddef>
#include <string_view>

// The first place of the part in the text, from this position on; std::string_view::npos where
// there is none. The empty part stands at each position up to the end.
std::size_t findBytes(std::string_view text, std::string_view part, std::size_t from);
