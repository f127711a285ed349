#pragma once

#include <QString>

// The program's title and version, for whatever shows them.
namespace program {
QString title();
// "1.0.2": major, minor and revision.
QString version();
} // namespace program
