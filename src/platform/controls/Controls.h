#pragma once

#include "EventGate.h"
#include "Form.h"

#include <QDate>
#include <QString>

#include <functional>
#include <map>
#include <memory>
#include <vector>

class GridRows;
class QEvent;
class QKeyEvent;
class QWidget;

// Handles on the stock widgets of a form, reached by object name when the window is made. An
// array's member "Text1(13)" is the widget "Text1_13". A handle reads and writes the window that
// the running code means (Form::activeWindow): reaching it from elsewhere loads the form first, and
// a handler that goes on after its form was unloaded acts on the old window, without effect.
//
// Events are bound once, in the form's constructor, and run through the gate (EventGate.h). The
// plain member binds without index, an array binds with it.

using Handler = std::function<void()>;
using KeyHandler = std::function<void(int& KeyAscii)>;
using IndexHandler = std::function<void(int Index)>;
using IndexKeyHandler = std::function<void(int Index, int& KeyAscii)>;

// A handler and what becomes of an error that leaves it.
template <class F> struct Bound
{
    F handler;
    OnError onError = OnError::Box;
};

class Control
{
public:
    Control(Form* form, QString name, int index = -1);
    virtual ~Control() = default;
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;

    const QString& name() const { return name_; }
    int index() const { return index_; }
    Form& form() const { return *form_; }

    virtual bool enabled() const;
    virtual void setEnabled(bool enabled);
    // What the control itself says, whether or not its form is on show.
    bool visible() const;
    void setVisible(bool visible);
    bool tabStop() const;
    void setTabStop(bool tabStop);
    QString toolTipText() const;
    void setToolTipText(const QString& text);
    // Error 5 on a disabled or hidden control.
    void SetFocus();

    void onClick(Handler handler, OnError onError = OnError::Box);
    void onDblClick(Handler handler, OnError onError = OnError::Box);
    void onChange(Handler handler, OnError onError = OnError::Box);
    void onKeyPress(KeyHandler handler, OnError onError = OnError::Box);
    void onGotFocus(Handler handler, OnError onError = OnError::Box);
    void onLostFocus(Handler handler, OnError onError = OnError::Box);

    // The stock widget in the window that the running code means.
    QWidget* widget() const;

protected:
    friend class Form;
    friend class FormWindow;
    friend class WindowFocus;
    friend class WindowKeys;
    friend class ControlArrayBase;
    // Connects the widget's signals when a window is made.
    virtual void attach(FormWindow& window, QWidget* widget);

    // Looks at an event of the mouse before the stock widget gets it; true: it goes no further.
    virtual bool intercept(QWidget& widget, QEvent& event);
    // What the control itself does with a key whose KeyPress is through; true: the stock widget
    // does not get it.
    virtual bool useKey(QWidget& widget, const QKeyEvent& key);

    void fire(const Bound<Handler>& event);
    // For a signal of the window's widget: fires while the window is in use.
    Handler firing(const FormWindow& window, const Bound<Handler>& event);
    // The code to use; 0 swallows the key.
    int fireKeyPress(int keyAscii);

    Bound<Handler> click_, dblClick_, change_, gotFocus_, lostFocus_;
    Bound<KeyHandler> keyPress_;

    int slot() const { return slot_; }
    // The same for what is no widget, as a menu's entry.
    QObject* object() const;

private:
    Form* form_;
    QString name_;
    int index_;
    int slot_;
};

// QLineEdit, or QPlainTextEdit where it has several lines. Of a text pasted into one line the
// breaks at either end go, and inner ones become a blank. In several lines Ctrl+Enter breaks the
// line, and Enter only where the dynamic property "enterBreaksLine" says so and KeyPress left the
// 13 alone. Down goes to the control that the dynamic property "downLeadsTo" names.
class TextBox : public Control
{
public:
    using Control::Control;

