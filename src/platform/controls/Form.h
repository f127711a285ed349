#pragma once

#include "EventGate.h"

#include <QString>

#include <functional>
#include <memory>
#include <vector>

class Control;
class ControlArrayBase;
class FormWindow;
class QWidget;

enum class ShowStyle
{
    Modeless,
    Modal
};

// A form: a single instance, reached by its name, that lives as long as the program. Its window is
// made from the .ui file at load and released at unload, so that loading again gives the design
// values back; a handler still running then finishes on the old controls, without effect. The
// window is a plain QWidget: Enter and Esc press nothing by themselves.
class Form
{
public:
    using MakeWindow = std::function<std::unique_ptr<QWidget>()>;

    Form(QString name, MakeWindow makeWindow);
    virtual ~Form();
    Form(const Form&) = delete;
    Form& operator=(const Form&) = delete;

    const QString& name() const { return name_; }

    // Makes the window and runs Form_Load to its end; nothing when loaded. An error that leaves
    // Form_Load shows the box and unloads the form.
    void load();
    // Runs Form_Unload and releases the window; nothing when not loaded.
    void unload();
    bool isLoaded() const;
    // Loads if need be. Modeless returns at once, error 401 while a modal form is up; modal returns
    // when the form is gone, error 400 when it is visible already.
    void show(ShowStyle style = ShowStyle::Modeless);
    bool isVisible() const;

    QString caption() const;
    void setCaption(const QString& caption);

    // The window on show, or null; for dialogs that need a parent and for tests.
    QWidget* window() const;
    // A control by its name, or null; loads the form.
    Control* control(const QString& name, int index = -1);

    // Focus went to this form from another form of the program, or left it for one.
    void focusArrived();
    void focusLeft();

    // The window that the running code means: the one of the handler in progress, else the present
    // one, loading the form where it has none. Null only while no window was ever made, and after a
    // load that failed.
    FormWindow* activeWindow() const;

protected:
    virtual void Form_Load() {}
    virtual void Form_Unload() {}
    virtual void Form_Activate() {}
    virtual void Form_Deactivate() {}

    // The main window, once unloaded, stays a dead form.
    void setNeverLoadsAgain() { neverLoadsAgain_ = true; }

private:
    friend class Control;
    friend class ControlArrayBase;
    friend class FormWindow;
    friend void gate::run(Form&, OnError, const std::function<void()>&);

    int addControl(Control* control);
    void addArray(ControlArrayBase* array);
    void bind(FormWindow& window);

    QString name_;
    MakeWindow makeWindow_;
    std::vector<Control*> controls_;
    std::vector<ControlArrayBase*> arrays_;
    std::shared_ptr<FormWindow> window_; // present or last
    bool neverLoadsAgain_ = false;
    bool unloading_ = false;
};

// Tests run this script instead of waiting until a modal form is gone; a form that the script
// leaves open is then unloaded.
void setModalScriptForTests(std::function<void(Form&)> script);

// The usual window of a form: makeWindow<Ui::Form1Cli>().
template <class Ui, class Window = QWidget> Form::MakeWindow makeWindow()
{
    return [] {
        auto window = std::make_unique<Window>();
        Ui().setupUi(window.get());
        return std::unique_ptr<QWidget>(std::move(window));
    };
}
