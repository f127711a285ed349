#pragma once

#include <QString>

#include <functional>

enum class BoxButtons
{
    Ok,
    OkCancel,
    YesNo,
    YesNoCancel
};
enum class BoxIcon
{
    None,
    Critical,
    Question,
    Exclamation,
    Information
};
enum class Answer
{
    Ok,
    Cancel,
    Yes,
    No
};

struct Box
{
    QString text;
    BoxButtons buttons = BoxButtons::Ok;
    BoxIcon icon = BoxIcon::None;
    QString title; // empty: the program's name
};

// Shows the box and waits for its answer. Esc and the frame answer Cancel, or Ok where that is the
// only button; a box with Yes and No alone must be answered. What the event wrote so far becomes
// durable first.
Answer MsgBox(const QString& text, BoxButtons buttons = BoxButtons::Ok,
              BoxIcon icon = BoxIcon::None, const QString& title = {});

// Tests answer the boxes instead of showing them.
void setMsgBoxForTests(std::function<Answer(const Box&)> answer);
