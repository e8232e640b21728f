// Section texts read and rendered beside what others do with the same bytes. A peer keeps what it reads as
// text in a map of its own; here each keyword is looked up, checked, folded, refused where it must be, and
// stored in the record it belongs to. Each of them begins with nothing and ends with nothing.
//
//   30        one section of a browse, 31 keywords
//   1000      1,000 such sections: one file for a peer, 1,000 records for us
//   100000    the words of a stop word list, one section of 100,000 keys
#include <benchmark/benchmark.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <stdexcept>
#include <streambuf>
#include <string>
#include <string_view>
#include <vector>

#include "bench/Desk.h"
#include "editor/ParmEditor.h"
#include "host/Text.h"
#include "records/StopWordRecord.h"

#ifdef KV_PEER_INIH
#include <INIReader.h>
#endif
#ifdef KV_PEER_SIMPLEINI
#define SI_NO_CONVERSION  // UTF-8 as it stands
#include <SimpleIni.h>
#endif
#ifdef KV_PEER_INIPARSER
#include <iniparser/iniparser.h>

#include <cstdio>
#include <cstdlib>
#endif
#ifdef KV_PEER_GLIB
#include <glib.h>
#endif
#ifdef KV_PEER_BOOST
#include <boost/property_tree/ini_parser.hpp>
#include <boost/property_tree/ptree.hpp>
#include <sstream>
#endif

namespace {

using namespace kv;
using bench::Desk;
using bench::Must;

constexpr std::int32_t kManySections = 1000;
constexpr std::int32_t kManyKeys = 100000;

/// The bytes that the peers read, and what must be found in them.
class Sample {
  public:
    Sample(std::string Text, std::string InSection, std::string InKey)
        : Bytes(std::move(Text)), Section(std::move(InSection)), Key(std::move(InKey)) {}
    Sample(const Sample&) = delete;
    Sample& operator=(const Sample&) = delete;
    ~Sample() {
        if (File_ >= 0) ::close(File_);
    }

    /// A file in memory with the same bytes, for who reads nothing else.
    std::string Path() const {
        if (File_ < 0) {
            File_ = memfd_create("sample", 0);
            if (::write(File_, Bytes.data(), Bytes.size()) != static_cast<ssize_t>(Bytes.size()))
                throw std::runtime_error("no memory for the sample");
        }
        return "/proc/self/fd/" + std::to_string(File_);
    }

    const std::string Bytes;
    const std::string Section;
    const std::string Key;

