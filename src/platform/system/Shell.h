#pragma once

#include <QString>

// Starts another program by its command line and returns at once. Error 53 where it cannot be
// started. "explorer" followed by an address opens the address by the desktop's opener; the same
// error where there is no opener, or it knows no program for the address.
void Shell(const QString& commandLine, int windowStyle = 2);
