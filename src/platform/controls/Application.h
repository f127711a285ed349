#pragma once

#include <QString>

#include <functional>

class QApplication;

// Style, fonts, Portuguese words of the toolkit's own dialogs, program name; once, before any form.
void prepareApplication(QApplication& application);

// Runs the event loop until the last visible form is gone and no handler runs.
int runApplication();

enum class EndReason
{
    ExitQuestion,
    SecondInstance,
    Fault
};

// Ends the program at once, with no clean-up and no event of any form; what was stored before stays
// stored. Exit status 0, for a fault 1. Under tests it returns, and every later event does nothing.
void endProgram(EndReason reason);
void setEndProgramForTests(std::function<void(EndReason)> end);
bool programEnded();

// True while runApplication has the event loop.
bool applicationRuns();

// Lets the windows be painted; keys and mouse wait, and no window is closed by its frame.
void DoEvents();
// True meanwhile.
bool onlyPaints();

// Puts the key into the queue: it acts after the running handler, on what has the focus then.
// "{TAB}" is the one key that the system sends.
void SendKeys(const QString& keys);
// Sends what stands in that queue. The windows call it when a key's handlers are through, so that a
// key typed behind Enter reaches the next box, however fast it came.
void deliverSentKeys();