  private:
    mutable int File_ = -1;
};

BrowseRecord FilledBrowse() {
    BrowseRecord Made;
    Made.Name = L"SOGGETTI";
    Made.Table = L"SOGGETTI";
    Made.Profile = L"SCHEDA BREVE";
    Made.Help = L"AIUTO SOGGETTI";
    Made.HelpWww = L"AIUTO SOGGETTI WWW";
    Made.Stem = L"PAROLE";
    Made.Tips = L"SUGGERIMENTI";
    Made.TipsWidth = 30;
    Made.Rows = 24;
    Made.UseCooked = true;
    Made.ShowOccs = true;
    Made.MirrorOf = L"SOGGETTI DEL POLO";
    return Made;
}

// A browse's section without the lines that tell the object.
const std::wstring& BrowseText() {
    static const std::wstring Text = [] {
        std::wstring Shown;
        SaveFlags Flags;
        Must(SetSaveFlags(Flags, true));
        Must(ParmEditor::DispBrowse(FilledBrowse(), Shown, Flags));
        Shown.erase(Shown.find(L'\''));
        return Shown;
    }();
    return Text;
}

const std::wstring& WordsText() {
    static const std::wstring Text = [] {
        std::wstring Made;
        for (std::int32_t I = 1; I <= kManyKeys; ++I) {
            const std::wstring Number = std::to_wstring(I);
            Made.append(L"\"word ")
                .append(Number)
                .append(L"\"=\"replacement ")
                .append(Number)
                .append(L"\"\r\n");
        }
        return Made;
    }();
    return Text;
}

const Sample& OneSection() {
    static const Sample One("[S1]\r\n" + host::ToUtf8Lossy(BrowseText()), "S1", "MIRROROF");
    return One;
}
const Sample& ManySections() {
    static const Sample Many(
        [] {
            const std::string Section = host::ToUtf8Lossy(BrowseText());
            std::string Text;
            for (std::int32_t I = 1; I <= kManySections; ++I)
                Text.append("[S").append(std::to_string(I)).append("]\r\n").append(Section);
            return Text;
        }(),
        "S" + std::to_string(kManySections), "MIRROROF");
    return Many;
}
const Sample& ManyKeys() {
    static const Sample Many("[S1]\r\n" + host::ToUtf8Lossy(WordsText()), "S1",
                             "\"word " + std::to_string(kManyKeys) + "\"");
    return Many;
}

// The floors.

// Finding the line ends.
void ScanBytes(benchmark::State& State, const std::string& Bytes) {
    for (auto _ : State) {
        std::int64_t Lines = 0;
        for (std::size_t At = Bytes.find('\n'); At != std::string::npos; At = Bytes.find('\n', At + 1))
            ++Lines;
        benchmark::DoNotOptimize(Lines);
    }
}
// Making wide characters of them.
void WidenBytes(benchmark::State& State, const std::string& Bytes) {
    for (auto _ : State) {
        std::wstring Wide = host::FromUtf8Lossy(Bytes);
        benchmark::DoNotOptimize(Wide.data());
    }
}
void CopyBytes(benchmark::State& State, const std::string& Bytes) {
    for (auto _ : State) {
        std::string Copy = Bytes;
        benchmark::DoNotOptimize(Copy.data());
    }
}
// Our texts are wide: four times the bytes.
void CopyWide(benchmark::State& State, const std::string& Bytes) {
    const std::wstring Wide = host::FromUtf8Lossy(Bytes);
    for (auto _ : State) {
        std::wstring Copy = Wide;
        benchmark::DoNotOptimize(Copy.data());
    }
}

// We.

SaveFlags Strictly() {
    SaveFlags Flags;
    Must(SetSaveFlags(Flags, true));
    return Flags;
}

std::vector<std::wstring> Texts(std::int32_t Sections) {
    return std::vector<std::wstring>(static_cast<std::size_t>(Sections), BrowseText());
}

void ReadSections(benchmark::State& State, std::int32_t Sections) {
    const SaveFlags Flags = Strictly();
    std::vector<std::wstring> From = Texts(Sections);
    for (auto _ : State) {
        std::vector<BrowseRecord> Into(From.size());
        for (std::size_t I = 0; I < From.size(); ++I) Must(ParmEditor::SaveBrowse(Into[I], From[I], Flags));
        benchmark::DoNotOptimize(Into.data());
    }
}
void ReadSectionBytes(benchmark::State& State, std::int32_t Sections) {
    const SaveFlags Flags = Strictly();
    const std::vector<std::string> From(static_cast<std::size_t>(Sections), host::ToUtf8Lossy(BrowseText()));
    for (auto _ : State) {
        std::vector<BrowseRecord> Into(From.size());
        for (std::size_t I = 0; I < From.size(); ++I) {
            std::wstring Text = host::FromUtf8Lossy(From[I]);
            Must(ParmEditor::SaveBrowse(Into[I], Text, Flags));
        }
        benchmark::DoNotOptimize(Into.data());
    }
}
void RenderSections(benchmark::State& State, std::int32_t Sections) {
    const SaveFlags Flags = Strictly();
    std::vector<BrowseRecord> From;
    for (std::int32_t I = 0; I < Sections; ++I) From.push_back(FilledBrowse());
    for (auto _ : State) {
        std::wstring Text;
        for (const BrowseRecord& Record : From) Must(ParmEditor::DispBrowse(Record, Text, Flags));
        benchmark::DoNotOptimize(Text.data());
    }
}

// The stop words go through the whole server, as from a window.
void ReadWords(benchmark::State& State) {
    Desk On(L"STOPWORD", StopWordRecord().SaveObject());
    Must(On.Core.LoadData());
    const std::wstring Leaf = On.Leaf(L"MESSAGE");
    std::wstring Text = WordsText();
    for (auto _ : State) {
        std::wstring Made;
        Must(On.Core.SaveData({.CurrItem = Leaf}, Text, Made));
    }
}
void ReadWordBytes(benchmark::State& State) {
    Desk On(L"STOPWORD", StopWordRecord().SaveObject());
    Must(On.Core.LoadData());
    const std::wstring Leaf = On.Leaf(L"MESSAGE");
    const std::string Bytes = host::ToUtf8Lossy(WordsText());
    for (auto _ : State) {
        std::wstring Text = host::FromUtf8Lossy(Bytes);
        std::wstring Made;
        Must(On.Core.SaveData({.CurrItem = Leaf}, Text, Made));
    }
}
void RenderWords(benchmark::State& State) {
    Desk On(L"STOPWORD", StopWordRecord().SaveObject());
    Must(On.Core.LoadData());
    const std::wstring Leaf = On.Leaf(L"MESSAGE");
    std::wstring Text = WordsText();
    std::wstring Made;
    Must(On.Core.SaveData({.CurrItem = Leaf}, Text, Made));
    for (auto _ : State) {
        std::wstring Shown;
        Must(On.Core.DispData({.CurrItem = Leaf}, Shown));
        benchmark::DoNotOptimize(Shown.data());
    }
}

// The peers. Each is made of a sample, gives a value that it holds, and writes all it holds as text.

#ifdef KV_PEER_INIH
class Inih {
  public:
    static constexpr std::string_view kName = "inih";
    static constexpr bool kWrites = false;
    explicit Inih(const Sample& From) : Map_(From.Bytes.data(), From.Bytes.size()) {}
    std::string Value(const Sample& At) const { return Map_.Get(At.Section, At.Key, ""); }

