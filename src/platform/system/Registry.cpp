#include "Registry.h"

// This system has no registry: no key is ever found.
std::optional<QString> registryValue(RegistryRoot, const QString&, const QString&)
{
    return std::nullopt;
}
