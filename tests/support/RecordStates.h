#pragma once

#include "FormTest.h"

// A row of a table of states: what is pressed, and what stands then.
struct RecordState
{
    QString pressed, buttons, locked, shown;
};

// Buttons one after the other, as "2 1"; "3y" and "3n" answer its question, "=Ana" is typed.
inline void pressAll(const QString& pressed, ControlArray<CommandButton>& buttons, TextBox& name,
                     const std::function<void(Answer)>& remove)
{
    for (const QString& key : pressed.split(u' ', Qt::SkipEmptyParts)) {
        if (key.startsWith(u'='))
            type(name, key.mid(1));
        else if (key == u"3y"_s || key == u"3n"_s)
            remove(key == u"3y"_s ? Answer::Yes : Answer::No);
        else
            click(buttons(key.toInt()));
    }
}
