#pragma once

#include "FormTest.h"

// A row of a table of states: what is pressed, and what stands then. Buttons one after the other,
// as "2 1"; "3y" and "3n" answer its question, "=Ana" is typed.
struct RecordState
{
    QString pressed, buttons, locked, shown;
};

// The record forms: what they have alike, and what must hold for each of them.
class RecordTest : public FormTest
{
protected:
    struct Record
    {
        Form& form;
        ControlArray<CommandButton>& buttons;
        ControlArray<TextBox>& boxes; // the first one holds the name
        QString table, name, question;
        std::function<void(const QString& number, const QString& name)> add;
        QString twin = {};          // the table of its second row, with the name in it
        bool endsOnFailure = false; // the program, where a save or a move fails
    };

    void expectQuestion(const QString& text, Answer answer);
    // "&Excluir", answered.
    void remove(const Record& record, Answer answer = Answer::Yes);
    QStringList names(const Record& record) const;
    // These alone, numbered in their order, before the form is opened.
    void refill(const Record& record, const QStringList& names);

    void expectStates(const Record& record, const std::vector<RecordState>& states,
                      const std::function<QString()>& shown,
                      const std::function<void(const RecordState&)>& alsoExpect = {});
    // The three below, and that it is closed where the focus leaves it.
    void expectSafe(const Record& record);
    // Whichever call, write or lock fails: what was typed is stored once, and what was to go is
    // gone; or it is as before, and the same can be tried again.
    void expectStoredOnceWhateverFails(const Record& record);
    // Whichever call of an opening or a move fails, what is stored next goes to the row on show.
    void expectNoOtherRowTouchedWhateverFails(const Record& record);
    // A row that another station deleted leaves the form, and nothing of it is stored.
    void expectGoneWhereAnotherDeletedIt(const Record& record);
    // Of a form whose load tells of its failure by so many boxes.
    void expectToBeLeftWithoutDatabase(const Record& record, int boxes);
    // A tax number where its box is left for the next one, in a form that is open for typing.
    void expectDocumentChecked(TextBox& document, Control& next, const QString& wrongCGC);

private:
    void open(const Record& record, const QStringList& names);
    int ended_ = 0;
};
