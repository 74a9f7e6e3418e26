// Any bytes as a list file: what is loaded and stored again loads the same.
#include "fuzz.h"
#include "list/list_file.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    // No file lies below it, so every entry is one whose file is gone.
    const std::filesystem::path base = "/nonexistent/base";
    bw::IniFile text;
    text.LoadFromMemory({data, size});
    // The announced number alone can make a list of thousands of empty entries, which only costs
    // time here; two show all that entries do.
    constexpr uint32_t kEntries = 2;
    if (text.GetInt(u"history", u"count", 0) > kEntries) {
        text.SetInt(u"history", u"count", kEntries);
    }
    bw::GameList list;
    const bw::ListLoadResult result = bw::AppendListEntries(text, base, list);
    Expect(list.size() == result.added && result.added == result.announced && !result.overLimit);
    if (list.empty()) return 0;

    bw::IniFile stored;
    bw::StoreListEntries(list, base, stored);
    const std::string first = stored.ToText();
    bw::IniFile again;
    again.LoadFromMemory({reinterpret_cast<const uint8_t*>(first.data()), first.size()});
    bw::GameList copy;
    bw::AppendListEntries(again, base, copy);
    Expect(copy.size() == list.size());
    bw::IniFile storedAgain;
    bw::StoreListEntries(copy, base, storedAgain);
    Expect(storedAgain.ToText() == first);
    return 0;
}
