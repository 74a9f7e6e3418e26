// Loads and saves the design and its parts: the commands, and files that are dropped.
#pragma once

#include <cstdint>
#include <deque>
#include <filesystem>
#include <functional>
#include <future>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "designer/files/design_parts.h"
#include "designer/gestures/designer_layout.h"
#include "designer/window/design_host.h"

namespace bw {

// All on the window's thread. Files are read and written beside it; what a file holds goes into
// the document as one step, once the file has been read and found to be good. What goes wrong is
// told in a message, and the document stays as it was. A file that is being written when the window
// goes is written to its end, one that is being read is forgotten.
class DesignFiles {
  public:
    using Path = std::filesystem::path;
    // The types that the load dialogs had last, by their commands.
    using LastTypes = std::map<int, size_t>;

    // Both must live longer; `lastTypes` as long as the process, which the types are kept for.
    DesignFiles(DesignHost& host, LastTypes& lastTypes) : host_(host), lastTypes_(lastTypes) {}
    DesignFiles(const DesignFiles&) = delete;
    DesignFiles& operator=(const DesignFiles&) = delete;

    // The file that the whole design has just come from or gone to; empty: from none of the user's.
    std::function<void(const Path&)> named;
    // A PNG was dropped on a view, or beside them all.
    std::function<void(const Path&, std::optional<Control>)> importPicture;

    // The commands of FileRows(), by their ids. With Shift held they do otherwise; see
    // designer/files/design_parts.h.
    void Load(int id);
    void Save(int id);
    // Offers the designs that come with the program.
    void OpenSample();

    // False while a question is open.
    bool CanDrop(const std::vector<Path>& files) const { return asking_ == 0 && !files.empty(); }
    // One file after the other, those last that nothing here can load.
    void Drop(std::optional<Control> view, const std::vector<Path>& files, Shift shift);

    // Runs the work as soon as nothing is being written: at once, or when the outcome of the last
    // save has been told. For a window that is to stay until then.
    void WhenSaved(std::function<void()> work);
    // The window closes but may open again: whatever is open or being read comes to nothing.
    void GiveUp();

  private:
    struct Job {
        DesignPart part;
        Path file;
        Shift shift;
    };
    struct Dropped {
        Path file;
        std::optional<Control> view;
        Shift shift;
        bool picture;
        std::vector<DesignPart> parts;
    };

    Shift ShiftNow() const;
    std::optional<FileChoice> AskFile(TextId title, DesignPart part, FileQuestion question,
                                      bool toOpen);
    void ReadPart(const Job& job, const std::function<void()>& then);
    // Into the document, when no gesture is under way. `taken` runs if that went well, `then`
    // in any case, unless the window has gone.
    void TakePart(const Job& job, std::vector<uint8_t> bytes, std::function<void()> taken,
                  const std::function<void()>& then);
    void WritePart(const Job& job);
    // False if the window has gone meanwhile.
    bool EndSave(const Job& job, const DesignProblem& problem);
    void Name(const Path& file);
    void DropNext();
    // The part that a dropped file is to be; nothing if the user gave up.
    std::optional<DesignPart> ChoosePart(const Dropped& dropped);

    void Tell(TextId format, std::u16string_view what);
    // False if the window has gone meanwhile.
    bool ShowProblem(const Diagnostic& problem);
    // The answer to a question; nothing if the window has gone meanwhile.
    template <typename Ask>
    auto Asked(Ask ask) -> std::optional<decltype(ask())>;
    // Work that isn't done any more if the window has gone.
    std::function<void()> WhileOpen(std::function<void()> work) const;

    struct Open {};

    DesignHost& host_;
    LastTypes& lastTypes_;
    std::u16string name_;  // of the whole design's file, without extension
    std::deque<Dropped> drops_;
    bool dropping_ = false;
    int asking_ = 0;                              // questions and messages that are open
    int saves_ = 0;                               // under way
    std::vector<std::function<void()>> waiting_;  // for their end
    std::shared_future<void> lastSave_;           // saves write in the order of their commands
    std::shared_ptr<Open> open_ = std::make_shared<Open>();
};

}  // namespace bw
