// CTextString core: capacities, the cursor, growth, comparison, cutting and trims.

#include <gtest/gtest.h>

#include <string>

#include "tests/text/TextHelpers.h"

TEST(TextString, ConstructionCapacities)
{
    EXPECT_EQ(CTextString(0).Capacity(), 17);
    EXPECT_EQ(CTextString(-5).Capacity(), 17);
    EXPECT_EQ(CTextString("").Capacity(), 16);
    EXPECT_EQ(CTextString("1234567890123456").Capacity(), 17);
    EXPECT_EQ(Bytes(CTextString('\0')), std::string(1, '\0'));

    // A copy takes the capacity seen from the source's cursor, and no skip table.
    CTextString source("hello world");
    ASSERT_TRUE(source.BuildSkipTable());
    source.KeepRight(5);
    const CTextString copy(source);
    EXPECT_EQ(copy.Capacity(), 10);
    EXPECT_EQ(Bytes(copy), "world");
    EXPECT_EQ(copy.SkipTable(), nullptr);
}

TEST(TextString, CursorMovesOnCutsAndReturnsOnWrites)
{
    CTextString text("abcde");
    const char* start = text.Text();
    text.KeepRight(2);
    EXPECT_EQ(text.Text(), start + 3);
    EXPECT_EQ(text.Capacity(), 13);
    text.KeepRight(50);
    EXPECT_EQ(Bytes(text), "de");

    text.AppendChar('f');   // moves the text down first
    EXPECT_EQ(text.Text(), start);
    EXPECT_EQ(Bytes(text), "def");
    EXPECT_EQ(text.Capacity(), 16);

    text.KeepRight(1);
    text.Assign("0123456789abcde");   // rebases, and the whole allocation is there again
    EXPECT_EQ(text.Text(), start);

    text.KeepRight(3);
    text.KeepRight(2);   // cut after cut: still no byte moves
    EXPECT_EQ(text.CursorOffset(), 13);
    EXPECT_EQ(Bytes(text), "de");
    text.KeepRight(0);   // empties in place
    EXPECT_EQ(text.CursorOffset(), 13);
    EXPECT_EQ(text.Length(), 0);
    text.AssignBigEndian32(0);
    EXPECT_EQ(Bytes(text), std::string(4, '\0'));
}

TEST(TextString, GrowthByATenthAtLeastTheMinimum)
{
    CTextString text(0);
    text.Append(std::string(100, 'a').c_str());
    EXPECT_EQ(text.Capacity(), 116);
    text.Append(std::string(900, 'b').c_str());
    EXPECT_EQ(text.Capacity(), 1100);

    CTextString assigned(0);
    ASSERT_TRUE(assigned.Reserve(4, false, true));
    assigned.Assign(CTextString("abcdef"));   // from a string: exactly what it needs
    EXPECT_EQ(assigned.Capacity(), 7);
    assigned.Assign("abcdefgh");   // from characters: the minimum at least
    EXPECT_EQ(assigned.Capacity(), 16);
}

TEST(TextString, Reserve)
{
    CTextString big(0);
    ASSERT_TRUE(big.Reserve(1000000, false, true));
    big.Append("text");
    ASSERT_TRUE(big.Reserve(16, false, true));
    EXPECT_EQ(big.Capacity(), 16);
    EXPECT_EQ(big.Length(), 0);

    CTextString kept("0123456789");
    ASSERT_TRUE(kept.Reserve(6, true, true));
    EXPECT_EQ(Bytes(kept), "01234");

    // Capacity exactly 3: "not less than" reallocates, with the minimum as room.
    CTextString tight(0);
    ASSERT_TRUE(tight.Reserve(1, false, true));
    EXPECT_EQ(tight.Capacity(), 4);
    tight.Append("abc");
    tight.KeepRight(2);
    ASSERT_TRUE(tight.Reserve(3, false));
    EXPECT_EQ(tight.Capacity(), 19);
}

TEST(TextString, CompareAsUnsignedBytesAndFoldedToUpperCase)
{
    const struct {
        std::string text, other;
        int compare, noCase, equals;
    } rows[] = {
        {"abc", "abcd", -1, -1, 0},
        {"abcd", "abc", 1, 1, 0},
        {"", "", 0, 0, 1},
        {"\xE9", "z", 1, 1, 0},
        {"Zebra", "apple", -1, 1, 0},
        {"ABC", "abc", -1, 0, 0},
        {"[", "a", -1, 1, 0},
        {std::string("a\0b", 3), std::string("a\0c", 3), -1, -1, 0},
        {std::string("ab\0", 3), "ab", 1, 1, 0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text + " / " + row.other);
        const CTextString text = Make(row.text);
        const CTextString other = Make(row.other);
        EXPECT_EQ(text.CompareTo(other, false), row.compare);
        EXPECT_EQ(text.CompareTo(other, true), row.noCase);
        EXPECT_EQ(text.Equals(other), row.equals);
        EXPECT_EQ(text.Equals(row.other.c_str()), row.equals);
    }
}

TEST(TextString, TrimsAndCuts)
{
    const struct {
        std::string text, trimmed;
    } rows[] = {
        {"", ""}, {"  a b \t", "a b"}, {std::string("\0\x1F x \0", 6), "x"}, {"\xA0x\x7F", "\xA0x\x7F"},
    };
    for (const auto& row : rows) {
        CTextString text = Make(row.text);
        Trim(text, 0, 32);
        EXPECT_EQ(Bytes(text), row.trimmed);
    }
    // Trimmed away entirely: from the right the cursor returns, from the left it stays.
    CTextString right("    ");
    right.KeepRight(3);
    TrimRight(right, ' ', ' ');
    EXPECT_EQ(right.CursorOffset(), 0);
    CTextString left("  ab");
    TrimLeft(left, ' ', ' ');
    EXPECT_EQ(left.CursorOffset(), 2);

    const CTextString abc("abc");
    EXPECT_EQ(Bytes(abc.Left(-5)) + Bytes(abc.Right(-5)), "");
    EXPECT_EQ(Bytes(abc.Left(100)) + Bytes(abc.Right(100)), "abcabc");
    EXPECT_EQ(Bytes(abc.Left(1)) + Bytes(abc.Right(1)), "ac");
}