    QString text() const;
    // Cut to the maximum length; fires Change before it returns when the text really changed.
    void setText(const QString& text);
    // What is typed next takes its place.
    void selectAll();
    bool locked() const;
    void setLocked(bool locked);
    // Characters; 0 is no limit. Lowering it leaves the present text alone.
    int maxLength() const;
    void setMaxLength(int characters);
    // "*" where the text is shown as asterisks, else empty; only the show changes.
    QString passwordChar() const;
    void setPasswordChar(const QString& character);

protected:
    void attach(FormWindow& window, QWidget* widget) override;
    bool useKey(QWidget& widget, const QKeyEvent& key) override;
};

// A text box with a mask of "#" places and literals (dynamic property "mask" of the QLineEdit).
// Assignment is tolerant and never an error: digits take the next place, a literal that fits is
// consumed, everything else is dropped. Text is the filled part with its literals, without prompts.
class MaskEdBox : public Control
{
public:
    using Control::Control;

    QString text() const;
    void setText(const QString& text);
    QString mask() const;

protected:
    void attach(FormWindow& window, QWidget* widget) override;
};

// QLabel.
class Label : public Control
{
public:
    using Control::Control;
    QString caption() const;
    void setCaption(const QString& caption);

protected:
    bool intercept(QWidget& widget, QEvent& event) override;
};

// QGroupBox or QFrame. Disabled, it keeps mouse and keyboard from the controls in it; they keep
// their own look and what they themselves say of being enabled.
class Frame : public Control
{
public:
    using Control::Control;
    bool enabled() const override;
    void setEnabled(bool enabled) override;
    // Whether the widget stands in a disabled frame.
    static bool shutsOff(const QWidget& widget);

protected:
    void attach(FormWindow& window, QWidget* widget) override;
};

// QPushButton.
class CommandButton : public Control
{
public:
    using Control::Control;
    QString caption() const;
    void setCaption(const QString& caption);

protected:
    void attach(FormWindow& window, QWidget* widget) override;
    bool useKey(QWidget& widget, const QKeyEvent& key) override;
};

// QCheckBox; value 0, 1 or 2 (grey). A value that changes fires Click; another value is error 380.
class CheckBox : public Control
{
public:
    using Control::Control;
    int value() const;
    void setValue(int value);

protected:
    void attach(FormWindow& window, QWidget* widget) override;
};

// QComboBox, editable. Click fires when an entry is chosen, Change when the text changes, by a
// choice as well. A text that is set or typed leaves no entry chosen. The open list goes to the
// entry whose first letters are typed, or stand in the box already; Down in a closed one picks it.
class ComboBox : public Control
{
public:
    using Control::Control;
    using Entries = std::shared_ptr<const std::vector<QString>>;

    QString text() const;
    void setText(const QString& text);
    // Locked, it opens nothing and changes nothing; the focus, KeyPress and copying go on.
    bool locked() const;
    void setLocked(bool locked);
    int listCount() const;
    QString list(int index) const;
    int listIndex() const;
    // Error 380 outside -1..ListCount - 1; -1 is no entry.
    void setListIndex(int index);
    // Error 5 for an index outside 0..ListCount. Entries may be equal.
    void AddItem(const QString& text, int index);
    void Clear();
    // Clears, and lists these instead. Several lists can share them, and nothing is copied until
    // one of them changes its own.
    void setEntries(Entries entries);

protected:
    void attach(FormWindow& window, QWidget* widget) override;
    bool intercept(QWidget& widget, QEvent& event) override;
    bool useKey(QWidget& widget, const QKeyEvent& key) override;
};

// QComboBox, not editable: the drive letters that are mapped (HostPaths.h), as "f:". It begins with
// the drive of the program's folder, else with the first. Each choice fires Change.
class DriveListBox : public Control
{
public:
    using Control::Control;
    QString drive() const;

protected:
    void attach(FormWindow& window, QWidget* widget) override;
    bool intercept(QWidget& widget, QEvent& event) override;
};

