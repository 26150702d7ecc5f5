// CWindowedFile on real files: the reload rule in both directions, reads across the
// window's edge and the file's end, whole-file reads, and 64-bit offsets on a sparse file.

#include <cstdint>
#include <string>

#include "files/WindowedFile.h"
#include "tests/files/FilesFixture.h"
#include "tests/text/TextHelpers.h"

namespace {

const std::uint32_t FileSize = 300000;
const std::uint32_t Window = 131072;

// No period of 256 or of the window, so that a byte from the wrong offset shows.
unsigned char Pattern(std::uint64_t offset)
{
    return static_cast<unsigned char>(offset ^ (offset >> 8) ^ (offset >> 16) ^ 0x5A);
}

std::string PatternBytes(std::uint64_t from, std::uint32_t n)
{
    std::string bytes;
    for (std::uint32_t i = 0; i < n; ++i)
        bytes += static_cast<char>(Pattern(from + i));
    return bytes;
}

class WindowedFileTest : public FilesFixture {
protected:
    void SetUp() override
    {
        FilesFixture::SetUp();
        WriteFile("big.bin", PatternBytes(0, FileSize));
        WriteFile("empty.bin", "");
        file.name.Assign("big.bin");
        ASSERT_TRUE(file.Open(false));
    }

    CWindowedFile file{nullptr};
};

}  // namespace

TEST_F(WindowedFileTest, ForwardReloadStartsAtTheWantedByte)
{
    EXPECT_EQ(file.WindowStart(), 0u);
    EXPECT_EQ(file.WindowLast(), Window - 1);
    EXPECT_EQ(file.ReadByte(Window - 1), Pattern(Window - 1));
    EXPECT_EQ(file.WindowStart(), 0u) << "the window's last byte hits";
    EXPECT_EQ(file.ReadByte(Window), Pattern(Window));
    EXPECT_EQ(file.WindowStart(), Window);
    EXPECT_EQ(file.WindowLast(), 2 * Window - 1);
    EXPECT_EQ(file.ReadByte(static_cast<std::uint32_t>(2 * Window + 5)), Pattern(2 * Window + 5));
    EXPECT_EQ(file.WindowLast(), FileSize - 1) << "the last window is cut by the end of the file";
}

TEST_F(WindowedFileTest, BackwardReloadCentresTheWantedByte)
{
    const struct {
        std::uint64_t offset;
        std::uint64_t start;
    } rows[] = {{70000, 4464}, {65537, 1}, {65536, 0}, {0, 0}, {199999, 134463}};
    for (const auto& row : rows) {
        ASSERT_EQ(file.ReadByte(static_cast<std::uint64_t>(200000)), Pattern(200000));
        ASSERT_EQ(file.WindowStart(), 200000u);
        EXPECT_EQ(file.ReadByte(row.offset), Pattern(row.offset)) << row.offset;
        EXPECT_EQ(file.WindowStart(), row.start) << row.offset;
    }
}

