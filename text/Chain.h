#pragma once
// CChain: the system's one list. A doubly linked, counted chain of nodes, each owning a
// heap payload made with HeapNew (or a null payload). Users walk the nodes themselves:
// forward from Head() along next, backward from Tail() along prev; a walk that destroys
// nodes takes next first. Nodes and payloads are freed through the allocation seam.

#include <cstdint>

#include "text/Allocation.h"
#include "text/TextString.h"

template <class T>
struct CChainNode {
    // Stores its arguments and links itself in between prev and next.
    CChainNode(T* payload_, bool cascade_, CChainNode* prev_, CChainNode* next_, std::uint32_t tag_)
        : payload(payload_), prev(prev_), next(next_), cascade(cascade_ ? 1 : 0), tag(tag_)
    {
        if (prev)
            prev->next = this;
        if (next)
            next->prev = this;
    }

    // Destroys the payload; with cascade set, also the neighbours on both sides. The node
    // itself is freed by whoever destroys it. No node of this system sets cascade.
    ~CChainNode()
    {
        HeapDelete(payload);
        if (!cascade)
            return;
        if (prev) {
            prev->next = nullptr;
            CChainNode* first = prev;
            while (first->prev)
                first = first->prev;
            HeapDelete(first);
        }
        if (next) {
            next->prev = nullptr;
            HeapDelete(next);
        }
    }

    CChainNode(const CChainNode&) = delete;
    CChainNode& operator=(const CChainNode&) = delete;

    T* payload;   // owned; may be null
    CChainNode* prev;
    CChainNode* next;
    unsigned char cascade;
    std::uint32_t tag;   // carried for the user; no decision reads it
};

template <class T>
class CChain {
public:
    typedef CChainNode<T> Node;

    CChain() : head(nullptr), tail(nullptr), count(0) {}
    virtual ~CChain() { Clear(); }

    // A chain has no copy: a holder that is copied walks the source and appends copies.
    CChain(const CChain&) = delete;
    CChain& operator=(const CChain&) = delete;

    Node* Head() const { return head; }
    Node* Tail() const { return tail; }
    int Count() const { return count; }
    bool IsEmpty() const { return count == 0; }

    // Destroys every node and payload; the chain can be used again.
    void Clear()
    {
        Node* node = head;
        while (node) {
            Node* next = node->next;
            HeapDelete(node);
            node = next;
        }
        head = tail = nullptr;
        count = 0;
    }

    // Adds a node at the end. False when the node cannot be allocated: then nothing has
    // changed, and the payload still belongs to the caller, who destroys it.
    [[nodiscard]] bool Append(T* payload, std::uint32_t tag = 0)
    {
        if (!head) {
            Node* node = HeapNew<Node>(payload, false, nullptr, nullptr, 0u);
            if (!node)
                return false;
            head = tail = node;
        } else {
            Node* last = tail;
            while (last->next)
                last = last->next;
            Node* node = HeapNew<Node>(payload, tail->cascade != 0, last, nullptr, 0u);
            if (!node)
                return false;
        }
        ++count;
        while (tail->next)
            tail = tail->next;
        tail->tag = tag;
        return true;
    }

    // The node at index, clamped to the chain; null only for an empty chain. Walks from
    // the nearer end.
    Node* ElementAt(int index) const
    {
        if (count == 0)
            return nullptr;
        if (index >= count)
            index = count - 1;
        if (index < 0)
            index = 0;
        Node* node;
        if (index > count / 2) {
            node = tail;
            for (int steps = count - 1 - index; steps > 0; --steps)
                node = node->prev;
        } else {
            node = head;
            for (int steps = index; steps > 0; --steps)
                node = node->next;
        }
        return node;
    }

    // Exchanges the places of two nodes of this chain; payloads stay in their nodes.
    // The self tests of the relinking are what makes adjacent nodes come out right.
    void Swap(Node* a, Node* b)
    {
        if (a == b)
            return;
        Node* aPrevBefore = a->prev;
        Node* swapped = a->next;
        a->next = b->next;
        b->next = swapped;
        swapped = a->prev;
        a->prev = b->prev;
        b->prev = swapped;

        if (!a->prev)
            head = a;
        else if (!aPrevBefore)
            head = b;
        if (!a->next)
            tail = a;
        else if (!b->next)
            tail = b;

        Relink(a, b);
        Relink(b, a);
    }

    // Unlinks the node, then destroys it with its payload.
    void Remove(Node* node)
    {
        if (node->prev)
            node->prev->next = node->next;
        if (node->next)
            node->next->prev = node->prev;
        if (node == head)
            head = node->next;
        if (node == tail)
            tail = node->prev;
        node->prev = node->next = nullptr;
        HeapDelete(node);
        --count;
    }

    // Takes the first payload out by value. The chain must not be empty.
    T PopFront()
    {
        Node* node = head;
        if (node->next) {
            head = node->next;
            head->prev = nullptr;
            node->next = nullptr;
        } else {
            head = tail = nullptr;
        }
        T copy(*node->payload);
        HeapDelete(node);
        --count;
        return copy;
    }

    // Takes the last payload out by value. The chain must not be empty.
    T PopBack()
    {
        Node* node = tail;
        if (node->prev) {
            tail = node->prev;
            tail->next = nullptr;
            node->prev = nullptr;
        } else {
            head = tail = nullptr;
        }
        T copy(*node->payload);
        HeapDelete(node);
        --count;
        return copy;
    }

    // Step 3 of the selection sort: from node on, the first node whose payload sorts
    // strictly before every earlier one. before(p, best) says whether p sorts first.
    template <class Before>
    Node* BestFrom(Node* node, Before before) const
    {
        Node* best = node;
        for (Node* p = node->next; p; p = p->next) {
            if (before(*p->payload, *best->payload))
                best = p;
        }
        return best;
    }

    // For chains of integers: the smallest value from node on, compared as signed.
    Node* SmallestFrom(Node* node) const
    {
        return BestFrom(node, [](const T& p, const T& best) { return p < best; });
    }

private:
    // Fixes the neighbours of `node` after Swap(node, other) exchanged their links.
    static void Relink(Node* node, Node* other)
    {
        if (node->prev) {
            if (node->prev == node)
                node->prev = other;
            else
                node->prev->next = node;
        }
        if (node->next) {
            if (node->next == node)
                node->next = other;
            else
                node->next->prev = node;
        }
    }

    Node* head;
    Node* tail;
    int count;
};

// The selection sort that the chain's users apply: for each place from the head, the
// best node from there on is swapped into it. Among equal payloads the earliest wins.
template <class T, class Before>
void SelectionSort(CChain<T>& chain, Before before)
{
    if (chain.Count() < 2)
        return;
    for (CChainNode<T>* pos = chain.Head(); pos;) {
        CChainNode<T>* best = chain.BestFrom(pos, before);
        chain.Swap(pos, best);
        pos = best->next;
    }
}

// Appends a heap copy of text. False when the copy or its node cannot be had; then
// nothing is appended and the copy is freed.
inline bool InsertEntry(CChain<CTextString>& chain, const CTextString& text, std::uint32_t tag = 0)
{
    CTextString* copy = HeapNew<CTextString>(text);
    if (!copy)
        return false;
    if (!copy->HasAllocation() || !chain.Append(copy, tag)) {
        HeapDelete(copy);
        return false;
    }
    return true;
}
