// The settings store in one SQLite file. SQLite's own value types are the forms: a number is an
// INTEGER, a text is TEXT, a binary value is a BLOB. Key and value names are compared without
// regard to ASCII case (NOCASE).
#include <algorithm>
#include <chrono>
#include <limits>
#include <mutex>
#include <system_error>
#include <thread>

#include <sqlite3.h>

#include "settings/settings_store.h"
#include "support/file_queries.h"
#include "support/files.h"
#include "support/text.h"

namespace bw {
namespace {

using Clock = std::chrono::steady_clock;

// How long one call waits for other running copies before it gives up: a start has to wait for the
// first call, and somebody looks at a window that doesn't come.
constexpr std::chrono::milliseconds kPatience{700};
constexpr std::chrono::milliseconds kRetryEvery{2};

// The write-ahead log lets readers go on beside a writer, and with "normal" a write needn't wait
// for the disk; a power failure may lose the last settings but not the file.
constexpr const char* kBecomeSharable = "PRAGMA journal_mode=WAL; PRAGMA synchronous=NORMAL";
constexpr const char* kMakeTable =
    "CREATE TABLE IF NOT EXISTS settings ("
    "key TEXT NOT NULL COLLATE NOCASE, name TEXT NOT NULL COLLATE NOCASE, value NOT NULL, "
    "PRIMARY KEY (key, name))";
constexpr const char* kRead = "SELECT value FROM settings WHERE key = ?1 AND name = ?2";
constexpr const char* kWrite =
    "INSERT INTO settings (key, name, value) VALUES (?1, ?2, ?3) "
    "ON CONFLICT (key, name) DO UPDATE SET value = excluded.value";
constexpr const char* kDelete = "DELETE FROM settings WHERE key = ?1 AND name = ?2";
constexpr int kValueParameter = 3;

std::string_view View(const void* bytes, int size) {
    return {static_cast<const char*>(bytes), bytes == nullptr ? 0 : static_cast<size_t>(size)};
}

// A prepared statement about one value.
class Statement {
  public:
    Statement(sqlite3* database, const char* words, std::string_view key, std::string_view name) {
        prepared_ = sqlite3_prepare_v2(database, words, -1, &statement_, nullptr);
        if (prepared_ != SQLITE_OK) return;
        BindText(1, key);
        BindText(2, name);
    }
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;
    ~Statement() { sqlite3_finalize(statement_); }

    // The bound bytes have to outlive the statement. A null pointer would stand for no value.
    void BindText(int place, std::string_view text) {
        sqlite3_bind_text64(statement_, place, text.empty() ? "" : text.data(), text.size(),
                            SQLITE_STATIC, SQLITE_UTF8);
    }
    void BindNumber(int place, uint32_t number) { sqlite3_bind_int64(statement_, place, number); }
    void BindBytes(int place, std::span<const uint8_t> bytes) {
        const void* start = bytes.empty() ? static_cast<const void*>("") : bytes.data();
        sqlite3_bind_blob64(statement_, place, start, bytes.size(), SQLITE_STATIC);
    }

    // SQLITE_ROW, SQLITE_DONE or an error, which a statement that couldn't be prepared gives too.
    int Step() { return statement_ == nullptr ? prepared_ : sqlite3_step(statement_); }

    int Form() const { return sqlite3_column_type(statement_, 0); }
    int64_t Number() const { return sqlite3_column_int64(statement_, 0); }
    std::string_view Bytes() const {
        const void* bytes = sqlite3_column_blob(statement_, 0);
        return View(bytes, sqlite3_column_bytes(statement_, 0));
    }

