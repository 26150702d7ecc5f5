// Each allocation made in turn fails: what the string and the chain are left with. The
// native build runs under AddressSanitizer and LeakSanitizer, which catch what leaks.

#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "tests/text/TextHelpers.h"
#include "text/Chain.h"

namespace {

struct NoFailureAfterwards : ::testing::Test {
    ~NoFailureAfterwards() override { FailAllocation(0); }
};

typedef NoFailureAfterwards StringAllocationFailure;
typedef NoFailureAfterwards ChainAllocationFailure;

}  // namespace

TEST_F(StringAllocationFailure, AppendThatGrowsLeavesTheStringUnchanged)
{
    const std::string twenty(20, 'x');
    const struct {
        const char* what;
        long nth;   // the argument of "Append string" is made first and must succeed
        std::function<void(CTextString&)> append;
        const char* result;
    } rows[] = {
        {"AppendBytes", 1, [&](CTextString& s) { s.AppendBytes(twenty.data(), 20); }, "23456789012345"},
        {"Append text", 1, [&](CTextString& s) { s.Append(twenty.c_str()); }, "23456789012345"},
        {"Append string", 2, [&](CTextString& s) { s.Append(CTextString(twenty.c_str())); }, "23456789012345"},
        {"AppendChar", 1, [](CTextString& s) { s.AppendChar('!').AppendChar('?'); }, "23456789012345!"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        CTextString text("123456789012345");   // 15 bytes in 16
        text.KeepRight(14);                    // the append compacts before it grows
        FailAllocation(row.nth);
        row.append(text);
        FailAllocation(0);
        EXPECT_EQ(Bytes(text), row.result);
        EXPECT_EQ(text.Capacity(), 16);
        EXPECT_EQ(text.CursorOffset(), 0);
    }
}

TEST_F(StringAllocationFailure, EachOperationKeepsItsPromise)
{
    CTextString reserved("keep");
    FailAllocation(1);
    EXPECT_FALSE(reserved.Reserve(100, false));
    EXPECT_EQ(Bytes(reserved), "keep");
    EXPECT_EQ(reserved.Capacity(), 16);

    CTextString bigEndian("keep");
    ASSERT_TRUE(bigEndian.Reserve(4, false, true));
    bigEndian.Assign("abc");
    FailAllocation(1);
    bigEndian.AssignBigEndian32(1);
    EXPECT_EQ(Bytes(bigEndian), "abc");

    CTextString assigned("old");
    FailAllocation(1);
    assigned.Assign("a text longer than sixteen bytes");
    EXPECT_FALSE(assigned.HasAllocation());
    EXPECT_EQ(assigned.Length(), 0);
    EXPECT_EQ(assigned.Capacity(), 0);
    EXPECT_STREQ(assigned.Text(), "");
    // Growth gives it an allocation again.
    assigned.Append("back");
    EXPECT_EQ(Bytes(assigned), "back");

    const CTextString source("source text");
    FailAllocation(1);
    EXPECT_EQ(Bytes(source.Left(3)), "");
    FailAllocation(1);
    EXPECT_EQ(Bytes(source.Right(3)), "");
    FailAllocation(1);
    EXPECT_EQ(Bytes(source.Concat("more")), "");
    FailAllocation(1);
    const CTextString copy(source);
    EXPECT_FALSE(copy.HasAllocation());
    EXPECT_EQ(copy.Length(), 0);
}

// The general case of Replace: table, scratch string, its growth and the final assignment
// fail in turn. A table that cannot be had only slows the search; a scratch string that
// cannot grow loses the piece it was given; a failed assignment leaves no allocation.
TEST_F(StringAllocationFailure, ReplaceGeneralCase)
{
    const std::string longer(20, '+');
    const std::string whole = "x" + longer + "y";
    const struct {
        long nth;
        bool allocated;
        std::string result;
    } rows[] = {
        {1, true, whole},     // skip table
        {2, true, whole},     // scratch string: its first append allocates instead
        {3, true, "xy"},      // growth for the replacement
        {4, false, ""},       // assignment of the result
        {5, true, whole},     // nothing left to fail
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.nth);
        CTextString text("x--y");
        const CTextString search("--");
        const CTextString replacement(longer.c_str());
        FailAllocation(row.nth);
        text.Replace(search, replacement);
        FailAllocation(0);
        EXPECT_EQ(text.HasAllocation(), row.allocated);
        EXPECT_EQ(Bytes(text), row.result);
        EXPECT_EQ(text.CursorOffset(), 0);
    }
}

TEST_F(StringAllocationFailure, ReplaceWithCharactersLeavesTheTextAloneWhenItsTemporariesFail)
{
    for (long nth = 1; nth <= 2; ++nth) {
        CTextString text("a'b'c");
        FailAllocation(nth);
        text.Replace("'", "\"\"");
        FailAllocation(0);
        EXPECT_EQ(Bytes(text), "a'b'c") << nth;
    }
}

TEST_F(ChainAllocationFailure, AppendLeavesChainAndPayloadAlone)
{
    for (int before = 0; before <= 2; ++before) {
        SCOPED_TRACE(before);
        CChain<CTextString> chain;
        for (int i = 0; i < before; ++i)
            ASSERT_TRUE(InsertEntry(chain, CTextString("x")));
        CChainNode<CTextString>* head = chain.Head();
        CChainNode<CTextString>* tail = chain.Tail();
        CTextString* payload = HeapNew<CTextString>("mine");
        FailAllocation(1);
        EXPECT_FALSE(chain.Append(payload, 3));
        FailAllocation(0);
        EXPECT_EQ(chain.Count(), before);
        EXPECT_EQ(chain.Head(), head);
        EXPECT_EQ(chain.Tail(), tail);
        if (tail) {
            EXPECT_EQ(tail->next, nullptr);
        }
        EXPECT_EQ(Bytes(*payload), "mine");
        HeapDelete(payload);

        // The heap copy, its text, and its node fail in turn: nothing is appended.
        const CTextString source("copy");
        for (long nth = 1; nth <= 3; ++nth) {
            FailAllocation(nth);
            EXPECT_FALSE(InsertEntry(chain, source));
            FailAllocation(0);
            EXPECT_EQ(chain.Count(), before);
        }
    }
}
