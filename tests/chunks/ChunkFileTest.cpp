#include <gtest/gtest.h>

#include "chunks/BinaryChunkFile.h"
#include "tests/chunks/ChunkBytes.h"
#include "tests/files/FilesFixture.h"
#include "text/Allocation.h"

namespace {

// root { group 1 { "abc", group 2 { group 3 {} } } }, the three groups left open or closed.
bool WriteNested(CChunkFile& file, bool closeEachGroup)
{
    bool ok = file.OpenGroup(1) && file.WriteLeaf("abc", 3) && file.OpenGroup(2) && file.OpenGroup(3);
    if (closeEachGroup)
        ok = ok && file.CloseGroup() && file.CloseGroup() && file.CloseGroup();
    return file.Close() && ok;
}

const std::string NestedBytes =
    "XFF" + Be16(1) + Group(0, 1, Group(1, 2, Leaf("abc") + Group(2, 1, Group(3, 0, ""))));

using ChunkWriterTest = FilesFixture;
using ChunkReaderTest = FilesFixture;

TEST_F(ChunkWriterTest, MemoryAndFileGiveTheFormatsBytes)
{
    for (bool closeEachGroup : {false, true}) {
        CTextString memory(0);
        CChunkFile inMemory;
        ASSERT_TRUE(inMemory.BeginMemory(memory));
        ASSERT_TRUE(WriteNested(inMemory, closeEachGroup));
        EXPECT_EQ(Bytes(memory), NestedBytes) << closeEachGroup;

        CChunkFile onDisk;
        ASSERT_TRUE(onDisk.BeginFile(Full("n.chk").c_str()));
        ASSERT_TRUE(WriteNested(onDisk, closeEachGroup));
        EXPECT_EQ(ReadFile("n.chk"), NestedBytes);
        EXPECT_FALSE(PathExists(Full("n.chk.tmp").c_str()));
    }
}

// The smallest profile: 77 bytes, and the reader finds its name again.
TEST_F(ChunkWriterTest, TheSmallestProfileRoundTrips)
{
    CTextString memory(0);
    CBinaryChunkFile writer;
    ASSERT_TRUE(writer.BeginMemory(memory));
    ASSERT_TRUE(writer.OpenGroup(1) && writer.WriteLeaf(CTextString("EventProfile")) && writer.CloseGroup());
    ASSERT_TRUE(writer.OpenGroup(3) && writer.WriteLeaf(CTextString("Racing")) && writer.Close());
    ASSERT_EQ(memory.Length(), 77);
    EXPECT_EQ(Bytes(memory), Profile("Racing").replace(3, 2, Be16(1)));

    WriteFile("r.idprof", Bytes(memory));
    CBinaryChunkFile reader;
    CTextString name(0);
    ASSERT_TRUE(reader.Open(Full("r.idprof").c_str()));
    ASSERT_TRUE(reader.OpenGroup(3));
    ASSERT_TRUE(reader.ReadLeaf(0, name));
    EXPECT_STREQ(name.Text(), "Racing");
}

// A write that fails part-way never lets the .tmp twin replace the file.
TEST_F(ChunkWriterTest, ReplacementOnlyAfterACleanClose)
{
    WriteFile("p.chk", "old");
    SetAttributes(Full("p.chk").c_str(), AttributeReadOnly);
    {
        CChunkFile file;
        ASSERT_TRUE(file.BeginFile(Full("p.chk").c_str()));
        EXPECT_TRUE(file.Close());
        EXPECT_EQ(ReadFile("p.chk"), "XFF" + Be16(1) + Group(0, 0, ""));
        EXPECT_EQ(GetAttributes(Full("p.chk").c_str()) & AttributeReadOnly, 0u);
    }
    // Whichever allocation of an OpenGroup fails, the object ends closed and the file stays.
    int failures = 0;
    for (long nth = 1; nth <= 12; ++nth) {
        CChunkFile file;
        ASSERT_TRUE(file.BeginFile(Full("p.chk").c_str()));
        FailAllocation(nth);
        const bool opened = file.OpenGroup(7);
        FailAllocation(0);
        if (opened) {
            file.replaceOnClose = false;   // this run wrote nothing wrong; keep the file anyway
            continue;
        }
        ++failures;
        EXPECT_FALSE(file.IsOpen());
        EXPECT_EQ(ReadFile("p.chk"), "XFF" + Be16(1) + Group(0, 0, ""));
        EXPECT_TRUE(PathExists(Full("p.chk.tmp").c_str()));
    }
    EXPECT_GT(failures, 0);
    {
        CChunkFile file;
        file.replaceOnClose = false;
        ASSERT_TRUE(file.BeginFile(Full("q.chk").c_str()));
        EXPECT_TRUE(file.Close());
        EXPECT_TRUE(PathExists(Full("q.chk").c_str()));
        EXPECT_FALSE(PathExists(Full("q.chk.tmp").c_str()));
    }
    CChunkFile closed;
    EXPECT_FALSE(closed.OpenGroup(1));
    EXPECT_FALSE(closed.WriteLeaf("x", 1));
}

TEST_F(ChunkReaderTest, GroupsAreFoundAmongDirectChildrenOnly)
{
    const std::string children = Leaf(Be32(5)) +                                 // a leaf holding 5
                                 Group(9, 1, Group(4, 0, "")) +                   // 4 is a grandchild
                                 Group(5, 1, Leaf("first")) + Group(5, 1, Leaf("second"));
    WriteFile("g.chk", ChunkFile("XFF", 4, children) + "trailing bytes");
    CChunkFile file;
    CTextString leaf(0);
    ASSERT_TRUE(file.Open(Full("g.chk").c_str()));
    EXPECT_TRUE(file.Open("Z:\\elsewhere"));   // stays on its file
    EXPECT_FALSE(file.OpenGroup(4));
    EXPECT_FALSE(file.ReadLeaf(4, leaf));
    ASSERT_TRUE(file.ReadLeaf(0, leaf));
    EXPECT_EQ(Bytes(leaf), Be32(5));
    for (int round = 0; round < 2; ++round) {
        ASSERT_TRUE(file.OpenGroup(5));
        ASSERT_TRUE(file.ReadLeaf(0, leaf));
        EXPECT_STREQ(leaf.Text(), "first");
        ASSERT_TRUE(file.CloseGroup());
    }
    EXPECT_TRUE(file.CloseGroup());   // the root: the file closes
    EXPECT_FALSE(file.IsOpen());
    EXPECT_FALSE(file.OpenGroup(5));
    EXPECT_FALSE(file.ReadLeaf(0, leaf));
    EXPECT_TRUE(file.CloseGroup());
    EXPECT_TRUE(file.Close());
}

// Outside input: whatever the counts and lengths say, the answer is a plain false.
TEST_F(ChunkReaderTest, DamagedFilesAreRefusedOrCutShort)
{
    const std::string good = ChunkFile("XFF", 1, Group(2, 1, Leaf("data")));
    struct Case {
        const char* what;
        std::string bytes;
        bool opens;
        bool groupOpens;
        bool leafReads;   // leaf 0 of the group, or of the root when the group stayed shut
    } cases[] = {
        {"empty", "", false, false, false},
        {"inside the root header", good.substr(0, 12), false, false, false},
        {"wrong signature", "XBF" + good.substr(3), false, false, false},
        {"root a leaf", "XFF" + Be16(1) + Leaf("abc"), false, false, false},
        {"root count past the end", ChunkFile("XFF", 0xFFFFFFFFu, Leaf("")), false, false, false},
        {"group count past the end", ChunkFile("XFF", 1, Group(2, 40000, Leaf(""))), true, false, true},
        {"length past the end", good.substr(0, good.size() - 2), true, true, false},
        {"version changed, bytes appended", "XFF\xAB\xCD" + good.substr(5) + "junk", true, true, true},
    };
    for (const Case& c : cases) {
        WriteFile("d.chk", c.bytes);
        CChunkFile file;
        EXPECT_EQ(file.Open(Full("d.chk").c_str()), c.opens) << c.what;
        EXPECT_EQ(file.OpenGroup(2), c.groupOpens) << c.what;
        CTextString leaf(0);
        EXPECT_EQ(file.ReadLeaf(0, leaf), c.leafReads) << c.what;
        EXPECT_TRUE(file.Close()) << c.what;
    }
}

// A leftover .tmp twin stands in for a main file that is missing or damaged, once.
TEST_F(ChunkReaderTest, TheTmpTwinReplacesOnlyAMissingOrDamagedFile)
{
    const std::string good = ChunkFile("XFF", 0, "");
    CChunkFile file;
    EXPECT_FALSE(file.Open(Full("none.chk").c_str()));
    EXPECT_FALSE(PathExists(Full("none.chk").c_str()));

    WriteFile("m.chk.tmp", good);
    EXPECT_TRUE(file.Open(Full("m.chk").c_str()));
    EXPECT_TRUE(file.Close());
    EXPECT_EQ(ReadFile("m.chk"), good);
    EXPECT_FALSE(PathExists(Full("m.chk.tmp").c_str()));

    WriteFile("r.chk", "XBF damaged");
    SetAttributes(Full("r.chk").c_str(), AttributeReadOnly);
    WriteFile("r.chk.tmp", good);
    EXPECT_TRUE(file.Open(Full("r.chk").c_str()));
    EXPECT_TRUE(file.Close());
    EXPECT_EQ(ReadFile("r.chk"), good);
    EXPECT_EQ(GetAttributes(Full("r.chk").c_str()) & AttributeReadOnly, 0u);
    EXPECT_FALSE(PathExists(Full("r.chk.tmp").c_str()));

    WriteFile("h.chk", good);
    WriteFile("h.chk.tmp", "other");
    EXPECT_TRUE(file.Open(Full("h.chk").c_str()));
    EXPECT_TRUE(file.Close());
    EXPECT_EQ(ReadFile("h.chk.tmp"), "other");

    WriteFile("b.chk", "bad");
    WriteFile("b.chk.tmp", "also bad");
    EXPECT_FALSE(file.Open(Full("b.chk").c_str()));
    EXPECT_EQ(ReadFile("b.chk"), "also bad");
    EXPECT_FALSE(PathExists(Full("b.chk.tmp").c_str()));
}

}   // namespace
