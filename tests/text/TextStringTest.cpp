// CTextString core: capacities, the cursor, growth, comparison, cutting and trims.

#include <gtest/gtest.h>

#include <cctype>
#include <cstdio>
#include <cstring>
#include <random>
#include <string>

#include "tests/text/TextHelpers.h"
#include "text/Allocation.h"
#include "text/TextString.h"

TEST(TextStringConstruction, CapacityAndText)
{
    struct Row {
        const char* what;
        CTextString made;
        int capacity;
        std::string text;
    };
    Row rows[] = {
        {"int 0", CTextString(0), 17, ""},
        {"int negative", CTextString(-5), 17, ""},
        {"int 40", CTextString(40), 41, ""},
        {"empty text", CTextString(""), 16, ""},
        {"null text", CTextString(static_cast<const char*>(nullptr)), 16, ""},
        {"short text", CTextString("abc"), 16, "abc"},
        {"text of 15", CTextString("123456789012345"), 16, "123456789012345"},
        {"text of 16", CTextString("1234567890123456"), 17, "1234567890123456"},
        {"zero char", CTextString('\0'), 16, std::string(1, '\0')},
        {"char", CTextString('x'), 16, "x"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        EXPECT_EQ(row.made.Capacity(), row.capacity);
        EXPECT_EQ(Bytes(row.made), row.text);
        EXPECT_EQ(row.made.Text()[row.made.Length()], '\0');
    }
}

TEST(TextStringConstruction, CopyTakesCapacityFromTheCursorAndNoTable)
{
    CTextString source("hello world");
    ASSERT_TRUE(source.BuildSkipTable());
    source.KeepRight(5);
    CTextString copy(source);
    EXPECT_EQ(copy.Capacity(), 16 - 6);
    EXPECT_EQ(copy.CursorOffset(), 0);
    EXPECT_EQ(Bytes(copy), "world");
    EXPECT_EQ(copy.SkipTable(), nullptr);
}

TEST(TextStringAssign, ReusesRoomAndReallocatesOnlyWhenShort)
{
    CTextString text("some longer text");   // 17-byte allocation
    const char* before = text.Text();
    text.Assign("short");
    EXPECT_EQ(text.Text(), before);
    EXPECT_EQ(Bytes(text), "short");

    text.Assign(CTextString(""));
    EXPECT_EQ(text.Text(), before);
    EXPECT_EQ(text.Length(), 0);
    EXPECT_EQ(text.Text()[0], '\0');

    text.Assign(static_cast<const char*>(nullptr));
    EXPECT_EQ(text.Text(), before);

    // From characters the new allocation has the minimum floor; from a string it is exact.
    CTextString fromChars(0);
    ASSERT_TRUE(fromChars.Reserve(4, false, true));
    fromChars.Assign("abcdef");
    EXPECT_EQ(fromChars.Capacity(), 16);
    CTextString fromString(0);
    ASSERT_TRUE(fromString.Reserve(4, false, true));
    fromString.Assign(CTextString("abcdef"));
    EXPECT_EQ(fromString.Capacity(), 7);
    EXPECT_EQ(Bytes(fromString), "abcdef");
}

TEST(TextStringAssign, BigEndianKeepsZeroBytes)
{
    CTextString text("xyz");
    text.AssignBigEndian16(0x1234);
    EXPECT_EQ(Bytes(text), std::string("\x12\x34", 2));
    text.AssignBigEndian32(0xA1B2C3D4u);
    EXPECT_EQ(Bytes(text), std::string("\xA1\xB2\xC3\xD4", 4));
    text.AssignBigEndian32(0);
    EXPECT_EQ(Bytes(text), std::string(4, '\0'));
    text.AssignChar('\0');
    EXPECT_EQ(Bytes(text), std::string(1, '\0'));
}

TEST(TextStringAppend, GrowsByATenthAtLeastTheMinimum)
{
    CTextString text(0);
    text.Append(std::string(100, 'a').c_str());
    EXPECT_EQ(text.Capacity(), 100 + 16);
    text.Append(std::string(900, 'b').c_str());
    EXPECT_EQ(text.Capacity(), 1000 + 100);
    EXPECT_EQ(text.Length(), 1000);

    // Byte by byte, a reallocation happens only when the slack is used up.
    CTextString built(0);
    FailAllocation(0);
    for (int i = 0; i < 1000; ++i)
        built.AppendChar(static_cast<char>('0' + i % 10));
    EXPECT_LT(AllocationsMade(), 30);
    EXPECT_EQ(built.Length(), 1000);
}

TEST(TextStringAppend, ZeroBytesAndOtherStrings)
{
    CTextString text("a");
    const CTextString withZero = Make(std::string("x\0y", 3));
    text.Append(withZero);
    text.AppendBytes("\0\0", 2);
    text.AppendChar('z');
    EXPECT_EQ(Bytes(text), std::string("ax\0y\0\0z", 7));
    EXPECT_EQ(Bytes(CTextString("ab").Concat(withZero)), std::string("abx\0y", 5));
    EXPECT_EQ(Bytes(CTextString("ab").Concat("cd")), "abcd");
}

TEST(TextStringCursor, KeepRightMovesTheCursorOnly)
{
    CTextString text("abcde");
    const char* start = text.Text();
    text.KeepRight(2);
    EXPECT_EQ(text.Capacity(), 13);
    EXPECT_EQ(text.Text(), start + 3);
    EXPECT_EQ(Bytes(text), "de");

    text.KeepRight(2);
    text.KeepRight(50);
    EXPECT_EQ(Bytes(text), "de");
    EXPECT_EQ(text.Capacity(), 13);

    // An append moves the text down first; an assign rebases.
    text.AppendChar('f');
    EXPECT_EQ(text.CursorOffset(), 0);
    EXPECT_EQ(Bytes(text), "def");
    EXPECT_EQ(text.Capacity(), 16);

    CTextString assigned("abcde");
    assigned.KeepRight(2);
    assigned.Assign("0123456789abcde");
    EXPECT_EQ(assigned.CursorOffset(), 0);
    EXPECT_EQ(assigned.Capacity(), 16);

    CTextString emptied("abcde");
    emptied.KeepRight(3);
    emptied.KeepRight(0);
    EXPECT_EQ(emptied.CursorOffset(), 2);
    EXPECT_EQ(emptied.Length(), 0);
    EXPECT_EQ(emptied.Text()[0], '\0');
    emptied.MakeEmpty();
    EXPECT_EQ(emptied.CursorOffset(), 0);
    EXPECT_EQ(emptied.Capacity(), 16);
}

TEST(TextStringCut, LeftRightTruncate)
{
    const CTextString text("abc");
    struct Row {
        int n;
        const char* left;
        const char* right;
    };
    const Row rows[] = {{-5, "", ""}, {0, "", ""}, {1, "a", "c"}, {3, "abc", "abc"}, {100, "abc", "abc"}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.n);
        EXPECT_EQ(Bytes(text.Left(row.n)), row.left);
        EXPECT_EQ(Bytes(text.Right(row.n)), row.right);
    }
    EXPECT_EQ(text.Left(2).Capacity(), 17);

    CTextString cut("abcdef");
    cut.Truncate(6);
    cut.Truncate(60);
    EXPECT_EQ(Bytes(cut), "abcdef");
    cut.Truncate(2);
    EXPECT_EQ(Bytes(cut), "ab");
    EXPECT_EQ(cut.Text()[2], '\0');
}

