#include "Books.h"

#include <limits>

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
        query(sharedFile(), "WITH n(i) AS (VALUES ('1'), ('2'), ('3'), ('4'), ('5'), ('6')) INSERT "
                            "INTO Pecas (CODIGO, LOCAL, ESTOQUE, DESCRICAO, VALOR, EQUIVALENTE) "
                            "SELECT '000000' || i, 'local' || i, '5000', 'nome' || i, 25000, "
                            "'peca' || i FROM n");
        for (const auto& [key, values] : recordsOf(sharedFile())) {
            histories_[key].first = values;
            stocks_["000000" + key.second.substr(4)] = {{5000, 0, 0}};
        }
    }

    void read(const std::string& station)
    {
        bool isWhole = false;
        std::vector<Words> pending;
        readLog(folderOf(station) / "log", [&](const Words& words) {
            isWhole = words[0] == "left";
            if (words[0] == "new" || words[0] == "gone" || words[0] == "set" ||
                words[0] == "sold") {
                pending.push_back(words);
            } else if (words[0] == "done" || words[0] == "refused") {
                for (const Words& each : pending)
                    if (words[0] == "done")
                        wasStored(each);
                refused_ += words[0] == "refused";
                pending.clear();
            } else {
                read(words, station);
            }
        });
        if (!isWhole)
            fault("a station ended in its work", station);
    }

    void check()
    {
        requireWhole(sharedFile());
        for (const Words& row : query(sharedFile(), "SELECT numero, count(*) FROM Cliente GROUP BY "
                                                    "numero HAVING count(*) > 1"))
            fault("a number given twice", row[0]);
        requireTwins(sharedFile());
        checkRecords();
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
    void wasStored(const Words& words)
    {
        const std::pair record(words[1], words[2]);
        if (words[0] == "new") {
            histories_[record].first.assign(words.begin() + 3, words.end());
        } else if (words[0] == "gone") {
            ++deletions_;
            // What the bench wrote into the twin is not seen at the counter.
            histories_[record].last.assign(words.begin() + 3, words.begin() + 8);
        } else if (words[0] == "set") {
            ++saves_;
            History& history = histories_[record];
            const std::size_t field = std::stoul(words[3]);
            history.next.resize(std::max(history.next.size(), field + 1));
            if (!history.next[field].emplace(words[4], words[5]).second)
                fault("a text overwritten unseen", words[1] + " " + words[2] + ": " + words[5] +
                                                       " beside " + history.next[field][words[4]] +
                                                       ", both over " + words[4]);
        } else {
            sold_.insert({words[1], words[2], words[3]});
        }
    }

    void read(const Words& words, const std::string& station)
    {
        if (words[0] == "stock" || words[0] == "see") {
            auto& list = words[0] == "stock" ? stocks_[words[1]] : seen_[words[1]];
            list.push_back({std::stoll(words[2]), std::stoll(words[3]), std::stoll(words[4])});
        } else if (words[0] == "left") {
            const std::string list = folderOf(station) / "MIRANDEL1.mdb";
            if (query(list, "SELECT count(*) FROM Pecas").front().front() != words[1])
                fault("a list that is not as it was shown", station);
        } else if (words[0] == "box") {
            fault("an unexpected box", words[1]);
        }
        asked_ += words[0] == "asked";
    }

    void checkRecords()
    {
        Records stored = recordsOf(sharedFile());
        for (const auto& [key, history] : histories_) {
            const std::string name = key.first + " " + key.second;
            const auto row = stored.find(key);
            if (history.first.empty())
                fault("a save in what nobody made", name);
            else if ((row != stored.end()) == !history.last.empty())
                fault(history.last.empty() ? "a record lost" : "a deleted record that is there",
                      name);
            else
                checkChain(name, history, history.last.empty() ? row->second : history.last);
            if (row == stored.end())
                continue;
            // Of each save of the bench both rows, or neither.
            if (key.first == "order" && row->second[4] != row->second[5])
                fault("half a save of the bench", name);
            stored.erase(row);
        }
        for (const auto& [key, values] : stored)
            fault("a record that nobody stored", key.first + " " + key.second);
    }

    void checkChain(const std::string& name, const History& history, const Words& end)
    {
        for (std::size_t field = 0; field < std::min(history.next.size(), end.size()); ++field) {
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
    const std::string clerk = fs::path(argv[0]).parent_path() / "clerk";
    std::string pattern = fs::temp_directory_path() / "stations-XXXXXX";
    const fs::path root = mkdtemp(pattern.data());
    Shop shop(root);
    Words names{"share"};
    for (int station = 0; station < count; ++station)
        names.emplace_back(1, static_cast<char>('a' + station));
    for (const std::string& name : names) {
        fs::create_directory(root / name);
        if (!endsWell(start({clerk, "init", root / name, shop.sharedFile()}, root / name / "log")))
            throw std::runtime_error("no installation");
    }
    shop.prepare();
    std::map<std::string, pid_t> stations;
    for (int station = 1; station <= count; ++station)
        stations[names[station]] = start({clerk, "station", root / names[station], names[station],
                                          std::to_string(seed + station), seconds},
                                         root / names[station] / "log");
    for (const auto& [name, process] : stations)
        if (!endsWell(process))
            shop.fault("a station that did not end well", name);
    for (const auto& [name, process] : stations)
        shop.read(name);
    try {
        shop.check();
    } catch (const Failure& failure) {
        shop.fault(failure.what(), "the shared file");
    }
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
