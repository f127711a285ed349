#include "Clerk.h"

#include "Application.h"
#include "Buscacli.h"
#include "Buscafornecedor.h"
#include "EventTransactions.h"
#include "FileLayer.h"
#include "Form1Cli.h"
#include "Form1Defeitos.h"
#include "Form1For.h"
#include "Form1Pec.h"
#include "Form1manutencao.h"
#include "Form1pecabusca.h"
#include "Form1pecavenda.h"
#include "Form1pedido.h"
#include "Form1principal.h"
#include "Form1servico.h"
#include "Funciones.h"
#include "HostPaths.h"
#include "Installation.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

#include <unistd.h>

#include <chrono>

using namespace clerk;

namespace {

filelayer::Status* status = nullptr;

// Each of these is meant to be killed; where it sweeps it does each thing once.
void orders(bool onceEach)
{
    Desk desk(records(0));
    desk.add();
    status->armed = 1;
    do {
        if (onceEach)
            desk.add(), desk.edit(), desk.remove();
        else
            desk.doSomething();
    } while (!onceEach);
}

void registers(bool onceEach)
{
    status->armed = 1;
    do {
        for (int kind = 1; kind < Kinds; ++kind) {
            Desk desk(records(kind));
            desk.add();
            desk.isEmpty() ? desk.add() : desk.edit();
            desk.remove();
        }
    } while (!onceEach);
}

void bench(bool onceEach)
{
    status->armed = 1;
    do
        workAtTheBench();
    while (!onceEach);
}

// An order's text is changed, copied away, changed again and brought back.
void backups(bool onceEach)
{
    const auto step = [](const char* what, void (Form1principal::*routine)()) {
        say({QString::fromLatin1(what)});
        (principal().*routine)();
        say({u"done"_s});
    };
    const auto change = [] {
        Desk desk(records(0));
        desk.isEmpty() ? desk.add() : desk.edit();
    };
    status->armed = 1;
    do {
        change();
        step("backup", &Form1principal::EfetuaBackup);
        change();
        step("restore", &Form1principal::EfetuaRestauracao);
    } while (!onceEach);
}

void sell(int lines)
{
    constexpr int Parts = 30;
    Counter counter;
    while (counter.lines().size() < lines) {
        const int part = below(Parts);
        counter.addLine(part, 1 + part % 2); // until none is left, and never fewer
    }
    status->armed = lines > 1;
    counter.book();
}

// A list that a cut left is booked first.
void sales()
{
    constexpr int FullList = 24;
    sell(1);
    sell(FullList);
}

void station(int seconds)
{
    constexpr int SoldParts = 6; // the first of the catalogue; they are never deleted
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(seconds);
    while (std::chrono::steady_clock::now() < end) {
        const int choice = below(6);
        if (choice < 2) {
            Counter counter;
            for (int lines = 1 + below(3); lines > 0; --lines)
                counter.addLine(below(SoldParts), 1 + below(3));
            rest();
            counter.book();
        } else if (choice == 2) {
            workAtTheBench();
        } else {
            Desk desk(records(choice < 5 ? choice - 3 : 2 + below(Kinds - 2)));
            for (int step = 1 + below(8); step > 0; --step)
                desk.doSomething();
        }
    }
    say({u"left"_s, QString::number(Counter().lines().size())});
}

void init(const QString& folder, const QString& file)
{
    layDownInstallation(folder, false);
    const QString copies = QFileInfo(file).path() + u"/copia"_s;
    QDir().mkpath(copies);
    Funciones::GravaIni(u"Local"_s, u"Caminho"_s, file, Funciones::CaminhoIni());
    Funciones::GravaIni(u"Backup"_s, u"Pastabackup"_s, copies, Funciones::CaminhoIni());
}

} // namespace

// clerk init FOLDER SHARED_FILE
// clerk station FOLDER NAME SEED SECONDS
// clerk orders|registers|bench|sales|backups FOLDER WAY SEED CALL CUT
int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QStandardPaths::setTestModeEnabled(true);
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    const QString mode = arguments[1];
    const QString folder = arguments[2];
    setApplicationFolder(folder);
    if (mode == u"init") {
        init(folder, arguments[3]);
        return 0;
    }
    prepareApplication(application);
    const QString way = arguments[3];
    const auto seed = arguments[4].toUInt();
    const bool onceEach = way == u"sweep" || way == u"deaf";
    chance.seed(seed);
    if (mode == u"station") {
        sign = way;
        longestPause = 8000;
    } else {
        sign = u"p%1"_s.arg(getpid() % (36 * 36 * 36), 3, 36, QChar(u'0'));
        status = filelayer::map((folder + u"/status"_s).toUtf8().constData());
        filelayer::install(status,
                           {arguments[5].toInt(), static_cast<filelayer::Cut>(arguments[6].toInt()),
                            way == u"deaf"},
                           seed);
    }
    installEventTransactions();
    EventTransactions::instance().setCommitPerStatementForTests(way == u"each-statement");
    setMsgBoxForTests(answer);
    endAgain();
    addForm<Form1principal>();
    addForm<Form1Cli>();
    addForm<Buscacli>();
    addForm<Form1servico>();
    addForm<Form1manutencao>();
    addForm<Form1Pec>();
    addForm<Form1pecabusca>();
    addForm<Form1pecavenda>();
    addForm<Form1pedido>();
    addForm<Form1For>();
    addForm<Buscafornecedor>();
    addForm<Form1Defeitos>();
    principal().show();

    if (mode == u"station")
        station(arguments[5].toInt());
    else if (mode == u"sales")
        sales();
    else
        (mode == u"backups"     ? backups
         : mode == u"registers" ? registers
         : mode == u"bench"     ? bench
                                : orders)(onceEach);
    _exit(0);
}