TEST_F(WindowedFileTest, ReadsAcrossTheWindowEdgeAndTheFileEnd)
{
    CTextString out(0);
    EXPECT_TRUE(file.Read(out, static_cast<std::uint32_t>(Window - 3), 6));
    EXPECT_EQ(Bytes(out), PatternBytes(Window - 3, 6));

    ASSERT_EQ(file.ReadByte(static_cast<std::uint32_t>(0)), Pattern(0));
    std::uint32_t value32 = 0;
    EXPECT_TRUE(file.ReadBigEndian32(&value32, static_cast<std::uint64_t>(Window - 2)));
    const std::string four = PatternBytes(Window - 2, 4);
    EXPECT_EQ(value32, std::uint32_t(std::uint8_t(four[0])) << 24 | std::uint32_t(std::uint8_t(four[1])) << 16 |
                           std::uint32_t(std::uint8_t(four[2])) << 8 | std::uint8_t(four[3]));

    std::uint16_t value16 = 0;
    EXPECT_TRUE(file.ReadBigEndian16(&value16, static_cast<std::uint32_t>(FileSize - 2)));
    EXPECT_EQ(value16, Pattern(FileSize - 2) << 8 | Pattern(FileSize - 1));
    value16 = 0xBEEF;
    value32 = 0xDEADBEEF;
    EXPECT_FALSE(file.ReadBigEndian16(&value16, static_cast<std::uint64_t>(FileSize - 1)));
    EXPECT_FALSE(file.ReadBigEndian32(&value32, static_cast<std::uint64_t>(FileSize - 3)));
    EXPECT_EQ(value16, 0xBEEF) << "a failed read writes nothing";
    EXPECT_EQ(value32, 0xDEADBEEFu);

    EXPECT_FALSE(file.Read(out, static_cast<std::uint64_t>(FileSize - 2), 5));
    EXPECT_EQ(Bytes(out), PatternBytes(FileSize - 2, 2)) << "the bytes before the end stay";

    // Past the end nothing is read and the window stays, so offsets in it still hit.
    const std::uint64_t start = file.WindowStart();
    EXPECT_LT(file.ReadByte(static_cast<std::uint64_t>(FileSize + 1000)), 0);
    EXPECT_EQ(file.WindowStart(), start);
    EXPECT_EQ(file.ReadByte(static_cast<std::uint64_t>(FileSize - 1)), Pattern(FileSize - 1));
    EXPECT_EQ(file.WindowStart(), start);

    EXPECT_TRUE(file.Read(out, static_cast<std::uint32_t>(12345), 0));
    EXPECT_TRUE(out.IsEmpty());
}

TEST_F(WindowedFileTest, ByteFFIsAValueNotAFailure)
{
    WriteFile("ff.bin", std::string("\x12\x34\xFF\x00\xFF", 5));
    CWindowedFile ff("ff.bin");
    ASSERT_TRUE(ff.Open(false));
    EXPECT_EQ(ff.ReadByte(static_cast<std::uint32_t>(2)), 255);
    EXPECT_EQ(ff.ReadByte(static_cast<std::uint32_t>(3)), 0);
    CTextString out(0);
    EXPECT_TRUE(ff.Read(out, static_cast<std::uint32_t>(0), 5));
    EXPECT_EQ(Bytes(out), std::string("\x12\x34\xFF\x00\xFF", 5));
    std::uint16_t value = 0;
    EXPECT_TRUE(ff.ReadBigEndian16(&value, static_cast<std::uint32_t>(0)));
    EXPECT_EQ(value, 0x1234);
    EXPECT_TRUE(ff.ReadBigEndian16(&value, static_cast<std::uint64_t>(3)));
    EXPECT_EQ(value, 0x00FF);
}

TEST_F(WindowedFileTest, OpenCloseAndTheStatesBetween)
{
    std::uint32_t low = 1, high = 1;
    EXPECT_TRUE(file.Size(&low, &high));
    EXPECT_EQ(low, FileSize);
    EXPECT_EQ(high, 0u);

    // Open on an open object starts over with the name it now has.
    file.name.Assign("empty.bin");
    EXPECT_TRUE(file.Open(false)) << "an empty file opens";
    EXPECT_LT(file.ReadByte(static_cast<std::uint32_t>(0)), 0);
    EXPECT_TRUE(file.Size(&low, nullptr));
    EXPECT_EQ(low, 0u);
    EXPECT_TRUE(file.Close());
    EXPECT_EQ(file.ReadByte(static_cast<std::uint32_t>(0)), -1);
    CTextString out("kept");
    EXPECT_FALSE(file.Read(out, static_cast<std::uint64_t>(0), 1));
    EXPECT_TRUE(file.Close()) << "closing a closed object";

    CWindowedFile missing("missing.bin");
    EXPECT_FALSE(missing.Open(false));
    EXPECT_EQ(missing.LastError(), 0u);
    CWindowedFile unnamed(nullptr);
    EXPECT_FALSE(unnamed.Open(false));

    CWindowedFile starved("big.bin");
    EXPECT_TRUE(starved.Close()) << "the image now has its smallest allocation";
    FailAllocation(1);
    EXPECT_FALSE(starved.Open(false)) << "no window, no file";
    FailAllocation(0);
}

