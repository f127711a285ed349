#include "Application.h"
#include "Buscacli.h"
#include "EventTransactions.h"
#include "FileLayer.h"
#include "Form1Cli.h"
#include "Form1pecavenda.h"
#include "Form1principal.h"
#include "FormRegistry.h"
#include "Funciones.h"
#include "HostPaths.h"
#include "Installation.h"
#include "MsgBox.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>
#include <QTableView>

#include <unistd.h>

#include <random>

// Works at the forms as a clerk does and tells each step on its output, a line each, parted by
// tabs: what it is about to save, and "done" when the event ended. It is meant to be killed.

using namespace Qt::Literals::StringLiterals;

namespace {

std::mt19937 chance;
filelayer::Status* status = nullptr;

int below(qsizetype limit)
{
    return static_cast<int>(chance() % static_cast<unsigned>(limit));
}

void say(const QStringList& words)
{
    const QByteArray line = words.join(u'\t').toUtf8() + '\n';
    if (write(STDOUT_FILENO, line.constData(), static_cast<std::size_t>(line.size())) !=
        line.size())
        std::abort();
}

void click(CommandButton& button)
{
    qobject_cast<QAbstractButton*>(button.widget())->click();
    QCoreApplication::processEvents();
}

Answer answer(const Box& box)
{
    if (box.text.startsWith(u"Máximo 24 linhas"))
        return Answer::Ok;
    if (box.text != u"Uso interno da oficina ?" &&
        box.text != u"Deseja Realmente Excluir este Cliente ?" &&
        !box.text.startsWith(u"Operação concluída"))
        say({u"box"_s, box.text.simplified()});
    return box.buttons == BoxButtons::YesNo ? Answer::Yes : Answer::Ok;
}

class Desk
{
public:
    Desk() { open(); }

    void open()
    {
        form_.unload();
        form_.show();
        numbers_.clear();
        click(form_.Command1(12));
        for (int row = form_.Text1(16).text().toInt(); row > 0; --row) {
            numbers_ << form_.Text1(13).text();
            click(form_.Command1(11));
        }
    }

    bool isEmpty() const { return numbers_.isEmpty(); }

    void doSomething()
    {
        constexpr int Fewest = 4;
        constexpr int Most = 10;
        const int choice = below(4);
        if (numbers_.size() < Fewest || (choice == 0 && numbers_.size() < Most))
            add();
        else if (choice == 1)
            remove();
        else
            edit();
    }

    void add()
    {
        click(form_.Command1(0));
        form_.Text1(0).setText(newText());
        form_.Text7.setText(newText());
        form_.Text1(11).setText(newText());
        save();
        numbers_ << form_.Text1(13).text();
    }

    void edit()
    {
        show(numbers_[below(numbers_.size())]);
        click(form_.Command1(2));
        form_.Text1(0).setText(newText());
        form_.Text7.setText(newText());
        form_.Text1(11).setText(newText());
        save();
    }

    void remove()
    {
        const QString number = numbers_[below(numbers_.size())];
        show(number);
        click(form_.Command1(2));
        say({u"delete"_s, number, form_.Text1(0).text()});
        click(form_.Command1(3));
        say({u"done"_s});
        numbers_.removeOne(number);
    }

private:
    QString newText() { return u"%1-%2"_s.arg(getpid()).arg(++texts_); }

    void show(const QString& number)
    {
        form_.Text2.setText({});
        form_.Text2.setText(number);
    }

    void save()
    {
        say({u"save"_s, form_.Text1(13).text(), form_.Text1(0).text(), form_.Text7.text(),
             form_.Text1(11).text()});
        click(form_.Command1(1));
        // The form stays as it was where the save was refused.
        say({form_.Command1(1).enabled() ? u"refused"_s : u"done"_s});
    }

