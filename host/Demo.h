// The demonstration installation: a small library with objects of every class.
#pragma once

#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "host/Addressing.h"

namespace kv::host {

/// A step in the making of a demonstration object: a text for a section, or an element more for a list.
struct DemoSection {
    std::wstring_view Section;
    Place At;
    std::optional<std::wstring> Text;  // lines end with LF; none: an element is added behind the others
};

struct DemoObject {
    std::wstring_view Clsid;
    std::wstring_view Name;
    std::wstring_view Desc;
    std::vector<DemoSection> Sections;
};

/// The objects, in the order in which they are made.
std::vector<DemoObject> DemoObjects();

inline constexpr std::string_view kDemoStore = "kvdesign.db";
inline constexpr std::string_view kIniFileName = "VELMIRA.INI";

/// The folder holds an installation already; the text is a sentence in UTF-8.
class DemoRefused final : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// Makes the installation in `Folder`, which is made if need be: the store, VELMIRA.INI, the default sort
/// table. Each object goes through the server: made in the registry, its sections parsed in strict mode,
/// saved. The installation is there wholly or not at all: it is built beside its place and put there when it
/// is whole. Throws DemoRefused, Refused, StoreError or std::filesystem::filesystem_error; nothing is left
/// then.
void MakeDemo(const std::filesystem::path& Folder);

}  // namespace kv::host
