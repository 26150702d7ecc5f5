// QuoteChars.txt: keys in any case, trimmed lines, the first byte of a value, later lines win.

#include <gtest/gtest.h>

#include <string>

#include "shortcuts/QuoteChars.h"
#include "tests/shortcuts/ProgramFolder.h"

namespace {
class QuoteChars : public ProgramFolder {};
}  // namespace

TEST_F(QuoteChars, FileSetsThePairOrLeavesTheDefaults)
{
    const struct {
        const char* name;
        std::string file;
        char left;
        char right;
    } rows[] = {
        {"CR LF, keys in any case", "leftargquote={\r\nRIGHTARGQUOTE=}\r\n", '{', '}'},
        {"bare LF, no end", "LeftArgQuote=<\nRightArgQuote=>", '<', '>'},
        {"lines trimmed first", " \t LeftArgQuote=(  \r\n\r\n\r\n  RightArgQuote=) ", '(', ')'},
        {"only the first byte counts", "LeftArgQuote=abc\r\n", 'a', ']'},
        {"value not trimmed behind the key", "LeftArgQuote= x\r\n", ' ', ']'},
        {"key with spaces only behind it", "LeftArgQuote=   \r\nRightArgQuote=\r\n", '[', ']'},
        {"later line wins", "RightArgQuote=1\nRightArgQuote=2\n", '[', '2'},
        {"double quote accepted", "LeftArgQuote=\"\n", '"', ']'},
        {"other lines ignored", "XLeftArgQuote=a\nLeftArgQuote\nRight=b\n# RightArgQuote=c\n", '[', ']'},
        {"empty file", "", '[', ']'},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        WriteFile("QuoteChars.txt", row.file);
        char left = '[', right = ']';
        ReadQuoteChars(Folder(), left, right);
        EXPECT_EQ(row.left, left);
        EXPECT_EQ(row.right, right);
    }
}

TEST_F(QuoteChars, MissingFileIsSilentAndCreatesNothing)
{
    char left = '{', right = '}';
    ReadQuoteChars(Make(folder + "\\"), left, right);
    EXPECT_EQ('{', left);
    EXPECT_EQ('}', right);
    EXPECT_FALSE(Exists("QuoteChars.txt"));
}
