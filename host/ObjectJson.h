// Stored objects as JSON: the content of a registry row and the answer that shows a stored object.
//
//     {"Name":"PROVA","Desc":"","Version":1,"Id":7,"UserList":"",
//      "Values":{"Path":"DATI","ReadOnly":true,"Timeout":30},
//      "Children":[{"Name":"Fields", ... }]}
//
// The members Text, Number2, Number3, String3, String4 and String5 stand between UserList and Values where
// they are not empty or 0; the others stand always. Values and children keep their order.
#pragma once

#include <cstddef>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

#include "frame/RegData.h"

namespace kv::host {

/// Levels of an object and its children, its children's children and so on; an object without children has
/// one. More are neither written nor read.
inline constexpr std::size_t kDeepestObject = 64;

/// The object as JSON. Raises 20000 with "Testo non valido nell'oggetto <Name>: ..." for a text that is no
/// Unicode (a lone surrogate), and with "Dati errati nell'oggetto <Name>: ..." for more than kDeepestObject
/// levels or two values of one name.
nlohmann::ordered_json ToJson(const RegObject& Object);

/// The same as text in UTF-8, without blanks or line ends.
std::string ToJsonText(const RegObject& Object);

/// The object that a text in UTF-8 tells. A member that is absent leaves its field empty or 0; one that is
/// not known is passed over. Takes memory and time by the length of the text, and stack by neither its length
/// nor its nesting.
///
/// Raises 20000 with "Dati errati nell'oggetto <Called>: ..." for a text that is not JSON, a known member of
/// another type, a value that is no number, boolean or string, a number that is not whole or beyond 32 bits,
/// a member or value that stands twice, more than kDeepestObject levels.
RegObject FromJsonText(std::string_view Text, std::wstring_view Called);

}  // namespace kv::host
