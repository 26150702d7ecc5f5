// CTextString through file handles: real files of the platform layer on both builds.

#include <gtest/gtest.h>

#include <string>

#include "platform/Files.h"
#include "tests/text/TextHelpers.h"

namespace {

const char FileName[] = "text_handles_test.bin";

struct TextHandles : ::testing::Test {
    ~TextHandles() override { DeleteFileAt(FileName); }
};

}  // namespace

TEST_F(TextHandles, WriteThenReadBackWholeAndInPieces)
{
    const std::string content("line one\r\n\0\xFFtail", 16);
    FileHandle out = CreateFileForWriting(FileName);
    ASSERT_NE(out, InvalidFileHandle);
    EXPECT_EQ(CTextString("").WriteToHandle(out), 0);
    EXPECT_EQ(Make(content).WriteToHandle(out), 16);
    ASSERT_TRUE(CloseFile(out));

    FileHandle in = OpenFileForReading(FileName);
    ASSERT_NE(in, InvalidFileHandle);
    CTextString text("old text, longer than what the first read brings");
    text.KeepRight(10);
    EXPECT_EQ(text.ReadFromHandle(in, 4), 4);
    EXPECT_EQ(Bytes(text), "line");
    EXPECT_EQ(text.CursorOffset(), 0);
    EXPECT_EQ(text.ReadFromHandle(in, 100), 12);
    EXPECT_EQ(Bytes(text), content.substr(4));
    EXPECT_EQ(text.Text()[12], '\0');
    EXPECT_EQ(text.ReadFromHandle(in, 100), 0);
    EXPECT_EQ(text.Length(), 0);
    ASSERT_TRUE(CloseFile(in));
}

TEST_F(TextHandles, FailedCallsGiveMinusOne)
{
    CTextString text("kept");
    EXPECT_EQ(text.WriteToHandle(InvalidFileHandle), -1);
    EXPECT_EQ(text.ReadFromHandle(InvalidFileHandle, 8), -1);
    EXPECT_EQ(text.Length(), 0);
}
