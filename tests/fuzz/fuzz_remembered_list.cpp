// Any bytes as the list that the settings remember: leaving out of a text what no list has changes
// nothing, and the widths of its columns come back.
#include "fuzz.h"
#include "list/remembered_list.h"

namespace {

// No file lies below it, so every entry is one whose file is gone.
const std::filesystem::path kBase = "/nonexistent/base";

std::string Stored(const bw::GameList& list) {
    bw::IniFile text;
    bw::StoreListEntries(list, kBase, text);
    return text.ToText();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    bw::IniFile text;
    text.LoadFromMemory({data, size});
    // More entries than these only cost time here.
    if (text.GetInt(u"history", u"count", 0) > 4) return 0;
    bw::GameList list;
    bw::AppendListEntries(text, kBase, list);
    const bw::RememberedList remembered = bw::LoadRememberedList({data, size}, kBase);
    Expect(Stored(remembered.games) == Stored(list));
    const std::string whole = bw::StoreRememberedList(remembered.games, remembered.widths, kBase);
    const std::span bytes(reinterpret_cast<const uint8_t*>(whole.data()), whole.size());
    Expect(bw::LoadRememberedList(bytes, kBase).widths == remembered.widths);
    return 0;
}
