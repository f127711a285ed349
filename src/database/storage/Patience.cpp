#include "Patience.h"

#include "TransactionKeeper.h"

#include <QElapsedTimer>
#include <QThread>

#include <algorithm>
#include <map>

namespace {

constexpr qint64 UsualLimit = 5000;

struct Waiting
{
    qint64 limit = UsualLimit;
    quint64 event = 0;
    qint64 spent = 0; // milliseconds, in this event
};

Waiting& waiting()
{
    static Waiting theWaiting;
    return theWaiting;
}

} // namespace

Patience& Patience::of(const QString& path)
{
    static std::map<QString, Patience> files;
    return files[path];
}

void Patience::setLimitForTests(std::optional<int> milliseconds)
{
    waiting() = {};
    waiting().limit = milliseconds.value_or(UsualLimit);
}

qint64 Patience::limit()
{
    return waiting().limit;
}

bool Patience::wait(int asked)
{
    if (isInVain_)
        return false;
    Waiting& now = waiting();
    const quint64 event = TransactionKeeper::current().currentEvent();
    // Outside of events each call waits by itself.
    if (now.event != event || (event == 0 && asked == 0)) {
        now.event = event;
        now.spent = 0;
    }
    if (now.spent >= now.limit) {
        isInVain_ = asked > 0;
        return false;
    }
    constexpr qint64 Longest = 25;
    QElapsedTimer clock;
    clock.start();
    const qint64 pause = std::min({qint64(asked) + 1, Longest, now.limit - now.spent});
    QThread::msleep(static_cast<unsigned long>(pause));
    now.spent += std::max(clock.elapsed(), pause);
    return true;
}
