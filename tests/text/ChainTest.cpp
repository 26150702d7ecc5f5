// CChain against std::vector: random appends, swaps, removals and pops made on both, the chain
// walked both ways after each.

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

#include "text/Chain.h"

TEST(Chain, AgreesWithAVector)
{
    std::mt19937 random(3);
    CChain<int> chain;
    std::vector<int> model;
    for (int step = 0; step < 1500; ++step) {
        const int n = static_cast<int>(model.size()), i = n ? static_cast<int>(random() % n) : 0, j = n ? static_cast<int>(random() % n) : 0;
        const int op = n ? static_cast<int>(random() % (step % 300 < 150 ? 7 : 8)) : 0;   // sorts now and then
        switch (op) {
        case 0: case 1: case 2: model.push_back(static_cast<int>(random() % 7) - 3);
            ASSERT_TRUE(chain.Append(HeapNew<int>(model.back()), static_cast<std::uint32_t>(model.back()) * 3)); break;
        case 3: EXPECT_EQ(chain.PopFront(), model.front()); model.erase(model.begin()); break;
        case 4: EXPECT_EQ(chain.PopBack(), model.back()); model.pop_back(); break;
        case 5: chain.Remove(chain.ElementAt(i)); model.erase(model.begin() + i); break;
        case 6: chain.Swap(chain.ElementAt(i), chain.ElementAt(j)); std::swap(model[i], model[j]); break;
        default:
            EXPECT_EQ(*chain.SmallestFrom(chain.Head())->payload, *std::min_element(model.begin(), model.end()));
            SelectionSort(chain, [](int a, int b) { return a < b; });
            std::sort(model.begin(), model.end());
        }
        std::vector<int> forward, backward;
        for (CChainNode<int>* node = chain.Head(); node; node = node->next) {
            forward.push_back(*node->payload);
            EXPECT_EQ(node->tag, static_cast<std::uint32_t>(*node->payload) * 3);
            EXPECT_EQ(chain.ElementAt(static_cast<int>(forward.size()) - 1), node);
        }
        for (CChainNode<int>* node = chain.Tail(); node; node = node->prev)
            backward.insert(backward.begin(), *node->payload);
        ASSERT_TRUE(forward == model && backward == model) << step;
        ASSERT_EQ(chain.Count(), n + (op < 3 ? 1 : op < 6 ? -1 : 0));
        ASSERT_EQ(chain.ElementAt(-1), chain.Head());
        ASSERT_EQ(chain.ElementAt(n + 5), chain.Tail());
    }
    ASSERT_TRUE(chain.Append(HeapNew<int>(9)) && chain.Tail()->tag == 0);   // untagged
}
