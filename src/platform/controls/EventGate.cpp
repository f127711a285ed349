#include "EventGate.h"

#include "Application.h"
#include "FaultLog.h"
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

// The last line of a box after which the program ends.
QString whereNoted(bool noted)
{
    return noted ? QStringLiteral("\n\nAnotado para o suporte em %1.").arg(faultlog::path())
                 : QString();
}

void report(const Form& form, OnError onError, const RuntimeError& error)
{
    switch (onError) {
    case OnError::Silent: return;
    case OnError::Box:
        if (error.wasTold())
            return;
        faultlog::note(faultlog::Kind::Fault, form.name(), error);
        MsgBox(error.text(), BoxButtons::Ok, BoxIcon::Critical, form.caption());
        return;
    case OnError::End:
        std::fprintf(stderr, "%s\n", qPrintable(error.text().replace(u'\n', u' ')));
        {
            const bool noted = faultlog::note(faultlog::Kind::ProgramEnded, form.name(), error);
            if (!error.wasTold())
                MsgBox(error.text() + whereNoted(noted), BoxButtons::Ok, BoxIcon::Critical);
        }
        endProgram(EndReason::Fault);
        return;
    }
}

// A fault of the program itself, no matter where it arose: the handler has left its work undone, so
// that what it wrote is taken back before anything makes it durable.
void endByFault(const char* what)
{
    std::fprintf(stderr, "%s\n", what);
    gate::settle(gate::Moment::Undo);
    try {
        const QString words = QString::fromLocal8Bit(what);
        const bool noted = faultlog::note(faultlog::Kind::ProgramEnded, runningForm(), words);
        MsgBox(QStringLiteral(
                   "Erro interno do programa:\n%1\n\nO que esta operação gravou foi desfeito. "
                   "O programa será fechado.")
                       .arg(words) +
                   whereNoted(noted),
               BoxButtons::Ok, BoxIcon::Critical);
    } catch (...) {
        // Told in standard error; the program must end now.
    }
    endProgram(EndReason::Fault);
}

// Nothing that is thrown goes on from here: the toolkit's loop does not bear it.
template <class Work> void guarded(const Form& form, OnError onError, const Work& work)
{
    try {
        work();
    } catch (const RuntimeError& error) {
        report(form, onError, error);
    } catch (const std::exception& fault) {
        endByFault(fault.what());
    } catch (...) {
        endByFault("unknown exception");
    }
}

class RunningFrame
{
public:
    explicit RunningFrame(GateFrame frame) { state().frames.push_back(std::move(frame)); }
    ~RunningFrame() { state().frames.pop_back(); }
    RunningFrame(const RunningFrame&) = delete;
    RunningFrame& operator=(const RunningFrame&) = delete;
};

class Deeper
{
public:
    Deeper() { ++state().depth; }
    ~Deeper() { --state().depth; }
    Deeper(const Deeper&) = delete;
    Deeper& operator=(const Deeper&) = delete;
};

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

QString runningForm()
{
    return innermostFrame() ? innermostFrame()->form->name() : QString();
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
    {
        const RunningFrame frame({&form, form.window_});
        {
            const Deeper deeper;
            guarded(form, onError, handler);
        }
        if (state().depth == 0)
            guarded(form, onError, [] { settle(Moment::EventEnd); });
    }
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
