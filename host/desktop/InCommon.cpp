#include "host/desktop/InCommon.h"

#include <algorithm>
#include <unordered_map>

namespace kv::desktop {
namespace {

using Pair = std::pair<std::size_t, std::size_t>;

// How often a gap is cut at what stands once in it, and how many elements may differ in one that can't be
// cut. Beyond that nothing of it is taken as common, which keeps the cost from growing with the square.
constexpr int kMostCuts = 24;
constexpr std::ptrdiff_t kMostEdits = 256;

// A stretch of both lists.
struct Gap {
    std::size_t A0, A1, B0, B1;
    int Cuts;
};

class Matcher {
  public:
    Matcher(std::span<const std::uint32_t> A, std::span<const std::uint32_t> B) : A_(A), B_(B) {}

    std::vector<Pair> Run() {
        Gaps_.push_back({0, A_.size(), 0, B_.size(), 0});
        while (!Gaps_.empty()) {
            Gap G = Gaps_.back();
            Gaps_.pop_back();
            TakeEnds(G);
            if (G.A0 == G.A1 || G.B0 == G.B1) continue;
            if (G.Cuts == kMostCuts || !Cut(G)) FewestEdits(G);
        }
        std::sort(Found_.begin(), Found_.end());
        return std::move(Found_);
    }

  private:
    void TakeEnds(Gap& G);
    bool Cut(const Gap& G);
    void FewestEdits(const Gap& G);

    std::span<const std::uint32_t> A_;
    std::span<const std::uint32_t> B_;
    std::vector<Gap> Gaps_;
    std::vector<Pair> Found_;
};

void Matcher::TakeEnds(Gap& G) {
    for (; G.A0 < G.A1 && G.B0 < G.B1 && A_[G.A0] == B_[G.B0]; ++G.A0, ++G.B0)
        Found_.emplace_back(G.A0, G.B0);
    for (; G.A0 < G.A1 && G.B0 < G.B1 && A_[G.A1 - 1] == B_[G.B1 - 1]; --G.A1, --G.B1)
        Found_.emplace_back(G.A1 - 1, G.B1 - 1);
}

// Cuts the gap at the longest run of elements that stand once in both lists and in the same order. False when
// there is none.
bool Matcher::Cut(const Gap& G) {
    struct Seen {
        std::size_t InA = 0, InB = 0, AtB = 0;
    };
    std::unordered_map<std::uint32_t, Seen> Count;
    for (std::size_t I = G.A0; I < G.A1; ++I) ++Count[A_[I]].InA;
    for (std::size_t I = G.B0; I < G.B1; ++I) {
        Seen& At = Count[B_[I]];
        ++At.InB;
        At.AtB = I;
    }
    // The longest increasing run of places in B: Tails[n] is the pair with which a run of n + 1 ends
    // earliest.
    std::vector<Pair> Once;
    std::vector<std::size_t> Tails, Previous;
    for (std::size_t I = G.A0; I < G.A1; ++I) {
        const Seen& At = Count[A_[I]];
        if (At.InA != 1 || At.InB != 1) continue;
        const auto Spot =
            std::lower_bound(Tails.begin(), Tails.end(), At.AtB,
                             [&](std::size_t T, std::size_t Place) { return Once[T].second < Place; });
        Previous.push_back(Spot == Tails.begin() ? Once.size() : *(Spot - 1));
        if (Spot == Tails.end())
            Tails.push_back(Once.size());
        else
            *Spot = Once.size();
        Once.emplace_back(I, At.AtB);
    }
    if (Tails.empty()) return false;
    std::size_t A1 = G.A1, B1 = G.B1;
    for (std::size_t T = Tails.back();; T = Previous[T]) {
        const auto [A, B] = Once[T];
        Found_.push_back(Once[T]);
        Gaps_.push_back({A + 1, A1, B + 1, B1, G.Cuts + 1});
        A1 = A;
        B1 = B;
        if (Previous[T] == T) break;
    }
    Gaps_.push_back({G.A0, A1, G.B0, B1, G.Cuts + 1});
    return true;
}

// The way through the gap with the fewest elements left out of either list: how far each diagonal reaches
// with one element left out after the other, and then back along what was reached.
void Matcher::FewestEdits(const Gap& G) {
    const auto N = static_cast<std::ptrdiff_t>(G.A1 - G.A0);
    const auto M = static_cast<std::ptrdiff_t>(G.B1 - G.B0);
    const std::ptrdiff_t Most = std::min(N + M, kMostEdits);
    const auto Equal = [&](std::ptrdiff_t X, std::ptrdiff_t Y) {
        return A_[G.A0 + static_cast<std::size_t>(X)] == B_[G.B0 + static_cast<std::size_t>(Y)];
    };
    // Reached[d][k]: the place in A that diagonal 2k - d (A's place less B's) reaches with d left out.
    std::vector<std::vector<std::ptrdiff_t>> Reached;
    const auto ComesFromB = [&](std::ptrdiff_t D, std::ptrdiff_t K) {  // an element of B was left out last
        const std::vector<std::ptrdiff_t>& Last = Reached[static_cast<std::size_t>(D - 1)];
        return K == 0 ||
               (K != D && Last[static_cast<std::size_t>(K - 1)] < Last[static_cast<std::size_t>(K)]);
    };
    const auto Start = [&](std::ptrdiff_t D, std::ptrdiff_t K) {
        if (D == 0) return std::ptrdiff_t{0};
        const std::vector<std::ptrdiff_t>& Last = Reached[static_cast<std::size_t>(D - 1)];
        return ComesFromB(D, K) ? Last[static_cast<std::size_t>(K)]
                                : Last[static_cast<std::size_t>(K - 1)] + 1;
    };
    std::ptrdiff_t EndK = -1;
    for (std::ptrdiff_t D = 0; D <= Most && EndK < 0; ++D) {
        std::vector<std::ptrdiff_t> Now(static_cast<std::size_t>(D + 1));
        for (std::ptrdiff_t K = 0; K <= D && EndK < 0; ++K) {
            std::ptrdiff_t X = Start(D, K);
            const std::ptrdiff_t Diagonal = 2 * K - D;
            while (X < N && X - Diagonal < M && Equal(X, X - Diagonal)) ++X;
            Now[static_cast<std::size_t>(K)] = X;
            if (X >= N && X - Diagonal >= M) EndK = K;
        }
        Reached.push_back(std::move(Now));
    }
    if (EndK < 0) return;
    std::ptrdiff_t K = EndK;
    for (auto D = static_cast<std::ptrdiff_t>(Reached.size()) - 1; D >= 0; --D) {
        const std::ptrdiff_t From = Start(D, K);
        for (std::ptrdiff_t X = Reached[static_cast<std::size_t>(D)][static_cast<std::size_t>(K)]; X > From;
             --X)
            Found_.emplace_back(G.A0 + static_cast<std::size_t>(X - 1),
                                G.B0 + static_cast<std::size_t>(X - 1 - (2 * K - D)));
        if (D > 0 && !ComesFromB(D, K)) --K;
    }
}

}  // namespace

std::vector<Pair> InCommon(std::span<const std::uint32_t> Before, std::span<const std::uint32_t> After) {
    return Matcher(Before, After).Run();
}

}  // namespace kv::desktop
