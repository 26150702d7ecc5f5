// CChain: clamped indexing, swapping in every arrangement, removal, popping, sorting.

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "tests/text/TextHelpers.h"
#include "text/Chain.h"

namespace {

typedef CChain<int> IntChain;

IntChain* MakeChain(int size)
{
    IntChain* chain = new IntChain;
    for (int value = 0; value < size; ++value)
        EXPECT_TRUE(chain->Append(HeapNew<int>(value)));
    return chain;
}

// The payloads head to tail, after checking that both walks and both ends agree.
std::vector<int> Walk(const IntChain& chain)
{
    std::vector<int> forward, backward;
    const IntChain::Node* last = nullptr;
    for (const IntChain::Node* node = chain.Head(); node; last = node, node = node->next) {
        EXPECT_EQ(node->prev, last);
        forward.push_back(*node->payload);
    }
    EXPECT_EQ(last, chain.Tail());
    for (const IntChain::Node* node = chain.Tail(); node; node = node->prev)
        backward.insert(backward.begin(), *node->payload);
    EXPECT_EQ(backward, forward);
    EXPECT_EQ(static_cast<int>(forward.size()), chain.Count());
    return forward;
}

}  // namespace

TEST(Chain, ElementAtClamps)
{
    IntChain empty;
    EXPECT_EQ(empty.ElementAt(-1), nullptr);
    EXPECT_EQ(empty.ElementAt(5), nullptr);
    for (int size = 1; size <= 4; ++size) {
        IntChain* chain = MakeChain(size);
        for (int index = -2; index < 6; ++index)
            EXPECT_EQ(*chain->ElementAt(index)->payload, std::min(std::max(index, 0), size - 1));
        delete chain;
    }
}

// Every pair of places in chains of one to five nodes, both argument orders.
TEST(Chain, SwapExchangesPlacesInEveryArrangement)
{
    for (int size = 1; size <= 5; ++size) {
        for (int i = 0; i < size; ++i) {
            for (int j = 0; j < size; ++j) {
                IntChain* chain = MakeChain(size);
                std::vector<int> want = Walk(*chain);
                chain->Swap(chain->ElementAt(i), chain->ElementAt(j));
                std::swap(want[static_cast<std::size_t>(i)], want[static_cast<std::size_t>(j)]);
                EXPECT_EQ(Walk(*chain), want) << size << ": " << i << "<->" << j;
                delete chain;
            }
        }
    }
}

TEST(Chain, RemovePopAndNullPayloads)
{
    IntChain* chain = MakeChain(4);
    chain->Remove(chain->ElementAt(1));
    chain->Remove(chain->Tail());
    EXPECT_EQ(Walk(*chain), (std::vector<int>{0, 2}));
    EXPECT_EQ(chain->PopBack(), 2);
    EXPECT_EQ(chain->PopFront(), 0);
    EXPECT_EQ(chain->Head(), nullptr);
    EXPECT_EQ(chain->Tail(), nullptr);
    ASSERT_TRUE(chain->Append(nullptr, 9));
    EXPECT_EQ(chain->Tail()->tag, 9u);
    ASSERT_TRUE(chain->Append(nullptr));
    chain->Remove(chain->Head());
    delete chain;
}

TEST(Chain, SelectionSortOfIntegersAndStrings)
{
    IntChain numbers;
    for (int value : {5, -3, 9, 0, -3, 7})
        ASSERT_TRUE(numbers.Append(HeapNew<int>(value)));
    SelectionSort(numbers, [](const int& p, const int& best) { return p < best; });
    EXPECT_EQ(Walk(numbers), (std::vector<int>{-3, -3, 0, 5, 7, 9}));

    CChain<CTextString> names;
    for (const char* name : {"delta", "Alpha", "_x", "bravo"})
        ASSERT_TRUE(InsertEntry(names, CTextString(name)));
    SelectionSort(names, [](const CTextString& p, const CTextString& best) { return p.CompareTo(best, true) < 0; });
    std::string order;
    for (const CChainNode<CTextString>* node = names.Head(); node; node = node->next)
        order += Bytes(*node->payload) + " ";
    EXPECT_EQ(order, "Alpha bravo delta _x ");
}
