#include "LargePieces.h"

#include <sqlite3.h>

#include <algorithm>
#include <cstring>
#include <map>
#include <memory>
#include <new>
#include <string>
#include <utility>
#include <vector>

namespace {

// The engine's own layer takes no more than a page of the largest size at once.
constexpr sqlite3_int64 Piece = 65536;

struct Bytes
{
    sqlite3_int64 at = 0;
    std::vector<char> content;

    sqlite3_int64 end() const { return at + static_cast<sqlite3_int64>(content.size()); }
    bool hold(sqlite3_int64 from, int size) const { return from >= at && from + size <= end(); }
};

// The engine makes room for it; what the layer below keeps of the file lies behind it.
struct PieceFile : sqlite3_file
{
    sqlite3_file* below() { return reinterpret_cast<sqlite3_file*>(this + 1); }

    Bytes ahead;   // read, and not asked for yet
    Bytes pending; // written, and not handed down yet
    sqlite3_int64 readTo = 0;
    sqlite3_int64 stride = 0; // how much is read at once
};

PieceFile& pieces(sqlite3_file* file)
{
    return *static_cast<PieceFile*>(file);
}

sqlite3_vfs* layerBelow(sqlite3_vfs* layer)
{
    return static_cast<sqlite3_vfs*>(layer->pAppData);
}

// Most of a copy's bytes stand in the file already: reading them costs less than the disk's work
// when they are written once more.
bool isThereAlready(PieceFile& file, const Bytes& bytes)
{
    std::vector<char> present(bytes.content.size());
    return file.below()->pMethods->xRead(file.below(), present.data(),
                                         static_cast<int>(present.size()), bytes.at) == SQLITE_OK &&
           present == bytes.content;
}

// What fails is gone: the engine rolls back, and asks for nothing that it has not synced.
int handDown(PieceFile& file)
{
    const Bytes bytes = std::exchange(file.pending, {});
    if (bytes.content.empty() || isThereAlready(file, bytes))
        return SQLITE_OK;
    return file.below()->pMethods->xWrite(file.below(), bytes.content.data(),
                                          static_cast<int>(bytes.content.size()), bytes.at);
}

// Reads that follow each other fetch more and more at once, others what they ask for.
int readAhead(PieceFile& file, int size, sqlite3_int64 at)
{
    file.stride = at == file.readTo ? std::min(Piece, 2 * file.stride) : 0;
    sqlite3_int64 end = 0;
    if (file.stride <= size)
        file.stride = size;
    else if (const int code = file.below()->pMethods->xFileSize(file.below(), &end))
        return code;
    file.ahead = {at, {}};
    const sqlite3_int64 length = std::min(file.stride, end - at);
    if (length <= size)
        return SQLITE_OK;
    file.ahead.content.resize(static_cast<std::size_t>(length));
    const int code = file.below()->pMethods->xRead(file.below(), file.ahead.content.data(),
                                                   static_cast<int>(length), at);
    if (code != SQLITE_OK)
        file.ahead.content.clear();
    return code;
}

int doClose(sqlite3_file* file)
{
    PieceFile& own = pieces(file);
    const int handed = handDown(own);
    const int closed = own.below()->pMethods->xClose(own.below());
    own.~PieceFile();
    return handed != SQLITE_OK ? handed : closed;
}

int doRead(sqlite3_file* file, void* data, int size, sqlite3_int64 at)
{
    PieceFile& own = pieces(file);
    if (const int code = handDown(own))
        return code;
    if (!own.ahead.hold(at, size))
        if (const int code = readAhead(own, size, at))
            return code;
    own.readTo = at + size;
    if (!own.ahead.hold(at, size))
        return own.below()->pMethods->xRead(own.below(), data, size, at);
    std::memcpy(data, own.ahead.content.data() + (at - own.ahead.at),
                static_cast<std::size_t>(size));
    return SQLITE_OK;
}

int doWrite(sqlite3_file* file, const void* data, int size, sqlite3_int64 at)
{
    PieceFile& own = pieces(file);
    own.ahead.content.clear();
    if (at != own.pending.end() || at + size - own.pending.at > Piece)
        if (const int code = handDown(own))
            return code;
    if (own.pending.content.empty())
        own.pending.at = at;
    const char* bytes = static_cast<const char*>(data);
    own.pending.content.insert(own.pending.content.end(), bytes, bytes + size);
    return SQLITE_OK;
}

// Calls that go down as they are, after what was written before them.
template <auto Method, class... Arguments> int passDown(sqlite3_file* file, Arguments... arguments)
{
    PieceFile& own = pieces(file);
    own.ahead.content.clear();
    if (const int code = handDown(own))
        return code;
    return (own.below()->pMethods->*Method)(own.below(), arguments...);
}

int doSectorSize(sqlite3_file* file)
{
    return pieces(file).below()->pMethods->xSectorSize(pieces(file).below());
}

int doDeviceCharacteristics(sqlite3_file* file)
{
    return pieces(file).below()->pMethods->xDeviceCharacteristics(pieces(file).below());
}

sqlite3_io_methods methods()
{
    sqlite3_io_methods methods{};
    methods.iVersion = 1;
    methods.xClose = doClose;
    methods.xRead = doRead;
    methods.xWrite = doWrite;
    methods.xTruncate = passDown<&sqlite3_io_methods::xTruncate>;
    methods.xSync = passDown<&sqlite3_io_methods::xSync>;
    methods.xFileSize = passDown<&sqlite3_io_methods::xFileSize>;
    methods.xLock = passDown<&sqlite3_io_methods::xLock>;
    methods.xUnlock = passDown<&sqlite3_io_methods::xUnlock>;
    methods.xCheckReservedLock = passDown<&sqlite3_io_methods::xCheckReservedLock>;
    methods.xFileControl = passDown<&sqlite3_io_methods::xFileControl>;
    methods.xSectorSize = doSectorSize;
    methods.xDeviceCharacteristics = doDeviceCharacteristics;
    return methods;
}

int doOpen(sqlite3_vfs* layer, const char* path, sqlite3_file* file, int flags, int* outFlags)
{
    auto* own = new (file) PieceFile;
    own->pMethods = nullptr;
    own->below()->pMethods = nullptr;
    sqlite3_vfs* below = layerBelow(layer);
    const int code = below->xOpen(below, path, own->below(), flags, outFlags);
    if (code == SQLITE_OK) {
        static const sqlite3_io_methods Methods = methods();
        own->pMethods = &Methods;
        return code;
    }
    if (own->below()->pMethods)
        own->below()->pMethods->xClose(own->below());
    own->~PieceFile();
    return code;
}

// Everything but the files themselves is the matter of the layer below.
template <auto Method, class... Arguments> auto askBelow(sqlite3_vfs* layer, Arguments... arguments)
{
    return (layerBelow(layer)->*Method)(layerBelow(layer), arguments...);
}

struct Layer
{
    std::string name;
    sqlite3_vfs own{};
};

} // namespace

