#include "Form.h"

#include "Controls.h"
#include "FormRegistry.h"
#include "FormWindow.h"
#include "GateFrames.h"
#include "RuntimeError.h"
#include "WindowPlace.h"

#include <QApplication>
#include <QHash>
#include <QWidget>
#include <QWindow>

#include <algorithm>
#include <stdexcept>

namespace {

std::function<void(Form&)>& modalScript()
{
    static std::function<void(Form&)> script;
    return script;
}

std::vector<Form*>& modalForms()
{
    static std::vector<Form*> forms;
    return forms;
}

// The window in use. Just after a box has closed no window is active yet: then the modal form on
// top, else whichever form is there.
QWidget* windowInUse()
{
    if (QWidget* active = QApplication::activeWindow())
        return active;
    const std::vector<Form*> forms =
        modalForms().empty() ? FormRegistry::instance().loadedForms() : modalForms();
    const auto seen = std::find_if(forms.rbegin(), forms.rend(),
                                   [](const Form* form) { return form->isVisible(); });
    return seen == forms.rend() ? nullptr : (*seen)->window();
}

// Size, frame and place of a window that is about to be shown.
void place(const QString& form, QWidget& window, ShowStyle style)
{
    const QWidget* below = windowInUse();
    window.setWindowModality(style == ShowStyle::Modal ? Qt::ApplicationModal : Qt::NonModal);
    // What others wait for cannot be put away: it has no minimise button.
    if (style == ShowStyle::Modal || below)
        window.setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                              Qt::WindowSystemMenuHint | Qt::WindowMaximizeButtonHint |
                              Qt::WindowCloseButtonHint);
    windowPlace::arrange(form, window, below);
    if (!below)
        return;
    // It stays above the form that it was opened from.
    window.winId();
    window.windowHandle()->setTransientParent(below->window()->windowHandle());
}

// To the first control that Tab reaches.
void focusFirst(QWidget& window)
{
    if (QWidget* first = nextTabStop(window))
        first->setFocus(Qt::TabFocusReason);
}

} // namespace

void setModalScriptForTests(std::function<void(Form&)> script)
{
    modalScript() = std::move(script);
    modalForms().clear();
}

Form::Form(QString name, MakeWindow makeWindow)
    : name_(std::move(name)), makeWindow_(std::move(makeWindow))
{
}

Form::~Form()
{
    if (window_)
        window_->die();
    std::erase(modalForms(), this);
}

int Form::addControl(Control* control)
{
    controls_.push_back(control);
    return static_cast<int>(controls_.size()) - 1;
}

void Form::addArray(ControlArrayBase* array)
{
    arrays_.push_back(array);
}

void Form::bind(FormWindow& window)
{
    QHash<QString, QObject*> named;
    for (QObject* object : window.widget()->findChildren<QObject*>())
        if (!object->objectName().isEmpty())
            named.insert(object->objectName(), object);
    for (ControlArrayBase* array : arrays_) {
        const QString head = array->name_ + u'_';
        for (auto it = named.cbegin(); it != named.cend(); ++it) {
            bool isIndex = false;
            const int index = it.key().startsWith(head)
                                  ? QStringView(it.key()).mid(head.size()).toInt(&isIndex)
                                  : -1;
            if (isIndex)
                array->addMissing(index);
        }
    }
    for (Control* control : controls_) {
        QString name = control->name();
        if (control->index() >= 0)
            name += u'_' + QString::number(control->index());
        QObject* object = named.value(name);
        if (!object)
            throw std::logic_error(qPrintable(name_ + QStringLiteral(" has no control ") + name));
        window.setObject(control->slot_, object, control);
        control->attach(window, qobject_cast<QWidget*>(object));
    }
}

bool Form::isLoaded() const
{
    return window_ && window_->alive();
}

void Form::load()
{
    if (isLoaded() || (neverLoadsAgain_ && window_))
        return;
    std::unique_ptr<QWidget> made = makeWindow_();
    windowPlace::makeScrollable(*made);
    window_ = std::make_shared<FormWindow>(*this, std::move(made));
    bind(*window_);
    bool failed = false;
    gate::run(*this, OnError::Box, [this, &failed] {
        try {
            Form_Load();
        } catch (const RuntimeError&) {
            failed = true;
            throw;
        }
    });
    if (failed)
        unload();
}

void Form::unload()
{
    if (!isLoaded() || unloading_)
        return;
    unloading_ = true;
    const std::shared_ptr<FormWindow> window = window_;
    gate::run(*this, OnError::Box, [this] { Form_Unload(); });
    window->die();
    std::erase(modalForms(), this);
    if (!neverLoadsAgain_ && window_ == window)
        window_.reset();
    unloading_ = false;
}

void Form::show(ShowStyle style)
{
    if (style == ShowStyle::Modal && isVisible())
        throw RuntimeError(RuntimeError::AlreadyDisplayed);
    if (style == ShowStyle::Modeless && !modalForms().empty())
        throw RuntimeError(RuntimeError::ModalFormDisplayed);
    load();
    if (!isLoaded())
        return;
    const std::shared_ptr<FormWindow> shown = window_;
    QWidget& window = *shown->widget();
    if (!window.isVisible())
        place(name_, window, style);
    if (style == ShowStyle::Modal)
        modalForms().push_back(this);
    window.show();
    window.raise();
    window.activateWindow();
    if (!window.focusWidget())
        focusFirst(window);
    if (style == ShowStyle::Modeless)
        return;
    const gate::NestedLoop nested;
    if (modalScript()) {
        modalScript()(*this);
        if (shown->alive())
            unload();
    } else {
        shown->waitUntilGone();
    }
    std::erase(modalForms(), this);
}

bool Form::isVisible() const
{
    return isLoaded() && window_->widget()->isVisible();
}

QString Form::caption() const
{
    const FormWindow* window = activeWindow();
    return window ? window->widget()->windowTitle() : QString();
}

void Form::setCaption(const QString& caption)
{
    if (const FormWindow* window = activeWindow())
        window->widget()->setWindowTitle(caption);
}

QWidget* Form::window() const
{
    return window_ ? window_->widget() : nullptr;
}

Control* Form::control(const QString& name, int index)
{
    load();
    const auto it = std::find_if(controls_.begin(), controls_.end(), [&](const Control* control) {
        return control->name() == name && control->index() == index;
    });
    return it == controls_.end() ? nullptr : *it;
}

void Form::focusArrived()
{
    gate::run(*this, OnError::Box, [this] { Form_Activate(); });
}

void Form::focusLeft()
{
    gate::run(*this, OnError::Box, [this] { Form_Deactivate(); });
}

FormWindow* Form::activeWindow() const
{
    const GateFrame* frame = innermostFrame();
    if (frame && frame->form == this && frame->window)
        return frame->window.get();
    if (!isLoaded())
        const_cast<Form*>(this)->load();
    return window_.get();
}