  private:
    sqlite3_stmt* statement_ = nullptr;
    int prepared_ = SQLITE_ERROR;
};

// What a result of SQLite's means; `database` may be one that couldn't be opened.
StoreProblem ProblemOf(sqlite3* database, int result) {
    switch (result & 0xFF) {  // the rest tells details
        case SQLITE_OK:
        case SQLITE_ROW:
        case SQLITE_DONE:
            return StoreProblem::kNone;
        case SQLITE_BUSY:
        case SQLITE_LOCKED:
            return StoreProblem::kLocked;
        case SQLITE_ERROR:  // the columns are another program's
        case SQLITE_NOTADB:
        case SQLITE_CORRUPT:
            return StoreProblem::kNoDatabase;
        case SQLITE_FULL:
            return StoreProblem::kDiskFull;
        case SQLITE_READONLY:
        case SQLITE_PERM:
            return StoreProblem::kNoPermission;
        default:
            break;
    }
    switch (sqlite3_extended_errcode(database)) {
        case SQLITE_IOERR_WRITE:  // a limit or a quota
        case SQLITE_IOERR_SHMSIZE:
            return StoreProblem::kDiskFull;
        default:
            break;
    }
    const std::error_code reason(sqlite3_system_errno(database), std::system_category());
    if (reason == std::errc::no_space_on_device) return StoreProblem::kDiskFull;
    return reason == std::errc::permission_denied || reason == std::errc::read_only_file_system
               ? StoreProblem::kNoPermission
               : StoreProblem::kOther;
}

// The connection, opened when it is first needed. One call at a time.
class Database {
  public:
    explicit Database(std::filesystem::path file) : file_(std::move(file)) {}
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;
    ~Database() { sqlite3_close(handle_); }

    // Null if there is no file yet, or none that can be opened.
    sqlite3* ForReading() {
        deadline_ = Clock::now() + kPatience;
        problem_ = StoreProblem::kNone;
        if (handle_ != nullptr || Open(SQLITE_OPEN_READWRITE)) return handle_;
        if (!Exists(file_) && WhyNotThere(file_).kind != FileProblem::Kind::kNoPermission)
            problem_ = StoreProblem::kNone;
        return nullptr;
    }
    // Makes file, folder and table as needed.
    sqlite3* ForWriting() {
        if (ForReading() == nullptr) {
            problem_ = StoreProblem::kOther;
            if (!MakeFolders(file_.parent_path()) ||
                !Open(SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE)) {
                return nullptr;
            }
        }
        if (!ready_) {
            // A copy that is reading just now can keep the file from becoming sharable. It works
            // all the same, and a later start tries again.
            Run(kBecomeSharable);
            ready_ = Note(Run(kMakeTable)) == SQLITE_OK;
        }
        return ready_ ? handle_ : nullptr;
    }

    // Keeps what a result means as the problem of the call; gives it back.
    int Note(int result) {
        problem_ = ProblemOf(handle_, result);
        return result;
    }
    // The same for what looks for a value: a file that holds nothing yet has no table, and no
    // fault.
    int NoteSearch(int result) { return result == SQLITE_ERROR ? result : Note(result); }
    StoreProblem Problem() const { return problem_; }

  private:
    bool Open(int flags) {
        const std::string name = WideToBytes(PathText(file_));
        const int result =
            sqlite3_open_v2(name.c_str(), &handle_, flags | SQLITE_OPEN_NOMUTEX, nullptr);
        if (Note(result) != SQLITE_OK) {
            sqlite3_close(handle_);
            handle_ = nullptr;
            return false;
        }
        sqlite3_busy_handler(handle_, &Database::WaitForOthers, this);
        return true;
    }

    int Run(const char* words) { return sqlite3_exec(handle_, words, nullptr, nullptr, nullptr); }

    static int WaitForOthers(void* self, int) {
        if (Clock::now() >= static_cast<Database*>(self)->deadline_) return 0;
        std::this_thread::sleep_for(kRetryEvery);
        return 1;
    }

    std::filesystem::path file_;
    sqlite3* handle_ = nullptr;
    bool ready_ = false;
    StoreProblem problem_ = StoreProblem::kNone;
    Clock::time_point deadline_;
};

class SqliteStore final : public SettingsStore {
  public:
    explicit SqliteStore(const std::filesystem::path& file) : database_(file) {}

