#pragma once

#include <sqlite3.h>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <limits>
#include <map>
#include <memory>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

using Words = std::vector<std::string>;

// The rows of a statement over a file, read by a connection of its own.
inline std::vector<Words> query(const std::string& file, const std::string& sql)
{
    std::vector<Words> rows;
    sqlite3* handle = nullptr;
    char* message = nullptr;
    const auto take = [](void* out, int count, char** values, char**) {
        Words& row = static_cast<std::vector<Words>*>(out)->emplace_back();
        for (int i = 0; i < count; ++i)
            row.emplace_back(values[i] ? values[i] : "NULL");
        return 0;
    };
    int code = sqlite3_open_v2(file.c_str(), &handle, SQLITE_OPEN_READWRITE, nullptr);
    if (code == SQLITE_OK)
        code = sqlite3_exec(handle, sql.c_str(), take, &rows, &message);
    const std::string text = message ? message : sqlite3_errstr(code);
    sqlite3_free(message);
    sqlite3_close(handle);
    if (code != SQLITE_OK)
        throw std::runtime_error(file + ": " + text);
    return rows;
}

inline pid_t start(Words arguments, const std::filesystem::path& log)
{
    const pid_t process = fork();
    if (process != 0)
        return process;
    std::vector<char*> words;
    for (std::string& argument : arguments)
        words.push_back(argument.data());
    words.push_back(nullptr);
    alarm(900); // far more than any run takes
    dup2(open(log.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), STDOUT_FILENO);
    execv(words[0], words.data());
    _exit(127);
}

inline bool isWhole(const std::string& file)
{
    return query(file, "PRAGMA integrity_check") == std::vector<Words>{{"ok"}};
}

// By kind and by the text that tells it for ever: what is stored of it, of an order also the two
// texts that the bench writes.
using Records = std::map<std::pair<std::string, std::string>, Words>;

inline Records recordsOf(const std::string& file)
{
    const char* const sql =
        "SELECT 'order', c.Nome, endereco, cidade, bairro, observacao, "
        "coalesce(servicoexecutado, ''), coalesce(CODIGO1, '') "
        "FROM Cliente c LEFT JOIN PECAAPLICADA p ON p.NUMERO = c.numero AND p.NOME = c.Nome "
        "UNION ALL SELECT 'part', EQUIVALENTE, DESCRICAO, LOCAL, '', '', '', '' FROM Pecas "
        "UNION ALL SELECT 'firm', NOMEEMPRESA, NOMEFORNECEDOR, EMAIL, PRODUTO, '', '', '' "
        "FROM FORNECEDOR UNION ALL "
        "SELECT 'purchase', DESCRICAO, QUANTIDADE, '', '', '', '', '' FROM PEDIDO "
        "WHERE QUANTIDADE <> 'p.EST' UNION ALL "
        "SELECT 'defect', MARCA, MODELO, DEFEITO, SOLUCAO, '', '', '' FROM DEFEITO UNION ALL "
        "SELECT 'on-site', NOME, ENDERECO, EMAIL, OBSERVACAO, '', '', '' FROM MANUTENCAO";
    Records records;
    for (const Words& row : query(file, sql))
        for (std::pair key(row[0], row[1]); // whatever is there twice is nobody's
             !records.emplace(key, Words(row.begin() + 2, row.end())).second;)
            key.second += " again";
    return records;
}

// One record. The texts of a field are all different, so that each tells which it replaced.
struct History
{
    // Of each field: what was written over what.
    std::vector<std::map<std::string, std::string>> next;
    Words first;
    Words last; // as it was seen when it was deleted
};

struct Stock
{
    long long pieces, from, to;
};

// What the files must hold, by what the clerks told: each text is followed by one that was written
// in its sight, no number stands twice, each O.S has its twin, each sale its cash rows and its
// stock, all of a step is stored or nothing.
class Shop
{
public:
    // Orders for the bench, which makes none, and parts for the counter.
    void prepare(const std::string& file, int parts, const std::string& stock)
    {
        query(file, "WITH n(i) AS (VALUES ('1'), ('2'), ('3')) INSERT INTO Cliente (numero, Nome, "
                    "endereco, cidade, bairro, observacao) SELECT '000000' || i, 'p' || i, '', '', "
                    "'', '' FROM n");
        query(file, "INSERT INTO PECAAPLICADA (NUMERO, NOME) SELECT numero, Nome FROM Cliente");
        query(file, "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n LIMIT " +
                        std::to_string(parts) +
                        ") INSERT INTO Pecas (CODIGO, LOCAL, ESTOQUE, "
                        "DESCRICAO, VALOR, EQUIVALENTE) SELECT printf('%07d', i), 'local' || i, " +
                        stock + ", printf('nome %02d', i), 25000, 'peca' || i FROM n");
        for (const auto& [key, values] : recordsOf(file))
            histories_[key].first = values;
        for (const Words& row : query(file, "SELECT CODIGO, ESTOQUE FROM Pecas"))
            stocks_[row[0]] = {{std::stoll(row[1]), 0, 0}};
    }

