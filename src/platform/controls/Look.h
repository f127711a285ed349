#pragma once

#include <QColor>
#include <QPalette>

class QStyle;

// The program's look: one quiet style in which open, locked and disabled can be told apart without
// colours, and where the keyboard is can be seen from an arm's length away.
namespace look {

QStyle* makeStyle();
QPalette palette();

// The ground of a box that can be read and copied from, and takes no typing.
QColor lockedGround();

// How far two colours stand apart, from 1 to 21: the contrast ratio of the published guidelines for
// accessible web content (WCAG 2, relative luminance).
double contrast(const QColor& one, const QColor& other);

} // namespace look
