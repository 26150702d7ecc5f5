// Path helpers and the file backend beneath them, on real files of either build.

#include <cstring>
#include <set>
#include <string>
#include <vector>

#include "files/Paths.h"
#include "platform/Files.h"
#include "tests/files/FilesFixture.h"
#include "tests/text/TextHelpers.h"

namespace {

struct PathSplitRow {
    const char* path;
    const char* name;
    const char* folderWithout;
    const char* folderWith;
};

}  // namespace

TEST(PathText, EnsureBackslashAddsExactlyOne)
{
    for (const char* path : {"", "a", "C:", "C:\\x\\", "\\"}) {
        CTextString text(path);
        EnsureBackslash(text);
        std::string expected(path);
        if (expected.empty() || expected.back() != '\\')
            expected += '\\';
        EXPECT_EQ(Bytes(text), expected) << path;
    }
}

TEST(PathText, FileNamePartAndFolderOf)
{
    const PathSplitRow rows[] = {
        {"", "", "", ""},
        {"name.txt", "name.txt", "", ""},
        {"\\name", "name", "", "\\"},
        {"C:\\name", "name", "C:", "C:\\"},
        {"C:\\dir\\sub\\", "", "C:\\dir\\sub", "C:\\dir\\sub\\"},
        {"dir\\a\\b.lnk", "b.lnk", "dir\\a", "dir\\a\\"},
        {"C:/dir/x", "C:/dir/x", "", ""},   // the slash is no separator here
    };
    for (const PathSplitRow& row : rows) {
        const char* part = FileNamePart(row.path);
        EXPECT_STREQ(part, row.name) << row.path;
        EXPECT_TRUE(part >= row.path && part <= row.path + std::strlen(row.path)) << "points into the path";
        EXPECT_EQ(Bytes(FolderOf(row.path, true)), row.folderWithout) << row.path;
        EXPECT_EQ(Bytes(FolderOf(row.path, false)), row.folderWith) << row.path;
    }
    EXPECT_TRUE(FolderOf(nullptr, false).IsEmpty());
}

TEST(PathText, DriveRootsAreAskedOfTheDriveTable)
{
    const std::uint32_t drives = GetLogicalDriveMask();
    ASSERT_NE(drives, 0u);
    for (char letter = 'A'; letter <= 'Z'; ++letter) {
        const bool present = (drives >> (letter - 'A') & 1u) != 0;
        const char lower = static_cast<char>(letter + ('a' - 'A'));
        for (const std::string& path : {std::string{letter, ':'}, std::string{lower, ':'},
                                         std::string{letter, ':', '\\'}, std::string{lower, ':', '\\'}})
            EXPECT_EQ(PathExists(path.c_str()), present) << path;
    }
    EXPECT_FALSE(PathExists(nullptr));
    EXPECT_FALSE(PathExists(""));
}

TEST_F(FilesFixture, PathExistsAsksTheFileSystemOtherwise)
{
    WriteFile("a", "x");
    WriteFile("ab", "x");
    MakeFolder("dir");
    EXPECT_FALSE(PathExists("a")) << "one byte is never found";
    EXPECT_TRUE(PathExists("ab"));
    EXPECT_TRUE(PathExists("dir"));
    EXPECT_TRUE(PathExists(Full("dir").c_str()));
    EXPECT_TRUE(PathExists(Full("ab").c_str()));
    EXPECT_FALSE(PathExists(Full("missing").c_str()));
    EXPECT_FALSE(PathExists("1:"));
}

TEST_F(FilesFixture, FileFactsAndSize)
{
    WriteFile("five.txt", "12345");
    WriteFile("empty.txt", "");
    MakeFolder("dir.txt");

    FileFacts facts = {};
    ASSERT_TRUE(GetFileFacts(Full("five.txt").c_str(), &facts));
    EXPECT_EQ(facts.valid, 7u);
    EXPECT_EQ(facts.sizeLow, 5u);
    EXPECT_EQ(facts.sizeHigh, 0u);
    EXPECT_EQ(facts.attributes & AttributeDirectory, 0u);
    EXPECT_NE(facts.written, 0u);

    ASSERT_TRUE(GetFileFacts("DIR.TXT", &facts)) << "names match without regard to case";
    EXPECT_NE(facts.attributes & AttributeDirectory, 0u);

    std::uint64_t size = 99;
    EXPECT_TRUE(GetFileSize64("empty.txt", &size));
    EXPECT_EQ(size, 0u);
    EXPECT_TRUE(GetFileSize64("f?ve.*", &size)) << "a wildcard gives the first match";
    EXPECT_EQ(size, 5u);

    EXPECT_FALSE(GetFileFacts("dir.txt\\", &facts)) << "a trailing backslash is not found";
    EXPECT_FALSE(GetFileFacts("missing", &facts));
    EXPECT_FALSE(GetFileFacts(nullptr, &facts));
    EXPECT_FALSE(GetFileFacts("five.txt", nullptr));
    EXPECT_FALSE(GetFileSize64("missing\\five.txt", &size));
}

TEST_F(FilesFixture, WriteWholeFileCreatesOrCuts)
{
    const std::string bytes("a\0b\xFF", 4);
    EXPECT_TRUE(WriteWholeFile("out.bin", Make(bytes)));
    EXPECT_EQ(ReadFile("out.bin"), bytes);
    EXPECT_TRUE(WriteWholeFile("out.bin", CTextString("")));
    EXPECT_TRUE(PathExists("out.bin"));
    EXPECT_EQ(ReadFile("out.bin"), "");
    EXPECT_FALSE(WriteWholeFile("missing\\out.bin", CTextString("x")));
}

