#pragma once

#include <sqlite3.h>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <set>
#include <sstream>
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

// The words of each line that a clerk told, as many as the longest has.
inline void readLog(const std::filesystem::path& file,
                    const std::function<void(const Words&)>& read)
{
    std::ifstream log(file);
    for (std::string line; std::getline(log, line);) {
        Words words;
        std::istringstream parts(line);
        for (std::string word; std::getline(parts, word, '\t');)
            words.push_back(word);
        words.resize(9);
        read(words);
    }
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
        require(
            records.emplace(std::pair(row[0], row[1]), Words(row.begin() + 2, row.end())).second,
            row[0] + " " + row[1] + " is there twice");
    return records;
}

// What the files must hold, by what a clerk told. A step that it told and did not call done may
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

class RecordsBook : public Book
{
public:
    // Orders for the bench, which makes none.
    void prepare(const std::string& file) override
    {
        query(file, "WITH n(i) AS (VALUES ('1'), ('2'), ('3')) INSERT INTO Cliente (numero, Nome, "
                    "endereco, cidade, bairro, observacao) SELECT '000000' || i, 'p' || i, '', '', "
                    "'', '' FROM n");
        query(file, "INSERT INTO PECAAPLICADA (NUMERO, NOME) SELECT numero, Nome FROM Cliente");
        stored_ = next_ = recordsOf(file);
    }

    void read(const Words& words, int /*station*/) override
    {
        const std::pair key(words[1], words[2]);
        if (words[0] == "refused")
            throw std::runtime_error("a save was refused to a clerk who works alone");
        if (words[0] == "new")
            next_[key] = {words.begin() + 3, words.end()};
        else if (words[0] == "set")
            next_[key].at(std::stoul(words[3])) = words[5];
        else if (words[0] == "gone")
            next_.erase(key);
        else if (words[0] == "done")
            stored_ = next_;
    }

    void compare(const std::string& file) override
    {
        requireTwins(file);
        const Records found = recordsOf(file);
        require(found == stored_ || found == next_,
                "the records are neither as last saved nor as last being saved");
        stored_ = next_ = found;
    }

protected:
    Records stored_, next_;
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
        } else if (words[0] == "sold") {
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

// The records, their safety copy, and the way back.
class BackupsBook : public RecordsBook
{
public:
    explicit BackupsBook(std::string copy) : file_(std::move(copy)) {}

    void read(const Words& words, int station) override
    {
        if (words[0] == "backup")
            nextCopy_ = stored_;
        else if (words[0] == "restore")
            next_ = copy_;
        else if (words[0] == "done")
            copy_ = nextCopy_;
        RecordsBook::read(words, station);
    }

    void compare(const std::string& file) override
    {
        RecordsBook::compare(file);
        Records found;
        if (std::filesystem::exists(file_)) {
            requireWhole(file_);
            found = recordsOf(file_);
        }
        require(found == copy_ || found == nextCopy_, "the copy holds neither state");
        copy_ = nextCopy_ = found;
    }

private:
    std::string file_;
    Records copy_, nextCopy_;
};
