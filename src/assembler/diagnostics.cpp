#include "assembler/diagnostics.h"

#include <algorithm>
#include <utility>

namespace bw::assembler {
namespace {

// Errors of later stages may stand above earlier ones in the source, so more than the first
// kDiagnosticLimit are kept until they are sorted. The rest is only counted.
constexpr size_t kKept = 4096;

// A detail is shown up to this many bytes, with control bytes as `?`.
constexpr size_t kDetailBytes = 120;

std::string Printable(std::string_view detail) {
    std::string text(detail.substr(0, kDetailBytes));
    for (char& c : text) {
        if (static_cast<unsigned char>(c) < 32 || c == 127) c = '?';
    }
    if (detail.size() > kDetailBytes) text += "...";
    return text;
}

}  // namespace

std::string Diagnostics::Spot(const Place& place) const {
    return files_.At(place.file).name + ":" + std::to_string(place.line);
}

void Diagnostics::Error(const Place& place, std::string_view text, std::string_view detail) {
    if (text.empty()) return;  // kReportedBefore
    ++errorCount_;
    Add(Severity::kError, place, text, detail);
}

void Diagnostics::Warning(const Place& place, std::string_view text, std::string_view detail) {
    Add(Severity::kWarning, place, text, detail);
}

void Diagnostics::Add(Severity severity, const Place& place, std::string_view text,
                      std::string_view detail) {
    if (entries_.size() >= kKept) return;
    std::string message(text);
    if (!detail.empty()) message.append(" ").append(Printable(detail));
    if (place.expansion != 0) {
        const Expansion& call = expansions[place.expansion];
        message.append(" (in macro ").append(Printable(call.macro));
        message.append(", called at ").append(Spot(call.caller)).append(")");
    }
    entries_.push_back({severity, place, std::move(message)});
}

std::vector<Diagnostic> Diagnostics::Take() {
    std::stable_sort(entries_.begin(), entries_.end(), [](const Entry& a, const Entry& b) {
        return a.place.sequence < b.place.sequence;
    });
    if (entries_.size() > kDiagnosticLimit) entries_.resize(kDiagnosticLimit);
    std::vector<Diagnostic> result;
    result.reserve(entries_.size());
    for (Entry& entry : entries_) {
        result.push_back({entry.severity,
                          std::move(entry.text),
                          {.file = files_.At(entry.place.file).name, .line = entry.place.line}});
    }
    return result;
}

}  // namespace bw::assembler
