#pragma once

#include <QByteArray>
#include <QString>

// Case folded, accents kept: the form in which texts are searched ("jose" meets "JOSE", not
// "José").
QString folded(QStringView text);

// Order by of the shop's tables, by Portuguese: blank and punctuation, then digits, then letters;
// case ignored; an accented letter stands next to its base letter, the accent deciding only between
// otherwise equal words. Comparing the keys byte by byte gives the order.
QByteArray sortKey(QStringView text);
