// Any bytes as a list file or as the remembered list: what is loaded and stored again loads the
// same, and leaving out of a text what no list has changes nothing.

#include "fuzz.h"
#include "list/remembered_list.h"

namespace {

// No file lies below it, so every entry is one whose file is gone.
const std::filesystem::path kBase = "/nonexistent/base";

std::span<const uint8_t> Bytes(const std::string& text) {
    return {reinterpret_cast<const uint8_t*>(text.data()), text.size()};
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    bw::IniFile text;
    text.LoadFromMemory({data, size});
    // The announced number alone can make a list of thousands of empty entries, which only costs
    // time here.
    const bool tooMany = text.GetInt(u"history", u"count", 0) > 64;
    if (tooMany) text.SetInt(u"history", u"count", 64);
    bw::GameList list;
    const bw::ListLoadResult result = bw::AppendListEntries(text, kBase, list);
    Expect(list.size() == result.added && result.added == result.announced && !result.overLimit);

    bw::IniFile stored;
    bw::StoreListEntries(list, kBase, stored);
    const std::string first = stored.ToText();
    bw::IniFile again;
    again.LoadFromMemory(Bytes(first));
    bw::GameList copy;
    bw::AppendListEntries(again, kBase, copy);
    Expect(copy.size() == list.size());
    bw::IniFile storedAgain;
    bw::StoreListEntries(copy, kBase, storedAgain);
    Expect(storedAgain.ToText() == first);
    if (tooMany) return 0;

    const bw::RememberedList remembered = bw::LoadRememberedList({data, size}, kBase);
    bw::IniFile storedRemembered;
    bw::StoreListEntries(remembered.games, kBase, storedRemembered);
    Expect(storedRemembered.ToText() == first);
    const std::string whole = bw::StoreRememberedList(remembered.games, remembered.widths, kBase);
    Expect(bw::LoadRememberedList(Bytes(whole), kBase).widths == remembered.widths);
    return 0;
}
