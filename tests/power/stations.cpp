#include "Books.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <limits>
#include <sstream>

// Sets several stations to work over one shared file at the same time, in the real forms, and holds
// what they told against what is stored: each text is followed by one that was written in its
// sight, no number stands twice, each O.S has its twin, each sale its cash rows and its stock.

namespace fs = std::filesystem;

namespace {

// One order or part. The texts of a field are all different, so that each tells which it replaced.
struct History
{
    std::vector<std::map<std::string, std::string>>
        next; // of each field: what was written over what
    Words first;
    Words last; // as it was seen when it was deleted
};

struct Stock
{
    long long pieces, from, to;
};

class Shop
{
public:
    explicit Shop(const fs::path& root) : root_(root) {}

    std::string sharedFile() const { return root_ / "share" / "GALTERIA1.mdb"; }
    fs::path folderOf(const std::string& station) const { return root_ / station; }

    void prepare()
    {
        std::string rows;
        for (const std::string number : {"1", "2", "3", "4", "5", "6"}) {
            rows += (rows.empty() ? "" : ", ") + ("('000000" + number + "', 'local" + number) +
                    "', '5000', 'nome" + number + "', 25000, 'peca" + number + "')";
            histories_[{"part", "peca" + number}].first = {"nome" + number, "local" + number};
            stocks_["000000" + number] = {{5000, 0, 0}};
        }
        query(sharedFile(),
              "INSERT INTO Pecas (CODIGO, LOCAL, ESTOQUE, DESCRICAO, VALOR, EQUIVALENTE) VALUES " +
                  rows);
    }

    void read(const std::string& station)
    {
        std::ifstream log(folderOf(station) / "log");
        bool isWhole = false;
        for (std::string line; std::getline(log, line);) {
            Words words;
            std::istringstream parts(line);
            for (std::string word; std::getline(parts, word, '\t');)
                words.push_back(word);
            words.resize(std::max<std::size_t>(words.size(), 8));
            isWhole = words[0] == "left";
            read(words, station);
        }
        if (!isWhole)
            fault("a station ended in its work", station);
    }

    void check()
    {
        requireWhole(sharedFile());
        for (const Words& row : query(sharedFile(), "SELECT numero, count(*) FROM Cliente GROUP BY "
                                                    "numero HAVING count(*) > 1"))
            fault("a number given twice", row[0]);
        for (const Words& row :
             query(sharedFile(),
                   "SELECT numero, Nome FROM Cliente EXCEPT SELECT NUMERO, NOME FROM PECAAPLICADA "
                   "UNION ALL SELECT * FROM (SELECT NUMERO, NOME FROM PECAAPLICADA EXCEPT SELECT "
                   "numero, Nome FROM Cliente)"))
            fault("an order or a twin alone", row[0] + " " + row[1]);
        checkTexts("order", "SELECT Nome, endereco, cidade, bairro, observacao FROM Cliente");
        checkTexts("part", "SELECT EQUIVALENTE, DESCRICAO, LOCAL FROM Pecas");
        checkStock();
        std::multiset<Words> stored;
        for (const Words& row : query(sharedFile(), "SELECT codigo, descricao, CAST(quantidade AS "
                                                    "INTEGER) FROM MOVIMENTO"))
            stored.insert(row);
        for (const Words& row : sold_)
            if (const auto found = stored.find(row); found != stored.end())
                stored.erase(found);
            else
                fault("a line sold without its cash row", row[0] + " " + row[1]);
        for (const Words& row : stored)
            fault("a cash row of no sale", row[0] + " " + row[1]);
    }

    // Of each kind so many, and one of them.
    std::size_t report() const
    {
        std::printf("%d saves, %d sales lines, %d deletions, %d refused, %d asked\n", saves_,
                    static_cast<int>(sold_.size()), deletions_, refused_, asked_);
        std::size_t count = 0;
        for (const auto& [kind, examples] : faults_) {
            std::printf("FAULT %zu times: %s, as %s\n", examples.size(), kind.c_str(),
                        examples.front().c_str());
            count += examples.size();
        }
        return count;
    }
    void fault(const std::string& kind, const std::string& example)
    {
        faults_[kind].push_back(example);
    }

private:
    void read(const Words& words, const std::string& station)
    {
        const std::pair record(words[1], words[2]);
        if (words[0] == "new") {
            histories_[record].first.assign(words.begin() + 3, words.end());
        } else if (words[0] == "gone") {
            ++deletions_;
            histories_[record].last.assign(words.begin() + 3, words.end());
        } else if (words[0] == "set") {
            ++saves_;
            History& history = histories_[record];
            const std::size_t field = std::stoul(words[3]);
            history.next.resize(std::max(history.next.size(), field + 1));
            if (!history.next[field].emplace(words[4], words[5]).second)
                fault("a text overwritten unseen", words[1] + " " + words[2] + ": " + words[5] +
                                                       " beside " + history.next[field][words[4]] +
                                                       ", both over " + words[4]);
        } else if (words[0] == "stock" || words[0] == "see") {
            auto& list = words[0] == "stock" ? stocks_[words[1]] : seen_[words[1]];
            list.push_back({std::stoll(words[2]), std::stoll(words[3]), std::stoll(words[4])});
        } else if (words[0] == "sold") {
            sold_.insert({words[1], words[2], words[3]});
        } else if (words[0] == "left") {
            const std::string list = folderOf(station) / "MIRANDEL1.mdb";
            if (query(list, "SELECT count(*) FROM Pecas").front().front() != words[1])
                fault("a list that is not as it was shown", station);
        } else if (words[0] == "box") {
            fault("an unexpected box", words[1]);
        }
        refused_ += words[0] == "refused";
        asked_ += words[0] == "asked";
    }

