#pragma once

#include "ShopFiles.h"

#include <QStringList>

#include <vector>

// What is wrong in a shop's data. A remark is worth knowing and no fault.
struct Finding
{
    enum class Kind
    {
        Fault,
        Mendable, // without guessing
        Remark
    };
    Kind kind = Kind::Fault;
    QString text;
};

// Looks through settings, main file and sale list, and changes nothing. A file that cannot be read
// is a finding, not an error.
std::vector<Finding> checkData(const ShopFiles& files);

// Mends what can be mended without guessing, after a copy of the main file that was checked whole
// lies at the path given; tells what it did, a line each. Nothing is copied where there is nothing
// to mend. Errors as ExclusiveFile and Recordset::Update; then nothing was changed.
QStringList repairData(const ShopFiles& files, const QString& copy);
