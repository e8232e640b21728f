// The few procedures that touch files directly: the default sort table, the clipboard file of the design
// tool, and a general file opener.
#pragma once

#include <cstdint>
#include <fstream>
#include <string>
#include <string_view>

#include "frame/RegData.h"

namespace kv {

/// An open file. It closes itself on every way out.
class FileNumber {
  public:
    FileNumber() = default;
    FileNumber(FileNumber&&) = default;
    FileNumber& operator=(FileNumber&&) = default;

    bool IsOpen() const { return Stream_.is_open(); }
    /// The length of one record as OpenFile settled it.
    std::int32_t RecordLength() const noexcept { return RecordLength_; }
    /// Length of the file in bytes.
    std::int64_t Length() const noexcept { return Length_; }
    /// 1-based place of the next byte read or written.
    std::int64_t Place() const noexcept { return Place_; }
    /// Raises the fault "read past end" for a place outside the file.
    void Seek(std::int64_t NewPlace);
    /// Reads exactly `Count` bytes. Raises the fault "read past end", before taking memory, when the file has
    /// fewer left or Count is negative.
    std::string Read(std::int64_t Count);
    /// A 32-bit signed little-endian integer.
    std::int32_t ReadLong();
    /// Appends bytes at the place. Raises the fault "file access" when they can't be written.
    void Write(std::string_view Bytes);

  private:
    friend std::int32_t OpenFile(const std::wstring&, std::int32_t, std::int32_t, std::int32_t, FileNumber&,
                                 std::int32_t);
    friend void CloseFile(FileNumber&);

    std::fstream Stream_;
    std::int64_t Length_ = 0;
    std::int64_t Place_ = 1;
    std::int32_t RecordLength_ = 0;
    bool Appends_ = false;
};

/// Mode bits of OpenFile.
namespace mode {
inline constexpr std::int32_t kRead = 1;
inline constexpr std::int32_t kWrite = 2;
inline constexpr std::int32_t kReadWrite = 4;
inline constexpr std::int32_t kAppend = 8;     // after opening, stand behind the end; else at the beginning
inline constexpr std::int32_t kCreate = 16;    // the file may be made
inline constexpr std::int32_t kTruncate = 32;  // emptied first
inline constexpr std::int32_t kMustNotExist = 64;
inline constexpr std::int32_t kRecordLength = 128;  // use the record length as given, else 512
inline constexpr std::int32_t kBinary = 256;  // else a text file: read with bit 1, otherwise append mode
}  // namespace mode

/// Opens a file. `Share` is 0, 16, 32, 48 or 64, how far others are locked out where the system has such
/// locks. Answers 0, or the error number: 5 for a mode that makes no sense or any other Share, 53 for a file
/// that is missing, 58 for one that exists and must not, 75 where the system refuses. `Reserved` is not read.
/// A mode that is refused leaves the file alone, also with bit 32.
std::int32_t OpenFile(const std::wstring& Path, std::int32_t Mode, std::int32_t Share, std::int32_t Reserved,
                      FileNumber& Number, std::int32_t RecordLength = 32);
/// Closes the file if it is open.
void CloseFile(FileNumber& Number);

inline constexpr std::wstring_view kSortTableFile = L"KVDSRT.TAB";
inline constexpr std::wstring_view kClipboardFile = L"KVDSCLP.TMP";

/// The default weight of a character code (Windows-1252); 0 means that the character is ignored.
std::uint8_t DefaultSortWeight(std::uint8_t Code) noexcept;

/// Makes KVDSRT.TAB in the program's folder, 256 bytes, byte c the weight of code c. True on failure (source
/// "vdbInclude.DefaultSortCreate").
[[nodiscard]] bool DefaultSortCreate();
/// Reads KVDSRT.TAB whole, one character a byte, whatever its length; makes it first where it is missing.
/// True on failure (source "vdbInclude.DefaultSortLoad"); Table is then empty.
[[nodiscard]] bool DefaultSortLoad(std::wstring& Table);

/// Whether a fault is shown to the operator at once or waits in the error store.
enum class Telling { Show, Keep };

/// Reads entry `Index` (1-based) of the clipboard file into `Target` and `Name`; 0 reads nothing and
/// succeeds. An empty `Path` becomes KVDSCLP.TMP in the temporary folder.
///
/// The file: int32 number of entries, then that many entries; an entry: int32 1-based file position of the
/// next entry, int32 length of its name, the name, a stored object (ReadKvData). All integers are 32-bit
/// signed, little-endian; strings are one byte a character, Windows-1252.
///
/// True on failure (source "vdbInclude.ClipboardLoad"): a file that can't be opened ("Impossibile aprire il
/// file temporaneo <path>", with the number of OpenFile), 20000 "Elemento non presente nella clipboard." for
/// an Index beyond the number of entries, a position or length that runs past the end. A fault inside an
/// object is shown to the operator here; Target may then be filled in part.
/// With Telling::Keep that one too waits in the error store.
[[nodiscard]] bool ClipboardLoad(RegObject& Target, std::wstring& Name, std::wstring& Path,
                                 std::int32_t Index, Telling Faults = Telling::Show);

/// Reads one stored object with all its children at the file's place: Name, Text, Id, Version, Desc, Number2,
/// Number3, String3, String4, UserList, String5, then the int32 number of children and the children likewise;
/// a string is an int32 length and that many bytes. True on failure (source "vdbInclude.ReadKvData"): a
/// length or count that is negative or runs past the end, nesting deeper than 64.
[[nodiscard]] bool ReadKvData(RegObject& Target, FileNumber& Number);

/// Replaces the clipboard file by one entry, the object under its own name; its values become children that
/// bear the property's name and hold the value in Text. A character without a Windows-1252 byte becomes "?".
/// An empty `Path` becomes KVDSCLP.TMP in the temporary folder. True on failure (source
/// "vdbInclude.ClipboardStore").
[[nodiscard]] bool ClipboardStore(const RegObject& Source, std::wstring& Path);

}  // namespace kv
