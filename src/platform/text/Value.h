#pragma once

#include <QDate>
#include <QString>

#include <variant>

// What a field of a recordset holds: Null, text, number, money, yes/no or date. Null and the empty
// text differ. Money counts whole ten-thousandths.
class Value
{
public:
    struct Money
    {
        qint64 tenThousandths = 0;
        bool operator==(const Money&) const = default;
    };

    Value() = default; // Null
    Value(QString text) : data_(std::move(text)) {}
    Value(double number) : data_(number) {}
    Value(int number) : data_(static_cast<double>(number)) {}
    Value(bool yes) : data_(yes) {}
    Value(Money money) : data_(money) {}
    Value(QDate date) : data_(date) {}
    template <class T> Value(T*) = delete; // a literal without "_s" would pass for a yes

    bool isNull() const { return std::holds_alternative<std::monostate>(data_); }

    // In plain regional form: "12,5", "05/12/2004", "Verdadeiro"/"Falso". Error 94 on Null.
    QString text() const;
    // The same, a Null giving the empty text.
    QString textOrEmpty() const;
    // By the regional settings; yes is -1. Error 13 where a text is no number, 94 on Null.
    double number() const;
    // False when Null, when 0 and when false; a text counts by its number. Never throws.
    bool isTrue() const;

    const auto& data() const { return data_; }
    bool operator==(const Value&) const = default;

private:
    std::variant<std::monostate, QString, double, bool, Money, QDate> data_;
};
