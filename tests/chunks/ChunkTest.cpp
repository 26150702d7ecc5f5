// CChunkFile written and read against bytes made by hand, and the profile
// document and catalogue, on real files.

#include <set>

#include "chunks/EventProfile.h"
#include "tests/chunks/ChunkBytes.h"
#include "tests/files/FilesFixture.h"
#include "text/Allocation.h"

namespace {

// root { 1 { 2 { "abc" }, 3 { 4 {} } } }, the last groups closed one by one or left to Close.
bool WriteNested(CChunkFile& file, bool closeEachGroup)
{
    const bool ok = file.OpenGroup(1) && file.OpenGroup(2) && file.WriteLeaf("abc", 3) && file.CloseGroup() &&
                    file.OpenGroup(3) && file.OpenGroup(4) &&
                    (!closeEachGroup || (file.CloseGroup() && file.CloseGroup() && file.CloseGroup()));
    return file.Close() && ok;
}

const std::string Nested =
    "XFF" + Be16(1) + Group(0, 1, Group(1, 2, Group(2, 1, Leaf("abc")) + Group(3, 1, Group(4, 0, ""))));

}  // namespace

TEST_F(FilesFixture, ChunkWriter)
{
    CTextString leaf(0);
    for (bool closeEachGroup : {false, true}) {
        CTextString memory("kept");
        CChunkFile inMemory, onDisk;
        EXPECT_TRUE(!inMemory.IsWriting() && inMemory.BeginMemory(memory) && !inMemory.ReadLeaf(0, leaf) && WriteNested(inMemory, closeEachGroup) &&
                    !inMemory.WriteLeaf("x", 1));
        EXPECT_EQ(Bytes(memory), "kept" + Nested);
        WriteFile("n.chk", "old");
        SetAttributes(Full("n.chk").c_str(), AttributeReadOnly);
        EXPECT_TRUE(onDisk.BeginFile(Full("n.chk").c_str()) && !onDisk.BeginMemory(memory) && WriteNested(onDisk, closeEachGroup) && !onDisk.IsOpen());
        EXPECT_EQ(ReadFile("n.chk") + ReadFile("n.chk.tmp"), Nested);   // the read-only file is replaced
    }
    CChunkFile direct;
    direct.replaceOnClose = false;
    EXPECT_TRUE(direct.BeginFile(Full("d.chk").c_str()) && !direct.BeginFile(Full("e.chk").c_str()) && direct.Close());
    EXPECT_EQ(ReadFile("d.chk") + std::to_string(PathExists(Full("d.chk.tmp").c_str())), "XFF" + Be16(1) + Group(0, 0, "") + "0");
    EXPECT_FALSE(direct.OpenGroup(1) || direct.WriteLeaf("x", 1) || direct.ReadLeaf(0, leaf) || CChunkFile().BeginFile(Full("no\\d").c_str()));
    EXPECT_TRUE(direct.CloseGroup() && direct.Close() && direct.IsWriting());

    // BeginFile and OpenGroup with each allocation failed in turn, alone or with the next one:
    // "+", both done, and the file is replaced when the object goes; "-" (not begun) or "="
    // (no group): the writing has ended and the .tmp twin stays aside.
    std::string opened;
    for (long nth = 1; nth <= 32; ++nth) {
        WriteFile("p.chk", "old");
        {
            CChunkFile file;
            FailAllocation((nth - 1) % 16 + 1, nth > 16 ? 2 : 1);
            opened += file.BeginFile(Full("p.chk").c_str()) ? (file.OpenGroup(7) ? '+' : file.IsOpen() ? '?' : '=') : file.IsOpen() ? '?' : '-';
            FailAllocation(0);
        }
        opened += ReadFile("p.chk")[0];
    }
    EXPECT_EQ(opened, "-o-o+X+X+X+X+X-o-o+X+X+X+X=o=o+X-o-o+X+X+X+X-o-o-o+X+X+X=o=o=o+X");
}