// QDateEdit.
class DTPicker : public Control
{
public:
    using Control::Control;
    QDate value() const;
    void setValue(QDate date);

protected:
    bool intercept(QWidget& widget, QEvent& event) override;
};

// A QFrame that holds labels named "<name>_1" to "<name>_n"; one whose dynamic property "shows" is
// "date" or "time" keeps itself up to date. An index outside is error 35600.
class StatusBar : public Control
{
public:
    using Control::Control;
    QString panel(int index) const;
    void setPanel(int index, const QString& text);

protected:
    void attach(FormWindow& window, QWidget* widget) override;
};

// QAction, or QMenu for one that holds others. The key of an enabled entry wins over a text box's
// own use of it.
class Menu : public Control
{
public:
    using Control::Control;
    QString caption() const;
    bool enabled() const override;
    void setEnabled(bool enabled) override;
    // An entry is no widget and always stands in its menu.
    bool visible() const = delete;
    void setVisible(bool visible) = delete;

protected:
    void attach(FormWindow& window, QWidget* widget) override;
};

// QTableView on a model of the platform's own: one heading row, no fixed columns; Row 0 is the
// heading. Cells hold text. Space is a click on the current row. Design values by dynamic
// properties: "cols" (number of columns) and "numberColumns" (those aligned to the right, as
// "2,4").
class FlexGrid : public Control
{
public:
    using Control::Control;

    int Rows() const;
    // Error 30009 below 1. Shrinking cuts texts and pulls Row; growing from the heading alone puts
    // Row to 1.
    void setRows(int rows);
    int Cols() const;
    int Row() const;
    // Error 30009 outside.
    void setRow(int row);
    // Error 381 outside.
    QString TextMatrix(int row, int col) const;
    void setTextMatrix(int row, int col, const QString& text);
    // Twips of the drawn form, 15 to a pixel; on the screen they grow with the font in use. -1 is
    // the default of 960, below is error 30014.
    void setColWidth(int col, int twips);

    // Puts these behind the heading, instead of what stood there; none for null. A change of a cell
    // or of Rows makes plain texts of them.
    void showRows(std::shared_ptr<const GridRows> rows);

protected:
    void attach(FormWindow& window, QWidget* widget) override;
    bool intercept(QWidget& widget, QEvent& event) override;
    bool useKey(QWidget& widget, const QKeyEvent& key) override;
};

class ControlArrayBase
{
public:
    ControlArrayBase(Form* form, QString name);
    virtual ~ControlArrayBase() = default;
    ControlArrayBase(const ControlArrayBase&) = delete;
    ControlArrayBase& operator=(const ControlArrayBase&) = delete;

    // Highest index that exists, after the form was loaded once; -1 where there is none.
    int ubound() const;
    bool has(int index) const;

    void onClick(IndexHandler handler, OnError onError = OnError::Box);
    void onChange(IndexHandler handler, OnError onError = OnError::Box);
    void onKeyPress(IndexKeyHandler handler, OnError onError = OnError::Box);
    void onGotFocus(IndexHandler handler, OnError onError = OnError::Box);
    void onLostFocus(IndexHandler handler, OnError onError = OnError::Box);

protected:
    friend class Form;
    virtual std::unique_ptr<Control> make(int index) = 0;
    Control& at(int index) const; // error 340
    void addMissing(int index);

    Form* form_;
    QString name_;
    std::map<int, std::unique_ptr<Control>> members_;

private:
    void bindMember(Control& member, int index);
    Bound<IndexHandler> click_, change_, gotFocus_, lostFocus_;
    Bound<IndexKeyHandler> keyPress_;
};

// Indexes may have gaps; one that does not exist is error 340.
template <class T> class ControlArray : public ControlArrayBase
{
public:
    using ControlArrayBase::ControlArrayBase;
    T& operator()(int index) const { return static_cast<T&>(at(index)); }

protected:
    std::unique_ptr<Control> make(int index) override
    {
        return std::make_unique<T>(form_, name_, index);
    }
};
