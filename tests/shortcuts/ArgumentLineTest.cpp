// The enhanced argument line: splitting, composing, taking apart, and the quote round trip.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "shortcuts/ArgumentLine.h"
#include "tests/text/TextHelpers.h"

namespace {

typedef std::vector<std::string> List;

List Items(const CChain<CTextString>& chain)
{
    List items;
    for (const CChainNode<CTextString>* node = chain.Head(); node; node = node->next)
        items.push_back(Bytes(*node->payload));
    return items;
}

// The four values taken apart from a line, as "profile,profile|target|workDir|args".
std::string TakeApart(const CTextString& line)
{
    CChain<CTextString> tokens, profiles;
    CTextString target(0), workDir(0), args(0);
    TakeApartArguments(line, tokens, profiles, target, workDir, args);
    std::string joined;
    for (const std::string& profile : Items(profiles))
        joined += (joined.empty() ? "" : ",") + profile;
    return joined + "|" + Bytes(target) + "|" + Bytes(workDir) + "|" + Bytes(args);
}

}  // namespace

TEST(ArgumentLine, TokenizeSplitsOnBlanksAndHonoursQuotes)
{
    const struct {
        std::string source;
        List tokens;
    } rows[] = {
        {"", {}},
        {std::string("\0 \t\0", 4), {}},
        {"\"\"", {}},
        {"\"\" a", {"a"}},
        {"profile=\"A B\"", {"profile=A B"}},
        {"a\"b c\"d", {"ab c", "d"}},
        {"\"open  to the end  ", {"open  to the end"}},
        {std::string("C:\\x\\y.exe\0-RestoreAll", 22), {"C:\\x\\y.exe", "-RestoreAll"}},
    };
    CChain<CTextString> tokens;   // reused: each call replaces what it held
    for (const auto& row : rows) {
        Tokenize(Make(row.source), tokens);
        EXPECT_EQ(Items(tokens), row.tokens) << row.source;
    }
}

TEST(ArgumentLine, ComposeWritesItemsInOrderAndOnlyWhenGiven)
{
    CChain<CTextString> profiles;
    const CTextString none("");
    EXPECT_EQ(Bytes(ComposeArguments(none, none, none, profiles)), " target=\"\"");
    ASSERT_TRUE(InsertEntry(profiles, CTextString("Flight")));
    ASSERT_TRUE(InsertEntry(profiles, CTextString("Pedals")));
    EXPECT_EQ(Bytes(ComposeArguments(CTextString("C:\\Sim\\sim.exe"), CTextString("C:\\Sim"),
                                     CTextString("-config [C:\\My Files\\a.cfg]"), profiles)),
              "profile=\"Flight\" profile=\"Pedals\" target=\"C:\\Sim\\sim.exe\" targetDir=\"C:\\Sim\" "
              "args=\"-config [C:\\My Files\\a.cfg]\"");
    EXPECT_EQ(Bytes(ComposeArguments(none, none, CTextString("x"), profiles)),
              "profile=\"Flight\" profile=\"Pedals\" target=\"\" args=\"x\"");
}

TEST(ArgumentLine, TakeApartInAnyCaseAndOrder)
{
    const struct {
        const char* line;
        const char* taken;
    } rows[] = {
        {"profile=\"Flight\" profile=\"Pedals\" target=\"C:\\s.exe\" targetDir=\"C:\\\" args=\"-c [a b]\"",
         "Flight,Pedals|C:\\s.exe|C:\\|-c [a b]"},
        {"ARGS=\"-c [a b]\" TargetDir=\"C:\\\" PROFILE=Flight TARGET=\"C:\\s.exe\" profile=\"Pedals\"",
         "Flight,Pedals|C:\\s.exe|C:\\|-c [a b]"},
        {"", "|||"},
        {"target=\"\" profile=\"\"", "|||"},
        {"target=\"a\" target=\"\"", "|||"},
        {"profile=A profile=A profile=B", "A,A,B|||"},
        {"args=\"a b", "|||a b"},
        {"targetDirX=\"y\" targetDir=\"d\"", "||d|"},
        {"targetDir=\"d\" targetDir=", "|||"},
        {"args=\"  keep  spaces \" unknown=1", "|||  keep  spaces "},
    };
    for (const auto& row : rows)
        EXPECT_EQ(TakeApart(CTextString(row.line)), row.taken) << row.line;
}

