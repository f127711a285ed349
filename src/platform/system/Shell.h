#pragma once

#include <QString>

// Starts another program by its command line and returns at once. Error 53 where it cannot be
// started. "explorer" followed by an address opens the address with the desktop's browser.
void Shell(const QString& commandLine, int windowStyle = 2);
