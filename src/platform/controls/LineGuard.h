#pragma once

#include <QObject>

#include <functional>

class QLineEdit;

// Keeps a stock line within its limit and on one line, and tells of each change of its text, before
// the assignment or the key that made it is through. Typing the text that stands there is a change;
// typing that a full box refuses is none.
class LineGuard : public QObject
{
public:
    LineGuard(QLineEdit& line, std::function<int()> limit, std::function<void()> changed,
              QObject* parent);

private:
    void edited();
    void textChanged();

    QLineEdit& line_;
    std::function<int()> limit_;
    std::function<void()> changed_;
    QString last_;
    bool correcting_ = false;
    bool wasCorrected_ = false;
};
