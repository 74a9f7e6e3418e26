#include "designer/history/state_delta.h"

#include <algorithm>
#include <optional>

#include "designer/model/chunk_file.h"
#include "designer/model/stored_numbers.h"

namespace bw {
namespace {

using Bytes = std::span<const uint8_t>;

constexpr uint32_t kNoChunks = 0;  // the type of bytes that are no work state

// Collects hunks from front to back.
class HunkWriter {
  public:
    void Equal(size_t count) { gap_ += count; }
    void Replace(Bytes before, Bytes after) {
        if (before.empty() && after.empty()) return;
        for (const size_t number : {gap_, before.size(), after.size()})
            Append(number);
        bytes_.insert(bytes_.end(), before.begin(), before.end());
        bytes_.insert(bytes_.end(), after.begin(), after.end());
        gap_ = 0;
    }
    std::vector<uint8_t> Take() {
        bytes_.shrink_to_fit();
        return std::move(bytes_);
    }

  private:
    void Append(size_t number) {
        for (; number > 0x7F; number >>= 7)
            bytes_.push_back(static_cast<uint8_t>(number | 0x80));
        bytes_.push_back(static_cast<uint8_t>(number));
    }

    std::vector<uint8_t> bytes_;
    size_t gap_ = 0;
};

// Pieces of one length: hunks wherever bytes differ. Short equal runs cost less inside a hunk.
void CompareInPlace(Bytes before, Bytes after, HunkWriter& hunks) {
    constexpr size_t kWorthAHunk = 4;
    for (size_t at = 0; at < before.size();) {
        const auto differs =
            std::mismatch(before.begin() + static_cast<ptrdiff_t>(at), before.end(),
                          after.begin() + static_cast<ptrdiff_t>(at));
        const auto start = static_cast<size_t>(differs.first - before.begin());
        hunks.Equal(start - at);
        size_t end = start;
        for (size_t place = start; place < before.size() && place - end < kWorthAHunk; ++place)
            if (before[place] != after[place]) end = place + 1;
        hunks.Replace(before.subspan(start, end - start), after.subspan(start, end - start));
        at = end;
    }
}

// Pieces of different lengths: what lies between their common beginning and their common end.
void CompareEnds(Bytes before, Bytes after, HunkWriter& hunks) {
    const size_t shorter = std::min(before.size(), after.size());
    const auto front = static_cast<size_t>(
        std::mismatch(before.begin(), before.begin() + static_cast<ptrdiff_t>(shorter),
                      after.begin())
            .first -
        before.begin());
    size_t back = 0;
    while (back < shorter - front &&
           before[before.size() - 1 - back] == after[after.size() - 1 - back]) {
        ++back;
    }
    hunks.Equal(front);
    hunks.Replace(before.subspan(front, before.size() - front - back),
                  after.subspan(front, after.size() - front - back));
    hunks.Equal(back);
}

// Chunks of a list whose one chunk has gone to its end, as what is dragged does, maybe with new
// contents. True if that is all.
bool CompareMovedToEnd(Bytes before, Bytes after, HunkWriter& hunks) {
    const auto front = static_cast<size_t>(
        std::mismatch(before.begin(), before.end(), after.begin()).first - before.begin());
    size_t at = 0;
    size_t size = kChunkHeaderSize + Read32(before, at + 12);
    while (at + size <= front && at + size < before.size()) {
        at += size;
        size = kChunkHeaderSize + Read32(before, at + 12);
    }
    const size_t equal = before.size() - at - size;
    const Bytes behind = before.last(equal);
    if (equal == 0 ||
        !std::equal(behind.begin(), behind.end(), after.begin() + static_cast<ptrdiff_t>(at))) {
        return false;
    }
    hunks.Equal(at);
    hunks.Replace(before.subspan(at, size), {});
    hunks.Equal(equal);
    hunks.Replace({}, after.last(size));
    return true;
}

void CompareSections(uint32_t type, Bytes before, Bytes after, HunkWriter& hunks) {
    const bool chunks = type != kNoChunks && type != kStateContainer;
    if (before.size() == after.size()) {
        if (chunks && CompareMovedToEnd(before, after, hunks)) return;
        CompareInPlace(before, after, hunks);
    } else {
        CompareEnds(before, after, hunks);
    }
}

// Reads hunks from front to back.
class HunkReader {
  public:
    explicit HunkReader(Bytes hunks) : rest_(hunks) {}

