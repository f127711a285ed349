#pragma once

#include "WindowFocus.h"
#include "WindowKeys.h"

#include <QHash>
#include <QObject>
#include <QPointer>
#include <QWidget>

#include <memory>
#include <vector>

class Control;
class Form;
class QAbstractButton;
class QEventLoop;

// One window of a form, from its load to its unload, with the controls that its handles mean. It is
// kept alive by the form and by each handler that began on it; dead, it fires no event any more.
class FormWindow : public QObject, public std::enable_shared_from_this<FormWindow>
{
    Q_OBJECT

public:
    FormWindow(Form& form, std::unique_ptr<QWidget> widget);
    ~FormWindow() override;

    Form& form() const { return form_; }
    QWidget* widget() const { return widget_.get(); }
    bool alive() const { return alive_; }
    // Hides the window, ends its modal loop, and lets no event through from now on.
    void die();

    QObject* object(int slot) const;
    void setObject(int slot, QObject* object, Control* control);
    Control* controlOf(const QObject* object) const { return controls_.value(object); }

    // Returns when the window is gone.
    void waitUntilGone();

    WindowFocus& focus() { return focus_; }

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    // What eventFilter does with each kind of event; true: it goes no further.
    void frameClosed(QEvent& event);
    bool swallowsClick(const QAbstractButton& button) const;

    Form& form_;
    std::unique_ptr<QWidget> widget_;
    bool alive_ = true;
    std::vector<QObject*> objects_;
    QHash<const QObject*, Control*> controls_;
    QPointer<QEventLoop> loop_;
    WindowFocus focus_{*this};
    WindowKeys keys_{*this};
};
