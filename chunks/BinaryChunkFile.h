#pragma once
// CBinaryChunkFile: the chunk file kind that begins "XBF", which every profile is.

#include "chunks/ChunkFile.h"

class CBinaryChunkFile : public CChunkFile {
public:
    CBinaryChunkFile() { signature.Assign("XBF"); }
};
