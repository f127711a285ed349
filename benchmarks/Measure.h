#pragma once

#include <QString>
#include <QTemporaryDir>

#include <functional>
#include <initializer_list>
#include <sqlite3.h>
#include <string>
#include <vector>

class CommandButton;
class FlexGrid;

// What the benchmark programs share: a pair of measurements that stand in one run, and the ratio
// that is asked for.
struct Comparison
{
    std::string name;
    double reach; // ratio ours / baseline at most
    std::function<void()> baseline;
    std::function<void()> ours;
    // Before each timed call, not counted; may be empty.
    std::function<void()> prepareBaseline;
    std::function<void()> prepareOurs;
};

// Runs each pair by Google Benchmark, the two in turn round by round, so that whatever else the
// machine does meets both. Prints the medians of the times and of the ratios of the rounds; the
// answer is the number of rows that were not reached.
int runComparisons(int argc, char** argv, const std::vector<Comparison>& comparisons, int rounds);

// An installation of its own with message boxes answered and no printer.
class BenchInstallation
{
public:
    BenchInstallation();
    QString mainFile() const { return directory_.path() + QStringLiteral("/GALTERIA1.mdb"); }
    QString listFile() const { return directory_.path() + QStringLiteral("/MIRANDEL1.mdb"); }

    // Another installation over the same shared file, for a second program beside this one.
    QString otherStation() const;

private:
    QTemporaryDir directory_;
    QTemporaryDir other_;
};

// The engine's own interface, for baselines and for other stations.
class RawFile
{
public:
    explicit RawFile(const QString& path);
    ~RawFile();
    RawFile(const RawFile&) = delete;
    RawFile& operator=(const RawFile&) = delete;

    void run(const std::string& sql);
    // Prepares the statement anew, steps through it and reads these columns (all where empty) as
    // text; the answer is the number of rows.
    int readAll(const std::string& sql, const std::vector<int>& columns = {});

private:
    sqlite3* handle_ = nullptr;
};

// Before an INSERT ... SELECT: the numbers from 1 to the count as n(i).
std::string upTo(int count);

// Orders as a shop has them: most fields filled, a few lines of parts in the twin. Every hundredth
// client's name holds "Quirino", two in five hold "Silva".
void fillOrders(RawFile& file, int orders);

// As by mouse; rows count from 1.
void press(CommandButton& button);
void clickRow(FlexGrid& grid, int row);
// Until their windows are gone, too.
void closeForms(std::initializer_list<const char*> names);

// Peak memory is measured in programs of their own, which a benchmark starts of itself:
// "--memory-empty" shows an empty window, "--memory FOLDER" opens the form over that installation.
// True where this is one of them, after its work.
bool isMemoryChild(const std::function<void()>& openForm);
// Runs both and prints the comparison with the bound; 1 where it was not kept.
int compareMemory(const char* form, const BenchInstallation& installation);
