#pragma once

#include "Controls.h"
#include "FormRegistry.h"
#include "MsgBox.h"

#include <random>

// A clerk who works at the forms at random and tells each thing on the output, a line each, parted
// by tabs, before it is stored:
//   new|gone KIND NAME VALUES...     set KIND NAME FIELD OLD NEW     sold CODE DESCRIPTION PIECES
// and behind it whether it was: done, or refused. Then also:
//   list LINES     line CODE PIECES     left LINES     asked     box TEXT
//   see|stock CODE PIECES FROM TO (when, at the least and at the most)

class Form1pecavenda;

using namespace Qt::Literals::StringLiterals;

namespace clerk {

inline std::mt19937 chance;
inline QString sign; // begins all that this clerk types; the first character tells whose it is
inline useconds_t longestPause = 0; // microseconds

int below(qsizetype limit);
void say(const QStringList& words);
QString newText();
QString now();
// Time for the others.
void rest();
void click(CommandButton& button);
void clickRow(FlexGrid& grid, int row); // of data, from 0
Answer answer(const Box& box);
// Where the program would have ended: the form is opened anew.
void endAgain();

// What the record forms have alike.
struct Records
{
    QString kind;
    Form& window;
    ControlArray<CommandButton>& Command1;
    TextBox& lookUp;
    TextBox& count;
    TextBox& number;
    TextBox& name; // tells a record for ever
    std::vector<TextBox*> boxes;
};

constexpr int Kinds = 6; // the orders and the parts are the first
Records records(int kind);

class Desk
{
public:
    explicit Desk(Records records);
    ~Desk();
    Desk(const Desk&) = delete;
    Desk& operator=(const Desk&) = delete;

    void doSomething();
    void add();
    void edit();
    void remove();
    bool isEmpty() const { return numbers_.isEmpty(); }

private:
    int edited() const;
    QStringList told(const QString& what) const;
    bool show();
    bool save(const QList<QStringList>& words);

    Records form_;
    QStringList numbers_;
};

// The service of an order and the first of its parts, in one press.
void workAtTheBench();

class Counter
{
public:
    Counter();
    ~Counter();
    Counter(const Counter&) = delete;
    Counter& operator=(const Counter&) = delete;

    void addLine(int part, int pieces);
    void book();
    QList<QStringList> lines() const; // code, description, pieces

private:
    Form1pecavenda& form_;
};

} // namespace clerk
