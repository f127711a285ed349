#pragma once

#include <QString>
#include <QStringList>

// What the engine's whole check finds wrong in a file, a line each; empty where the file is sound.
// Reads only. Error -2147467259 where the file cannot be read at all.
QStringList damageOf(const QString& path);
