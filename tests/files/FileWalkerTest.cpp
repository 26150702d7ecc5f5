// CFileWalker over a small real tree: every flag combination that changes the outcome,
// the masks, nesting and its names, the start folder rules, and failing allocations.

#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include "files/FileWalker.h"
#include "tests/files/FilesFixture.h"
#include "text/Allocation.h"

namespace {

struct Walked {
    std::string name;
    bool folder;
    bool factsValid;
    std::uint32_t size;
    bool operator<(const Walked& other) const { return name < other.name; }
};

std::vector<Walked> Walk(CFileWalker& walker, int* mostPending = nullptr)
{
    std::vector<Walked> walked;
    CWalkEntry entry;
    while (walker.Next(entry)) {
        walked.push_back({entry.name.Text(), entry.isFolder != 0, entry.factsValid != 0, entry.facts.sizeLow});
        if (mostPending)
            *mostPending = std::max(*mostPending, walker.PendingCount());
        if (walked.size() > 100)
            break;
    }
    return walked;
}

// Files of a folder come before its subfolders, and everything below a subfolder comes
// right behind it: the walk is depth-first, pre-order, files first.
void ExpectFilesFirstPreOrder(const std::vector<Walked>& walked)
{
    auto parent = [](const std::string& name) {
        const std::size_t slash = name.rfind('\\');
        return slash == std::string::npos ? std::string() : name.substr(0, slash);
    };
    for (std::size_t i = 0; i < walked.size(); ++i) {
        for (std::size_t j = 0; j < i; ++j)
            if (!walked[i].folder && walked[j].folder && parent(walked[j].name) == parent(walked[i].name))
                ADD_FAILURE() << walked[i].name << " comes after the folder " << walked[j].name;
        if (!walked[i].folder)
            continue;
        const std::string prefix = walked[i].name + "\\";
        std::size_t k = i + 1;
        while (k < walked.size() && walked[k].name.compare(0, prefix.size(), prefix) == 0)
            ++k;
        for (; k < walked.size(); ++k)
            EXPECT_NE(walked[k].name.compare(0, prefix.size(), prefix), 0)
                << walked[k].name << " is not next to its folder " << walked[i].name;
    }
}

std::set<std::string> Names(const std::vector<Walked>& walked)
{
    std::set<std::string> names;
    for (const Walked& w : walked)
        names.insert(w.name);
    return names;
}

class FileWalkerTest : public FilesFixture {
protected:
    void SetUp() override
    {
        FilesFixture::SetUp();
        WriteFile("tree\\a.txt", "aaaa");
        WriteFile("tree\\b.dat", "bb");
        WriteFile("tree\\sub1\\c.txt", "c");
        WriteFile("tree\\sub1\\deep\\d.txt", "ddd");
        WriteFile("tree\\sub2.txt\\e.dat", "");
        WriteFile("tree\\sub2.txt\\g.txt", "");
        WriteFile("tree\\Other\\f.txt", "");
        MakeFolder("tree\\empty");
    }
};

struct FlagRow {
    std::uint32_t flags;
    const char* fileMask;
    const char* folderMask;
    bool anyFolderBelow;
    std::set<std::string> expected;   // folders end in "/" here only, to tell them apart
};

}  // namespace

