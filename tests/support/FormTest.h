#pragma once

#include "Application.h"
#include "CommonDialog.h"
#include "Controls.h"
#include "FormRegistry.h"
#include "MsgBox.h"
#include "PageDevice.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QStringList>
#include <QTemporaryDir>

#include <deque>
#include <functional>
#include <memory>

using namespace Qt::Literals::StringLiterals;

// Readable failures for texts.
void PrintTo(const QString& text, std::ostream* out);

// A fresh installation in a folder of its own (Banco.ini, both files with tables and first user),
// fixed clock, a queue of expected boxes, a recording printer. The test adds the forms that it
// needs: addForm<Form1Cli>(). An unexpected box fails it, and so does one that never came.
class FormTest : public testing::Test
{
protected:
    FormTest();
    ~FormTest() override;

    QString folder() const { return directory_.path(); }
    QString mainFile() const { return folder() + u"/GALTERIA1.mdb"_s; }
    QString listFile() const { return folder() + u"/MIRANDEL1.mdb"_s; }
    QString iniFile() const { return folder() + u"/Banco.ini"_s; }
    void setIni(const QString& section, const QString& key, const QString& value);
    // The one that stands on the pages.
    void setCompany();

    // The first column of a query over a file, one text a row ("NULL" for Null), read by a
    // connection of its own. Also runs other statements, as another station would.
    QStringList sql(const QString& file, const QString& statement) const;

    // Adds rows before the forms open: values as SQL literals are given in the statement.
    void mainSql(const QString& statement) const { sql(mainFile(), statement); }

    void expectBox(const QString& text, Answer answer = Answer::Ok,
                   BoxButtons buttons = BoxButtons::Ok, BoxIcon icon = BoxIcon::None,
                   const QString& title = {});
    // Any box whose text begins so.
    void expectErrorBox(const QString& beginning = u"Erro nº "_s)
    {
        expectBoxBeginning(beginning, Answer::Ok);
    }
    void expectBoxBeginning(const QString& beginning, Answer answer);
    // What happens when a form is shown modal; without one the form is unloaded at once.
    void onModal(std::function<void(Form&)> script);

    // The last printed document, a line a run of text.
    QStringList printed() const { return printer_->lines(); }
    // A page as it must read, in the same manner: tests/pages/NAME.
    static QStringList page(const QString& name);
    int documents() const { return static_cast<int>(printer_->documents().size()); }
    // From now on it fails at the end of each document.
    static void breakPrinter();

    const std::vector<EndReason>& ends() const { return ends_; }

    // The n-th recordset, file or printer call fails with this number; others go through.
    void failCall(int n, int number = -2147467259);
    // Whether the call armed last was reached; disarms it.
    bool callFailed();
    // For n = 1, 2, 3 ...: prepares, acts with the n-th call failing, and looks at what came of it;
    // the last time no call is left to fail. The program never ends. Every box is answered Yes or
    // OK and kept in boxes(), the title before the first line of the text.
    void failEachCall(const std::function<void()>& prepare, const std::function<void()>& act,
                      const std::function<void(bool failed)>& check, int calls);
    // The same with the file on a disk that refuses the n-th write, and so many with it.
    void failEachWrite(const std::function<void()>& prepare, const std::function<void()>& act,
                       const std::function<void(bool failed)>& check,
                       const char* file = "GALTERIA1.mdb", int refusals = 1'000'000);
    // The same where the n-th lock asked for of the file is not to be had, and so many behind it.
    void failEachLock(const std::function<void()>& prepare, const std::function<void()>& act,
                      const std::function<void(bool failed)>& check,
                      const char* file = "GALTERIA1.mdb", int refusals = 1'000'000);
    QStringList& boxes() { return boxes_; }

private:
    static void unloadForms();
    void failEach(const std::function<void(int n)>& arm, const std::function<bool()>& disarm,
                  const std::function<void()>& prepare, const std::function<void()>& act,
                  const std::function<void(bool failed)>& check, int atLeast);

    struct Expected
    {
        Box box;
        Answer answer;
        bool beginningOnly;
    };

    QTemporaryDir directory_;
    // Of a user of its own, whose windows nobody has moved yet.
    QTemporaryDir home_;
    const QByteArray homeBefore_ = qgetenv("HOME");
    std::deque<Expected> expected_;
    std::shared_ptr<RecordingDevice> printer_;
    std::vector<EndReason> ends_;
    int callsLeft_ = 0;
    bool failed_ = false;
    QStringList boxes_;
};

// As a user would: nothing happens on a disabled button; a box gets the characters one by one, each
// through KeyPress, after its content was selected.
void click(Control& button);
void click(Menu& entry);
void type(TextBox& box, const QString& text);
void press(Control& control, Qt::Key key);
// A click on a row of data (1 is the first), or on the heading (0).
void click(FlexGrid& grid, int row);
// Gives a box the focus as the Tab key would; the form must be shown.
void enter(Control& control);

// Every control of a shown form can be named by a screen reader, and Tab goes as the eye does: to
// the right, then down, then to the next column. A wider window is of use to its grids.
void expectEasyToWalk(const Form& form);

void expectUseOfRoom(const Form& form, const QWidget& widget);
// Down leads from each of the boxes to the grid.
void expectDownLeads(ControlArray<TextBox>& boxes, const FlexGrid& grid);

// Indexes of the enabled buttons, locked boxes, in the manner "0 2 4".
QString enabledOf(const ControlArray<CommandButton>& buttons);
QString lockedOf(const ControlArray<TextBox>& boxes);
// All rows behind the heading, cells joined by "|".
QStringList gridRows(const FlexGrid& grid);