  private:
    INIReader Map_;
};
#endif

#ifdef KV_PEER_SIMPLEINI
class SimpleIni {
  public:
    static constexpr std::string_view kName = "SimpleIni";
    static constexpr bool kWrites = true;
    explicit SimpleIni(const Sample& From) {
        Map_.SetUnicode();
        if (Map_.LoadData(From.Bytes.data(), From.Bytes.size()) < 0) throw std::runtime_error("refused");
    }
    std::string Value(const Sample& At) const {
        return Map_.GetValue(At.Section.c_str(), At.Key.c_str(), "");
    }
    std::size_t Write() const {
        std::string Text;
        Map_.Save(Text);
        return Text.size();
    }

  private:
    CSimpleIniA Map_;
};
#endif

#ifdef KV_PEER_INIPARSER
class IniParser {
  public:
    static constexpr std::string_view kName = "iniparser";
    static constexpr bool kWrites = true;
    explicit IniParser(const Sample& From) : Map_(iniparser_load(From.Path().c_str())) {
        if (!Map_) throw std::runtime_error("refused");
    }
    std::string Value(const Sample& At) const {
        return iniparser_getstring(Map_.get(), (At.Section + ":" + At.Key).c_str(), "");
    }
    std::size_t Write() const {
        char* Text = nullptr;
        std::size_t Size = 0;
        FILE* const File = open_memstream(&Text, &Size);
        iniparser_dump_ini(Map_.get(), File);
        std::fclose(File);
        std::free(Text);
        return Size;
    }

  private:
    struct Free {
        void operator()(dictionary* Map) const noexcept { iniparser_freedict(Map); }
    };
    std::unique_ptr<dictionary, Free> Map_;
};
#endif

#ifdef KV_PEER_GLIB
class KeyFile {
  public:
    static constexpr std::string_view kName = "GKeyFile";
    static constexpr bool kWrites = true;
    explicit KeyFile(const Sample& From) : Map_(g_key_file_new()) {
        if (!g_key_file_load_from_data(Map_.get(), From.Bytes.data(), From.Bytes.size(), G_KEY_FILE_NONE,
                                       nullptr))
            throw std::runtime_error("refused");
    }
    std::string Value(const Sample& At) const {
        char* const Found = g_key_file_get_value(Map_.get(), At.Section.c_str(), At.Key.c_str(), nullptr);
        std::string Text = Found ? Found : "";
        g_free(Found);
        return Text;
    }
    std::size_t Write() const {
        gsize Size = 0;
        g_free(g_key_file_to_data(Map_.get(), &Size, nullptr));
        return Size;
    }

  private:
    struct Free {
        void operator()(GKeyFile* Map) const noexcept { g_key_file_free(Map); }
    };
    std::unique_ptr<GKeyFile, Free> Map_;
};
#endif

#ifdef KV_PEER_BOOST
class PropertyTree {
  public:
    static constexpr std::string_view kName = "Boost.PropertyTree";
    static constexpr bool kWrites = true;
    explicit PropertyTree(const Sample& From) {
        Bytes Buffer(From.Bytes);
        std::istream Stream(&Buffer);
        boost::property_tree::read_ini(Stream, Map_);
    }
    std::string Value(const Sample& At) const {
        return Map_.find(At.Section)->second.find(At.Key)->second.data();
    }
    std::size_t Write() const {
        std::ostringstream Text;
        boost::property_tree::write_ini(Text, Map_);
        return static_cast<std::size_t>(Text.tellp());
    }

