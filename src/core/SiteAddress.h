#pragma once

#include <QString>

// The address behind one of the program's links, by its path on the maker's site: the page of the
// manual that lies beside the program or was installed with it, so that help needs no network.
// Error 53 where it is missing.
QString siteAddress(const QString& path);
// The same with the executable in that folder.
QString siteAddress(const QString& path, const QString& programFolder);
