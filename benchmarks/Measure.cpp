#include "Measure.h"

#include "CommonDialog.h"
#include "Controls.h"
#include "Form.h"
#include "FormRegistry.h"
#include "HostPaths.h"
#include "Installation.h"
#include "MsgBox.h"
#include "ProfileFile.h"
#include "Schema.h"

#include <QAbstractButton>
#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QStringList>
#include <QTableView>
#include <QWidget>

#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <utility>

namespace {

// Keeps the time of each round besides showing it.
class Keeper : public benchmark::ConsoleReporter
{
public:
    // Once for all pairs.
    bool ReportContext(const Context& context) override
    {
        return std::exchange(isToldOf_, true) || ConsoleReporter::ReportContext(context);
    }
    void ReportRuns(const std::vector<Run>& runs) override
    {
        for (const Run& run : runs)
            if (run.run_type == Run::RT_Iteration)
                times[run.run_name.function_name].push_back(run.GetAdjustedRealTime());
        ConsoleReporter::ReportRuns(runs);
    }
    std::map<std::string, std::vector<double>> times;

private:
    bool isToldOf_ = false;
};

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

void measure(benchmark::State& state, const std::function<void()>& prepare,
             const std::function<void()>& work)
{
    using Clock = std::chrono::steady_clock;
    for (auto _ : state) {
        if (prepare)
            prepare();
        const auto begin = Clock::now();
        work();
        state.SetIterationTime(std::chrono::duration<double>(Clock::now() - begin).count());
    }
}

// In KiB.
long peakMemory()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray& line : status.readAll().split('\n'))
        if (line.startsWith("VmHWM:"))
            return line.mid(6).simplified().split(' ').front().toLong();
    return 0;
}

long memoryOf(const QStringList& arguments)
{
    QProcess process;
    process.start(QCoreApplication::applicationFilePath(), arguments);
    process.waitForFinished(120000);
    return process.readAllStandardOutput().trimmed().toLong();
}

std::string columnNames(const char* table)
{
    QStringList names;
    for (const TableDefinition& definition : schema::mainFile())
        if (definition.name.compare(QLatin1String(table), Qt::CaseInsensitive) == 0)
            for (const FieldDefinition& field : definition.fields)
                names << field.name;
    return names.join(QLatin1Char(',')).toStdString();
}

} // namespace

int runComparisons(int argc, char** argv, const std::vector<Comparison>& comparisons, int rounds)
{
    benchmark::Initialize(&argc, argv);
    Keeper keeper;
    for (const Comparison& pair : comparisons) {
        benchmark::ClearRegisteredBenchmarks();
        const auto add = [&](const char* who, const auto& prepare, const auto& work) {
            benchmark::RegisterBenchmark(
                (pair.name + " / " + who).c_str(),
                [=](benchmark::State& state) { measure(state, prepare, work); })
                ->UseManualTime()
                ->Unit(benchmark::kMillisecond)
                ->Iterations(1);
        };
        add("baseline", pair.prepareBaseline, pair.baseline);
        add("ours", pair.prepareOurs, pair.ours);
        int left = rounds;
        while (left-- > 0 && benchmark::RunSpecifiedBenchmarks(&keeper) > 0) {
        }
    }
    int missed = 0;
    std::printf("\n%-62s %12s %12s %8s %8s\n", "work", "baseline ms", "ours ms", "ratio", "reach");
    for (const Comparison& pair : comparisons) {
        const std::vector<double>& base = keeper.times[pair.name + " / baseline"];
        const std::vector<double>& ours = keeper.times[pair.name + " / ours"];
        std::vector<double> ratios;
        for (std::size_t round = 0; round < std::min(base.size(), ours.size()); ++round)
            ratios.push_back(ours[round] / base[round]);
        if (ratios.empty()) // left out by a filter
            continue;
        const double ratio = median(ratios);
        const bool reached = ratio <= pair.reach;
        missed += reached ? 0 : 1;
        std::printf("%-62s %12.3f %12.3f %8.3f %8.2f %s\n", pair.name.c_str(), median(base),
                    median(ours), ratio, pair.reach, reached ? "" : "MISSED");
    }
    return missed;
}

BenchInstallation::BenchInstallation()
{
    setApplicationFolder(directory_.path());
    layDownInstallation(directory_.path(), false);
    setMsgBoxForTests([](const Box& box) {
        std::fprintf(stderr, "box: %s\n", qPrintable(box.text));
        return box.buttons == BoxButtons::Ok ? Answer::Ok : Answer::Yes;
    });
    CommonDialog::setShowPrinterForTests([](const QString&) {});
}

QString BenchInstallation::otherStation() const
{
    layDownInstallation(other_.path(), false);
    writeProfileString(QStringLiteral("Local"), QStringLiteral("Caminho"), mainFile(),
                       other_.path() + QStringLiteral("/Banco.ini"));
    return other_.path();
}

RawFile::RawFile(const QString& path)
{
    if (sqlite3_open_v2(path.toUtf8().constData(), &handle_, SQLITE_OPEN_READWRITE, nullptr) !=
        SQLITE_OK)
        std::abort();
    sqlite3_busy_timeout(handle_, 5000);
    run("PRAGMA synchronous=EXTRA");
}

