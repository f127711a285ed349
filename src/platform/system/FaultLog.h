#pragma once

#include <QString>

class RuntimeError;

// What support asks for, in the user's state folder: a line with the moment, the version, the form
// and the number for each fault, lost or refused write and file that did not open. No data of the
// shop: of a description what stands in quotes is left out, since it may hold what was typed. The
// file is rotated once, so that both together never hold more than twice the limit. What cannot be
// written is not told: the user is being told of something worse.
namespace faultlog {

enum class Kind
{
    ProgramEnded, // a fault that ends the program
    Fault,        // a fault that was shown in a box, and the program went on
    LostWrite,    // the user was told that what was written last is not stored
    RefusedWrite, // a store that was given up whole; forms may be silent about it
    RefusedOpen   // a data file did not open
};

constexpr qint64 SizeLimit = 262'144; // bytes

// Whether it was written.
bool note(Kind kind, const QString& form, const RuntimeError& error);
// Of a fault of the program itself, by its own words.
bool note(Kind kind, const QString& form, const QString& what);

// vorbelo/vorbelo.log in $XDG_STATE_HOME, or in ~/.local/state. The one before it ends in ".1".
QString path();

} // namespace faultlog
