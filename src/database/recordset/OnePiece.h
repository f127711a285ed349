#pragma once

#include "Connection.h"
#include "ObjectVariable.h"

#include <functional>
#include <initializer_list>

// One connection of each file that is written; all connections on a file share its lock.
using Files = std::initializer_list<std::reference_wrapper<const ObjectVariable<Connection>>>;

// Runs a routine that stores, whole or not at all, decided under the lock: what the event wrote
// before becomes durable, then the write locks of the files are taken, the shared file's before a
// list's, and only then the work looks, writes, and is committed. What it wrote is durable when
// this returns. Where an error leaves the work, a lock is not to be had (-2147467259) or the commit
// fails, nothing of it is stored in any file, each recordset on these files stands as it stood (the
// same rows, current row and pending new row), and the error is thrown on; a commit that fails has
// told the user by then. The work looks and writes and assigns no control: no box or dialog may
// open while a lock is held.
// Within takeWriteLocks a piece is undone by itself, and becomes durable with the event.
void inOnePiece(Files files, const std::function<void()>& work);

// Takes the write locks of the files for the rest of the event, or none of them
// (error -2147467259).
void takeWriteLocks(Files files);
