#include "host/KvRegSvr.h"

#include <sqlite3.h>

#include <array>
#include <new>
#include <system_error>

#include "frame/MsgUtil.h"
#include "host/ObjectJson.h"
#include "host/Text.h"

namespace kv::host {
namespace {

constexpr std::int32_t kNameTaken = 20015;
constexpr std::int32_t kUnknownObject = 20016;
constexpr std::int32_t kBadParameters = 20017;

// What marks a file as a registry, and the form of its table.
constexpr std::int64_t kApplicationId = 0x4B765267;
constexpr std::int64_t kFormat = 1;
constexpr const char* kMakeTable =
    "CREATE TABLE objects("
    "Id INTEGER PRIMARY KEY AUTOINCREMENT, Clsid TEXT NOT NULL, Name TEXT NOT NULL, "
    "Description TEXT NOT NULL, Version INTEGER NOT NULL, UserList TEXT NOT NULL, "
    "Revision INTEGER NOT NULL, Content TEXT NOT NULL, UNIQUE(Clsid, Name)) STRICT";

[[noreturn]] void RaiseMessage(std::int32_t Number, std::wstring_view Argument = {}) {
    std::wstring Text;
    MsgUtil::MessageText(Number, Argument, Text);
    Raise(Number, Text);
}

std::string Utf8Of(const std::filesystem::path& File) {
    const std::u8string Bytes = File.u8string();
    return {Bytes.begin(), Bytes.end()};
}

std::wstring Called(std::wstring_view Clsid, std::wstring_view Name) {
    return std::wstring(Clsid).append(L"/").append(Name);
}

// Text on its way into the registry.
std::string Bytes(std::wstring_view Text) {
    std::optional<std::string> Made = ToUtf8(Text);
    if (!Made) Raise(L"Testo non valido: " + std::wstring(Text));
    return *std::move(Made);
}

/// The sentence for an SQLite result code; %% stands for the file.
struct Trouble {
    int Code;
    std::wstring_view Sentence;
};

// A code that has a row of its own stands before the code that it is a case of.
constexpr std::array kTroubles{
    Trouble{SQLITE_READONLY_DBMOVED, L"Il file di registro %% è stato spostato o eliminato."},
    Trouble{SQLITE_READONLY_DIRECTORY, L"La cartella del file di registro %% è di sola lettura."},
    Trouble{SQLITE_READONLY, L"Il file di registro %% è di sola lettura."},
    Trouble{SQLITE_PERM, L"Il file di registro %% è di sola lettura."},
    Trouble{SQLITE_BUSY, L"Il file di registro %% è bloccato da un altro programma."},
    Trouble{SQLITE_LOCKED, L"Il file di registro %% è bloccato da un altro programma."},
    Trouble{SQLITE_CORRUPT, L"Il file di registro %% è danneggiato."},
    Trouble{SQLITE_ERROR, L"Il file di registro %% è danneggiato."},  // not the table that is expected
    Trouble{SQLITE_CONSTRAINT, L"Il file di registro %% è danneggiato."},
    Trouble{SQLITE_NOTADB, L"Il file %% non è un registro, o è danneggiato."},
    Trouble{SQLITE_CANTOPEN, L"Impossibile aprire il file di registro %%."},
    Trouble{SQLITE_FULL, L"Il disco del file di registro %% è pieno."},
    Trouble{SQLITE_IOERR, L"Errore del disco nel file di registro %%."},
    Trouble{SQLITE_TOOBIG, L"L'oggetto è troppo grande per il file di registro %%."},
};
constexpr std::wstring_view kOtherTrouble = L"Impossibile usare il file di registro %%.";
constexpr std::wstring_view kNoFolder = L"Impossibile aprire il file di registro %%: la cartella non esiste.";
constexpr std::wstring_view kNoFile = L"Impossibile aprire il file di registro %%: non è un file.";
constexpr std::wstring_view kNotOurs = L"Il file %% non è un registro.";
constexpr std::wstring_view kNewer = L"Il file di registro %% è di una versione più recente del programma.";
constexpr std::wstring_view kNoMoreIds = L"Il file di registro %% non ammette altri oggetti.";

// One object, as RegistryStore::Row takes it apart.
constexpr std::string_view kLoad =
    "SELECT Id, Description, Version, UserList, Revision, Content, Name FROM objects WHERE ";

}  // namespace

StoreError::StoreError(std::wstring_view Sentence) : std::runtime_error(ToUtf8Lossy(Sentence)) {}

std::wstring StoreError::Text() const { return FromUtf8Lossy(what()); }

/// The connection to one registry file.
class RegistryStore {
  public:
    /// An SQL statement while it runs. It holds its lock on the file until it is gone.
    class Statement {
      public:
        Statement(RegistryStore& Store, const char* Sql) : Store_(Store) {
            Store_.Check(sqlite3_prepare_v2(Store_.Base(), Sql, -1, &Handle_, nullptr));
        }
        Statement(const Statement&) = delete;
        Statement& operator=(const Statement&) = delete;
        ~Statement() { sqlite3_finalize(Handle_); }