TEST(TextStringCompare, ThreeWayOverUnsignedBytes)
{
    struct Row {
        std::string text;
        std::string other;
        int compare;
        int noCase;
    };
    const Row rows[] = {
        {"abc", "abcd", -1, -1},
        {"abcd", "abc", 1, 1},
        {"abc", "abc", 0, 0},
        {"", "", 0, 0},
        {"", "a", -1, -1},
        {"\xE9", "z", 1, 1},
        {"Zebra", "apple", -1, 1},
        {"ABC", "abc", -1, 0},
        {"[", "a", -1, 1},
        {"_", "Z", 1, 1},
        {std::string("a\0b", 3), std::string("a\0c", 3), -1, -1},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text + " / " + row.other);
        const CTextString text = Make(row.text);
        const int n = static_cast<int>(row.other.size());
        EXPECT_EQ(text.Compare(row.other.data(), n), row.compare);
        EXPECT_EQ(text.CompareNoCase(row.other.data(), n), row.noCase);
        const CTextString other = Make(row.other);
        EXPECT_EQ(text.CompareTo(other, false), row.compare);
        EXPECT_EQ(text.CompareTo(other, true), row.noCase);
    }
}

TEST(TextStringCompare, AgreesWithStdStringOnRandomBytes)
{
    std::mt19937 random(7);
    for (int round = 0; round < 2000; ++round) {
        std::string a(random() % 5, '\0'), b(random() % 5, '\0');
        for (char& c : a)
            c = static_cast<char>("aZ\0\xFF"[random() % 4]);
        for (char& c : b)
            c = static_cast<char>("aZ\0\xFF"[random() % 4]);
        const int expected = a.compare(b) < 0 ? -1 : (a.compare(b) > 0 ? 1 : 0);
        EXPECT_EQ(Make(a).Compare(b.data(), static_cast<int>(b.size())), expected) << round;
        EXPECT_EQ(Make(a).Equals(Make(b)), a == b ? 1 : 0);
    }
}

