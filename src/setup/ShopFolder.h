#pragma once

#include <QString>

// The folder that this start serves, with Banco.ini and by default the files of the shop.
struct ShopFolder
{
    QString path;
    // It was laid down just now, with its first user.
    bool isNew = false;
};

// The folder named on the command line; else the program's own, where Banco.ini lies beside the
// executable; else the one to which a link "vorbelo/pasta" points in the user's or the system's
// configuration folders; else "Vorbelo" in the user's home, which is laid down where it is missing.
// Nothing else is ever laid down: a share that is away must not look like an empty shop. Error 76
// where a named or linked folder has no Banco.ini, and those of layDownInstallation.
ShopFolder chooseShopFolder(const QString& named, const QString& programFolder);
