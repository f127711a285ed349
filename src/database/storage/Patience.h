#pragma once

#include <QString>
#include <optional>

// How long a busy file is waited for: once in an event, five seconds at most, over all files. After
// a wait in vain the file is asked without waiting until it has answered once, so that no search
// freezes at each letter.
class Patience
{
public:
    // Kept for as long as the program runs: a file that cannot be opened has nothing else to
    // remember it by.
    static Patience& of(const QString& path);
    // Milliseconds; nothing for the usual ones.
    static void setLimitForTests(std::optional<int> milliseconds);
    static qint64 limit();

    // Waits a little; false where it is not to be asked again. asked: how often it was by now.
    bool wait(int asked);
    void answered() { isInVain_ = false; }

private:
    bool isInVain_ = false;
};
