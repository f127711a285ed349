#pragma once

#include <QString>
#include <QStringList>

// Lays down what an installation needs in the folder, which is made where it is missing: Banco.ini
// with the keys that no form writes, the two database files with their tables, and a first user
// ("Administrador", password "1234", all levels). A file that exists is never touched. With
// examples, the new files also hold a small shop's data. Answers the names of the files that were
// made. Errors as schema::createFile, and 75 where folder or Banco.ini cannot be written.
QStringList layDownInstallation(const QString& folder, bool withExamples);
