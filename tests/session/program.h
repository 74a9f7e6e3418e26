// The program under test, as somebody sees it who sits before the screen.
#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "desktop.h"

namespace bw::test {

// Something that shows. Rectangles are in pixels of the screen.
struct Seen {
    std::string type;   // a widget's class, or: action, header, cell
    std::string id;     // "control_1002", "row,column" of a cell
    std::string name;   // as a screen reader says it; a cell's text
    std::string value;  // the text; the number of rows of a list
    int x = 0, y = 0, width = 0, height = 0;
    std::string states;

    bool Enabled() const { return Has('e'); }
    bool Checked() const { return Has('c'); }
    bool Focused() const { return Has('f'); }
    bool Active() const { return Has('a'); }
    bool Maximised() const { return Has('m'); }
    Place Middle() const { return {x + width / 2, y + height / 2}; }

  private:
    bool Has(char state) const { return states.find(state) != std::string::npos; }
};

using Wanted = std::function<bool(const Seen&)>;
Wanted ById(std::string id);
Wanted Control(int id);
// A menu's entry or a menu of the bar by its words, without its key.
Wanted Entry(std::string words);
Wanted Cell(int row, int column);
Wanted Header(int column);
Wanted Button(std::string words);
Wanted TrayIcon();  // a window of its own, which the tray takes in
Wanted MainWindow();
// The list of games with so many rows.
Wanted Rows(size_t count);

class Program {
  public:
    // `words` follow the program's name. All of the user's files lie below `home`.
    Program(Desktop& desktop, const std::filesystem::path& home,
            std::vector<std::string> words = {}, std::vector<std::string> environment = {},
            const std::filesystem::path& program = BANKWEAVER_PROGRAM);
    ~Program();
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    // All that shows now. Waits for the program to answer, which takes as long as whatever it does
    // on the window's thread.
    std::vector<Seen> Look();
    // Waits until the thing shows; throws SessionLost, telling what showed instead.
    Seen Await(const std::string& what, const Wanted& wanted);
    void AwaitGone(const std::string& what, const Wanted& wanted);

    void Click(const std::string& what, const Wanted& wanted);
    // Opens menus by mouse, one after the other, and clicks the last entry.
    void Menu(const std::vector<std::string>& path);
    // Writes into the control that has the focus, in place of what stands there.
    void Retype(const std::string& text);
    // Writes into the file dialog that opens, and closes it.
    void EnterFileName(const std::string& words);

    ChildProcess& Process() { return process_; }
    // How the process ended; throws SessionLost if it doesn't within the time.
    int AwaitEnd();
    std::string Words() const { return desktop_.WordsOf("bankweaver"); }

  private:
    std::optional<Seen> Find(const Wanted& wanted);
    [[noreturn]] void Lose(const std::string& what);

    Desktop& desktop_;
    int descriptor_;
    ChildProcess process_;
};

}  // namespace bw::test
