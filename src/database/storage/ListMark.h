#pragma once

#include <QString>

#include <functional>

class Database;

// How the path of the shared file is found when a sale list is opened, to learn whether the list
// was booked already.
void setListMarkResolver(std::function<QString()> sharedFilePath);

// Empties a sale list that the shared file knows as booked: the power went off after the one and
// before the other was committed. Looks once; again only after a failed commit. Where the shared
// file cannot be read the look is put off to the next opening.
void finishMarkedList(Database& list);
