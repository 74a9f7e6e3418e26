// Any bytes as a search and a name: the kind of search, what to find, what to put there and the
// name, a line each. A search can be stopped, finds where it replaces, and refuses in words.
#include <chrono>
#include <string_view>
#include <thread>

#include "fuzz.h"
#include "list/search/name_search.h"
#include "support/text.h"

namespace {

std::u16string TakeLine(std::string_view& text) {
    const size_t end = text.find('\n');
    const std::u16string line = bw::BytesToWide(text.substr(0, end));
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    return line;
}

// Asks the search at hand to stop, again and again.
const bw::StopFlag& Impatience() {
    static bw::StopFlag stop;
    static std::jthread user([](const std::stop_token& end) {
        while (!end.stop_requested()) {
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
            stop = true;
        }
    });
    stop = false;
    return stop;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    std::string_view text = TextOf({data, size});
    bw::FindRecord record;
    record.regex = TakeLine(text) == u"r";
    record.find = TakeLine(text);
    record.replace = TakeLine(text);
    const std::u16string name = bw::BytesToWide(text);

    std::unique_ptr<bw::NamePattern> pattern;
    const auto problem = bw::NamePattern::Compile(record, bw::Language::kEnglish, pattern);
    Expect(problem.has_value() == (pattern == nullptr));
    if (problem) {
        Expect(!problem->text.empty());
        return 0;
    }
    const bw::StopFlag& stop = Impatience();
    try {
        const bool found = pattern->Matches(name, stop);
        const bool everywhere = !record.regex && record.find.empty();
        Expect(pattern->Replaced(name, stop).has_value() == (found && !everywhere));
    } catch (const bw::SearchStopped& stopped) {
        Expect(stop || !stopped.reason.empty());
    }
    return 0;
}