RawFile::~RawFile()
{
    sqlite3_close(handle_);
}

void RawFile::run(const std::string& sql)
{
    char* message = nullptr;
    if (sqlite3_exec(handle_, sql.c_str(), nullptr, nullptr, &message) != SQLITE_OK) {
        std::fprintf(stderr, "%s in %s\n", message, sql.c_str());
        std::abort();
    }
}

int RawFile::readAll(const std::string& sql, const std::vector<int>& columns)
{
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(handle_, sql.c_str(), -1, &statement, nullptr) != SQLITE_OK)
        std::abort();
    int rows = 0;
    const int count = sqlite3_column_count(statement);
    while (sqlite3_step(statement) == SQLITE_ROW) {
        ++rows;
        if (columns.empty())
            for (int column = 0; column < count; ++column)
                benchmark::DoNotOptimize(sqlite3_column_text(statement, column));
        else
            for (const int column : columns)
                benchmark::DoNotOptimize(sqlite3_column_text(statement, column));
    }
    sqlite3_finalize(statement);
    return rows;
}

std::string upTo(int count)
{
    return "WITH RECURSIVE n(i) AS (VALUES(1) UNION ALL SELECT i+1 FROM n WHERE i<" +
           std::to_string(count) + ") ";
}

void fillOrders(RawFile& file, int orders)
{
    file.run("BEGIN");
    file.run(upTo(orders) + "INSERT INTO Cliente(" + columnNames("Cliente") +
             ") SELECT printf('%07d',i),'05/03/2026',"
             "CASE WHEN i%3 THEN '12/03/2026' ELSE '' END,"
             "CASE WHEN i%100=7 THEN 'Quirino de Souza ' WHEN i%5<2 THEN 'Maria da Silva ' ELSE "
             "'João Pereira ' END||i,"
             "'Rua das Acácias','São "
             "Paulo','SP',''||(i%900),'Centro','','(11)3'||printf('%03d-%04d',i%1000,i%9999),"
             "'(11)9'||printf('%03d-%04d',(i*7)%1000,(i*13)%9999),'123-456-789/"
             "09','cliente'||i||'@exemplo.com.br',"
             "'Televisor 29 polegadas','Modelo '||(i%700)||' série '||i,'Não liga, sem imagem e "
             "sem som','Com controle remoto',"
             "'Troca do capacitor da fonte e limpeza geral do "
             "aparelho',15000*(1+i%40),i%2,0,1,0,'Prateleira '||(i%30) FROM n");
    file.run(upTo(orders) +
             "INSERT INTO "
             "PECAAPLICADA(NUMERO,NOME,CODIGO1,DESCRICAO1,QUANT1,VALOR1,CODIGO2,DESCRICAO2,QUANT2,"
             "VALOR2) SELECT "
             "printf('%07d',i),'Cliente '||i,'0000012','Capacitor eletrolítico "
             "470uF','2','3,50','0000044',"
             "'Transistor de saída horizontal','1','18,00' FROM n");
    file.run("COMMIT");
}

void press(CommandButton& button)
{
    qobject_cast<QAbstractButton*>(button.widget())->click();
}

void clickRow(FlexGrid& grid, int row)
{
    grid.setRow(row);
    auto* view = qobject_cast<QTableView*>(grid.widget());
    emit view->clicked(view->model()->index(row - 1, 0));
}

void closeForms(std::initializer_list<const char*> names)
{
    for (const char* name : names)
        FormRegistry::instance().unload(QString::fromLatin1(name));
    QCoreApplication::sendPostedEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

bool isMemoryChild(const std::function<void()>& openForm)
{
    const QStringList arguments = QCoreApplication::arguments();
    const bool empty = arguments.value(1) == QStringLiteral("--memory-empty");
    if (!empty && arguments.value(1) != QStringLiteral("--memory"))
        return false;
    QWidget window;
    if (empty) {
        window.show();
    } else {
        setApplicationFolder(arguments.value(2));
        setModalScriptForTests([](Form&) { QCoreApplication::processEvents(); });
        openForm();
    }
    QCoreApplication::processEvents();
    std::printf("%ld\n", peakMemory());
    std::fflush(stdout);
    FormRegistry::instance().clear();
    return true;
}

int compareMemory(const char* form, const BenchInstallation& installation)
{
    const long empty = memoryOf({QStringLiteral("--memory-empty")});
    const long ours = memoryOf({QStringLiteral("--memory"), installation.otherStation()});
    const long file = static_cast<long>(QFileInfo(installation.mainFile()).size() / 1024);
    const long bound = empty + 4 * file;
    const bool kept = empty > 0 && ours > 0 && ours <= bound;
    std::printf("\npeak memory with the %s form open: %ld KiB; empty window %ld + 4 x file %ld = "
                "%ld KiB %s\n",
                form, ours, empty, file, bound, kept ? "" : "MISSED");
    return kept ? 0 : 1;
}
