// CChain: clamped indexing, swapping in every arrangement, removal, popping, sorting.

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "tests/text/TextHelpers.h"
#include "text/Chain.h"

namespace {

typedef CChain<int> IntChain;

void Fill(IntChain& chain, const std::vector<int>& values)
{
    for (int value : values)
        ASSERT_TRUE(chain.Append(HeapNew<int>(value)));
}

// The payloads head to tail, after checking every link invariant of the chain.
std::vector<int> Walk(const IntChain& chain)
{
    std::vector<int> forward;
    const IntChain::Node* last = nullptr;
    for (const IntChain::Node* node = chain.Head(); node; node = node->next) {
        EXPECT_EQ(node->prev, last);
        forward.push_back(*node->payload);
        last = node;
    }
    EXPECT_EQ(last, chain.Tail());
    EXPECT_EQ(static_cast<int>(forward.size()), chain.Count());
    std::vector<int> backward;
    for (const IntChain::Node* node = chain.Tail(); node; node = node->prev)
        backward.push_back(*node->payload);
    std::reverse(backward.begin(), backward.end());
    EXPECT_EQ(backward, forward);
    return forward;
}

}  // namespace

TEST(Chain, ElementAtClampsAndWalksFromTheNearerEnd)
{
    IntChain chain;
    EXPECT_EQ(chain.ElementAt(0), nullptr);
    EXPECT_EQ(chain.ElementAt(-1), nullptr);
    EXPECT_EQ(chain.ElementAt(5), nullptr);

    Fill(chain, {10});
    EXPECT_EQ(chain.ElementAt(0), chain.Head());

    chain.Clear();
    Fill(chain, {10, 11, 12, 13});
    for (int index = -2; index < 7; ++index) {
        const int clamped = std::min(std::max(index, 0), 3);
        EXPECT_EQ(*chain.ElementAt(index)->payload, 10 + clamped) << index;
    }
}

TEST(Chain, AppendCarriesTheTag)
{
    IntChain chain;
    ASSERT_TRUE(chain.Append(HeapNew<int>(1), 7));
    ASSERT_TRUE(chain.Append(HeapNew<int>(2)));
    ASSERT_TRUE(chain.Append(nullptr, 9));
    EXPECT_EQ(chain.Head()->tag, 7u);
    EXPECT_EQ(chain.Head()->next->tag, 0u);
    EXPECT_EQ(chain.Tail()->tag, 9u);
    EXPECT_EQ(chain.Count(), 3);
}

// Every pair of places in chains of one to five nodes, both argument orders.
TEST(Chain, SwapExchangesPlacesInEveryArrangement)
{
    for (int size = 1; size <= 5; ++size) {
        for (int i = 0; i < size; ++i) {
            for (int j = 0; j < size; ++j) {
                SCOPED_TRACE(std::to_string(size) + ": " + std::to_string(i) + "<->" + std::to_string(j));
                std::vector<int> values;
                for (int v = 0; v < size; ++v)
                    values.push_back(v);
                IntChain chain;
                Fill(chain, values);
                IntChain::Node* a = chain.ElementAt(i);
                IntChain::Node* b = chain.ElementAt(j);
                chain.Swap(a, b);
                std::swap(values[static_cast<std::size_t>(i)], values[static_cast<std::size_t>(j)]);
                EXPECT_EQ(Walk(chain), values);
                EXPECT_EQ(chain.Head()->prev, nullptr);
                EXPECT_EQ(chain.Tail()->next, nullptr);
            }
        }
    }
}

TEST(Chain, RemoveAndPopKeepTheEndsRight)
{
    IntChain chain;
    Fill(chain, {1, 2, 3, 4});
    chain.Remove(chain.ElementAt(1));
    EXPECT_EQ(Walk(chain), (std::vector<int>{1, 3, 4}));
    chain.Remove(chain.Head());
    chain.Remove(chain.Tail());
    EXPECT_EQ(Walk(chain), std::vector<int>{3});
    chain.Remove(chain.Head());
    EXPECT_EQ(chain.Head(), nullptr);
    EXPECT_EQ(chain.Tail(), nullptr);
    EXPECT_EQ(chain.Count(), 0);

    Fill(chain, {5, 6});
    EXPECT_EQ(chain.PopFront(), 5);
    EXPECT_EQ(chain.PopBack(), 6);
    EXPECT_TRUE(chain.IsEmpty());
    EXPECT_EQ(chain.Head(), nullptr);
    EXPECT_EQ(chain.Tail(), nullptr);

    CChain<CTextString> strings;
    ASSERT_TRUE(InsertEntry(strings, CTextString("only")));
    EXPECT_EQ(Bytes(strings.PopFront()), "only");
    EXPECT_EQ(strings.Count(), 0);
    strings.Clear();
}

TEST(Chain, NullPayloadsPassEveryDestructionPath)
{
    CChain<CTextString> chain;
    ASSERT_TRUE(chain.Append(nullptr));
    ASSERT_TRUE(chain.Append(nullptr));
    ASSERT_TRUE(chain.Append(nullptr));
    chain.Remove(chain.ElementAt(1));
    chain.Clear();
    chain.Clear();
    EXPECT_EQ(chain.Count(), 0);
}

TEST(Chain, CascadeDestroysTheWholeList)
{
    typedef CChainNode<CTextString> Node;
    Node* first = HeapNew<Node>(HeapNew<CTextString>("a"), true, nullptr, nullptr, 0u);
    Node* second = HeapNew<Node>(HeapNew<CTextString>("b"), true, first, nullptr, 0u);
    Node* third = HeapNew<Node>(HeapNew<CTextString>("c"), true, second, nullptr, 0u);
    ASSERT_EQ(first->next, second);
    ASSERT_EQ(third->prev, second);
    // The sanitizer build reports any node or payload left behind.
    HeapDelete(second);
}

TEST(Chain, SelectionSort)
{
    IntChain chain;
    Fill(chain, {5, -3, 9, 0, -3, 7, 1});
    SelectionSort(chain, [](const int& p, const int& best) { return p < best; });
    EXPECT_EQ(Walk(chain), (std::vector<int>{-3, -3, 0, 1, 5, 7, 9}));

    IntChain one;
    Fill(one, {4});
    EXPECT_EQ(one.SmallestFrom(one.Head()), one.Head());
    EXPECT_EQ(*chain.SmallestFrom(chain.ElementAt(3))->payload, 1);

    CChain<CTextString> names;
    for (const char* name : {"delta", "Alpha", "charlie", "bravo", "_x"})
        ASSERT_TRUE(InsertEntry(names, CTextString(name)));
    SelectionSort(names, [](const CTextString& p, const CTextString& best) { return p.CompareTo(best, true) < 0; });
    std::vector<std::string> sorted;
    for (const CChainNode<CTextString>* node = names.Head(); node; node = node->next)
        sorted.push_back(Bytes(*node->payload));
    EXPECT_EQ(sorted, (std::vector<std::string>{"Alpha", "bravo", "charlie", "delta", "_x"}));
}
