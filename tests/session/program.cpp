#include "program.h"

#include <algorithm>
#include <cstdlib>
#include <sstream>
#include <thread>

#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace bw::test {
namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

// Sanitizers make a program many times slower. Nothing waits this long in a good run.
constexpr auto kPatience = 60s;
constexpr auto kPause = 20ms;
constexpr auto kRest = 80ms;  // of a thing that has come to its place
constexpr size_t kSeenFields = 9;

Seen ParseSeen(const std::string& line) {
    std::vector<std::string> fields;
    std::istringstream stream(line);
    for (std::string field; std::getline(stream, field, '\t');)
        fields.push_back(field);
    fields.resize(kSeenFields);
    const auto number = [&](size_t field) { return std::atoi(fields[field].c_str()); };
    return {.type = fields[0],
            .id = fields[1],
            .name = fields[2],
            .value = fields[3],
            .x = number(4),
            .y = number(5),
            .width = number(6),
            .height = number(7),
            .states = fields[8]};
}

// "Open(&O)	Ctrl+O", "Find && Replace(&F)" and "&Undo" as a person reads them.
std::string Plain(std::string words) {
    words = words.substr(0, words.find('\t'));
    if (const size_t key = words.find("(&"); key != std::string::npos) words.resize(key);
    std::string plain;
    for (size_t i = 0; i < words.size(); ++i) {
        if (words[i] == '&' && i + 1 < words.size()) ++i;
        plain += words[i];
    }
    return plain;
}

Wanted Of(std::string type, std::string Seen::*field, std::string words) {
    return [=](const Seen& seen) { return seen.type == type && seen.*field == words; };
}

// The program's end of the conversation is closed here as soon as it has a copy.
ChildProcess StartProgram(Desktop& desktop, const std::filesystem::path& home,
                          const std::filesystem::path& program, std::vector<std::string> words,
                          std::vector<std::string> environment, int& descriptor) {
    int ends[2];
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0)
        throw SessionLost("no socket");
    descriptor = ends[0];
    words.insert(words.begin(), program);
    environment.insert(
        environment.begin(),
        {"BANKWEAVER_HOME=" + home.string(), "QT_QPA_PLATFORM=xcb",
         "QT_QPA_GENERIC_PLUGINS=session_probe", "QT_PLUGIN_PATH=" BANKWEAVER_PROBE_FOLDER});
    ChildProcess started = desktop.Run(std::move(words), std::move(environment), ends[1]);
    close(ends[1]);
    return started;
}

}  // namespace

Wanted ById(std::string id) {
    return [id = std::move(id)](const Seen& seen) { return seen.id == id; };
}

Wanted Control(int id) {
    return ById("control_" + std::to_string(id));
}

Wanted Entry(std::string words) {
    return [words = Plain(std::move(words))](const Seen& seen) {
        return seen.type == "action" && Plain(seen.name) == words;
    };
}

Wanted Cell(int row, int column) {
    return Of("cell", &Seen::id, std::to_string(row) + "," + std::to_string(column));
}

Wanted Header(int column) {
    return Of("header", &Seen::id, std::to_string(column));
}

Wanted Button(std::string words) {
    return Of("QPushButton", &Seen::value, std::move(words));
}

Wanted TrayIcon() {
    return [](const Seen& seen) { return seen.type == "QSystemTrayIconSys"; };
}

Wanted MainWindow() {
    return [](const Seen& seen) { return seen.type == "bw::CMainDialog"; };
}

Wanted Rows(size_t count) {
    return Of("bw::GameTable", &Seen::value, std::to_string(count));
}

Program::Program(Desktop& desktop, const std::filesystem::path& home,
                 std::vector<std::string> words, std::vector<std::string> environment,
                 const std::filesystem::path& program)
    : desktop_(desktop),
      process_(StartProgram(desktop, home, program, std::move(words), std::move(environment),
                            descriptor_)) {}

Program::~Program() {
    close(descriptor_);
}

std::vector<Seen> Program::Look() {
    const char question = '?';
    if (send(descriptor_, &question, 1, MSG_NOSIGNAL) != 1)
        throw SessionLost("the program has gone\n" + Words());
    std::string answer;
    const auto end = Clock::now() + kPatience;
    char piece[65536];
    while (!answer.ends_with("\n.\n") && answer != ".\n") {
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now());
        pollfd ready{.fd = descriptor_, .events = POLLIN, .revents = 0};
        if (left.count() <= 0 || poll(&ready, 1, static_cast<int>(left.count())) != 1)
            throw SessionLost("the window doesn't answer\n" + Words());
        const ssize_t size = read(descriptor_, piece, sizeof piece);
        if (size <= 0) throw SessionLost("the program has gone\n" + Words());
        answer.append(piece, static_cast<size_t>(size));
    }
    std::vector<Seen> all;
    std::istringstream lines(answer);
    for (std::string line; std::getline(lines, line) && line != ".";)
        all.push_back(ParseSeen(line));
    return all;
}

std::optional<Seen> Program::Find(const Wanted& wanted) {
    const std::vector<Seen> all = Look();
    const auto found = std::ranges::find_if(all, wanted);
    return found != all.end() ? std::optional(*found) : std::nullopt;
}

Seen Program::Await(const std::string& what, const Wanted& wanted) {
    for (const auto end = Clock::now() + kPatience; Clock::now() < end;) {
        if (const auto found = Find(wanted)) return *found;
        std::this_thread::sleep_for(kPause);
    }
    Lose(what);
}

void Program::AwaitGone(const std::string& what, const Wanted& wanted) {
    for (const auto end = Clock::now() + kPatience; Clock::now() < end;) {
        if (!Find(wanted)) return;
        std::this_thread::sleep_for(kPause);
    }
    Lose(what + " to go");
}

// A window that has just opened may still be on its way to its place.
void Program::Click(const std::string& what, const Wanted& wanted) {
    const Wanted enabled = [&](const Seen& seen) { return wanted(seen) && seen.Enabled(); };
    Await("a window in front", [](const Seen& seen) { return seen.Active(); });
    Place before{-1, -1};
    for (Place now = before; now.x < 0 || now != before;) {
        before = now;
        std::this_thread::sleep_for(kRest);
        now = Await(what, enabled).Middle();
    }
    desktop_.Click(before);
}

void Program::Menu(const std::vector<std::string>& path) {
    for (const std::string& words : path)
        Click("the menu entry " + words, Entry(words));
}

void Program::Retype(const std::string& text) {
    desktop_.Key("ctrl+a");
    desktop_.Type(text);
}

void Program::EnterFileName(const std::string& words) {
    Await("the file dialog",
          [](const Seen& seen) { return seen.id == "fileNameEdit" && seen.Focused(); });
    Retype(words);
    Await("the file's name",
          [&](const Seen& seen) { return seen.id == "fileNameEdit" && seen.value == words; });
    desktop_.Key("Return");
}

int Program::AwaitEnd() {
    if (!process_.WaitFor(kPatience)) Lose("the program to end");
    return process_.Status();
}

void Program::Lose(const std::string& what) {
    std::ostringstream words;
    words << "waited in vain for " << what << "; what showed:\n";
    try {
        for (const Seen& seen : Look())
            words << seen.type << ' ' << seen.id << " \"" << seen.name << "\" " << seen.value << ' '
                  << seen.states << '\n';
    } catch (const SessionLost& lost) {
        words << lost.what();
    }
    if (const char* folder = std::getenv("BANKWEAVER_SCREENSHOTS"))
        desktop_.Photograph(std::filesystem::path(folder) / "session_lost.png");
    throw SessionLost(words.str() + Words());
}

}  // namespace bw::test
