#pragma once

class QSaveFile;

// Brings the temporary file to the disk, renames it to its name and brings the folder to the disk;
// the toolkit's own commit passes over a failing sync, and leaves the folder to the system, where a
// power cut takes the new name back. False, with whatever stood under the name before, where a
// write, the sync or the rename failed.
bool commitDurably(QSaveFile& file);