TEST_F(WindowedFileTest, WholeFileReads)
{
    ASSERT_EQ(file.ReadByte(static_cast<std::uint64_t>(200000)), Pattern(200000));
    CTextString all(0);
    EXPECT_TRUE(file.ReadAll(all));
    EXPECT_EQ(Bytes(all), PatternBytes(0, FileSize));
    EXPECT_EQ(file.ReadByte(static_cast<std::uint64_t>(200001)), Pattern(200001)) << "the window stays";
    EXPECT_EQ(file.ReadByte(static_cast<std::uint64_t>(10)), Pattern(10));

    CWindowedFile loader(nullptr);
    CTextString text("old");
    EXPECT_TRUE(loader.LoadWhole("empty.bin", text));
    EXPECT_TRUE(text.IsEmpty());
    EXPECT_TRUE(loader.LoadWhole("big.bin", text));
    EXPECT_EQ(Bytes(text), PatternBytes(0, FileSize));
    EXPECT_EQ(loader.ReadByte(static_cast<std::uint32_t>(0)), -1) << "LoadWhole closes again";
    EXPECT_FALSE(loader.LoadWhole("missing.bin", text));

    CWindowedFile image("big.bin");
    ASSERT_TRUE(image.Open(true));
    EXPECT_EQ(image.ReadByte(static_cast<std::uint64_t>(FileSize - 1)), Pattern(FileSize - 1));
    EXPECT_LT(image.ReadByte(static_cast<std::uint32_t>(FileSize)), 0);
    std::uint32_t low = 0, high = 1;
    EXPECT_TRUE(image.Size(&low, &high));
    EXPECT_EQ(low, FileSize);
    EXPECT_EQ(high, 0u);
    EXPECT_TRUE(image.Close());
    EXPECT_EQ(image.ReadByte(static_cast<std::uint32_t>(0)), -1);
}

// A sparse file of a little over 4 GiB: a few real bytes on either side of the 4 GiB mark.
TEST_F(FilesFixture, OffsetsPast4GiB)
{
    const std::uint64_t four = 0x100000000ull;
    {
        std::ofstream out(Native("huge.bin"), std::ios::binary);
        out.seekp(static_cast<std::streamoff>(four - 2));
        out.write("\x01\x02\x03\x04\x05\x06", 6);
        out.seekp(static_cast<std::streamoff>(four + 10));
        out.write("\xAB", 1);
    }
    CWindowedFile file("huge.bin");
    ASSERT_TRUE(file.Open(false));
    std::uint32_t low = 0, high = 0;
    ASSERT_TRUE(file.Size(&low, &high));
    EXPECT_EQ(high, 1u);
    EXPECT_EQ(low, 11u);

    EXPECT_EQ(file.ReadByte(four + 10), 0xAB);
    std::uint32_t value = 0;
    EXPECT_TRUE(file.ReadBigEndian32(&value, four - 2)) << "the offset carries into the high half";
    EXPECT_EQ(value, 0x01020304u);
    CTextString out(0);
    EXPECT_TRUE(file.Read(out, four - 1, 3));
    EXPECT_EQ(Bytes(out), "\x02\x03\x04");

    // The 32-bit form compares low halves only: with the window at 4 GiB, offset 10 hits
    // it and reads the byte at 4 GiB + 10.
    ASSERT_EQ(file.ReadByte(static_cast<std::uint64_t>(0)), 0);
    ASSERT_EQ(file.ReadByte(four), 0x03);
    ASSERT_EQ(file.WindowStart(), four);
    EXPECT_EQ(file.ReadByte(static_cast<std::uint32_t>(10)), 0xAB);
    EXPECT_EQ(file.ReadByte(static_cast<std::uint64_t>(10)), 0) << "the 64-bit form reloads";
    EXPECT_EQ(file.WindowStart(), 0u);
    EXPECT_EQ(file.ReadByte(four + 10), 0xAB);
    EXPECT_EQ(file.WindowStart(), four + 10);
}
