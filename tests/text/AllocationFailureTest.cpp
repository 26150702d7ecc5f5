// Each allocation in turn fails: what the string and the chain are left with. The native
// build runs under AddressSanitizer and LeakSanitizer, which catch what leaks.

#include <gtest/gtest.h>

#include <string>

#include "tests/text/TextHelpers.h"
#include "text/Chain.h"

namespace {

struct AllocationFailure : ::testing::Test {
    ~AllocationFailure() override { FailAllocation(0); }
};

}  // namespace

TEST_F(AllocationFailure, AppendThatGrowsLeavesTheStringUnchanged)
{
    const CTextString twenty(std::string(20, 'x').c_str());
    for (int form = 0; form < 3; ++form) {
        CTextString text("123456789012345");
        text.KeepRight(14);
        FailAllocation(1);
        if (form == 0)
            text.Append(twenty);
        else if (form == 1)
            text.Append(twenty.Text());
        else
            text.AppendChar('!').AppendChar('?');
        FailAllocation(0);
        EXPECT_EQ(Bytes(text), form == 2 ? "23456789012345!" : "23456789012345") << form;
        EXPECT_EQ(text.Capacity(), 16);
    }

    CTextString assigned("old");
    FailAllocation(1);
    assigned.Assign("a text longer than sixteen bytes");
    EXPECT_FALSE(assigned.HasAllocation());
    EXPECT_EQ(assigned.Length() + assigned.Capacity(), 0);
    FailAllocation(1);
    EXPECT_FALSE(assigned.Reserve(100, false));
    EXPECT_FALSE(assigned.HasAllocation());
    FailAllocation(1);
    EXPECT_EQ(Bytes(twenty.Left(3)), "");
}

// The general case of Replace: a table that cannot be had only slows the search; a scratch
// string that cannot grow loses the piece it was given; a failed assignment leaves no
// allocation.
TEST_F(AllocationFailure, ReplaceGeneralCase)
{
    const std::string longer(20, '+');
    const std::string whole = "x" + longer + "y";
    const struct {
        long nth;
        bool allocated;
        std::string result;
    } rows[] = {
        {1, true, whole},   // skip table
        {2, true, whole},   // scratch string: its first append allocates instead
        {3, true, "xy"},    // growth for the replacement
        {4, false, ""},     // assignment of the result
        {5, true, whole},   // nothing left to fail
    };
    for (const auto& row : rows) {
        CTextString text("x--y");
        const CTextString search("--");
        const CTextString replacement(longer.c_str());
        FailAllocation(row.nth);
        text.Replace(search, replacement);
        FailAllocation(0);
        EXPECT_EQ(text.HasAllocation(), row.allocated) << row.nth;
        EXPECT_EQ(Bytes(text), row.result) << row.nth;
    }
}

TEST_F(AllocationFailure, ChainAppendLeavesChainAndPayloadAlone)
{
    for (int before = 0; before <= 2; ++before) {
        CChain<CTextString> chain;
        for (int i = 0; i < before; ++i)
            ASSERT_TRUE(InsertEntry(chain, CTextString("x")));
        CChainNode<CTextString>* tail = chain.Tail();
        CTextString* payload = HeapNew<CTextString>("mine");
        FailAllocation(1);
        EXPECT_FALSE(chain.Append(payload, 3));
        EXPECT_EQ(chain.Count(), before);
        EXPECT_EQ(chain.Tail(), tail);
        EXPECT_EQ(Bytes(*payload), "mine");
        HeapDelete(payload);

        // The heap copy, its text and its node fail in turn: nothing is appended.
        const CTextString source("copy");
        for (long nth = 1; nth <= 3; ++nth) {
            FailAllocation(nth);
            EXPECT_FALSE(InsertEntry(chain, source));
            EXPECT_EQ(chain.Count(), before);
        }
        FailAllocation(0);
    }
}
