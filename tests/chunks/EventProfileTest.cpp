#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "chunks/EventProfile.h"
#include "tests/chunks/ChunkBytes.h"
#include "tests/files/FilesFixture.h"

namespace {

class EventProfileTest : public FilesFixture {
protected:
    std::string NameOf(const std::string& bytes)
    {
        WriteFile("x.idprof", bytes);
        return Bytes(profile.ReadProfileName(CTextString(Full("x.idprof").c_str())));
    }

    void TearDown() override
    {
        OverrideProgramPath(nullptr);
        FilesFixture::TearDown();
    }

    CEventProfile profile;
};

TEST_F(EventProfileTest, OnlyTheExactTypeTextAndANameLeafMakeAProfile)
{
    const std::string type = Group(1, 1, Leaf("EventProfile"));
    struct Case {
        const char* what;
        std::string bytes;
        std::string name;
    } cases[] = {
        {"plain", Profile("Racing"), "Racing"},
        {"blanks kept", Profile(" Pad 1 "), " Pad 1 "},
        {"name group first, others around",
         ChunkFile("XBF", 4, Group(8, 1, Leaf("z")) + Group(3, 2, Leaf("Yoke") + Leaf("x")) + Leaf("") +
                                 Group(1, 2, Leaf("EventProfile") + Leaf("y"))),
         "Yoke"},
        {"other signature", "XFF" + Profile("Racing").substr(3), ""},
        {"type in lower case", ChunkFile("XBF", 2, Group(1, 1, Leaf("eventprofile")) + Group(3, 1, Leaf("A"))), ""},
        {"type with a zero behind", ChunkFile("XBF", 2, Group(1, 1, Leaf(std::string("EventProfile", 13))) +
                                                            Group(3, 1, Leaf("A"))), ""},
        {"no name group", ChunkFile("XBF", 1, type), ""},
        {"empty name group", ChunkFile("XBF", 2, type + Group(3, 0, "")), ""},
        {"empty name", Profile(""), ""},
        {"name cut off", Profile("Racing").substr(0, 74), ""},
        {"empty file", "", ""},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(NameOf(c.bytes), c.name) << c.what;
        EXPECT_FALSE(profile.IsOpen()) << c.what;
    }
    EXPECT_STREQ(profile.GetExtension().Text(), ".idprof");
}

// Names in the folder's order, duplicates kept; sub-folders, lone .tmp files, other
// extensions and files without a name are passed over.
TEST_F(EventProfileTest, TheCatalogueListsTheProfilesFolderOnly)
{
    OverrideProgramPath(Full("Linkwright.exe").c_str());
    CChain<CTextString> list;
    ASSERT_TRUE(InsertEntry(list, CTextString("stale")));
    EXPECT_TRUE(profile.ListProfiles(list));
    EXPECT_TRUE(list.IsEmpty());

    WriteFile("Profiles\\a.idprof", Profile("Wheel"));
    WriteFile("Profiles\\B.IDPROF", Profile("Wheel"));
    WriteFile("Profiles\\c.idprof", Profile("Yoke"));
    WriteFile("Profiles\\junk.idprof", "junk");
    WriteFile("Profiles\\d.idprof.tmp", Profile("Lone tmp"));
    WriteFile("Profiles\\e.txt", Profile("Text"));
    WriteFile("Profiles\\Sub\\f.idprof", Profile("Below"));
    EXPECT_TRUE(profile.ListProfiles(list));
    std::vector<std::string> names;
    for (CChainNode<CTextString>* node = list.Head(); node; node = node->next)
        names.push_back(node->payload->Text());
    std::sort(names.begin(), names.end());
    EXPECT_EQ(names, (std::vector<std::string>{"Wheel", "Wheel", "Yoke"}));
}

}   // namespace