    // False behind the last one, and at bytes that are no hunk.
    bool Next() {
        if (rest_.empty()) return false;
        const auto gap = Number();
        const auto beforeSize = Number();
        const auto afterSize = Number();
        damaged_ = !gap || !beforeSize || !afterSize || *beforeSize > rest_.size() ||
                   *afterSize > rest_.size() - *beforeSize;
        if (damaged_) return false;
        equal = *gap;
        before = rest_.first(*beforeSize);
        after = rest_.subspan(*beforeSize, *afterSize);
        rest_ = rest_.subspan(*beforeSize + *afterSize);
        return true;
    }
    bool Damaged() const { return damaged_; }

    size_t equal = 0;  // bytes in front of the hunk
    Bytes before;
    Bytes after;

  private:
    std::optional<size_t> Number() {
        size_t value = 0;
        for (unsigned shift = 0; shift < 32 && !rest_.empty(); shift += 7) {
            const uint8_t byte = rest_.front();
            rest_ = rest_.subspan(1);
            value |= size_t{byte & 0x7Fu} << shift;
            if (byte <= 0x7F) return value;
        }
        return std::nullopt;
    }

    Bytes rest_;
    bool damaged_ = false;
};

// In place: most hunks keep their length, and few of a difference don't.
bool Apply(WorkState& state, Bytes bytes, bool forward) {
    HunkReader hunk(bytes);
    size_t at = 0;
    while (hunk.Next()) {
        const Bytes from = forward ? hunk.before : hunk.after;
        const Bytes to = forward ? hunk.after : hunk.before;
        if (hunk.equal > state.size() - at) return false;
        at += hunk.equal;
        if (from.size() > state.size() - at) return false;
        const auto place = state.begin() + static_cast<ptrdiff_t>(at);
        if (!std::equal(from.begin(), from.end(), place)) return false;
        const size_t common = std::min(from.size(), to.size());
        const auto rest = std::copy_n(to.begin(), common, place);
        if (from.size() > common) {
            state.erase(rest, place + static_cast<ptrdiff_t>(from.size()));
        } else {
            state.insert(rest, to.begin() + static_cast<ptrdiff_t>(common), to.end());
        }
        at += to.size();
    }
    return !hunk.Damaged();
}

}  // namespace

std::vector<StateSection> SectionsOf(Bytes state) {
    std::vector<StateSection> whole = {{kNoChunks, 0, state.size()}};
    if (state.size() < kChunkHeaderSize) return whole;
    std::vector<StateSection> sections = {{kStateContainer, 0, kChunkHeaderSize}};
    for (size_t at = kChunkHeaderSize; at < state.size();) {
        if (state.size() - at < kChunkHeaderSize) return whole;
        const uint32_t type = Read32(state, at);
        const size_t size = Read32(state, at + 12);
        if (size > state.size() - at - kChunkHeaderSize) return whole;
        const size_t end = at + kChunkHeaderSize + size;
        if (sections.back().type == type) {
            sections.back().end = end;
        } else {
            sections.push_back({type, at, end});
        }
        at = end;
    }
    return sections;
}

StateDelta::StateDelta(Bytes before, Bytes after) {
    const std::vector<StateSection> left = SectionsOf(before);
    const std::vector<StateSection> right = SectionsOf(after);
    HunkWriter hunks;
    auto old = left.begin();
    for (const StateSection& section : right) {
        const Bytes now = after.subspan(section.begin, section.end - section.begin);
        const auto same = std::find_if(
            old, left.end(), [&](const StateSection& other) { return other.type == section.type; });
        if (same == left.end()) {  // a list that was empty
            hunks.Replace({}, now);
            continue;
        }
        for (; old != same; ++old)  // lists that are empty now
            hunks.Replace(before.subspan(old->begin, old->end - old->begin), {});
        CompareSections(section.type, before.subspan(old->begin, old->end - old->begin), now,
                        hunks);
        ++old;
    }
    for (; old != left.end(); ++old)
        hunks.Replace(before.subspan(old->begin, old->end - old->begin), {});
    bytes_ = hunks.Take();
}

bool StateDelta::Forward(WorkState& state) const {
    return Apply(state, bytes_, true);
}

bool StateDelta::Backward(WorkState& state) const {
    return Apply(state, bytes_, false);
}

}  // namespace bw
