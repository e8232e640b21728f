// What two lists have in common, in an order that both share.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>
#include <vector>

namespace kv::desktop {

/// Places of equal elements, in both lists and in the answer from front to back. Long where that is cheap:
/// what stands once in both lists goes first, what stands often fills the gaps as long as few elements differ
/// there. Costs the length of the lists times its logarithm at most.
std::vector<std::pair<std::size_t, std::size_t>> InCommon(std::span<const std::uint32_t> Before,
                                                          std::span<const std::uint32_t> After);

}  // namespace kv::desktop
