#include "designer/history/history_file.h"

#include <algorithm>
#include <array>
#include <functional>
#include <system_error>
#include <utility>

#include "designer/model/stored_numbers.h"
#include "rom/crc32.h"
#include "support/paths.h"

namespace bw {
namespace {

using Bytes = std::span<const uint8_t>;

// Line ends tell of a transfer that has changed them; the last byte is the form's version.
constexpr std::array<uint8_t, 8> kMagic = {'B', 'W', 'U', 'N', 'D', 'O', '\n', 1};
constexpr size_t kHeaderSize = kMagic.size() + 4;
constexpr size_t kRecordFrame = 8;  // size and checksum

bool BeginsLikeHistory(Bytes bytes) {
    return bytes.size() >= kMagic.size() && std::ranges::equal(bytes.first(kMagic.size()), kMagic);
}

// Records behind a header. The checksum of each counts all bytes in front of it, so that no record
// of another file or place passes.
class RecordWriter {
  public:
    // Takes the bytes in pieces, from front to back.
    using Sink = std::function<void(Bytes)>;

    RecordWriter(uint32_t stepsBack, Sink sink) : sink_(std::move(sink)) {
        piece_.reserve(kPiece + kRecordFrame);
        piece_.assign(kMagic.begin(), kMagic.end());
        Append32(piece_, stepsBack);
    }
    void Add(Bytes payload) {
        Append32(piece_, static_cast<uint32_t>(payload.size()));
        piece_.insert(piece_.end(), payload.begin(), payload.end());
        crc_ = Crc32(Bytes(piece_).subspan(counted_), crc_);
        counted_ = piece_.size();
        Append32(piece_, crc_);
        if (piece_.size() >= kPiece) {
            // The checksum isn't counted before the next record.
            const Bytes done = Bytes(piece_).first(counted_);
            sink_(done);
            piece_.erase(piece_.begin(), piece_.begin() + static_cast<ptrdiff_t>(counted_));
            counted_ = 0;
        }
    }
    void End() { sink_(piece_); }

  private:
    static constexpr size_t kPiece = 1u << 20;  // more costs more time for memory than it saves

    Sink sink_;
    std::vector<uint8_t> piece_;
    size_t counted_ = 0;  // bytes of the piece that crc_ tells of
    uint32_t crc_ = 0;
};

class RecordReader {
  public:
    explicit RecordReader(Bytes bytes) : bytes_(bytes), at_(kHeaderSize) {}

    // Nothing at the end, and at the first damage.
    std::optional<Bytes> Next() {
        const size_t left = bytes_.size() - at_;
        if (left < kRecordFrame || Read32(bytes_, at_) > left - kRecordFrame) return std::nullopt;
        const Bytes payload = bytes_.subspan(at_ + 4, Read32(bytes_, at_));
        const size_t end = at_ + 4 + payload.size();
        crc_ = Crc32(bytes_.subspan(counted_, end - counted_), crc_);
        if (Read32(bytes_, end) != crc_) {
            at_ = bytes_.size();
            return std::nullopt;
        }
        counted_ = end;
        at_ = end + 4;
        return payload;
    }

  private:
    Bytes bytes_;
    size_t at_;
    size_t counted_ = 0;
    uint32_t crc_ = 0;
};

// The file is about to be replaced.
FileResult<> KeepForeignFile(const std::filesystem::path& file) {
    std::array<uint8_t, kMagic.size()> begin{};
    if (!CheckRegularFile(file)) return {};  // none, or what writing will refuse
    if (const auto there = File::OpenForReading(file)) {
        const size_t size = there->ReadAt(0, begin).ValueOr(0);
        const bool small = there->Size().ValueOr(0) <= kLargestHistoryFile;
        if (small && BeginsLikeHistory(Bytes(begin).first(size))) return {};
    }
    std::filesystem::path kept = file;
    kept += ".kept";
    return RenameFile(file, kept);
}

void Write(const UndoHistory& history, size_t limit, RecordWriter::Sink sink) {
    const std::vector<StateDelta>& differences = history.Differences();
    size_t size = kHeaderSize + kRecordFrame + history.Present().size();
    const auto fits = [&](size_t number) {
        const size_t more = kRecordFrame + differences[number].Stored().size();
        if (more > limit - std::min(limit, size)) return false;
        size += more;
        return true;
    };
    size_t first = history.Index();
    while (first > 0 && fits(first - 1))
        --first;
    size_t end = history.Index();
    while (first == 0 && end < differences.size() && fits(end))
        ++end;
    RecordWriter writer(static_cast<uint32_t>(history.Index() - first), std::move(sink));
    writer.Add(history.Present());
    for (size_t number = history.Index(); number > first; --number)
        writer.Add(differences[number - 1].Stored());
    for (size_t number = history.Index(); number < end; ++number)
        writer.Add(differences[number].Stored());
    writer.End();
}

}  // namespace

std::filesystem::path DesignHistoryFile() {
    return UserConfigFolder() / "design_history";
}

std::vector<uint8_t> StoredHistory(const UndoHistory& history, size_t limit) {
    std::vector<uint8_t> stored;
    Write(history, limit,
          [&](Bytes piece) { stored.insert(stored.end(), piece.begin(), piece.end()); });
    return stored;
}

std::optional<UndoHistory> HistoryIn(Bytes stored) {
    if (stored.size() < kHeaderSize || !BeginsLikeHistory(stored)) return std::nullopt;
    const size_t stepsBack = Read32(stored, kMagic.size());
    RecordReader records(stored);
    const auto first = records.Next();
    if (!first) return std::nullopt;
    WorkState present(first->begin(), first->end());
    // Each difference is tried, since one that doesn't fit would lead to a document that never was.
    std::vector<StateDelta> differences;
    WorkState state = present;
    auto record = records.Next();
    for (; record && differences.size() < stepsBack; record = records.Next()) {
        StateDelta difference(*record);
        if (!difference.Backward(state)) break;
        differences.push_back(std::move(difference));
    }
    const size_t index = differences.size();
    std::ranges::reverse(differences);
    if (index < stepsBack) return UndoHistory(std::move(present), std::move(differences), index);
    state = present;
    for (; record; record = records.Next()) {
        StateDelta difference(*record);
        if (!difference.Forward(state)) break;
        differences.push_back(std::move(difference));
    }
    return UndoHistory(std::move(present), std::move(differences), index);
}

std::optional<UndoHistory> ReadHistoryFile(const std::filesystem::path& file) {
    const auto bytes = ReadFile(file, kLargestHistoryFile);
    return bytes ? HistoryIn(*bytes) : std::nullopt;
}

FileResult<> WriteHistoryFile(const std::filesystem::path& file, const UndoHistory& history) {
    if (const auto made = MakeFolders(file.parent_path()); !made) return made;
    RemoveAbandonedReplacements(file);
    if (const auto kept = KeepForeignFile(file); !kept) return kept;
    auto replacement = ReplacementFile::Begin(file);
    if (!replacement) return replacement.Problem();
    FileResult<> written;
    uint64_t at = 0;
    Write(history, kLargestHistoryFile, [&](Bytes piece) {
        if (written) written = replacement->Contents().WriteAt(at, piece);
        at += piece.size();
    });
    return written ? replacement->Commit() : written;
}

}  // namespace bw