TEST(TextStringCompare, Equals)
{
    EXPECT_EQ(CTextString("").Equals(""), 1);
    EXPECT_EQ(CTextString(0).Equals(CTextString("")), 1);
    EXPECT_EQ(CTextString("abc").Equals("abc"), 1);
    EXPECT_EQ(CTextString("abc").Equals("abcd"), 0);
    EXPECT_EQ(CTextString("abcd").Equals("abc"), 0);
    EXPECT_EQ(Make(std::string("ab\0", 3)).Equals("ab"), 0);
    EXPECT_EQ(Make(std::string("a\0c", 3)).Equals("abc"), 0);
}

TEST(TextStringReserve, WholeAllocationForm)
{
    CTextString fresh(0);
    ASSERT_TRUE(fresh.Reserve(1, false, true));
    EXPECT_EQ(fresh.Capacity(), 4);

    CTextString big(0);
    ASSERT_TRUE(big.Reserve(1000000, false, true));
    big.Append("some text");
    ASSERT_TRUE(big.Reserve(16, false, true));
    EXPECT_EQ(big.Capacity(), 16);
    EXPECT_EQ(big.Length(), 0);
    EXPECT_EQ(big.Text()[0], '\0');

    // Keeping the text cuts it to what fits; a big enough allocation is only compacted.
    CTextString kept("0123456789");
    ASSERT_TRUE(kept.Reserve(6, true, true));
    EXPECT_EQ(Bytes(kept), "01234");
    kept.KeepRight(2);
    ASSERT_TRUE(kept.Reserve(5, true, false));
    EXPECT_EQ(kept.CursorOffset(), 0);
    EXPECT_EQ(Bytes(kept), "34");
}

TEST(TextStringReserve, CapacityForm)
{
    CTextString roomy(0);
    ASSERT_TRUE(roomy.Reserve(3, false));
    EXPECT_EQ(roomy.Capacity(), 17);

    // A capacity of exactly 3: a 4-byte allocation with the cursor one byte in.
    CTextString tight(0);
    ASSERT_TRUE(tight.Reserve(4, false, true));
    tight.Append("abc");
    tight.KeepRight(2);
    ASSERT_EQ(tight.Capacity(), 3);
    ASSERT_TRUE(tight.Reserve(3, false));
    EXPECT_EQ(tight.Capacity(), 3 + 16);
    EXPECT_EQ(tight.CursorOffset(), 0);
}

TEST(TextStringTrim, BothSidesAndTheCursor)
{
    struct Row {
        std::string text;
        std::string trimmed;
    };
    const Row rows[] = {
        {"", ""},
        {"abc", "abc"},
        {"  a b \t", "a b"},
        {std::string("\0\x1F x \0", 6), "x"},
        {"\x21!\x7F", "\x21!\x7F"},
        {"\xA0x\xA0", "\xA0x\xA0"},
    };
    for (const Row& row : rows) {
        CTextString text = Make(row.text);
        Trim(text, 0, 32);
        EXPECT_EQ(Bytes(text), row.trimmed) << row.text;
    }

    CTextString right("    ");
    right.KeepRight(3);
    TrimRight(right, ' ', ' ');
    EXPECT_EQ(right.Length(), 0);
    EXPECT_EQ(right.CursorOffset(), 0);

    CTextString left("    ");
    TrimLeft(left, ' ', ' ');
    EXPECT_EQ(left.Length(), 0);
    EXPECT_EQ(left.CursorOffset(), 0);

    CTextString lead("  ab");
    TrimLeft(lead, ' ', ' ');
    EXPECT_EQ(lead.CursorOffset(), 2);
    EXPECT_EQ(Bytes(lead), "ab");
}

TEST(TextStringTrim, IsLetterIsAsciiOnly)
{
    for (int ch = 0; ch < 256; ++ch) {
        const bool ascii = (ch >= 'A' && ch <= 'Z') || (ch >= 'a' && ch <= 'z');
        EXPECT_EQ(IsLetter(static_cast<unsigned char>(ch)), ascii) << ch;
    }
}

TEST(TextStringWrite, WritesTheTextWithoutTerminator)
{
    std::FILE* stream = std::tmpfile();
    ASSERT_NE(stream, nullptr);
    EXPECT_EQ(Make(std::string("a\0b", 3)).WriteTo(stream), 3);
    EXPECT_EQ(CTextString("").WriteTo(stream), 0);
    std::rewind(stream);
    char read[8] = {};
    EXPECT_EQ(std::fread(read, 1, sizeof read, stream), 3u);
    EXPECT_EQ(std::string(read, 3), std::string("a\0b", 3));
    std::fclose(stream);
}
