#pragma once

#include <QByteArray>
#include <QString>

// Windows-1252 both ways. The five bytes that the code page leaves free stand for the control
// characters of the same number, so that every byte survives a reading and a writing.
QString fromWindows1252(const QByteArray& bytes);
// A character that the code page does not have becomes "?".
QByteArray toWindows1252(const QString& text);