    bool RegWriteDword(std::string_view key, std::string_view name, uint32_t value) override {
        return Write(key, name, [&](Statement& row) { row.BindNumber(kValueParameter, value); });
    }
    bool RegReadDword(std::string_view key, std::string_view name, uint32_t& out) const override {
        return Read(key, name, [&](const Statement& row) {
            const int64_t number = row.Number();
            if (row.Form() != SQLITE_INTEGER || number < 0 ||
                number > std::numeric_limits<uint32_t>::max()) {
                return false;
            }
            out = static_cast<uint32_t>(number);
            return true;
        });
    }
    bool RegWriteString(std::string_view key, std::string_view name,
                        std::u16string_view text) override {
        const std::string utf8 = ToUtf8(text);
        return Write(key, name, [&](Statement& row) { row.BindText(kValueParameter, utf8); });
    }
    bool RegReadString(std::string_view key, std::string_view name,
                       std::u16string& out) const override {
        return Read(key, name, [&](const Statement& row) {
            if (row.Form() != SQLITE_TEXT) return false;
            out = ToWide(row.Bytes());
            return true;
        });
    }
    bool RegWriteBinary(std::string_view key, std::string_view name,
                        std::span<const uint8_t> bytes) override {
        return Write(key, name, [&](Statement& row) { row.BindBytes(kValueParameter, bytes); });
    }
    bool RegReadBinary(std::string_view key, std::string_view name, uint8_t* bytes,
                       size_t& size) const override {
        return Read(key, name, [&](const Statement& row) {
            if (row.Form() != SQLITE_BLOB) return false;
            const std::string_view stored = row.Bytes();
            if (stored.size() > size) return false;
            std::transform(stored.begin(), stored.end(), bytes,
                           [](char byte) { return static_cast<uint8_t>(byte); });
            size = stored.size();
            return true;
        });
    }
    bool RegValueSize(std::string_view key, std::string_view name, size_t& out) const override {
        return Read(key, name, [&](const Statement& row) {
            switch (row.Form()) {
                case SQLITE_INTEGER:
                    out = sizeof(uint32_t);
                    return true;
                case SQLITE_TEXT:
                    out = (ToWide(row.Bytes()).size() + 1) * sizeof(char16_t);
                    return true;
                case SQLITE_BLOB:
                    out = row.Bytes().size();
                    return true;
                default:
                    return false;
            }
        });
    }
    bool RegCreateKey(std::string_view) override {
        const std::lock_guard guard(lock_);
        return database_.ForWriting() != nullptr;
    }
    bool RegDeleteValue(std::string_view key, std::string_view name) override {
        const std::lock_guard guard(lock_);
        sqlite3* database = database_.ForReading();
        if (database == nullptr) return false;
        Statement deletion(database, kDelete, key, name);
        return database_.NoteSearch(deletion.Step()) == SQLITE_DONE &&
               sqlite3_changes(database) > 0;
    }
    StoreProblem LastProblem() const override {
        const std::lock_guard guard(lock_);
        return database_.Problem();
    }

  private:
    bool Write(std::string_view key, std::string_view name, auto&& bind) {
        const std::lock_guard guard(lock_);
        sqlite3* database = database_.ForWriting();
        if (database == nullptr) return false;
        Statement change(database, kWrite, key, name);
        bind(change);
        return database_.Note(change.Step()) == SQLITE_DONE;
    }
    bool Read(std::string_view key, std::string_view name, auto&& take) const {
        const std::lock_guard guard(lock_);
        sqlite3* database = database_.ForReading();
        if (database == nullptr) return false;
        Statement query(database, kRead, key, name);
        return database_.NoteSearch(query.Step()) == SQLITE_ROW && take(query);
    }

    mutable std::mutex lock_;
    mutable Database database_;
};

}  // namespace

std::unique_ptr<SettingsStore> MakeSqliteStore(const std::filesystem::path& file) {
    return std::make_unique<SqliteStore>(file);
}

}  // namespace bw