    // What a clerk told at this station. Where it was cut off, its last step may have been stored
    // or not. Answers whether it came to its end.
    bool read(const std::filesystem::path& folder, bool isLastStored = false)
    {
        bool hasLeft = false;
        std::vector<Words> pending;
        const auto end = [&](long long now) {
            for (const Words& each : pending)
                wasStored(each, folder, now);
            pending.clear();
        };
        std::ifstream log(folder / "log");
        for (std::string line; std::getline(log, line);) {
            Words words;
            std::istringstream parts(line);
            for (std::string word; std::getline(parts, word, '\t');)
                words.push_back(word);
            words.resize(9);
            const std::string& what = words[0];
            hasLeft = what == "left";
            if (what == "done") {
                end(std::stoll(words[1]));
            } else if (what == "refused") {
                ++refused_;
                pending.clear();
            } else if (Steps.contains(what)) {
                pending.push_back(words);
            } else {
                hear(words, folder);
            }
        }
        if (isLastStored)
            end(std::chrono::steady_clock::now().time_since_epoch().count());
        return hasLeft;
    }

    // Whether nothing is wrong, also in the safety copy where there is one.
    bool check(const std::string& file, const std::string& copy = {})
    {
        if (!isWhole(file)) {
            fault("a file that is not whole", file);
            return false;
        }
        none("a number given twice", file,
             "SELECT numero FROM Cliente GROUP BY numero HAVING count(*) > 1");
        none("an order without its twin", file,
             "SELECT numero, Nome FROM Cliente EXCEPT SELECT NUMERO, NOME FROM PECAAPLICADA");
        none("a twin without its order", file,
             "SELECT NUMERO, NOME FROM PECAAPLICADA EXCEPT SELECT numero, Nome FROM Cliente");
        none("cash that is not the price", file,
             "SELECT codigo FROM MOVIMENTO WHERE valor <> 25000 * quantidade");
        none("a part that is out and not ordered", file,
             "SELECT DESCRICAO FROM Pecas WHERE ESTOQUE = '0' AND LOCAL LIKE 'local%' EXCEPT "
             "SELECT DESCRICAO FROM PEDIDO");
        checkRecords(file);
        checkStock(file);
        checkCash(file);
        if (std::filesystem::exists(copy) != (copy_ != nullptr))
            fault("a safety copy lost, or one that nobody made", copy);
        else if (copy_ && !Shop(*copy_).check(copy))
            fault("a copy that holds neither state", copy);
        return faults_.empty();
    }

    // Of each kind so many, and one of them.
    std::size_t report() const
    {
        std::printf("%d saves, %zu sales lines, %d deletions, %d refused, %d asked\n", saves_,
                    sold_.size(), deletions_, refused_, asked_);
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
    int refused() const { return refused_; }
    int linesOf(const std::string& folder) const { return lists_.at(folder); }

private:
    inline static const std::set<std::string> Steps{"new",   "gone",   "set",    "sold",
                                                    "stock", "backup", "restore"};

    void none(const std::string& kind, const std::string& file, const std::string& sql)
    {
        for (const Words& row : query(file, sql))
            fault(kind, row[0]);
    }

    void wasStored(const Words& words, const std::filesystem::path& folder, long long now)
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
        } else if (words[0] == "sold") {
            sold_.insert({words[1], words[2], words[3]});
            lists_[folder] = 0;
        } else if (words[0] == "stock") {
            stocks_[words[1]].push_back({std::stoll(words[2]), std::stoll(words[3]), now});
        } else if (words[0] == "backup") {
            copy_.reset();
            copy_ = std::make_shared<Shop>(*this);
        } else {
            const auto copy = copy_;
            *this = *copy;
            copy_ = copy;
        }
    }

    // Besides the steps.
    void hear(const Words& words, const std::filesystem::path& folder)
    {
        if (words[0] == "see") {
            seen_[words[1]].push_back(
                {std::stoll(words[2]), std::stoll(words[3]), std::stoll(words[4])});
        } else if (words[0] == "line") {
            ++lists_[folder];
        } else if (words[0] == "list" || words[0] == "left") {
            if (std::stoi(words[1]) != lists_[folder])
                fault("a list that is not as it was left", folder);
        } else if (words[0] == "box") {
            fault("an unexpected box", words[1]);
        }
        asked_ += words[0] == "asked";
    }

    void checkRecords(const std::string& file)
    {
        Records stored = recordsOf(file);
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
    void checkStock(const std::string& file)
    {
        constexpr long long End = std::numeric_limits<long long>::max();
        auto all = seen_;
        for (const Words& row : query(file, "SELECT CODIGO, ESTOQUE FROM Pecas"))
            if (stocks_.contains(row[0]))
                all[row[0]].push_back({std::stoll(row[1]), End, End});
        for (const auto& [code, list] : all) {
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

    void checkCash(const std::string& file)
    {
        std::multiset<Words> stored;
        for (const Words& row :
             query(file, "SELECT codigo, descricao, CAST(quantidade AS INTEGER) FROM MOVIMENTO"))
            stored.insert(row);
        for (const Words& row : sold_)
            if (const auto found = stored.find(row); found != stored.end())
                stored.erase(found);
            else
                fault("a line sold without its cash row", row[0] + " " + row[1]);
        for (const Words& row : stored)
            fault("a cash row of no sale", row[0] + " " + row[1]);
    }

    std::map<std::pair<std::string, std::string>, History> histories_;
    std::map<std::string, std::vector<Stock>> stocks_, seen_;
    std::multiset<Words> sold_;
    std::map<std::string, int> lists_; // lines of a station's open sale
    std::shared_ptr<const Shop> copy_; // as it was when it was copied away
    std::map<std::string, Words> faults_;
    int saves_ = 0, deletions_ = 0, refused_ = 0, asked_ = 0;
};