TEST_F(FileWalkerTest, FlagsAndMasksDecideWhatComes)
{
    const FlagRow rows[] = {
        {0, nullptr, nullptr, false, {}},
        {WalkRecurse, nullptr, nullptr, false, {}},
        {WalkFullNames, nullptr, nullptr, false, {}},
        {WalkRecurse | WalkFacts | WalkFullNames, nullptr, nullptr, false, {}},
        {WalkFiles, nullptr, nullptr, false, {"a.txt", "b.dat"}},
        {WalkFolders, nullptr, nullptr, false, {"sub1/", "sub2.txt/", "Other/", "empty/"}},
        {WalkFiles | WalkFolders, "", "", false, {"a.txt", "b.dat", "sub1/", "sub2.txt/", "Other/", "empty/"}},
        {WalkFiles | WalkRecurse, nullptr, nullptr, false,
         {"a.txt", "b.dat", "sub1\\c.txt", "sub1\\deep\\d.txt", "sub2.txt\\e.dat", "sub2.txt\\g.txt", "Other\\f.txt"}},
        {WalkFolders | WalkRecurse, nullptr, nullptr, false,
         {"sub1/", "sub1\\deep/", "sub2.txt/", "Other/", "empty/"}},
        {WalkFiles | WalkFolders | WalkRecurse, "*", "*", false,
         {"a.txt", "b.dat", "sub1/", "sub1\\c.txt", "sub1\\deep/", "sub1\\deep\\d.txt", "sub2.txt/",
          "sub2.txt\\e.dat", "sub2.txt\\g.txt", "Other/", "Other\\f.txt", "empty/"}},
        // A folder that matches the file mask is never a file.
        {WalkFiles, "*.TXT", nullptr, false, {"a.txt"}},
        // Different masks: a second search visits every folder.
        {WalkFiles | WalkRecurse, "*.txt", nullptr, false,
         {"a.txt", "sub1\\c.txt", "sub1\\deep\\d.txt", "sub2.txt\\g.txt", "Other\\f.txt"}},
        // Masks equal but for case: one search, which sees only the folders it matches.
        {WalkFiles | WalkRecurse, "*.txt", "*.TXT", false, {"a.txt", "sub2.txt\\g.txt"}},
        {WalkFiles | WalkFolders | WalkRecurse, "*.txt", "S*", false,
         {"a.txt", "sub1/", "sub1\\c.txt", "sub2.txt/", "sub2.txt\\g.txt"}},
        {WalkFiles | WalkFolders | WalkRecurse, "*.txt", "S*", true,
         {"a.txt", "sub1/", "sub1\\c.txt", "sub1\\deep/", "sub1\\deep\\d.txt", "sub2.txt/", "sub2.txt\\g.txt"}},
        // Without files the file mask gives way to the folder mask.
        {WalkFolders | WalkRecurse, "*.txt", "s*", false, {"sub1/", "sub2.txt/"}},
        {WalkFolders, nullptr, "o*", false, {"Other/"}},
    };
    for (const FlagRow& row : rows) {
        CFileWalker walker(row.flags, row.fileMask, "tree", row.folderMask, row.anyFolderBelow);
        const std::vector<Walked> walked = Walk(walker);
        std::set<std::string> got;
        for (const Walked& w : walked) {
            EXPECT_FALSE(w.factsValid);
            got.insert(w.name + (w.folder ? "/" : ""));
        }
        EXPECT_EQ(got, row.expected) << "flags " << row.flags;
        EXPECT_EQ(got.size(), walked.size()) << "flags " << row.flags << ": an entry came twice";
        ExpectFilesFirstPreOrder(walked);
        CWalkEntry entry;
        EXPECT_FALSE(walker.Next(entry)) << "flags " << row.flags << ": the end stays the end";
    }
}

TEST_F(FileWalkerTest, FullNamesAndFactsAtEveryLevel)
{
    CFileWalker walker(WalkFiles | WalkFolders | WalkRecurse | WalkFacts | WalkFullNames, nullptr, Full("tree").c_str(),
                       nullptr, false);
    const std::vector<Walked> walked = Walk(walker);
    ASSERT_EQ(walked.size(), 12u);
    ExpectFilesFirstPreOrder(walked);
    for (const Walked& w : walked) {
        EXPECT_EQ(w.name.rfind(base + "\\tree\\", 0), 0u) << w.name;
        EXPECT_TRUE(w.factsValid) << w.name;
    }
    const auto find = [&](const std::string& relative) {
        return *std::find_if(walked.begin(), walked.end(),
                             [&](const Walked& w) { return w.name == Full("tree\\" + relative); });
    };
    EXPECT_EQ(find("a.txt").size, 4u);
    EXPECT_EQ(find("sub1\\deep\\d.txt").size, 3u);
    EXPECT_TRUE(find("sub1\\deep").folder);
}

