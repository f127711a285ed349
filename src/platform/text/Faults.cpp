#include "Faults.h"

#include <utility>

namespace faults {
namespace {
std::function<void(Call)> observer;
}

void setObserver(std::function<void(Call)> newObserver)
{
    observer = std::move(newObserver);
}

void point(Call call)
{
    if (!observer)
        return;
    // A copy, since an observer may replace itself while it runs.
    const auto current = observer;
    current(call);
}

} // namespace faults
