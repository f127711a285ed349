#pragma once

#include <QString>

class QWidget;

// Where windows stand and how large they are. Smaller than it was drawn a window scrolls; size,
// place and the widths of the grids' columns are kept for each user, by the form's name.
namespace windowPlace {

// Moves the content of a new window, before it is bound, into an area that scrolls.
void makeScrollable(QWidget& window);

// Before a window's first showing: as the user left it, else as it was drawn, over the one below
// (which may be null); whole on a screen in any case.
void arrange(const QString& form, QWidget& window, const QWidget* below);

// Of a window that was arranged; nothing for another one.
void remember(const QString& form, const QWidget& window);

} // namespace windowPlace
