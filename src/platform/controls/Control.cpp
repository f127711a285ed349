#include "Controls.h"

#include "FormWindow.h"
#include "RuntimeError.h"

#include <QKeyEvent>
#include <QWidget>

Control::Control(Form* form, QString name, int index)
    : form_(form), name_(std::move(name)), index_(index), slot_(form->addControl(this))
{
}

QObject* Control::object() const
{
    const FormWindow* window = form_->activeWindow();
    return window ? window->object(slot_) : nullptr;
}

QWidget* Control::widget() const
{
    return qobject_cast<QWidget*>(object());
}

void Control::attach(FormWindow&, QWidget*) {}

bool Control::enabled() const
{
    const QWidget* own = widget();
    return own && own->isEnabledTo(own->parentWidget());
}

void Control::setEnabled(bool enabled)
{
    if (QWidget* own = widget())
        own->setEnabled(enabled);
}

bool Control::visible() const
{
    const QWidget* own = widget();
    return own && !own->isHidden();
}

void Control::setVisible(bool visible)
{
    if (QWidget* own = widget())
        own->setVisible(visible);
}

bool Control::tabStop() const
{
    const QWidget* own = widget();
    return own && (own->focusPolicy() & Qt::TabFocus);
}

void Control::setTabStop(bool tabStop)
{
    if (QWidget* own = widget())
        own->setFocusPolicy(tabStop ? Qt::StrongFocus : Qt::ClickFocus);
}

QString Control::toolTipText() const
{
    const QWidget* own = widget();
    return own ? own->toolTip() : QString();
}

void Control::setToolTipText(const QString& text)
{
    if (QWidget* own = widget())
        own->setToolTip(text);
}

void Control::SetFocus()
{
    QWidget* own = widget();
    if (!own)
        return;
    if (!own->isEnabled() || own->isHidden() || Frame::shutsOff(*own))
        throw RuntimeError(RuntimeError::InvalidCall);
    own->setFocus(Qt::OtherFocusReason);
}

void Control::onClick(Handler handler, OnError onError)
{
    click_ = {std::move(handler), onError};
}

void Control::onDblClick(Handler handler, OnError onError)
{
    dblClick_ = {std::move(handler), onError};
}

void Control::onChange(Handler handler, OnError onError)
{
    change_ = {std::move(handler), onError};
}

void Control::onKeyPress(KeyHandler handler, OnError onError)
{
    keyPress_ = {std::move(handler), onError};
}

void Control::onGotFocus(Handler handler, OnError onError)
{
    gotFocus_ = {std::move(handler), onError};
}

void Control::onLostFocus(Handler handler, OnError onError)
{
    lostFocus_ = {std::move(handler), onError};
}

bool Control::intercept(QWidget&, QEvent&)
{
    return false;
}

// Nothing here takes Enter; the form says where it goes on.
bool Control::useKey(QWidget&, const QKeyEvent& key)
{
    return key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
}

void Control::fire(const Bound<Handler>& event)
{
    if (event.handler)
        gate::run(*form_, event.onError, event.handler);
}

Handler Control::firing(const FormWindow& window, const Bound<Handler>& event)
{
    return [this, &window, &event] {
        if (window.alive())
            fire(event);
    };
}

int Control::fireKeyPress(int keyAscii)
{
    if (keyPress_.handler)
        gate::run(*form_, keyPress_.onError, [this, &keyAscii] { keyPress_.handler(keyAscii); });
    return keyAscii;
}

ControlArrayBase::ControlArrayBase(Form* form, QString name) : form_(form), name_(std::move(name))
{
    form->addArray(this);
}

int ControlArrayBase::ubound() const
{
    form_->activeWindow();
    return members_.empty() ? -1 : members_.rbegin()->first;
}

bool ControlArrayBase::has(int index) const
{
    form_->activeWindow();
    return members_.contains(index);
}

Control& ControlArrayBase::at(int index) const
{
    auto it = members_.find(index);
    if (it == members_.end()) {
        form_->activeWindow(); // the members are known once the form was loaded
        it = members_.find(index);
    }
    if (it == members_.end())
        throw RuntimeError(
            RuntimeError::NoSuchArrayElement,
            QStringLiteral("O elemento '%1' da matriz de controles não existe").arg(index));
    return *it->second;
}

void ControlArrayBase::addMissing(int index)
{
    auto& member = members_[index];
    if (member)
        return;
    member = make(index);
    bindMember(*member, index);
}

void ControlArrayBase::bindMember(Control& member, int index)
{
    if (click_.handler)
        member.onClick([this, index] { click_.handler(index); }, click_.onError);
    if (change_.handler)
        member.onChange([this, index] { change_.handler(index); }, change_.onError);
    if (gotFocus_.handler)
        member.onGotFocus([this, index] { gotFocus_.handler(index); }, gotFocus_.onError);
    if (lostFocus_.handler)
        member.onLostFocus([this, index] { lostFocus_.handler(index); }, lostFocus_.onError);
    if (keyPress_.handler)
        member.onKeyPress([this, index](int& keyAscii) { keyPress_.handler(index, keyAscii); },
                          keyPress_.onError);
}

void ControlArrayBase::onClick(IndexHandler handler, OnError onError)
{
    click_ = {std::move(handler), onError};
}

void ControlArrayBase::onChange(IndexHandler handler, OnError onError)
{
    change_ = {std::move(handler), onError};
}

void ControlArrayBase::onKeyPress(IndexKeyHandler handler, OnError onError)
{
    keyPress_ = {std::move(handler), onError};
}

void ControlArrayBase::onGotFocus(IndexHandler handler, OnError onError)
{
    gotFocus_ = {std::move(handler), onError};
}

void ControlArrayBase::onLostFocus(IndexHandler handler, OnError onError)
{
    lostFocus_ = {std::move(handler), onError};
}
