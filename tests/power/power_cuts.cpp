#include "Books.h"
#include "FileLayer.h"

#include <signal.h>
#include <sys/mman.h>

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <random>
#include <thread>

namespace fs = std::filesystem;
using namespace std::chrono_literals;

namespace {

// What was lost or torn. Everything else that goes wrong is another error.
struct Failure
{
};

// One run of the clerk.
class Run
{
public:
    Run(const std::string& program, Words arguments, const fs::path& folder) : log_(folder / "log")
    {
        fs::remove(folder / "status");
        status_ = filelayer::map((folder / "status").c_str());
        arguments.insert(arguments.begin(), program);
        process_ = start(std::move(arguments), log_);
    }
    ~Run()
    {
        kill();
        hasEnded(0);
        munmap(status_, sizeof *status_);
    }
    Run(const Run&) = delete;
    Run& operator=(const Run&) = delete;

    const filelayer::Status& status() const { return *status_; }

    void waitUntilArmed()
    {
        while (!status_->armed && !hasEnded())
            std::this_thread::sleep_for(200us);
    }
    void kill()
    {
        if (!hasEnded())
            ::kill(process_, SIGKILL);
    }
    // Whether it was killed; every other end but a good one is a failure.
    bool waitUntilGone()
    {
        hasEnded(0);
        const bool killed = WIFSIGNALED(state_) && WTERMSIG(state_) == SIGKILL;
        if (!killed && (!WIFEXITED(state_) || WEXITSTATUS(state_) != 0))
            throw std::runtime_error("the clerk ended with state " + std::to_string(state_));
        return killed;
    }

private:
    bool hasEnded(int wait = WNOHANG)
    {
        ended_ = ended_ || waitpid(process_, &state_, wait) == process_;
        return ended_;
    }

    fs::path log_;
    filelayer::Status* status_ = nullptr;
    pid_t process_ = -1;
    int state_ = 0;
    bool ended_ = false;
};

// Two stations on one shared file; each knows its folder under another path.
class Cutter
{
public:
    // power_cuts WORK kill ROUNDS: killed at any moment, three of four rounds at a chosen call;
    // with each-statement the same without transactions, which must fail. power_cuts WORK sweep
    // STRIDE: forgets what was not synced, at every STRIDE-th call; with deaf the same with syncs
    // that do nothing, which must fail.
    Cutter(const fs::path& program, std::string work, std::string way, int number, unsigned seed)
        : clerk_(program.parent_path() / "clerk"), work_(std::move(work)), way_(std::move(way)),
          number_(number), seed_(seed), random_(seed)
    {
        std::string pattern = fs::temp_directory_path() / "power-XXXXXX";
        root_ = mkdtemp(pattern.data());
        fs::create_directory_symlink("share", root_ / "link");
        fs::create_directory(root_ / "look");
        for (const auto& [name, share] :
             {std::pair("share", "share"), {"s0", "share"}, {"s1", "link"}}) {
            const fs::path folder = root_ / name;
            fs::create_directory(folder);
            Run(clerk_, {"init", folder, root_ / share / "GALTERIA1.mdb"}, folder).waitUntilGone();
        }
    }

    // Prints what came of it; the answer is the status to exit with.
    int run()
    {
        bool failed = false;
        try {
            cutOff();
        } catch (const Failure&) {
            failed = true;
            std::printf("round %d: ", rounds_);
            shop_.report();
        }
        std::printf("%s, %s: %d rounds, %d cuts, %d inside a transaction, %d failures\n",
                    work_.c_str(), way_.c_str(), rounds_, cuts_, inside_, failed ? 1 : 0);
        const bool mustFail = way_ == "each-statement" || way_ == "deaf";
        if (failed && !mustFail)
            std::printf("kept in %s\n", root_.c_str());
        else
            fs::remove_all(root_);
        return failed == mustFail ? 0 : 1;
    }

private:
    fs::path folderOf(int station) const { return root_ / ("s" + std::to_string(station)); }
    fs::path shared() const { return root_ / "share" / "GALTERIA1.mdb"; }

    // A copy with its journal, so that the next start finds what the cut left.
    std::string copyForLook(const fs::path& file) const
    {
        const std::string copy = root_ / "look" / file.filename();
        for (const std::string tail : {"", "-journal"}) {
            fs::remove(copy + tail);
            if (fs::exists(file.string() + tail))
                fs::copy_file(file.string() + tail, copy + tail);
        }
        return copy;
    }

    Words arguments(const std::string& mode, int station, int call, int cut) const
    {
        const unsigned seed = seed_ + static_cast<unsigned>(rounds_);
        return {mode,
                folderOf(station),
                way_,
                std::to_string(seed),
                std::to_string(call),
                std::to_string(cut)};
    }

    void cutOff()
    {
        // Stocks that come down to 0 at different times, in steps of one or two.
        shop_.prepare(shared(), work_ == "sales" ? 30 : 0, "i * 3");
        if (way_ == "sweep" || way_ == "deaf") {
            for (const int cut : {1, 2}) {
                int call = 1 + static_cast<int>(random_() % static_cast<unsigned>(number_));
                while (round(call, cut))
                    call += number_;
            }
            return;
        }
        constexpr unsigned MostCalls = 60;
        while (rounds_ < number_)
            round(rounds_ % 4 != 3 ? 1 + static_cast<int>(random_() % MostCalls) : 0, 0);
        if (rounds_ >= 100 && inside_ * 2 < cuts_)
            throw std::runtime_error("too few cuts inside a transaction");
    }

    // Whether the clerk was cut off. Without a call it is killed from outside, at any moment.
    bool round(int call, int cut)
    {
        constexpr unsigned MostMicroseconds = 30000;
        const int station = rounds_++ % 2;
        Run run(clerk_, arguments(work_, station, call, cut), folderOf(station));
        run.waitUntilArmed();
        if (call == 0) {
            std::this_thread::sleep_for(std::chrono::microseconds(random_() % MostMicroseconds));
            run.kill();
        }
        const bool killed = run.waitUntilGone();
        cuts_ += killed;
        inside_ += killed && run.status().openTransactions > 0;
        Shop next = shop_; // with the step that was cut off
        shop_.read(folderOf(station));
        next.read(folderOf(station), true);
        if (shop_.refused() > 0)
            throw std::runtime_error("a save was refused to a clerk who works alone");
        const std::string look = copyForLook(shared());
        const std::string copy = root_ / "share" / "copia" / "Copia.seguranca";
        if (!run.status().armed)
            shop_.fault("a start that does not get to work", folderOf(station));
        else if (!isWhole(copyForLook(folderOf(station) / "MIRANDEL1.mdb")))
            shop_.fault("a list that is not whole", folderOf(station));
        else if (next.check(look, copy))
            shop_ = next;
        if (!shop_.check(look, copy))
            throw Failure();
        return killed;
    }

    Shop shop_;
    std::string clerk_, work_, way_;
    int number_;
    unsigned seed_;
    std::mt19937 random_;
    fs::path root_;
    int rounds_ = 0;
    int cuts_ = 0;
    int inside_ = 0;
};

} // namespace

int main(int argc, char** argv)
try {
    if (argc < 4)
        throw std::runtime_error(
            "power_cuts orders|registers|bench|sales|backups WAY NUMBER [SEED]");
    const unsigned seed = argc > 4 ? static_cast<unsigned>(std::stoul(argv[4])) : 1;
    return Cutter(argv[0], argv[1], argv[2], std::stoi(argv[3]), seed).run();
} catch (const std::exception& error) {
    std::printf("%s\n", error.what());
    return 2;
}
