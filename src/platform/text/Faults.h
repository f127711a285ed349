#pragma once

#include <functional>

// Where the tests make the n-th call fail. The program itself never sets an observer; a call then
// costs one comparison.
namespace faults {

enum class Call
{
    Recordset,
    File,
    Printer
};

// Called before each recordset, file and printer call; may throw RuntimeError. Empty: none.
void setObserver(std::function<void(Call)> observer);
void point(Call call);

} // namespace faults
