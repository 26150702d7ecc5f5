// make_profile: writes a profile file through the chunk writer, so that tests and the
// sample installation never carry profile files made by hand.
//
//   make_profile FILE "DISPLAY NAME" [--name-first] [--extras] [--filler BYTES]
//
// --name-first  puts the name group ahead of the type group
// --extras      adds groups and leaves of other ids around and inside groups 1 and 3
// --filler N    puts a group holding a leaf of N zero bytes ahead of everything else

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "chunks/EventProfile.h"
#include "platform/Files.h"

namespace {

const std::uint32_t OtherGroupId = 7;

struct Options {
    const char* file = nullptr;
    const char* name = nullptr;
    bool nameFirst = false;
    bool extras = false;
    unsigned long filler = 0;
};

bool ParseOptions(int argc, char** argv, Options& options)
{
    if (argc < 3)
        return false;
    options.file = argv[1];
    options.name = argv[2];
    for (int i = 3; i < argc; ++i) {
        if (std::strcmp(argv[i], "--name-first") == 0) {
            options.nameFirst = true;
        } else if (std::strcmp(argv[i], "--extras") == 0) {
            options.extras = true;
        } else if (std::strcmp(argv[i], "--filler") == 0 && i + 1 < argc) {
            char* end = nullptr;
            options.filler = std::strtoul(argv[++i], &end, 10);
            if (*end != '\0')
                return false;
        } else {
            return false;
        }
    }
    return true;
}

bool WriteOtherGroup(CChunkFile& file, const char* text)
{
    return file.OpenGroup(OtherGroupId) && file.WriteLeaf(text, static_cast<std::uint32_t>(std::strlen(text))) &&
           file.CloseGroup();
}

// A group whose child 0 is text; with extras, a leaf and a group follow it inside.
bool WriteGroup(CChunkFile& file, std::uint32_t id, const char* text, bool extras)
{
    if (!file.OpenGroup(id) || !file.WriteLeaf(text, static_cast<std::uint32_t>(std::strlen(text))))
        return false;
    if (extras && (!file.WriteLeaf("extra", 5) || !WriteOtherGroup(file, "inner")))
        return false;
    return file.CloseGroup();
}

bool WriteFiller(CChunkFile& file, unsigned long size)
{
    const std::uint32_t piece = 1 << 20;
    static char zeros[piece];
    if (!file.OpenGroup(OtherGroupId))
        return false;
    for (unsigned long left = size; left > 0;) {
        const std::uint32_t n = left < piece ? static_cast<std::uint32_t>(left) : piece;
        if (!file.WriteLeaf(zeros, n))
            return false;
        left -= n;
    }
    return file.CloseGroup();
}

}   // namespace

int main(int argc, char** argv)
{
    Options options;
    if (!ParseOptions(argc, argv, options)) {
        std::fprintf(stderr, "usage: make_profile FILE \"DISPLAY NAME\" [--name-first] [--extras] [--filler BYTES]\n");
        return 2;
    }
    CEventProfile profile;
    bool ok = profile.BeginFile(options.file);
    if (ok && options.filler > 0)
        ok = WriteFiller(profile, options.filler);
    if (ok && options.extras)
        ok = WriteOtherGroup(profile, "before");
    const char* type = "EventProfile";
    if (ok && options.nameFirst)
        ok = WriteGroup(profile, CEventProfile::NameGroupId, options.name, options.extras) &&
             WriteGroup(profile, CEventProfile::TypeGroupId, type, options.extras);
    else if (ok)
        ok = WriteGroup(profile, CEventProfile::TypeGroupId, type, options.extras) &&
             WriteGroup(profile, CEventProfile::NameGroupId, options.name, options.extras);
    if (ok && options.extras)
        ok = WriteOtherGroup(profile, "after");
    if (!profile.Close() || !ok) {
        std::fprintf(stderr, "make_profile: could not write %s (error %u)\n", options.file,
                     static_cast<unsigned>(LastFileError()));
        return 1;
    }
    return 0;
}
