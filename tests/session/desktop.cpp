#include "desktop.h"

#include <chrono>

#include "common/game_image.h"

namespace bw::test {
namespace {

using namespace std::chrono_literals;

constexpr int kDragSteps = 8;
constexpr int kMostTries = 2000;  // of some milliseconds each

std::string Program(const std::string& name) {
    const auto found = FindProgram(name);
    if (!found) throw SessionLost(name + " was not found; install the package " + name);
    return found->string();
}

std::vector<std::string> Motion(Place place) {
    return {"mousemove", std::to_string(place.x), std::to_string(place.y)};
}

void Append(std::vector<std::string>& words, const std::vector<std::string>& more) {
    words.insert(words.end(), more.begin(), more.end());
}

std::vector<std::string> With(std::vector<std::string> words,
                              const std::vector<std::string>& more) {
    Append(words, more);
    return words;
}

}  // namespace

Desktop::Desktop(int width, int height)
    : width_(width),
      height_(height),
      display_(std::to_string(width) + "x" + std::to_string(height)) {
    if (!display_.Problem().empty()) throw SessionLost(display_.Problem());
    manager_.emplace(Run({Program("openbox"), "--sm-disable"}));
    AwaitManager();
    tray_.emplace(Run({Program("trayer"), "--edge", "bottom", "--align", "right", "--width", "10",
                       "--height", "24"}));
}

// A window that opens before it doesn't get the keyboard.
void Desktop::AwaitManager() {
    for (int tries = 0; !TryHand({"get_num_desktops"}); ++tries)
        if (tries == kMostTries) throw SessionLost("openbox doesn't answer: " + WordsOf("openbox"));
}

bool Desktop::TryHand(std::vector<std::string> words) {
    words.insert(words.begin(), Program("xdotool"));
    ChildProcess child = Run(words);
    return child.WaitFor(20s) && child.Status() == 0;
}

void Desktop::Hand(std::vector<std::string> words) {
    if (!TryHand(std::move(words))) throw SessionLost("xdotool failed: " + WordsOf("xdotool"));
}

void Desktop::MoveTo(Place place) {
    Hand(Motion(place));
}

void Desktop::Click(Place place) {
    Hand(With(Motion(place), {"click", "1"}));
}

void Desktop::DoubleClick(Place place) {
    Hand(With(Motion(place), {"click", "--repeat", "2", "--delay", "60", "1"}));
}

// In steps, as a hand does it: a drag begins only some way from where the button went down, and
// what lies below hears of it by motion.
void Desktop::Drag(Place from, Place to) {
    std::vector<std::string> words = With(Motion(from), {"mousedown", "1"});
    for (int step = 1; step <= kDragSteps; ++step) {
        Append(words, {"sleep", "0.05"});
        Append(words, Motion({from.x + (to.x - from.x) * step / kDragSteps,
                              from.y + (to.y - from.y) * step / kDragSteps}));
    }
    Append(words, {"sleep", "0.3", "mouseup", "1"});
    Hand(words);
}

void Desktop::Press() {
    Hand({"mousedown", "1"});
}

void Desktop::Release() {
    Hand({"mouseup", "1"});
}

void Desktop::HoldKey(const std::string& key) {
    Hand({"keydown", key});
}

void Desktop::ReleaseKey(const std::string& key) {
    Hand({"keyup", key});
}

void Desktop::Key(const std::string& keys) {
    Hand({"key", keys});
}

void Desktop::Type(const std::string& text) {
    Hand({"type", "--delay", "5", text});
}

void Desktop::AwaitWindow(const std::string& title) {
    Hand({"search", "--sync", "--onlyvisible", "--name", "^" + title + "$"});
}

void Desktop::Arrange(const std::string& title, Place corner, int width, int height) {
    Hand({"search", "--onlyvisible", "--name", "^" + title + "$", "windowsize",
          std::to_string(width), std::to_string(height), "windowmove", std::to_string(corner.x),
          std::to_string(corner.y)});
}

ChildProcess Desktop::Run(std::vector<std::string> words, std::vector<std::string> environment,
                          int passedDescriptor) {
    const std::string home = home_.Path().string();
    const std::string name = std::filesystem::path(words.front()).filename().string();
    Append(environment,
           {"DISPLAY=" + Display(), "HOME=" + home, "XDG_CONFIG_HOME=" + home + "/config",
            "XDG_CACHE_HOME=" + home + "/cache", "XDG_DATA_HOME=" + home + "/data",
            "XDG_RUNTIME_DIR=" + home + "/run", "XDG_CURRENT_DESKTOP=", "WAYLAND_DISPLAY=",
            // The desktop has no message bus. Without this, programs would start one.
            "DBUS_SESSION_BUS_ADDRESS=disabled:"});
    auto child = ChildProcess::Start({.words = std::move(words),
                                      .environment = std::move(environment),
                                      .workingFolder = home_.Path(),
                                      .logFile = home_ / (name + ".log"),
                                      .passedDescriptor = passedDescriptor});
    if (!child) throw SessionLost("no process for " + name);
    return std::move(*child);
}

std::string Desktop::WordsOf(const std::string& program) const {
    return ReadText(home_ / (program + ".log"));
}

void Desktop::Photograph(const std::filesystem::path& file, Place corner, int width, int height) {
    const auto program = FindProgram("import");
    if (!program) return;
    const std::string part = std::to_string(width) + "x" + std::to_string(height) + "+" +
                             std::to_string(corner.x) + "+" + std::to_string(corner.y);
    Run({program->string(), "-window", "root", "-crop", part, "+repage", "+dither", "-colors",
         "255", "-strip", "PNG8:" + file.string()})
        .WaitFor(30s);
}

void Desktop::Photograph(const std::filesystem::path& file) {
    Photograph(file, {}, width_, height_);
}

}  // namespace bw::test
