#include "frame/vdbInclude.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <limits>
#include <system_error>
#include <utility>

#include "frame/CoreUtil.h"
#include "frame/Failure.h"
#include "frame/StrUtil.h"

namespace kv {
namespace {

constexpr int kDeepest = 64;
// An object with all its strings empty and no child.
constexpr std::int64_t kSmallestObject = 12 * 4;

void AppendLong(std::string& Bytes, std::int64_t Value) {
    if (Value > std::numeric_limits<std::int32_t>::max()) RaiseFault(fault::kOverflow);
    const auto Bits = static_cast<std::uint32_t>(Value);
    for (unsigned Shift = 0; Shift < 32; Shift += 8)
        Bytes.push_back(static_cast<char>((Bits >> Shift) & 0xFFU));
}

void AppendString(std::string& Bytes, std::wstring_view Text) {
    AppendLong(Bytes, static_cast<std::int64_t>(Text.size()));
    Bytes.append(StrUtil::ToBytes(Text));
}

std::wstring ValueText(const RegValue& Value) {
    if (const auto* Number = std::get_if<std::int32_t>(&Value)) return std::to_wstring(*Number);
    if (const auto* Flag = std::get_if<bool>(&Value)) return *Flag ? L"True" : L"False";
    return std::get<std::wstring>(Value);
}

// The fields of an object up to its children, and how many children follow.
void AppendObjectHead(std::string& Bytes, const RegObject& Object, std::size_t Children) {
    AppendString(Bytes, Object.Name);
    AppendString(Bytes, Object.Text);
    AppendLong(Bytes, Object.Id);
    AppendLong(Bytes, Object.Version);
    AppendString(Bytes, Object.Desc);
    AppendLong(Bytes, Object.Number2);
    AppendLong(Bytes, Object.Number3);
    AppendString(Bytes, Object.String3);
    AppendString(Bytes, Object.String4);
    AppendString(Bytes, Object.UserList);
    AppendString(Bytes, Object.String5);
    AppendLong(Bytes, static_cast<std::int64_t>(Children));
}

void AppendObject(std::string& Bytes, const RegObject& Object, int Depth) {
    // In the file a value stands one level below its object.
    if (Depth + (Object.Values.empty() ? 0 : 1) > kDeepest)
        Raise(L"Oggetto con troppi livelli per la clipboard.");
    AppendObjectHead(Bytes, Object, Object.Values.size() + Object.Children.size());
    RegObject Plain;
    for (const RegNamedValue& Entry : Object.Values) {
        Plain.Name = Entry.Name;
        Plain.Text = ValueText(Entry.Value);
        AppendObjectHead(Bytes, Plain, 0);
    }
    for (const RegObject& Child : Object.Children) AppendObject(Bytes, Child, Depth + 1);
}

std::wstring ReadString(FileNumber& Number) { return StrUtil::FromBytes(Number.Read(Number.ReadLong())); }

void ReadObject(RegObject& Target, FileNumber& Number, int Depth) {
    if (Depth > kDeepest) Raise(L"Dati errati nella clipboard: troppi livelli.");
    Target.Name = ReadString(Number);
    Target.Text = ReadString(Number);
    Target.Id = Number.ReadLong();
    Target.Version = Number.ReadLong();
    Target.Desc = ReadString(Number);
    Target.Number2 = Number.ReadLong();
    Target.Number3 = Number.ReadLong();
    Target.String3 = ReadString(Number);
    Target.String4 = ReadString(Number);
    Target.UserList = ReadString(Number);
    Target.String5 = ReadString(Number);
    const std::int32_t Children = Number.ReadLong();
    Target.Values.clear();
    Target.Children.clear();
    if (Children < 0 || Children > (Number.Length() - Number.Place() + 1) / kSmallestObject)
        RaiseFault(fault::kReadPastEnd);
    for (std::int32_t I = 0; I < Children; ++I) {
        Target.Children.emplace_back();
        ReadObject(Target.Children.back(), Number, Depth + 1);
    }
}

void DefaultClipboardPath(std::wstring& Path) {
    if (Path.empty()) Path = CoreUtil::Instance().TempFolder().append(kClipboardFile);
}

}  // namespace

void FileNumber::Seek(std::int64_t NewPlace) {
    if (NewPlace < 1 || NewPlace > Length_ + 1) RaiseFault(fault::kReadPastEnd);
    Stream_.seekg(NewPlace - 1);
    if (!Stream_) RaiseFault(fault::kFileAccess);
    Place_ = NewPlace;
}

std::string FileNumber::Read(std::int64_t Count) {
    if (Count < 0 || Count > Length_ - Place_ + 1) RaiseFault(fault::kReadPastEnd);
    // A system of 32 bits takes no more than that into its memory.
    if (!std::in_range<std::streamsize>(Count)) RaiseFault(fault::kOutOfMemory);
    std::string Bytes(static_cast<std::size_t>(Count), '\0');
    Stream_.read(Bytes.data(), static_cast<std::streamsize>(Count));
    if (Stream_.gcount() != Count) {
        Stream_.clear();
        RaiseFault(fault::kReadPastEnd);
    }
    Place_ += Count;
    return Bytes;
}

std::int32_t FileNumber::ReadLong() {
    std::uint32_t Bits = 0;
    unsigned Shift = 0;
    for (const char C : Read(4)) {
        Bits |= static_cast<std::uint32_t>(static_cast<std::uint8_t>(C)) << Shift;
        Shift += 8;
    }
    return static_cast<std::int32_t>(Bits);
}

void FileNumber::Write(std::string_view Bytes) {
    Stream_.write(Bytes.data(), static_cast<std::streamsize>(Bytes.size()));
    Stream_.flush();
    if (!Stream_) {
        Stream_.clear();
        RaiseFault(fault::kFileAccess);
    }
    if (Appends_) Place_ = Length_ + 1;  // whatever the place, the bytes go behind the end
    Place_ += static_cast<std::int64_t>(Bytes.size());
    Length_ = std::max(Length_, Place_ - 1);
}

std::int32_t OpenFile(const std::wstring& Path, std::int32_t Mode, std::int32_t Share, std::int32_t,
                      FileNumber& Number, std::int32_t RecordLength) {
    namespace fs = std::filesystem;
    const auto Has = [Mode](std::int32_t Bit) { return (Mode & Bit) != 0; };
    CloseFile(Number);
    if (Share != 0 && Share != 16 && Share != 32 && Share != 48 && Share != 64) return fault::kInvalidCall;

    fs::path File;
    if (!CoreUtil::ToPath(Path, File)) return fault::kFileAccess;
    std::error_code Refused;
    const bool Exists = fs::exists(File, Refused);
    bool Truncate = false;
    if (Has(mode::kCreate)) {
        if (Has(mode::kRead)) return fault::kInvalidCall;
        if (Has(mode::kMustNotExist)) {
            if (Has(mode::kTruncate)) return fault::kInvalidCall;
            if (Exists) return fault::kFileExists;
        }
        if (Has(mode::kTruncate)) {
            if (Has(mode::kAppend)) return fault::kInvalidCall;
            Truncate = true;
        }
    } else {
        if (Has(mode::kTruncate) || Has(mode::kMustNotExist)) return fault::kInvalidCall;
        if (!Exists) return fault::kFileNotFound;
    }
    if (!Has(mode::kRead) && !Has(mode::kWrite) && !Has(mode::kReadWrite)) return fault::kInvalidCall;
    if (Exists && fs::is_directory(File, Refused)) return fault::kFileAccess;

    std::fstream Stream;
    if (Truncate) {
        Stream.open(File, std::ios::out | std::ios::trunc | std::ios::binary);
        if (!Stream) return fault::kFileAccess;
        Stream.close();
    }
    if (Has(mode::kBinary)) {
        const auto ReadWrite = std::ios::in | std::ios::out | std::ios::binary;
        if (Has(mode::kWrite) || Has(mode::kReadWrite)) {
            Stream.open(File, ReadWrite);
            if (!Stream && !Exists) {
                Stream.clear();
                Stream.open(File, ReadWrite | std::ios::trunc);
            }
        } else {
            Stream.open(File, std::ios::in | std::ios::binary);
        }
    } else if (Has(mode::kRead)) {
        Stream.open(File, std::ios::in | std::ios::binary);
    } else {
        Stream.open(File, std::ios::out | std::ios::app | std::ios::binary);
    }
    if (!Stream) return fault::kFileAccess;
    Stream.seekg(0, std::ios::end);
    Number.Length_ = static_cast<std::int64_t>(Stream.tellg());
    Number.Place_ = Number.Length_ + 1;
    if (!Has(mode::kAppend)) {
        Stream.seekg(0);
        Number.Place_ = 1;
    }
    Number.Appends_ = !Has(mode::kBinary) && !Has(mode::kRead);
    Number.Stream_ = std::move(Stream);
    Number.RecordLength_ = Has(mode::kRecordLength) ? RecordLength : 512;
    return 0;
}

void CloseFile(FileNumber& Number) {
    if (Number.IsOpen()) Number.Stream_.close();
    Number.Stream_.clear();
    Number.Length_ = 0;
    Number.Place_ = 1;
}

std::uint8_t DefaultSortWeight(std::uint8_t Code) noexcept {
    struct Row {
        std::uint8_t First;
        std::uint8_t Last;
        std::uint8_t Weight;
    };
    constexpr std::array<Row, 41> kRows{{
        {186, 186, 48}, {185, 185, 49}, {188, 188, 49}, {189, 189, 49}, {178, 178, 50}, {179, 179, 51},
        {190, 190, 51}, {64, 64, 65},   {170, 170, 65}, {192, 198, 65}, {224, 230, 65}, {162, 162, 67},
        {169, 169, 67}, {199, 199, 67}, {231, 231, 67}, {38, 38, 69},   {200, 203, 69}, {232, 235, 69},
        {204, 207, 73}, {236, 239, 73}, {163, 163, 76}, {181, 181, 77}, {209, 209, 78}, {241, 241, 78},
        {156, 156, 79}, {210, 214, 79}, {242, 246, 79}, {174, 174, 82}, {138, 138, 83}, {154, 154, 83},
        {223, 223, 83}, {217, 220, 85}, {249, 252, 85}, {159, 159, 89}, {165, 165, 89}, {221, 221, 89},
        {253, 253, 89}, {255, 255, 89}, {142, 142, 90}, {158, 158, 90}, {0, 0, 0},
    }};
    if (Code == 32 || (Code >= 48 && Code <= 57) || (Code >= 65 && Code <= 90)) return Code;
    if (Code >= 97 && Code <= 122) return static_cast<std::uint8_t>(Code - 32);
    for (const Row& R : kRows)
        if (Code >= R.First && Code <= R.Last) return R.Weight;
    return 0;
}

bool DefaultSortCreate() {
    return Trap(L"vdbInclude.DefaultSortCreate", [] {
        const std::wstring Path = CoreUtil::Instance().ProgramFolder().append(kSortTableFile);
        FileNumber File;
        const std::int32_t Refused =
            OpenFile(Path, mode::kBinary | mode::kWrite | mode::kCreate | mode::kTruncate, 0, 0, File);
        if (Refused != 0) Raise(Refused, L"Impossibile creare il file " + Path);
        std::string Bytes;
        for (int Code = 0; Code < 256; ++Code)
            Bytes.push_back(static_cast<char>(DefaultSortWeight(static_cast<std::uint8_t>(Code))));
        File.Write(Bytes);
        return false;
    });
}

bool DefaultSortLoad(std::wstring& Table) {
    Table.clear();
    return Trap(L"vdbInclude.DefaultSortLoad", [&] {
        CoreUtil& Core = CoreUtil::Instance();
        const std::wstring Path = Core.ProgramFolder().append(kSortTableFile);
        if (!Core.FileExists(Path) && DefaultSortCreate()) return true;
        FileNumber File;
        if (const std::int32_t Refused = OpenFile(Path, mode::kBinary | mode::kRead, 0, 0, File);
            Refused != 0)
            Raise(Refused, L"Impossibile aprire il file " + Path);
        for (const char C : File.Read(File.Length())) Table.push_back(static_cast<std::uint8_t>(C));
        return false;
    });
}

bool ReadKvData(RegObject& Target, FileNumber& Number) {
    return Trap(L"vdbInclude.ReadKvData", [&] {
        ReadObject(Target, Number, 1);
        return false;
    });
}

bool ClipboardLoad(RegObject& Target, std::wstring& Name, std::wstring& Path, std::int32_t Index,
                   Telling Faults) {
    return Trap(L"vdbInclude.ClipboardLoad", [&] {
        DefaultClipboardPath(Path);
        FileNumber File;
        if (const std::int32_t Refused = OpenFile(Path, mode::kBinary | mode::kRead, 32, 0, File);
            Refused != 0)
            Raise(Refused, L"Impossibile aprire il file temporaneo " + Path);
        constexpr std::int64_t kSmallestEntry = 2 * 4 + kSmallestObject;
        const std::int32_t Count = File.ReadLong();
        if (Index > Count) Raise(L"Elemento non presente nella clipboard.");
        if (Index > 0 && Count > (File.Length() - 4) / kSmallestEntry) RaiseFault(fault::kReadPastEnd);
        std::int64_t Position = File.Place();
        for (std::int32_t Entry = 0; Entry < Index; ++Entry) {
            File.Seek(Position);
            Position = File.ReadLong();
            Name = ReadString(File);
            if (ReadKvData(Target, File)) {
                if (Faults == Telling::Show) CoreUtil::Instance().ShowLastError();
                return true;
            }
        }
        return false;
    });
}

bool ClipboardStore(const RegObject& Source, std::wstring& Path) {
    return Trap(L"vdbInclude.ClipboardStore", [&] {
        DefaultClipboardPath(Path);
        std::string Entry;
        AppendString(Entry, Source.Name);
        AppendObject(Entry, Source, 1);
        std::string Bytes;
        AppendLong(Bytes, 1);                                                    // one entry
        AppendLong(Bytes, static_cast<std::int64_t>(4 + 4 + Entry.size()) + 1);  // the place behind it
        Bytes.append(Entry);
        // Written beside it first: whoever reads finds the old file or the new one, whole.
        const std::wstring Beside = Path + L".new";
        FileNumber File;
        const std::int32_t Refused =
            OpenFile(Beside, mode::kBinary | mode::kWrite | mode::kCreate | mode::kTruncate, 0, 0, File);
        if (Refused != 0) Raise(Refused, L"Impossibile creare il file " + Path);
        File.Write(Bytes);
        CloseFile(File);
        std::filesystem::path From;
        std::filesystem::path To;
        std::error_code Failed;
        if (CoreUtil::ToPath(Beside, From) && CoreUtil::ToPath(Path, To))
            std::filesystem::rename(From, To, Failed);
        if (Failed) {
            std::error_code Ignored;
            std::filesystem::remove(From, Ignored);
            Raise(fault::kFileAccess, L"Impossibile creare il file " + Path);
        }
        return false;
    });
}

}  // namespace kv
