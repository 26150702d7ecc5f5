// CChain against std::vector: random swaps, removals and pops on both, walked both ways.

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

#include "text/Chain.h"

namespace {

// Payloads forward, checked against the backward walk, the tags and ElementAt.
std::vector<int> Walk(const CChain<int>& chain)
{
    std::vector<int> forward, backward;
    for (CChainNode<int>* node = chain.Head(); node; node = node->next) {
        forward.push_back(*node->payload);
        EXPECT_EQ(node->tag, static_cast<std::uint32_t>(*node->payload) * 3);
        EXPECT_EQ(chain.ElementAt(static_cast<int>(forward.size()) - 1), node);
    }
    for (CChainNode<int>* node = chain.Tail(); node; node = node->prev)
        backward.insert(backward.begin(), *node->payload);
    EXPECT_EQ(forward, backward);
    EXPECT_EQ(chain.Count(), static_cast<int>(forward.size()));
    return forward;
}

}  // namespace

TEST(Chain, AgreesWithAVector)
{
    std::mt19937 random(3);
    for (int round = 0; round < 60; ++round) {
        CChain<int> chain;
        std::vector<int> model;
        for (int i = 0; i < round % 9; ++i) {
            model.push_back(static_cast<int>(random() % 7) - 3);
            ASSERT_TRUE(chain.Append(HeapNew<int>(model.back()), static_cast<std::uint32_t>(model.back()) * 3));
        }
        EXPECT_EQ(chain.ElementAt(-1), chain.Head());
        EXPECT_EQ(chain.ElementAt(99), chain.Tail());
        for (int step = 0; step < 12 && !model.empty(); ++step) {
            const int n = static_cast<int>(model.size());
            const int i = static_cast<int>(random() % n), j = static_cast<int>(random() % n);
            switch (random() % 5) {
            case 0: EXPECT_EQ(chain.PopFront(), model.front()); model.erase(model.begin()); break;
            case 1: EXPECT_EQ(chain.PopBack(), model.back()); model.pop_back(); break;
            case 2: chain.Remove(chain.ElementAt(i)); model.erase(model.begin() + i); break;
            default: chain.Swap(chain.ElementAt(i), chain.ElementAt(j)); std::swap(model[i], model[j]);
            }
            ASSERT_EQ(Walk(chain), model) << round << ':' << step;
        }
        if (!model.empty()) {
            EXPECT_EQ(*chain.SmallestFrom(chain.Head())->payload, *std::min_element(model.begin(), model.end()));
        }
        SelectionSort(chain, [](int a, int b) { return a < b; });
        std::sort(model.begin(), model.end());
        EXPECT_EQ(Walk(chain), model);
        chain.Clear();
        EXPECT_EQ(Walk(chain), std::vector<int>());
        EXPECT_EQ(chain.ElementAt(0), nullptr);
    }
}

// No node of the system cascades; one that does takes both its sides with it, and
// LeakSanitizer names any node left behind.
TEST(Chain, ACascadingNodeTakesItsNeighboursAlong)
{
    typedef CChainNode<int> Node;
    Node* first = HeapNew<Node>(HeapNew<int>(1), true, nullptr, nullptr, 0u);
    Node* second = HeapNew<Node>(HeapNew<int>(2), true, first, nullptr, 0u);
    Node* third = HeapNew<Node>(nullptr, true, second, nullptr, 0u);
    HeapNew<Node>(HeapNew<int>(4), true, third, nullptr, 0u);
    HeapDelete(third);
}
