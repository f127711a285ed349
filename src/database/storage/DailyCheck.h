#pragma once

#include "FileIdentity.h"

// Which files this user of this computer had the engine check today. Remembered in the user's own
// folder for such things, not beside the data: each computer looks for itself.
namespace dailycheck {

bool wasDone(const QString& path, const FileIdentity& file);
// Where it cannot be noted, the next opening checks again.
void note(const QString& path, const FileIdentity& file);

} // namespace dailycheck
