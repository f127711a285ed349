#pragma once

#include <sqlite3.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <map>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

// What was lost or torn. Everything else that goes wrong is another error.
struct Failure : std::runtime_error
{
    using std::runtime_error::runtime_error;
};

using Words = std::vector<std::string>;

inline void require(bool holds, const std::string& otherwise)
{
    if (!holds)
        throw Failure(otherwise);
}

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

inline void requireWhole(const std::string& file)
{
    require(query(file, "PRAGMA integrity_check") == std::vector<Words>{{"ok"}},
            file + " is not whole");
}

inline void requireTwins(const std::string& file)
{
    require(query(file, "SELECT numero, Nome FROM Cliente ORDER BY 1, 2") ==
                query(file, "SELECT NUMERO, NOME FROM PECAAPLICADA ORDER BY 1, 2"),
            "an order without its twin, or a twin without its order");
}

// What the files must hold, by what a driver told. A step that it told and did not call done may
// have become durable or not, as a whole.
class Book
{
public:
    virtual ~Book() = default;
    virtual void prepare(const std::string&) {}
    virtual void read(const Words& words, int station) = 0;
    // The file as the cut left it; the book then knows which way the last step went.
    virtual void compare(const std::string& file) = 0;
};

class OrdersBook : public Book
{
public:
    void read(const Words& words, int /*station*/) override
    {
        if (words[0] == "refused")
            throw std::runtime_error("a save was refused to a clerk who works alone");
        if (words[0] == "save")
            next_[words[1]] = words;
        else if (words[0] == "delete")
            next_.erase(words[1]);
        else if (words[0] == "done")
            orders_ = next_;
    }

    void compare(const std::string& file) override
    {
        requireTwins(file);
        std::map<std::string, Words> stored;
        for (const Words& row :
             query(file, "SELECT 'save', numero, Nome, local, observacao FROM Cliente"))
            require(stored.emplace(row[1], row).second, "order " + row[1] + " is there twice");
        require(stored == orders_ || stored == next_,
                "the orders are neither as last saved nor as last being saved");
        orders_ = next_ = stored;
    }

private:
    std::map<std::string, Words> orders_, next_;
};

class SalesBook : public Book
{
public:
    void prepare(const std::string& file) override
    {
        // Stocks that come down to 0 at different times, in steps of one or two.
        query(file,
              "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 30) "
              "INSERT INTO Pecas(CODIGO, LOCAL, ESTOQUE, DESCRICAO, VALOR, EQUIVALENTE) SELECT "
              "printf('%07d', i), 'A1', i * 3, "
              "printf('Peca %02d', i), 25000, '' FROM n");
        shop_ = next_ = shopOf(file);
    }

    void read(const Words& words, int station) override
    {
        auto& list = lists_[station];
        if (words[0] == "list") {
            require(std::stoul(words[1]) == list.size(),
                    "the list shows " + words[1] + " lines and not " + std::to_string(list.size()));
        } else if (words[0] == "line") {
            list.emplace_back(words[1], std::stoi(words[2]));
        } else if (words[0] == "book") {
            booking_ = station;
            book();
        } else if (words[0] == "done") {
            shop_ = next_;
            list.clear();
            booking_ = -1;
        }
    }

    void compare(const std::string& file) override
    {
        const Shop stored = shopOf(file);
        if (stored == next_ && booking_ >= 0)
            lists_[booking_].clear();
        else
            require(stored == shop_,
                    "stock, cash and orders are neither before nor after the sale");
        booking_ = -1;
        shop_ = next_ = stored;
    }

private:
    struct Shop
    {
        std::map<std::string, int> stock;
        std::map<std::string, std::pair<int, int>> cash; // rows and pieces of a part
        std::multiset<std::string> ordered;
        bool operator==(const Shop&) const = default;
    };

    static Shop shopOf(const std::string& file)
    {
        Shop shop;
        for (const Words& row : query(file, "SELECT CODIGO, ESTOQUE FROM Pecas"))
            shop.stock[row[0]] = std::stoi(row[1]);
        for (const Words& row : query(file, "SELECT codigo, count(*), sum(quantidade), "
                                            "sum(valor) = 25000 * sum(quantidade) FROM MOVIMENTO "
                                            "GROUP BY codigo")) {
            require(row[3] == "1", "cash of part " + row[0] + " is not its price");
            shop.cash[row[0]] = {std::stoi(row[1]), std::stoi(row[2])};
        }
        for (const Words& row : query(file, "SELECT DESCRICAO FROM PEDIDO"))
            shop.ordered.insert(row[0]);
        return shop;
    }

    void book()
    {
        next_ = shop_;
        for (const auto& [code, pieces] : lists_[booking_]) {
            next_.stock[code] -= pieces;
            next_.cash[code].first += 1;
            next_.cash[code].second += pieces;
        }
        for (const auto& [code, stock] : next_.stock)
            if (stock == 0 && !shop_.ordered.contains("Peca " + code.substr(5)))
                next_.ordered.insert("Peca " + code.substr(5));
    }

    Shop shop_, next_;
    std::vector<std::pair<std::string, int>> lists_[2];
    int booking_ = -1; // station whose list is being booked
};

// One order whose name changes, the safety copy, and the way back.
class BackupsBook : public Book
{
public:
    explicit BackupsBook(std::string copy) : copy_(std::move(copy)) {}

    void read(const Words& words, int /*station*/) override
    {
        if (words[0] == "save")
            nextLive_ = words[2];
        else if (words[0] == "backup")
            nextCopy_ = live_;
        else if (words[0] == "restore")
            nextLive_ = storedCopy_;
        else if (words[0] == "done")
            live_ = nextLive_, storedCopy_ = nextCopy_;
    }

    void compare(const std::string& file) override
    {
        const std::string live = nameIn(file);
        require(live == live_ || live == nextLive_, "the live file holds neither name: " + live);
        live_ = nextLive_ = live;
        std::string stored;
        if (std::filesystem::exists(copy_)) {
            requireWhole(copy_);
            stored = nameIn(copy_);
        }
        require(stored == storedCopy_ || stored == nextCopy_, "the copy holds neither name");
        storedCopy_ = nextCopy_ = stored;
    }

private:
    static std::string nameIn(const std::string& file)
    {
        const std::vector<Words> rows = query(file, "SELECT Nome FROM Cliente ORDER BY numero");
        return rows.empty() ? std::string() : rows.front()[0];
    }

    std::string copy_;
    std::string live_, nextLive_, storedCopy_, nextCopy_;
};