        /// Gives the next parameter its value.
        Statement& Bind(std::string_view Text) {
            Store_.Check(sqlite3_bind_text64(Handle_, ++Bound_, Text.empty() ? "" : Text.data(), Text.size(),
                                             SQLITE_TRANSIENT, SQLITE_UTF8));
            return *this;
        }
        Statement& Bind(std::int64_t Number) {
            Store_.Check(sqlite3_bind_int64(Handle_, ++Bound_, Number));
            return *this;
        }

        /// Goes on to the next row; False when there is none.
        bool Step() {
            const int Code = sqlite3_step(Handle_);
            if (Code != SQLITE_ROW && Code != SQLITE_DONE) Store_.Fail(Code);
            return Code == SQLITE_ROW;
        }

        std::int64_t Number(int Column) { return sqlite3_column_int64(Handle_, Column); }
        std::int32_t Number32(int Column) { return sqlite3_column_int(Handle_, Column); }
        /// Holds until the next Step.
        std::string_view Text(int Column) {
            const unsigned char* const Begin = sqlite3_column_text(Handle_, Column);
            if (!Begin) return {};
            return {reinterpret_cast<const char*>(Begin),
                    static_cast<std::size_t>(sqlite3_column_bytes(Handle_, Column))};
        }
        std::wstring Wide(int Column) { return FromUtf8Lossy(Text(Column)); }

      private:
        RegistryStore& Store_;
        sqlite3_stmt* Handle_ = nullptr;
        int Bound_ = 0;
    };

    /// What changes the file, wholly or not at all: without a Commit nothing has happened.
    class Transaction {
      public:
        explicit Transaction(RegistryStore& Store) : Store_(Store) { Store_.Execute("BEGIN IMMEDIATE"); }
        Transaction(const Transaction&) = delete;
        Transaction& operator=(const Transaction&) = delete;
        ~Transaction() {
            if (sqlite3_get_autocommit(Store_.Base()) == 0)
                sqlite3_exec(Store_.Base(), "ROLLBACK", nullptr, nullptr, nullptr);
        }
        void Commit() { Store_.Execute("COMMIT"); }

      private:
        RegistryStore& Store_;
    };

    struct Loaded {
        RegObject Content;
        std::int64_t Revision;
    };

    RegistryStore(const std::filesystem::path& File, std::chrono::milliseconds Patience);
    RegistryStore(const RegistryStore&) = delete;
    RegistryStore& operator=(const RegistryStore&) = delete;

    Loaded Load(std::wstring_view Clsid, std::wstring_view Name);
    /// By its id, whatever its name is now; nothing when it is gone.
    std::optional<Loaded> Load(std::wstring_view Clsid, std::int32_t Id);
    void Save(std::wstring_view Clsid, std::wstring_view StoredName, std::int64_t Revision,
              const RegObject& Content);

    [[noreturn]] void Fail(int Code) const;
    [[noreturn]] void Fail(std::wstring_view Sentence) const;
    void Check(int Code) const {
        if (Code != SQLITE_OK) Fail(Code);
    }

  private:
    static Loaded Row(Statement& Query, std::wstring_view Clsid);
    void Connect(std::chrono::milliseconds Patience);
    void Recognise();
    void MakeNew();
    void Execute(const char* Sql) { Statement(*this, Sql).Step(); }
    std::int64_t Pragma(const char* Sql) {
        Statement Query(*this, Sql);
        return Query.Step() ? Query.Number(0) : 0;
    }

    std::int64_t FileSize() const {
        sqlite3_file* Handle = nullptr;
        sqlite3_int64 Size = 0;
        Check(sqlite3_file_control(Base(), "main", SQLITE_FCNTL_FILE_POINTER, &Handle));
        Check(Handle->pMethods->xFileSize(Handle, &Size));
        return Size;
    }

