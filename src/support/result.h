// What an operation gives back that can fail: its value, or what went wrong.
#pragma once

#include <optional>
#include <utility>
#include <variant>

namespace bw {

// True with the value, or false with the problem. The two types differ.
template <typename Value, typename Fault>
class Result {
  public:
    Result(Value value) : result_(std::in_place_index<0>, std::move(value)) {}
    Result(Fault problem) : result_(std::in_place_index<1>, std::move(problem)) {}

    explicit operator bool() const { return result_.index() == 0; }
    // For a true result.
    Value& operator*() { return std::get<0>(result_); }
    const Value& operator*() const { return std::get<0>(result_); }
    Value* operator->() { return &std::get<0>(result_); }
    const Value* operator->() const { return &std::get<0>(result_); }
    Value ValueOr(Value other) const { return *this ? **this : std::move(other); }
    // For a false result.
    const Fault& Problem() const { return std::get<1>(result_); }

  private:
    std::variant<Value, Fault> result_;
};

// An operation that has nothing to give: true if it is done.
template <typename Fault>
class Result<void, Fault> {
  public:
    Result() = default;
    Result(Fault problem) : problem_(std::move(problem)) {}

    explicit operator bool() const { return !problem_; }
    const Fault& Problem() const { return *problem_; }
    // The result of several operations that don't wait for each other: the first problem stays.
    void Join(Result other) {
        if (!problem_) problem_ = std::move(other.problem_);
    }

  private:
    std::optional<Fault> problem_;
};

}  // namespace bw
