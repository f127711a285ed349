#include "Application.h"

#include "EventGate.h"
#include "FormRegistry.h"
#include "Look.h"
#include "Program.h"
#include "WindowPlace.h"

#include <QApplication>
#include <QFont>
#include <QKeyEvent>
#include <QLibraryInfo>
#include <QScopedValueRollback>
#include <QTranslator>
#include <QWidget>

#include <cstdio>
#include <cstdlib>

using namespace Qt::Literals::StringLiterals;

namespace {

struct ProgramState
{
    bool running = false;
    bool painting = false;
    bool ended = false;
    int tabsToSend = 0;
    std::function<void(EndReason)> endForTests;
};

ProgramState& state()
{
    static ProgramState programState;
    return programState;
}

void sendTab()
{
    QWidget* target = QApplication::focusWidget();
    if (!target)
        return;
    QKeyEvent press(QEvent::KeyPress, Qt::Key_Tab, Qt::NoModifier, u"\t"_s);
    QApplication::sendEvent(target, &press);
    QKeyEvent release(QEvent::KeyRelease, Qt::Key_Tab, Qt::NoModifier, u"\t"_s);
    QApplication::sendEvent(target, &release);
}

} // namespace

void prepareApplication(QApplication& application)
{
    QApplication::setStyle(look::makeStyle());
    QApplication::setPalette(look::palette());
    QFont font(u"Liberation Sans"_s);
    font.setPointSize(10);
    font.setStyleHint(QFont::SansSerif);
    QApplication::setFont(font);
    QApplication::setApplicationName(program::title());
    QApplication::setQuitOnLastWindowClosed(false);
    // Letters that follow each other so far apart still look for one entry of a list.
    constexpr int SlowTypist = 1000; // milliseconds
    QApplication::setKeyboardInputInterval(SlowTypist);
    // The words of the toolkit's own dialogs and menus; without the file they stay English.
    auto* translator = new QTranslator(&application);
    if (translator->load(u"qtbase_pt_BR"_s, QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(translator);
}

int runApplication()
{
    state().running = true;
    const int status = QApplication::exec();
    state().running = false;
    // Forms must be gone before the application object is.
    FormRegistry::instance().clear();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return status;
}

bool applicationRuns()
{
    return state().running;
}

void endProgram(EndReason reason)
{
    gate::settle(gate::Moment::EventEnd);
    if (state().endForTests) {
        state().ended = true;
        state().endForTests(reason);
        return;
    }
    if (reason == EndReason::ExitQuestion)
        for (const Form* form : FormRegistry::instance().loadedForms())
            windowPlace::remember(form->name(), *form->window());
    std::fflush(nullptr);
    std::_Exit(reason == EndReason::Fault ? 1 : 0);
}

void setEndProgramForTests(std::function<void(EndReason)> end)
{
    state().ended = false;
    state().endForTests = std::move(end);
}

bool programEnded()
{
    return state().ended;
}

void DoEvents()
{
    const QScopedValueRollback painting(state().painting, true);
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

bool onlyPaints()
{
    return state().painting;
}

void SendKeys(const QString& keys)
{
    if (keys != u"{TAB}"_s)
        return;
    ++state().tabsToSend;
    QMetaObject::invokeMethod(qApp, &deliverSentKeys, Qt::QueuedConnection);
}

void deliverSentKeys()
{
    while (state().tabsToSend > 0) {
        --state().tabsToSend;
        sendTab();
    }
}