const char* inLargePieces(const char* below)
{
    static std::map<sqlite3_vfs*, std::unique_ptr<Layer>> layers;
    sqlite3_vfs* base = sqlite3_vfs_find(below);
    std::unique_ptr<Layer>& layer = layers[base];
    if (!layer) {
        layer = std::make_unique<Layer>();
        layer->name = std::string("pieces-") + base->zName;
        layer->own = *base;
        layer->own.iVersion = 1;
        layer->own.szOsFile += static_cast<int>(sizeof(PieceFile));
        layer->own.zName = layer->name.c_str();
        layer->own.pAppData = base;
        layer->own.xOpen = doOpen;
        layer->own.xDelete = askBelow<&sqlite3_vfs::xDelete>;
        layer->own.xAccess = askBelow<&sqlite3_vfs::xAccess>;
        layer->own.xFullPathname = askBelow<&sqlite3_vfs::xFullPathname>;
        layer->own.xRandomness = askBelow<&sqlite3_vfs::xRandomness>;
        layer->own.xSleep = askBelow<&sqlite3_vfs::xSleep>;
        layer->own.xCurrentTime = askBelow<&sqlite3_vfs::xCurrentTime>;
        layer->own.xGetLastError = askBelow<&sqlite3_vfs::xGetLastError>;
        sqlite3_vfs_register(&layer->own, 0);
    }
    return layer->name.c_str();
}
