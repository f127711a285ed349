#pragma once

class QString;

enum class Rights
{
    OfGroup, // as the user's own files are, and none for others
    OfOwner
};

// Who may use a file that is being made in a folder of the shop; before its first byte is written.
// In a folder that was given to a group, writable for it and with the set-group-ID bit, by which
// all files in it are the group's, the group's members use one shop in turn: they may always read
// and write.
void setRights(int handle, const QString& folder, Rights rights);
