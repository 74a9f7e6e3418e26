// A copy of the program that finds a newer version of itself on a real server, and becomes it.
#include <fstream>
#include <memory>
#include <thread>

#include <gmock/gmock.h>

#include "common/game_image.h"
#include "common/web_server.h"
#include "program.h"
#include "support/text.h"
#include "user_home.h"

namespace bw::test {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::HasSubstr;
namespace fs = std::filesystem;

constexpr int kOkButton = 1;
constexpr int kDescription = 1031;
constexpr int kMessageText = 1083;
constexpr auto kPatience = 60s;
const std::string kOld = "0.1.0.0";
const std::string kNew = "9.0.0.0";
const std::string kName = "bankweaver-" + kNew;

Wanted Title(const std::string& part) {
    return [=](const Seen& seen) {
        return seen.width > 0 && seen.value.find(part) != std::string::npos;
    };
}

// The processes that run this file.
std::vector<pid_t> RunningOf(const fs::path& program) {
    std::vector<pid_t> found;
    for (const auto& entry : fs::directory_iterator("/proc")) {
        std::error_code error;
        if (fs::read_symlink(entry.path() / "exe", error) == program && !error)
            found.push_back(std::atoi(entry.path().filename().c_str()));
    }
    return found;
}

class Updates : public testing::Test {
  protected:
    static void SetUpTestSuite() { desktop = std::make_unique<Desktop>(); }
    static void TearDownTestSuite() { desktop.reset(); }

    void SetUp() override {
        ASSERT_EQ(server.Problem(), "");
        fs::create_directories(release);
        Minisign({"-G", "-W", "-p", keys / "public", "-s", keys / "secret"});
        std::ifstream file(keys / "public");
        std::getline(file, key);  // a comment
        std::getline(file, key);
        MakeProgram(program, kOld);
        MakeProgram(release / kName, kNew);
        Sign(release / kName);
        WriteText(release / "update.json",
                  R"({"version":")" + kNew + R"(","url":")" + Host() + "/raw/master/Release/" +
                      kName + R"(","update_describe":{"en-us":"Line one\nLine two"}})");
    }
    void TearDown() override {
        for (const pid_t process : RunningOf(program))
            kill(process, SIGKILL);
    }

    static void Minisign(std::vector<std::string> words) {
        words.insert(words.begin(), FindProgram("minisign").value_or("minisign"));
        auto child = ChildProcess::Start({.words = std::move(words), .logFile = "/dev/null"});
        ASSERT_TRUE(child && child->WaitFor(kPatience));
        ASSERT_EQ(child->Status(), 0);
    }
    void Sign(const fs::path& file) {
        Minisign(
            {"-S", "-s", keys / "secret", "-m", file, "-t", "bankweaver " + kNew + " " + kName});
    }
    std::string Host() const {
        std::string host = server.Url("");
        host.pop_back();
        return host;
    }
    void MakeProgram(const fs::path& to, const std::string& version) {
        fs::copy_file(BANKWEAVER_UPDATE_PROGRAM, to);
        std::ofstream(to, std::ios::app)
            << "\ntest-deployment " << Host() << ' ' << key << ' ' << version << '\n';
    }
    std::unique_ptr<Program> Start() {
        return std::make_unique<Program>(*desktop, home.Path(), std::vector<std::string>{},
                                         std::vector<std::string>{}, program);
    }
    std::vector<std::string> FilesBesideTheProgram() const {
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator(program.parent_path()))
            names.push_back(entry.path().filename());
        return names;
    }

    static std::unique_ptr<Desktop> desktop;
    const TemporaryFolder served, keys, installed;
    const fs::path release = served / "raw/master/Release";
    const fs::path program = fs::canonical(installed.Path()) / "bankweaver";
    // By an authority that nobody knows; and so slow, over four connections, that the program takes
    // two seconds: a percentage shows twice a second.
    const WebServer server{
        served.Path(), WebServer::Tls::kTestAuthority,
        "limit_rate " + std::to_string(fs::file_size(BANKWEAVER_UPDATE_PROGRAM) / 8) + ";"};
    std::string key;
    UserHome home;
};
std::unique_ptr<Desktop> Updates::desktop;

