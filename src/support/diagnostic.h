// What a reader, a check or the assembler has to say of its input, and where. Needs the standard
// library alone.
#pragma once

#include <cstdint>
#include <string>

namespace bw {

// An error makes what was asked for fail; a warning is for the reader only.
enum class Severity : std::uint8_t { kWarning, kError };

// A spot in a file or a row of a list. What doesn't apply is empty or 0.
template <typename Text>
struct DiagnosticPlace {
    Text file{};               // its name, as the user is to read it
    std::uint32_t line = 0;    // in that file, from 1
    std::uint32_t column = 0;  // in that line, from 1
    std::uint32_t row = 0;     // of the list, from 1
    Text name{};               // what the list calls that row
};

template <typename Text>
struct BasicDiagnostic {
    Severity severity = Severity::kError;
    Text text{};  // to be read behind the file; names the row itself
    DiagnosticPlace<Text> place{};
};

// For people.
using Diagnostic = BasicDiagnostic<std::u16string>;

// "FILE", "FILE:LINE" or "FILE:LINE:COLUMN"; empty without a file.
template <typename Text>
Text SpotText(const DiagnosticPlace<Text>& place) {
    Text spot = place.file;
    for (const std::uint32_t number : {place.line, place.line == 0 ? 0 : place.column}) {
        if (spot.empty() || number == 0) break;
        const std::string digits = std::to_string(number);
        spot.push_back(':');
        spot.append(digits.begin(), digits.end());
    }
    return spot;
}

// The spot and the text: "FILE:LINE: TEXT".
template <typename Text>
Text FullText(const BasicDiagnostic<Text>& diagnostic) {
    Text text = SpotText(diagnostic.place);
    if (text.empty()) return diagnostic.text;
    text.push_back(':');
    text.push_back(' ');
    text.append(diagnostic.text);
    return text;
}

}  // namespace bw
