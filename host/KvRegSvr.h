// The registry: stored objects in one SQLite file.
//
// A row is an object: its class word, its identity, its content as JSON and a revision that counts its saves.
// Two objects of a class never bear one name; names and class words differ by case. Nothing is locked between
// two calls, so that any number of programs may work on one file. What changes the file is one transaction
// and lies on the disk when the call comes back; a program that dies at any moment leaves the old state or
// the new one. At rest the registry is its one file.
//
// Trouble with the file itself is a StoreError. What is wrong with a request raises as everywhere in kv.
// After either the file and the objects in memory are as they were before the call.
#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "frame/CoreUtil.h"
#include "frame/Failure.h"
#include "frame/RegData.h"

namespace kv::host {

/// The registry file can't be used: it is missing and can't be made, damaged, of another kind, newer than the
/// program, locked, read-only, its disk is full or fails. One sentence for the operator.
class StoreError final : public std::runtime_error {
  public:
    explicit StoreError(std::wstring_view Sentence);
    /// The sentence; what() is the same in UTF-8.
    std::wstring Text() const;
};

/// Runs `Body` where only kv failures are known: a StoreError becomes number 20000 with its sentence.
template <class Body>
decltype(auto) RaiseStoreErrors(Body&& Run) {
    try {
        return std::invoke(std::forward<Body>(Run));
    } catch (const StoreError& Trouble) {
        Raise(Trouble.Text());
    }
}

/// An object as a list shows it.
struct RegistryEntry {
    std::wstring Clsid;
    std::wstring Name;
    std::int32_t Id = 0;
    std::wstring Desc;
    std::int32_t Version = 0;
    std::wstring UserList;
    std::int64_t Revision = 0;

    bool operator==(const RegistryEntry&) const = default;
};

class RegistryStore;

/// One object of the registry, loaded: its content in memory and the revision that it was loaded at. Lives on
/// when the registry object that opened it is gone.
class RegistryObject final : public RegData {
  public:
    /// Name and users are those of the content in memory.
    std::wstring Name() const override { return Content_.Name; }
    std::wstring Clsid() const override { return Clsid_; }
    std::wstring UserList() const override { return Content_.UserList; }

    /// Whether a Write goes to the file (True) or to memory only (False, as it is at first).
    void SetSaving(bool Saving) override { Saving_ = Saving; }

    /// The content in memory. Nothing is read from the file.
    const RegObject& Read() override { return Content_; }

    /// Replaces the content; the id stays the object's own. With saving on it is stored first: identity and
    /// content go to the file, and the revision grows by one. A refusal leaves file and memory as they are.
    ///
    /// Raises 20000 when another program has saved or deleted the object since it was loaded, when a text is
    /// no Unicode or the nesting too deep (ObjectJson.h), and with its sentence for trouble with the file;
    /// 20015 when another object of the class has the name; 20017 for an empty name. With saving off nothing
    /// raises.
    void Write(RegObject Content) override;

    /// Takes values, children and the further fields of `From` into memory; Name, Id, Desc, Version and
    /// UserList stay. Nothing is stored.
    void PutContent(const RegObject& From);

    /// What lies in the file at this moment.
    struct State {
        RegObject Content;
        std::int64_t Revision = 0;
    };
    /// The object as it is stored now, also under a name that another program gave it; nothing when it is not
    /// there any more. Raises 20000 for damaged content. Throws StoreError.
    std::optional<State> Stored() const;
    /// After a save of another program: its state takes the place of the one in memory.
    void TakeOver(State On);
    /// After a save of another program: what is in memory stays, and the next Write goes over that state.
    /// Where another program has deleted the object, the state is that of one made anew for it.
    void Outrank(const State& On);

    /// The revision in memory: 1 for a new object, one more after each save.
    std::int64_t Revision() const noexcept { return Revision_; }

  private:
    friend class KvRegSvr;
    RegistryObject(std::shared_ptr<RegistryStore> Store, std::wstring_view Clsid, RegObject Content,
                   std::int64_t Revision);

    std::shared_ptr<RegistryStore> Store_;
    std::wstring Clsid_;
    RegObject Content_;
    std::wstring StoredName_;
    std::int64_t Revision_;
    bool Saving_ = false;
};

/// The registry server. Not to be used by two threads at once; each may have one of its own on the same file.
class KvRegSvr final : public RegistryServer {
  public:
    /// How long a call waits for another program that is working on the file.
    static constexpr std::chrono::milliseconds kPatience{5000};

    /// Opens the registry in `File`. A file that does not exist or is empty becomes a new registry; its
    /// folder must exist. A file that may not be written is opened for reading. Throws StoreError.
    explicit KvRegSvr(const std::filesystem::path& File, std::chrono::milliseconds Patience = kPatience);
    ~KvRegSvr() override;

    /// All objects, or those of one class, ordered by class word, then name (by character codes). Contents
    /// are not read, so that a damaged one does not matter. Throws StoreError.
    std::vector<RegistryEntry> List(std::optional<std::wstring_view> Clsid = std::nullopt);

    /// Makes an object without values or children, version 1, revision 1, and answers its id, which no other
    /// object of this file ever had. The class word is taken as it is. Raises 20015 when the class has an
    /// object of that name, 20017 for an empty name, 20000 for a text that is no Unicode. Throws StoreError.
    std::int32_t Create(std::wstring_view Clsid, std::wstring_view Name, std::wstring_view Desc = {});

    /// Raises 20016 when there is no such object. Throws StoreError.
    void Delete(std::wstring_view Clsid, std::wstring_view Name);

    /// The object as it is stored at this moment. Raises 20016 when there is none, 20000 with class and name
    /// when its content is damaged (the other objects stay usable). Throws StoreError.
    RegObject ReadStored(std::wstring_view Clsid, std::wstring_view Name);

    /// The same, to be edited. Fails as ReadStored.
    std::shared_ptr<RegistryObject> Open(std::wstring_view Clsid, std::wstring_view Name);

  private:
    std::shared_ptr<RegistryStore> Store_;
};

}  // namespace kv::host