  private:
    // A stream over the bytes where they stand.
    struct Bytes final : std::streambuf {
        explicit Bytes(const std::string& Text) {
            char* const Begin = const_cast<char*>(Text.data());
            setg(Begin, Begin, Begin + Text.size());
        }
    };
    boost::property_tree::ptree Map_;
};
#endif

template <class Peer>
void ReadPeer(benchmark::State& State, const Sample& From) {
    if (Peer(From).Value(From).empty()) return State.SkipWithError("does not read this text");
    for (auto _ : State) {
        const Peer Map(From);
        benchmark::DoNotOptimize(&Map);
    }
}
template <class Peer>
void RenderPeer(benchmark::State& State, const Sample& From) {
    const Peer Map(From);
    if (Map.Write() == 0) return State.SkipWithError("writes nothing");
    for (auto _ : State) {
        std::size_t Size = Map.Write();
        benchmark::DoNotOptimize(Size);
    }
}

// Registering.

using Work = std::function<void(benchmark::State&)>;

struct Size {
    std::string_view Name;
    const Sample& (*Text)();
};
constexpr Size kSizes[] = {{"30", OneSection}, {"1000", ManySections}, {"100000", ManyKeys}};

benchmark::internal::Benchmark* Named(std::string_view Done, std::string_view Sized, std::string_view Who,
                                      Work Run) {
    const std::string Name = std::string(Done).append("/").append(Sized).append("/").append(Who);
    return benchmark::RegisterBenchmark(Name.c_str(), std::move(Run))->Unit(benchmark::kMicrosecond);
}

template <class Peer>
void Register() {
    for (const Size& Of : kSizes) {
        // Looking through all keys for each takes a second a run: once is enough.
        const bool Slow = Peer::kName == "iniparser" && Of.Name != "30";
        auto* const Read = Named("Read", Of.Name, Peer::kName, [Text = Of.Text](benchmark::State& State) {
            ReadPeer<Peer>(State, Text());
        });
        if (Slow) Read->Iterations(1)->Repetitions(1);
        if constexpr (Peer::kWrites) {
            auto* const Render =
                Named("Render", Of.Name, Peer::kName,
                      [Text = Of.Text](benchmark::State& State) { RenderPeer<Peer>(State, Text()); });
            if (Slow) Render->Iterations(1)->Repetitions(1);
        }
    }
}

[[maybe_unused]] const bool kRegistered = [] {
    Named("Read", "30", "ours", [](benchmark::State& State) { ReadSections(State, 1); });
    Named("Read", "1000", "ours", [](benchmark::State& State) { ReadSections(State, kManySections); });
    Named("Read", "100000", "ours", ReadWords);
    Named("Read", "30", "ours, from bytes", [](benchmark::State& State) { ReadSectionBytes(State, 1); });
    Named("Read", "1000", "ours, from bytes",
          [](benchmark::State& State) { ReadSectionBytes(State, kManySections); });
    Named("Read", "100000", "ours, from bytes", ReadWordBytes);
    Named("Render", "30", "ours", [](benchmark::State& State) { RenderSections(State, 1); });
    Named("Render", "1000", "ours", [](benchmark::State& State) { RenderSections(State, kManySections); });
    Named("Render", "100000", "ours", RenderWords);
    for (const Size& Of : kSizes) {
        const auto Floor = [&](std::string_view Done, std::string_view Who, auto Run) {
            Named(Done, Of.Name, Who,
                  [Run, Text = Of.Text](benchmark::State& State) { Run(State, Text().Bytes); });
        };
        Floor("Read", "floor: line ends", ScanBytes);
        Floor("Read", "floor: widened", WidenBytes);
        Floor("Render", "floor: bytes copied", CopyBytes);
        Floor("Render", "floor: wide copied", CopyWide);
    }
#ifdef KV_PEER_INIH
    Register<Inih>();
#endif
#ifdef KV_PEER_SIMPLEINI
    Register<SimpleIni>();
#endif
#ifdef KV_PEER_INIPARSER
    Register<IniParser>();
#endif
#ifdef KV_PEER_GLIB
    Register<KeyFile>();
#endif
#ifdef KV_PEER_BOOST
    Register<PropertyTree>();
#endif
    return true;
}();

}  // namespace
