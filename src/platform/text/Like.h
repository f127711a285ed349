#pragma once

#include <QString>

#include <vector>

// The pattern of SQL's Like as the system's statements use it: "%" any run, "_" one character,
// "[...]" a set, "[!...]" its complement. Case is ignored also for accented letters; accents count.
// An unclosed "[" is error -2147467259.
class LikePattern
{
public:
    explicit LikePattern(const QString& pattern);

    bool matches(QStringView text) const;

    // Where the pattern is "%literal%" without other wildcards, the literal, folded; storage then
    // searches its own folded text.
    bool isSubstring() const { return isSubstring_; }
    const QString& literal() const { return literal_; }

private:
    struct Token
    {
        enum Kind
        {
            One,
            Any,
            Set,
            NotSet,
            Literal
        } kind;
        QString characters; // folded; ranges as pairs for sets
    };
    std::vector<Token> tokens_;
    bool isSubstring_ = false;
    QString literal_;
};
