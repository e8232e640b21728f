// Who names whom: the references between stored objects, found in the texts of their sections.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "frame/ClipItem.h"
#include "host/Addressing.h"
#include "host/KvRegSvr.h"

namespace kv::host {

/// What a keyword names.
enum class Named {
    Object,  // an object
    Index,   // a table whose style is INDEX
    Field,   // a field of the table that TABLE= of the same text names
    Script,  // a script of the object that the text belongs to
};

/// How a value tells it.
enum class Naming {
    One,     // the whole value is the name
    List,    // names parted by commas, each between quote marks of its own
    Joined,  // names parted by commas, all between one pair of quote marks
    Master,  // a word, "=", the name
};

/// How the reader of the keyword takes a name. An object may bear one in small letters.
enum class Letters {
    Folded,  // turns it to upper case
    Kept,
};

/// Another line of the same text, with the word that it must hold.
struct Condition {
    std::wstring_view Keyword;  // none: no condition
    std::wstring_view Word;
};

/// A row of the table of references: where a keyword stands and what it names.
struct ReferenceRow {
    std::wstring_view Clsid;
    std::wstring_view Section;
    std::wstring_view Keyword;
    std::wstring_view Wanted;  // class of the object that is named, or that holds the part that is named
    Letters Case = Letters::Folded;
    Named What = Named::Object;
    Naming How = Naming::One;
    Condition Beside = {};
};

/// The table, by class, section and keyword. What stands in no row names nothing.
std::span<const ReferenceRow> ReferenceTable() noexcept;

/// The text of a section of an object, and where it stands in the tree.
struct SectionAsText {
    std::wstring Section;
    Place At;
    std::wstring Text;
};

/// A name that stands in a section.
struct Reference {
    const ReferenceRow* Row = nullptr;
    Place At;               // of the section
    std::int32_t Line = 0;  // of its text
    std::wstring Name;      // as written, without quote marks; never empty
    std::wstring Holder;    // of a part: the name of the object that should hold it
};

/// A reference and the object that makes it.
struct Use {
    std::wstring Clsid;
    std::wstring Name;
    Reference By;
};

/// A stored object, by class word and name.
struct ObjectName {
    std::wstring Clsid;
    std::wstring Name;
};

/// A reference that leads nowhere.
struct ReferenceFault {
    Use Of;
    std::wstring Message;  // in the words of the system
};

/// What the texts of one object name, in their order. A line that can't be read names nothing.
std::vector<Reference> ReferencesIn(std::wstring_view Clsid, std::wstring_view Name,
                                    std::span<const SectionAsText> Texts);

/// `CLASS/NAME SECTION[pos]`, without the section where it is empty.
std::wstring StandsAt(std::wstring_view Clsid, std::wstring_view Name, std::wstring_view Section,
                      std::span<const std::int32_t> At);
/// `CLASS/NAME SECTION[pos]: KEYWORD= name`.
std::wstring UseText(const Use& Of);

/// The references of one registry. The names are those of the moment at which it is made; what the objects
/// hold is read when it is asked for, from the file and on copies, and nothing is shown to the operator. An
/// object that can't be read names nothing; its own name counts. All may throw StoreError.
///
/// A name whose reader keeps the letters is compared by characters, one that its reader folds is folded on
/// both sides; of several objects that it may then mean it means the one of the same letters, if there is
/// one. The names of fields and scripts, which are stored in upper case, are always folded.
class References {
  public:
    /// `Registry` must outlive it.
    explicit References(KvRegSvr& Registry);
    References(const References&) = delete;
    References& operator=(const References&) = delete;

    /// Whether there is an object of that class and name, by characters.
    bool Knows(std::wstring_view Clsid, std::wstring_view Name) const;
    /// What a stored object names.
    std::vector<Reference> Of(const std::wstring& Clsid, const std::wstring& Name);
    /// Who names an object, by class word and name. An object that names itself is told too. Those that may
    /// name it but can't be read, or not wholly, are appended to `Unread` where it is given.
    std::vector<Use> UsersOf(std::wstring_view Clsid, std::wstring_view Name,
                             std::vector<ObjectName>* Unread = nullptr);
    /// What is wrong with a reference, in one sentence; nothing when it holds, or when what should hold it is
    /// not there or can't be read.
    std::optional<std::wstring> FaultOf(const Reference& Of);
    /// The faults of all objects, by class word and name.
    std::vector<ReferenceFault> Faults();

  private:
    /// What others may name of an object beside its name.
    struct Parts {
        bool Readable = false;
        bool IsIndex = false;
        std::unordered_set<std::wstring> Names;  // section word, "/", name
    };

    /// The texts of an object, as many as can be read.
    struct Reading {
        bool Whole = false;
        std::vector<SectionAsText> Texts;
    };

    template <class Wants>
    Reading Read(const std::wstring& Clsid, const std::wstring& Name, Wants&& Section);
    /// Clears `Whole` when something can't be read.
    std::vector<Reference> Of(const std::wstring& Clsid, const std::wstring& Name, bool& Whole);
    const Parts& PartsOf(const ObjectName& Of);
    std::vector<const ObjectName*> Meant(std::wstring_view Clsid, std::wstring_view Name, Letters Case) const;
    std::optional<std::wstring> NameFault(const Reference& Of) const;

    KvRegSvr& Registry_;
    ClipItem Clipboard_;               // that a window asks for; nothing goes into it
    std::vector<ObjectName> Objects_;  // in order; stays as made
    std::unordered_map<std::wstring, std::vector<const ObjectName*>> ByName_;  // by name in upper case
    std::unordered_map<std::wstring, Parts> Parts_;                            // by class, "/", name
};

}  // namespace kv::host
