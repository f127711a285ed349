#pragma once

// Makes a layer over one of the engine's file layers (null: its own), for handles that walk through
// whole files: small reads and writes that follow each other reach the layer below in pieces of up
// to 64 KiB. What a cut leaves is what the engine is made for, since all is handed down before each
// sync; a write that fails is told by the call that hands it down, at the latest by the sync. No
// shared memory and no mapping. Returns the new layer's name.
const char* inLargePieces(const char* below);
