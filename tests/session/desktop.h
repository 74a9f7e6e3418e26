// A desktop for the window's tests: an X display with a window manager and a tray, and a hand on
// its mouse and keys.
#pragma once

#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include "common/virtual_display.h"

namespace bw::test {

// The session can't go on: something that had to show didn't. Fails the test with its words.
struct SessionLost : std::runtime_error {
    using std::runtime_error::runtime_error;
};

struct Place {
    int x = 0;
    int y = 0;
    bool operator==(const Place&) const = default;
};

class Desktop {
  public:
    static constexpr int kWidth = 1280;
    static constexpr int kHeight = 800;

    explicit Desktop(int width = kWidth, int height = kHeight);

    const std::string& Display() const { return display_.Name(); }
    // Ends the program that shows tray icons.
    void RemoveTray() { tray_.reset(); }

    // Keys as in "ctrl+f".
    void MoveTo(Place place);
    void Click(Place place);
    void DoubleClick(Place place);
    void Drag(Place from, Place to);
    // The parts of a drag or of a click with a key held, one at a time.
    void Press();
    void Release();
    void HoldKey(const std::string& key);
    void ReleaseKey(const std::string& key);
    void Key(const std::string& keys);
    void Type(const std::string& text);
    void AwaitWindow(const std::string& title);
    // Moves the window with this title and gives it a size, as the window manager's own keys do.
    void Arrange(const std::string& title, Place corner, int width, int height);

    // Starts a program on this display; its home is the desktop's own. What it says is kept in a
    // file of the desktop's folder that bears the program's name.
    ChildProcess Run(std::vector<std::string> words, std::vector<std::string> environment = {},
                     int passedDescriptor = -1);
    std::string WordsOf(const std::string& program) const;
    // A part of the screen, or all of it, as a PNG file of few colours. Without ImageMagick there
    // is no file.
    void Photograph(const std::filesystem::path& file, Place corner, int width, int height);
    void Photograph(const std::filesystem::path& file);

  private:
    void AwaitManager();
    void Hand(std::vector<std::string> words);
    bool TryHand(std::vector<std::string> words);

    int width_, height_;
    TemporaryFolder home_;
    VirtualDisplay display_;
    std::optional<ChildProcess> manager_;
    std::optional<ChildProcess> tray_;
};

}  // namespace bw::test
