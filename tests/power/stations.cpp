#include "Books.h"

// Sets several stations to work over one shared file at the same time, in the real forms, and holds
// what they told against what is stored.

namespace fs = std::filesystem;

namespace {

bool endsWell(pid_t process)
{
    int state = 0;
    waitpid(process, &state, 0);
    return WIFEXITED(state) && WEXITSTATUS(state) == 0;
}

} // namespace

// stations SECONDS [STATIONS [SEED]]
int main(int argc, char** argv)
try {
    const std::string seconds = argc > 1 ? argv[1] : "20";
    const int count = argc > 2 ? std::stoi(argv[2]) : 3;
    const int seed = argc > 3 ? std::stoi(argv[3]) : 1;
    const std::string clerk = fs::path(argv[0]).parent_path() / "clerk";
    std::string pattern = fs::temp_directory_path() / "stations-XXXXXX";
    const fs::path root = mkdtemp(pattern.data());
    const std::string shared = root / "share" / "GALTERIA1.mdb";
    Words names{"share"};
    for (int station = 0; station < count; ++station)
        names.emplace_back(1, static_cast<char>('a' + station));
    for (const std::string& name : names) {
        fs::create_directory(root / name);
        if (!endsWell(start({clerk, "init", root / name, shared}, root / name / "log")))
            throw std::runtime_error("no installation");
    }
    Shop shop;
    shop.prepare(shared, 6, "5000");
    std::map<std::string, pid_t> stations;
    for (int station = 1; station <= count; ++station)
        stations[names[station]] = start({clerk, "station", root / names[station], names[station],
                                          std::to_string(seed + station), seconds},
                                         root / names[station] / "log");
    for (const auto& [name, process] : stations)
        if (!endsWell(process))
            shop.fault("a station that did not end well", name);
    for (const auto& [name, process] : stations) {
        if (!shop.read(root / name))
            shop.fault("a station ended in its work", name);
        const std::string list = root / name / "MIRANDEL1.mdb";
        if (query(list, "SELECT count(*) FROM Pecas").front().front() !=
            std::to_string(shop.linesOf(root / name)))
            shop.fault("a list that is not as it was shown", name);
    }
    shop.check(shared);
    std::printf("%d stations, %s s: ", count, seconds.c_str());
    if (shop.report() != 0) {
        std::printf("kept in %s\n", root.c_str());
        return 1;
    }
    fs::remove_all(root);
    return 0;
} catch (const std::exception& error) {
    std::printf("%s\n", error.what());
    return 2;
}
