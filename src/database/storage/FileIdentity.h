#pragma once

#include <QString>

#include <compare>
#include <optional>

// Which file lies under a path, whatever the path is called: a file that was replaced has another
// identity than the one before.
struct FileIdentity
{
    quint64 volume = 0;
    quint64 number = 0;
    auto operator<=>(const FileIdentity&) const = default;
};

// Nothing where there is no ordinary file. Never opens the file.
std::optional<FileIdentity> fileIdentity(const QString& path);

// Whether something lies there that is no ordinary file: a pipe, a device, a folder, a link.
bool isOtherThanFile(const char* path);
