#include "frame/RegData.h"

#include <algorithm>
#include <utility>

namespace kv {

const RegValue* RegObject::Value(std::wstring_view ValueName) const noexcept {
    for (const RegNamedValue& Entry : Values)
        if (Entry.Name == ValueName) return &Entry.Value;
    return nullptr;
}

void RegObject::SetValue(std::wstring_view ValueName, RegValue NewValue) {
    const auto At = std::find_if(Values.begin(), Values.end(),
                                 [&](const RegNamedValue& Entry) { return Entry.Name == ValueName; });
    if (At != Values.end())
        At->Value = std::move(NewValue);
    else
        Values.push_back({std::wstring(ValueName), std::move(NewValue)});
}

const RegObject* RegObject::Child(std::wstring_view ChildName) const noexcept {
    for (const RegObject& Entry : Children)
        if (Entry.Name == ChildName) return &Entry;
    return nullptr;
}

void MemoryRegData::Write(RegObject Content) {
    Content_ = std::move(Content);
    Written_ = true;
}

}  // namespace kv
