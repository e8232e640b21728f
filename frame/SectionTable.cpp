#include "frame/SectionTable.h"

namespace kv {

std::wstring JoinSetWords(WordTable Words, std::int32_t Bits) {
    std::wstring Joined;
    for (const Word& Row : Words)
        if ((Bits & Row.Value) != 0) Joined.append(Row.Text).push_back(L'|');
    CoreUtil::TrimEnd(Joined, L"|");
    return Joined;
}

std::wstring JoinWords(WordTable Words, std::int32_t Bits) {
    std::wstring Joined = JoinSetWords(Words, Bits);
    if (Joined.empty()) Joined = kNone;
    return Joined;
}

void Parm::Fold() {
    Held_.assign(Value);  // assign is safe for a view into Held_ itself
    StrUtil::UpperInPlace(Held_);
    Value = Held_;
}

int Parm::Bool() {
    Held_.assign(Value);
    const int Result = BoolWord(Held_);
    Value = Held_;
    return Result;
}

void Parm::AddFlags(WordTable Words, std::int32_t& Bits) {
    Fold();
    if (Value.empty() || Value == kNone) {
        Bits = 0;
        return;
    }
    AddWords(Words, Bits);
}

void Parm::AddWords(WordTable Words, std::int32_t& Bits) {
    while (!Value.empty()) {
        if (const Word* Known = FindWord(Words, NextFlag()))
            Bits |= Known->Value;
        else
            BadIfStrict();
    }
}

}  // namespace kv