    Form1Cli& form_ = form<Form1Cli>();
    QStringList numbers_;
    int texts_ = 0;
};

void orders(bool onceEach)
{
    Desk desk;
    desk.add();
    status->armed = 1;
    if (onceEach) {
        desk.add();
        desk.edit();
        desk.remove();
        return;
    }
    for (;;)
        desk.doSomething();
}

// The order's name is changed, copied away, changed again and brought back.
void backups(bool onceEach)
{
    const auto step = [](const char* what, void (Form1principal::*routine)()) {
        form<Form1Cli>().unload();
        say({QString::fromLatin1(what)});
        (principal().*routine)();
        say({u"done"_s});
        form<Form1Cli>().show();
    };
    const auto change = [](Desk& desk) {
        desk.open();
        desk.isEmpty() ? desk.add() : desk.edit();
    };
    Desk desk;
    status->armed = 1;
    do {
        change(desk);
        step("backup", &Form1principal::EfetuaBackup);
        change(desk);
        step("restore", &Form1principal::EfetuaRestauracao);
    } while (!onceEach);
}

Form1pecavenda& counter()
{
    return form<Form1pecavenda>();
}

int listLines()
{
    int lines = 0;
    for (int row = 1; row < counter().MSFlexGrid2.Rows(); ++row)
        lines += counter().MSFlexGrid2.TextMatrix(row, 0).isEmpty() ? 0 : 1;
    return lines;
}

void openCounter()
{
    counter().unload();
    counter().show();
    say({u"list"_s, QString::number(listLines())});
}

void addLine()
{
    const int part = below(counter().MSFlexGrid1.Rows() - 1);
    auto* grid = qobject_cast<QTableView*>(counter().MSFlexGrid1.widget());
    grid->setCurrentIndex(grid->model()->index(part, 0));
    emit grid->clicked(grid->currentIndex());
    counter().Text1(6).setText(QString::number(1 + part % 2));
    say({u"line"_s, counter().Text1(0).text(), counter().Text1(6).text()});
    click(counter().Command2(0));
}

void book()
{
    say({u"book"_s});
    click(counter().Command2(2));
    say({u"done"_s});
    openCounter();
}

// A list that a cut left is booked first.
void sales()
{
    constexpr int FullList = 24;
    openCounter();
    if (listLines() == 0)
        addLine();
    book();
    while (listLines() < FullList)
        addLine();
    status->armed = 1;
    book();
}

} // namespace

// power_driver init FOLDER SHARED_FILE
// power_driver orders|sales|backups FOLDER WAY SEED CALL CUT
int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QStandardPaths::setTestModeEnabled(true);
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    const QString mode = arguments[1];
    setApplicationFolder(arguments[2]);
    if (mode == u"init") {
        layDownInstallation(arguments[2], false);
        const QString copies = QFileInfo(arguments[3]).path() + u"/copia"_s;
        QDir().mkpath(copies);
        Funciones::GravaIni(u"Local"_s, u"Caminho"_s, arguments[3], Funciones::CaminhoIni());
        Funciones::GravaIni(u"Backup"_s, u"Pastabackup"_s, copies, Funciones::CaminhoIni());
        return 0;
    }
    prepareApplication(application);
    const QString way = arguments[3];
    const auto seed = arguments[4].toUInt();
    const auto cut = static_cast<filelayer::Cut>(arguments[6].toInt());
    chance.seed(seed);
    status = filelayer::map((arguments[2] + u"/status"_s).toUtf8().constData());
    filelayer::install(status, {arguments[5].toInt(), cut, way == u"deaf"}, seed);
    installEventTransactions();
    EventTransactions::instance().setCommitPerStatementForTests(way == u"each-statement");
    setMsgBoxForTests(answer);
    addForm<Form1principal>();
    addForm<Form1Cli>();
    addForm<Buscacli>();
    addForm<Form1pecavenda>();
    principal().show();

    if (mode == u"sales")
        sales();
    else if (mode == u"backups")
        backups(way == u"sweep" || way == u"deaf");
    else
        orders(way == u"sweep" || way == u"deaf");
    say({u"end"_s});
    _exit(0);
}
