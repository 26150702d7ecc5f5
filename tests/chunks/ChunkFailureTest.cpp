// The chunk writer's failure paths, natively: this executable's own write(2) lets the Nth call
// from now fail as a full disk would, and a main file that is a folder makes the copy fail.

#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>

#include "chunks/ChunkFile.h"
#include "tests/chunks/ChunkBytes.h"
#include "tests/files/FilesFixture.h"

namespace {
long g_failingWrite = 0;   // 1: the next write fails; 0: none
}

// Every call of write made from this executable, the platform layer's among them, comes here.
extern "C" ssize_t write(int descriptor, const void* bytes, size_t n)
{
    if (g_failingWrite > 0 && --g_failingWrite == 0) {
        errno = ENOSPC;
        return -1;
    }
    return syscall(SYS_write, descriptor, bytes, n);
}

// root { 1 { 2 { 3 { "abc" } } } }, closed by Close. Whatever fails, the groups around it are
// still completed in the .tmp twin, Close answers false and the main file stays.
TEST_F(FilesFixture, ChunkWriterFailures)
{
    auto header = [](std::uint32_t id) { return Be16(1) + Be32(0) + Be32(id) + Be32(0); };   // as first written
    // What, the write that fails counted from WriteLeaf and from Close, and the .tmp twin.
    const std::tuple<const char*, long, long, std::string> rows[] = {
        {"leaf", 1, 0, Group(0, 1, Group(1, 1, Group(2, 1, Group(3, 0, ""))))},
        {"group 3", 0, 1, Group(0, 1, Group(1, 1, Group(2, 1, header(3) + Leaf("abc"))))},
        {"group 2", 0, 6, Group(0, 1, Group(1, 1, header(2) + Group(3, 1, Leaf("abc"))))},
        {"root", 0, 13, header(0) + Group(1, 1, Group(2, 1, Group(3, 1, Leaf("abc"))))},
        {"copy", 0, 0, Group(0, 1, Group(1, 1, Group(2, 1, Group(3, 1, Leaf("abc")))))},
    };
    for (const auto& [what, leafWrite, closeWrite, tmp] : rows) {
        WriteFile(closeWrite + leafWrite ? "m.chk" : "m.chk/x", "old");   // a folder, for the copy to fail
        CChunkFile file;
        ASSERT_TRUE(file.BeginFile(Full("m.chk").c_str()) && file.OpenGroup(1) && file.OpenGroup(2) && file.OpenGroup(3));
        g_failingWrite = leafWrite;
        EXPECT_EQ(file.WriteLeaf("abc", 3), leafWrite == 0) << what;
        g_failingWrite = closeWrite;
        EXPECT_FALSE(file.Close()) << what;
        g_failingWrite = 0;
        EXPECT_EQ(ReadFile("m.chk.tmp"), "XFF" + Be16(1) + tmp) << what;
        EXPECT_EQ(std::filesystem::is_directory("m.chk") ? "folder" : ReadFile("m.chk"), closeWrite + leafWrite ? "old" : "folder");
        std::filesystem::remove_all("m.chk");
    }
}
