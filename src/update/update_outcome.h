// How an attempt to fetch and install a newer version ended, as a value, and its words.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "language/language.h"
#include "support/file_problem.h"

namespace bw {

struct UpdateOutcome {
    enum class Kind : uint8_t {
        kDone,
        kStopped,    // by the user or the program's end; nothing to tell
        kNoAddress,  // no url at all; nothing to tell
        // Looked at before anything is fetched.
        kBadVersion,        // not of the form of four numbers
        kNotNewer,          // than the running program
        kBadAddress,        // the url can't be read, or names no file
        kNotSecure,         // the url isn't https
        kNotOurs,           // the package manager's program, or in a folder that can't be written
        kReadOnly,          // the running program's file is write-protected
        kChangedMeanwhile,  // the program's file isn't the one that was started
        // The transfer.
        kNetwork,
        kTooLarge,  // than any program of ours
        kFile,      // `file` tells
        // The signature.
        kNoSignature,   // there is none, or it can't be read
        kOtherKey,      // made with another key
        kBadSignature,  // doesn't fit the file, or its own comment
        kOtherProgram,  // signed, for another version or file
    };

    Kind kind = Kind::kDone;
    std::optional<FileProblem> file = {};

    explicit operator bool() const { return kind == Kind::kDone; }
};

// What to tell the user, a sentence or two; empty where there is nothing to tell.
std::u16string UpdateOutcomeText(const UpdateOutcome& outcome, Language language);

}  // namespace bw