TEST_F(FilesFixture, ChunkReader)
{
    const std::string good = "XFF" + Be16(1) + Group(0, 1, Group(2, 1, Leaf("data")));
    const std::string groups = Leaf(Be32(5)) + Group(9, 1, Group(4, 0, "")) + Leaf("", 0) + Group(5, 1, Leaf("first")) +
                               Group(5, 1, Leaf("second")) + std::string(24, '\0');   // four empty leaves more
    // What, the file's bytes ("?": no file), its .tmp twin ("": none; "=": taken over, so the
    // file holds it), whether it opens, a group and whether it opens, and leaf 0 of the group,
    // or of the root when the group stayed shut ("-": none).
    const std::tuple<const char*, std::string, std::string, bool, std::uint32_t, bool, std::string> rows[] = {
        {"inside the root header", good.substr(0, 12), "", false, 2, false, "-"},
        {"wrong signature", "YFF" + good.substr(3), "", false, 2, false, "-"},
        {"root a leaf", "XFF" + Be16(1) + Leaf(std::string(8, '\0')), "", false, 2, false, "-"},
        {"root count past the end", "XFF" + Be16(1) + Group(0, 0xFFFFFFFFu, Leaf("")), "", false, 2, false, "-"},
        {"group count past the end", "XFF" + Be16(1) + Group(0, 1, Group(2, 40000, Leaf(""))), "", true, 2, false,
         Be32(2) + Be16(0)},
        {"a child's length past the end", "XFF" + Be16(1) + Group(0, 1, Group(2, 2, Leaf("") + Be16(2))), "", true, 2, false, "-"},
        {"a group's id past the end", "XFF" + Be16(1) + Group(0, 2, Leaf("x") + Be16(1) + Be32(0)), "", true, 7, false, "-"},
        {"length past the end", good.substr(0, good.size() - 2), "", true, 2, true, "-"},
        {"version changed, bytes appended", "XFF\xAB\xCD" + good.substr(5) + "junk", "", true, 2, true, "data"},
        {"missing, a twin", "?", "=" + good, true, 2, true, "data"},
        {"damaged, a twin", "XFF" + Be16(1) + Group(0, 9, ""), "=" + good, true, 2, true, "data"},
        {"damaged, a damaged twin", "XF", "=X", false, 2, false, "-"},
        {"healthy, a twin", good, "XF", true, 2, true, "data"},
        {"four children, no group", "XFF" + Be16(1) + Group(0, 4, std::string(24, '\0')), "", true, 7, false, ""},
        {"an id held by a leaf", "XFF" + Be16(1) + Group(0, 9, groups), "", true, 5, true, "first"},
        {"an id held by a grandchild", "XFF" + Be16(1) + Group(0, 9, groups), good, true, 4, false, Be32(5)},
    };
    CTextString leaf(0);
    for (const auto& [what, bytes, twin, opens, group, groupOpens, leafZero] : rows) {
        const bool takenOver = !twin.empty() && twin[0] == '=';
        for (const auto& [name, written] : {std::pair{"d.chk", bytes}, {"d.chk.tmp", twin.empty() ? "?" : twin.substr(takenOver)}}) {
            std::filesystem::remove(name);
            if (written != "?")
                WriteFile(name, written);
        }
        CChunkFile file;   // an open object stays on its file
        EXPECT_EQ(file.Open(Full("d.chk").c_str()) && file.Open(Full("elsewhere").c_str()), opens) << what;
        EXPECT_EQ(ReadFile("d.chk") + "|" + ReadFile("d.chk.tmp"), takenOver ? twin.substr(1) + "|" : bytes + "|" + twin) << what;
        EXPECT_EQ(file.OpenGroup(group), groupOpens) << what;
        EXPECT_EQ(file.ReadLeaf(0, leaf) ? Bytes(leaf) : "-", leafZero) << what;
        EXPECT_FALSE(file.ReadLeaf(opens ? file.CurrentGroup()->childCount : 0, leaf) || file.ReadLeaf(-1, leaf)) << what;
        EXPECT_EQ(file.CloseGroup() && file.IsOpen() && file.Close(), groupOpens) << what;   // back in the root, or closed
    }
    struct CLongerChunkFile : CChunkFile {   // a signature of another length, a root header's bytes at that:
        CLongerChunkFile() { signature.Assign(Make(Group(0, 0, ""))); }   // every place follows from it
    } longer;
    WriteFile("s.chk", Group(0, 0, "") + "\x01");   // no version
    EXPECT_FALSE(longer.Open(Full("s.chk").c_str()));
    WriteFile("s.chk", Group(0, 0, "") + good.substr(3));
    EXPECT_TRUE(longer.Open(Full("s.chk").c_str()) && longer.OpenGroup(2) && longer.ReadLeaf(0, leaf) && Bytes(leaf) == "data");

    // Open with each allocation failed in turn: it opens whole, or not at all, and memory that
    // failed never lets the twin in. The nine records take blocks for 4, 8 and 16, so that a
    // group of n children costs about log n blocks.
    std::string answers;
    for (long nth = 1; nth <= 16; ++nth) {
        CChunkFile failing;
        FailAllocation(nth);
        const bool opened = failing.Open(Full("d.chk").c_str());
        FailAllocation(0);
        answers += opened != failing.IsOpen() || (opened && failing.CurrentGroup()->keptChildren != 9) ? "?" : opened ? "+" : "-";
    }
    EXPECT_EQ(answers, "--+------+++++++");
}