// What Save followed by Restore gives back: substitute, compose, take apart, restore.
TEST(ArgumentLine, QuotesSurviveTheRoundTrip)
{
    const struct {
        const char* args;
        char left, right;
        const char* substituted;
        const char* restored;
    } rows[] = {
        {"\"a b\" c \"d", '[', ']', "[a b] c [d", "\"a b\" c \"d"},
        {"\"\"\"\"", '[', ']', "[][]", "\"\"\"\""},
        {"-x [1]", '[', ']', "-x [1]", "-x \"1\""},
        {"  spaced  \"q\"  ", '{', '}', "  spaced  {q}  ", "  spaced  \"q\"  "},
        {"", '[', ']', "", ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.args);
        CTextString args(row.args);
        SubstituteQuotes(args, row.left, row.right);
        EXPECT_EQ(Bytes(args), row.substituted);

        CChain<CTextString> profiles;
        ASSERT_TRUE(InsertEntry(profiles, CTextString("Profile One")));
        const CTextString line =
            ComposeArguments(CTextString("C:\\Program Files\\g.exe"), CTextString("C:\\Program Files"), args, profiles);
        const std::string taken = TakeApart(line);
        const std::string front = "Profile One|C:\\Program Files\\g.exe|C:\\Program Files|";
        ASSERT_EQ(taken.substr(0, front.size()), front);

        CTextString restored = Make(taken.substr(front.size()));
        RestoreQuotes(restored, row.left, row.right);
        EXPECT_EQ(Bytes(restored), row.restored);
    }
}

namespace {

struct ArgumentLineAllocationFailure : ::testing::Test {
    ~ArgumentLineAllocationFailure() override { FailAllocation(0); }
};

// Runs work with the 1st, 2nd, ... allocation failing until a run has none left to fail.
// Each outcome must be the full list or the list without one whole item (or nothing at
// all, when the work's first copy of its input fails). Gives the number of failing runs.
template <class Work>
long FailEachAllocation(Work work, const List& all)
{
    for (long nth = 1;; ++nth) {
        FailAllocation(nth);
        const List got = work();
        const bool failed = AllocationsMade() >= nth;
        FailAllocation(0);
        bool expected = got == all || got.empty();
        for (std::size_t skip = 0; skip < all.size() && !expected; ++skip) {
            List less = all;
            less.erase(less.begin() + static_cast<long>(skip));
            expected = got == less;
        }
        EXPECT_TRUE(expected) << "allocation " << nth << " gave " << got.size() << " items";
        if (!failed) {
            EXPECT_EQ(got, all);
            return nth - 1;
        }
    }
}

}  // namespace

TEST_F(ArgumentLineAllocationFailure, TokenizeDropsOneWholeToken)
{
    const CTextString source("alpha \"bravo charlie delta echo\" foxtrot");
    const long runs = FailEachAllocation(
        [&] {
            CChain<CTextString> tokens;
            Tokenize(source, tokens);
            return Items(tokens);
        },
        {"alpha", "bravo charlie delta echo", "foxtrot"});
    EXPECT_GT(runs, 10);
}

// A line taken apart is whole, or told to be incomplete (and then counts as nothing).
TEST_F(ArgumentLineAllocationFailure, TakeApartIsWholeOrSaysSo)
{
    const CTextString line("profile=\"A\" profile=\"B\" target=\"T\" targetDir=\"D\" args=\"X\"");
    const long runs = FailEachAllocation(
        [&] {
            CChain<CTextString> tokens, profiles;
            CTextString target(0), workDir(0), args(0);
            if (!TakeApartArguments(line, tokens, profiles, target, workDir, args))
                return List{};
            List items;
            for (const std::string& profile : Items(profiles))
                items.push_back("profile " + profile);
            for (const CTextString* value : {&target, &workDir, &args}) {
                if (!value->IsEmpty())
                    items.push_back(Bytes(*value));
            }
            EXPECT_EQ(5u, items.size());
            return items;
        },
        {"profile A", "profile B", "T", "D", "X"});
    EXPECT_GT(runs, 10);
}
