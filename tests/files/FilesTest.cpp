// The path helpers, CFileWalker and CWindowedFile on real files in a throw-away folder.

#include <set>

#include "files/FileWalker.h"
#include "files/WholeFile.h"
#include "files/WindowedFile.h"
#include "tests/chunks/ChunkBytes.h"
#include "tests/files/FilesFixture.h"
#include "text/Allocation.h"

TEST_F(FilesFixture, PathHelpers)
{
    WriteFile("f.txt", "12345");
    std::filesystem::create_directories("d");
    WriteFile("ab", "");   // two letters, but no drive
    const std::pair<std::string, bool> rows[] = {   // a path, and whether it exists
        {"", false}, {"Z", false}, {"Z:", true}, {"z:\\", true}, {"Q:", false}, {"1:", false}, {"\\x", false}, {"z:x", false},
        {"z:\\x", false}, {"ab", true}, {"a\\b\\", false}, {Full("f.txt"), true}, {Full("d"), true}, {Full("none"), false},
    };
    for (const auto& [path, exists] : rows) {
        const std::size_t cut = path.rfind('\\');
        CTextString text = Make(path);
        EnsureBackslash(text);
        EXPECT_EQ(PathExists(path.c_str()), exists) << path;
        EXPECT_EQ(std::string(FileNamePart(path.c_str())) + "|" + Bytes(FolderOf(path.c_str(), false)) + "|" +
                      Bytes(FolderOf(path.c_str(), true)) + "|" + Bytes(text),
                  path.substr(cut + 1) + "|" + (cut == std::string::npos ? "|" : path.substr(0, cut + 1) + "|" + path.substr(0, cut)) +
                      "|" + path + (!path.empty() && path.back() == '\\' ? "" : "\\"));
    }
    FileFacts facts{};   // sizes are seen by the walker and the windowed file
    EXPECT_TRUE(GetFileFacts(Full("d").c_str(), &facts) && (facts.attributes & AttributeDirectory));
    EXPECT_FALSE(GetFileFacts(Full("d\\").c_str(), &facts) || GetFileFacts(base.c_str(), nullptr) || PathExists(nullptr));

    // Whole or not at all, through "<name>.tmp": one left by a crash is replaced; a folder in
    // the file's place, or a folder that is not there, leaves no file and no temporary.
    WriteFile("w.tmp", "stale");
    EXPECT_TRUE(WriteWholeFile(Make(Full("w")), Make(std::string("a\0b", 3))) && WriteWholeFile(Make(Full("e")), Make("")));
    EXPECT_FALSE(WriteWholeFile(Make(Full("d")), Make("new")) || WriteWholeFile(Make(Full("none\\w")), Make("a")));
    EXPECT_EQ(ReadFile("w") + "|" + ReadFile("e"), std::string("a\0b|", 4));
    EXPECT_FALSE(PathExists(Full("w.tmp").c_str()) || PathExists(Full("d.tmp").c_str()));
    EXPECT_TRUE(FileIsMissing(Full("none").c_str()) && FileIsMissing(Full("none\\w").c_str()) && !FileIsMissing(Full("d").c_str()));
    CTextString text("ab\\\\");   // a backslash behind the end is no part of the folder
    text.Truncate(2);
    EXPECT_EQ(Bytes(PathInFolder(text, "n")) + Bytes(PathInFolder(Make("z:\\"), "n")) + Bytes(PathInFolder(Make(""), "n")), "ab\\nz:\\n");
    EXPECT_TRUE(text.WriteToHandle(InvalidFileHandle) + text.ReadFromHandle(InvalidFileHandle, 5) == -2 && text.IsEmpty());
}

