#pragma once

#include <QString>
#include <QStringList>

#include <random>

// Draws believable words, always the same ones in the same order.
class SampleWords
{
public:
    int below(int limit) { return static_cast<int>(engine_() % static_cast<unsigned>(limit)); }
    QString oneOf(const QStringList& words) { return words[below(static_cast<int>(words.size()))]; }

    QString person();
    QString street();
    QString district();
    QString phone(); // "(19)3222-1234"
    QString mobile();
    QString cpf(); // bare digits
    QString cgc();
    static QString email(const QString& person);
    // Seven digits.
    static QString code(int number);

private:
    std::mt19937 engine_{20040312};
};
