#pragma once

#include "Recordset.h"

#include <QString>

#include <functional>

// The files of one installation, as its settings name them.
struct ShopFiles
{
    QString folder;
    QString ini;
    QString main;
    QString list;
};

// Error 53 where the folder has no settings, 76 where they name a drive that is not mapped.
ShopFiles shopFiles(const QString& folder);

// Error 75, which names the folder.
[[noreturn]] void refuseFolder(const QString& folder);

// Each row of a table in this order; the recordset stands on it. Errors as Recordset::Open.
void forEachRow(const QString& path, const QString& select,
                const std::function<void(Recordset& row)>& take);
