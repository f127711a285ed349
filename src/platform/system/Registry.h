#pragma once

#include <QString>

#include <optional>

// The system's registry, where it has one. A value of text comes back up to its first zero, a
// double word as "&h" and its hexadecimal digits; nothing where key or value is missing.
enum class RegistryRoot
{
    LocalMachine
};
std::optional<QString> registryValue(RegistryRoot root, const QString& key, const QString& name);
