#include "designer/history/state_delta.h"

#include <algorithm>

#include "designer/model/chunk_file.h"
#include "designer/model/stored_numbers.h"

namespace bw {
namespace {

using Bytes = std::span<const uint8_t>;

// Neighbouring chunks of one type: a list, or a single chunk.
struct Section {
    uint32_t type;
    size_t begin;
    size_t end;
};

// Bytes that are no work state come out as one section.
std::vector<Section> Split(Bytes state) {
    std::vector<Section> whole = {{0, 0, state.size()}};
    if (state.size() < kChunkHeaderSize) return whole;
    std::vector<Section> sections = {{kStateContainer, 0, kChunkHeaderSize}};
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

void CompareSections(Bytes before, Bytes after, HunkWriter& hunks) {
    if (before.size() == after.size()) {
        CompareInPlace(before, after, hunks);
    } else {
        CompareEnds(before, after, hunks);
    }
}

// Applies hunks in one direction.
WorkState Apply(Bytes from, Bytes hunks, bool forward) {
    WorkState to;
    to.reserve(from.size() + 64);
    size_t at = 0;
    size_t read = 0;
    const auto number = [&] {
        size_t value = 0;
        for (int shift = 0;; shift += 7) {
            const uint8_t byte = hunks[read++];
            value |= size_t{byte & 0x7Fu} << shift;
            if (byte <= 0x7F) return value;
        }
    };
    const auto append = [&](Bytes bytes) { to.insert(to.end(), bytes.begin(), bytes.end()); };
    while (read < hunks.size()) {
        const size_t gap = number();
        const size_t before = number();
        const size_t after = number();
        append(from.subspan(at, gap));
        append(forward ? hunks.subspan(read + before, after) : hunks.subspan(read, before));
        at += gap + (forward ? before : after);
        read += before + after;
    }
    append(from.subspan(at));
    return to;
}

}  // namespace

StateDelta::StateDelta(Bytes before, Bytes after) {
    const std::vector<Section> left = Split(before);
    const std::vector<Section> right = Split(after);
    HunkWriter hunks;
    auto old = left.begin();
    for (const Section& section : right) {
        const Bytes now = after.subspan(section.begin, section.end - section.begin);
        const auto same = std::find_if(
            old, left.end(), [&](const Section& other) { return other.type == section.type; });
        if (same == left.end()) {  // a list that was empty
            hunks.Replace({}, now);
            continue;
        }
        for (; old != same; ++old)  // lists that are empty now
            hunks.Replace(before.subspan(old->begin, old->end - old->begin), {});
        CompareSections(before.subspan(old->begin, old->end - old->begin), now, hunks);
        ++old;
    }
    for (; old != left.end(); ++old)
        hunks.Replace(before.subspan(old->begin, old->end - old->begin), {});
    bytes_ = hunks.Take();
}

WorkState StateDelta::Forward(Bytes before) const {
    return Apply(before, bytes_, true);
}

WorkState StateDelta::Backward(Bytes after) const {
    return Apply(after, bytes_, false);
}

}  // namespace bw
