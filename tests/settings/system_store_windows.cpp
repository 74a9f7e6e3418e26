#include <thread>

#include <gtest/gtest.h>

#include "settings/registry_store.h"
#include "support/windows_path.h"
#include "system_store.h"

namespace bw::test {
namespace {

constexpr std::string_view kAllTests = "Software\\Bankweaver Tests";

std::string OwnKey() {
    return std::string(kAllTests) + "\\" + std::to_string(GetCurrentProcessId());
}

void RemoveOwnKey() {
    RegDeleteTreeW(HKEY_CURRENT_USER, WideOf(OwnKey()).c_str());
    RegDeleteKeyW(HKEY_CURRENT_USER, WideOf(kAllTests).c_str());  // if no other test runs
}

// Removes the key at the end of the program, too.
class Remover : public testing::Environment {
    void TearDown() override { RemoveOwnKey(); }
};
const testing::Environment* const kRemover = testing::AddGlobalTestEnvironment(new Remover);

// Another program's value of any form.
void SetRaw(const wchar_t* name, DWORD form, std::wstring_view units) {
    const std::wstring key = WideOf(OwnKey() + "\\" + std::string(kMainKey));
    EXPECT_EQ(RegSetKeyValueW(HKEY_CURRENT_USER, key.c_str(), name, form, units.data(),
                              static_cast<DWORD>(units.size() * sizeof(wchar_t))),
              ERROR_SUCCESS);
}

TEST(RegistryStore, TakesTextsOfOtherProgramsAsTheyAre) {
    using namespace std::string_view_literals;
    const auto store = MakeSystemStore();
    std::u16string text = u"default";
    SetRaw(L"expanded", REG_EXPAND_SZ, L"%TEMP%\0"sv);
    EXPECT_FALSE(store->RegReadString(kMainKey, "expanded", text)) << "another form";
    const std::pair<std::wstring_view, std::u16string_view> cases[] = {
        {L"open end"sv, u"open end"sv},
        {L"a\0b\0"sv, u"a\0b"sv},
        {L""sv, u""sv},
        {L"half \xD800 pair\0"sv, u"half \xD800 pair"sv}};
    for (const auto& [stored, read] : cases) {
        SetRaw(L"v", REG_SZ, stored);
        EXPECT_TRUE(store->RegReadString(kMainKey, "v", text));
        EXPECT_EQ(text, read);
        size_t size = 0;
        EXPECT_TRUE(store->RegValueSize(kMainKey, "v", size));
        EXPECT_EQ(size, read.size() * 2 + 2);
    }
    uint32_t number = 7;
    SetRaw(L"n", REG_DWORD, L"1"sv);
    EXPECT_FALSE(store->RegReadDword(kMainKey, "n", number)) << "of two bytes";
}

TEST(RegistryStore, TwoRunningProgramsLoseNothing) {
    const auto empty = MakeSystemStore();
    const auto write = [](const std::string& writer) {
        const auto store = MakeRegistryStore(OwnKey());
        for (uint32_t i = 0; i < 200; ++i)
            EXPECT_TRUE(store->RegWriteDword(kMainKey, writer + std::to_string(i), i));
    };
    std::thread other(write, "1/");
    write("0/");
    other.join();
    for (uint32_t i = 0; i < 200; ++i) {
        for (const char* writer : {"0/", "1/"}) {
            uint32_t value = 1000;
            EXPECT_TRUE(empty->RegReadDword(kMainKey, writer + std::to_string(i), value));
            EXPECT_EQ(value, i);
        }
    }
}

}  // namespace

std::vector<const char*> StoreKinds() {
    return {"memory", "sqlite", "guarded", "system"};
}

std::unique_ptr<SettingsStore> MakeSystemStore() {
    RemoveOwnKey();
    return MakeRegistryStore(OwnKey());
}

}  // namespace bw::test
