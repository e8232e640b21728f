// The order of the nodes below one parent: a place is found from a node, and a node from a place, without
// walking the siblings.
#pragma once

#include <cstdint>

namespace kv::window {

/// What a node carries of its place among its siblings: a treap ordered by that place, linked upwards.
template <class Node>
struct SiblingLinks {
    Node* Left = nullptr;
    Node* Right = nullptr;
    Node* Up = nullptr;
    std::uint32_t Size = 1;      // nodes of this sub-treap
    std::uint32_t Priority = 0;  // a parent's is never smaller
};

/// An ordered set of siblings. It links nodes and owns none. All operations but ForEach cost the logarithm of
/// the number of siblings. `Node` has a member `Order` of type SiblingLinks<Node>.
template <class Node>
class SiblingOrder {
  public:
    std::int32_t Count() const noexcept { return static_cast<std::int32_t>(SizeOf(Root_)); }

    /// Puts `New` before `Next`, or last when Next is null. `Priority` is a random number.
    void InsertBefore(Node* New, Node* Next, std::uint32_t Priority) noexcept {
        New->Order = {};
        New->Order.Priority = Priority;
        if (!Root_) {
            Root_ = New;
            return;
        }
        Node* Spot = nullptr;
        if (!Next) {
            Spot = Root_;
            while (Spot->Order.Right) Spot = Spot->Order.Right;
            Spot->Order.Right = New;
        } else if (!Next->Order.Left) {
            Spot = Next;
            Spot->Order.Left = New;
        } else {
            Spot = Next->Order.Left;
            while (Spot->Order.Right) Spot = Spot->Order.Right;
            Spot->Order.Right = New;
        }
        New->Order.Up = Spot;
        for (Node* N = Spot; N; N = N->Order.Up) ++N->Order.Size;
        while (New->Order.Up && New->Order.Up->Order.Priority < New->Order.Priority) RotateUp(New);
    }

    void Remove(Node* Old) noexcept {
        while (Old->Order.Left || Old->Order.Right) {
            Node* const L = Old->Order.Left;
            Node* const R = Old->Order.Right;
            RotateUp(!R || (L && L->Order.Priority > R->Order.Priority) ? L : R);
        }
        Node* const Above = Old->Order.Up;
        if (!Above)
            Root_ = nullptr;
        else if (Above->Order.Left == Old)
            Above->Order.Left = nullptr;
        else
            Above->Order.Right = nullptr;
        for (Node* N = Above; N; N = N->Order.Up) --N->Order.Size;
        Old->Order = {};
    }

    /// 1-based place of a node of this order.
    static std::int32_t PlaceOf(const Node* Of) noexcept {
        std::uint32_t Place = SizeOf(Of->Order.Left) + 1;
        for (const Node* N = Of; N->Order.Up; N = N->Order.Up)
            if (N->Order.Up->Order.Right == N) Place += SizeOf(N->Order.Up->Order.Left) + 1;
        return static_cast<std::int32_t>(Place);
    }

    /// The node at a 1-based place, null when there is none.
    Node* At(std::int32_t Place) const noexcept {
        if (Place < 1 || Place > Count()) return nullptr;
        auto Wanted = static_cast<std::uint32_t>(Place);
        Node* N = Root_;
        for (;;) {
            const std::uint32_t Before = SizeOf(N->Order.Left);
            if (Wanted == Before + 1) return N;
            if (Wanted <= Before) {
                N = N->Order.Left;
            } else {
                Wanted -= Before + 1;
                N = N->Order.Right;
            }
        }
    }

    template <class AnyNode>
    static AnyNode* Next(AnyNode* Of) noexcept {
        if (Of->Order.Right) {
            AnyNode* N = Of->Order.Right;
            while (N->Order.Left) N = N->Order.Left;
            return N;
        }
        while (Of->Order.Up && Of->Order.Up->Order.Right == Of) Of = Of->Order.Up;
        return Of->Order.Up;
    }

    Node* First() const noexcept {
        Node* N = Root_;
        while (N && N->Order.Left) N = N->Order.Left;
        return N;
    }

    /// Forgets the nodes.
    void Clear() noexcept { Root_ = nullptr; }

  private:
    static std::uint32_t SizeOf(const Node* N) noexcept { return N ? N->Order.Size : 0; }

    // N changes places with the node above it; the order stays.
    void RotateUp(Node* N) noexcept {
        Node* const P = N->Order.Up;
        Node* const G = P->Order.Up;
        if (P->Order.Left == N) {
            P->Order.Left = N->Order.Right;
            if (P->Order.Left) P->Order.Left->Order.Up = P;
            N->Order.Right = P;
        } else {
            P->Order.Right = N->Order.Left;
            if (P->Order.Right) P->Order.Right->Order.Up = P;
            N->Order.Left = P;
        }
        P->Order.Up = N;
        N->Order.Up = G;
        if (!G)
            Root_ = N;
        else if (G->Order.Left == P)
            G->Order.Left = N;
        else
            G->Order.Right = N;
        N->Order.Size = P->Order.Size;
        P->Order.Size = SizeOf(P->Order.Left) + SizeOf(P->Order.Right) + 1;
    }

    Node* Root_ = nullptr;
};

}  // namespace kv::window
