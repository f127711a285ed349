#pragma once

#include <QString>

#include <memory>

class Form;
class FormWindow;

// A handler in progress: whose it is, and the window on which it began.
struct GateFrame
{
    Form* form;
    std::shared_ptr<FormWindow> window;
};

// Of the handler that runs just now; null where none does.
const GateFrame* innermostFrame();
// Its form's name; empty where none runs.
QString runningForm();

// Forgets handlers that a test left by an exception.
void resetGateForTests();
