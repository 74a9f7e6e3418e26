// The older form of databases: blocks of keys and values, "key ( key value key ( ... ) )". Values
// with blanks stand in quotes, in which \" is a quote.
#include <utility>
#include <vector>

#include "list/collection/dat_collector.h"

namespace bw {
namespace {

constexpr size_t kLongestToken = 64 << 10;  // bytes

bool IsBlank(char letter) {
    return letter == ' ' || letter == '\t' || letter == '\r' || letter == '\n' ||
           letter == '\x1A';  // the end of a file for DOS
}

enum class Block : uint8_t { kTop, kHeader, kGame, kRom, kOther };

Block BlockOf(std::string_view key, Block outer) {
    if (outer == Block::kGame) return key == "rom" ? Block::kRom : Block::kOther;
    if (outer != Block::kTop) return Block::kOther;
    if (key == "game" || key == "machine" || key == "resource") return Block::kGame;
    return key == "clrmamepro" || key == "emulator" ? Block::kHeader : Block::kOther;
}

class TextReader : public DatReader {
  public:
    explicit TextReader(DatCollector& collector) : collector_(collector) {}

    std::optional<DatProblem> Feed(std::span<const char> bytes, bool last) override {
        for (const char letter : bytes) {
            if (!Step(letter)) return Problem();
            if (letter == '\n') ++line_;
        }
        if (!last) return std::nullopt;
        const bool quoted = state_ == State::kQuoted || state_ == State::kEscape;
        const bool whole = !quoted && EndToken() && blocks_.size() == 1 && key_.empty() && begun_;
        return whole ? std::nullopt : std::optional(Problem());
    }

    uint64_t Line() const override { return line_; }

  private:
    enum class State : uint8_t { kBetween, kWord, kQuoted, kEscape };

    // Before the first block it may be any text.
    DatProblem Problem() const {
        if (!begun_) return {.kind = DatProblem::Kind::kNoDatabase};
        return {.kind = DatProblem::Kind::kDamaged, .line = line_};
    }

    bool Step(char letter) {
        switch (state_) {
            case State::kQuoted:
                if (letter == '"') return EndToken();
                if (letter == '\n') return false;  // a quote is missing
                if (letter == '\\') {
                    state_ = State::kEscape;
                    return true;
                }
                return Add(letter);
            case State::kEscape:
                state_ = State::kQuoted;
                return letter != '\n' && (letter == '"' || letter == '\\' || Add('\\')) &&
                       Add(letter);
            case State::kWord:
                if (IsBlank(letter)) return EndToken();
                if (letter == '(') ++parentheses_;
                if (letter == ')' && parentheses_-- == 0) return EndToken() && Close();
                return Add(letter);
            case State::kBetween:
                break;
        }
        return Begin(letter);
    }

    bool Begin(char letter) {
        if (IsBlank(letter)) return true;
        if (letter == '(') return Open();
        if (letter == ')') return Close();
        token_.clear();
        parentheses_ = 0;
        state_ = letter == '"' ? State::kQuoted : State::kWord;
        return letter == '"' || Add(letter);
    }

    bool Add(char letter) {
        token_ += letter;
        return token_.size() <= kLongestToken;
    }

    // A key, or its value.
    bool EndToken() {
        if (std::exchange(state_, State::kBetween) == State::kBetween) return true;
        if (key_.empty()) {
            key_ = token_;
            return !key_.empty();
        }
        if (blocks_.size() == 1) return false;  // at the top there are only blocks
        TakeValue();
        key_.clear();
        return true;
    }

    void TakeValue() {
        const Block block = blocks_.back();
        if (block == Block::kGame && key_ == "name") collector_.BeginGame(token_);
        if (block == Block::kRom && key_ == "crc") crc_ = token_;
        if (block == Block::kHeader && key_ == "name") collector_.SetName(token_);
        if (block == Block::kHeader && key_ == "description") collector_.SetDescription(token_);
    }

    bool Open() {
        if (key_.empty() || blocks_.size() > kDatDepth) return false;
        const Block block = BlockOf(key_, blocks_.back());
        if (blocks_.size() == 1 && !begun_ && block == Block::kOther) return false;
        begun_ = true;
        if (block == Block::kGame) collector_.BeginGame({});
        if (block == Block::kRom) crc_.clear();
        blocks_.push_back(block);
        key_.clear();
        return true;
    }

    // A key in front of it has no value; some have none.
    bool Close() {
        if (blocks_.size() == 1) return false;
        if (blocks_.back() == Block::kRom) collector_.AddRom(crc_);
        blocks_.pop_back();
        key_.clear();
        return true;
    }

    DatCollector& collector_;
    uint64_t line_ = 1;
    State state_ = State::kBetween;
    bool begun_ = false;
    size_t parentheses_ = 0;  // open ones in a word
    std::string token_;
    std::string key_;
    std::string crc_;
    std::vector<Block> blocks_{Block::kTop};
};

}  // namespace

std::unique_ptr<DatReader> MakeDatTextReader(DatCollector& collector) {
    return std::make_unique<TextReader>(collector);
}

}  // namespace bw
