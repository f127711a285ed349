#pragma once

#include <functional>

class Form;

// What becomes of an error that leaves an event handler.
enum class OnError
{
    Box,    // critical box with the form's title, "Erro nº ", number, line break, description
    Silent, // nothing is shown
    End     // the fault ends the program
};

// The one boundary between the toolkit and form code. Every event, whoever fired it, runs through
// it: an error that leaves the handler never reaches the code whose assignment fired the event.
// Anything but a RuntimeError is a fault of ours: what the event wrote is undone, a critical box
// and standard error tell of it, and the program ends.
namespace gate {

void run(Form& form, OnError onError, const std::function<void()>& handler);

// True while a handler runs. Outermost is each event that an event loop delivers, a loop nested in
// a handler included.
bool inEvent();

// How many nested event loops are running. An edit or a failure belongs to the level at which it
// arose.
int nestedLoops();

// The moments at which writes become durable, or are dropped. The database hooks in; forms know
// nothing of it.
enum class Moment
{
    BeforeDialog, // a box, dialog or modal form is about to be shown from within the event
    EventEnd,     // the outermost event ended, well or by an error
    Undo          // a fault of the program: what is not durable yet must never become so
};
void setSettleHook(std::function<void(Moment)> hook);
void settle(Moment moment);

// Around an event loop that a handler runs (a box, a dialog, a modal form): settles, and makes the
// events of that loop outermost ones.
class NestedLoop
{
public:
    NestedLoop();
    ~NestedLoop();
    NestedLoop(const NestedLoop&) = delete;
    NestedLoop& operator=(const NestedLoop&) = delete;

private:
    int depth_;
};

} // namespace gate