TEST_F(FilesFixture, WalkerRows)
{
    for (const char* file : {"a.txt", "bb.dat", "sub/c.txt", "sub/sub/deep/d.txt", "dir.txt/g.txt", "dir.txt/f.dat"})
        WriteFile(file, file);
    const std::string full = base + "\\";
    // With each allocation failed in turn, a name cut short is never delivered, nor is a
    // walk of another folder (the current one is elsewhere); each walk is given up inside a
    // folder's search, which must end with the walker for the walks below.
    std::filesystem::current_path(folder.parent_path());
    for (long nth = 1; nth <= 80; ++nth) {
        CFileWalker failing(WalkFiles | WalkFolders | WalkRecurse | WalkFullNames | WalkFacts, nullptr, base.c_str(), nullptr, false);
        CWalkEntry fresh;
        FailAllocation(nth);
        for (int left = 4; left-- > 0 && failing.Next(fresh);)   // facts, when had, are the entry's own
            EXPECT_TRUE(Bytes(fresh.name).rfind(full, 0) == 0 && Bytes(fresh.name).back() != '\\' && PathExists(fresh.name.Text()) &&
                        (!fresh.factsValid || !(fresh.facts.attributes & AttributeDirectory) == !fresh.isFolder)) << Bytes(fresh.name);
        FailAllocation(0);
        if (nth > 70)   // given up by hand as well: nothing stays pending, and the walk is over
            failing.Reset();
        EXPECT_FALSE(nth > 70 && (failing.PendingCount() || failing.Next(fresh)));
    }
    std::filesystem::current_path(folder);
    // What each walk gives, sorted: the root, then each entry, "/" for a folder, ":" and the
    // size when its facts were had, "~" for this folder in full names.
    const std::tuple<std::uint32_t, const char*, std::string, const char*, bool, const char*> rows[] = {
        {WalkFiles | WalkFullNames, "*.TXT", full, nullptr, false, "~\\ ~\\a.txt"},
        {WalkFiles | WalkFacts, nullptr, base, "", false, "~\\ a.txt:5 bb.dat:6"},
        {WalkFolders, "*.dat", ".", nullptr, false, "~\\ dir.txt/ sub/"},
        {WalkFiles | WalkFolders | WalkRecurse, nullptr, "", nullptr, false,
         "~\\ a.txt bb.dat dir.txt/ dir.txt\\f.dat dir.txt\\g.txt sub/ sub\\c.txt sub\\sub/ sub\\sub\\deep/ sub\\sub\\deep\\d.txt"},
        {WalkFiles | WalkRecurse | WalkFullNames, "*.txt", base, "*", false,
         "~\\ ~\\a.txt ~\\dir.txt\\g.txt ~\\sub\\c.txt ~\\sub\\sub\\deep\\d.txt"},
        {WalkFiles | WalkRecurse, "*.txt", base, "*.TXT", false, "~\\ a.txt dir.txt\\g.txt"},
        {WalkFiles | WalkFolders | WalkRecurse, "*.txt", base, "s*", true, "~\\ a.txt sub/ sub\\c.txt sub\\sub/ sub\\sub\\deep/ sub\\sub\\deep\\d.txt"},
        {WalkFiles | WalkFolders | WalkRecurse, "*.txt", base, "s*", false, "~\\ a.txt sub/ sub\\c.txt sub\\sub/"},
        {WalkFolders | WalkRecurse | WalkFacts, nullptr, base, "*", false, "~\\ dir.txt/:0 sub/:0 sub\\sub/:0 sub\\sub\\deep/:0"},
        {WalkRecurse | WalkFullNames, nullptr, base, nullptr, false, ""},
        {WalkFiles, nullptr, ".\\sub\\sub\\..\\..\\sub", nullptr, false, "~\\sub\\ c.txt"},
        {WalkFiles, nullptr, ".missing", nullptr, false, ".missing\\"},
    };
    for (const auto& [flags, files, start, folders, anyBelow, expected] : rows) {
        CFileWalker walker(flags, files, start.c_str(), folders, anyBelow);
        auto shown = [&](std::string name) { return name.rfind(full, 0) == 0 ? "~\\" + name.substr(full.size()) : name; };
        std::set<std::string> walked;
        std::string order;
        CWalkEntry entry;
        while (walker.Next(entry)) {
            const std::string name = shown(Bytes(entry.name));
            const std::size_t cut = name.rfind('\\');   // a folder comes ahead of what it holds
            EXPECT_TRUE(!(flags & WalkFolders) || cut == std::string::npos ||
                        order.find(" " + name.substr(0, cut) + "/") != std::string::npos);
            order += " " + name + (entry.isFolder == 1 ? "/" : "");
            walked.insert(name + (entry.isFolder == 1 ? "/" : "") +
                          (entry.factsValid == 1 ? ":" + std::to_string(entry.facts.sizeLow * !entry.isFolder) : ""));
        }
        std::string walk = shown(Bytes(walker.Root()));
        for (const std::string& name : walked)
            walk += " " + name;
        EXPECT_EQ(walk, expected);
        EXPECT_FALSE(walker.Next(entry) || walker.PendingCount());
        EXPECT_EQ(Bytes(CurrentFolder()), base);
    }
}

