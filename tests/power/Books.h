#pragma once

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

void require(bool holds, const std::string& otherwise);

using Words = std::vector<std::string>;

// The rows of a statement over a file, read by a connection of its own.
std::vector<Words> query(const std::string& file, const std::string& sql);
void requireWhole(const std::string& file);

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
    void read(const Words& words, int station) override;
    void compare(const std::string& file) override;

private:
    std::map<std::string, Words> orders_, next_;
};

class SalesBook : public Book
{
public:
    void prepare(const std::string& file) override;
    void read(const Words& words, int station) override;
    void compare(const std::string& file) override;

private:
    struct Shop
    {
        std::map<std::string, int> stock;
        std::map<std::string, std::pair<int, int>> cash; // rows and pieces of a part
        std::multiset<std::string> ordered;
        bool operator==(const Shop&) const = default;
    };
    static Shop shopOf(const std::string& file);
    void book();

    Shop shop_, next_;
    std::vector<std::pair<std::string, int>> lists_[2];
    int booking_ = -1; // station whose list is being booked
};

// Two stations that each change a field of their own.
class SharedOrdersBook : public Book
{
public:
    void read(const Words& words, int station) override;
    void compare(const std::string& file) override;

private:
    Words last_[2];
    std::map<std::string, Words> created_;
    std::map<std::string, std::string> edited_[2];
    int refused_ = 0;
};