TEST_F(FilesFixture, ProfileNamesAndTheCatalogue)
{
    const std::string type = Group(1, 1, Leaf("EventProfile"));
    auto file = [](std::uint32_t count, const std::string& children) { return "XBF" + Be16(1) + Group(0, count, children); };
    const std::pair<std::string, std::string> rows[] = {
        {Profile(" Pad 1 "), " Pad 1 "},
        {file(4, Group(8, 1, Leaf("z")) + Group(3, 2, Leaf("Yoke") + Leaf("x")) + Leaf("") + type), "Yoke"},
        {"XFF" + Profile("Racing").substr(3), ""},
        {file(2, Group(1, 1, Leaf("eventprofile")) + Group(3, 1, Leaf("A"))), ""},
        {file(2, Group(1, 1, Leaf(std::string("EventProfile", 13))) + Group(3, 1, Leaf("A"))), ""},
        {file(1, type), ""},
        {Profile("Racing").substr(0, 74), ""},
    };
    CEventProfile profile;
    for (const auto& [bytes, name] : rows) {
        WriteFile("x.idprof", bytes);
        EXPECT_EQ(Bytes(profile.ReadProfileName(Make(Full("x.idprof")))) + (profile.IsOpen() ? " (left open)" : ""), name);
    }
    OverrideProgramPath("L");   // no folder, so no Profiles folder is searched
    CChain<CTextString> list;
    ASSERT_TRUE(InsertEntry(list, CTextString("stale")));
    EXPECT_TRUE(profile.ListProfiles(list) && list.IsEmpty() && Bytes(ModulePath(nullptr)) == "L");
    OverrideProgramPath(Full("Linkwright.exe").c_str());
    for (const char* name : {"a.idprof", "B.IDPROF", "c.idprof", "junk.idprof", "d.idprof.tmp", "e.txt", "sub/f.idprof"})
        WriteFile(std::string("Profiles/") + name, name[0] == 'j' ? "junk" : Profile(name[0] == 'c' ? "Yoke" : "Wheel"));
    EXPECT_TRUE(profile.ListProfiles(list));
    std::multiset<std::string> names;
    for (CChainNode<CTextString>* node = list.Head(); node; node = node->next)
        names.insert(Bytes(*node->payload));
    EXPECT_EQ(names, std::multiset<std::string>({"Wheel", "Wheel", "Yoke"}));
    OverrideProgramPath(nullptr);
}
