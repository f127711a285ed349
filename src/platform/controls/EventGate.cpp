#include "EventGate.h"

#include "Application.h"
#include "Form.h"
#include "FormRegistry.h"
#include "FormWindow.h"
#include "GateFrames.h"
#include "MsgBox.h"
#include "RuntimeError.h"

#include <QApplication>

#include <cstdio>

namespace {

struct GateState
{
    std::vector<GateFrame> frames;
    int depth = 0; // within the innermost event loop
    int nestedLoops = 0;
    std::function<void(gate::Moment)> settleHook;
};

GateState& state()
{
    static GateState gateState;
    return gateState;
}

void report(const Form& form, OnError onError, const RuntimeError& error)
{
    switch (onError) {
    case OnError::Silent:
        return;
    case OnError::Box:
        if (!error.wasTold())
            MsgBox(error.text(), BoxButtons::Ok, BoxIcon::Critical, form.caption());
        return;
    case OnError::End:
        std::fprintf(stderr, "%s\n", qPrintable(error.text().replace(u'\n', u' ')));
        if (!error.wasTold())
            MsgBox(error.text(), BoxButtons::Ok, BoxIcon::Critical);
        endProgram(EndReason::Fault);
        return;
    }
}

bool anyFormVisible()
{
    for (const Form* form : FormRegistry::instance().loadedForms())
        if (form->isVisible())
            return true;
    return false;
}

} // namespace

const GateFrame* innermostFrame()
{
    return state().frames.empty() ? nullptr : &state().frames.back();
}

void resetGateForTests()
{
    state().frames.clear();
    state().depth = 0;
    state().nestedLoops = 0;
}

namespace gate {

void run(Form& form, OnError onError, const std::function<void()>& handler)
{
    if (programEnded())
        return;
    state().frames.push_back({&form, form.window_});
    ++state().depth;
    try {
        handler();
    } catch (const RuntimeError& error) {
        report(form, onError, error);
    }
    --state().depth;
    if (state().depth == 0)
        settle(Moment::EventEnd);
    state().frames.pop_back();
    // The end of the last form ends the program, once no handler runs any more.
    if (state().frames.empty() && applicationRuns() && !anyFormVisible())
        QCoreApplication::quit();
}

bool inEvent()
{
    return state().depth > 0;
}

int nestedLoops()
{
    return state().nestedLoops;
}

void setSettleHook(std::function<void(Moment)> hook)
{
    state().settleHook = std::move(hook);
}

void settle(Moment moment)
{
    if (state().settleHook)
        state().settleHook(moment);
}

NestedLoop::NestedLoop() : depth_(state().depth)
{
    settle(Moment::BeforeDialog);
    state().depth = 0;
    ++state().nestedLoops;
}

NestedLoop::~NestedLoop()
{
    state().depth = depth_;
    --state().nestedLoops;
}

} // namespace gate