TEST_F(FilesFixture, WindowedFileReads)
{
    std::string bytes(300000, 0);
    for (std::size_t i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<char>(i * 7 + i / 251);
    WriteFile("w.bin", bytes);
    WriteFile("empty", "");
    WriteFile("one", "1");
    CWindowedFile file(Full("w.bin").c_str());
    CTextString out(0);
    std::uint16_t word = 0, word2 = 0;
    std::uint32_t value = 0, low = 0, high = 1;
    ASSERT_TRUE(file.Open(false) && file.LastError() == 0);
    // Each read, and where the window starts afterwards: forward moves start at the byte,
    // backward ones half a window before it; a failed read, also one the file cannot seek
    // to, keeps the window.
    const std::uint64_t reads[][2] = {{1, 0}, {0, 0}, {131071, 0}, {131071, 0}, {200000, 200000}, {70000, 4464}, {300000, 4464},
                                      {135535, 4464}, {135536, 135536}, {50000, 0}, {299999, 299999},
                                      {std::uint64_t{1} << 63, 299999}, {300001, 299999}};
    for (std::size_t i = 0; i < sizeof reads / sizeof reads[0]; ++i) {
        const std::uint64_t at = reads[i][0];
        const int expected = at < bytes.size() ? bytes[at] & 0xFF : -1;
        EXPECT_EQ(i % 2 ? file.ReadByte(at) : file.ReadByte(static_cast<std::uint32_t>(at)), expected) << at;
        EXPECT_EQ(file.WindowStart(), reads[i][1]) << at;
    }
    EXPECT_TRUE(!file.Read(out, std::uint32_t{299998}, 5) && Bytes(out) == bytes.substr(299998));
    EXPECT_TRUE(file.Read(out, std::uint64_t{131070}, 140000) && Bytes(out) == bytes.substr(131070, 140000));
    EXPECT_TRUE(file.ReadBigEndian16(&word, std::uint32_t{328}) && file.ReadBigEndian16(&word2, std::uint64_t{131071}) &&
                file.ReadBigEndian32(&value, std::uint64_t{196605}));
    EXPECT_EQ(Be16(word) + Be16(word2) + Be32(value), bytes.substr(328, 2) + bytes.substr(131071, 2) + bytes.substr(196605, 4));
    EXPECT_FALSE(file.ReadBigEndian16(&word, std::uint64_t{299999}) || file.ReadBigEndian16(&word, std::uint32_t{299999}) ||
                 file.ReadBigEndian32(&value, std::uint64_t{299997}));
    const std::uint64_t window = file.WindowStart();   // its last byte is read from it
    EXPECT_TRUE(file.Read(out, file.WindowLast(), 1) && file.ReadAll(out) && Bytes(out) == bytes && file.WindowStart() == window);
    EXPECT_TRUE(file.Close() && file.Close() && file.LastError() == 0 && file.WindowStart() == ~std::uint64_t{0} &&
                file.WindowLast() == 0);
    EXPECT_EQ(file.ReadByte(std::uint64_t{0}) + file.ReadByte(std::uint32_t{0}), -2);
    EXPECT_FALSE(file.ReadAll(out));

    ASSERT_TRUE(file.Open(true));   // whole-file mode
    EXPECT_EQ(file.ReadByte(std::uint32_t{299999}) + file.ReadByte(std::uint64_t{300000}), (bytes[299999] & 0xFF) - 1);
    EXPECT_TRUE(file.Read(out, std::uint32_t{0}, 3) && Bytes(out) == bytes.substr(0, 3));
    EXPECT_TRUE(!file.Read(out, std::uint64_t{299998}, 5) && Bytes(out) == bytes.substr(299998));
    EXPECT_TRUE(file.Size(&low, &high) && low == 300000 && high == 0);

    EXPECT_TRUE(file.LoadWhole(Full("w.bin").c_str(), out) && Bytes(out) == bytes && file.ReadByte(std::uint32_t{0}) < 0);
    EXPECT_TRUE(file.LoadWhole(Full("empty").c_str(), out) && out.IsEmpty());
    EXPECT_TRUE(file.Open(false) && file.ReadByte(std::uint64_t{0}) < 0 && file.Size(&low, nullptr) && low == 0);
    file.name.Assign(Full("one").c_str());
    EXPECT_TRUE(file.Open(false) && file.WindowStart() + file.WindowLast() == 0);
    std::error_code kept;   // deleted while open, where the system allows it: it has no size to read
    std::filesystem::remove(folder / "one", kept);
    EXPECT_TRUE(kept || !file.ReadAll(out));
    std::filesystem::resize_file(folder / "empty", 0x600000001);   // sparse now: 24 GiB and a byte
    CWindowedFile sparse(Full("empty").c_str());   // the low halves miss a window across 4 GiB: it loads again where it stands
    EXPECT_TRUE(sparse.Size(&low, &high) && low == 1 && high == 6 && sparse.Open(false) && sparse.ReadByte(std::uint64_t{0xFFFFF000}) == 0 &&
                sparse.ReadByte(std::uint32_t{0xFFFFF000}) == 0 && sparse.WindowStart() == 0xFFFFF000);
    file.name.Assign(Full("w.bin").c_str());
    FailAllocation(1);   // the window, then the image
    EXPECT_FALSE(file.Open(false));
    FailAllocation(2);
    EXPECT_TRUE(!file.Open(true) && file.ReadByte(std::uint32_t{0}) < 0 && file.Open(false));
    for (bool wide : {false, true}) {   // no memory for the bytes read
        CTextString little(0);
        FailAllocation(1);
        EXPECT_FALSE(wide ? file.Read(little, std::uint64_t{0}, 100) : file.Read(little, std::uint32_t{0}, 100));
    }
    FailAllocation(0);
    EXPECT_FALSE(CWindowedFile(nullptr).Open(false) || CWindowedFile(Full("none").c_str()).Open(false) ||
                 CWindowedFile(Full("none").c_str()).Size(&low, nullptr));
}
