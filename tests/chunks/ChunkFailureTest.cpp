// Chunk files when file calls fail, natively: the native backend's seams fail the Nth call or
// write from now, and a main file that is a folder makes the copy fail.

#include "chunks/ChunkFile.h"
#include "platform/posix/IoFaults.h"
#include "tests/chunks/ChunkBytes.h"
#include "tests/files/FilesFixture.h"

// root { 1 { 2 { 3 { "abc" } } } }, closed by Close (the last row: group by group). Whatever
// fails, the groups around it are still completed in the .tmp twin, Close answers false and
// the main file stays.
TEST_F(FilesFixture, ChunkFilesWhenFileCallsFail)
{
    auto header = [](std::uint32_t id) { return Be16(1) + Be32(0) + Be32(id) + Be32(0); };   // as first written
    // What, the write that fails counted from WriteLeaf and from Close (the file call, for the
    // close of the twin), and the .tmp twin.
    const std::tuple<const char*, long, long, std::string> rows[] = {
        {"leaf", 1, 0, Group(0, 1, Group(1, 1, Group(2, 1, Group(3, 0, ""))))},
        {"group 3", 0, 1, Group(0, 1, Group(1, 1, Group(2, 1, header(3) + Leaf("abc"))))},
        {"root", 0, 13, header(0) + Group(1, 1, Group(2, 1, Group(3, 1, Leaf("abc"))))},
        {"copy", 0, 0, Group(0, 1, Group(1, 1, Group(2, 1, Group(3, 1, Leaf("abc")))))},
        {"close", 0, 17, Group(0, 1, Group(1, 1, Group(2, 1, Group(3, 1, Leaf("abc")))))},
    };
    for (const auto& [what, leafWrite, closeWrite, tmp] : rows) {
        WriteFile(closeWrite + leafWrite ? "m.chk" : "m.chk/x", "old");   // a folder, for the copy to fail
        CChunkFile file;
        ASSERT_TRUE(file.BeginFile(Full("m.chk").c_str()) && file.OpenGroup(1) && file.OpenGroup(2) && file.OpenGroup(3));
        IoWrites().FailAt(leafWrite);
        EXPECT_EQ(file.WriteLeaf("abc", 3), leafWrite == 0) << what;
        (closeWrite > 16 ? IoCalls() : IoWrites()).FailAt(closeWrite);
        EXPECT_FALSE(closeWrite > 16 ? (file.CloseGroup(), file.CloseGroup(), file.CloseGroup(), file.CloseGroup()) : file.Close()) << what;
        EXPECT_EQ(ReadFile("m.chk.tmp"), "XFF" + Be16(1) + tmp) << what;
        EXPECT_EQ(std::filesystem::is_directory("m.chk") ? "folder" : ReadFile("m.chk"), closeWrite + leafWrite ? "old" : "folder");
        std::filesystem::remove_all("m.chk");
    }

    // A file taken over from its twin is read through the window like any other: its close can
    // fail, and so does Close then. A byte inside the window and a drive root need no file call.
    WriteFile("r.chk.tmp", "XFF" + Be16(1) + Group(0, 0, ""));
    CChunkFile reader;
    CWindowedFile window(Full("r.chk").c_str());
    ASSERT_TRUE(reader.Open(Full("r.chk").c_str()) && window.Open(false));
    IoCalls().FailAt(1);
    EXPECT_FALSE(reader.Close());
    IoCalls().FailAt(1);
    EXPECT_TRUE(window.ReadByte(std::uint64_t{0}) == 'X' && PathExists("Z:") && PathExists("z:\\"));
    IoCalls().FailAt(0);

    WriteFile("n.chk", "XFF" + Be16(1) + Group(0, 2, Leaf("a") + Leaf("b")));
    for (long nth = 1, open = OpenFiles(); nth <= 16; ++nth) {   // an open that fails for memory leaves no file open
        CChunkFile failing;
        FailAllocation(nth);
        EXPECT_TRUE(failing.Open(Full("n.chk").c_str()) || OpenFiles() == open) << nth;
        FailAllocation(0);
    }

    // A current folder longer than a path buffer holds is no folder at all.
    const std::filesystem::path deep = folder / std::string(200, 'd') / std::string(100, 'e');
    std::filesystem::create_directories(deep);
    std::filesystem::current_path(deep);
    EXPECT_TRUE(CurrentFolder().IsEmpty());
    std::filesystem::current_path(folder);
}
