// The safety copy, the way back and the daily check of a file with many service orders, each beside
// the engine's own work and plain durable copies of the same file.
//
//   bench_backup [ORDERS]   all rows of the table, 100,000 orders unless told otherwise

#include "Application.h"
#include "DailyCheck.h"
#include "Database.h"
#include "EventTransactions.h"
#include "Form1principal.h"
#include "Funciones.h"
#include "Measure.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>
#include <vector>

using namespace Qt::Literals::StringLiterals;

namespace {

void require(bool holds)
{
    if (!holds)
        std::abort();
}

// Read and written in large pieces, synced, renamed, and the folder synced.
void copyDurably(const QString& from, const QString& to)
{
    const QByteArray partial = QFile::encodeName(to) + ".parcial";
    const int in = open(QFile::encodeName(from).constData(), O_RDONLY);
    const int out = open(partial.constData(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    require(in >= 0 && out >= 0);
    std::vector<char> piece(1 << 20);
    ssize_t size = 0;
    while ((size = read(in, piece.data(), piece.size())) > 0)
        require(write(out, piece.data(), static_cast<std::size_t>(size)) == size);
    require(size == 0 && fsync(out) == 0);
    close(in);
    close(out);
    require(rename(partial.constData(), QFile::encodeName(to).constData()) == 0);
    const int folder = open(QFile::encodeName(QFileInfo(to).path()).constData(), O_RDONLY);
    require(fsync(folder) == 0);
    close(folder);
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QStandardPaths::setTestModeEnabled(true);
    QApplication application(argc, argv);
    prepareApplication(application);
    installEventTransactions();
    addForm<Form1principal>();
    const QStringList arguments = QCoreApplication::arguments();
    const int orders =
        arguments.size() > 1 && arguments[1].toInt() > 0 ? arguments[1].toInt() : 100000;

    BenchInstallation installation;
    const QString live = installation.mainFile();
    const QString folder = QFileInfo(live).path();
    const QString place = folder + u"/copia"_s;
    const QString copy = place + u"/Copia.seguranca"_s;
    const QString compacted = folder + u"/compactado"_s;
    QDir().mkpath(place);
    Funciones::GravaIni(u"Backup"_s, u"Pastabackup"_s, place, Funciones::CaminhoIni());
    fillOrders(*std::make_unique<RawFile>(live), orders);
    principal().show();

    // What the shop does in a day: rows all over the file.
    int serial = 0;
    const auto work = [&] {
        ++serial;
        RawFile station(live);
        station.run("UPDATE Cliente SET observacao='dia " + std::to_string(serial) +
                    "' WHERE rowid%500=" + std::to_string(serial));
        require(QFileInfo(live).size() > 0);
    };
    const std::string into = "VACUUM INTO '" + compacted.toStdString() + "'";
    const std::vector<Comparison> comparisons{
        {"a backup: VACUUM INTO and two durable copies", 1.5,
         [&] {
             RawFile(live).run(into);
             copyDurably(compacted, folder + u"/vivo"_s);
             copyDurably(compacted, place + u"/outra"_s);
         },
         [] { principal().EfetuaBackup(); },
         [&] {
             work();
             QFile::remove(compacted);
         },
         work},
        {"a restore: integrity_check of the copy and one durable copy", 1.5,
         [&] {
             require(RawFile(copy).readAll("PRAGMA integrity_check") == 1);
             copyDurably(copy, folder + u"/vivo"_s);
         },
         [] { principal().EfetuaRestauracao(); }, work, work},
        {"the first opening of a day: quick_check",
         1.5,
         [&] { require(RawFile(live).readAll("PRAGMA quick_check") == 1); },
         [&] { Database::open(live); },
         {},
         [&] {
             Database::dropIdle();
             QFile::remove(QStandardPaths::writableLocation(QStandardPaths::CacheLocation) +
                           u"/verificados"_s);
         }},
    };
    const int missed = runComparisons(argc, argv, comparisons, 11);
    FormRegistry::instance().clear();
    return missed == 0 ? 0 : 1;
}