TEST_F(Updates, AnOlderVersionBecomesTheNewOne) {
    home.RememberNames({"One", "Two"});
    const auto old = Start();
    const Seen offer = old->Await("the offer", Title("Current version: " + kOld));
    EXPECT_THAT(offer.value, HasSubstr(kNew));
    EXPECT_THAT(old->Await("what is new", Control(kDescription)).value, HasSubstr("Line two"));
    const Seen place = old->Await("the window", MainWindow());
    old->Click("the button that updates", Control(kOkButton));
    old->Await("a percentage", Title("Updating "));
    EXPECT_EQ(old->AwaitEnd(), 0);
    desktop->AwaitWindow("Bankweaver");
    const auto end = std::chrono::steady_clock::now() + kPatience;
    std::u16string left = u"?";
    while (!left.empty() && std::chrono::steady_clock::now() < end) {
        std::this_thread::sleep_for(50ms);
        home.Store()->RegReadString(kMainKey, "Delete", left);
    }
    EXPECT_EQ(left, u"");
    EXPECT_THAT(FilesBesideTheProgram(), ElementsAre("bankweaver"));
    EXPECT_EQ(ReadText(program), ReadText(release / kName));
    ASSERT_EQ(RunningOf(program).size(), 1u);
    // What runs now knows its own version.
    desktop->Click(place.Middle());
    desktop->Key("alt+h");
    desktop->Key("u");  // the letter of two entries: goes from the first to the second
    desktop->Key("Return");
    desktop->AwaitWindow("Current version: " + kNew + " Latest version: " + kNew);
}

TEST_F(Updates, ATamperedVersionIsToldOfAndNothingChanges) {
    std::ofstream(release / kName, std::ios::app) << '\n';
    const std::string before = ReadText(program);
    const auto old = Start();
    old->Await("the offer", Title("Current version: " + kOld));
    old->Click("the button that updates", Control(kOkButton));
    EXPECT_THAT(old->Await("what is wrong", Control(kMessageText)).value, HasSubstr("tampered"));
    old->Click("the message's button", Button("Confirm"));
    EXPECT_THAT(FilesBesideTheProgram(), ElementsAre("bankweaver"));
    EXPECT_EQ(ReadText(program), before);
    desktop->Key("ctrl+q");
    EXPECT_EQ(old->AwaitEnd(), 0);
}

TEST_F(Updates, ANoticeIsShownOnceAndItsNumberKept) {
    WriteText(release / "update.json", R"({"version":"0.0.1.0"})");
    WriteText(release / "notify.json",
              R"({"notify_id":7,"for_users_type":9,"notify_message":{"en-us":"<b>Hello</b>"}})");
    for (const bool first : {true, false}) {
        const auto old = Start();
        old->Await("the window", MainWindow());
        if (first) {
            EXPECT_EQ(old->Await("the notice", Control(kMessageText)).value, "<b>Hello</b>");
            old->Click("the notice's button", Button("Confirm"));
        } else {
            const auto end = std::chrono::steady_clock::now() + kPatience;
            const auto asked = [&] {
                return std::ranges::count_if(server.Requests(), [](const std::string& request) {
                    return request.find("notify.json") != std::string::npos;
                });
            };
            while (asked() < 4 && std::chrono::steady_clock::now() < end)
                std::this_thread::sleep_for(20ms);
            for (const Seen& seen : old->Look())
                EXPECT_FALSE(Control(kMessageText)(seen)) << seen.value;
        }
        desktop->Key("ctrl+q");
        EXPECT_EQ(old->AwaitEnd(), 0);
        uint32_t last = 0;
        home.Store()->RegReadDword(kMainKey, "LastNotifyId", last);
        EXPECT_EQ(last, 7u);
    }
}

}  // namespace
}  // namespace bw::test
