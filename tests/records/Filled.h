// Records with something in every property, made from their own statement of properties.
#pragma once

#include <cstdint>
#include <limits>
#include <random>
#include <string>
#include <type_traits>

#include "frame/StrUtil.h"
#include "records/Stored.h"

namespace kv::test {

class Filler {
  public:
    explicit Filler(unsigned Seed) : Random_(Seed) {}

    std::uint32_t Below(std::uint32_t N) { return static_cast<std::uint32_t>(Random_() % N); }
    std::int32_t Number() {
        switch (Below(6)) {
            case 0:
                return 0;
            case 1:
                return -1;
            case 2:
                return std::numeric_limits<std::int32_t>::max();
            case 3:
                return std::numeric_limits<std::int32_t>::min();
            default:
                return static_cast<std::int32_t>(Random_());
        }
    }
    /// Any text of the code page, quotes, line ends and characters of code 0 included.
    std::wstring Text() {
        std::wstring Out;
        for (std::uint32_t N = Below(12); N > 0; --N)
            Out.push_back(StrUtil::FromWindows1252(static_cast<std::uint8_t>(Below(256))));
        return Out;
    }

    template <class R>
    R Record() {
        R Made;
        Fill(Made);
        return Made;
    }

    template <class R>
    void Fill(R& Into) {
        Into.Id = Number();
        Into.Name = Text();
        Into.Desc = Text();
        Into.Version = Number();
        R::Properties([&](const auto&... P) { (FillMember(Into.*P.Place), ...); });
    }

  private:
    void FillMember(std::wstring& Member) { Member = Text(); }
    void FillMember(bool& Member) { Member = Below(2) == 1; }
    template <std::integral T>
    requires(!std::same_as<T, bool>) void FillMember(T& Member) {
        switch (Below(4)) {
            case 0:
                Member = std::numeric_limits<T>::max();
                break;
            case 1:
                Member = std::numeric_limits<T>::min();
                break;
            default:
                Member = static_cast<T>(Random_());
                break;
        }
    }
    void FillMember(ParmList<std::wstring>& Member) {
        Member.Clear();
        for (std::uint32_t N = Below(4); N > 0; --N) Member.Add(Text());
    }
    template <class Element>
    void FillMember(ParmList<Element>& Member) {
        Member.Clear();
        for (std::uint32_t N = Below(4); N > 0; --N) Member.Add(Record<Element>());
    }

    // The name under which a nested record is stored is its property's.
    template <detail::NestedRecord Nested>
    void FillMember(Nested& Member) {
        Fill(Member);
        Member.Name.clear();
    }

    std::mt19937 Random_;
};

}  // namespace kv::test