    sqlite3* Base() const noexcept { return Base_.get(); }

    struct Close {
        void operator()(sqlite3* Base) const noexcept { sqlite3_close(Base); }
    };
    std::filesystem::path File_;
    std::unique_ptr<sqlite3, Close> Base_;
};

// Opening.

// An absolute path has none of the names that SQLite takes in a way of its own.
RegistryStore::RegistryStore(const std::filesystem::path& File, std::chrono::milliseconds Patience)
    : File_(File) {
    std::error_code Unable;
    const std::filesystem::path Whole = std::filesystem::absolute(File, Unable);
    if (Unable) Fail(SQLITE_CANTOPEN);
    File_ = Whole;
    const std::filesystem::file_status Status = std::filesystem::status(File_, Unable);
    if (std::filesystem::exists(Status)) {
        if (!std::filesystem::is_regular_file(Status)) Fail(kNoFile);
        // SQLite takes a file of one byte for an empty one.
        if (std::filesystem::file_size(File_, Unable) == 1) Fail(SQLITE_NOTADB);
    } else if (!std::filesystem::is_directory(File_.parent_path(), Unable)) {
        Fail(kNoFolder);
    }
    Connect(Patience);
    Recognise();
}

void RegistryStore::Connect(std::chrono::milliseconds Patience) {
    constexpr int kFlags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE;
    sqlite3* Opened = nullptr;
    const int Code = sqlite3_open_v2(Utf8Of(File_).c_str(), &Opened, kFlags, nullptr);
    Base_.reset(Opened);
    Check(Code);
    sqlite3_extended_result_codes(Base(), 1);
    sqlite3_busy_timeout(Base(), static_cast<int>(Patience.count()));
    // A file from elsewhere runs no code of its own.
    sqlite3_db_config(Base(), SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    sqlite3_db_config(Base(), SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    sqlite3_db_config(Base(), SQLITE_DBCONFIG_ENABLE_TRIGGER, 0, nullptr);
    sqlite3_db_config(Base(), SQLITE_DBCONFIG_ENABLE_VIEW, 0, nullptr);
    Execute("PRAGMA cell_size_check = ON");
    // The journal goes at each commit, and its folder is synchronised after it.
    Execute("PRAGMA synchronous = EXTRA");
}

void RegistryStore::Recognise() {
    if (Pragma("PRAGMA page_count") == 0) MakeNew();
    Execute("BEGIN");  // one lock on all that is read, so that it belongs together
    const std::int64_t Application = Pragma("PRAGMA application_id");
    const std::int64_t Format = Pragma("PRAGMA user_version");
    if (Application != kApplicationId) Fail(kNotOurs);
    if (Format > kFormat) Fail(kNewer);
    if (Format != kFormat) Fail(SQLITE_CORRUPT);
    Statement(*this,
              "SELECT Id, Clsid, Name, Description, Version, UserList, Revision, Content FROM objects");
    Execute("COMMIT");
    // Not before it is known that the file is ours.
    Execute("PRAGMA journal_mode = DELETE");
    Execute("BEGIN");
    // SQLite takes a last page that is cut off for zeros.
    const std::int64_t Whole = Pragma("PRAGMA page_count") * Pragma("PRAGMA page_size");
    if (FileSize() < Whole) Fail(SQLITE_CORRUPT);
    Execute("COMMIT");
}

// Another program may have done the same before the transaction began.
void RegistryStore::MakeNew() {
    Transaction Making(*this);
    if (FileSize() == 0) {
        Execute(kMakeTable);
        Execute(("PRAGMA application_id = " + std::to_string(kApplicationId)).c_str());
        Execute(("PRAGMA user_version = " + std::to_string(kFormat)).c_str());
    }
    Making.Commit();
}

void RegistryStore::Fail(int Code) const {
    constexpr int kPlain = 0xFF;
    if ((Code & kPlain) == SQLITE_NOMEM) throw std::bad_alloc();
    for (const Trouble& Row : kTroubles)
        if (Row.Code == Code || Row.Code == (Code & kPlain)) Fail(Row.Sentence);
    Fail(kOtherTrouble);
}

void RegistryStore::Fail(std::wstring_view Sentence) const {
    constexpr std::wstring_view kFileMark = L"%%";
    std::wstring Text(Sentence);
    Text.replace(Text.find(kFileMark), kFileMark.size(), FromUtf8Lossy(Utf8Of(File_)));
    throw StoreError(Text);
}

// Objects.

RegistryStore::Loaded RegistryStore::Load(std::wstring_view Clsid, std::wstring_view Name) {
    const std::optional<std::string> Class = ToUtf8(Clsid);
    const std::optional<std::string> Wanted = ToUtf8(Name);
    if (!Class || !Wanted) RaiseMessage(kUnknownObject, Name);
    Statement Query(*this, std::string(kLoad).append("Clsid = ? AND Name = ?").c_str());
    if (!Query.Bind(*Class).Bind(*Wanted).Step()) RaiseMessage(kUnknownObject, Name);
    return Row(Query, Clsid);
}

std::optional<RegistryStore::Loaded> RegistryStore::Load(std::wstring_view Clsid, std::int32_t Id) {
    Statement Query(*this, std::string(kLoad).append("Id = ?").c_str());
    if (!Query.Bind(Id).Step()) return std::nullopt;
    return Row(Query, Clsid);
}

RegistryStore::Loaded RegistryStore::Row(Statement& Query, std::wstring_view Clsid) {
    std::wstring Name = Query.Wide(6);
    Loaded Found{FromJsonText(Query.Text(5), Called(Clsid, Name)), Query.Number(4)};
    Found.Content.Name = std::move(Name);
    Found.Content.Id = Query.Number32(0);
    Found.Content.Desc = Query.Wide(1);
    Found.Content.Version = Query.Number32(2);
    Found.Content.UserList = Query.Wide(3);
    return Found;
}

// Saves over the revision told; the content's id says which object it is.
void RegistryStore::Save(std::wstring_view Clsid, std::wstring_view StoredName, std::int64_t Revision,
                         const RegObject& Content) {
    if (Content.Name.empty()) RaiseMessage(kBadParameters);
    const std::string Class = Bytes(Clsid);
    const std::string Text = ToJsonText(Content);
    const std::string Name = Bytes(Content.Name);

    Transaction Saving(*this);
    {
        Statement Query(*this, "SELECT Revision FROM objects WHERE Id = ?");
        if (!Query.Bind(Content.Id).Step())
            Raise(L"L'oggetto " + Called(Clsid, StoredName) +
                  L" è stato eliminato da un altro programma dopo l'apertura e non è stato salvato: "
                  L"esportare le proprie modifiche per non perderle.");
        if (Query.Number(0) != Revision)
            Raise(L"L'oggetto " + Called(Clsid, StoredName) +
                  L" è stato modificato da un altro programma dopo l'apertura e non è stato salvato: "
                  L"esportare le proprie modifiche o riaprire l'oggetto.");
    }
    {
        Statement Query(*this, "SELECT 1 FROM objects WHERE Clsid = ? AND Name = ? AND Id <> ?");
        if (Query.Bind(Class).Bind(Name).Bind(Content.Id).Step()) RaiseMessage(kNameTaken);
    }
    Statement(*this,
              "UPDATE objects SET Name = ?, Description = ?, Version = ?, UserList = ?, Content = ?, "
              "Revision = Revision + 1 WHERE Id = ?")
        .Bind(Name)
        .Bind(Bytes(Content.Desc))
        .Bind(Content.Version)
        .Bind(Bytes(Content.UserList))
        .Bind(Text)
        .Bind(Content.Id)
        .Step();
    Saving.Commit();
}

RegistryObject::RegistryObject(std::shared_ptr<RegistryStore> Store, std::wstring_view Clsid,
                               RegObject Content, std::int64_t Revision)
    : Store_(std::move(Store)),
      Clsid_(Clsid),
      Content_(std::move(Content)),
      StoredName_(Content_.Name),
      Revision_(Revision) {}

void RegistryObject::Write(RegObject Content) {
    Content.Id = Content_.Id;
    if (Saving_) {
        std::wstring NewName = Content.Name;
        RaiseStoreErrors([&] { Store_->Save(Clsid_, StoredName_, Revision_, Content); });
        StoredName_ = std::move(NewName);
        ++Revision_;
    }
    Content_ = std::move(Content);
}

std::optional<RegistryObject::State> RegistryObject::Stored() const {
    std::optional<RegistryStore::Loaded> Found = Store_->Load(Clsid_, Content_.Id);
    if (!Found) return std::nullopt;
    return State{std::move(Found->Content), Found->Revision};
}

void RegistryObject::TakeOver(State On) {
    StoredName_ = On.Content.Name;
    Revision_ = On.Revision;
    Content_ = std::move(On.Content);
}

void RegistryObject::Outrank(const State& On) {
    Content_.Id = On.Content.Id;
    StoredName_ = On.Content.Name;
    Revision_ = On.Revision;
}

void RegistryObject::PutContent(const RegObject& From) {
    RegObject Made = From;
    Made.Name = Content_.Name;
    Made.Id = Content_.Id;
    Made.Desc = Content_.Desc;
    Made.Version = Content_.Version;
    Made.UserList = Content_.UserList;
    Content_ = std::move(Made);
}

// The server.

using Statement = RegistryStore::Statement;
using Transaction = RegistryStore::Transaction;

KvRegSvr::KvRegSvr(const std::filesystem::path& File, std::chrono::milliseconds Patience)
    : Store_(std::make_shared<RegistryStore>(File, Patience)) {}

KvRegSvr::~KvRegSvr() = default;

std::vector<RegistryEntry> KvRegSvr::List(std::optional<std::wstring_view> Clsid) {
    std::vector<RegistryEntry> All;
    const std::optional<std::string> Class = ToUtf8(Clsid.value_or(L""));
    if (!Class) return All;
    std::string Sql = "SELECT Clsid, Name, Id, Description, Version, UserList, Revision FROM objects";
    if (Clsid) Sql += " WHERE Clsid = ?";
    Statement Query(*Store_, Sql.append(" ORDER BY Clsid, Name").c_str());
    if (Clsid) Query.Bind(*Class);
    while (Query.Step())
        All.push_back({Query.Wide(0), Query.Wide(1), Query.Number32(2), Query.Wide(3), Query.Number32(4),
                       Query.Wide(5), Query.Number(6)});
    return All;
}

std::int32_t KvRegSvr::Create(std::wstring_view Clsid, std::wstring_view Name, std::wstring_view Desc) {
    if (Name.empty()) RaiseMessage(kBadParameters);
    const std::string Class = Bytes(Clsid);
    RegObject Content;
    Content.Name = Name;
    Content.Desc = Desc;
    Content.Version = 1;
    const std::string NewName = Bytes(Name);
    const std::string Description = Bytes(Desc);

    Transaction Making(*Store_);
    if (Statement(*Store_, "SELECT 1 FROM objects WHERE Clsid = ? AND Name = ?")
            .Bind(Class)
            .Bind(NewName)
            .Step())
        RaiseMessage(kNameTaken);
    std::int64_t Id = 0;
    {
        Statement Insert(
            *Store_,
            "INSERT INTO objects(Clsid, Name, Description, Version, UserList, Revision, Content) "
            "VALUES(?, ?, ?, ?, '', 1, '') RETURNING Id");
        Insert.Bind(Class).Bind(NewName).Bind(Description).Bind(Content.Version).Step();
        Id = Insert.Number(0);
        Insert.Step();
    }
    if (!std::in_range<std::int32_t>(Id)) Store_->Fail(kNoMoreIds);
    Content.Id = static_cast<std::int32_t>(Id);
    Statement(*Store_, "UPDATE objects SET Content = ? WHERE Id = ?")
        .Bind(ToJsonText(Content))
        .Bind(Id)
        .Step();
    Making.Commit();
    return Content.Id;
}

void KvRegSvr::Delete(std::wstring_view Clsid, std::wstring_view Name) {
    const std::optional<std::string> Class = ToUtf8(Clsid);
    const std::optional<std::string> Wanted = ToUtf8(Name);
    if (!Class || !Wanted) RaiseMessage(kUnknownObject, Name);
    Transaction Deleting(*Store_);
    {
        Statement Query(*Store_, "DELETE FROM objects WHERE Clsid = ? AND Name = ? RETURNING Id");
        if (!Query.Bind(*Class).Bind(*Wanted).Step()) RaiseMessage(kUnknownObject, Name);
        Query.Step();
    }
    Deleting.Commit();
}

RegObject KvRegSvr::ReadStored(std::wstring_view Clsid, std::wstring_view Name) {
    return Store_->Load(Clsid, Name).Content;
}

std::shared_ptr<RegistryObject> KvRegSvr::Open(std::wstring_view Clsid, std::wstring_view Name) {
    RegistryStore::Loaded Found = Store_->Load(Clsid, Name);
    return std::shared_ptr<RegistryObject>(
        new RegistryObject(Store_, Clsid, std::move(Found.Content), Found.Revision));
}

}  // namespace kv::host