    void checkTexts(const std::string& kind, const std::string& sql)
    {
        std::map<std::string, Words> stored;
        for (const Words& row : query(sharedFile(), sql))
            if (!stored.emplace(row[0], Words(row.begin() + 1, row.end())).second)
                fault("a record stored twice", kind + " " + row[0]);
        for (auto& [key, history] : histories_) {
            if (key.first != kind)
                continue;
            const auto row = stored.find(key.second);
            if ((row != stored.end()) == !history.last.empty()) {
                fault(history.last.empty() ? "a record lost" : "a deleted record that is there",
                      kind + " " + key.second);
            } else {
                checkChain(kind + " " + key.second, history,
                           history.last.empty() ? row->second : history.last);
            }
            if (row != stored.end())
                stored.erase(row);
        }
        for (const auto& [name, values] : stored)
            fault("a record that nobody stored", kind + " " + name);
    }

    void checkChain(const std::string& name, const History& history, const Words& end)
    {
        for (std::size_t field = 0; field < history.next.size(); ++field) {
            std::string text = history.first[field];
            std::size_t steps = 0;
            for (auto step = history.next[field].find(text); step != history.next[field].end();
                 step = history.next[field].find(text), ++steps)
                text = step->second;
            if (text != end[field])
                fault(history.last.empty() ? "a text lost or put back" : "deleted what nobody saw",
                      name + ": " + end[field] + " instead of " + text);
            else if (steps != history.next[field].size())
                fault("a text written over one that was not there any more", name);
        }
    }

    // What is seen was written, and nothing else was written wholly between.
    void checkStock()
    {
        constexpr long long End = std::numeric_limits<long long>::max();
        for (const Words& row : query(sharedFile(), "SELECT CODIGO, ESTOQUE FROM Pecas"))
            if (stocks_.contains(row[0]))
                seen_[row[0]].push_back({std::stoll(row[1]), End, End});
        for (const auto& [code, list] : seen_) {
            const auto& writes = stocks_[code];
            for (const Stock& seen : list) {
                const auto mayStand = [&](const Stock& write) {
                    return write.pieces == seen.pieces && write.from <= seen.to &&
                           std::none_of(writes.begin(), writes.end(), [&](const Stock& later) {
                               return later.from > write.to && later.to < seen.from;
                           });
                };
                if (std::none_of(writes.begin(), writes.end(), mayStand))
                    fault("a stock that nobody left", code + ": " + std::to_string(seen.pieces));
            }
        }
    }

    fs::path root_;
    std::map<std::pair<std::string, std::string>, History> histories_;
    std::map<std::string, std::vector<Stock>> stocks_, seen_;
    std::multiset<Words> sold_;
    std::map<std::string, Words> faults_;
    int saves_ = 0, deletions_ = 0, refused_ = 0, asked_ = 0;
};

pid_t start(Words arguments, const fs::path& log)
{
    const pid_t process = fork();
    if (process != 0)
        return process;
    std::vector<char*> words;
    for (std::string& argument : arguments)
        words.push_back(argument.data());
    words.push_back(nullptr);
    dup2(open(log.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), STDOUT_FILENO);
    execv(words[0], words.data());
    _exit(127);
}

bool endsWell(pid_t process)
{
    int state = 0;
    waitpid(process, &state, 0);
    return WIFEXITED(state) && WEXITSTATUS(state) == 0;
}

} // namespace

// stations SECONDS [STATIONS [SEED]]
int main(int argc, char** argv)
try {
    const std::string seconds = argc > 1 ? argv[1] : "20";
    const int count = argc > 2 ? std::stoi(argv[2]) : 3;
    const int seed = argc > 3 ? std::stoi(argv[3]) : 1;
    const std::string driver = fs::path(argv[0]).parent_path() / "station_driver";
    std::string pattern = fs::temp_directory_path() / "stations-XXXXXX";
    const fs::path root = mkdtemp(pattern.data());
    Shop shop(root);
    Words names{"share"};
    for (int station = 0; station < count; ++station)
        names.emplace_back(1, static_cast<char>('a' + station));
    for (const std::string& name : names) {
        fs::create_directory(root / name);
        if (!endsWell(start({driver, "init", root / name, shop.sharedFile()}, root / name / "log")))
            throw std::runtime_error("no installation");
    }
    shop.prepare();
    std::map<std::string, pid_t> stations;
    for (int station = 1; station <= count; ++station)
        stations[names[station]] = start({driver, names[station], root / names[station], seconds,
                                          std::to_string(seed + station)},
                                         root / names[station] / "log");
    for (const auto& [name, process] : stations)
        if (!endsWell(process))
            shop.fault("a station that did not end well", name);
    for (const auto& [name, process] : stations)
        shop.read(name);
    shop.check();
    std::printf("%d stations, %s s: ", count, seconds.c_str());
    if (shop.report() != 0) {
        std::printf("kept in %s\n", root.c_str());
        return 1;
    }
    fs::remove_all(root);
    return 0;
} catch (const std::exception& error) {
    std::printf("%s\n", error.what());
    return 2;
}
