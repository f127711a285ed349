#pragma once

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
class QInputMethodEvent;
class QKeyEvent;
class QMouseEvent;
class QShortcutEvent;

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

    // Called for each move of the keyboard focus inside this window.
    void focusMoved(QWidget* now);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    // What eventFilter does with each kind of event; true: it goes no further.
    void frameClosed(QEvent& event);
    bool claimsKey(QKeyEvent& key) const;
    bool accessKeyPressed(QAbstractButton& button, const QShortcutEvent& event);
    bool swallowsClick(const QAbstractButton& button) const;
    bool keyArrived(QObject* watched, QKeyEvent& key);
    void mouseReleased(const QObject& watched, const QMouseEvent& mouse);
    bool composedTextArrived(QObject* watched, QInputMethodEvent& event);
    bool keyPressed(Control& control, QWidget& widget, QKeyEvent& event);

    Form& form_;
    std::unique_ptr<QWidget> widget_;
    bool alive_ = true;
    std::vector<QObject*> objects_;
    QHash<const QObject*, Control*> controls_;
    QPointer<QWidget> lastFocus_;
    QPointer<QEventLoop> loop_;
    bool leaving_ = false;
    bool replacingKey_ = false;
};