TEST_F(FileWalkerTest, OneFolderOfFilesQueuesNoFolders)
{
    int mostPending = 0;
    CFileWalker walker(WalkFiles | WalkFullNames, nullptr, Full("tree").c_str(), nullptr, false);
    const std::vector<Walked> walked = Walk(walker, &mostPending);
    EXPECT_EQ(Names(walked), (std::set<std::string>{Full("tree\\a.txt"), Full("tree\\b.dat")}));
    EXPECT_EQ(mostPending, 0);

    CFileWalker missing(WalkFiles | WalkFullNames, nullptr, Full("missing").c_str(), nullptr, false);
    EXPECT_TRUE(Walk(missing).empty());
    CFileWalker missingTree(WalkFiles | WalkFolders | WalkRecurse, nullptr, "missing", nullptr, false);
    EXPECT_TRUE(Walk(missingTree).empty());
}

TEST_F(FileWalkerTest, StartFolderForms)
{
    const std::string fullTree = Full("tree");
    struct Row {
        std::string cwd;     // relative to the test folder
        const char* start;
        std::string root;
    } rows[] = {
        {"", nullptr, base + "\\"},
        {"", "", base + "\\"},
        {"", ".", base + "\\"},
        {"", ".\\tree\\", base + "\\tree\\"},
        {"tree\\sub1", "..", base + "\\tree\\"},
        {"tree\\sub1\\deep", "..\\..\\Other", base + "\\tree\\Other\\"},
        {"", ".missing", ".missing\\"},
        {"", "tree\\", "tree\\"},
        {"", "tree", "tree\\"},
        {"tree", fullTree.c_str(), fullTree + "\\"},
    };
    for (const Row& row : rows) {
        const std::string cwd = row.cwd.empty() ? base : Full(row.cwd);
        ASSERT_TRUE(SetCurrentFolder(cwd.c_str()));
        CFileWalker walker(WalkFiles, nullptr, row.start, nullptr, false);
        EXPECT_EQ(walker.Root().Text(), row.root) << (row.start ? row.start : "(null)");
        EXPECT_EQ(CurrentFolder().Text(), cwd) << "the current folder is put back";
    }
    ASSERT_TRUE(SetCurrentFolder(base.c_str()));

    CFileWalker relative(WalkFiles | WalkRecurse | WalkFullNames, "*.txt", "tree\\", nullptr, false);
    EXPECT_EQ(Names(Walk(relative)), (std::set<std::string>{"tree\\a.txt", "tree\\sub1\\c.txt",
                                                            "tree\\sub1\\deep\\d.txt", "tree\\sub2.txt\\g.txt",
                                                            "tree\\Other\\f.txt"}));
}

TEST_F(FileWalkerTest, ResetEndsTheWalk)
{
    CFileWalker walker(WalkFiles | WalkFolders | WalkRecurse, nullptr, "tree", "*", false);
    CWalkEntry entry;
    for (int i = 0; i < 4; ++i)
        ASSERT_TRUE(walker.Next(entry));
    walker.Reset();
    EXPECT_FALSE(walker.Next(entry));
    EXPECT_EQ(walker.PendingCount(), 0);
}

// Whatever allocation fails, the walk ends or passes entries over, never delivers a name
// that is not in the tree, and frees what it holds.
TEST_F(FileWalkerTest, FailingAllocationsOnlyDropEntries)
{
    const std::uint32_t flags = WalkFiles | WalkFolders | WalkRecurse | WalkFacts;
    const std::set<std::string> everything = [&] {
        CFileWalker walker(flags, nullptr, "tree", nullptr, false);
        return Names(Walk(walker));
    }();
    ASSERT_EQ(everything.size(), 12u);
    for (long nth = 1;; ++nth) {
        std::vector<Walked> walked;
        FailAllocation(nth);
        {
            CFileWalker walker(flags, nullptr, "tree", nullptr, false);
            walked = Walk(walker);
        }
        const bool failed = AllocationsMade() >= nth;
        FailAllocation(0);
        for (const Walked& w : walked)
            EXPECT_TRUE(everything.count(w.name)) << "allocation " << nth << ": " << w.name;
        if (!failed)
            break;
        ASSERT_LT(nth, 2000);
    }
}