TEST_F(FilesFixture, CurrentAndModuleFolders)
{
    EXPECT_EQ(base.find('/'), std::string::npos);
    EXPECT_TRUE(PathExists(base.c_str()));

    const std::string program = base + "\\Prog.exe";
    OverrideProgramPath(program.c_str());
    EXPECT_EQ(Bytes(ModulePath(nullptr)), program);
    EXPECT_EQ(Bytes(ModuleFolder(nullptr)), base);
    OverrideProgramPath("C:\\Prog.exe");
    EXPECT_EQ(Bytes(ModuleFolder(nullptr)), "C:");
    OverrideProgramPath(nullptr);

    const CTextString real = ModulePath(nullptr);
    EXPECT_EQ(std::string(FileNamePart(real.Text())).rfind("files_tests", 0), 0u) << real.Text();
    EXPECT_TRUE(PathExists(real.Text()));
    EXPECT_TRUE(PathExists(ModuleFolder(nullptr).Text()));
}

// What the layers above rely on of the backend: Windows error codes, copies over existing
// files, and read-only files that refuse writes and deletion whoever runs the test.
TEST_F(FilesFixture, BackendErrorCodesAndCopies)
{
    WriteFile("file.txt", "old");
    WriteFile("source.txt", "new text");

    EXPECT_EQ(OpenFileForReading("missing.txt"), InvalidFileHandle);
    EXPECT_EQ(LastFileError(), ErrorFileNotFound);
    EXPECT_EQ(OpenFileForReading("missing\\file.txt"), InvalidFileHandle);
    EXPECT_EQ(LastFileError(), ErrorPathNotFound);
    EXPECT_EQ(GetAttributes("missing.txt"), InvalidAttributes);

    EXPECT_TRUE(CopyFileOver("source.txt", "file.txt"));
    EXPECT_EQ(ReadFile("file.txt"), "new text");
    EXPECT_TRUE(DeleteFileAt("source.txt"));
    EXPECT_FALSE(DeleteFileAt("source.txt"));
    EXPECT_EQ(LastFileError(), ErrorFileNotFound);
}

TEST_F(FilesFixture, ReadOnlyFilesRefuseWritesAndDeletion)
{
    WriteFile("file.txt", "new text");
    WriteFile("source.txt", "other");
    ASSERT_TRUE(SetAttributes("file.txt", AttributeReadOnly));
    EXPECT_EQ(GetAttributes("file.txt") & (AttributeReadOnly | AttributeDirectory), AttributeReadOnly);
    const FileHandle writer = CreateFileForWriting("file.txt");
    if (writer != InvalidFileHandle) {
        // Wine keeps the read-only bit as permission bits only, which root passes by.
        CloseFile(writer);
        SetAttributes("file.txt", AttributeNormal);
        GTEST_SKIP() << "this system lets its user write a read-only file (Wine run as root)";
    }
    EXPECT_EQ(LastFileError(), ErrorAccessDenied);
    EXPECT_FALSE(WriteWholeFile("file.txt", CTextString("x")));
    EXPECT_FALSE(CopyFileOver("source.txt", "file.txt"));
    EXPECT_FALSE(DeleteFileAt("file.txt"));
    EXPECT_EQ(LastFileError(), ErrorAccessDenied);
    EXPECT_EQ(ReadFile("file.txt"), "new text");
    const FileHandle reader = OpenFileForReading("file.txt");
    EXPECT_NE(reader, InvalidFileHandle) << "a read-only file still opens for reading";
    EXPECT_TRUE(CloseFile(reader));

    ASSERT_TRUE(SetAttributes("file.txt", AttributeNormal));
    EXPECT_EQ(GetAttributes("file.txt") & AttributeReadOnly, 0u);
    EXPECT_TRUE(DeleteFileAt("file.txt"));
    EXPECT_FALSE(PathExists("file.txt"));
}

TEST_F(FilesFixture, SearchMasksAndDotEntries)
{
    WriteFile("dir\\Alpha.TXT", "");
    WriteFile("dir\\beta.txt", "");
    WriteFile("dir\\gamma.dat", "");
    struct Row {
        const char* pattern;
        std::multiset<std::string> names;
    } rows[] = {
        {"dir\\*", {".", "..", "Alpha.TXT", "beta.txt", "gamma.dat"}},
        {"dir\\*.txt", {"Alpha.TXT", "beta.txt"}},
        {"dir\\?ETA.*", {"beta.txt"}},
        {"dir\\*a*", {"Alpha.TXT", "beta.txt", "gamma.dat"}},
        {"dir\\alpha.txt", {"Alpha.TXT"}},
        {"dir\\b*t", {"beta.txt"}},
    };
    for (const Row& row : rows) {
        std::multiset<std::string> names;
        std::vector<std::string> order;
        FindData data;
        const FindHandle search = FindFirst(row.pattern, &data);
        ASSERT_NE(search, InvalidFindHandle) << row.pattern;
        do
            order.push_back(data.name);
        while (FindNext(search, &data));
        EXPECT_EQ(LastFileError(), ErrorNoMoreFiles);
        FindEnd(search);
        names.insert(order.begin(), order.end());
        EXPECT_EQ(names, row.names) << row.pattern;
        if (names.count(".")) {
            ASSERT_GE(order.size(), 2u);
            EXPECT_EQ(order[0], ".");
            EXPECT_EQ(order[1], "..");
        }
    }
    FindData data;
    EXPECT_EQ(FindFirst("dir\\*.none", &data), InvalidFindHandle);
    EXPECT_EQ(LastFileError(), ErrorFileNotFound);
    EXPECT_EQ(FindFirst("missing\\*", &data), InvalidFindHandle);
    EXPECT_EQ(LastFileError(), ErrorPathNotFound);
}
